#pragma once

#include "codecs/AudioFile.h"
#include "engine/Components.h"

namespace Sonmira {

// The real components, one of each. A window, a benchmark or a test owns a set.
struct CodecSet {
    AudioFile FileRenc;  // reads
    AudioFile FileWenc;  // writes, in the format that the user chose
    AacDecoder AACDecoder1;
    AlacDecoder alacdec1;
    FlacDecoder FlacCodec1;
    MpcDecoder mpcdecoder1;
    FlacEncoder FlacCodec_Encoder1;
    MpcEncoder mpcencoder1;
    ApeCodec Ape;
    AudioInformation Tags;
    OutputSettings Settings;

    Components Parts() { return Parts(FileRenc, FileWenc); }
    // With another reader and writer.
    Components Parts(AudioSource& source, AudioSink& sink) {
        return {source,      sink, AACDecoder1, alacdec1, FlacCodec1, mpcdecoder1, FlacCodec_Encoder1,
                mpcencoder1, Ape,  Tags,        Settings};
    }
};

}  // namespace Sonmira

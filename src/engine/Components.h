#pragma once

#include "codecs/AacDecoder.h"
#include "codecs/AlacDecoder.h"
#include "codecs/AudioInformation.h"
#include "codecs/AudioStreams.h"
#include "codecs/FlacDecoder.h"
#include "codecs/FlacEncoder.h"
#include "codecs/MpcDecoder.h"
#include "codecs/MpcEncoder.h"
#include "engine/ApeCodec.h"

namespace Sonmira {

// What the output panel has chosen, beside the format that stands in FileWenc. A level holds 0 until its
// format is selected for the first time.
struct OutputSettings {
    qint32 ApeCompressionLevel = 0;   // 1000, 2000, 3000 or 4000
    qint32 FlacCompressionLevel = 0;  // 0 to 8
    qint32 MpcQuality = 0;            // 0 to 9; only the compact window passes it on
    bool WmaSupported = false;
};

// The audio components that a run works with. Owned by the window; shared by all files of a run, which is
// why two files are never in hand at once. A test derives from one to make it fail, stop or leave no file.
struct Components {
    AudioSource& FileRenc;
    AudioSink& FileWenc;
    AacDecoder& AACDecoder1;
    AlacDecoder& alacdec1;
    FlacDecoder& FlacCodec1;
    MpcDecoder& mpcdecoder1;
    FlacEncoder& FlacCodec_Encoder1;
    MpcEncoder& mpcencoder1;
    ApeCodec& Ape;
    AudioInformation& Tags;
    const OutputSettings& Settings;
};

}  // namespace Sonmira

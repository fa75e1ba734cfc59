#pragma once

#include "codecs/ApeFunctions.h"
#include "codecs/AudioFile.h"
#include "codecs/AudioInformation.h"
#include "codecs/AudioStreams.h"
#include "codecs/FlacEncoder.h"
#include "codecs/MpcEncoder.h"
#include "codecs/WavDecoders.h"
#include "codecs/tagging/SimpleTags.h"

#include <array>

namespace Sonmira {

using Id3Bytes = std::array<char, 128>;

// The functions for Monkey's Audio as one component. For what each does see ApeFunctions.h.
class ApeCodec {
public:
    virtual ~ApeCodec() = default;

    virtual void CompressFile(const QString& wav, const QString& ape, qint32 level,
                              const ApeProgressCallback& progress, const qint32& killFlag) {
        Sonmira::CompressFile(wav, ape, level, progress, killFlag);
    }
    virtual void DecompressFile(const QString& ape, const QString& wav, const ApeProgressCallback& progress,
                                const qint32& killFlag) {
        Sonmira::DecompressFile(ape, wav, progress, killFlag);
    }
    virtual void GetID3Tag(const QString& path, Id3Bytes& block) { Sonmira::GetID3Tag(path, block); }
    virtual qint32 GetDurationTrack(const QString& path) { return Sonmira::GetDurationTrack(path); }
    // Over what an earlier tag says.
    virtual void TagFileSimple(const QString& path, const SimpleTagFields& tag) {
        constexpr qint32 ClearFirst = 1;
        constexpr qint32 UseOldId3 = 1;
        Sonmira::TagFileSimple(path, tag.Artist, tag.Album, tag.Title, tag.Comment, tag.Genre, tag.Year,
                               tag.Track, ClearFirst, UseOldId3);
    }
};

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

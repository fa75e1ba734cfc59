#pragma once

#include "codecs/mp3/Mp3Writer.h"
#include "codecs/sound/OrderedJobs.h"
#include "codecs/sound/StreamConverter.h"
#include "codecs/vorbis/VorbisWriter.h"
#include "codecs/wav/WavWriter.h"
#include "codecs/wma/WmaWriter.h"
#include "platform/Files.h"

#include <QString>

#include <optional>
#include <variant>

namespace Sonmira {

// The formats that the audio file object writes.

using OutputFormat = std::variant<PcmFormat, Mp3Format, VorbisFormat, WmaFormat>;

// The rate and the channels that its sound has.
StreamFormat StreamOf(const OutputFormat& format);

// One line for people, such as "PCM 44100 Hz, Stereo, 16 bits".
QString TextOf(const OutputFormat& format);

// Fails when the encoder of that format cannot be had.
std::unique_ptr<SoundWriter> MakeSoundWriter(const OutputFormat& format);

// One output file from its creation to its end. Blocks are brought to the format's rate and channels on the
// caller's thread and encoded on a worker, which begins with the first block. The first failure ends the
// work: it is reported once, by whichever call comes next, and Close after it only closes.
class FileWriting {
public:
    // Creates the file. Fails when the encoder or the file cannot be had; a file of an earlier run is left
    // alone when the encoder is what is missing.
    FileWriting(QStringView path, const OutputFormat& format);
    // Into a file that was created already, by an encoder of that format.
    FileWriting(OutputFile file, const OutputFormat& format, std::unique_ptr<SoundWriter> encoder);

    void SetSource(StreamFormat source);
    void Write(AudioBlock block);
    void Close();

private:
    void Encode(AudioBlock block);
    void EncodeInPieces(const AudioBlock& block, std::size_t size);
    void CompleteFile();

    OutputFormat Format;
    std::unique_ptr<SoundWriter> Encoder;
    OutputFile File;
    std::unique_ptr<StreamConverter> Converter;
    bool Failed = false;
    std::optional<BlockWorker> Worker;  // last, so that it ends before what it uses
};

}  // namespace Sonmira

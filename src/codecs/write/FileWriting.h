#pragma once

#include "codecs/sound/BlockWorker.h"
#include "codecs/sound/StreamConverter.h"
#include "codecs/write/OutputFormat.h"
#include "platform/OutputFile.h"

#include <optional>

namespace Sonmira {

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

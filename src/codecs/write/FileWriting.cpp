#include "codecs/write/FileWriting.h"

#include "platform/Failure.h"

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

ResamplerPrecision PrecisionFor(const OutputFormat& format) {
    const auto* pcm = std::get_if<PcmFormat>(&format);
    return pcm != nullptr && pcm->Bits > 16 ? ResamplerPrecision::Bits28 : ResamplerPrecision::Bits20;
}

}  // namespace

FileWriting::FileWriting(QStringView path, const OutputFormat& format)
    : Format(format), Encoder(MakeSoundWriter(format)), File(path) {}

FileWriting::FileWriting(OutputFile file, const OutputFormat& format, std::unique_ptr<SoundWriter> encoder)
    : Format(format), Encoder(std::move(encoder)), File(std::move(file)) {}

void FileWriting::SetSource(StreamFormat source) {
    if (Worker) throw Failure(FailureNumber::InvalidCall);
    if (source.Rate < 1 || source.Channels < 1) throw Failure(FailureNumber::InvalidCall);
    const StreamFormat target = StreamOf(Format);
    Converter = std::make_unique<StreamConverter>(source, target, PrecisionFor(Format));
}

void FileWriting::Write(AudioBlock block) {
    if (!Converter || Failed) throw Failure(FailureNumber::InvalidCall);
    if (block.Bytes.size() % Converter->SourceFrameSize(block.Type) != 0) {
        throw Failure(FailureNumber::InvalidCall, u"A block of sound ends inside a frame"_s);
    }
    Failed = true;
    const std::size_t most = Converter->SourceBytesAtOnce(block.Type);
    if (block.Bytes.size() <= most) {
        Encode(Converter->Convert(std::move(block)));
    } else {
        EncodeInPieces(block, most);
    }
    Failed = false;
}

void FileWriting::EncodeInPieces(const AudioBlock& block, std::size_t size) {
    std::span<const std::byte> left = block.Bytes;
    while (!left.empty()) {
        const auto piece = left.first(std::min(size, left.size()));
        Encode(Converter->Convert({block.Type, {piece.begin(), piece.end()}, block.Speakers}));
        left = left.subspan(piece.size());
    }
}

void FileWriting::Encode(AudioBlock block) {
    if (block.IsEmpty()) return;
    if (!Worker) Worker.emplace([this](const AudioBlock& one) { Encoder->Write(one, File); });
    Worker->Push(std::move(block));
}

void FileWriting::Close() {
    std::exception_ptr error;
    try {
        if (Converter && !Failed) CompleteFile();
    } catch (...) {
        error = std::current_exception();
    }
    const bool reported = std::exchange(Failed, true);
    Worker.reset();
    try {
        File.Close();
    } catch (...) {
        if (!error && !reported) error = std::current_exception();
    }
    if (error) std::rethrow_exception(error);
}

void FileWriting::CompleteFile() {
    Encode(Converter->Finish());
    if (Worker) Worker->Finish();
    Encoder->Finish(File);
}

}  // namespace Sonmira

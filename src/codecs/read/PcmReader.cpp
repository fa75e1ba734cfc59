#include "codecs/read/PcmReader.h"

#include <algorithm>

namespace Sonmira {

namespace {
constexpr qint64 BlockSize = 128LL * 1024;
}

PcmReader::PcmReader(std::shared_ptr<const InputFile> file, FormatChoice choose)
    : Reader(std::move(file)),
      Form(choose(Reader.Format(), Reader.Bits())),
      Converter(Reader.Format(), {Form.Rate, Form.Channels}, ResamplerPrecision::Bits28),
      Packer(Form.Bits) {}

bool PcmReader::Append(std::vector<std::byte>& packed) {
    const std::size_t before = packed.size();
    while (packed.size() == before && !Ended) Packer.Pack(NextBlock(), packed);
    const auto bytes = static_cast<qint64>(packed.size() - before);
    FramesGiven += bytes / (qint64{Form.Channels} * Form.Bits / 8);
    return bytes > 0;
}

AudioBlock PcmReader::NextBlock() {
    AudioBlock block;
    try {
        const auto most = static_cast<qint64>(Converter.SourceBytesAtOnce(SampleType::Int32));
        block = Reader.Read(std::min(BlockSize, most));
    } catch (const Failure&) {
        Error = std::current_exception();
    }
    FramesTaken += static_cast<qint64>(block.Bytes.size() / Reader.FrameSize());
    Ended = block.IsEmpty();
    return Ended ? Converter.Finish() : Converter.Convert(std::move(block));
}

std::optional<qint64> PcmReader::ExactLength() {
    if (!Reader.IsExact()) return {};
    const qint64 rate = Reader.Format().Rate;
    return (Reader.Length() * Form.Rate + rate / 2) / rate;
}

void PcmReader::ReportFailure() const {
    if (Error) std::rethrow_exception(Error);
}

}  // namespace Sonmira

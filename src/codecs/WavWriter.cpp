#include "codecs/WavWriter.h"

#include "codecs/LittleEndianBytes.h"
#include "platform/Failure.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 HeaderSize = 44;

}  // namespace

// Fields as "Multimedia Programming Interface and Data Specifications 1.0" (1991) gives them.
std::vector<std::byte> PlainWavHeader(const PcmFormat& format, qint64 dataSize) {
    const auto data = static_cast<std::uint64_t>(dataSize);
    const auto channels = static_cast<std::uint64_t>(format.Channels);
    const auto rate = static_cast<std::uint64_t>(format.Frequency);
    const auto bits = static_cast<std::uint64_t>(format.Bits);
    LittleEndianBytes header;
    header.Name("RIFF");
    header.Number(HeaderSize - 8 + data + data % 2, 4);
    header.Name("WAVEfmt ");
    header.Number(16, 4);
    header.Number(1, 2);  // PCM
    header.Number(channels, 2);
    header.Number(rate, 4);
    header.Number(rate * channels * bits / 8, 4);
    header.Number(channels * bits / 8, 2);
    header.Number(bits, 2);
    header.Name("data");
    header.Number(data, 4);
    return header.Bytes;
}

WavWriter::WavWriter(const PcmFormat& format, qint64 most)
    : Format(format), Most(most), Packer(format.Bits) {}

void WavWriter::Write(const AudioBlock& block, OutputFile& file) {
    if (file.Size() == 0) file.Write(PlainWavHeader(Format, 0));
    Packed.clear();
    Packer.Pack(block, Packed);
    if (file.Size() - HeaderSize + static_cast<qint64>(Packed.size()) > Most) {
        throw Failure(FailureNumber::Component, u"A WAV file cannot grow beyond 4 GB"_s);
    }
    file.Write(Packed);
}

void WavWriter::Finish(OutputFile& file) {
    if (file.Size() == 0) file.Write(PlainWavHeader(Format, 0));
    const qint64 dataSize = file.Size() - HeaderSize;
    if (dataSize % 2 != 0) file.Write(std::vector<std::byte>(1));
    file.Patch(0, PlainWavHeader(Format, dataSize));
}

}  // namespace Sonmira

#include "codecs/wav/WavWriter.h"

#include "codecs/sound/PcmPacker.h"
#include "platform/Failure.h"

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

std::vector<std::byte> WavHeader(const PcmFormat& format, qint64 dataSize) {
    const auto data = static_cast<std::uint64_t>(dataSize);
    const auto channels = static_cast<std::uint64_t>(format.Channels);
    const auto rate = static_cast<std::uint64_t>(format.Rate);
    const auto bits = static_cast<std::uint64_t>(format.Bits);
    const std::uint64_t whole = static_cast<std::uint64_t>(WavHeaderSize) - 8 + data + data % 2;
    LittleEndianBytes header;
    header.Name("RIFF");
    header.Number(std::min<std::uint64_t>(whole, UnknownWavSize), 4);
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
    return std::move(header.Bytes);
}

bool IsPcmFormat(const PcmFormat& format) {
    const bool isWidth = format.Bits == 8 || format.Bits == 16 || format.Bits == 24 || format.Bits == 32;
    return isWidth && format.Rate >= 1 && format.Rate <= 384000 &&
           (format.Channels == 1 || format.Channels == 2);
}

qint64 WavSizeBeyond(qint64 there, qint64 wanted) {
    // Whole frames of most forms.
    constexpr qint64 step = 24;
    constexpr qint64 mostBelow = LeastUnknownWavSize / step * step - step;
    constexpr qint64 most = 0xFFFEFFFFLL / step * step;
    const qint64 size = std::max(wanted, there + 1);
    if (!IsUnknownWavSize(size)) return size;
    if (size < 0x80001000 && there < mostBelow) return mostBelow;
    return there < most ? most : UnknownWavSize;
}

WavWriter::WavWriter(const PcmFormat& format, Beyond4Gb beyond, qint64 most)
    : Format(format), Beyond(beyond), Most(most), Packer(format.Bits) {}

void WavWriter::Claim(qint64 frames) {
    const qint64 most = MostWavData / FrameSize();
    Claimed = WavSizeBeyond(0, (frames > 0 ? std::min(frames, most) : most) * FrameSize());
}

void WavWriter::Write(const AudioBlock& block, OutputFile& file) {
    if (file.Size() == 0) file.Write(WavHeader(Format, Claimed));
    Packed.clear();
    Packer.Pack(block, Packed);
    const qint64 size = file.Size() - WavHeaderSize + static_cast<qint64>(Packed.size());
    if (size > Most && Beyond == Beyond4Gb::Fails) {
        throw Failure(FailureNumber::Component, u"A WAV file cannot grow beyond 4 GB"_s);
    }
    file.Write(Packed);
}

void WavWriter::Finish(OutputFile& file) {
    if (file.Size() == 0) file.Write(WavHeader(Format, 0));
    const qint64 dataSize = file.Size() - WavHeaderSize;
    if (Keeps) return file.Patch(0, WavHeader(Format, WavSizeBeyond(dataSize, Claimed)));
    if (dataSize % 2 != 0) file.Write(std::vector<std::byte>(1));
    file.Patch(0, WavHeader(Format, dataSize > Most ? UnknownWavSize : dataSize));
}

}  // namespace Sonmira

#include "codecs/WavHeader.h"

#include "codecs/LittleEndianBytes.h"

#include <algorithm>

namespace Sonmira {

std::vector<std::byte> WavHeader(const PcmFormat& format, qint64 dataSize) {
    const auto data = static_cast<std::uint64_t>(dataSize);
    const auto channels = static_cast<std::uint64_t>(format.Channels);
    const auto rate = static_cast<std::uint64_t>(format.Frequency);
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

}  // namespace Sonmira

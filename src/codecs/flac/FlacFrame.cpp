#include "codecs/flac/FlacFrame.h"

#include <array>
#include <bit>

namespace Sonmira {

namespace {

constexpr std::size_t NumberAt = 4;

// The remainder of `value` bits shifted by one byte, for a polynomial of as many bits.
template <class Number>
constexpr Number ShiftedByte(Number value, Number polynomial) {
    constexpr int bits = static_cast<int>(sizeof(Number)) * 8;
    for (int bit = 0; bit < 8; ++bit) {
        const bool carries = (value >> (bits - 1) & 1) != 0;
        value = static_cast<Number>(value << 1);
        if (carries) value = static_cast<Number>(value ^ polynomial);
    }
    return value;
}

// Table n holds the remainders of a byte that n more bytes follow, so that several are looked up at once.
constexpr std::size_t AtOnce = 8;
constexpr auto Remainders = [] {
    std::array<std::array<std::uint16_t, 256>, AtOnce> tables = {};
    for (unsigned byte = 0; byte < 256; ++byte) {
        tables[0][byte] = ShiftedByte<std::uint16_t>(static_cast<std::uint16_t>(byte << 8), 0x8005);
    }
    for (std::size_t table = 1; table < AtOnce; ++table) {
        for (unsigned byte = 0; byte < 256; ++byte) {
            const std::uint16_t before = tables[table - 1][byte];
            tables[table][byte] = static_cast<std::uint16_t>(before << 8 ^ tables[0][before >> 8]);
        }
    }
    return tables;
}();

unsigned At(std::span<const std::byte> bytes, std::size_t place) {
    return std::to_integer<unsigned>(bytes[place]);
}

std::uint16_t Crc16(std::span<const std::byte> bytes) {
    unsigned crc = 0;
    for (; bytes.size() >= AtOnce; bytes = bytes.subspan(AtOnce)) {
        unsigned next = Remainders[7][At(bytes, 0) ^ crc >> 8] ^ Remainders[6][At(bytes, 1) ^ (crc & 0xFF)];
        for (std::size_t i = 2; i < AtOnce; ++i) next ^= Remainders[AtOnce - 1 - i][At(bytes, i)];
        crc = next;
    }
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        crc = (crc << 8 & 0xFFFF) ^ Remainders[0][crc >> 8 ^ At(bytes, i)];
    }
    return static_cast<std::uint16_t>(crc);
}

std::uint8_t Crc8(std::span<const std::byte> bytes) {
    std::uint8_t crc = 0;
    for (const std::byte byte : bytes) {
        crc =
            ShiftedByte<std::uint8_t>(static_cast<std::uint8_t>(crc ^ std::to_integer<unsigned>(byte)), 0x07);
    }
    return crc;
}

// Bytes of a number, told by its first one: as many as it has leading ones, or one for none.
std::size_t NumberSize(std::byte first) {
    return static_cast<std::size_t>(std::max(std::countl_one(std::to_integer<std::uint8_t>(first)), 1));
}

void AppendNumber(std::uint32_t number, std::vector<std::byte>& bytes) {
    if (number < 0x80) return bytes.push_back(static_cast<std::byte>(number));
    int following = 1;
    while (number >> (5 * following + 6) != 0) ++following;
    const unsigned mark = 0xFF00U >> (following + 1);
    bytes.push_back(static_cast<std::byte>(mark | number >> (6 * following)));
    while (following-- > 0)
        bytes.push_back(static_cast<std::byte>(0x80 | (number >> (6 * following) & 0x3F)));
}

// Bytes between the number and the CRC-8: a block size or a rate that has no code.
std::size_t SizeOfUncoded(std::byte codes) {
    const unsigned block = std::to_integer<unsigned>(codes) >> 4;
    const unsigned rate = std::to_integer<unsigned>(codes) & 15;
    const std::size_t blockSize = block == 6 ? 1 : block == 7 ? 2 : 0;
    const std::size_t rateSize = rate == 12 ? 1 : rate == 13 || rate == 14 ? 2 : 0;
    return blockSize + rateSize;
}

void Append(std::span<const std::byte> from, std::vector<std::byte>& to) {
    to.insert(to.end(), from.begin(), from.end());
}

}  // namespace

void AppendRenumbered(std::span<const std::byte> frame, std::uint32_t number,
                      std::vector<std::byte>& frames) {
    const std::size_t start = frames.size();
    const auto written = [&] { return std::span<const std::byte>(frames).subspan(start); };
    const std::span<const std::byte> behind = frame.subspan(NumberAt + NumberSize(frame[NumberAt]));
    const std::size_t uncoded = SizeOfUncoded(frame[2]);
    Append(frame.first(NumberAt), frames);
    AppendNumber(number, frames);
    Append(behind.first(uncoded), frames);
    frames.push_back(static_cast<std::byte>(Crc8(written())));
    Append(behind.subspan(uncoded + 1, behind.size() - uncoded - 3), frames);
    const std::uint16_t crc = Crc16(written());
    frames.push_back(static_cast<std::byte>(crc >> 8));
    frames.push_back(static_cast<std::byte>(crc & 0xFF));
}

}  // namespace Sonmira

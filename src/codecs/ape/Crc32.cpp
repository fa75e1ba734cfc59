#include "codecs/ape/Crc32.h"

#include <QtEndian>

#include <array>

namespace Sonmira {

namespace {

// Table n tells what a byte does to the sum when n more bytes follow it: eight bytes are looked up at once
// and do not wait for each other.
constexpr int Slices = 8;

constexpr auto MakeTables() {
    std::array<std::array<std::uint32_t, 256>, Slices> tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte;
        for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320U : 0U);
        tables[0][byte] = sum;
    }
    for (std::size_t slice = 1; slice < Slices; ++slice) {
        for (std::uint32_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t before = tables[slice - 1][byte];
            tables[slice][byte] = (before >> 8) ^ tables[0][before & 0xFF];
        }
    }
    return tables;
}

constinit const auto Tables = MakeTables();

}  // namespace

std::uint32_t Crc32Of(std::span<const std::byte> bytes) {
    std::uint32_t sum = ~0U;
    const std::byte* at = bytes.data();
    std::size_t left = bytes.size();
    for (; left >= Slices; left -= Slices, at += Slices) {
        const std::uint32_t low = qFromLittleEndian<quint32>(at) ^ sum;
        const auto high = qFromLittleEndian<quint32>(at + 4);
        sum = Tables[7][low & 0xFF] ^ Tables[6][low >> 8 & 0xFF] ^ Tables[5][low >> 16 & 0xFF] ^
              Tables[4][low >> 24] ^ Tables[3][high & 0xFF] ^ Tables[2][high >> 8 & 0xFF] ^
              Tables[1][high >> 16 & 0xFF] ^ Tables[0][high >> 24];
    }
    for (; left > 0; --left, ++at)
        sum = (sum >> 8) ^ Tables[0][(sum ^ std::to_integer<std::uint32_t>(*at)) & 0xFF];
    return ~sum;
}

}  // namespace Sonmira

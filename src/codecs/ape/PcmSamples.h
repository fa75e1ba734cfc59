#pragma once

#include "codecs/ape/ApeFormat.h"

#include <QtEndian>

#include <cstddef>

// One sample of packed little-endian PCM, as WAV files hold it: 8 bits are unsigned.
namespace Sonmira {

template <int Bits>
std::int32_t ApeSampleAt(const std::byte* from) {
    if constexpr (Bits == 8) {
        return std::to_integer<std::int32_t>(*from) - 128;
    } else if constexpr (Bits == 16) {
        return qFromLittleEndian<qint16>(from);
    } else {
        const auto low = std::to_integer<std::uint32_t>(from[0]);
        const auto middle = std::to_integer<std::uint32_t>(from[1]);
        const auto high = std::to_integer<std::uint32_t>(from[2]);
        return static_cast<std::int32_t>(low << 8 | middle << 16 | high << 24) >> 8;
    }
}

template <int Bits>
void PutApeSample(std::byte* to, std::int32_t sample) {
    const std::uint32_t value = static_cast<std::uint32_t>(sample) + (Bits == 8 ? 128 : 0);
    for (int i = 0; i < Bits / 8; ++i) to[i] = static_cast<std::byte>(value >> (8 * i));
}

// Calls `run` with the width as a constant, std::integral_constant<int, 8>, <int, 16> or <int, 24>.
template <class Run>
void WithApeWidth(int bits, Run&& run) {
    switch (bits) {
        case 8:
            return run(std::integral_constant<int, 8>());
        case 16:
            return run(std::integral_constant<int, 16>());
        default:
            return run(std::integral_constant<int, 24>());
    }
}

}  // namespace Sonmira

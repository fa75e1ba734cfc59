#pragma once

#include "codecs/ape/ApeFormat.h"

#include <array>
#include <bit>
#include <cstdint>

// Tables that stand for the divisions of the entropy coder.
namespace Sonmira {

// For every divisor n below the count: value * ApeReciprocals[n] >> ApeReciprocalShift(n) is value / n,
// exact for values up to 2^31.
inline constexpr std::uint32_t ApeReciprocalCount = 65536;
extern const std::array<std::uint32_t, ApeReciprocalCount> ApeReciprocals;

constexpr unsigned ApeReciprocalShift(std::uint32_t divisor) {
    return 31 + static_cast<unsigned>(std::bit_width(divisor - 1));
}

// The last symbol that starts at or before the group of places (of 65536) that a place lies in.
inline constexpr int ApeSymbolAtShift = 4;
extern const std::array<std::uint8_t, (65536 >> ApeSymbolAtShift)> ApeSymbolAt;

}  // namespace Sonmira

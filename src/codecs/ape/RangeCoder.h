#pragma once

#include "codecs/ape/ApeFormat.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Sonmira {

// State of the range coder of one frame, and where its numbers come from or go to. The coding itself is in
// ResidualCoding.h, which is compiled once for each instruction set.

// Which lanes of a step a frame codes, in that order.
struct ApeCodedLanes {
    int Count = 0;
    std::array<int, 2> Lane{};
};

// The stream is one long binary fraction: `Low` holds its last 31 bits, which later numbers still change,
// `Last` the byte before them, which a carry can still change, and a carry beyond that is rare enough to
// walk back through the bytes written.
struct ApeRangeEncoder {
    // Most bytes that one number may take.
    static constexpr std::size_t MostBytes = 24;

    ApeCodedLanes Lanes;
    std::array<std::uint32_t, 2> Estimate{};  // of the amount of the residuals, one a coded lane
    std::uint64_t Low = 0;
    std::uint32_t Range = 1U << 31;
    std::uint64_t Last = 0;
    std::uint8_t* Out = nullptr;  // where `Last` will go
    std::vector<std::uint8_t> Bytes;

    // Begins a frame; `first` bytes are left free before the coder's own.
    void Start(const ApeCodedLanes& lanes, std::size_t first);
    // Makes room for `numbers` more; before every call of the kernel.
    void Reserve(std::size_t numbers);
    // Writes what is left; Bytes is then the whole.
    void Finish();
};

struct ApeRangeDecoder {
    // Bytes that one number may take: so many times the numbers of a chunk must be readable behind the end.
    static constexpr std::size_t MostBytes = 24;

    ApeCodedLanes Lanes;
    std::array<std::uint32_t, 2> Estimate{};
    std::uint32_t Code = 0;
    std::uint32_t Range = 1U << 31;
    const std::uint8_t* In = nullptr;  // the byte of which the lowest bit is the next one to be read
    bool Damaged = false;              // met what no encoder writes

    // Begins at the coder's first byte, of which at least 8 must be readable.
    void Start(const ApeCodedLanes& lanes, const std::uint8_t* in);
};

// Tables that stand for the divisions of the entropy coder.

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

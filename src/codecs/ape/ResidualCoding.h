#pragma once

#include "codecs/ape/ApeFormat.h"
#include "codecs/ape/RangeCoder.h"

#include <bit>
#include <cstring>
#include <span>

// Coding of residuals, for the files that are compiled for one instruction set each. Nothing in here may be
// shared between those: a function of the one must never stand in for that of the other, hence the namespace
// without a name.
namespace Sonmira {
namespace {

// The range must stay above this; else it moves up by whole bytes.
inline constexpr unsigned ApeWindowBits = 31;
inline constexpr std::uint64_t ApeWindow = (std::uint64_t{1} << ApeWindowBits) - 1;

// By how many bits a range of 1 to 2^31 has to move up until it is above 2^23: 0, 8, 16 or 24.
inline unsigned ApeMoveOf(std::uint32_t range) {
    return static_cast<unsigned>(std::countl_zero(range - 1) - 1) & 24U;
}

inline std::uint64_t ApeBigEndian(std::uint64_t value) {
    return std::endian::native == std::endian::little ? __builtin_bswap64(value) : value;
}

// The estimate after a residual of the amount `x`, and the divisor before it.
inline std::uint32_t ApePivot(std::uint32_t estimate) {
    return estimate < 64 ? 1 : estimate >> 5;
}
inline std::uint32_t ApeNextEstimate(std::uint32_t estimate, std::uint32_t x) {
    return estimate + x / 2 + x % 2 - ((estimate + 16) >> 5);
}
// How far down a divisor has to move to be below 65536, so that a range can be divided by it.
inline unsigned ApePivotShift(std::uint32_t pivot) {
    return static_cast<unsigned>(std::max(static_cast<int>(std::bit_width(pivot)) - 16, 0));
}

// The encoder's numbers in registers, for as long as a loop runs: whatever is not inlined works on a copy.
class ApeEncoding {
public:
    explicit ApeEncoding(const ApeRangeEncoder& coder)
        : Low(coder.Low), Range(coder.Range), Last(coder.Last), Out(coder.Out) {}
    void Save(ApeRangeEncoder& coder) const {
        coder.Low = Low;
        coder.Range = Range;
        coder.Last = Last;
        coder.Out = Out;
    }

    // Returns the next estimate.
    [[gnu::always_inline]] std::uint32_t Number(std::int32_t value, std::uint32_t estimate) {
        const auto twice = static_cast<std::uint32_t>(value) * 2;
        const std::uint32_t x = value > 0 ? twice - 1 : 0U - twice;
        const std::uint32_t pivot = ApePivot(estimate);
        // Divisions by the pivot; a pivot that has no reciprocal is dealt with apart.
        const std::uint64_t reciprocal = ApeReciprocals[pivot % ApeReciprocalCount];
        const unsigned shift = ApeReciprocalShift(pivot);
        const auto over = static_cast<std::uint32_t>(x * reciprocal >> shift);
        if (pivot < ApeReciprocalCount && x < (1U << 31) && over < ApeEscape) [[likely]] {
            Pending = 0;  // as it always is here: lets the first move go unchecked
            Symbol(over);
            Move();
            Range = static_cast<std::uint32_t>(Range * reciprocal >> shift);
            Low += std::uint64_t{Range} * (x - over * pivot);
            Store();
        } else {
            *this = RareNumber(*this, x, pivot);
        }
        return ApeNextEstimate(estimate, x);
    }

    void Finish() {
        Move();
        Store();
        Low = ((Low >> 23) + 1) << 23 << 8;
        Pending = 8;
        Store();
        *Out++ = static_cast<std::uint8_t>(Last);
        for (int i = 0; i < 3; ++i) *Out++ = 0;
    }

private:
    [[gnu::always_inline]] void Move() {
        const unsigned move = ApeMoveOf(Range);
        if (Pending + move > 32) [[unlikely]]
            Store();
        Range <<= move;
        Low <<= move;
        Pending += move;
    }

    [[gnu::always_inline]] void Symbol(std::uint32_t symbol) {
        Move();
        const std::uint32_t part = Range >> 16;
        const ApeSymbolPart place = ApeSymbolParts[symbol];
        Low += std::uint64_t{part} * place.Start;
        Range = part * place.Width;
    }

    void OneOf(std::uint32_t value, std::uint32_t count) {
        Move();
        Range /= count;
        Low += std::uint64_t{Range} * value;
    }

    void Plain16(std::uint32_t bits) {
        Move();
        Range >>= 16;
        Low += std::uint64_t{Range} * bits;
    }

    [[gnu::noinline]] static ApeEncoding RareNumber(ApeEncoding coding, std::uint32_t x,
                                                    std::uint32_t pivot) {
        const std::uint32_t over = x / pivot;
        const std::uint32_t base = x - over * pivot;
        if (over < ApeEscape) {
            coding.Symbol(over);
        } else {
            coding.Symbol(ApeEscape);
            coding.Plain16(over >> 16);
            coding.Plain16(over & 0xFFFF);
        }
        if (const unsigned shift = ApePivotShift(pivot); shift > 0) {
            coding.OneOf(base >> shift, (pivot >> shift) + 1);
            coding.OneOf(base & ((1U << shift) - 1), 1U << shift);
        } else {
            coding.OneOf(base, pivot);
        }
        coding.Store();
        return coding;
    }

    // Writes the whole bytes above the window, all but the last one.
    [[gnu::always_inline]] void Store() {
        const std::uint64_t bytes = (Last << Pending) + (Low >> ApeWindowBits);
        if ((bytes >> Pending >> 8) != 0) [[unlikely]]
            Carry(Out);
        const std::uint64_t placed = ApeBigEndian(bytes << (56 - Pending));
        std::memcpy(Out, &placed, sizeof placed);
        Out += Pending / 8;
        Last = bytes & 0xFF;
        Low &= ApeWindow;
        Pending = 0;
    }

    [[gnu::noinline]] static void Carry(std::uint8_t* behind) {
        while (++*--behind == 0) {
        }
    }

    std::uint64_t Low;
    std::uint32_t Range;
    std::uint64_t Last;
    std::uint8_t* Out;
    unsigned Pending = 0;  // bits above the window
};

inline void ApeFinish(ApeRangeEncoder& coder) {
    ApeEncoding encoding(coder);
    encoding.Finish();
    encoding.Save(coder);
}

inline void ApeEncodeResiduals(std::span<ApeRangeEncoder* const> coders, const std::int32_t* values,
                               std::size_t steps) {
    for (ApeRangeEncoder* const coder : coders) {
        ApeEncoding encoding(*coder);
        const std::int32_t* const first = values + coder->Lanes.Lane[0];
        const std::int32_t* const second = values + coder->Lanes.Lane[1];
        std::array<std::uint32_t, 2> estimate = coder->Estimate;
        if (coder->Lanes.Count == 2) {
            for (std::size_t at = 0; at < steps * 8; at += 8) {
                estimate[0] = encoding.Number(first[at], estimate[0]);
                estimate[1] = encoding.Number(second[at], estimate[1]);
            }
        } else {
            for (std::size_t at = 0; at < steps * 8; at += 8)
                estimate[0] = encoding.Number(first[at], estimate[0]);
        }
        coder->Estimate = estimate;
        encoding.Save(*coder);
    }
}

class ApeDecoding {
public:
    explicit ApeDecoding(const ApeRangeDecoder& coder) : Code(coder.Code), Range(coder.Range), In(coder.In) {}
    void Save(ApeRangeDecoder& coder) const {
        coder.Code = Code;
        coder.Range = Range;
        coder.In = In;
        coder.Damaged |= Damaged;
    }

    [[gnu::always_inline]] std::int32_t Number(std::uint32_t& estimate) {
        const std::uint32_t pivot = ApePivot(estimate);
        std::uint32_t over = Symbol();
        if (over == ApeEscape) [[unlikely]] {
            over = Plain16() << 16;
            over |= Plain16();
        }
        std::uint32_t base = 0;
        if (pivot < ApeReciprocalCount) [[likely]] {
            Move();
            Range = static_cast<std::uint32_t>(Range * std::uint64_t{ApeReciprocals[pivot]} >>
                                               ApeReciprocalShift(pivot));
            base = Take(pivot);
        } else {
            const unsigned shift = ApePivotShift(pivot);
            if (shift > 0) {
                base = OneOf((pivot >> shift) + 1) << shift;
                base |= OneOf(1U << shift);
            } else {
                base = OneOf(pivot);
            }
        }
        const std::uint32_t x = over * pivot + base;
        estimate = ApeNextEstimate(estimate, x);
        // Half of it, and one more where it is odd; the even ones are negative. Nobody can foretell which.
        return static_cast<std::int32_t>(0U - (x / 2 ^ (0U - x % 2)));
    }

private:
    [[gnu::always_inline]] void Move() {
        const unsigned move = ApeMoveOf(Range);
        std::uint64_t next = 0;
        std::memcpy(&next, In, sizeof next);
        // The first 7 bits at In have been read.
        next = ApeBigEndian(next) << 7 >> 1 >> (63 - move);
        Range <<= move;
        Code = Code << move | static_cast<std::uint32_t>(next);
        In += move / 8;
    }

    [[gnu::always_inline]] std::uint32_t Take(std::uint32_t count) {
        const std::uint32_t value = Code / Range;
        if (value >= count) [[unlikely]] {
            Refuse();
            return 0;
        }
        Code -= value * Range;
        return value;
    }

    [[gnu::always_inline]] std::uint32_t Symbol() {
        Move();
        const std::uint32_t part = Range >> 16;
        const std::uint32_t place = Code / part;
        if (place > 65535) [[unlikely]] {
            Refuse();
            return 0;
        }
        std::uint32_t symbol = ApeSymbolAt[place >> ApeSymbolAtShift];
        while (place >= ApeSymbolStarts[symbol + 1]) ++symbol;
        Code -= part * ApeSymbolStarts[symbol];
        Range = part * (ApeSymbolStarts[symbol + 1] - ApeSymbolStarts[symbol]);
        return symbol;
    }

    std::uint32_t Plain16() {
        Move();
        Range >>= 16;
        return Take(65536);
    }

    std::uint32_t OneOf(std::uint32_t count) {
        Move();
        Range /= count;
        return Take(count);
    }

    // What follows is of no use, but the range must stay one.
    void Refuse() {
        Damaged = true;
        Code = 0;
        Range = 1U << 31;
    }

    std::uint32_t Code;
    std::uint32_t Range;
    const std::uint8_t* In;
    bool Damaged = false;
};

// The coders take turns number by number, so that the processor works on the next one's while the chain of
// one waits for its divisions.
inline void ApeDecodeResiduals(std::span<ApeRangeDecoder* const> coders, std::int32_t* values,
                               std::size_t steps) {
    for (std::size_t step = 0; step < steps; ++step, values += 8) {
        for (int turn = 0; turn < 2; ++turn) {
            for (ApeRangeDecoder* const coder : coders) {
                if (turn >= coder->Lanes.Count) continue;
                const auto place = static_cast<std::size_t>(turn);
                ApeDecoding decoding(*coder);
                values[coder->Lanes.Lane[place]] = decoding.Number(coder->Estimate[place]);
                decoding.Save(*coder);
            }
        }
    }
}

}  // namespace
}  // namespace Sonmira

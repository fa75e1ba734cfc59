#include "codecs/ape/RangeCoder.h"

#include "codecs/ape/ApeFormat.h"
#include "codecs/ape/ResidualCoding.h"

namespace Sonmira {

void ApeRangeEncoder::Start(const ApeCodedLanes& lanes, std::size_t first) {
    Lanes = lanes;
    Estimate.fill(ApeStartEstimate);
    Low = 0;
    Range = 1U << 31;
    Last = 0;
    if (Bytes.size() < first + MostBytes) Bytes.resize(first + MostBytes);
    Out = Bytes.data() + first;
}

void ApeRangeEncoder::Reserve(std::size_t numbers) {
    const auto used = static_cast<std::size_t>(Out - Bytes.data());
    const std::size_t needed = used + numbers * MostBytes + MostBytes;
    if (Bytes.size() >= needed) return;
    Bytes.resize(std::max(needed, Bytes.size() * 2));
    Out = Bytes.data() + used;
}

void ApeRangeEncoder::Finish() {
    Reserve(1);
    ApeFinish(*this);
    Bytes.resize(static_cast<std::size_t>(Out - Bytes.data()));
}

void ApeRangeDecoder::Start(const ApeCodedLanes& lanes, const std::uint8_t* in) {
    Lanes = lanes;
    Estimate.fill(ApeStartEstimate);
    Range = 1U << 31;
    Damaged = false;
    // The first byte is always 0; 31 bits follow.
    std::uint32_t start = 0;
    for (int i = 1; i <= 4; ++i) start = start << 8 | in[i];
    Code = start >> 1;
    In = in + 4;
}

namespace {

constexpr auto MakeReciprocals() {
    std::array<std::uint32_t, ApeReciprocalCount> table{};
    for (std::uint32_t divisor = 1; divisor < ApeReciprocalCount; ++divisor) {
        const std::uint64_t power = std::uint64_t{1} << ApeReciprocalShift(divisor);
        table[divisor] = static_cast<std::uint32_t>((power + divisor - 1) / divisor);
    }
    return table;
}

constexpr auto MakeSymbolAt() {
    std::array<std::uint8_t, (65536 >> ApeSymbolAtShift)> table{};
    std::uint8_t symbol = 0;
    for (std::uint32_t group = 0; group < table.size(); ++group) {
        while (ApeSymbolStarts[symbol + 1U] <= group << ApeSymbolAtShift) ++symbol;
        table[group] = symbol;
    }
    return table;
}

}  // namespace

const std::array<std::uint32_t, ApeReciprocalCount> ApeReciprocals = MakeReciprocals();
const std::array<std::uint8_t, (65536 >> ApeSymbolAtShift)> ApeSymbolAt = MakeSymbolAt();

}  // namespace Sonmira

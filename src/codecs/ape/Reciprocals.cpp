#include "codecs/ape/Reciprocals.h"

namespace Sonmira {

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

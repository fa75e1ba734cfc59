#pragma once

#include "codecs/sound/AudioBlock.h"

#include <array>
#include <cstdint>

// The numbers of a Monkey's Audio stream of file version 3990, the one that is written here. The facts were
// gathered from decoders by running them; docs/ape.md has them in one place, with worked bytes.
namespace Sonmira {

inline constexpr int ApeVersion = 3990;
inline constexpr int ApeDescriptorBytes = 52;
inline constexpr int ApeHeaderBytes = 24;

// One adaptive filter: how many samples it looks back, and by how many bits its sum is brought down.
struct ApeFilterShape {
    int Order;
    int Shift;
};

struct ApeLevel {
    int Number;  // as in the file: 1000 fast to 5000 insane
    int BlocksPerFrame;
    int FilterCount;
    std::array<ApeFilterShape, 3> Filters;  // in the order in which an encoder applies them
};

inline constexpr std::array<ApeLevel, 5> ApeLevels = {{
    {1000, 73728, 0, {}},
    {2000, 73728, 1, {{{16, 11}}}},
    {3000, 73728, 1, {{{64, 11}}}},
    {4000, 73728 * 4, 2, {{{256, 13}, {32, 10}}}},
    {5000, 73728 * 16, 3, {{{1280, 15}, {256, 13}, {16, 11}}}},
}};

// The level of that number; null when there is none.
constexpr const ApeLevel* ApeLevelOf(int number) {
    for (const ApeLevel& level : ApeLevels) {
        if (level.Number == number) return &level;
    }
    return nullptr;
}

// Flags word of a frame that is coded in a special way.
namespace ApeFrameFlag {
inline constexpr std::uint32_t LeftSilent = 1;  // of one channel: silent
inline constexpr std::uint32_t RightSilent = 2;
inline constexpr std::uint32_t Alike = 4;  // both channels are the same; one is coded
}  // namespace ApeFrameFlag

// The header's flag for a file that carries no WAV header; decoders make one.
inline constexpr int ApeNoWavHeader = 32;

// State of the predictor at the start of a frame.
inline constexpr std::array<std::int32_t, 4> ApeStartCoefficients = {360, 317, -109, 98};
// State of the entropy coder's estimate at the start of a frame.
inline constexpr std::uint32_t ApeStartEstimate = 16384;

// Cumulative starts of the 64 symbols out of a total of 65536, with the total behind them.
inline constexpr int ApeSymbols = 64;
inline constexpr int ApeEscape = ApeSymbols - 1;
constexpr std::array<std::uint32_t, ApeSymbols + 1> MakeApeSymbolStarts() {
    constexpr std::uint32_t common[] = {0,     19578, 36160, 48417, 56323, 60899, 63265,
                                        64435, 64971, 65232, 65351, 65416, 65447, 65466,
                                        65476, 65482, 65485, 65488, 65490, 65491, 65492};
    std::array<std::uint32_t, ApeSymbols + 1> starts{};
    for (std::uint32_t symbol = 0; symbol <= ApeSymbols; ++symbol) {
        starts[symbol] = symbol < std::size(common) ? common[symbol] : 65493 + symbol - 21;
    }
    return starts;
}
inline constexpr std::array<std::uint32_t, ApeSymbols + 1> ApeSymbolStarts = MakeApeSymbolStarts();
static_assert(ApeSymbolStarts[ApeSymbols] == 65536);

// The same, each with its width.
struct ApeSymbolPart {
    std::uint32_t Start;
    std::uint32_t Width;
};
constexpr std::array<ApeSymbolPart, ApeSymbols> MakeApeSymbolParts() {
    std::array<ApeSymbolPart, ApeSymbols> parts{};
    for (std::size_t i = 0; i < ApeSymbols; ++i) {
        parts[i] = {ApeSymbolStarts[i], ApeSymbolStarts[i + 1] - ApeSymbolStarts[i]};
    }
    return parts;
}
inline constexpr std::array<ApeSymbolPart, ApeSymbols> ApeSymbolParts = MakeApeSymbolParts();

}  // namespace Sonmira

#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

// Mixing any number of channels to one or two. No channel is dropped, nothing that fits full scale leaves
// it: the gains that reach one output channel sum to 1.
namespace Sonmira {

// The bits of AudioBlock::Speakers, as the channel mask of WAVE_FORMAT_EXTENSIBLE has them.
namespace Speaker {
inline constexpr std::uint64_t FrontLeft = 0x1;
inline constexpr std::uint64_t FrontRight = 0x2;
inline constexpr std::uint64_t FrontCenter = 0x4;
inline constexpr std::uint64_t LowFrequency = 0x8;
inline constexpr std::uint64_t BackLeft = 0x10;
inline constexpr std::uint64_t BackRight = 0x20;
inline constexpr std::uint64_t FrontLeftOfCenter = 0x40;
inline constexpr std::uint64_t FrontRightOfCenter = 0x80;
inline constexpr std::uint64_t BackCenter = 0x100;
inline constexpr std::uint64_t SideLeft = 0x200;
inline constexpr std::uint64_t SideRight = 0x400;
inline constexpr std::uint64_t TopFrontLeft = 0x1000;
inline constexpr std::uint64_t TopFrontRight = 0x4000;
inline constexpr std::uint64_t TopBackLeft = 0x8000;
inline constexpr std::uint64_t TopBackRight = 0x20000;
}  // namespace Speaker

class ChannelMix {
public:
    // `speakers` is a mask as in AudioBlock; a mask that does not fit the count counts as 0. `sources` is 1
    // or more, `targets` 1 or 2. One channel reaches both of two at full level; two reach one as their mean.
    ChannelMix(int sources, std::uint64_t speakers, int targets);

    // Mixes the interleaved frames of `from`, appending to `to`.
    void Mix(std::span<const float> from, std::vector<float>& to) const;

private:
    std::size_t Sources;
    std::size_t Targets;
    std::vector<std::array<float, 2>> Gains;  // one entry a source channel
};

}  // namespace Sonmira

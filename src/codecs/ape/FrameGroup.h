#pragma once

#include "codecs/ape/ApeFormat.h"
#include "codecs/ape/Lanes.h"

#include <algorithm>
#include <atomic>
#include <span>
#include <vector>

namespace Sonmira {

// Some neighbouring frames, as many as the lanes hold at most: what one worker encodes or decodes at a time.
struct ApeFrameGroup {
    std::vector<std::byte> Pcm;                     // as in the WAV file, all frames in a row
    std::size_t Blocks = 0;                         // of all frames; all but the last frame are full
    std::vector<std::vector<std::uint8_t>> Frames;  // the coded form of each
    std::size_t Lost = 0;                           // blocks that could not be decoded and are silence
};

constexpr std::size_t MostApeFramesOfAGroup(int channels) {
    return ApeLaneCount / static_cast<std::size_t>(channels);
}

// The checksum of a frame's PCM as the frame keeps it: CRC-32 of ISO 3309 less its lowest bit.
std::uint32_t ApeChecksum(std::span<const std::byte> pcm);

// What a worker tells while it works, and is told.
struct ApeWorkState {
    std::atomic<std::int64_t> BlocksDone = 0;
    std::atomic<bool> Stop = false;
};

// The frame's number in the group, its blocks and the place of its first one.
struct ApeFramePlace {
    std::size_t First = 0;
    std::size_t Blocks = 0;
};
inline ApeFramePlace ApeFramePlaceOf(const ApeFrameGroup& group, const ApeLevel& level, std::size_t frame) {
    const auto full = static_cast<std::size_t>(level.BlocksPerFrame);
    const std::size_t first = std::min(frame * full, group.Blocks);
    return {first, std::min(full, group.Blocks - first)};
}

}  // namespace Sonmira

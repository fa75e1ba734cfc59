#pragma once

#include "codecs/ape/ApeWork.h"
#include "codecs/ape/Kernels.h"

#include <array>
#include <vector>

namespace Sonmira {

// Encodes groups of frames. Each worker has one.
class ApeFrameEncoder {
public:
    ApeFrameEncoder(const ApeLevel& level, const PcmFormat& sound, const ApeKernels& kernels);

    // Makes group.Frames of group.Pcm and group.Blocks. Returns early, with nothing of use, when told to
    // stop.
    void Encode(ApeFrameGroup& group, ApeWorkState& state);

private:
    struct Frame {
        std::size_t Number = 0;  // in the group: tells the lanes
        const std::byte* Pcm = nullptr;
        std::size_t Blocks = 0;
        std::uint32_t Flags = 0;
        ApeRangeEncoder Coder;

        bool IsCoded() const { return Coder.Lanes.Count > 0; }
    };

    void Begin(Frame& frame) const;
    void FillLanes(const Frame& frame, std::size_t from, std::size_t steps);
    void CodeLanes(std::size_t from);
    std::vector<std::uint8_t> Finished(Frame& frame) const;

    const ApeLevel& Level;
    PcmFormat Sound;
    const ApeKernels& Kernels;
    ApePredictorLanes Predictor;
    std::vector<ApeFilterLanes> Filters;
    ApeAligned<std::int32_t> Values;
    std::array<Frame, ApeLaneCount> Frames;
    std::size_t FrameCount = 0;
};

// Decodes groups of frames. Each worker has one.
class ApeFrameDecoder {
public:
    // Behind the bytes of every coded frame so many zeros must stand: damaged ones are read beyond their end.
    static constexpr std::size_t Padding = 2 * ApeChunkSteps * ApeRangeDecoder::MostBytes + 64;

    ApeFrameDecoder(const ApeLevel& level, const PcmFormat& sound, const ApeKernels& kernels);

    // Makes group.Pcm of group.Frames and group.Blocks. A frame that is damaged becomes silence and is
    // counted in group.Damaged. Returns early, with nothing of use, when told to stop.
    void Decode(ApeFrameGroup& group, ApeWorkState& state);

private:
    struct Frame {
        std::size_t Number = 0;
        std::span<std::byte> Pcm;
        std::size_t Blocks = 0;
        std::uint32_t Crc = 0;  // as in the frame, without its lowest bit
        const std::uint8_t* End = nullptr;
        ApeRangeDecoder Coder;
        bool IsDamaged = false;
    };

    void Begin(Frame& frame, std::span<const std::uint8_t> bytes) const;
    void DecodeLanes(std::size_t from);
    void TakeLanes(Frame& frame, std::size_t from, std::size_t steps) const;
    bool IsRight(const Frame& frame) const;

    const ApeLevel& Level;
    PcmFormat Sound;
    const ApeKernels& Kernels;
    ApePredictorLanes Predictor;
    std::vector<ApeFilterLanes> Filters;
    ApeAligned<std::int32_t> Values;
    std::array<Frame, ApeLaneCount> Frames;
    std::size_t FrameCount = 0;
};

}  // namespace Sonmira

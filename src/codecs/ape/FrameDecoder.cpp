#include "codecs/ape/FrameDecoder.h"

#include "codecs/ape/PcmSamples.h"

#include <QtEndian>

namespace Sonmira {

namespace {

constexpr std::size_t Half = ApeLaneCount / 2;
// The check sum, the flags and the first bytes of the coder.
constexpr std::size_t LeastBytes = 4 + 4 + 5;

bool IsSilent(std::uint32_t flags, int channels) {
    const std::uint32_t silent = ApeFrameFlag::LeftSilent | (channels == 2 ? ApeFrameFlag::RightSilent : 0);
    return (flags & silent) == silent;
}

}  // namespace

ApeFrameDecoder::ApeFrameDecoder(const ApeLevel& level, const PcmFormat& sound, const ApeKernels& kernels)
    : Level(level),
      Sound(sound),
      Kernels(kernels),
      Filters(MakeApeFilters(level)),
      Values(MakeApeAligned<std::int32_t>(ApeChunkSteps * ApeLaneCount)) {}

void ApeFrameDecoder::Begin(Frame& frame, std::span<const std::uint8_t> bytes) const {
    const auto crc = qFromBigEndian<quint32>(bytes.data());
    const bool isFlagged = crc >> 31 != 0;
    const std::uint32_t flags = isFlagged ? qFromBigEndian<quint32>(bytes.data() + 4) : 0;
    const int lane = static_cast<int>(frame.Number);
    const int mean = lane + static_cast<int>(Half);
    ApeCodedLanes lanes;
    if (IsSilent(flags, Sound.Channels)) {
        lanes = {};
    } else if (Sound.Channels == 1) {
        lanes = {1, {lane, 0}};
    } else if ((flags & ApeFrameFlag::Alike) != 0) {
        lanes = {1, {mean, 0}};
    } else {
        lanes = {2, {lane, mean}};
    }
    frame.Crc = crc & 0x7FFFFFFF;
    frame.End = bytes.data() + bytes.size() - Padding;
    frame.IsDamaged = bytes.size() < LeastBytes - (isFlagged ? 0 : 4) + Padding;
    frame.Coder.Start(lanes, bytes.data() + (isFlagged ? 8 : 4));
}

void ApeFrameDecoder::Decode(ApeFrameGroup& group, ApeWorkState& state) {
    const auto blockBytes = static_cast<std::size_t>(Sound.FrameSize());
    FrameCount = group.Frames.size();
    group.Pcm.resize(group.Blocks * blockBytes);
    for (std::size_t i = 0; i < FrameCount; ++i) {
        const ApeFramePlace place = ApeFramePlaceOf(group, Level, i);
        Frames[i].Number = i;
        Frames[i].Blocks = place.Blocks;
        Frames[i].Pcm = std::span(group.Pcm).subspan(place.First * blockBytes, place.Blocks * blockBytes);
        Begin(Frames[i], group.Frames[i]);
    }
    Predictor = {};
    for (ApeFilterLanes& filter : Filters) filter.Reset();
    // The first frame is the longest.
    for (std::size_t from = 0; from < Frames[0].Blocks && !state.Stop; from += ApeChunkSteps) {
        DecodeLanes(from);
        for (std::size_t i = 0; i < FrameCount; ++i) {
            const std::size_t left = Frames[i].Blocks - std::min(from, Frames[i].Blocks);
            state.BlocksDone += static_cast<std::int64_t>(std::min(left, ApeChunkSteps));
        }
    }
    for (Frame& frame : std::span(Frames).first(FrameCount)) {
        if (IsRight(frame)) continue;
        group.Lost += frame.Blocks;
        std::fill(frame.Pcm.begin(), frame.Pcm.end(), static_cast<std::byte>(Sound.Bits == 8 ? 0x80 : 0));
    }
}

void ApeFrameDecoder::DecodeLanes(std::size_t from) {
    std::fill_n(Values.get(), ApeChunkSteps * ApeLaneCount, 0);
    std::array<ApeRangeDecoder*, ApeLaneCount> coders{};
    std::size_t count = 0;
    for (Frame& frame : std::span(Frames).first(FrameCount)) {
        if (from >= frame.Blocks || frame.IsDamaged || frame.Coder.Lanes.Count == 0) continue;
        const std::size_t steps = std::min(ApeChunkSteps, frame.Blocks - from);
        if (steps == ApeChunkSteps) {
            coders[count++] = &frame.Coder;
        } else {
            ApeRangeDecoder* const ending = &frame.Coder;
            Kernels.Decode({&ending, 1}, Values.get(), steps);
        }
    }
    Kernels.Decode({coders.data(), count}, Values.get(), ApeChunkSteps);
    for (auto filter = Filters.rbegin(); filter != Filters.rend(); ++filter) {
        Kernels.Unfilter(*filter, Values.get(), ApeChunkSteps);
    }
    Kernels.Restore(Predictor, Values.get(), ApeChunkSteps, Sound.Channels == 2);
    for (Frame& frame : std::span(Frames).first(FrameCount)) {
        if (from >= frame.Blocks) continue;
        // Damaged bytes can ask for more and more.
        frame.IsDamaged |= frame.Coder.Damaged || frame.Coder.In > frame.End;
        TakeLanes(frame, from, std::min(ApeChunkSteps, frame.Blocks - from));
    }
}

void ApeFrameDecoder::TakeLanes(Frame& frame, std::size_t from, std::size_t steps) const {
    WithApeWidth(Sound.Bits, [&](auto width) {
        constexpr std::size_t sampleBytes = width() / 8;
        std::byte* pcm = frame.Pcm.data() + from * static_cast<std::size_t>(Sound.FrameSize());
        const std::int32_t* values = &Values[frame.Number];
        if (Sound.Channels == 1) {
            for (std::size_t i = 0; i < steps; ++i) {
                PutApeSample<width()>(pcm + i * sampleBytes, values[i * ApeLaneCount]);
            }
            return;
        }
        for (std::size_t i = 0; i < steps; ++i) {
            // Unsigned, since damaged frames may hold any numbers.
            const std::int32_t difference = values[i * ApeLaneCount];
            const std::uint32_t left = static_cast<std::uint32_t>(values[i * ApeLaneCount + Half]) -
                                       static_cast<std::uint32_t>(difference / 2);
            const std::uint32_t right = left + static_cast<std::uint32_t>(difference);
            PutApeSample<width()>(pcm + i * 2 * sampleBytes, static_cast<std::int32_t>(left));
            PutApeSample<width()>(pcm + (i * 2 + 1) * sampleBytes, static_cast<std::int32_t>(right));
        }
    });
}

bool ApeFrameDecoder::IsRight(const Frame& frame) const {
    return !frame.IsDamaged && ApeChecksum(frame.Pcm) == frame.Crc;
}

}  // namespace Sonmira

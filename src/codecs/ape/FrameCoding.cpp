#include "codecs/ape/FrameCoding.h"

#include "codecs/ape/Lanes.h"

#include <QtEndian>

#include <cstring>

namespace Sonmira {

namespace {

// One sample of packed little-endian PCM, as WAV files hold it: 8 bits are unsigned.
template <int Bits>
std::int32_t ApeSampleAt(const std::byte* from) {
    if constexpr (Bits == 8) {
        return std::to_integer<std::int32_t>(*from) - 128;
    } else if constexpr (Bits == 16) {
        return qFromLittleEndian<qint16>(from);
    } else {
        const auto low = std::to_integer<std::uint32_t>(from[0]);
        const auto middle = std::to_integer<std::uint32_t>(from[1]);
        const auto high = std::to_integer<std::uint32_t>(from[2]);
        return static_cast<std::int32_t>(low << 8 | middle << 16 | high << 24) >> 8;
    }
}

template <int Bits>
void PutApeSample(std::byte* to, std::int32_t sample) {
    const std::uint32_t value = static_cast<std::uint32_t>(sample) + (Bits == 8 ? 128 : 0);
    for (int i = 0; i < Bits / 8; ++i) to[i] = static_cast<std::byte>(value >> (8 * i));
}

// Calls `run` with the width as a constant, std::integral_constant<int, 8>, <int, 16> or <int, 24>.
template <class Run>
void WithApeWidth(int bits, Run&& run) {
    switch (bits) {
        case 8:
            return run(std::integral_constant<int, 8>());
        case 16:
            return run(std::integral_constant<int, 16>());
        default:
            return run(std::integral_constant<int, 24>());
    }
}

constexpr std::size_t CrcBytes = 4;
constexpr std::size_t FlagsBytes = 4;
constexpr std::size_t Half = ApeLaneCount / 2;

bool IsSilent(std::span<const std::byte> pcm, int bits) {
    const auto nothing = static_cast<std::byte>(bits == 8 ? 0x80 : 0);
    // All bytes are alike where each is like the next.
    return pcm.front() == nothing && std::memcmp(pcm.data(), pcm.data() + 1, pcm.size() - 1) == 0;
}

bool IsAlike(std::span<const std::byte> pcm, std::size_t sampleBytes) {
    for (std::size_t at = 0; at < pcm.size(); at += 2 * sampleBytes) {
        if (std::memcmp(&pcm[at], &pcm[at + sampleBytes], sampleBytes) != 0) return false;
    }
    return true;
}

}  // namespace

ApeFrameEncoder::ApeFrameEncoder(const ApeLevel& level, const PcmFormat& sound, const ApeKernels& kernels)
    : Level(level),
      Sound(sound),
      Kernels(kernels),
      Filters(MakeApeFilters(level)),
      Values(MakeApeAligned<std::int32_t>(ApeChunkSteps * ApeLaneCount)) {}

// Finds out what of the frame is coded, and how.
void ApeFrameEncoder::Begin(Frame& frame) const {
    const std::span pcm(frame.Pcm, frame.Blocks * static_cast<std::size_t>(Sound.FrameSize()));
    const int lane = static_cast<int>(frame.Number);
    const int mean = lane + static_cast<int>(Half);
    ApeCodedLanes lanes;
    frame.Flags = 0;
    if (IsSilent(pcm, Sound.Bits)) {
        frame.Flags = ApeFrameFlag::LeftSilent | (Sound.Channels == 2 ? ApeFrameFlag::RightSilent : 0);
    } else if (Sound.Channels == 1) {
        lanes = {1, {lane, 0}};
    } else if (IsAlike(pcm, static_cast<std::size_t>(Sound.Bits) / 8)) {
        // The difference is 0 throughout, so that the lane of the mean is that of a single channel.
        frame.Flags = ApeFrameFlag::Alike;
        lanes = {1, {mean, 0}};
    } else {
        lanes = {2, {lane, mean}};
    }
    frame.Coder.Start(lanes, CrcBytes + (frame.Flags != 0 ? FlagsBytes : 0));
    const std::uint32_t flagged = frame.Flags != 0 ? 1U << 31 : 0;
    qToBigEndian<quint32>(ApeChecksum(pcm) | flagged, frame.Coder.Bytes.data());
    if (frame.Flags != 0) qToBigEndian<quint32>(frame.Flags, frame.Coder.Bytes.data() + CrcBytes);
}

void ApeFrameEncoder::Encode(ApeFrameGroup& group, ApeWorkState& state) {
    const auto full = static_cast<std::size_t>(Level.BlocksPerFrame);
    FrameCount = (group.Blocks + full - 1) / full;
    for (std::size_t i = 0; i < FrameCount; ++i) {
        const ApeFramePlace place = ApeFramePlaceOf(group, Level, i);
        Frames[i].Number = i;
        Frames[i].Pcm = group.Pcm.data() + place.First * static_cast<std::size_t>(Sound.FrameSize());
        Frames[i].Blocks = place.Blocks;
        Begin(Frames[i]);
    }
    Predictor = {};
    for (ApeFilterLanes& filter : Filters) filter.Reset();
    // The first frame is the longest.
    for (std::size_t from = 0; from < Frames[0].Blocks && !state.Stop; from += ApeChunkSteps) {
        CodeLanes(from);
        for (std::size_t i = 0; i < FrameCount; ++i) {
            const std::size_t left = Frames[i].Blocks - std::min(from, Frames[i].Blocks);
            state.BlocksDone += static_cast<std::int64_t>(std::min(left, ApeChunkSteps));
        }
    }
    group.Frames.clear();
    for (std::size_t i = 0; i < FrameCount; ++i) group.Frames.push_back(Finished(Frames[i]));
}

// One chunk of all frames. All are full but the last one of a file, which may end within the chunk.
void ApeFrameEncoder::CodeLanes(std::size_t from) {
    std::fill_n(Values.get(), ApeChunkSteps * ApeLaneCount, 0);
    std::array<ApeRangeEncoder*, ApeLaneCount> going{};
    std::size_t goingCount = 0;
    ApeRangeEncoder* ending = nullptr;
    std::size_t endingSteps = 0;
    for (std::size_t i = 0; i < FrameCount; ++i) {
        Frame& frame = Frames[i];
        if (!frame.IsCoded() || from >= frame.Blocks) continue;
        const std::size_t steps = std::min(ApeChunkSteps, frame.Blocks - from);
        FillLanes(frame, from, steps);
        frame.Coder.Reserve(2 * ApeChunkSteps);
        if (steps == ApeChunkSteps) {
            going[goingCount++] = &frame.Coder;
        } else {
            ending = &frame.Coder;
            endingSteps = steps;
        }
    }
    if (goingCount == 0 && ending == nullptr) return;
    const std::size_t steps = goingCount > 0 ? ApeChunkSteps : endingSteps;
    Kernels.Predict(Predictor, Values.get(), steps, Sound.Channels == 2);
    for (ApeFilterLanes& filter : Filters) Kernels.Filter(filter, Values.get(), steps);
    if (goingCount > 0) Kernels.Encode({going.data(), goingCount}, Values.get(), ApeChunkSteps);
    if (ending != nullptr) Kernels.Encode({&ending, 1}, Values.get(), endingSteps);
}

void ApeFrameEncoder::FillLanes(const Frame& frame, std::size_t from, std::size_t steps) {
    WithApeWidth(Sound.Bits, [&](auto width) {
        constexpr std::size_t sampleBytes = width() / 8;
        const std::byte* pcm = frame.Pcm + from * static_cast<std::size_t>(Sound.FrameSize());
        std::int32_t* values = &Values[frame.Number];
        if (Sound.Channels == 1) {
            for (std::size_t i = 0; i < steps; ++i) {
                values[i * ApeLaneCount] = ApeSampleAt<width()>(pcm + i * sampleBytes);
            }
            return;
        }
        for (std::size_t i = 0; i < steps; ++i) {
            const std::int32_t left = ApeSampleAt<width()>(pcm + i * 2 * sampleBytes);
            const std::int32_t right = ApeSampleAt<width()>(pcm + (i * 2 + 1) * sampleBytes);
            const std::int32_t difference = right - left;
            values[i * ApeLaneCount] = difference;
            values[i * ApeLaneCount + Half] = left + difference / 2;
        }
    });
}

std::vector<std::uint8_t> ApeFrameEncoder::Finished(Frame& frame) const {
    frame.Coder.Finish();
    return std::move(frame.Coder.Bytes);
}

namespace {

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

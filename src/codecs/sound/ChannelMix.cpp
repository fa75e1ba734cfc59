#include "codecs/sound/ChannelMix.h"

#include <bit>

namespace Sonmira {

namespace {

using Pair = std::array<float, 2>;

constexpr float MinusThree = 0.70710678F;  // decibels, as are the next
constexpr float MinusNine = 0.35481339F;

// How loud a loudspeaker is heard left and right of a listener with two. The bass channel is recorded to be
// played 10 dB louder, but small loudspeakers distort with it: it takes part, at a modest level.
Pair GainsOf(std::uint64_t speaker) {
    switch (speaker) {
        case Speaker::FrontLeft:
            return {1, 0};
        case Speaker::FrontRight:
            return {0, 1};
        case Speaker::LowFrequency:
            return {MinusNine, MinusNine};
        case Speaker::FrontLeftOfCenter:
            return {0.9238795F, 0.3826834F};
        case Speaker::FrontRightOfCenter:
            return {0.3826834F, 0.9238795F};
        case Speaker::BackLeft:
        case Speaker::SideLeft:
        case Speaker::TopFrontLeft:
        case Speaker::TopBackLeft:
            return {MinusThree, 0};
        case Speaker::BackRight:
        case Speaker::SideRight:
        case Speaker::TopFrontRight:
        case Speaker::TopBackRight:
            return {0, MinusThree};
        default:
            return {MinusThree, MinusThree};
    }
}

// What the channels of a file mean that does not say so: the order of FLAC and of Windows' own files.
std::uint64_t UsualSpeakers(int channels) {
    using namespace Speaker;
    constexpr std::uint64_t front = FrontLeft | FrontRight;
    constexpr std::uint64_t back = BackLeft | BackRight;
    constexpr std::uint64_t side = SideLeft | SideRight;
    switch (channels) {
        case 3:
            return front | FrontCenter;
        case 4:
            return front | back;
        case 5:
            return front | FrontCenter | back;
        case 6:
            return front | FrontCenter | LowFrequency | back;
        case 7:
            return front | FrontCenter | LowFrequency | BackCenter | side;
        case 8:
            return front | FrontCenter | LowFrequency | back | side;
        default:
            return 0;
    }
}

std::vector<Pair> GainsBySpeaker(int sources, std::uint64_t speakers) {
    std::vector<Pair> gains;
    if (sources == 1) return {{1, 1}};
    if (sources > 2) {
        if (std::popcount(speakers) != sources) speakers = UsualSpeakers(sources);
        for (; speakers != 0; speakers &= speakers - 1) {
            gains.push_back(GainsOf(speakers & (~speakers + 1)));
        }
    }
    // Two channels are left and right whatever they are called; more of them than have a name take turns.
    while (gains.size() < static_cast<std::size_t>(sources)) {
        gains.push_back(gains.size() % 2 == 0 ? Pair{1, 0} : Pair{0, 1});
    }
    return gains;
}

}  // namespace

ChannelMix::ChannelMix(int sources, std::uint64_t speakers, int targets)
    : Sources(static_cast<std::size_t>(sources)),
      Targets(static_cast<std::size_t>(targets)),
      Gains(GainsBySpeaker(sources, speakers)) {
    if (Targets == 1) {
        for (Pair& gain : Gains) gain = {gain[0] + gain[1], 0};
    }
    // One divisor for both sides, so that the image does not shift.
    float left = 0;
    float right = 0;
    for (const Pair& gain : Gains) {
        left += gain[0];
        right += gain[1];
    }
    const float most = std::max(left, right);
    for (Pair& gain : Gains) gain = {gain[0] / most, gain[1] / most};
}

void ChannelMix::Mix(std::span<const float> from, std::vector<float>& to) const {
    const std::size_t frames = from.size() / Sources;
    const std::size_t start = to.size();
    to.resize(start + frames * Targets);
    const float* in = from.data();
    float* out = to.data() + start;
    for (std::size_t frame = 0; frame < frames; ++frame, in += Sources, out += Targets) {
        float left = 0;
        float right = 0;
        for (std::size_t channel = 0; channel < Sources; ++channel) {
            left += in[channel] * Gains[channel][0];
            right += in[channel] * Gains[channel][1];
        }
        out[0] = left;
        if (Targets == 2) out[1] = right;
    }
}

}  // namespace Sonmira

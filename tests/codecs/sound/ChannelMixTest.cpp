#include "codecs/sound/ChannelMix.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Sonmira {
namespace {

std::vector<float> Mixed(int sources, int targets, const std::vector<float>& frame,
                         std::uint64_t speakers = 0) {
    std::vector<float> mixed;
    ChannelMix(sources, speakers, targets).Mix(frame, mixed);
    return mixed;
}

TEST(ChannelMix, OfTwoToOneIsTheirMean) {
    EXPECT_EQ(Mixed(2, 1, {0.5F, 0.25F}), std::vector{0.375F});
}

TEST(ChannelMix, OfOneToTwoKeepsTheLevel) {
    EXPECT_EQ(Mixed(1, 2, {0.5F}), (std::vector{0.5F, 0.5F}));
}

TEST(ChannelMix, DropsNoChannelOfAnyCount) {
    for (int sources = 1; sources <= 12; ++sources) {
        for (int targets = 1; targets <= 2; ++targets) {
            for (int channel = 0; channel < sources; ++channel) {
                std::vector<float> frame(static_cast<std::size_t>(sources));
                frame[static_cast<std::size_t>(channel)] = 1;
                float sum = 0;
                for (const float sample : Mixed(sources, targets, frame)) sum += sample;
                EXPECT_GT(sum, 0.05F) << channel << " of " << sources << " to " << targets;
            }
        }
    }
}

TEST(ChannelMix, OfFullScaleStaysWithinFullScale) {
    for (int sources = 1; sources <= 12; ++sources) {
        for (int targets = 1; targets <= 2; ++targets) {
            const std::vector<float> loudest(static_cast<std::size_t>(sources), 1.0F);
            const std::vector<float> mixed = Mixed(sources, targets, loudest);
            EXPECT_NEAR(*std::max_element(mixed.begin(), mixed.end()), 1.0F, 1e-5F) << sources;
        }
    }
}

TEST(ChannelMix, PutsEachOfSixChannelsOnItsSide) {
    // Front left and right, center, bass, back left and right.
    const auto left = [](int channel) {
        std::vector<float> frame(6);
        frame[static_cast<std::size_t>(channel)] = 1;
        const auto mixed = Mixed(6, 2, frame);
        return mixed[0] / (mixed[0] + mixed[1]);
    };
    EXPECT_FLOAT_EQ(left(0), 1);
    EXPECT_FLOAT_EQ(left(1), 0);
    EXPECT_FLOAT_EQ(left(2), 0.5F);
    EXPECT_FLOAT_EQ(left(3), 0.5F);
    EXPECT_FLOAT_EQ(left(4), 1);
    EXPECT_FLOAT_EQ(left(5), 0);
}

TEST(ChannelMix, FollowsTheLoudspeakersThatTheFileNames) {
    using namespace Speaker;
    const std::vector<float> third{0, 0, 1, 0};
    const auto front = Mixed(4, 2, third, FrontLeft | FrontRight | FrontCenter | BackCenter);
    EXPECT_FLOAT_EQ(front[0], front[1]);
    const auto quad = Mixed(4, 2, third, FrontLeft | FrontRight | BackLeft | BackRight);
    EXPECT_GT(quad[0], 0);
    EXPECT_FLOAT_EQ(quad[1], 0);
}

}  // namespace
}  // namespace Sonmira

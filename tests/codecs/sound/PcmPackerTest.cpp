#include "codecs/sound/AudioBlock.h"
#include "codecs/sound/PcmPacker.h"
#include "support/TestAudio.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace Sonmira {
namespace {

AudioBlock FloatBlock(const std::vector<double>& samples) {
    const std::vector<float> floats(samples.begin(), samples.end());
    return BlockOf(floats);
}

std::vector<double> Packed16(const AudioBlock& block) {
    std::vector<std::byte> bytes;
    PcmPacker(16).Pack(block, bytes);
    AudioBlock packed{SampleType::Int16, bytes};
    std::vector<double> samples;
    for (const std::int16_t sample : SamplesOf<std::int16_t>(packed)) samples.push_back(sample);
    return samples;
}

TEST(PcmPacker, LimitsToFullScale) {
    const auto samples = Packed16(FloatBlock({2.0, -2.0, 1.0, -1.0, 1e30, std::nan("")}));
    EXPECT_EQ(samples, (std::vector<double>{32767, -32768, 32767, -32768, 32767, 0}));
}

TEST(PcmPacker, KeepsSamplesThatFitAsTheyAre) {
    std::vector<double> source;
    std::vector<double> expected;
    for (int value = -32768; value < 32768; value += 5) {
        source.push_back(value / 32768.0);
        expected.push_back(value);
    }
    EXPECT_EQ(Packed16(FloatBlock(source)), expected);
}

TEST(PcmPacker, KeepsAToneBelowTheLeastBitByDither) {
    const double level = std::pow(10, -96.0 / 20);
    const TestSound tone = MakeTone(44100, 1, 220500, 1000, level);
    std::vector<double> packed = Packed16(FloatBlock(tone.Samples));
    for (double& sample : packed) sample /= 32768.0;
    EXPECT_NEAR(LevelAt(packed, 44100, 1000) / level, 1.0, 0.15);
    // Rounding alone would turn part of the tone into its third harmonic.
    EXPECT_LT(LevelAt(packed, 44100, 3000) / level, 0.1);
}

TEST(PcmPacker, AddsNoiseOfTheSizeThatTriangularDitherHas) {
    // Half a step from any whole number: the total error of dither and rounding is half a step (square root
    // of 1/6 + 1/12), and has no direction.
    const auto packed = Packed16(FloatBlock(std::vector<double>(100000, 100.5 / 32768)));
    double mean = 0;
    double square = 0;
    for (const double sample : packed) {
        mean += (sample - 100.5) / 100000;
        square += std::pow(sample - 100.5, 2) / 100000;
    }
    EXPECT_NEAR(mean, 0, 0.01);
    EXPECT_NEAR(std::sqrt(square), 0.5, 0.02);
}

TEST(PcmPacker, GivesTheSameBytesHoweverTheSoundIsCut) {
    const TestSound noise = MakeNoise(44100, 1, 10000);
    std::vector<std::byte> whole;
    PcmPacker(16).Pack(FloatBlock(noise.Samples), whole);
    std::vector<std::byte> pieces;
    PcmPacker packer(16);
    for (std::size_t at = 0; at < noise.Samples.size(); at += 37) {
        const auto first = noise.Samples.begin() + static_cast<std::ptrdiff_t>(at);
        const auto count = std::min<std::ptrdiff_t>(37, noise.Samples.end() - first);
        packer.Pack(FloatBlock({first, first + count}), pieces);
    }
    EXPECT_EQ(whole, pieces);
}

TEST(PcmPacker, DithersWideIntegersToFewerBits) {
    AudioBlock block{SampleType::Int32, std::vector<std::byte>(std::size_t{4} * 50000)};
    auto* samples = static_cast<std::int32_t*>(static_cast<void*>(block.Bytes.data()));
    for (int i = 0; i < 50000; ++i) samples[i] = (1000 << 16) + (1 << 14);  // a quarter above 1000
    double mean = 0;
    for (const double sample : Packed16(block)) mean += sample / 50000;
    EXPECT_NEAR(mean, 1000.25, 0.01);
}

}  // namespace
}  // namespace Sonmira

#include "Signals.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <stdexcept>

namespace Sonmira {

namespace {

constexpr int Rate = 44100;
constexpr std::int64_t FrameBlocks = 73728;

// Something like music: slow swells of some tones, not alike in the channels, with a little noise.
TestSound MakeTones(int channels, std::int64_t blocks) {
    TestSound sound{Rate, channels, {}};
    std::mt19937 random(7);
    const std::array<double, 3> steps = {0.0157, 0.0529, 0.1871};  // radians a block
    for (std::int64_t i = 0; i < blocks; ++i) {
        const auto at = static_cast<double>(i);
        for (int channel = 0; channel < channels; ++channel) {
            double value = static_cast<double>(random() % 256) / 65536;
            for (const double step : steps) {
                value += 0.25 * std::sin(at * step + channel) * std::sin(at * step / 500);
            }
            sound.Samples.push_back(value);
        }
    }
    return sound;
}

template <class Function>
TestSound Make(int channels, std::int64_t blocks, Function&& value) {
    TestSound sound{Rate, channels, {}};
    for (std::int64_t i = 0; i < blocks; ++i) {
        for (int channel = 0; channel < channels; ++channel) sound.Samples.push_back(value(i, channel));
    }
    return sound;
}

TestSound MakeWalk(int channels, std::int64_t blocks) {
    std::mt19937 random(11);
    std::normal_distribution<double> step(0, 0.01);
    std::vector<double> at(static_cast<std::size_t>(channels));
    return Make(channels, blocks, [&](std::int64_t, int channel) {
        double& value = at[static_cast<std::size_t>(channel)];
        value = std::clamp(value + step(random), -1.0, 1.0);
        return value;
    });
}

// A frame of the fast levels of each kind, so that special frames stand beside ordinary ones.
TestSound MakeMixture(int channels, std::int64_t blocks) {
    const std::vector<std::string> kinds = {"tones",   "silence", "noise",  "alike",
                                            "silence", "walk",    "squares"};
    TestSound sound{Rate, channels, {}};
    for (std::size_t kind = 0; sound.Frames() < blocks; ++kind) {
        const std::int64_t count = std::min(FrameBlocks, blocks - sound.Frames());
        const TestSound part = MakeApeSignal(kinds[kind % kinds.size()], channels, count);
        sound.Samples.insert(sound.Samples.end(), part.Samples.begin(), part.Samples.end());
    }
    return sound;
}

}  // namespace

std::vector<std::string> ApeSignalNames() {
    return {"tones",   "sine",      "noise", "silence", "impulses",
            "squares", "onesilent", "alike", "walk",    "mixture"};
}

TestSound MakeApeSignal(const std::string& name, int channels, std::int64_t blocks) {
    if (name == "tones") return MakeTones(channels, blocks);
    if (name == "sine") return MakeTone(Rate, channels, blocks, 997, 0.99);
    if (name == "noise") return MakeNoise(Rate, channels, blocks, 1.0);
    if (name == "silence") return MakeSilence(Rate, channels, blocks);
    if (name == "walk") return MakeWalk(channels, blocks);
    if (name == "mixture") return MakeMixture(channels, blocks);
    if (name == "impulses") {
        return Make(channels, blocks, [](std::int64_t i, int channel) {
            return (i + 17 * channel) % 4999 == 0 ? (i % 2 == 0 ? 1.0 : -1.0) : 0.0;
        });
    }
    // In opposite phase, which makes the differences as large as they get.
    if (name == "squares") {
        return Make(channels, blocks,
                    [](std::int64_t i, int channel) { return (i / 50 + channel) % 2 == 0 ? 1.0 : -1.0; });
    }
    if (name == "onesilent") {
        TestSound sound = MakeTones(channels, blocks);
        for (std::size_t i = 0; i < sound.Samples.size(); i += static_cast<std::size_t>(channels)) {
            sound.Samples[i] = 0;
        }
        return sound;
    }
    if (name == "alike") {
        const TestSound one = MakeTones(1, blocks);
        return Make(channels, blocks,
                    [&](std::int64_t i, int) { return one.Samples[static_cast<std::size_t>(i)]; });
    }
    throw std::invalid_argument(name);
}

}  // namespace Sonmira

#include "codecs/ape/Kernels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace Sonmira {
namespace {

constexpr std::size_t Chunks = 12;
constexpr std::size_t Numbers = ApeChunkSteps * ApeLaneCount;

using Values = std::vector<ApeAligned<std::int32_t>>;

enum class Sort { Quiet, Loud16, Loud24, Extremes };

// Some chunks of all lanes. The last one is not full.
Values MakeValues(Sort sort) {
    std::mt19937 random(3);
    Values values;
    for (std::size_t chunk = 0; chunk < Chunks; ++chunk) {
        values.push_back(MakeApeAligned<std::int32_t>(Numbers));
        for (std::size_t i = 0; i < Numbers; ++i) {
            const auto number = static_cast<std::int32_t>(random());
            std::int32_t& value = values.back()[i];
            switch (sort) {
                case Sort::Quiet:
                    value = number % 3 == 0 ? 0 : number >> 28;
                    break;
                case Sort::Loud16:
                    value = number >> 15;
                    break;
                case Sort::Loud24:
                    value = number >> 7;
                    break;
                case Sort::Extremes:
                    value = (number & 1) != 0 ? (1 << 24) - 1 : -(1 << 24);
                    break;
            }
        }
    }
    return values;
}

std::size_t StepsOf(std::size_t chunk) {
    return chunk + 1 < Chunks ? ApeChunkSteps : ApeChunkSteps - 37;
}

bool AreEqual(const Values& one, const Values& other) {
    for (std::size_t chunk = 0; chunk < Chunks; ++chunk) {
        const std::size_t count = StepsOf(chunk) * ApeLaneCount;
        if (!std::equal(one[chunk].get(), one[chunk].get() + count, other[chunk].get())) return false;
    }
    return true;
}

template <class Kernel>
void ForEachChunk(Values& values, Kernel&& kernel) {
    for (std::size_t chunk = 0; chunk < Chunks; ++chunk) kernel(values[chunk].get(), StepsOf(chunk));
}

class ApeKernel : public ::testing::TestWithParam<Sort> {};

TEST_P(ApeKernel, PredictsAlikeWithEveryInstructionSetAndRestores) {
    for (const bool isStereo : {false, true}) {
        Values expected = MakeValues(GetParam());
        ApePredictorLanes reference;
        ForEachChunk(expected, [&](std::int32_t* values, std::size_t steps) {
            AvailableApeKernels().front()->Predict(reference, values, steps, isStereo);
        });
        EXPECT_FALSE(AreEqual(expected, MakeValues(GetParam())));
        for (const ApeKernels* kernels : AvailableApeKernels()) {
            Values values = MakeValues(GetParam());
            ApePredictorLanes forward;
            ApePredictorLanes back;
            ForEachChunk(values, [&](std::int32_t* chunk, std::size_t steps) {
                kernels->Predict(forward, chunk, steps, isStereo);
            });
            EXPECT_TRUE(AreEqual(values, expected)) << kernels->Name;
            ForEachChunk(values, [&](std::int32_t* chunk, std::size_t steps) {
                kernels->Restore(back, chunk, steps, isStereo);
            });
            EXPECT_TRUE(AreEqual(values, MakeValues(GetParam()))) << kernels->Name;
        }
    }
}

TEST_P(ApeKernel, FiltersAlikeWithEveryInstructionSetAndGoesBack) {
    for (const auto& [order, shift] : {std::pair(16, 11), {32, 10}, {64, 11}, {256, 13}, {1280, 15}}) {
        Values expected = MakeValues(GetParam());
        ApeFilterLanes reference(order, shift);
        ForEachChunk(expected, [&](std::int32_t* values, std::size_t steps) {
            AvailableApeKernels().front()->Filter(reference, values, steps);
        });
        EXPECT_FALSE(AreEqual(expected, MakeValues(GetParam())));
        for (const ApeKernels* kernels : AvailableApeKernels()) {
            Values values = MakeValues(GetParam());
            ApeFilterLanes forward(order, shift);
            ApeFilterLanes back(order, shift);
            ForEachChunk(values, [&](std::int32_t* chunk, std::size_t steps) {
                kernels->Filter(forward, chunk, steps);
            });
            EXPECT_TRUE(AreEqual(values, expected)) << kernels->Name << " order " << order;
            ForEachChunk(values, [&](std::int32_t* chunk, std::size_t steps) {
                kernels->Unfilter(back, chunk, steps);
            });
            EXPECT_TRUE(AreEqual(values, MakeValues(GetParam()))) << kernels->Name << " order " << order;
        }
    }
}

std::vector<std::uint8_t> CodedBy(const ApeKernels& kernels, Values& values, const ApeCodedLanes& lanes) {
    ApeRangeEncoder coder;
    coder.Start(lanes, 0);
    std::array<ApeRangeEncoder*, 1> coders{&coder};
    ForEachChunk(values, [&](const std::int32_t* chunk, std::size_t steps) {
        coder.Reserve(2 * steps);
        kernels.Encode(coders, chunk, steps);
    });
    coder.Finish();
    return coder.Bytes;
}

TEST_P(ApeKernel, CodesAlikeWithEveryInstructionSetAndReadsBack) {
    for (const ApeCodedLanes& lanes : {ApeCodedLanes{1, {5, 0}}, ApeCodedLanes{2, {1, 5}}}) {
        Values source = MakeValues(GetParam());
        std::vector<std::uint8_t> expected = CodedBy(*AvailableApeKernels().front(), source, lanes);
        EXPECT_EQ(expected.front(), 0);
        expected.resize(expected.size() + 2 * ApeChunkSteps * ApeRangeDecoder::MostBytes);
        for (const ApeKernels* kernels : AvailableApeKernels()) {
            std::vector<std::uint8_t> coded = CodedBy(*kernels, source, lanes);
            coded.resize(expected.size());
            EXPECT_EQ(coded, expected) << kernels->Name;
            ApeRangeDecoder decoder;
            decoder.Start(lanes, coded.data());
            std::array<ApeRangeDecoder*, 1> decoders{&decoder};
            Values values = MakeValues(GetParam());
            for (auto& chunk : values) {
                for (std::size_t i = 0; i < Numbers; ++i) {
                    for (int lane = 0; lane < lanes.Count; ++lane) {
                        if (i % ApeLaneCount ==
                            static_cast<std::size_t>(lanes.Lane[static_cast<std::size_t>(lane)])) {
                            chunk[i] = 0;
                        }
                    }
                }
            }
            ForEachChunk(values, [&](std::int32_t* chunk, std::size_t steps) {
                kernels->Decode(decoders, chunk, steps);
            });
            EXPECT_FALSE(decoder.Damaged);
            EXPECT_TRUE(AreEqual(values, source)) << kernels->Name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(EverySort, ApeKernel,
                         ::testing::Values(Sort::Quiet, Sort::Loud16, Sort::Loud24, Sort::Extremes));

}  // namespace
}  // namespace Sonmira

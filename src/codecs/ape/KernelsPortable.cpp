// The kernels as the format is described, lane by lane: what all others are held against.
#include "codecs/ape/ApeFormat.h"
#include "codecs/ape/Kernels.h"
#include "codecs/ape/ResidualCoding.h"

#include <algorithm>
#include <cstdlib>

namespace Sonmira {

namespace {

constexpr std::size_t Half = ApeLaneCount / 2;

std::int32_t SignOf(std::int32_t value) {
    return (value > 0 ? 1 : 0) - (value < 0 ? 1 : 0);
}

// Sums wrap at 32 bits, as those of every decoder do.
template <std::size_t Count>
std::int32_t Weighed(const std::array<ApeLaneValues, Count>& weights,
                     const std::array<ApeLaneValues, Count>& values, std::size_t lane) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < Count; ++i) {
        sum += static_cast<std::uint32_t>(weights[i][lane]) * static_cast<std::uint32_t>(values[i][lane]);
    }
    return static_cast<std::int32_t>(sum);
}

std::int32_t Wrapped(std::int64_t value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

std::int32_t FirstStage(std::int32_t last) {
    return Wrapped(std::int64_t{31} * last) >> 5;
}

// Takes in the other channel's input and says what the filtered input is likely to be.
std::int32_t Expected(ApePredictorLanes& state, std::size_t lane, std::int32_t cross) {
    const std::int32_t b = Wrapped(std::int64_t{cross} - FirstStage(state.Cross[lane]));
    state.Cross[lane] = cross;
    for (std::size_t i = 4; i > 1; --i) state.Q[i][lane] = state.Q[i - 1][lane];
    state.Q[1][lane] = Wrapped(std::int64_t{b} - state.Q[0][lane]);
    state.Q[0][lane] = b;
    const std::int64_t sum =
        std::int64_t{Weighed(state.A, state.P, lane)} + (Weighed(state.B, state.Q, lane) >> 1);
    return Wrapped(sum) >> 10;
}

// Learns from the filtered input and from what was left of it.
void Learn(ApePredictorLanes& state, std::size_t lane, std::int32_t input, std::int32_t residual) {
    const std::int32_t sign = SignOf(residual);
    for (std::size_t i = 0; i < 4; ++i) state.A[i][lane] += sign * SignOf(state.P[i][lane]);
    for (std::size_t i = 0; i < 5; ++i) state.B[i][lane] += sign * SignOf(state.Q[i][lane]);
    for (std::size_t i = 3; i > 1; --i) state.P[i][lane] = state.P[i - 1][lane];
    state.P[1][lane] = Wrapped(std::int64_t{input} - state.P[0][lane]);
    state.P[0][lane] = input;
}

std::int32_t PredictOne(ApePredictorLanes& state, std::size_t lane, std::int32_t sample, std::int32_t cross) {
    const std::int32_t input = Wrapped(std::int64_t{sample} - FirstStage(state.Sample[lane]));
    state.Sample[lane] = sample;
    const std::int32_t residual = Wrapped(std::int64_t{input} - Expected(state, lane, cross));
    Learn(state, lane, input, residual);
    return residual;
}

std::int32_t RestoreOne(ApePredictorLanes& state, std::size_t lane, std::int32_t residual,
                        std::int32_t cross) {
    const std::int32_t input = Wrapped(std::int64_t{residual} + Expected(state, lane, cross));
    Learn(state, lane, input, residual);
    state.Sample[lane] = Wrapped(std::int64_t{input} + FirstStage(state.Sample[lane]));
    return state.Sample[lane];
}

// The first half of the lanes looks at the other half's sample of the step before, the other half at the
// first one's of this step.
void Predict(ApePredictorLanes& state, std::int32_t* values, std::size_t steps, bool isStereo) {
    for (std::size_t step = 0; step < steps; ++step, values += ApeLaneCount) {
        const ApeLaneValues previous = state.Sample;
        ApeLaneValues now;
        std::copy_n(values, ApeLaneCount, now.begin());
        for (std::size_t lane = 0; lane < ApeLaneCount; ++lane) {
            const std::int32_t cross =
                !isStereo ? 0 : (lane < Half ? previous[lane + Half] : now[lane - Half]);
            values[lane] = PredictOne(state, lane, now[lane], cross);
        }
    }
}

void Restore(ApePredictorLanes& state, std::int32_t* values, std::size_t steps, bool isStereo) {
    for (std::size_t step = 0; step < steps; ++step, values += ApeLaneCount) {
        for (std::size_t lane = 0; lane < ApeLaneCount; ++lane) {
            const std::int32_t cross =
                !isStereo ? 0 : (lane < Half ? state.Sample[lane + Half] : state.Sample[lane - Half]);
            values[lane] = RestoreOne(state, lane, values[lane], cross);
        }
    }
}

std::int16_t LowHalf(std::int32_t pair) {
    return static_cast<std::int16_t>(pair & 0xFFFF);
}
std::int16_t HighHalf(std::int32_t pair) {
    return static_cast<std::int16_t>(static_cast<std::uint32_t>(pair) >> 16);
}
std::int32_t PairOf(std::int32_t low, std::int32_t high) {
    return static_cast<std::int32_t>((static_cast<std::uint32_t>(low) & 0xFFFF) |
                                     static_cast<std::uint32_t>(high) << 16);
}

// Adapts the weights by the last output's sign, and says what the next input is likely to be.
std::int32_t AdaptAndSum(ApeFilterLanes& state, std::size_t group, std::size_t lane) {
    const std::int32_t sign = LowHalf(state.LastSign[lane]);
    std::uint32_t sum = 1U << (state.Shift - 1);
    for (int tap = 1; tap <= state.Order; tap += 2) {
        const auto back = static_cast<std::size_t>(tap);
        std::int32_t& weights = state.Weights[(back / 2) * ApeLaneCount + lane];
        const std::int32_t steps = state.Steps[(group - 1 - back) * ApeLaneCount + lane];
        const std::int32_t values = state.History[(group - back) * ApeLaneCount + lane];
        weights = PairOf(LowHalf(weights) + sign * LowHalf(steps) * ApeStepWeight(tap),
                         HighHalf(weights) + sign * HighHalf(steps) * ApeStepWeight(tap + 1));
        sum += static_cast<std::uint32_t>(LowHalf(weights) * LowHalf(values));
        sum += static_cast<std::uint32_t>(HighHalf(weights) * HighHalf(values));
    }
    return static_cast<std::int32_t>(sum) >> state.Shift;
}

void Remember(ApeFilterLanes& state, std::size_t group, std::size_t lane, std::int32_t input,
              std::int32_t output) {
    const std::int32_t sign = SignOf(output);
    state.LastSign[lane] = PairOf(sign, sign);
    const std::int64_t amount = std::abs(std::int64_t{input});
    const std::int64_t average = state.Average[lane];
    const std::int32_t step = amount > 3 * average ? 4 : (amount > average + average / 3 ? 2 : 1);
    state.Average[lane] = Wrapped(average + (amount - average) / 16);
    const std::int32_t clipped = std::clamp(input, -32768, 32767);
    state.History[group * ApeLaneCount + lane] =
        PairOf(clipped, state.History[(group - 1) * ApeLaneCount + lane]);
    state.Steps[group * ApeLaneCount + lane] =
        PairOf(SignOf(input) * step, state.Steps[(group - 1) * ApeLaneCount + lane]);
}

template <bool IsForward>
void RunFilter(ApeFilterLanes& state, std::int32_t* values, std::size_t steps) {
    const std::size_t first = state.HistoryGroups();
    for (std::size_t step = 0; step < steps; ++step, values += ApeLaneCount) {
        for (std::size_t lane = 0; lane < ApeLaneCount; ++lane) {
            const std::int32_t expected = AdaptAndSum(state, first + step, lane);
            const std::int32_t given = values[lane];
            values[lane] =
                Wrapped(IsForward ? std::int64_t{given} - expected : std::int64_t{given} + expected);
            if (IsForward) {
                Remember(state, first + step, lane, given, values[lane]);
            } else {
                Remember(state, first + step, lane, values[lane], given);
            }
        }
    }
    KeepApeHistory(state, steps);
}

}  // namespace

const ApeKernels PortableApeKernels = {
    "portable", Predict, Restore, RunFilter<true>, RunFilter<false>, ApeEncodeResiduals, ApeDecodeResiduals};

}  // namespace Sonmira

#pragma once

#include "codecs/ape/Kernels.h"

// The kernels over vectors of eight 32-bit lanes, or four. `Vector` belongs to the file that includes this,
// which is compiled for one instruction set; hence the namespace without a name.
//
// Where the portable kernels divide an average by three, these compare its multiples: the same for inputs
// below 2^28, and 24-bit sound stays below 2^27.
namespace Sonmira {
namespace {

// The predictors of as many streams as a vector has lanes.
template <class Vector>
class LanePredictor {
public:
    LanePredictor(ApePredictorLanes& state, std::size_t lane) : State(state), Lane(lane) {
        Sample = Load(State.Sample);
        Cross = Load(State.Cross);
        for (std::size_t i = 0; i < 4; ++i) P[i] = Load(State.P[i]), A[i] = Load(State.A[i]);
        for (std::size_t i = 0; i < 5; ++i) Q[i] = Load(State.Q[i]), B[i] = Load(State.B[i]);
    }
    void Save() {
        Store(State.Sample, Sample);
        Store(State.Cross, Cross);
        for (std::size_t i = 0; i < 4; ++i) Store(State.P[i], P[i]), Store(State.A[i], A[i]);
        for (std::size_t i = 0; i < 5; ++i) Store(State.Q[i], Q[i]), Store(State.B[i], B[i]);
    }

    Vector LastSample() const { return Sample; }

    Vector Predict(Vector sample, Vector cross) {
        const Vector input = sample - FirstStage(Sample);
        Sample = sample;
        const Vector residual = input - Expected(cross);
        Learn(input, residual);
        return residual;
    }
    Vector Restore(Vector residual, Vector cross) {
        const Vector input = residual + Expected(cross);
        Learn(input, residual);
        Sample = input + FirstStage(Sample);
        return Sample;
    }

private:
    Vector Load(const ApeLaneValues& values) const { return Vector::Load(&values[Lane]); }
    void Store(ApeLaneValues& values, Vector vector) const { vector.Store(&values[Lane]); }

    // 31 of 32 parts.
    static Vector FirstStage(Vector last) {
        return (last.template ShiftedLeft<5>() - last).template ShiftedRight<5>();
    }

    Vector Expected(Vector cross) {
        const Vector b = cross - FirstStage(Cross);
        Cross = cross;
        Q[4] = Q[3];
        Q[3] = Q[2];
        Q[2] = Q[1];
        Q[1] = b - Q[0];
        Q[0] = b;
        const Vector own = (P[0].Times(A[0]) + P[1].Times(A[1])) + (P[2].Times(A[2]) + P[3].Times(A[3]));
        const Vector other = ((Q[1].Times(B[1]) + Q[2].Times(B[2])) + (Q[3].Times(B[3]) + Q[4].Times(B[4]))) +
                             Q[0].Times(B[0]);
        return (own + other.template ShiftedRight<1>()).template ShiftedRight<10>();
    }

    void Learn(Vector input, Vector residual) {
        const Vector sign = Vector::All(1).SignedBy(residual);
        for (std::size_t i = 0; i < 4; ++i) A[i] = A[i] + sign.SignedBy(P[i]);
        for (std::size_t i = 0; i < 5; ++i) B[i] = B[i] + sign.SignedBy(Q[i]);
        P[3] = P[2];
        P[2] = P[1];
        P[1] = input - P[0];
        P[0] = input;
    }

    ApePredictorLanes& State;
    std::size_t Lane;
    Vector Sample, Cross;
    Vector P[4], A[4];
    Vector Q[5], B[5];
};

template <class Vector>
void LanePredict(ApePredictorLanes& state, std::int32_t* values, std::size_t steps, bool isStereo) {
    LanePredictor<Vector> predictor(state, 0);
    const Vector nothing = Vector::All(0);
    for (std::size_t step = 0; step < steps; ++step, values += ApeLaneCount) {
        const Vector sample = Vector::Load(values);
        const Vector cross = isStereo ? Vector::HighThenLow(predictor.LastSample(), sample) : nothing;
        predictor.Predict(sample, cross).Store(values);
    }
    predictor.Save();
}

// Four lanes at a time: of two channels the means cannot be had before the differences.
template <class Vector>
void LaneRestore(ApePredictorLanes& state, std::int32_t* values, std::size_t steps, bool isStereo) {
    LanePredictor<Vector> low(state, 0);
    LanePredictor<Vector> high(state, 4);
    const Vector nothing = Vector::All(0);
    for (std::size_t step = 0; step < steps; ++step, values += ApeLaneCount) {
        const Vector first = low.Restore(Vector::Load(values), isStereo ? high.LastSample() : nothing);
        first.Store(values);
        high.Restore(Vector::Load(values + 4), isStereo ? first : nothing).Store(values + 4);
    }
    low.Save();
    high.Save();
}

// Tap pairs of one turn of the loop; every filter has a multiple of it.
inline constexpr std::size_t Unrolled = 8;

// Order 0 stands for one that is known at run time only.
template <class Vector, int FixedOrder, bool IsForward>
void LaneFilter(ApeFilterLanes& state, std::int32_t* values, std::size_t steps) {
    const auto groups = static_cast<std::size_t>(FixedOrder > 0 ? FixedOrder : state.Order) / 2;
    const Vector one = Vector::All(1);
    const Vector lowHalf = Vector::All(0xFFFF);
    const Vector rounding = Vector::All(1 << (state.Shift - 1));
    const Vector nearest = Vector::All(ApeStepWeight(2) << 16 | ApeStepWeight(1));
    std::int32_t* const weights = state.Weights.get();
    std::int32_t* history = &state.History[state.HistoryGroups() * ApeLaneCount];
    std::int32_t* adaptions = &state.Steps[state.HistoryGroups() * ApeLaneCount];
    Vector average = Vector::Load(state.Average.data());
    Vector sign = Vector::Load(state.LastSign.data());
    Vector lastInput = Vector::Load(history - ApeLaneCount);
    Vector lastStep = Vector::Load(adaptions - ApeLaneCount);
    for (std::size_t step = 0; step < steps; ++step, values += ApeLaneCount) {
        const std::int32_t* input = history - ApeLaneCount;
        const std::int32_t* adaption = adaptions - 2 * ApeLaneCount;
        std::int32_t* weight = weights;
        Vector sum = rounding;
        const auto tap = [&](std::size_t group, Vector amount) __attribute__((always_inline)) {
            std::int32_t* const place = weight + group * ApeLaneCount;
            const Vector adapted = Vector::Load(place).PlusHalves(amount.HalvesSignedBy(sign));
            adapted.Store(place);
            sum = sum + Vector::Load(input - group * 2 * ApeLaneCount).PairSums(adapted);
        };
        const auto amountOf = [&](std::size_t group) __attribute__((always_inline)) {
            return Vector::Load(adaption - group * 2 * ApeLaneCount);
        };
        tap(0, amountOf(0).TimesHalves(nearest));
        for (std::size_t group = 1; group < 4; ++group)
            tap(group, amountOf(group).PlusHalves(amountOf(group)));
        for (std::size_t group = 4; group < Unrolled; ++group) tap(group, amountOf(group));
        for (std::size_t left = groups - Unrolled; left > 0; left -= Unrolled) {
            weight += Unrolled * ApeLaneCount;
            input -= Unrolled * 2 * ApeLaneCount;
            adaption -= Unrolled * 2 * ApeLaneCount;
#pragma GCC unroll 8
            for (std::size_t group = 0; group < Unrolled; ++group) tap(group, amountOf(group));
        }

        const Vector given = Vector::Load(values);
        const Vector expected = sum.ShiftedRightBy(state.Shift);
        const Vector result = IsForward ? given - expected : given + expected;
        result.Store(values);
        const Vector in = IsForward ? given : result;
        const Vector out = IsForward ? result : given;
        sign = out.SignsInHalves();
        const Vector size = in.SignedBy(in);
        const Vector three = average + average + average;
        // A comparison that holds is -1.
        const Vector large = size.IsAbove(three);
        const Vector larger = (size + size + size).IsAbove(three + average);
        const Vector steepness = (one - larger - large - large).SignedBy(in);
        const Vector excess = size - average;
        average =
            average +
            (excess + (excess.template ShiftedRight<31>() & Vector::All(15))).template ShiftedRight<4>();
        lastInput = (in.ClippedTo16() & lowHalf) | lastInput.template ShiftedLeft<16>();
        lastInput.Store(history);
        lastStep = (steepness & lowHalf) | lastStep.template ShiftedLeft<16>();
        lastStep.Store(adaptions);
        history += ApeLaneCount;
        adaptions += ApeLaneCount;
    }
    average.Store(state.Average.data());
    sign.Store(state.LastSign.data());
    KeepApeHistory(state, steps);
}

template <class Vector, bool IsForward>
void LaneFilterOfAnyOrder(ApeFilterLanes& state, std::int32_t* values, std::size_t steps) {
    switch (state.Order) {
        case 16:
            return LaneFilter<Vector, 16, IsForward>(state, values, steps);
        case 32:
            return LaneFilter<Vector, 32, IsForward>(state, values, steps);
        default:
            return LaneFilter<Vector, 0, IsForward>(state, values, steps);
    }
}

}  // namespace
}  // namespace Sonmira

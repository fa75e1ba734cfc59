#pragma once

#include "codecs/ape/ApeFormat.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <vector>

// What the inner loops of the encoder and the decoder work on: eight independent streams side by side, one
// a lane. A stream is one channel of one frame; frames depend on nothing before them. Without that the loops
// would wait: each sample of a stream needs the sign of the one before.
//
// Of two channels, lanes 0 to 3 are the differences (right minus left) of four frames and lanes 4 to 7 their
// means. Of one channel, each lane is a frame.
//
// Numbers of one step stand side by side (index step * ApeLaneCount + lane), aligned to 64 bytes.
namespace Sonmira {

inline constexpr std::size_t ApeLaneCount = 8;
// Most steps of one call of a kernel.
inline constexpr std::size_t ApeChunkSteps = 128;

using ApeLaneValues = std::array<std::int32_t, ApeLaneCount>;

template <class Value>
struct ApeFreeAligned {
    void operator()(Value* values) const { ::operator delete[](values, std::align_val_t{64}); }
};
template <class Value>
using ApeAligned = std::unique_ptr<Value[], ApeFreeAligned<Value>>;

// `count` zeros. Only for plain numbers: nothing is destroyed.
template <class Value>
ApeAligned<Value> MakeApeAligned(std::size_t count) {
    return ApeAligned<Value>(new (std::align_val_t{64}) Value[count]());
}

// State of the predictors of all lanes; as made, that of the start of a frame. P and Q are the numbers that
// the coefficients A and B weigh: a stream's own last filtered input and the differences of the ones before,
// and the same of the other channel, whose present input counts too.
struct alignas(64) ApePredictorLanes {
    ApePredictorLanes();

    ApeLaneValues Sample{};  // the previous input
    ApeLaneValues Cross{};   // the previous input of the other channel
    std::array<ApeLaneValues, 4> P{};
    std::array<ApeLaneValues, 5> Q{};
    std::array<ApeLaneValues, 4> A{};
    std::array<ApeLaneValues, 5> B{};
};

// State of one adaptive filter of all lanes. Two neighbouring taps share one 32-bit lane; the nearer one has
// the lower 16 bits.
struct alignas(64) ApeFilterLanes {
    ApeFilterLanes(int order, int shift);
    // Back to the state at the start of a frame.
    void Reset();

    int Order;
    int Shift;
    // Order / 2 groups: tap pair (1, 2), then (3, 4), ...
    ApeAligned<std::int32_t> Weights;
    // Group i holds input i and, above it, input i - 1; the first HistoryGroups are those before the chunk.
    ApeAligned<std::int32_t> History;
    // In the same way the steps by which weights are adapted, in eighths: that of one input ago counts eight
    // times, of two ago four times, of three to eight ago twice.
    ApeAligned<std::int32_t> Steps;
    ApeLaneValues Average{};   // of the inputs' amount
    ApeLaneValues LastSign{};  // of the last output, in both halves of a lane: adapts with the next step

    std::size_t HistoryGroups() const { return static_cast<std::size_t>(Order) + 2; }
};

// The filters of a level, in the order in which an encoder applies them.
std::vector<ApeFilterLanes> MakeApeFilters(const ApeLevel& level);

// Weight of the step of `age` inputs ago.
constexpr int ApeStepWeight(int age) {
    if (age == 1) return 8;
    if (age == 2) return 4;
    return age <= 8 ? 2 : 1;
}

}  // namespace Sonmira

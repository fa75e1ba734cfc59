#pragma once

#include "codecs/ape/Lanes.h"
#include "codecs/ape/RangeCoder.h"

#include <span>

namespace Sonmira {

// The inner loops, once for each instruction set. All give the same numbers: in every case those of the
// portable ones, which follow the format's description word by word.

struct ApeKernels {
    const char* Name;

    // Samples to what the predictor leaves over, in place. `steps` is at most ApeChunkSteps everywhere.
    void (*Predict)(ApePredictorLanes& state, std::int32_t* values, std::size_t steps, bool isStereo);
    // And back.
    void (*Restore)(ApePredictorLanes& state, std::int32_t* values, std::size_t steps, bool isStereo);
    // One adaptive filter, in place, and back.
    void (*Filter)(ApeFilterLanes& state, std::int32_t* values, std::size_t steps);
    void (*Unfilter)(ApeFilterLanes& state, std::int32_t* values, std::size_t steps);
    // Residuals of the lanes of each coder to its bytes, and back.
    void (*Encode)(std::span<ApeRangeEncoder* const> coders, const std::int32_t* values, std::size_t steps);
    void (*Decode)(std::span<ApeRangeDecoder* const> coders, std::int32_t* values, std::size_t steps);
};

// All that this machine can run, the portable ones first and the fastest last.
std::span<const ApeKernels* const> AvailableApeKernels();
const ApeKernels& BestApeKernels();

// The kernels of each instruction set, for Kernels.cpp, which chooses.

extern const ApeKernels PortableApeKernels;
#if defined(__x86_64__)
extern const ApeKernels Sse2ApeKernels;
extern const ApeKernels Avx2ApeKernels;
#endif

// After a chunk: moves the newest groups to where the next chunk looks for what came before it.
void KeepApeHistory(ApeFilterLanes& state, std::size_t steps);

}  // namespace Sonmira

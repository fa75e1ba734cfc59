#pragma once

#include "codecs/ape/Kernels.h"

// The kernels of each instruction set, for Kernels.cpp, which chooses.
namespace Sonmira {

extern const ApeKernels PortableApeKernels;
#if defined(__x86_64__)
extern const ApeKernels Sse2ApeKernels;
extern const ApeKernels Avx2ApeKernels;
#endif

// After a chunk: moves the newest groups to where the next chunk looks for what came before it.
void KeepApeHistory(ApeFilterLanes& state, std::size_t steps);

}  // namespace Sonmira

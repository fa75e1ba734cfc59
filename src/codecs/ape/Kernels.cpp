#include "codecs/ape/Kernels.h"

#include <cpuid.h>

#include <cstring>
#include <vector>

namespace Sonmira {

#if defined(__x86_64__)
#endif

#if defined(__x86_64__)
namespace {

// All that KernelsAvx2.cpp is compiled with.
bool HasAvx2() {
    // Not every compiler knows LZCNT by name.
    unsigned a = 0;
    unsigned b = 0;
    unsigned c = 0;
    unsigned d = 0;
    const bool hasLzcnt = __get_cpuid(0x80000001, &a, &b, &c, &d) != 0 && (c & bit_LZCNT) != 0;
    return hasLzcnt && __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
           __builtin_cpu_supports("bmi2");
}

}  // namespace
#endif

void KeepApeHistory(ApeFilterLanes& state, std::size_t steps) {
    const std::size_t bytes = state.HistoryGroups() * ApeLaneCount * sizeof(std::int32_t);
    std::memmove(state.History.get(), &state.History[steps * ApeLaneCount], bytes);
    std::memmove(state.Steps.get(), &state.Steps[steps * ApeLaneCount], bytes);
}

std::span<const ApeKernels* const> AvailableApeKernels() {
    static const std::vector<const ApeKernels*> available = [] {
        std::vector<const ApeKernels*> kernels = {&PortableApeKernels};
#if defined(__x86_64__)
        kernels.push_back(&Sse2ApeKernels);
        if (HasAvx2()) kernels.push_back(&Avx2ApeKernels);
#endif
        return kernels;
    }();
    return available;
}

const ApeKernels& BestApeKernels() {
    return *AvailableApeKernels().back();
}

}  // namespace Sonmira

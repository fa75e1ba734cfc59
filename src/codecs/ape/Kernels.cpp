#include "codecs/ape/Kernels.h"

#include "codecs/ape/KernelTables.h"

#include <cstring>
#include <vector>

namespace Sonmira {

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
        if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi") &&
            __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("lzcnt")) {
            kernels.push_back(&Avx2ApeKernels);
        }
#endif
        return kernels;
    }();
    return available;
}

const ApeKernels& BestApeKernels() {
    return *AvailableApeKernels().back();
}

}  // namespace Sonmira

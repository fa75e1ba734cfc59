#include "codecs/ape/Lanes.h"

#include <algorithm>

namespace Sonmira {

ApePredictorLanes::ApePredictorLanes() {
    for (std::size_t i = 0; i < A.size(); ++i) A[i].fill(ApeStartCoefficients[i]);
}

ApeFilterLanes::ApeFilterLanes(int order, int shift)
    : Order(order),
      Shift(shift),
      Weights(MakeApeAligned<std::int32_t>(static_cast<std::size_t>(order) / 2 * ApeLaneCount)),
      History(MakeApeAligned<std::int32_t>((HistoryGroups() + ApeChunkSteps) * ApeLaneCount)),
      Steps(MakeApeAligned<std::int32_t>((HistoryGroups() + ApeChunkSteps) * ApeLaneCount)) {}

void ApeFilterLanes::Reset() {
    std::fill_n(Weights.get(), static_cast<std::size_t>(Order) / 2 * ApeLaneCount, 0);
    std::fill_n(History.get(), HistoryGroups() * ApeLaneCount, 0);
    std::fill_n(Steps.get(), HistoryGroups() * ApeLaneCount, 0);
    Average.fill(0);
    LastSign.fill(0);
}

std::vector<ApeFilterLanes> MakeApeFilters(const ApeLevel& level) {
    std::vector<ApeFilterLanes> filters;
    for (int i = 0; i < level.FilterCount; ++i) {
        const ApeFilterShape& shape = level.Filters[static_cast<std::size_t>(i)];
        filters.emplace_back(shape.Order, shape.Shift);
    }
    return filters;
}

}  // namespace Sonmira

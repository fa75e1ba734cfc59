#include "library/RecordWalk.h"

#include "library/ConversionRecords.h"

#include <algorithm>

namespace Sonmira {

RecordWalk::RecordWalk(ConversionRecords& records) : Records(records), Last(records.UpperBound()) {
    Records.Walks.push_back(this);
}

RecordWalk::~RecordWalk() {
    std::erase(Records.Walks, this);
}

std::optional<int> RecordWalk::Next() {
    if (Place >= Last) return std::nullopt;
    return ++Place;
}

std::optional<int> RecordWalk::NextChildOf(qint16 index) {
    const std::optional<int> next = Records.NextChildOf(index, Place);
    if (!next || *next > Last) return std::nullopt;
    Place = *next;
    return Place;
}

void RecordWalk::Follow(const std::vector<int>& moved) {
    const auto stays = [](int position) { return position >= 0; };
    const auto keptUpTo = [&](int position) {
        return static_cast<int>(std::count_if(moved.begin(), moved.begin() + position + 1, stays)) - 1;
    };
    Place = keptUpTo(Place);
    Last = keptUpTo(Last);
}

}  // namespace Sonmira

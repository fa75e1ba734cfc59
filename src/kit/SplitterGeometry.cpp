#include "kit/SplitterGeometry.h"

#include <algorithm>
#include <cmath>

namespace Sonmira {

int SplitterGeometry::CrossSize(int across) const {
    return std::max(across, MinSizeAux);
}

float SplitterGeometry::RatioFromPosition(int length, int position) const {
    if (length < 1) return 0;
    return static_cast<float>(static_cast<double>(position + SplitterSize / 2) / length);
}

int SplitterGeometry::PositionFromRatio(int length, float ratio) const {
    // The mode of the processor that nothing here changes rounds a tie to the even number.
    return static_cast<int>(std::nearbyint(static_cast<double>(length) * ratio - SplitterSize / 2));
}

// The order of the steps is what decides between limits that cannot all be kept.
int SplitterGeometry::Clamp(int length, int position) const {
    if (length <= MinimumTotal()) return MinSize1;
    position = std::max(position, 0);
    position = std::min(position, length - SplitterSize);
    if (MaxSize > 0) {
        position = MaxSizeAppliesTo == 0 ? std::min(position, MaxSize)
                                         : std::max(position, length - MaxSize - SplitterSize);
    }
    if (position <= MinSize1) return MinSize1;
    return std::min(position, length - MinSize2 - SplitterSize);
}

QRect SplitterGeometry::Oriented(int start, int size, int cross) const {
    return Orientation == 1 ? QRect(0, start, cross, size) : QRect(start, 0, size, cross);
}

QRect SplitterGeometry::BarPlace(int position, int cross) const {
    return Oriented(position, SplitterSize, cross);
}

QRect SplitterGeometry::Child1Place(int position, int cross, bool isListView) const {
    const int beyond = isListView ? ListViewOverlap : 0;
    return Oriented(0, position, cross).adjusted(-beyond, -beyond, beyond, beyond);
}

QRect SplitterGeometry::Child2Place(int position, int cross, int length, bool isListView) const {
    const int beyond = isListView ? ListViewOverlap : 0;
    const int start = position + SplitterSize;
    // It keeps its least size even where it sticks out at the end.
    return Oriented(start, std::max(length - start, MinSize2), cross)
        .adjusted(-beyond, -beyond, beyond, beyond);
}

}  // namespace Sonmira

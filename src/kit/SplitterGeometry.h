#pragma once

#include <QRect>

namespace Sonmira {

// The arithmetic of a bar that divides a length in two, in whole units of whoever asks. Nothing is limited
// to 16 bits here.
struct SplitterGeometry {
    qint32 Orientation =
        0;  // 0: upright bar, the length is the width; 1: lying bar, the length is the height
    int SplitterSize = 75;
    int MaxSize = 0;  // 0: none
    qint32 MaxSizeAppliesTo = 0;
    int MinSize1 = 255;
    int MinSize2 = 255;
    int MinSizeAux = 255;

    // The least length in which both sides and the bar have room.
    int MinimumTotal() const { return MinSize1 + SplitterSize + MinSize2; }
    int CrossSize(int across) const;
    // The ratio tells where the centre of the bar lies; 0 where there is no length. Not limited to 1.
    float RatioFromPosition(int length, int position) const;
    // To the nearest whole number, a tie to the even one.
    int PositionFromRatio(int length, float ratio) const;
    // Where the bar comes to lie that is wanted at a position. MinSize1 wins over everything, and MinSize2
    // over MaxSize.
    int Clamp(int length, int position) const;

    // What a child hides of itself beyond the edges of its side, on each edge.
    static constexpr int ListViewOverlap = 15;

    // The places of the bar and of the children around a bar at a position.
    QRect BarPlace(int position, int cross) const;
    QRect Child1Place(int position, int cross, bool isListView) const;
    QRect Child2Place(int position, int cross, int length, bool isListView) const;

private:
    QRect Oriented(int start, int size, int cross) const;
};

}  // namespace Sonmira

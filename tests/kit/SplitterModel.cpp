#include "SplitterModel.h"

#include <cmath>

namespace Sonmira {

int SplitterModel::SixteenBits(int value) {
    if (value > 32767) return 32767;
    if (value < -32768) return -32768;
    return value;
}

int SplitterModel::Clamped(int position) const {
    if (Length <= MinSize1 + SplitterSize + MinSize2) return MinSize1;
    if (position < 0) position = 0;
    if (position + SplitterSize > Length) position = Length - SplitterSize;
    if (MaxSize > 0 && MaxSizeAppliesTo == 0 && position > MaxSize) position = MaxSize;
    if (MaxSize > 0 && MaxSizeAppliesTo == 1 && position < Length - MaxSize - SplitterSize) {
        position = Length - MaxSize - SplitterSize;
    }
    if (position <= MinSize1) return MinSize1;
    if (position + SplitterSize <= Length - MinSize2) return position;
    return Length - MinSize2 - SplitterSize;
}

float SplitterModel::RatioOf(int position) const {
    if (Length < 1) return 0;
    return static_cast<float>((position + SplitterSize / 2) / static_cast<double>(Length));
}

int SplitterModel::PositionOf(float ratio) const {
    const double exact = static_cast<double>(ratio) * Length - SplitterSize / 2;
    const double below = std::floor(exact);
    const double over = exact - below;
    const bool isBelowEven = std::fmod(below, 2.0) == 0;
    return static_cast<int>(over < 0.5 || (over == 0.5 && isBelowEven) ? below : below + 1);
}

void SplitterModel::Move(int position) {
    CurrSplitterPos = Clamped(position);
    CurrRatioFromTop = RatioOf(CurrSplitterPos);
}

void SplitterModel::Maintained() {
    Move(Maintain == 0 ? SplitterPos : PositionOf(RatioFromTop));
}

void SplitterModel::Resized(int length, int across) {
    Length = length;
    Across = across;
    CrossSize = across < MinSizeAux ? MinSizeAux : across;
    Maintained();
}

void SplitterModel::WriteSplitterPos(int position) {
    position = SixteenBits(position);
    SplitterPos = NotNegative(position);
    const float ratio = RatioOf(position);
    RatioFromTop = ratio < 0 ? 0 : ratio > 1 ? 1 : ratio;
    Move(position);
}

void SplitterModel::WriteRatioFromTop(float ratio) {
    RatioFromTop = ratio < 0 ? 0 : ratio > 1 ? 1 : ratio;
    SplitterPos = NotNegative(PositionOf(RatioFromTop));
    Move(PositionOf(RatioFromTop));
}

void SplitterModel::WriteSplitterSize(int size) {
    SplitterSize = NotNegative(SixteenBits(size));
    Resized(Length, Across);
}

void SplitterModel::WriteMaintain(int maintain) {
    Maintain = maintain;
    Maintained();
}

void SplitterModel::WriteMaxSize(int size) {
    const int least = MaxSizeAppliesTo == 0 ? MinSize1 : MinSize2;
    MaxSize = NotNegative(SixteenBits(size));
    if (MaxSize > 0 && MaxSize < least) MaxSize = least;
    Maintained();
}

void SplitterModel::WriteMaxSizeAppliesTo(int child) {
    MaxSizeAppliesTo = child;
    Maintained();
}

void SplitterModel::WriteMinSize1(int size) {
    MinSize1 = NotNegative(SixteenBits(size));
    if (MaxSizeAppliesTo == 0 && MaxSize > 0 && MinSize1 > MaxSize) MinSize1 = MaxSize;
    Maintained();
}

void SplitterModel::WriteMinSize2(int size) {
    MinSize2 = NotNegative(SixteenBits(size));
    if (MaxSizeAppliesTo == 1 && MaxSize > 0 && MinSize2 > MaxSize) MinSize2 = MaxSize;
    Maintained();
}

void SplitterModel::WriteMinSizeAux(int size) {
    MinSizeAux = NotNegative(SixteenBits(size));
    Resized(Length, Across);
}

}  // namespace Sonmira

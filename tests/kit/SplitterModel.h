#pragma once

#include <QtGlobal>

namespace Sonmira {

// What a splitter must come to after each change, in plain arithmetic and without anything that calls itself.
// It says what stands at the end of a change; how the control gets there is the control's affair.
struct SplitterModel {
    int Length = 0;
    int Across = 0;

    int SplitterSize = 75;
    int Maintain = 1;
    int SplitterPos = 0;
    float RatioFromTop = 0.5F;
    int MaxSize = 0;
    int MaxSizeAppliesTo = 0;
    int MinSize1 = 255;
    int MinSize2 = 255;
    int MinSizeAux = 255;

    int CurrSplitterPos = 0;
    float CurrRatioFromTop = 0;
    int CrossSize = 0;

    int Clamped(int position) const;
    float RatioOf(int position) const;
    int PositionOf(float ratio) const;

    // The bar goes to a wanted position, within the limits.
    void Move(int position);
    // The bar goes to where it belongs.
    void Maintained();
    void Resized(int length, int across);

    void WriteSplitterPos(int position);
    void WriteRatioFromTop(float ratio);
    void WriteSplitterSize(int size);
    void WriteMaintain(int maintain);
    void WriteMaxSize(int size);
    void WriteMaxSizeAppliesTo(int child);
    void WriteMinSize1(int size);
    void WriteMinSize2(int size);
    void WriteMinSizeAux(int size);

    static int SixteenBits(int value);
    static int NotNegative(int value) { return value < 0 ? 0 : value; }
};

}  // namespace Sonmira

#include "SplitterModel.h"
#include "kit/SplitterBar.h"

#include <gtest/gtest.h>

#include <random>

namespace Sonmira {
namespace {

// The arithmetic by itself.
class SplitterClamp : public ::testing::Test {
protected:
    SplitterGeometry Geometry{.SplitterSize = 75, .MinSize1 = 2000, .MinSize2 = 3000};
};

TEST_F(SplitterClamp, ALengthOfTheLeastTotalPutsTheBarAtTheLeastSizeOfTheFirstChild) {
    EXPECT_EQ(Geometry.MinimumTotal(), 5075);
    for (int length : {-10, 0, 1, 2000, 5074, 5075}) EXPECT_EQ(Geometry.Clamp(length, 4000), 2000) << length;
}

TEST_F(SplitterClamp, ALengthJustAboveTheLeastTotalLeavesOnePlaceMore) {
    EXPECT_EQ(Geometry.Clamp(5076, 0), 2000);
    EXPECT_EQ(Geometry.Clamp(5076, 5000), 2001);
}

TEST_F(SplitterClamp, BothLeastSizesAreKept) {
    EXPECT_EQ(Geometry.Clamp(9000, -50), 2000);
    EXPECT_EQ(Geometry.Clamp(9000, 2000), 2000);
    EXPECT_EQ(Geometry.Clamp(9000, 2001), 2001);
    EXPECT_EQ(Geometry.Clamp(9000, 5925), 5925);
    EXPECT_EQ(Geometry.Clamp(9000, 5926), 5925);
    EXPECT_EQ(Geometry.Clamp(9000, 99999), 5925);
}

TEST_F(SplitterClamp, TheLargestSizeHoldsForTheChildItAppliesTo) {
    Geometry.MaxSize = 4000;
    EXPECT_EQ(Geometry.Clamp(9000, 5000), 4000);
    EXPECT_EQ(Geometry.Clamp(9000, 2500), 2500);
    Geometry.MaxSizeAppliesTo = 1;
    EXPECT_EQ(Geometry.Clamp(9000, 5000), 5000);
    EXPECT_EQ(Geometry.Clamp(9000, 2500), 4925);
}

TEST_F(SplitterClamp, TheLeastSizeOfTheFirstChildWinsOverTheLargestSizeOfTheFirst) {
    Geometry.MaxSize = 1000;
    EXPECT_EQ(Geometry.Clamp(9000, 5000), 2000);
}

TEST_F(SplitterClamp, TheLeastSizeOfTheSecondChildWinsOverItsLargestSize) {
    Geometry.MaxSize = 1000;
    Geometry.MaxSizeAppliesTo = 1;
    EXPECT_EQ(Geometry.Clamp(9000, 3000), 5925);
}

TEST_F(SplitterClamp, TheLeastSizeOfTheFirstChildHasNoInterplayWithALargestSizeOfTheSecond) {
    Geometry.MaxSize = 9000;
    Geometry.MaxSizeAppliesTo = 1;
    EXPECT_EQ(Geometry.Clamp(9000, 0), 2000);
}

TEST_F(SplitterClamp, ABarWiderThanItsPlaceStaysAtTheStart) {
    Geometry = {.SplitterSize = 500, .MinSize1 = 0, .MinSize2 = 0};
    EXPECT_EQ(Geometry.Clamp(500, 300), 0);
    EXPECT_EQ(Geometry.Clamp(501, 300), 1);
}

TEST_F(SplitterClamp, TheRatioIsThatOfTheMiddleOfTheBar) {
    EXPECT_EQ(Geometry.RatioFromPosition(1000, 463), 0.5F);  // half of 75 is 37
    EXPECT_EQ(Geometry.PositionFromRatio(1000, 0.5F), 463);
    EXPECT_EQ(Geometry.RatioFromPosition(0, 463), 0.F);
    EXPECT_EQ(Geometry.RatioFromPosition(-5, 463), 0.F);
    EXPECT_GT(Geometry.RatioFromPosition(100, 255), 1.F);
}

TEST_F(SplitterClamp, ATieIsRoundedToTheEvenPosition) {
    Geometry.SplitterSize = 0;
    EXPECT_EQ(Geometry.PositionFromRatio(5, 0.5F), 2);
    EXPECT_EQ(Geometry.PositionFromRatio(7, 0.5F), 4);
    EXPECT_EQ(Geometry.PositionFromRatio(10, 0.25F), 2);
    Geometry.SplitterSize = 2;
    EXPECT_EQ(Geometry.PositionFromRatio(1, 0.5F), 0);
    EXPECT_EQ(Geometry.PositionFromRatio(5, 0.5F), 2);
}

TEST_F(SplitterClamp, TheCrossSizeIsNeverBelowItsLeast) {
    EXPECT_EQ(Geometry.CrossSize(-3), 255);
    EXPECT_EQ(Geometry.CrossSize(254), 255);
    EXPECT_EQ(Geometry.CrossSize(256), 256);
}

TEST_F(SplitterClamp, TheSecondChildKeepsItsLeastSizeEvenOverTheEdge) {
    EXPECT_EQ(Geometry.Child2Place(4000, 100, 9000, false), QRect(4075, 0, 4925, 100));
    EXPECT_EQ(Geometry.Child2Place(4000, 100, 7075, false), QRect(4075, 0, 3000, 100));
    EXPECT_EQ(Geometry.Child2Place(4000, 100, 7074, false), QRect(4075, 0, 3000, 100));
    EXPECT_EQ(Geometry.Child2Place(4000, 100, 0, false), QRect(4075, 0, 3000, 100));
}

TEST_F(SplitterClamp, AListViewReachesFifteenUnitsBeyondEachEdgeOfItsSide) {
    EXPECT_EQ(Geometry.Child1Place(4000, 100, true), QRect(-15, -15, 4030, 130));
    EXPECT_EQ(Geometry.Child2Place(4000, 100, 9000, true), QRect(4060, -15, 4955, 130));
    EXPECT_EQ(Geometry.Child2Place(4000, 100, 5000, true), QRect(4060, -15, 3030, 130));
    Geometry.Orientation = 1;
    EXPECT_EQ(Geometry.Child1Place(4000, 100, true), QRect(-15, -15, 130, 4030));
    EXPECT_EQ(Geometry.Child2Place(4000, 100, 9000, true), QRect(-15, 4060, 130, 4955));
}

TEST_F(SplitterClamp, TenThousandRandomLimitsGiveWhatTheModelGives) {
    std::mt19937 random(20040117);
    const auto number = [&](int least, int most) {
        return std::uniform_int_distribution(least, most)(random);
    };
    for (int n = 0; n < 10'000; ++n) {
        SplitterModel model;
        model.Length = number(-20, 12'000);
        model.SplitterSize = number(0, 600);
        model.MaxSize = number(0, 1) * number(0, 9'000);
        model.MaxSizeAppliesTo = number(0, 1);
        model.MinSize1 = number(0, 4'000);
        model.MinSize2 = number(0, 4'000);
        const SplitterGeometry geometry{.SplitterSize = model.SplitterSize,
                                        .MaxSize = model.MaxSize,
                                        .MaxSizeAppliesTo = model.MaxSizeAppliesTo,
                                        .MinSize1 = model.MinSize1,
                                        .MinSize2 = model.MinSize2};
        const int wanted = number(-3'000, 14'000);
        const float ratio = static_cast<float>(number(-100, 1100)) / 1000.F;
        ASSERT_EQ(geometry.Clamp(model.Length, wanted), model.Clamped(wanted)) << n;
        ASSERT_EQ(geometry.RatioFromPosition(model.Length, wanted), model.RatioOf(wanted)) << n;
        ASSERT_EQ(geometry.PositionFromRatio(model.Length, ratio), model.PositionOf(ratio)) << n;
    }
}

}  // namespace
}  // namespace Sonmira

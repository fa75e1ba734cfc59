#include "SplitterTest.h"

#include <QSignalSpy>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

TEST_F(SplitterTest, ANewSplitterHasTheDefaultsAndStandsInTheMiddle) {
    const Splitter fresh(&Window);
    EXPECT_EQ(fresh.BorderStyle(), 0);
    EXPECT_EQ(fresh.SplitterAppearance(), 1);
    EXPECT_EQ(fresh.SplitterBorder(), 1);
    EXPECT_EQ(fresh.SplitterColor(), 0x404040U);
    EXPECT_EQ(fresh.Orientation(), 0);
    EXPECT_EQ(fresh.SplitterSize(), 75);
    EXPECT_EQ(fresh.Maintain(), 1);
    EXPECT_EQ(fresh.RatioFromTop(), 0.5F);
    EXPECT_EQ(fresh.SplitterPos(), ToTwips(fresh.width()) / 2 - 37);
    EXPECT_EQ(fresh.Child1(), QString());
    EXPECT_EQ(fresh.Child2(), QString());
    EXPECT_EQ(fresh.MaxSize(), 0);
    EXPECT_EQ(fresh.MaxSizeAppliesTo(), 0);
    EXPECT_EQ(fresh.MinSize1(), 255);
    EXPECT_EQ(fresh.MinSize2(), 255);
    EXPECT_EQ(fresh.MinSizeAux(), 255);
    EXPECT_TRUE(fresh.AllowResize());
    EXPECT_TRUE(fresh.LiveUpdate());
}

TEST_F(SplitterTest, TheChildrenLieOnBothSidesOfTheBar) {
    EXPECT_EQ(Control.CurrSplitterPos(), 4463);  // 9000 / 2 - 37
    EXPECT_EQ(First.geometry(), QRect(0, 0, 298, 400));
    EXPECT_EQ(Bar()->geometry(), QRect(298, 0, 5, 400));
    EXPECT_EQ(Second.geometry(), QRect(303, 0, 297, 400));
}

TEST_F(SplitterTest, ALyingBarHasItsChildrenAboveAndBelow) {
    Control.SetOrientation(1);
    EXPECT_EQ(Control.CurrSplitterPos(), 2963);  // 6000 / 2 - 37
    EXPECT_EQ(First.geometry(), QRect(0, 0, 600, 198));
    EXPECT_EQ(Bar()->geometry(), QRect(0, 198, 600, 5));
    EXPECT_EQ(Second.geometry(), QRect(0, 203, 600, 197));
}

TEST_F(SplitterTest, ThePointerOverTheBarTellsTheDirection) {
    EXPECT_EQ(Bar()->cursor().shape(), Qt::SizeHorCursor);
    Control.SetOrientation(1);
    EXPECT_EQ(Bar()->cursor().shape(), Qt::SizeVerCursor);
    Control.SetOrientation(0);
    EXPECT_EQ(Bar()->cursor().shape(), Qt::SizeHorCursor);
}

TEST_F(SplitterTest, PositionAndRatioFollowEachOther) {
    Control.SetSplitterPos(3000);
    EXPECT_EQ(Control.RatioFromTop(), 3037 / 9000.F);
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
    Control.SetRatioFromTop(0.25F);
    EXPECT_EQ(Control.SplitterPos(), 2250 - 37);
    EXPECT_EQ(Control.CurrSplitterPos(), 2250 - 37);
}

TEST_F(SplitterTest, ANegativePositionIsKeptAsZero) {
    Control.SetSplitterPos(-500);
    EXPECT_EQ(Control.SplitterPos(), 0);
    EXPECT_EQ(Control.RatioFromTop(), 0.F);
    EXPECT_EQ(Control.CurrSplitterPos(), 255);
}

TEST_F(SplitterTest, ARatioIsKeptBetweenZeroAndOne) {
    Control.SetRatioFromTop(7);
    EXPECT_EQ(Control.RatioFromTop(), 1.F);
    Control.SetRatioFromTop(-7);
    EXPECT_EQ(Control.RatioFromTop(), 0.F);
    Control.SetRatioFromTop(1);
    EXPECT_EQ(Control.RatioFromTop(), 1.F);
    EXPECT_EQ(Control.CurrSplitterPos(), Length - 255 - 75);
}

TEST_F(SplitterTest, MaintainOneKeepsTheRatioOverAResize) {
    Control.SetRatioFromTop(0.25F);
    ResizeTo(400, 400);
    EXPECT_EQ(Control.CurrSplitterPos(), 1500 - 37);
    EXPECT_EQ(Control.CurrRatioFromTop(), 1500 / 6000.F);
}

TEST_F(SplitterTest, MaintainZeroKeepsThePositionOverAResize) {
    Control.SetMaintain(0);
    Control.SetSplitterPos(3000);
    ResizeTo(400, 400);
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
    EXPECT_EQ(Control.RatioFromTop(), 3037 / 9000.F);
    EXPECT_EQ(Control.CurrRatioFromTop(), 3037 / 6000.F);
}

TEST_F(SplitterTest, AClampedBarKeepsTheWantedRatioAndGoesBackWhenThereIsRoom) {
    Control.SetMinSize1(3000);
    Control.SetRatioFromTop(0.4F);
    EXPECT_EQ(Control.CurrSplitterPos(), 3600 - 37);
    ResizeTo(300, 400);  // 4500 twips, of which 0.4 are 1800
    EXPECT_EQ(Control.RatioFromTop(), 0.4F);
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
    EXPECT_EQ(Control.CurrRatioFromTop(), 3037 / 4500.F);
    ResizeTo(600, 400);
    EXPECT_EQ(Control.CurrSplitterPos(), 3600 - 37);
}

TEST_F(SplitterTest, AControlTooSmallForItsLeastTotalPutsTheBarAtTheLeastSizeOfTheFirstChild) {
    Control.SetMinSize1(2000);
    Control.SetMinSize2(6500);
    ResizeTo(100, 400);
    EXPECT_EQ(Control.CurrSplitterPos(), 2000);
    // The second child sticks out and keeps its least size.
    EXPECT_EQ(Second.x(), ToPixels(2075));
    EXPECT_EQ(Second.x() + Second.width(), ToPixels(2075 + 6500));
}

TEST_F(SplitterTest, OfALargestAndALeastSizeTheOneWrittenLastGivesWay) {
    Control.SetMinSize1(2000);
    Control.SetMaxSize(1000);
    EXPECT_EQ(Control.MaxSize(), 2000);
    Control.SetMinSize1(3000);
    EXPECT_EQ(Control.MinSize1(), 2000);
    Control.SetMaxSizeAppliesTo(1);
    Control.SetMinSize2(5000);
    EXPECT_EQ(Control.MinSize2(), 2000);
    Control.SetMaxSize(1);
    EXPECT_EQ(Control.MaxSize(), 2000);
}

TEST_F(SplitterTest, NoLargestSizeLimitsNoLeastSize) {
    Control.SetMaxSize(0);
    Control.SetMinSize1(4000);
    EXPECT_EQ(Control.MinSize1(), 4000);
    EXPECT_EQ(Control.MaxSize(), 0);
}

TEST_F(SplitterTest, TheLeastSizeOfTheSecondChildIgnoresALargestSizeOfTheFirst) {
    Control.SetMaxSize(1000);
    Control.SetMinSize2(5000);
    EXPECT_EQ(Control.MinSize2(), 5000);
}

TEST_F(SplitterTest, NegativeSizesBecomeZero) {
    Control.SetSplitterSize(-1);
    Control.SetMaxSize(-1);
    Control.SetMinSize1(-1);
    Control.SetMinSize2(-1);
    Control.SetMinSizeAux(-1);
    EXPECT_EQ(Control.SplitterSize(), 0);
    EXPECT_EQ(Control.MaxSize(), 0);
    EXPECT_EQ(Control.MinSize1(), 0);
    EXPECT_EQ(Control.MinSize2(), 0);
    EXPECT_EQ(Control.MinSizeAux(), 0);
}

TEST_F(SplitterTest, SixteenBitPropertiesSaturateButNoSizeDoes) {
    Control.SetMinSize1(100'000);
    EXPECT_EQ(Control.MinSize1(), 32'767);
    Control.SetMinSize1(0);
    ResizeTo(3840, 2160);  // 57,600 twips wide
    Control.SetRatioFromTop(0.75F);
    EXPECT_EQ(Control.SplitterPos(), 32'767);
    EXPECT_EQ(Control.CurrSplitterPos(), 32'767);
    EXPECT_EQ(Control.BarPosition(), 43'200 - 37);
    EXPECT_EQ(Bar()->x(), ToPixels(43'200 - 37));
    EXPECT_EQ(Control.CrossSize(), 32'400);
}

TEST_F(SplitterTest, LeastSizesThatDoNotFitSixteenBitsTogetherAreStillAdded) {
    Control.SetMinSize1(30'000);
    Control.SetMinSize2(30'000);
    EXPECT_EQ(Control.Measures().MinimumTotal(), 60'075);
    ResizeTo(3840, 100);
    EXPECT_EQ(Control.BarPosition(), 30'000);
}

TEST_F(SplitterTest, TheCrossSizeKeepsItsLeast) {
    Control.SetMinSizeAux(9000);
    EXPECT_EQ(First.height(), 600);
    EXPECT_EQ(Bar()->height(), 600);
    EXPECT_EQ(Second.height(), 600);
}

TEST_F(SplitterTest, ChildrenAreFoundByNameWithoutRegardToCase) {
    EXPECT_EQ(Control.Contained(u"BEFORE"_s), &First);
    EXPECT_EQ(Control.Contained(u"after"_s), &Second);
    EXPECT_EQ(Control.Contained(u""_s), nullptr);
    EXPECT_EQ(Control.Contained(u"Nobody"_s), nullptr);
    EXPECT_EQ(Control.Contained(u"picSplitter"_s), nullptr);
}

TEST_F(SplitterTest, OfTwoChildrenOfOneNameTheFirstIsTaken) {
    QWidget twin(&Control);
    twin.setObjectName(u"before"_s);
    EXPECT_EQ(Control.Contained(u"Before"_s), &First);
}

TEST_F(SplitterTest, AControlInsideOfAChildIsNotContained) {
    QWidget inner(&First);
    inner.setObjectName(u"Inner"_s);
    EXPECT_EQ(Control.Contained(u"Inner"_s), nullptr);
}

TEST_F(SplitterTest, ANameThatMatchesNothingLeavesThatSideAlone) {
    Control.SetChild1(u"Nobody"_s);
    First.setGeometry(1, 2, 3, 4);
    Layouts = 0;
    Control.SetSplitterPos(3000);
    EXPECT_EQ(Bar()->x(), 200);
    EXPECT_EQ(First.geometry(), QRect(1, 2, 3, 4));
    EXPECT_EQ(Second.x(), 205);
    Control.SetChild1(u"before"_s);
    Control.SetChild2(u""_s);
    Second.setGeometry(1, 2, 3, 4);
    Control.SetSplitterPos(3750);
    EXPECT_EQ(First.width(), 250);
    EXPECT_EQ(Second.geometry(), QRect(1, 2, 3, 4));
    EXPECT_GT(Layouts, 0);
}

TEST_F(SplitterTest, TheFirstChildFollowsTheBarWhereThereIsNoSecond) {
    Control.SetChild2({});
    Layouts = 0;
    Control.SetSplitterPos(3000);
    EXPECT_GE(Layouts, 1);
    EXPECT_EQ(First.geometry(), QRect(0, 0, 200, 400));
}

TEST_F(SplitterTest, AListViewOverlapsTheBarByFifteenUnitsOnEachSide) {
    First.setProperty(Splitter::TypeNameProperty, u"LISTVIEW"_s);
    Second.setProperty(Splitter::TypeNameProperty, u"ListView"_s);
    Control.SetSplitterPos(3000);
    EXPECT_EQ(First.geometry(), QRect(-1, -1, 202, 402));
    EXPECT_EQ(Second.geometry(), QRect(204, -1, 397, 402));
}

class ListView : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;
};

TEST_F(SplitterTest, TheTypeNameOfAControlIsItsClassWhereNothingElseIsSaid) {
    ListView list(&Control);
    list.setObjectName(u"List"_s);
    Control.SetSplitterPos(3000);
    Control.SetChild1(u"List"_s);
    EXPECT_EQ(list.geometry(), QRect(-1, -1, 202, 402));
    list.setProperty(Splitter::TypeNameProperty, u"PictureBox"_s);
    Control.SetChild1(u"List"_s);
    EXPECT_EQ(list.geometry(), QRect(0, 0, 200, 400));
}

TEST_F(SplitterTest, EachLayoutOfTheChildrenIsTold) {
    Control.SetChild1(u"Before"_s);
    EXPECT_EQ(Layouts, 1);
    ResizeTo(500, 300);
    EXPECT_EQ(Layouts, 2);
    Control.SetMaintain(1);
    EXPECT_EQ(Layouts, 3);
    Control.SetSplitterColor(0x112233);
    EXPECT_EQ(Layouts, 3);
}

TEST_F(SplitterTest, EveryWriterReportsItsProperty) {
    QList<Splitter::Property> reported;
    QObject::connect(&Control, &Splitter::PropertyChanged,
                     [&](Splitter::Property property) { reported += property; });
    using enum Splitter::Property;
    Control.SetBorderStyle(0);
    Control.SetSplitterAppearance(0);
    Control.SetSplitterBorder(0);
    Control.SetSplitterColor(0);
    Control.SetOrientation(0);
    Control.SetSplitterSize(90);
    Control.SetMaintain(1);
    EXPECT_EQ(reported, (QList{BorderStyle, SplitterAppearance, SplitterBorder, SplitterColor, Orientation,
                               SplitterSize, Maintain}));
    reported.clear();
    Control.SetSplitterPos(3000);
    EXPECT_EQ(reported, (QList{SplitterPos, RatioFromTop}));
    reported.clear();
    Control.SetRatioFromTop(0.5);
    EXPECT_EQ(reported, (QList{RatioFromTop, SplitterPos}));
    reported.clear();
    Control.SetChild1({});
    Control.SetChild2({});
    Control.SetMaxSize(5000);
    Control.SetMaxSizeAppliesTo(1);
    Control.SetMinSize1(300);
    Control.SetMinSize2(300);
    Control.SetMinSizeAux(300);
    Control.SetAllowResize(true);
    Control.SetLiveUpdate(true);
    EXPECT_EQ(reported, (QList{Child1, Child2, MaxSize, MaxSizeAppliesTo, MinSize1, MinSize2, MinSizeAux,
                               AllowResize, LiveUpdate}));
}

TEST_F(SplitterTest, AHandlerOfTheReportMayReadTheNewPosition) {
    int seen = -1;
    QObject::connect(&Control, &Splitter::PropertyChanged, [&] { seen = Control.SplitterPos(); });
    Control.SetSplitterPos(3000);
    EXPECT_EQ(seen, 3000);
}

TEST_F(SplitterTest, AHandlerThatWritesTheSamePropertyAgainIsPassedOver) {
    QObject::connect(&Control, &Splitter::PropertyChanged, [&](Splitter::Property property) {
        if (property == Splitter::Property::SplitterPos) Control.SetSplitterPos(8000);
    });
    Control.SetSplitterPos(3000);
    EXPECT_EQ(Control.SplitterPos(), 3000);
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
}

TEST_F(SplitterTest, TheBarIsThereOnlyWhereItMayBeMoved) {
    EXPECT_TRUE(Bar()->isVisible());
    Control.SetAllowResize(false);
    EXPECT_FALSE(Bar()->isVisible());
    Control.SetAllowResize(true);
    EXPECT_TRUE(Bar()->isVisible());
}

TEST_F(SplitterTest, ABorderTakesItsRoomFromTheInside) {
    Control.SetSplitterPos(3000);
    Control.SetBorderStyle(1);
    EXPECT_EQ(Control.contentsRect(), QRect(1, 1, 598, 398));
    EXPECT_EQ(First.geometry(), QRect(1, 1, ToPixels(Control.BarPosition()), 398));
    EXPECT_EQ(Second.geometry().bottomRight(), QPoint(598, 398));
}

TEST_F(SplitterTest, ATurnedSplitterThatKeepsItsPositionStartsAtTheWantedOne) {
    Control.SetMaintain(0);
    Control.SetSplitterPos(3000);
    Control.SetOrientation(1);
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
    EXPECT_EQ(Bar()->geometry(), QRect(0, 200, 600, 5));
}

TEST_F(SplitterTest, FromRightToLeftEverythingIsMirrored) {
    Control.SetSplitterPos(3000);
    Window.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(First.geometry(), QRect(400, 0, 200, 400));
    EXPECT_EQ(Bar()->geometry(), QRect(395, 0, 5, 400));
    EXPECT_EQ(Second.geometry(), QRect(0, 0, 395, 400));
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
}

}  // namespace
}  // namespace Sonmira

#include "SplitterTest.moc"

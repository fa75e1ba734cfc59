#include "SplitterTest.h"
#include "kit/Palette.h"

#include <QAction>
#include <QCursor>
#include <QLineEdit>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// Drags with real mouse events. Places are logical pixels of the splitter.
class SplitterDrag : public SplitterTest {
protected:
    SplitterDrag() {
        Control.SetSplitterPos(3000);  // pixel 200, five wide
        Layouts = 0;
    }

    QPoint InBar(const QPoint& place) { return Bar()->mapFrom(&Control, place); }
    void Press(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mousePress(Bar(), button, {}, InBar(place));
    }
    void Move(const QPoint& place) { QTest::mouseMove(Bar(), InBar(place)); }
    void Release(const QPoint& place, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseRelease(Bar(), button, {}, InBar(place));
    }
    void Escape() { QTest::keyClick(Window.focusWidget(), Qt::Key_Escape); }
};

TEST_F(SplitterDrag, TheChildrenFollowALiveDrag) {
    Press({202, 50});
    Move({252, 55});
    EXPECT_EQ(Control.CurrSplitterPos(), 3750);
    EXPECT_EQ(First.width(), 250);
    EXPECT_EQ(Second.x(), 255);
    EXPECT_GT(Layouts, 0);
    EXPECT_EQ(Control.SplitterPos(), 3000);  // the wanted position hears of it at the end
    Move({102, 55});
    EXPECT_EQ(Control.CurrSplitterPos(), 1500);
    Release({102, 55});
    EXPECT_EQ(Control.SplitterPos(), 1500);
    EXPECT_EQ(Control.RatioFromTop(), 1537 / 9000.F);
    EXPECT_FALSE(Control.IsDragging());
}

TEST_F(SplitterDrag, OnlyTheBarMovesWithoutLiveUpdate) {
    Control.SetLiveUpdate(false);
    Layouts = 0;
    Press({202, 50});
    Move({252, 50});
    EXPECT_EQ(Control.CurrSplitterPos(), 3750);
    EXPECT_EQ(Bar()->x(), 250);
    EXPECT_EQ(First.width(), 200);
    EXPECT_EQ(Second.x(), 205);
    EXPECT_EQ(Layouts, 0);
    Release({252, 50});
    EXPECT_EQ(First.width(), 250);
    EXPECT_EQ(Second.x(), 255);
    EXPECT_GT(Layouts, 0);
    EXPECT_EQ(Control.SplitterPos(), 3750);
}

TEST_F(SplitterDrag, TheGrabbedPointStaysUnderThePointer) {
    for (const int border : {0, 1}) {
        for (const int appearance : {0, 1}) {
            Control.SetLiveUpdate(false);
            Control.SetSplitterBorder(border);
            Control.SetSplitterAppearance(appearance);
            Control.SetSplitterPos(3000);
            for (int grab = 0; grab < 5; ++grab) {
                Press({200 + grab, 50});
                Move({200 + grab, 60});
                EXPECT_EQ(Bar()->x(), 200) << "a pointer that only moved along the bar";
                Move({300 + grab, 60});
                EXPECT_EQ(Bar()->x(), 300);
                Move({200 + grab, 60});
                Release({200 + grab, 60});
                EXPECT_EQ(Control.SplitterPos(), 3000);
            }
        }
    }
}

TEST_F(SplitterDrag, TheBarShowsItsColourDuringADragWithoutLiveUpdateOnly) {
    Control.SetLiveUpdate(false);
    Control.SetSplitterBorder(0);
    Control.SetSplitterColor(0x0000FF);  // blue, green, red
    const auto middle = [&] { return Bar()->grab().toImage().pixelColor(1, 3); };
    EXPECT_NE(middle(), QColor(255, 0, 0));
    Press({202, 50});
    EXPECT_EQ(middle(), QColor(255, 0, 0));
    Release({202, 50});
    EXPECT_NE(middle(), QColor(255, 0, 0));
    Control.SetSplitterColor(0x8000000F);
    Press({202, 50});
    EXPECT_EQ(middle(), CurrentPalette().Window);
    Escape();
    Control.SetLiveUpdate(true);
    Control.SetSplitterColor(0x0000FF);
    Press({202, 50});
    EXPECT_NE(middle(), QColor(255, 0, 0));
}

TEST_F(SplitterDrag, ADragEndsAtTheLimits) {
    Control.SetMaxSize(4500);
    Control.SetMinSize1(1500);
    Press({Bar()->x() + 2, 50});
    Move({599, 50});
    EXPECT_EQ(Control.CurrSplitterPos(), 4500);
    Move({-500, 50});
    EXPECT_EQ(Control.CurrSplitterPos(), 1500);
    Release({-500, 50});
    EXPECT_EQ(Control.SplitterPos(), 1500);
}

TEST_F(SplitterDrag, ALengthWithASinglePlaceForTheBarIgnoresADrag) {
    Control.SetMinSize1(3000);
    Control.SetMinSize2(Length - 3000 - 75);
    ASSERT_EQ(Control.Measures().MinimumTotal(), Length);
    Layouts = 0;
    Press({202, 50});
    Move({300, 50});
    Move({10, 50});
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
    EXPECT_EQ(Layouts, 0);
}

TEST_F(SplitterDrag, ALengthOfOneUnitMoreMovesNothingOnTheScreen) {
    Control.SetMinSize1(3000);
    Control.SetMinSize2(Length - 3000 - 75 - 1);
    ASSERT_EQ(Control.Measures().MinimumTotal(), Length - 1);
    const QRect bar = Bar()->geometry();
    const QRect first = First.geometry();
    const QRect second = Second.geometry();
    const auto expectAllInPlace = [&] {
        EXPECT_EQ(Bar()->geometry(), bar);
        EXPECT_EQ(First.geometry(), first);
        EXPECT_EQ(Second.geometry(), second);
    };
    for (const bool isLive : {true, false}) {
        Control.SetLiveUpdate(isLive);
        Press({202, 50});
        Move({300, 50});
        EXPECT_EQ(Control.CurrSplitterPos(), 3001);
        expectAllInPlace();
        Move({10, 50});
        EXPECT_EQ(Control.CurrSplitterPos(), 3000);
        expectAllInPlace();
        Move({300, 50});
        Release({300, 50});
        EXPECT_EQ(Control.SplitterPos(), 3001);
        expectAllInPlace();
    }
}

TEST_F(SplitterDrag, TheFirstChildFollowsWhereThereIsNoSecond) {
    Control.SetChild2({});
    Layouts = 0;
    Press({202, 50});
    Move({252, 50});
    EXPECT_GE(Layouts, 1);
    EXPECT_EQ(First.geometry(), QRect(0, 0, 250, 400));
    Release({252, 50});
    EXPECT_EQ(Control.SplitterPos(), 3750);
    EXPECT_EQ(First.geometry(), QRect(0, 0, 250, 400));
}

TEST_F(SplitterDrag, EscapeInALiveDragPutsTheChildrenBack) {
    Press({202, 50});
    Move({252, 50});
    ASSERT_EQ(First.width(), 250);
    Escape();
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
    EXPECT_EQ(First.width(), 200);
    EXPECT_EQ(Second.x(), 205);
    EXPECT_EQ(Control.SplitterPos(), 3000);
    EXPECT_FALSE(Control.IsDragging());
    Move({300, 50});
    Release({300, 50});
    EXPECT_EQ(Control.SplitterPos(), 3000);
}

TEST_F(SplitterDrag, EscapeWithoutLiveUpdatePutsTheBarBack) {
    Control.SetLiveUpdate(false);
    Press({202, 50});
    Move({252, 50});
    Escape();
    EXPECT_EQ(Bar()->x(), 200);
    EXPECT_EQ(First.width(), 200);
    EXPECT_EQ(Control.SplitterPos(), 3000);
    EXPECT_FALSE(Control.IsDragging());
}

TEST_F(SplitterDrag, EscapeWithoutLiveUpdateUndressesTheBar) {
    QLineEdit field(&First);  // has the focus that the bar takes for the time of the drag
    field.show();
    field.setFocus();
    Control.SetLiveUpdate(false);
    Control.SetSplitterColor(0x0000FF);  // blue, green, red
    Control.SetSplitterBorder(1);
    const auto look = [&] {
        QCursor::setPos(Window.mapToGlobal(QPoint(20, 10)));
        QApplication::processEvents();
        EXPECT_FALSE(Bar()->underMouse());
        return Bar()->grab().toImage();
    };
    const QImage before = look();
    const auto* frame = qobject_cast<const QFrame*>(Bar());
    ASSERT_NE(frame, nullptr);
    Press({202, 50});
    Move({252, 50});
    EXPECT_NE(Bar()->grab().toImage(), before);
    EXPECT_EQ(frame->frameShape(), QFrame::Panel);
    Escape();
    EXPECT_EQ(look(), before);
    EXPECT_EQ(frame->frameShape(), QFrame::NoFrame);
    Release({252, 50});
}

TEST_F(SplitterDrag, EscapeOfAClampedBarLeavesTheWantedRatioAlone) {
    Control.SetMinSize1(4500);
    ASSERT_EQ(Control.CurrSplitterPos(), 4500);
    const float wanted = Control.RatioFromTop();
    Press({302, 50});
    Move({402, 50});
    Escape();
    Release({402, 50});
    EXPECT_EQ(Control.RatioFromTop(), wanted);
    EXPECT_EQ(Control.CurrSplitterPos(), 4500);
}

TEST_F(SplitterDrag, EscapeBelongsToTheDragEvenWhereACommandHasIt) {
    QAction command;
    command.setShortcut(Qt::Key_Escape);
    bool isDone = false;
    QObject::connect(&command, &QAction::triggered, [&] { isDone = true; });
    Window.addAction(&command);
    Press({202, 50});
    Move({252, 50});
    QTest::keyClick(Window.windowHandle(), Qt::Key_Escape);
    EXPECT_FALSE(isDone);
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
    QTest::keyClick(Window.windowHandle(), Qt::Key_Escape);
    EXPECT_TRUE(isDone);
}

TEST_F(SplitterDrag, AFieldKeepsTheFocusOverADrag) {
    QLineEdit field(&First);
    field.show();
    field.setFocus();
    Press({202, 50});
    EXPECT_TRUE(Bar()->hasFocus());
    Release({202, 50});
    EXPECT_TRUE(field.hasFocus());
    Press({202, 50});
    Escape();
    EXPECT_TRUE(field.hasFocus());
}

TEST_F(SplitterDrag, OtherButtonsDragNothing) {
    Press({202, 50}, Qt::RightButton);
    Move({252, 50});
    Release({252, 50}, Qt::RightButton);
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
}

TEST_F(SplitterDrag, ASecondButtonDoesNotEndADrag) {
    Press({202, 50});
    Move({252, 50});
    Release({252, 50}, Qt::RightButton);
    EXPECT_TRUE(Control.IsDragging());
    Move({272, 50});
    Release({272, 50});
    EXPECT_EQ(Control.SplitterPos(), 4050);
}

TEST_F(SplitterDrag, ABarThatIsHiddenInADragGoesBackAndLetsGo) {
    Press({202, 50});
    Move({252, 50});
    Control.SetAllowResize(false);
    EXPECT_FALSE(Control.IsDragging());
    Control.SetAllowResize(true);
    Move({300, 50});
    EXPECT_EQ(Control.CurrSplitterPos(), 3000);
    EXPECT_EQ(First.width(), 200);
    EXPECT_EQ(Control.SplitterPos(), 3000);
}

TEST_F(SplitterDrag, ALyingBarIsDraggedUpAndDown) {
    Control.SetOrientation(1);
    Control.SetSplitterPos(3000);
    Press({50, 202});
    Move({400, 252});
    EXPECT_EQ(Control.CurrSplitterPos(), 3750);
    EXPECT_EQ(First.height(), 250);
    Release({400, 252});
    EXPECT_EQ(Control.SplitterPos(), 3750);
}

TEST_F(SplitterDrag, FromRightToLeftTheBarFollowsThePointerToo) {
    Window.setLayoutDirection(Qt::RightToLeft);
    ASSERT_EQ(Bar()->x(), 395);
    Press({397, 50});
    Move({347, 50});
    EXPECT_EQ(Bar()->x(), 345);
    EXPECT_EQ(Control.CurrSplitterPos(), 3750);
    Release({347, 50});
    EXPECT_EQ(Control.SplitterPos(), 3750);
}

TEST_F(SplitterDrag, ManySmallStepsDoNotDriftFromThePointer) {
    Control.SetMinSize1(2003);  // no whole pixel
    Press({202, 50});
    for (int x = 202; x > 100; --x) Move({x, 50});
    EXPECT_EQ(Control.CurrSplitterPos(), 2003);
    for (int x = 100; x < 402; ++x) Move({x, 50});
    EXPECT_NEAR(Bar()->x(), 400, 1);
    Release({402, 50});
}

TEST_F(SplitterDrag, TheArrowKeysMoveTheBar) {
    Bar()->setFocus();
    QTest::keyClick(Bar(), Qt::Key_Right);
    EXPECT_EQ(Control.SplitterPos(), 3120);
    EXPECT_EQ(First.width(), 208);
    QTest::keyClick(Bar(), Qt::Key_Left);
    QTest::keyClick(Bar(), Qt::Key_Left);
    EXPECT_EQ(Control.SplitterPos(), 2880);
    QTest::keyClick(Bar(), Qt::Key_Up);
    EXPECT_EQ(Control.SplitterPos(), 2880);
    Window.setLayoutDirection(Qt::RightToLeft);
    QTest::keyClick(Bar(), Qt::Key_Left);
    EXPECT_EQ(Control.SplitterPos(), 3000);
    Control.SetOrientation(1);
    const int before = Control.CurrSplitterPos();
    QTest::keyClick(Bar(), Qt::Key_Down);
    EXPECT_EQ(Control.CurrSplitterPos(), before + 120);
}

TEST_F(SplitterDrag, TheArrowKeysEndAtTheLimits) {
    Control.SetMinSize1(2950);
    QTest::keyClick(Bar(), Qt::Key_Left);
    EXPECT_EQ(Control.CurrSplitterPos(), 2950);
    const float ratio = Control.RatioFromTop();
    QTest::keyClick(Bar(), Qt::Key_Left);
    EXPECT_EQ(Control.RatioFromTop(), ratio);
}

}  // namespace
}  // namespace Sonmira

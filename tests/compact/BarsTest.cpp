// The progress bars over the rows.
#include "AudiotoolTest.h"
#include "platform/Failure.h"
#include "shell/widgets/WindowMeasures.h"

#include <QHeaderView>
#include <QScrollBar>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Bars : public AudiotoolTest {
protected:
    Bars() { Open(); }

    QRect CellOf(int row) {
        QRect cell;
        EXPECT_TRUE(GetSubItemRect(&List(), row - 1, 3, 2, cell));
        return cell;
    }
    // Where the design's rule wants the bar of a row, in twips: 15 are a pixel.
    void ExpectInPlace(int row) {
        const QRect cell = CellOf(row);
        const int height = cell.height() * 15 - 40;
        const int top = (cell.height() * 15 - height) / 2 + cell.top() * 15 + 10;
        const QRect bar = Bar(row - 1).geometry();
        EXPECT_EQ(bar.left() * 15, cell.left() * 15) << row;
        EXPECT_EQ(bar.width() * 15, cell.width() * 15) << row;
        EXPECT_LE(std::abs(bar.top() * 15 - top), 7) << row;
        EXPECT_LE(std::abs(bar.height() * 15 - height), 7) << row;
        EXPECT_EQ(!Bar(row - 1).isHidden(), cell.top() >= 0) << row;
    }
    void ExpectAllInPlace() {
        for (int row = 1; row <= Rows().Count(); ++row) ExpectInPlace(row);
    }
    // Every bar somewhere else, so that only a new layout brings it back.
    void Disturb() {
        for (int n = 0; n <= Window->Bars().HighestElement(); ++n) {
            Window->Bars().Element(n).setGeometry(1, 2, 3, 4);
        }
    }
    void Press(Qt::Key key) { QTest::keyClick(&List(), key); }
};

TEST_F(Bars, ElementZeroIsThereAndHiddenBeforeTheFirstRow) {
    EXPECT_EQ(Window->Bars().HighestElement(), 0);
    EXPECT_TRUE(Bar(0).isHidden());
}

TEST_F(Bars, EachRowHasOneInItsPlace) {
    AddTracks(3);
    EXPECT_EQ(Window->Bars().HighestElement(), 2);
    ExpectAllInPlace();
    for (int n = 0; n < 3; ++n) EXPECT_TRUE(Bar(n).isVisible());
    EXPECT_EQ(Bar(0).parentWidget(), List().viewport());
}

TEST_F(Bars, FollowVerticalScrollingAndHideAbove) {
    AddTracks(60);
    List().verticalScrollBar()->setValue(10);
    ExpectAllInPlace();
    EXPECT_LT(CellOf(10).top(), 0);
    EXPECT_TRUE(Bar(9).isHidden());
    EXPECT_EQ(CellOf(11).top(), 0);
    EXPECT_TRUE(Bar(10).isVisible());
    List().verticalScrollBar()->setValue(0);
    ExpectAllInPlace();
    EXPECT_TRUE(Bar(9).isVisible());
}

TEST_F(Bars, FollowHorizontalScrolling) {
    AddTracks(3);
    List().horizontalHeader()->resizeSection(AudiotoolRows::NameColumn, 2000);
    Settle();
    EXPECT_EQ(List().horizontalHeader()->sectionSize(AudiotoolRows::NameColumn), 2000)
        << "as the user left it";
    const int before = Bar(0).x();
    List().horizontalScrollBar()->setValue(500);
    EXPECT_EQ(Bar(0).x(), before - 500);
    ExpectAllInPlace();
}

TEST_F(Bars, FollowTheKeysThatMoveTheListAndNoOthers) {
    AddTracks(60);
    Select(30);
    for (const Qt::Key key : {Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home, Qt::Key_Left,
                              Qt::Key_Up, Qt::Key_Right, Qt::Key_Down}) {
        Disturb();
        Press(key);
        ExpectAllInPlace();
    }
    Disturb();
    Press(Qt::Key_Insert);
    EXPECT_EQ(Bar(0).geometry(), QRect(1, 2, 3, 4));
}

TEST_F(Bars, FollowAColumnThatTheUserResizes) {
    AddTracks(3);
    QHeaderView& header = *List().horizontalHeader();
    const int edge = header.sectionViewportPosition(AudiotoolRows::DurationColumn);
    const QRect before = Bar(0).geometry();
    QTest::mousePress(header.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(edge - 1, 5));
    QTest::mouseMove(header.viewport(), QPoint(edge - 21, 5));
    QTest::mouseMove(header.viewport(), QPoint(edge - 41, 5));
    QTest::mouseRelease(header.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(edge - 41, 5));
    QApplication::processEvents();  // the last column fills the room
    EXPECT_EQ(Bar(0).x(), before.x() - 40);
    EXPECT_EQ(Bar(0).width(), before.width() + 40);
    ExpectAllInPlace();
}

TEST_F(Bars, FollowTheWindow) {
    AddTracks(40);
    Window->resize(900, 800);
    QApplication::processEvents();
    ExpectAllInPlace();
    Window->resize(500, 560);
    QApplication::processEvents();
    ExpectAllInPlace();
}

TEST_F(Bars, KeepTheirWidthWhenTheWindowGetsAnother) {
    AddTracks(3);
    const int before = Bar(0).width();
    EXPECT_EQ(before, 240);
    for (const int width : {480, 900, 640}) {
        Window->resize(width, 600);
        QApplication::processEvents();
        EXPECT_GE(Bar(0).width(), 120);
    }
    EXPECT_EQ(Bar(0).width(), before);
    QHeaderView& header = *List().horizontalHeader();
    header.resizeSection(AudiotoolRows::NameColumn, header.sectionSize(AudiotoolRows::NameColumn) - 50);
    Window->resize(900, 600);
    QApplication::processEvents();
    EXPECT_EQ(Bar(0).width(), before + 50) << "as the user left it";
}

TEST_F(Bars, FollowRowsThatGrowWithTheirLetters) {
    AddTracks(40);
    List().verticalScrollBar()->setValue(5);
    const QFont usual = Window->font();
    const int before = CellOf(1).height();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 2);
    Window->setFont(large);
    Settle();
    EXPECT_GT(CellOf(1).height(), before);
    EXPECT_GE(CellOf(1).height(), List().fontMetrics().height());
    ExpectAllInPlace();
    Window->setFont(usual);
    Settle();
    EXPECT_EQ(CellOf(1).height(), before);
    ExpectAllInPlace();
}

TEST_F(Bars, FollowAWheelTurn) {
    AddTracks(60);
    QWheelEvent turn(QPointF(50, 50), List().viewport()->mapToGlobal(QPointF(50, 50)), {}, QPoint(0, -240),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(List().viewport(), &turn);
    EXPECT_GT(List().verticalScrollBar()->value(), 0);
    ExpectAllInPlace();
}

TEST_F(Bars, LetTheMouseThroughToTheirRows) {
    AddTracks(2);
    QTest::mouseClick(Window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      Bar(1).mapTo(Window.get(), Bar(1).rect().center()));
    EXPECT_EQ(List().SelectedRow(), 2);
}

TEST_F(Bars, AreNamedByTheirElement) {
    AddTracks(2);
    EXPECT_EQ(Bar(1).objectName(), u"Progressconvert1"_s);
}

TEST_F(Bars, ThereIsNoElementBeyondTheHighest) {
    AddTracks(2);
    EXPECT_THROW(Window->Bars().Element(2), Failure);
    EXPECT_THROW(Window->Bars().Element(-1), Failure);
}

}  // namespace
}  // namespace Sonmira

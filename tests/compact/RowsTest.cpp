// Removing rows, emptying the list, colours and the menu of a row.
#include "AudiotoolTest.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class RowsOfTheList : public AudiotoolTest {
protected:
    RowsOfTheList() { Open(); }
    QColor ColourOfRow(int row) {
        return Rows().index(row - 1, AudiotoolRows::NameColumn).data(Qt::ForegroundRole).value<QColor>();
    }
    void AskForMenu(int row, QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse) {
        const QPoint place = List().visualRect(Rows().index(row - 1, 1)).center();
        QContextMenuEvent event(reason, place, List().viewport()->mapToGlobal(place));
        QApplication::sendEvent(List().viewport(), &event);
    }
};

TEST_F(RowsOfTheList, AfterRowTwoOfThreeIsDeletedTheOthersAreOneAndTwo) {
    AddTracks(3);
    Select(2);
    PressDelete();
    EXPECT_EQ(Positions(), (QStringList{u"001."_s, u"002."_s}));
    EXPECT_EQ(Names(), (QStringList{u"track 1.wav"_s, u"track 3.wav"_s}));
    EXPECT_EQ(Window->Bars().HighestElement(), 1);
    EXPECT_EQ(FilesText(), LanguageLines[10] + u": 2"_s);
}

TEST_F(RowsOfTheList, ADeletionPutsTheBarsInPlace) {
    AddTracks(3);
    const QRect first = Bar(0).geometry();
    const QRect second = Bar(1).geometry();
    Select(1);
    PressDelete();
    EXPECT_EQ(Bar(0).geometry(), first);
    EXPECT_EQ(Bar(1).geometry(), second);
    EXPECT_FALSE(Bar(1).isHidden());
}

TEST_F(RowsOfTheList, ManySelectedRowsGoAtOnce) {
    AddTracks(6);
    Select(2);
    Select(4, Qt::ControlModifier);
    Select(6, Qt::ControlModifier);
    PressDelete();
    EXPECT_EQ(Names(), (QStringList{u"track 1.wav"_s, u"track 3.wav"_s, u"track 5.wav"_s}));
    EXPECT_EQ(Positions(), (QStringList{u"001."_s, u"002."_s, u"003."_s}));
    EXPECT_EQ(Window->Bars().HighestElement(), 2);
}

TEST_F(RowsOfTheList, CtrlWithASelectsAllAndDeleteTakesThem) {
    AddTracks(4);
    QTest::keyClick(&List(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(List().SelectedRows().size(), 4);
    PressDelete();
    EXPECT_EQ(Rows().Count(), 0);
    EXPECT_EQ(FilesText(), LanguageLines[10] + u": 0"_s);
    EXPECT_EQ(Window->Bars().HighestElement(), 0) << "element 0 is always there";
    EXPECT_TRUE(Bar(0).isHidden());
}

TEST_F(RowsOfTheList, DeleteWithoutASelectionDoesNothing) {
    AddTracks(2);
    List().clearSelection();
    PressDelete();
    EXPECT_EQ(Rows().Count(), 2);
}

TEST_F(RowsOfTheList, TheMenuOfARowDeletesLikeTheKey) {
    AddTracks(3);
    AskForMenu(2);
    EXPECT_TRUE(Form().popup->isVisible());
    EXPECT_EQ(List().SelectedRow(), 2) << "the row under the pointer is selected";
    Form().popup->hide();
    Form().Deletefromlist->trigger();
    EXPECT_EQ(Names(), (QStringList{u"track 1.wav"_s, u"track 3.wav"_s}));
}

TEST_F(RowsOfTheList, TheMenuKeepsASelectionOfManyRows) {
    AddTracks(3);
    Select(1);
    Select(3, Qt::ControlModifier);
    AskForMenu(3);
    Form().popup->hide();
    EXPECT_EQ(List().SelectedRows().size(), 2);
}

TEST_F(RowsOfTheList, TheMenuCanBeAskedForByKeyAndOnARowOnly) {
    AddTracks(1);
    QContextMenuEvent beside(QContextMenuEvent::Mouse, QPoint(10, 200),
                             List().viewport()->mapToGlobal(QPoint(10, 200)));
    QApplication::sendEvent(List().viewport(), &beside);
    EXPECT_FALSE(Form().popup->isVisible());
    Select(1);
    AskForMenu(1, QContextMenuEvent::Keyboard);
    EXPECT_TRUE(Form().popup->isVisible());
    Form().popup->hide();
}

TEST_F(RowsOfTheList, EmptyingAsksFirst) {
    AddTracks(3);
    AnswersYes = false;
    Click(Form().ClearList);
    EXPECT_EQ(Asked, QStringList{u"Sonmira|"_s + LanguageLines[51]});
    EXPECT_EQ(Rows().Count(), 3);
    AnswersYes = true;
    Form().MenuDeletefiles->trigger();
    EXPECT_EQ(Asked.size(), 2);
    EXPECT_EQ(Rows().Count(), 0);
    EXPECT_EQ(Window->Bars().HighestElement(), 0);
    EXPECT_TRUE(Bar(0).isHidden());
    EXPECT_EQ(FilesText(), LanguageLines[10] + u": 0"_s);
}

TEST_F(RowsOfTheList, EmptyingAnEmptyListAsksNothing) {
    Click(Form().ClearList);
    Form().MenuDeletefiles->trigger();
    EXPECT_TRUE(Asked.isEmpty());
    EXPECT_EQ(FilesText(), LanguageLines[10]);
}

TEST_F(RowsOfTheList, AfterEmptyingFilesComeBackWithTheirBars) {
    AddTracks(3);
    Click(Form().ClearList);
    AddTracks(2);
    EXPECT_EQ(Window->Bars().HighestElement(), 1);
    EXPECT_TRUE(Bar(0).isVisible());
    EXPECT_TRUE(Bar(1).isVisible());
}

TEST_F(RowsOfTheList, NamesHaveTheTrackColour) {
    AddTracks(1);
    EXPECT_EQ(ColourOfRow(1), QColor(0xC0, 0x40, 0x00)) << "16576 is red in its lowest byte";
    EXPECT_EQ(Window->Form().ListViewFiles->Rows().index(0, 0).data(Qt::ForegroundRole), QVariant());
}

TEST_F(RowsOfTheList, AnotherTrackColourIsSavedAndHoldsForLaterRows) {
    AddTracks(1);
    quint32 offered = 0;
    Dialogs().ChooseColour = [&](quint32 start) {
        offered = start;
        return std::optional<quint32>(0x102030);
    };
    Form().trackcolor->trigger();
    EXPECT_EQ(offered, 0xC04000U);
    EXPECT_EQ(ContentOf(Folder.Native("settings/Sonmira.ini")).count("COLOR= 3153936"), 1);
    MakeWav("later.wav");
    AddFiles({"later.wav"});
    EXPECT_EQ(ColourOfRow(1), QColor(0xC0, 0x40, 0x00)) << "rows keep theirs";
    EXPECT_EQ(ColourOfRow(2), QColor(0x10, 0x20, 0x30));
    Open();
    AddFiles({"later.wav"});
    EXPECT_EQ(ColourOfRow(1), QColor(0x10, 0x20, 0x30));
}

TEST_F(RowsOfTheList, ACancelledColourChangesNothing) {
    const QByteArray before = ContentOf(Folder.Native("settings/Sonmira.ini"));
    Dialogs().ChooseColour = [](quint32) { return std::optional<quint32>(); };
    Form().trackcolor->trigger();
    EXPECT_EQ(ContentOf(Folder.Native("settings/Sonmira.ini")), before);
    EXPECT_TRUE(Said.empty());
}

TEST_F(RowsOfTheList, HomeAndEndGoToTheFirstAndTheLastRow) {
    AddTracks(30);
    Select(3);
    QTest::keyClick(&List(), Qt::Key_End);
    EXPECT_EQ(List().SelectedRow(), 30);
    QTest::keyClick(&List(), Qt::Key_Home);
    EXPECT_EQ(List().SelectedRow(), 1);
}

}  // namespace
}  // namespace Sonmira

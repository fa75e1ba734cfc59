#include "CollectionTest.h"
#include "platform/ChildProcess.h"
#include "tags/TagPage.h"
#include "ui/TabStrip.h"

#include <QLineEdit>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class CollectionClicks : public CollectionTest {
public:
    CollectionClicks() {
        DesktopLauncher() = [this](const QString& target, const QString& folder) {
            Opened.append(target + u'|' + folder);
            return true;
        };
        Folder.MakeFile("Music/a.wav", Sound(58.5));
        Folder.MakeFile("Music/Sub/b.wav", Sound(1));
        Open();
        AddFolderByCommand(Folder.Path("Music"));
        Form().TreeView1->expandAll();
        QApplication::processEvents();
    }
    ~CollectionClicks() override { DesktopLauncher() = RealLauncher; }

protected:
    static QByteArray Sound(double seconds) {
        return WavOf(MakeSilence(8000, 1, static_cast<std::int64_t>(seconds * 8000)), WavKind::Unsigned8);
    }
    // The labels of the information on a file, the name and the length.
    QStringList Information() { return {Form().LabelFileName->text(), Form().LabelDuration->text()}; }
    void LeaveOldInformation() {
        Form().LabelFileName->setText(u"old"_s);
        Form().LabelDuration->setText(u"old"_s);
    }
    QStringList VisiblePopupEntries() {
        QStringList names;
        for (const QAction* action : Form().popupmenux->actions()) {
            if (action->isVisible()) names.append(action->objectName());
        }
        return names;
    }

    const std::function<bool(const QString&, const QString&)> RealLauncher = DesktopLauncher();
    QStringList Opened;
};

TEST_F(CollectionClicks, ALeftClickOnAFileThatIsThereShowsNoInformation) {
    Form().LabelFileName->setText(u"old"_s);
    Click(Folder.Path("Music/a.wav"));
    EXPECT_EQ(Form().LabelFileName->text(), QString());
    EXPECT_EQ(Form().LabelDuration->text(), QString());
}

TEST_F(CollectionClicks, AFileThatHasVanishedShowsItsNameAndNoLength) {
    Vanish("Music/a.wav");
    Click(Folder.Path("Music/a.wav"));
    EXPECT_EQ(Form().LabelFileName->text(), u"a.wav"_s);
    EXPECT_EQ(Form().LabelDuration->text(), u"00:00"_s);
}

TEST_F(CollectionClicks, ARightClickShowsThePopupButNeverOnTheRoot) {
    Click(Folder.Path("Music/a.wav"), Qt::RightButton);
    EXPECT_TRUE(Form().OpenDirectory->isVisible()) << "a file counts as a folder here";
    EXPECT_TRUE(PopupShown());
    Click(RootKey.toString(), Qt::RightButton);
    EXPECT_FALSE(PopupShown());
    Vanish("Music/a.wav");
    Click(Folder.Path("Music/a.wav"), Qt::RightButton);
    EXPECT_FALSE(Form().OpenDirectory->isVisible());
    EXPECT_TRUE(PopupShown());
    EXPECT_EQ(Form().LabelFileName->text(), u"a.wav"_s);
}

TEST_F(CollectionClicks, OpenDirectoryHandsTheNodeToTheDesktop) {
    Form().OpenDirectory->trigger();
    EXPECT_TRUE(Opened.isEmpty()) << "no node was clicked yet";
    const QString folder = Folder.Path("Music/Sub");
    Click(folder, Qt::RightButton);
    Form().popupmenux->hide();
    Form().OpenDirectory->trigger();
    EXPECT_EQ(Opened, QStringList{folder + u'|' + folder});
}

TEST_F(CollectionClicks, ThePopupHasItsEntriesInOrder) {
    QStringList names;
    for (const QAction* action : Form().popupmenux->actions()) names.append(action->objectName());
    EXPECT_EQ(names, (QStringList{u"convertnoww"_s, u"playfile"_s, u"OpenDirectory"_s, u"sepit"_s,
                                  u"removefromlist"_s}));
    EXPECT_FALSE(Form().playfile->isVisible());
}

TEST_F(CollectionClicks, RemoveFromListTakesTheClickedNodeWithItsSubtree) {
    Click(Folder.Path("Music/Sub"), Qt::RightButton);
    Form().popupmenux->hide();
    Form().LabelFileName->setText(u"old"_s);
    Form().removefromlist->trigger();
    EXPECT_EQ(Nodes(), (QStringList{u"My Conversion"_s, u"Music"_s, u"a.wav"_s}));
    EXPECT_EQ(Form().LabelDirCount->text(), u"1"_s);
    EXPECT_EQ(Form().Label4->text(), u"1"_s);
    EXPECT_EQ(Form().LabelFileName->text(), QString());
    // A second time there is nothing behind the remembered node.
    Form().removefromlist->trigger();
    EXPECT_EQ(Nodes().size(), 3);
}

TEST_F(CollectionClicks, DeleteRemovesTheNodeThatWasClickedNotTheOneTheKeyboardMovedTo) {
    Click(Folder.Path("Music/a.wav"));
    QTest::keyClick(Form().TreeView1, Qt::Key_Up);
    EXPECT_NE(Form().TreeView1->currentItem(), Node(Folder.Path("Music/a.wav")));
    QTest::keyClick(Form().TreeView1, Qt::Key_Delete);
    EXPECT_EQ(Node(Folder.Path("Music/a.wav")), nullptr);
    EXPECT_EQ(Nodes().size(), 4);
}

TEST_F(CollectionClicks, DeleteWithoutASelectionRemovesNothing) {
    Click(Folder.Path("Music/a.wav"));
    Tree().clearSelection();
    LeaveOldInformation();
    PressDelete();
    EXPECT_EQ(Nodes().size(), 5);
    EXPECT_EQ(Information(), (QStringList{u"old"_s, u"old"_s}));
    Tree().setCurrentItem(Node(Folder.Path("Music")));
    PressDelete();
    EXPECT_EQ(Node(Folder.Path("Music/a.wav")), nullptr) << "any selection will do";
    EXPECT_NE(Node(Folder.Path("Music")), nullptr);
}

TEST_F(CollectionClicks, TheRootCannotBeRemoved) {
    Click(RootKey.toString());
    QTest::keyClick(Form().TreeView1, Qt::Key_Delete);
    EXPECT_EQ(Nodes().size(), 5);
}

TEST_F(CollectionClicks, ANodeOfANewConversionIsNotTheOneThatWasClickedBefore) {
    Click(Folder.Path("Music"));
    ClickToolbar(1);
    AddFolderByCommand(Folder.Path("Music"));
    Form().removefromlist->trigger();
    EXPECT_EQ(Nodes().size(), 5) << "the clicked node is gone; the new one of its key is another";
    EXPECT_EQ(Form().Label4->text(), u"2"_s);
}

TEST_F(CollectionClicks, TheKeyboardMovesTheSelectionAndClicksNothing) {
    Vanish("Music/a.wav");
    Form().TreeView1->setFocus();
    for (int n = 0; n < 4; ++n) QTest::keyClick(Form().TreeView1, Qt::Key_Down);
    QTest::keyClick(Form().TreeView1, Qt::Key_Return);
    EXPECT_EQ(Form().LabelFileName->text(), QString());
}

TEST_F(CollectionClicks, AClickOnTheTagPageShowsTheTagAndOnAFolderEmptiesIt) {
    Form().SSTab1->setCurrentIndex(1);
    TagFields& fields = *Form().TagPage.Fields;
    Click(Folder.Path("Music/a.wav"));
    EXPECT_EQ(fields.infoYear->text(), u"0"_s);
    EXPECT_EQ(Window->Tags().CurrentFile(), Folder.Path("Music/a.wav"));
    fields.infoTitle->setText(u"typed"_s);
    Click(Folder.Path("Music"));
    EXPECT_EQ(fields.infoTitle->text(), QString());
    EXPECT_FALSE(Form().TagPage.Command3->isEnabled());
}

TEST_F(CollectionClicks, OpeningTheTagPageLoadsNoFileThatIsThere) {
    Click(Folder.Path("Music/a.wav"));
    Form().SSTab1->setCurrentIndex(1);
    EXPECT_EQ(Window->Tags().CurrentFile(), QString());
    Form().SSTab1->setCurrentIndex(0);
    Vanish("Music/a.wav");
    Form().SSTab1->setCurrentIndex(1);
    EXPECT_EQ(Window->Tags().CurrentFile(), Folder.Path("Music/a.wav"));
}

TEST_F(CollectionClicks, AFolderInTheSelectionRunGoesBelowItsOwnName) {
    Panel().TextOutPath->SetText(Folder.Path("out"));
    Panel().ComboOutFormat->SelectText(u"Wav"_s);
    Click(Folder.Path("Music/Sub"), Qt::RightButton);
    Form().popupmenux->hide();
    Form().convertnoww->trigger();
    EXPECT_EQ(Rows().RowCount(), 1);
    EXPECT_EQ(Progress(1), u"100 %"_s);
    EXPECT_EQ(Form().Label29->text(), u"1 / 1"_s);
    EXPECT_TRUE(NativeExists(Folder.Native("out/Sub/b.wav")));
    EXPECT_TRUE(Form().ToolbarButton(5)->isEnabled());
}

const QStringList NoInformation = {QString(), QString()};

TEST_F(CollectionClicks, ALeftClickOnWhatIsThereOnlyEmptiesTheInformation) {
    for (const QString& key : {Folder.Path("Music/a.wav"), Folder.Path("Music"), RootKey.toString()}) {
        LeaveOldInformation();
        Click(key);
        EXPECT_EQ(Information(), NoInformation) << key.toStdString();
        EXPECT_FALSE(PopupShown());
    }
}

TEST_F(CollectionClicks, ARightClickOnWhatIsThereOffersToOpenIt) {
    for (const char* name : {"Music/a.wav", "Music", "Music/Sub"}) {
        LeaveOldInformation();
        Click(Folder.Path(name), Qt::RightButton);
        EXPECT_EQ(Information(), NoInformation) << name;
        EXPECT_TRUE(PopupShown());
        EXPECT_EQ(VisiblePopupEntries(),
                  (QStringList{u"convertnoww"_s, u"OpenDirectory"_s, u"sepit"_s, u"removefromlist"_s}));
    }
}

TEST_F(CollectionClicks, ARightClickOnWhatHasVanishedOffersEverythingButToOpenIt) {
    Vanish("Music/Sub");
    for (const char* name : {"Music/Sub", "Music/Sub/b.wav"}) {
        LeaveOldInformation();
        Click(Folder.Path(name), Qt::RightButton);
        EXPECT_EQ(Information(), (QStringList{Node(Folder.Path(name))->text(0), u"00:00"_s}));
        EXPECT_TRUE(PopupShown());
        EXPECT_EQ(VisiblePopupEntries(), (QStringList{u"convertnoww"_s, u"sepit"_s, u"removefromlist"_s}));
    }
}

TEST_F(CollectionClicks, VanishedFilesOfEveryKindShowNoLength) {
    for (const char* name : {"v.wav", "v.mp3", "v.ogg", "v.wma", "v.aac", "v.alac", "v.flac", "v.ape",
                             "v.apl", "v.mpc", "v.mp+"}) {
        Folder.MakeFile(name);
        ASSERT_TRUE(Drop({name}));
        Vanish(name);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            LeaveOldInformation();
            Click(Folder.Path(name), button);
            EXPECT_EQ(Information(), (QStringList{QString::fromUtf8(name), u"00:00"_s}));
            EXPECT_EQ(PopupShown(), button == Qt::RightButton);
        }
    }
}

TEST_F(CollectionClicks, DeleteTwiceRemovesOne) {
    Click(Folder.Path("Music/a.wav"));
    LeaveOldInformation();
    PressDelete();
    EXPECT_EQ(Nodes(), (QStringList{u"My Conversion"_s, u"Music"_s, u"Sub"_s, u"b.wav"_s}));
    EXPECT_EQ(Information(), NoInformation);
    LeaveOldInformation();
    Tree().setCurrentItem(Node(Folder.Path("Music/Sub")));  // the key asks for any selected node
    PressDelete();
    EXPECT_EQ(Nodes().size(), 4);
    EXPECT_EQ(Records().UpperBound(), 3);
    EXPECT_EQ(Information(), (QStringList{u"old"_s, u"old"_s})) << "it fails before it comes to the labels";
}

TEST_F(CollectionClicks, NewEmptiesEverythingButTheTagInMemory) {
    Panel().TextOutPath->SetText(Folder.Path("out"));
    Panel().ComboOutFormat->SelectText(u"Wav"_s);
    ClickToolbar(5);
    ASSERT_EQ(Rows().RowCount(), 2);
    Form().TagPage.Fields->infoTitle->setText(u"Remembered"_s);
    Form().TagPage.ToolbarButton(1)->trigger();
    LeaveOldInformation();
    StartAnew();
    EXPECT_EQ(Nodes(), QStringList{u"My Conversion"_s});
    EXPECT_TRUE(Node(RootKey.toString())->isExpanded());
    EXPECT_EQ(Records().UpperBound(), 0);
    EXPECT_EQ(Rows().RowCount(), 0);
    ExpectCounts(u"0"_s, u"0"_s);
    EXPECT_EQ(Information(), NoInformation);
    EXPECT_EQ(Form().Label29->text(), QString());
    Form().TagPage.Fields->infoTitle->setText(u"Other"_s);
    Form().TagPage.ToolbarButton(2)->trigger();
    EXPECT_EQ(Form().TagPage.Fields->infoTitle->text(), u"Remembered"_s);
}

TEST_F(CollectionClicks, DuringARunAClickOnlyRemembersTheNodeAndHidesTheTagInMemory) {
    MakeLongWav("Long/long.wav", 20);
    AddFolderByCommand(Folder.Path("Long"));
    Click(Folder.Path("Long"), Qt::RightButton);
    PopupShown();
    Panel().TextOutPath->SetText(Folder.Path("out"));
    Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    Tree().expandAll();
    Vanish("Music/a.wav");
    bool clicked = false;
    WhenReached(1, [&] {
        clicked = true;
        ASSERT_TRUE(Window->State().Busy());
        Form().SSTab1->setCurrentIndex(1);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            Form().TagPage.ToolbarButton(3)->trigger();
            ASSERT_TRUE(Form().TagPage.Picture4->isVisible());
            LeaveOldInformation();
            Click(Folder.Path("Music/a.wav"), button);
            EXPECT_FALSE(Form().TagPage.Picture4->isVisible());
            EXPECT_EQ(Information(), (QStringList{u"old"_s, u"old"_s}));
            EXPECT_EQ(Window->Tags().CurrentFile(), QString());
            EXPECT_FALSE(PopupShown());
        }
        ClickToolbar(6);
    });
    Form().convertnoww->trigger();
    ASSERT_TRUE(clicked);
    Form().removefromlist->trigger();
    EXPECT_EQ(Node(Folder.Path("Music/a.wav")), nullptr) << "the node of the last click";
    EXPECT_NE(Node(Folder.Path("Long")), nullptr);
}

}  // namespace
}  // namespace Sonmira

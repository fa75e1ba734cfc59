#include "MainWindowTest.h"
#include "library/AddFiles.h"
#include "platform/ShellLaunch.h"

#include <QLineEdit>
#include <QMenu>
#include <QTabWidget>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class CollectionClicks : public MainWindowTest {
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
    QTreeWidgetItem* Node(const QString& key) { return Form().TreeView1->NodeOf(key); }
    void Click(const QString& key, Qt::MouseButton button = Qt::LeftButton) {
        ConversionTree& tree = *Form().TreeView1;
        tree.scrollToItem(Node(key));
        QTest::mouseClick(tree.viewport(), button, Qt::NoModifier, tree.visualItemRect(Node(key)).center());
    }
    void Vanish(const QByteArray& name) { std::filesystem::remove(Folder.Native(name).toStdString()); }
    bool PopupShown() {
        const bool shown = Form().popupmenux->isVisible();
        Form().popupmenux->hide();
        return shown;
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

TEST_F(CollectionClicks, AnEmptyTreeInvitesTheUser) {
    const auto picture = [this] { return Form().TreeView1->viewport()->grab().toImage(); };
    ClickToolbar(1);
    const QImage invited = picture();
    Form().TreeView1->SetEmptyHint({});
    EXPECT_NE(picture(), invited);
}

}  // namespace
}  // namespace Sonmira

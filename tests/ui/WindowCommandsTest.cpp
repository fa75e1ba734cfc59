#include "MainWindowTest.h"
#include "tags/TagPage.h"
#include "ui/TabStrip.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class WindowCommands : public MainWindowTest {
protected:
    WindowCommands() { Open(); }

    // Whether the tag in memory is still shown, over the page of tags, behind that command and, where the
    // command shows a window, beside it.
    QString MemoryBy(const std::function<void()>& command) {
        Form().SSTab1->setCurrentIndex(1);
        const TagMemory& memory = *Form().TagPage.Picture4;
        if (!memory.isVisible()) Form().TagPage.ToolbarButton(3)->trigger();
        EXPECT_TRUE(memory.isVisible());
        const auto state = [&] { return memory.isVisible() ? u"shown"_s : u"hidden"_s; };
        QString beside;
        Dialogs().OpenFiles = [&](const OpenDialogRequest& /*request*/) {
            beside = state() + u' ';
            return std::optional<QStringList>();
        };
        Dialogs().BrowseForFolder = [&](const QString& /*title*/) {
            beside = state() + u' ';
            return QString();
        };
        const ModalAnswer about(u"About"_s, [&](QWidget& window) {
            beside = state() + u' ';
            window.close();
        });
        command();
        return beside + state();
    }
};

TEST_F(WindowCommands, ToolbarButtonsHideTheTagInMemoryBeforeTheyDoAnything) {
    for (const int button : {1, 5}) {
        EXPECT_EQ(MemoryBy([&] { ClickToolbar(button); }), u"hidden"_s) << button;
    }
    for (const int button : {2, 3, 8}) {
        EXPECT_EQ(MemoryBy([&] { ClickToolbar(button); }), u"hidden hidden"_s) << button;
    }
    EXPECT_EQ(MemoryBy([&] {
                  Window->SetControlsEnabled(false);
                  ClickToolbar(6);
                  Window->SetControlsEnabled(true);
              }),
              u"hidden"_s);
}

TEST_F(WindowCommands, MenuCommandsLeaveTheTagInMemoryWhereItIs) {
    for (QAction* command : {Form().mynew, Form().ConvertAll, Form().ConvertSlection, Form().cancel}) {
        EXPECT_EQ(MemoryBy([&] { command->trigger(); }), u"shown"_s) << command->objectName().toStdString();
    }
    for (QAction* command : {Form().addfile, Form().adddirectory, Form().about}) {
        EXPECT_EQ(MemoryBy([&] { command->trigger(); }), u"shown shown"_s)
            << command->objectName().toStdString();
    }
}

TEST_F(WindowCommands, FilesPickedInTheDialogAreAddedAndItsFolderIsRemembered) {
    const QString one = Folder.MakeFile("Music/one.mp3");
    const QString two = Folder.MakeFile("Music/two.anything");
    OpenDialogRequest seen;
    Dialogs().OpenFiles = [&](const OpenDialogRequest& request) {
        seen = request;
        return std::optional(QStringList{one});
    };
    ClickToolbar(2);
    EXPECT_EQ(seen.Title, LanguageLines[1]);
    EXPECT_EQ(ReadIniValue(SettingsFile, u"OpenFile"_s, u"INITDIR"_s), Folder.Path("Music") + u'\\');

    Dialogs().OpenFiles = [&](const OpenDialogRequest& request) {
        seen = request;
        return std::optional(QStringList{one, two});
    };
    Form().addfile->trigger();
    EXPECT_EQ(seen.StartFolder, Folder.Path("Music") + u'\\');
    EXPECT_EQ(ReadIniValue(SettingsFile, u"OpenFile"_s, u"INITDIR"_s), Folder.Path("Music"));
    EXPECT_EQ(Nodes(), (QStringList{u"My Conversion"_s, u"one.mp3"_s, u"two.anything"_s}));
}

TEST_F(WindowCommands, ACancelledDialogChangesNothing) {
    WriteIniValue(SettingsFile, u"OpenFile"_s, u"INITDIR"_s, u"\\music\\"_s);
    Dialogs().OpenFiles = [](const OpenDialogRequest& /*request*/) { return std::optional<QStringList>(); };
    ClickToolbar(2);
    AddFolderByCommand({});
    EXPECT_EQ(Window->Gathered().Records.UpperBound(), 0);
    EXPECT_EQ(ReadIniValue(SettingsFile, u"OpenFile"_s, u"INITDIR"_s), u"\\music\\"_s);
}

TEST_F(WindowCommands, NewEmptiesTheCollection) {
    Folder.MakeFile("Music/a.wav");
    AddFolderByCommand(Folder.Path("Music"));
    Form().LabelFileName->setText(u"a.wav"_s);
    Form().Label29->setText(u"1 / 1"_s);
    Rows().AddRow();
    ClickToolbar(1);
    EXPECT_EQ(Rows().RowCount(), 0);
    EXPECT_TRUE(Form().LabelFileName->text().isEmpty());
    EXPECT_TRUE(Form().Label29->text().isEmpty());
    EXPECT_EQ(Nodes(), QStringList{u"My Conversion"_s});
    EXPECT_EQ(Window->Gathered().Records.UpperBound(), 0);
    EXPECT_EQ(Form().LabelDirCount->text(), u"0"_s);
    EXPECT_EQ(Form().Label4->text(), u"0"_s);
    AddFolderByCommand(Folder.Path("Music"));
    EXPECT_EQ(Nodes().size(), 3);
}

TEST_F(WindowCommands, SavingBesideTheOriginalDisablesTheOutputFolder) {
    Panel().CheckOutPath->setChecked(true);
    EXPECT_FALSE(Panel().TextOutPath->isEnabled());
    EXPECT_FALSE(Panel().CmdSelectPath->isEnabled());
    Panel().CheckOutPath->setChecked(false);
    EXPECT_TRUE(Panel().TextOutPath->isEnabled());
}

TEST_F(WindowCommands, ThePickedOutputFolderIsShownInTheDesktopsForm) {
    FolderToChoose = Folder.Path("out");
    QTest::mouseClick(Panel().CmdSelectPath, Qt::LeftButton);
    EXPECT_EQ(Panel().TextOutPath->Text(), Folder.Path("out"));
    EXPECT_EQ(Panel().TextOutPath->text(), QString::fromUtf8(Folder.Native("out")));
    FolderToChoose.clear();
    QTest::mouseClick(Panel().CmdSelectPath, Qt::LeftButton);
    EXPECT_EQ(Panel().TextOutPath->Text(), Folder.Path("out"));
}

TEST_F(WindowCommands, ATypedOutputFolderIsUnderstood) {
    Panel().TextOutPath->clear();
    QTest::keyClicks(Panel().TextOutPath, u"/tmp/some where"_s);
    EXPECT_EQ(Panel().TextOutPath->Text(), u"\\tmp\\some where"_s);
}

TEST_F(WindowCommands, EachFormatShowsItsText) {
    const QStringList parts = {u"Mp3"_s, u"128"_s, u"Wav"_s, u"16"_s, u"Ogg"_s, u"Vorbis"_s};
    for (qsizetype n = 0; n < parts.size(); n += 2) {
        Panel().ComboOutFormat->SelectText(parts[n]);
        EXPECT_TRUE(Panel().TextOutFormat->text().contains(parts[n + 1]))
            << qPrintable(Panel().TextOutFormat->text());
    }
}

TEST_F(WindowCommands, TheFormatListAnswersToTheKeyboard) {
    Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    QTest::keyClick(Panel().ComboOutFormat, Qt::Key_Down);
    EXPECT_EQ(Panel().ComboOutFormat->currentText(), u"Wav"_s);
    EXPECT_TRUE(Panel().TextOutFormat->text().contains(u"PCM"));
}

TEST_F(WindowCommands, SourcesGoToTheTrashWhereThatIsChecked) {
    Folder.MakeFile("Music/a.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    AddFolderByCommand(Folder.Path("Music"));
    Panel().TextOutPath->SetText(Folder.Path("out"));
    Panel().Check2->setChecked(true);
    ClickToolbar(5);
    EXPECT_EQ(IconOf(1), u"converted"_s);
    EXPECT_TRUE(NativeExists(Folder.Native("out/Music/a.mp3")));
    EXPECT_FALSE(NativeExists(Folder.Native("Music/a.wav")));
    const QByteArray trash = qgetenv("XDG_DATA_HOME") + "/Trash/files/a.wav";
    EXPECT_TRUE(NativeExists(trash)) << trash.constData();
}

TEST_F(WindowCommands, OnlyTheStopIsFreeWhileTheInputsAreLocked) {
    Window->SetControlsEnabled(false);
    for (const int button : {1, 2, 3, 5, 8})
        EXPECT_FALSE(Form().ToolbarButton(button)->isEnabled()) << button;
    EXPECT_TRUE(Form().ToolbarButton(6)->isEnabled());
    EXPECT_FALSE(Panel().ComboOutFormat->isEnabled());
    EXPECT_FALSE(Panel().Check2->isEnabled());
    EXPECT_TRUE(Panel().TextOutPath->isEnabled()) << "stays free, as what is typed counts for the next file";
    Window->SetControlsEnabled(true);
    EXPECT_FALSE(Form().ToolbarButton(6)->isEnabled());
    EXPECT_TRUE(Panel().ComboOutFormat->isEnabled());
}

TEST_F(WindowCommands, ControlsAreNamedForThoseWhoCannotSeeThem) {
    for (const QWidget* control :
         {static_cast<QWidget*>(Panel().CmdSelectPath), static_cast<QWidget*>(Form().StopImg),
          static_cast<QWidget*>(Form().ClearImg), static_cast<QWidget*>(Form().TreeView1),
          static_cast<QWidget*>(Form().ListViewFiles)}) {
        EXPECT_FALSE(control->accessibleName().isEmpty()) << qPrintable(control->objectName());
    }
}

}  // namespace
}  // namespace Sonmira

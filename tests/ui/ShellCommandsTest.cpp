#include "MainWindowTest.h"
#include "platform/ChildProcess.h"
#include "shell/widgets/Events.h"
#include "support/Unprivileged.h"

#include <QDialog>
#include <QMenu>

#include <sys/stat.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class ShellCommands : public MainWindowTest {
public:
    ShellCommands() {
        DesktopLauncher() = [this](const QString& target, const QString& /*folder*/) {
            Opened.append(target);
            return true;
        };
    }
    ~ShellCommands() override {
        DesktopLauncher() = RealLauncher;
        ProgramEnd() = RealEnd;
    }

protected:
    QString WmaSetting() { return ReadIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s); }

    const std::function<bool(const QString&, const QString&)> RealLauncher = DesktopLauncher();
    const std::function<void()> RealEnd = ProgramEnd();
    QStringList Opened;
};

TEST_F(ShellCommands, HelpQuestionsAndHomePageGoToTheDesktop) {
    Open();
    Form().aide->trigger();
    Form().FAQ->trigger();
    Form().Homepage->trigger();
    ASSERT_EQ(Opened.size(), 3);
    EXPECT_TRUE(Opened[0].endsWith(u"\\Sonmira.chm"));
    EXPECT_TRUE(Opened[1].endsWith(u"/FAQ/FAQ_SonmiraEn.htm"));
    EXPECT_TRUE(Opened[2].endsWith(u"/indexEn.html"));
    Window->LanguageItems().Item(1)->trigger();
    Form().FAQ->trigger();
    Form().Homepage->trigger();
    EXPECT_TRUE(Opened[3].endsWith(u"/FAQ/FAQ_Sonmira.htm"));
    EXPECT_TRUE(Opened[4].endsWith(u".example/"));
}

TEST_F(ShellCommands, WmaSupportIsSavedAndToldButTakesEffectAtTheNextStart) {
    Open();
    EXPECT_FALSE(Form().acceptWma->isChecked());
    QStringList said;
    Dialogs().ShowMessage = [&](const QString& text, MessageIcon icon, const QString& title) {
        said.append(title + u'|' + text);
        EXPECT_EQ(icon, MessageIcon::Information);
    };
    const int formats = Panel().ComboOutFormat->count();
    Form().acceptWma->trigger();
    EXPECT_EQ(WmaSetting(), u"True"_s);
    EXPECT_TRUE(Form().acceptWma->isChecked());
    EXPECT_FALSE(Window->Settings().WmaSupported);
    EXPECT_EQ(Panel().ComboOutFormat->count(), formats);
    Form().acceptWma->trigger();
    EXPECT_EQ(WmaSetting(), u"False"_s);
    EXPECT_FALSE(Form().acceptWma->isChecked());
    EXPECT_EQ(said, QStringList(2, u"Sonmira|"_s + LanguageLines[48]));

    Form().acceptWma->trigger();
    Open();
    EXPECT_TRUE(Form().acceptWma->isChecked());
    EXPECT_TRUE(Window->Settings().WmaSupported);
}

TEST_F(ShellCommands, WmaSupportGoesByTheFileAndNotByTheCheck) {
    Open();
    Dialogs().ShowMessage = [](const QString&, MessageIcon, const QString&) {};
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    Form().acceptWma->trigger();
    EXPECT_EQ(WmaSetting(), u"False"_s);
    EXPECT_FALSE(Form().acceptWma->isChecked());
}

TEST_F(ShellCommands, AFailureInTheWmaCommandIsToldAndTheProgramGoesOn) {
    Open();
    LanguageLines.Assign({});
    QString said;
    Dialogs().ShowMessage = [&](const QString& text, MessageIcon, const QString&) { said = text; };
    bool ended = false;
    ProgramEnd() = [&] { ended = true; };
    Form().acceptWma->trigger();
    EXPECT_EQ(said, u"9 : Subscript out of range\nPlease re-install the application."_s);
    EXPECT_FALSE(ended);
}

TEST_F(ShellCommands, AboutShowsTheVersionFromMenuAndToolbar) {
    Open();
    const ModalAnswer about(u"About"_s, [](QWidget& window) {
        EXPECT_EQ(window.findChild<QLabel*>(u"LabelVersion"_s)->text(), u"Version 2.1.0"_s);
        EXPECT_EQ(window.height(), 171);
        window.close();
    });
    Form().about->trigger();
    ClickToolbar(8);
    EXPECT_EQ(about.Seen(), 2);
}

TEST_F(ShellCommands, ClosingKeepsThreeSettingsAndThenEndsTheOwnProcess) {
    Open();
    Panel().TextOutPath->SetText(Folder.Path("out"));
    QString savedBeforeTheEnd;
    Processes().End = [&](qint64 id) {
        savedBeforeTheEnd = Setting(u"OutputPath"_s);
        EXPECT_EQ(id, OwnId);
        return true;
    };
    CloseWindow();
    EXPECT_EQ(savedBeforeTheEnd, Folder.Path("out"));
    EXPECT_LT(Window->minimumWidth(), 613) << "the least size is given up before the end";
}

TEST_F(ShellCommands, QuitClosesLikeTheWindowsButton) {
    Open();
    const ModalAnswer farewell(u"LameEncoder"_s, [](QWidget& notice) { notice.close(); });
    Form().Quit->trigger();
    EXPECT_EQ(Ended, std::vector<qint64>{OwnId});
    EXPECT_FALSE(Window->isVisible());
}

TEST_F(ShellCommands, QuitDoesNothingDuringARun) {
    MakeLongWav("Music/a.wav", 20);
    Open();
    Panel().TextOutPath->SetText(Folder.Path("out"));
    AddFolderByCommand(Folder.Path("Music"));
    bool asked = false;
    WhenReached(1, [&] {
        asked = Window->State().Busy();
        Form().Quit->trigger();
        EXPECT_TRUE(Window->isVisible());
        EXPECT_EQ(Setting(u"Format"_s), QString()) << "unlike the button of the window, it keeps no settings";
        EXPECT_TRUE(Window->State().Busy());
        EXPECT_FALSE(Window->State().CancelAll());
        EXPECT_EQ(Window->minimumSize(), QSize(613, 560));
        ClickToolbar(6);
    });
    ClickToolbar(5);
    EXPECT_TRUE(asked);
    EXPECT_TRUE(Ended.empty());
    const ModalAnswer farewell(u"LameEncoder"_s, [](QWidget& notice) { notice.close(); });
    Form().Quit->trigger();
    EXPECT_EQ(Ended, std::vector<qint64>{OwnId});
}

TEST_F(ShellCommands, WhereTheEndHitSomebodyElseTheNoticeIsTheLastThingShown) {
    Open();
    Processes().List = [] { return std::vector<RunningProcess>{{u"editor"_s, 1}}; };
    const ModalAnswer farewell(u"LameEncoder"_s, [this](QWidget& notice) {
        EXPECT_TRUE(Window->isVisible());
        EXPECT_EQ(notice.parentWidget(), Window.get());
        notice.close();
    });
    EXPECT_TRUE(Window->close());
    EXPECT_EQ(farewell.Seen(), 1);
    EXPECT_TRUE(Ended.empty());
}

TEST_F(ShellCommands, WithMoreThanAHundredProcessesTheCloseEndsInTheFailureReport) {
    Open();
    Processes().List = [] { return std::vector<RunningProcess>(101, {u"sonmira"_s, OwnId}); };
    QString said;
    bool ended = false;
    Dialogs().ShowMessage = [&](const QString& text, MessageIcon, const QString&) { said = text; };
    ProgramEnd() = [&] { ended = true; };
    Window->close();
    EXPECT_EQ(said, u"Run-time error 9 : Subscript out of range"_s);
    EXPECT_TRUE(ended);
    EXPECT_TRUE(Ended.empty());
    EXPECT_EQ(Setting(u"Format"_s), u"Mp3"_s) << "the settings were kept before";
}

TEST_F(ShellCommands, AReadOnlySettingsFolderIsPassedOverWithoutAWord) {
    const QByteArray before = ContentOf(Folder.Native("settings/Sonmira.ini"));
    chmod(Folder.Native("settings").constData(), 0500);
    const Unprivileged user;
    QString said;
    Dialogs().ShowMessage = [&](const QString& text, MessageIcon, const QString&) { said = text; };
    Open();
    EXPECT_TRUE(CloseWindow());
    EXPECT_EQ(said, QString());
    EXPECT_EQ(ContentOf(Folder.Native("settings/Sonmira.ini")), before);
}

}  // namespace
}  // namespace Sonmira

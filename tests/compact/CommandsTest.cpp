// Texts, and the commands that concern the program.
#include "AudiotoolTest.h"
#include "platform/ChildProcess.h"
#include "tags/TagEditorial.h"

#include <QLabel>
#include <QLineEdit>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class AudiotoolCommands : public AudiotoolTest {
public:
    AudiotoolCommands() {
        DesktopLauncher() = [this](const QString& target, const QString& /*folder*/) {
            Opened.append(target);
            return true;
        };
    }
    ~AudiotoolCommands() override { DesktopLauncher() = RealLauncher; }

protected:
    static QString Line(int n) { return u"line %1"_s.arg(n); }

    const std::function<bool(const QString&, const QString&)> RealLauncher = DesktopLauncher();
    QStringList Opened;
};

TEST_F(AudiotoolCommands, EveryTextHasItsLine) {
    QByteArray lines;
    for (int n = 0; n <= 100; ++n) lines += "line " + QByteArray::number(n) + '\n';
    Shipped.MakeFile("English.lng", lines);
    Open();
    const AudiotoolForm& form = Form();
    for (const auto& [menu, line] :
         {std::pair{form.Fichier, 0}, {form.Options, 3}, {form.Languer, 4}, {form.Informations, 7}}) {
        EXPECT_EQ(menu->title(), Line(line));
    }
    for (const auto& [action, line] : {std::pair{form.addfile, 1},
                                       {form.Exite, 2},
                                       {form.TagEditor, 5},
                                       {form.acceptWma, 6},
                                       {form.Homepage, 8},
                                       {form.about, 9},
                                       {form.MenuDeletefiles, 12},
                                       {form.convertmenu, 23},
                                       {form.ConvertNow, 24},
                                       {form.Deletefromlist, 25},
                                       {form.trackcolor, 47},
                                       {form.aide, 49}}) {
        EXPECT_EQ(action->text(), Line(line)) << qPrintable(action->objectName());
    }
    for (const auto& [label, line] :
         std::initializer_list<std::pair<QLabel*, int>>{{form.LabelFilesToConvert, 10},
                                                        {Panel().Label11, 13},
                                                        {Panel().Label5, 15},
                                                        {Panel().Label6, 16},
                                                        {Panel().Label7, 17},
                                                        {form.Label12, 19},
                                                        {form.LabelCurrentFile, 20}}) {
        EXPECT_EQ(label->text(), Line(line)) << qPrintable(label->objectName());
    }
    for (const auto& [button, line] : std::initializer_list<std::pair<QAbstractButton*, int>>{
             {Panel().CheckOutPath, 14}, {form.CmdQuit, 21}, {form.cmdCancel, 22}, {form.CmdConvert, 23}}) {
        EXPECT_EQ(button->text(), Line(line)) << qPrintable(button->objectName());
    }
    EXPECT_EQ(form.Image1->toolTip(), Line(1));
    EXPECT_EQ(form.ClearList->toolTip(), Line(12));
}

TEST_F(AudiotoolCommands, CaptionsOfThePanelHaveTheirOwnNamesHere) {
    Open();
    EXPECT_EQ(Window->findChild<QLabel*>(u"Label2"_s), Panel().Label5);
    EXPECT_EQ(Window->findChild<QLabel*>(u"Label1"_s), Panel().Label6);
    EXPECT_EQ(Window->findChild<QLabel*>(u"Label3"_s), Panel().Label7);
    EXPECT_FALSE(Panel().Check2->isVisible()) << "sources are never removed here";
}

TEST_F(AudiotoolCommands, AnotherLanguageIsThereAtOnce) {
    Open();
    AddTracks(1);
    Window->LanguageItems().Item(2)->trigger();
    EXPECT_EQ(Form().cmdCancel->text(), LanguageLines[22]);
    EXPECT_NE(Form().cmdCancel->text(), u"Cancel"_s);
    EXPECT_TRUE(Window->LanguageItems().Item(2)->isChecked());
    EXPECT_FALSE(Window->LanguageItems().Item(0)->isChecked());
    EXPECT_TRUE(ContentOf(Folder.Native("settings/Sonmira.ini")).contains("VALUE= 2"));
    EXPECT_EQ(FilesText(), LanguageLines[10]) << "the count is written again at the next change";
    MakeWav("b.wav");
    AddFiles({"b.wav"});
    EXPECT_EQ(FilesText(), LanguageLines[10] + u": 2"_s);
}

TEST_F(AudiotoolCommands, HelpQuestionsAndHomePageGoToTheDesktop) {
    Open();
    Form().aide->trigger();
    Form().FAQ->trigger();
    Form().Homepage->trigger();
    ASSERT_EQ(Opened.size(), 3);
    EXPECT_TRUE(Opened[0].endsWith(u"\\Sonmira.chm"));
    EXPECT_TRUE(Opened[1].endsWith(u"/FAQ/FAQ_SonmiraEn.htm"));
    EXPECT_TRUE(Opened[2].endsWith(u"/indexEn.html"));
}

TEST_F(AudiotoolCommands, TranslatorsAreAskedForHelp) {
    Open();
    Form().Helpus->trigger();
    ASSERT_EQ(Said.size(), 1U);
    EXPECT_EQ(Said[0].Title, u"Sonmira"_s);
    EXPECT_EQ(Said[0].Icon, MessageIcon::Information);
    EXPECT_TRUE(Said[0].Text.startsWith(
        u"If you want to translate Sonmira in your natural language, take the english file in the Lang "
        "directory of Sonmira and translate it contents. Send your translated file at "));
    EXPECT_TRUE(Said[0].Text.endsWith(u"\nThanks."));
    EXPECT_TRUE(Said[0].Text.contains(u'@'));
}

TEST_F(AudiotoolCommands, WmaSupportIsSavedAndToldButTakesEffectAtTheNextStart) {
    Open();
    Form().acceptWma->trigger();
    EXPECT_EQ(ReadIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s), u"True"_s);
    ASSERT_EQ(Said.size(), 1U);
    EXPECT_EQ(Said[0].Text, LanguageLines[48]);
    EXPECT_EQ(Panel().ComboOutFormat->findText(u"Wma"_s), -1);
}

TEST_F(AudiotoolCommands, AboutShowsTheVersion) {
    Open();
    const ModalAnswer about(u"About"_s, [](QWidget& window) {
        EXPECT_EQ(window.findChild<QLabel*>(u"LabelVersion"_s)->text(), u"Version 2.1.0"_s);
        window.close();
    });
    Form().about->trigger();
    EXPECT_EQ(about.Seen(), 1);
}

TEST_F(AudiotoolCommands, TheTagEditorOpensFromHereAndSavesAFile) {
    Open();
    Make("a.mp3", 2000);
    const ModalAnswer editor(u"TagEditorial"_s, [this](QWidget& window) {
        EXPECT_TRUE(window.isModal());
        EXPECT_EQ(window.parentWidget(), Window.get());
        auto& tags = static_cast<TagEditorial&>(window);
        tags.Load(Folder.Path("a.mp3"));
        EXPECT_TRUE(tags.Command1->isEnabled());
        tags.Fields->infoTitle->setText(u"First tide"_s);
        tags.Command1->click();
        window.close();
    });
    Form().TagEditor->trigger();
    EXPECT_EQ(editor.Seen(), 1);
    const QByteArray block = ContentOf(Folder.Native("a.mp3")).right(128);
    EXPECT_EQ(block.left(13), "TAGFirst tide") << "version 1, at the end of the file";
}

TEST_F(AudiotoolCommands, TheOutputFolderIsChosenByDialog) {
    Open();
    QString title;
    Dialogs().BrowseForFolder = [&](const QString& asked) {
        title = asked;
        return Folder.Path("out");
    };
    Click(Panel().CmdSelectPath);
    EXPECT_EQ(title, LanguageLines[18]);
    EXPECT_EQ(Panel().TextOutPath->Text(), Folder.Path("out"));
}

}  // namespace
}  // namespace Sonmira

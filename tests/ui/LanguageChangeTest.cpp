#include "MainWindowTest.h"
#include "platform/ChildProcess.h"
#include "shell/widgets/Events.h"
#include "tags/TagPage.h"
#include "ui/TabStrip.h"

#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// A language whose every line says its own number.
QByteArray Numbered(int lines) {
    QByteArray content;
    for (int n = 0; n < lines; ++n) content += "line " + QByteArray::number(n) + '\n';
    return content;
}
QString Line(int n) {
    return u"line %1"_s.arg(n);
}

class LanguageChange : public MainWindowTest {
public:
    ~LanguageChange() override { ProgramEnd() = RealEnd; }

protected:
    void Choose(int index) { Window->LanguageItems().Item(index)->trigger(); }
    // The main window in a language of numbered lines.
    void OpenNumbered() {
        Shipped.MakeFile("English.lng", Numbered(101));
        Open();
    }
    TagPanelForm& Page() { return Form().TagPage; }
    QString Caption(std::size_t field) { return Page().Fields->Captions[field]->text(); }
    QString SavedPlace() {
        const QByteArray content = ContentOf(Folder.Native("settings/Sonmira.ini"));
        return QString::fromUtf8(content.mid(content.indexOf("VALUE="), 8)).trimmed();
    }

    std::function<void()> RealEnd = ProgramEnd();
};

TEST_F(LanguageChange, EveryTargetHasItsLine) {
    OpenNumbered();
    const auto text = [this](int button) { return Form().ToolbarButton(button)->text(); };
    EXPECT_EQ(text(1), Line(12));
    EXPECT_EQ(text(2), Line(1));
    EXPECT_EQ(text(3), u"Add Directory"_s) << "no line goes there";
    EXPECT_EQ(text(4), Line(55));
    EXPECT_EQ(text(5), Line(23));
    EXPECT_EQ(text(6), u"Cancel"_s) << "no line goes there";
    EXPECT_EQ(text(7), Line(22));
    EXPECT_EQ(text(8), Line(7));
    EXPECT_EQ(Form().SSTab1->tabText(0), Line(19));
    EXPECT_EQ(Form().SSTab1->tabText(1), Line(5));
    const std::pair<QMenu*, int> menus[] = {{Form().file, 0},
                                            {Form().Options, 3},
                                            {Form().Languer, 4},
                                            {Form().Informations, 7},
                                            {Form().ActionMenu, 67}};
    for (const auto& [menu, line] : menus) EXPECT_EQ(WithoutLetter(menu->title()), Line(line));
    const std::pair<QAction*, int> commands[] = {{Form().addfile, 1},         {Form().Quit, 2},
                                                 {Form().acceptWma, 6},       {Form().Homepage, 8},
                                                 {Form().about, 9},           {Form().mynew, 12},
                                                 {Form().cancel, 22},         {Form().ConvertAll, 23},
                                                 {Form().aide, 49},           {Form().adddirectory, 55},
                                                 {Form().removefromlist, 25}, {Form().ConvertSlection, 64},
                                                 {Form().convertnoww, 64},    {Form().playfilemenu, 65},
                                                 {Form().playfile, 65},       {Form().OpenDirectory, 72}};
    for (const auto& [command, line] : commands) EXPECT_EQ(WithoutLetter(command->text()), Line(line));
    const std::pair<QLabel*, int> labels[] = {
        {Form().Label31, 10}, {Form().Label2, 11},  {Panel().Label11, 13},         {Panel().Label5, 15},
        {Panel().Label6, 16}, {Panel().Label7, 17}, {Form().Label26, 19},          {Form().Label28, 57},
        {Form().Label1, 58},  {Form().Label27, 60}, {Page().Picture4->Label23, 71}};
    for (const auto& [label, line] : labels) EXPECT_EQ(label->text(), Line(line));
    EXPECT_EQ(Form().Label32->text(), Line(0) + u':');
    EXPECT_EQ(Panel().CheckOutPath->text(), Line(14));
    EXPECT_EQ(Panel().Check2->text(), Line(56));
    EXPECT_EQ(Form().StopImg->toolTip(), Line(63));
    EXPECT_EQ(Rows().headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), Line(61));
    EXPECT_EQ(Rows().headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), Line(26));
    EXPECT_EQ(Rows().headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), Line(74));
}

TEST_F(LanguageChange, TheTagPageHasItsLines) {
    OpenNumbered();
    EXPECT_EQ(Page().Frame1->title(), Line(29));
    const int lines[TagFieldCount] = {30, 31, -1, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42};
    for (std::size_t n = 0; n < TagFieldCount; ++n) {
        if (lines[n] > 0) {
            EXPECT_EQ(Caption(n), Line(lines[n]));
        }
        EXPECT_EQ(Page().Picture4->Label24[n]->text(), Line(30 + static_cast<int>(n)));
    }
    EXPECT_EQ(Caption(2), u"Album:"_s) << "no line touches it";
    EXPECT_EQ(Page().Command3->text(), Line(43));
    const std::pair<int, int> toolTips[] = {{1, 68}, {2, 69}, {3, 70}, {5, 22}, {7, 43}};
    for (const auto& [button, line] : toolTips) {
        EXPECT_EQ(Page().ToolbarButton(button)->toolTip(), Line(line));
    }
}

TEST_F(LanguageChange, TakesEffectAtOnceAndIsSaved) {
    Open();
    Choose(1);
    EXPECT_EQ(WithoutLetter(Form().Options->title()), LanguageLines[3]);
    EXPECT_EQ(LanguageLines[93], u"Français"_s);
    EXPECT_EQ(SavedPlace(), u"VALUE= 1"_s);
    for (int index = 0; index < 7; ++index) {
        EXPECT_EQ(Window->LanguageItems().Item(index)->isChecked(), index == 1);
    }
    Choose(1);
    EXPECT_TRUE(Window->LanguageItems().Item(1)->isChecked()) << "a second click on it keeps it checked";
}

TEST_F(LanguageChange, KeepsTheValuesOfATagThatIsShown) {
    const QString song = Folder.MakeFile("song.wav", WavOf(MakeSilence(44100, 2, 4410), WavKind::Signed16));
    Open();
    Form().SSTab1->setCurrentIndex(1);
    Window->Tags().LoadTagPanel(song);
    Page().Fields->infoTitle->setText(u"Typed"_s);
    Page().Fields->infoGenre->SelectText(u"Jazz"_s);
    Choose(2);
    EXPECT_EQ(Caption(0), u"Titel:"_s);
    EXPECT_EQ(Caption(2), u"Album:"_s);
    EXPECT_EQ(Page().Fields->infoTitle->text(), u"Typed"_s);
    EXPECT_EQ(Page().Fields->infoGenre->currentText(), u"Jazz"_s);
    EXPECT_EQ(WithoutLetter(Form().Quit->text()), LanguageLines[2]);
    EXPECT_EQ(Form().Label32->text(), LanguageLines[0] + u':');
}

// Their texts are what the program and the settings go by.
TEST_F(LanguageChange, LeavesTheListsOfFormatsAndLevelsInEnglish) {
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    Open();
    const auto texts = [this] {
        QStringList all;
        for (const ChoiceList* list :
             {Panel().ComboOutFormat, Panel().ComboAPEFormat, Panel().ComboFLACFormat, Panel().ComboMPCFormat,
              Panel().ComboWmaFormat}) {
            for (int n = 0; n < list->count(); ++n) all.append(list->itemText(n));
        }
        return all << Panel().ComboOutFormat->currentText() << Panel().TextOutFormat->text();
    };
    const QStringList before = texts();
    EXPECT_EQ(before.mid(0, 7),
              (QStringList{u"Mp3"_s, u"Wav"_s, u"Ogg"_s, u"APE (MonKey's audio)"_s,
                           u"FLAC (Free Lossless Audio Codec)"_s, u"Mpc (Musepack)"_s, u"Wma"_s}));
    for (int index = 0; index < 7; ++index) {
        Choose(index);
        EXPECT_EQ(texts(), before) << LanguageLines[93].toStdString();
    }
    CloseWindow();
    Open();  // now with another language from the start
    EXPECT_EQ(texts(), before);
}

TEST_F(LanguageChange, AnEmptyLineShowsAnEmptyText) {
    QByteArray content = Numbered(101);
    content.replace("line 3\n", "\n");
    Shipped.MakeFile("English.lng", content);
    Open();
    EXPECT_EQ(Form().Options->title(), QString());
    EXPECT_EQ(WithoutLetter(Form().Languer->title()), Line(4));
}

TEST_F(LanguageChange, AFileThatReachesLine74CanBeApplied) {
    Shipped.MakeFile("English.lng", Numbered(75));
    Open();
    EXPECT_EQ(Rows().headerData(2, Qt::Horizontal, Qt::DisplayRole).toString(), Line(74));
}

TEST_F(LanguageChange, AShortFileChosenFromTheMenuIsToldAndTheProgramGoesOn) {
    Shipped.MakeFile("French.lng", "Fichier\n");
    Open();
    QString said;
    bool ended = false;
    Dialogs().ShowMessage = [&](const QString& text, MessageIcon icon, const QString& title) {
        said = title + u'|' + text;
        EXPECT_EQ(icon, MessageIcon::Critical);
    };
    ProgramEnd() = [&] { ended = true; };
    Choose(1);
    EXPECT_EQ(said, u"Sonmira|9 : Subscript out of range\nPlease re-install the application."_s);
    EXPECT_FALSE(ended);
    EXPECT_TRUE(Window->LanguageItems().Item(0)->isChecked()) << "the others are unchecked at the end only";
}

TEST_F(LanguageChange, AMissingFileChosenFromTheMenuIsToldAndEndsTheProgram) {
    Open();
    std::filesystem::remove(Shipped.Native("French.lng").toStdString());
    Dialogs().ShowMessage = [](const QString& text, MessageIcon /*icon*/, const QString& title) {
        std::fprintf(stderr, "%s|%s", title.toUtf8().constData(), text.toUtf8().constData());
    };
    EXPECT_EXIT(Choose(1), ::testing::ExitedWithCode(0), "Sonmira Audio.Can't find the Language file");
}

// The toolbar and the menus in every language, in the window at its least size.
TEST_F(LanguageChange, TheToolbarAndTheMenusFitAtTheLeastSizeInEveryLanguage) {
    Open().resize(613, 560);
    for (int index = 0; index < 7; ++index) {
        Choose(index);
        Settle();
        const std::string language = LanguageLines[93].toStdString();
        for (const QLabel* label : {Panel().Label5, Panel().Label6, Panel().Label7, Form().Label1,
                                    Form().Label2, Form().Label28, Form().Label32, Form().Label27}) {
            EXPECT_GE(label->width(), label->sizeHint().width()) << language << qPrintable(label->text());
        }
        for (const int button : {1, 2, 3, 5, 6, 8}) {
            const QWidget* const shown = Form().Toolbar1->widgetForAction(Form().ToolbarButton(button));
            EXPECT_TRUE(shown->isVisible() && shown->width() >= shown->sizeHint().width())
                << language << qPrintable(Form().ToolbarButton(button)->text());
        }
        int menus = 0;
        for (const QAction* const menu : Window->menuBar()->actions()) {
            menus += Window->menuBar()->fontMetrics().horizontalAdvance(menu->text()) + 24;
        }
        EXPECT_LT(menus, 613) << language;
    }
}

}  // namespace
}  // namespace Sonmira

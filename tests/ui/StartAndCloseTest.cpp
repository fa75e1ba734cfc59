#include "MainWindowTest.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "shell/LanguageFiles.h"
#include "shell/widgets/Deb.h"
#include "shell/widgets/Events.h"
#include "shell/widgets/Main.h"
#include "support/TestAudio.h"

#include <QMenu>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class StartAndClose : public MainWindowTest {
public:
    ~StartAndClose() override { OverrideEncoderSystemFolder({}); }

protected:
    void Save(const QString& key, const QString& value) {
        WriteIniValue(SettingsFile, u"AudioConverter"_s, key, value);
    }
    // What the entry routine finds where it looks for the settings.
    static void HaveChosenALanguage() {
        LocateSettingsFile();
        WriteIniValue(SettingsFile, u"LANGUE"_s, u"VALUE"_s, u" 0"_s);
    }
    void TakeEncoderAway() { OverrideEncoderSystemFolder(Folder.MakeFolder("no-encoder")); }
    // What might make a window look at its lists again.
    void UseTheWindow() {
        for (const QString& format : Formats()) Panel().ComboOutFormat->SelectText(format);
        Window->LanguageItems().Item(1)->trigger();
        ClickToolbar(1);
        Folder.MakeFile("Music/a.wav");
        AddFolderByCommand(Folder.Path("Music"));
        ClickToolbar(5);
        Panel().ComboOutFormat->SelectText(u"Ogg"_s);
    }
    QString Format() { return Panel().ComboOutFormat->currentText(); }
    QStringList Formats() {
        QStringList texts;
        for (int n = 0; n < Panel().ComboOutFormat->count(); ++n)
            texts.append(Panel().ComboOutFormat->itemText(n));
        return texts;
    }
};

TEST_F(StartAndClose, TheTitleCarriesTheVersion) {
    EXPECT_EQ(Open().windowTitle(), u"Sonmira V2.1"_s);
}

TEST_F(StartAndClose, AFirstStartShowsTheDesktopFolderAndMp3) {
    const QString desktop = DesktopFolder();
    Open();
    EXPECT_EQ(Panel().TextOutPath->Text(), desktop);
    EXPECT_FALSE(Panel().CheckOutPath->isChecked());
    EXPECT_EQ(Format(), u"Mp3"_s);
    EXPECT_TRUE(Panel().TextOutFormat->text().contains(u"128"));
    EXPECT_EQ(ReadIniValue(SettingsFile, u"LAUNCH"_s, u"VALUE"_s), u"True"_s);
    EXPECT_EQ(Setting(u"Format"_s), QString()) << "written at the first close only";
}

TEST_F(StartAndClose, FolderModeAndFormatComeBack) {
    Open();
    Panel().TextOutPath->SetText(Folder.Path("out"));
    Panel().CheckOutPath->setChecked(true);
    Panel().ComboOutFormat->SelectText(u"Ogg"_s);
    EXPECT_TRUE(CloseWindow());
    EXPECT_EQ(Setting(u"Modepath"_s), u"TRUE"_s);

    Open();
    EXPECT_EQ(Panel().TextOutPath->Text(), Folder.Path("out"));
    EXPECT_TRUE(Panel().CheckOutPath->isChecked());
    EXPECT_EQ(Format(), u"Ogg"_s);
    EXPECT_TRUE(Panel().TextOutFormat->text().contains(u"Vorbis"));
    Panel().CheckOutPath->setChecked(false);
    CloseWindow();
    EXPECT_EQ(Setting(u"Modepath"_s), u"FALSE"_s);
}

TEST_F(StartAndClose, ASavedFolderThatIsGoneGivesTheDesktopFolder) {
    Save(u"OutputPath"_s, Folder.Path("gone"));
    Open();
    EXPECT_EQ(Panel().TextOutPath->Text(), DesktopFolder());
    EXPECT_TRUE(CloseWindow());
    EXPECT_EQ(Setting(u"OutputPath"_s), DesktopFolder());
}

TEST_F(StartAndClose, WithoutTheEncoderFilesStillBecomeWavAndCloseKeepsThat) {
    TakeEncoderAway();
    Save(u"Format"_s, u"Mp3"_s);
    const QByteArray wav = WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16);
    Folder.MakeFile("Music/a.wav", wav);
    Open();
    Panel().TextOutPath->SetText(Folder.Path("out"));
    AddFolderByCommand(Folder.Path("Music"));
    ClickToolbar(5);
    EXPECT_EQ(IconOf(1), u"converted"_s);
    EXPECT_TRUE(ContentOf(Folder.Native("out/Music/a.wav")).mid(44).startsWith(wav.mid(44)));
    EXPECT_TRUE(CloseWindow());
    EXPECT_EQ(Setting(u"Format"_s), u"Wav"_s);
}

TEST_F(StartAndClose, AnyOtherModeUnchecks) {
    Save(u"Modepath"_s, u"true"_s);
    Open();
    EXPECT_FALSE(Panel().CheckOutPath->isChecked());
}

TEST_F(StartAndClose, WithoutTheEncoderMp3IsNotOfferedAndASavedOneBecomesWav) {
    Save(u"Format"_s, u"Mp3"_s);
    TakeEncoderAway();
    Open();
    EXPECT_EQ(Formats(), (QStringList{u"Wav"_s, u"Ogg"_s, u"APE (MonKey's audio)"_s,
                                      u"FLAC (Free Lossless Audio Codec)"_s, u"Mpc (Musepack)"_s}));
    EXPECT_EQ(Format(), u"Wav"_s);
    CloseWindow();
    EXPECT_EQ(Setting(u"Format"_s), u"Wav"_s);
}

// One replacement leads to the next.
TEST_F(StartAndClose, ASavedWmaBecomesMp3AndThatBecomesWavWithoutTheEncoder) {
    Save(u"Format"_s, u"Wma"_s);
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"False"_s);
    TakeEncoderAway();
    Open();
    EXPECT_EQ(Format(), u"Wav"_s);
    EXPECT_EQ(Panel().TextOutFormat->text(), u"PCM 44100 Hz, Stereo, 16 bits"_s);
    CloseWindow();
    EXPECT_EQ(Setting(u"Format"_s), u"Wav"_s);
}

TEST_F(StartAndClose, ASavedWmaNeedsNoMp3Encoder) {
    Save(u"Format"_s, u"Wma"_s);
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    TakeEncoderAway();
    Open();
    EXPECT_EQ(Format(), u"Wma"_s);
}

TEST_F(StartAndClose, AnEncoderThatComesWhileTheWindowIsOpenIsOfferedAtTheNextStart) {
    const QString library = EncoderSystemFolder() + u"\\lame_enc.dll"_s;
    TakeEncoderAway();
    Open();
    const QStringList formats = Formats();
    EXPECT_FALSE(formats.contains(u"Mp3"_s));
    std::filesystem::create_symlink(ToNative(library).toStdString(),
                                    Folder.Native("no-encoder/lame_enc.dll").toStdString());
    UseTheWindow();
    EXPECT_EQ(Formats(), formats);
    Panel().ComboOutFormat->SelectText(u"Mp3"_s);
    EXPECT_NE(Format(), u"Mp3"_s);
    CloseWindow();
    Open();
    EXPECT_EQ(Formats(), QStringList(u"Mp3"_s) + formats);
}

TEST_F(StartAndClose, AnEncoderThatGoesWhileTheWindowIsOpenStaysInTheListUntilTheNextStart) {
    Open();
    const QStringList formats = Formats();
    EXPECT_EQ(formats.first(), u"Mp3"_s);
    TakeEncoderAway();
    UseTheWindow();
    EXPECT_EQ(Formats(), formats);
    CloseWindow();
    Open();
    EXPECT_EQ(Formats(), formats.mid(1));
}

TEST_F(StartAndClose, AMissingWmaSupportIsWrittenAsFalseAtOnce) {
    Save(u"Format"_s, u"Wma"_s);
    Open();
    EXPECT_EQ(ReadIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s), u"False"_s);
    EXPECT_EQ(Format(), u"Mp3"_s);
}

TEST_F(StartAndClose, ALanguageFileThatIsTooShortEndsInTheFailureReport) {
    Shipped.MakeFile("English.lng", "File\nAdd\n");
    HaveChosenALanguage();
    QString said;
    bool ended = false;
    Dialogs().ShowMessage = [&](const QString& text, MessageIcon /*icon*/, const QString& /*title*/) {
        said = text;
    };
    ProgramEnd() = [&] { ended = true; };
    EXPECT_EQ(Main([] { return std::make_unique<BatchConverter>(); }), nullptr);
    EXPECT_TRUE(ended);
    EXPECT_TRUE(said.contains(u"9 : Subscript out of range")) << said.toStdString();
}

// Files of the format before, under the name of this one, are what nobody wants.
class BrokenEncoder : public StartAndClose, public ::testing::WithParamInterface<const char*> {};

TEST_P(BrokenEncoder, LeavesMp3SelectedAndEveryFileFails) {
    QByteArray encoder = ContentOf(ToNative(EncoderSystemFolder() + u"\\lame_enc.dll"_s));
    ASSERT_TRUE(encoder.contains("libmp3lame.so.0"));
    if (GetParam() == std::string("NoLibrary")) encoder = "no library";
    if (GetParam() == std::string("CutOff")) encoder.truncate(encoder.size() / 2);
    if (GetParam() == std::string("ItsOwnLibraryGone")) encoder.replace("libmp3lame.so.0", "libmp3lame.no.0");
    OverrideEncoderSystemFolder(Folder.MakeFolder("broken-encoder"));
    Folder.MakeFile("broken-encoder/lame_enc.dll", encoder);
    Folder.MakeFile("Music/song.wav", WavOf(MakeTone(44100, 2, 44100, 440), WavKind::Signed16));
    Open();
    EXPECT_EQ(Format(), u"Mp3"_s) << "at a first start";
    for (const QString& before : {u"Ogg"_s, u"Wav"_s}) {
        Panel().ComboOutFormat->SelectText(before);
        EXPECT_FALSE(Panel().TextOutFormat->text().isEmpty());
        Panel().ComboOutFormat->SelectText(u"Mp3"_s);
        EXPECT_EQ(Format(), u"Mp3"_s);
        EXPECT_EQ(Panel().TextOutFormat->text(), QString());
        EXPECT_TRUE(Panel().TextOutFormat->isVisible());
        Panel().TextOutPath->SetText(Folder.MakeFolder("out"));
        if (Window->Gathered().FileCount == 0) Window->AddFolder(Folder.Path("Music"));
        Window->StartRun();
        FileListModel& rows = Window->Form().ListViewFiles->Rows();
        ASSERT_EQ(rows.RowCount(), 1);
        EXPECT_EQ(rows.Text(1, FileListModel::ProgressColumn), LanguageLines[96]);
        EXPECT_FALSE(NativeExists(Folder.Native("out/Music/song.mp3")));
    }
    Panel().ComboOutFormat->SelectText(u"Wav"_s);
    Window->StartRun();
    EXPECT_TRUE(NativeExists(Folder.Native("out/Music/song.wav"))) << "the others go on working";
}

INSTANTIATE_TEST_SUITE_P(Kinds, BrokenEncoder, ::testing::Values("NoLibrary", "CutOff", "ItsOwnLibraryGone"),
                         [](const auto& kind) { return kind.param; });

TEST_F(StartAndClose, ASavedWmaWithoutItsSupportBecomesMp3) {
    Save(u"Format"_s, u"Wma"_s);
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"False"_s);
    Open();
    EXPECT_EQ(Format(), u"Mp3"_s);
}

TEST_F(StartAndClose, AWmaSupportThatIsNoFlagEndsTheRestoringInSilenceAndWavIsSelected) {
    Save(u"Format"_s, u"Ogg"_s);
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"perhaps"_s);
    Deb::Instance().show();
    int said = 0;
    Dialogs().ShowMessage = [&](auto&&...) { ++said; };
    Open();
    EXPECT_EQ(Format(), u"Wav"_s);
    EXPECT_FALSE(Panel().TextOutFormat->text().isEmpty());
    EXPECT_EQ(said, 0);
    EXPECT_EQ(QApplication::topLevelWidgets().count(Window.get()), 1);
    for (const QWidget* widget : QApplication::topLevelWidgets()) EXPECT_NE(widget->objectName(), u"Deb"_s);
}

TEST_F(StartAndClose, AWmaSupportThatIsNoFlagMattersOnlyWhereAFormatIsSaved) {
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"perhaps"_s);
    Open();
    EXPECT_EQ(Panel().ComboOutFormat->currentText(), u"Mp3"_s);
}

TEST_F(StartAndClose, ASavedFormatThatIsNoneSelectsNothing) {
    Save(u"Format"_s, u"Mp4"_s);
    Open();
    EXPECT_EQ(Panel().ComboOutFormat->currentIndex(), -1);
    EXPECT_EQ(Panel().TextOutFormat->text(), u"MPEG Layer-3 44100 Hz, Stereo, 128 kbit/s"_s)
        << "what is in force before anything is selected";
}

TEST_F(StartAndClose, AFolderOfAsManyLettersAsANameCanHaveComesBack) {
    // 255 bytes, and still fewer characters than a setting holds.
    const QString folder = Folder.MakeFolder(QString(85, u'\u65e5').toUtf8());
    Open();
    Panel().TextOutPath->SetText(folder);
    CloseWindow();
    Open();
    EXPECT_EQ(Panel().TextOutPath->Text(), folder);
}

TEST_F(StartAndClose, TheLogoStandsUntilTheSettingsAreRestored) {
    HaveChosenALanguage();
    bool logoStood = false;
    const std::unique_ptr<QWidget> window = Main([&] {
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            logoStood = logoStood || (widget->objectName() == u"Deb" && widget->isVisible());
        }
        return std::make_unique<BatchConverter>();
    });
    EXPECT_TRUE(logoStood);
    EXPECT_TRUE(window->isVisible());
    for (const QWidget* widget : QApplication::topLevelWidgets()) EXPECT_NE(widget->objectName(), u"Deb"_s);
}

TEST_F(StartAndClose, TheWindowCannotBeSmallerThanItsLeastSize) {
    Open().resize(100, 100);
    EXPECT_EQ(Window->size(), QSize(613, 560));
}

TEST_F(StartAndClose, EveryTextComesFromTheLanguageFile) {
    Open();
    EXPECT_EQ(WithoutLetter(Form().file->title()), LanguageLines[0]);
    EXPECT_EQ(WithoutLetter(Form().Quit->text()), LanguageLines[2])
        << "line 21 is written first, line 2 over it";
    EXPECT_EQ(Form().Label32->text(), LanguageLines[0] + u':');
    EXPECT_EQ(Form().ToolbarButton(3)->text(), u"Add Directory"_s) << "keeps its design caption";
    EXPECT_EQ(Form().ToolbarButton(5)->text(), LanguageLines[23]);
    EXPECT_EQ(Panel().Check2->text(), LanguageLines[56]);
}

TEST_F(StartAndClose, EveryCaptionFitsAtTheLeastSize) {
    Open().resize(613, 560);
    QApplication::processEvents();
    for (const QLabel* label :
         {Panel().Label5, Panel().Label6, Panel().Label7, Form().Label1, Form().Label2}) {
        EXPECT_GE(label->width(), label->sizeHint().width()) << qPrintable(label->text());
    }
}

}  // namespace
}  // namespace Sonmira

#include "OptionsTest.h"
#include "platform/Folders.h"
#include "shell/LanguageFiles.h"

#include <QMenu>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

const QString Ape = u"APE (MonKey's audio)"_s;
const QString Flac = u"FLAC (Free Lossless Audio Codec)"_s;
const QString Mpc = u"Mpc (Musepack)"_s;

class FormatChoice : public OptionsTest {
public:
    ~FormatChoice() override { OverrideEncoderSystemFolder({}); }

protected:
    static void SupportWma() { Save(u"WMA"_s, u"WMASUPPORT"_s, u"True"_s); }
    // The names of the controls that are to be seen in the place for the format's parameters.
    QStringList Shown() {
        QStringList names;
        for (const QWidget* control : std::initializer_list<const QWidget*>{
                 Panel().CmdFormatParameter, Panel().TextOutFormat, Panel().ComboWmaFormat,
                 Panel().ComboAPEFormat, Panel().ComboFLACFormat, Panel().ComboMPCFormat}) {
            if (control->isVisible()) names.append(control->objectName());
        }
        return names;
    }
    // Half a minute would not say more: levels differ on anything that is neither noise nor rest.
    static TestSound Sound() {
        TestSound sound = MakeSweep(44100, 2, 4 * 44100);
        const TestSound noise = MakeNoise(44100, 2, 4 * 44100, 0.02);
        for (std::size_t n = 0; n < sound.Samples.size(); ++n) sound.Samples[n] += noise.Samples[n];
        return sound;
    }
};

TEST_F(FormatChoice, EachSelectionShowsItsOwnControlsAlone) {
    SupportWma();
    Open();
    const QStringList withWindow = {u"CmdFormatParameter"_s, u"TextOutFormat"_s};
    const std::pair<QString, QStringList> shown[] = {
        {u"Mp3"_s, withWindow},           {Ape, {u"ComboAPEFormat"_s}}, {u"Wav"_s, withWindow},
        {Flac, {u"ComboFLACFormat"_s}},   {u"Ogg"_s, withWindow},       {Mpc, {u"ComboMPCFormat"_s}},
        {u"Wma"_s, {u"ComboWmaFormat"_s}}};
    for (const auto& [format, controls] : shown) {
        Select(format);
        EXPECT_EQ(Shown(), controls) << format.toStdString();
    }
}

TEST_F(FormatChoice, TheButtonStandsBesideTheSummaryAndBelowTheList) {
    Open();
    const auto middle = [this](const QWidget* control) {
        return control->mapTo(Window.get(), control->rect().center()).y();
    };
    EXPECT_NEAR(middle(Panel().CmdFormatParameter), middle(Panel().TextOutFormat), 4);
    EXPECT_GT(middle(Panel().CmdFormatParameter), middle(Panel().ComboOutFormat) + 10);
}

TEST_F(FormatChoice, WithoutItsSupportWmaIsNotReadEither) {
    Folder.MakeFile("in.wav", WavOf(Sound(), WavKind::Signed16));
    Folder.MakeFolder("Music");
    RunTool({"ffmpeg", "-v", "error", "-i", Folder.Native("in.wav"), "-c:a", "wmav2",
             Folder.Native("Music/song.wma")});
    for (const bool supported : {false, true}) {
        if (supported) SupportWma();
        Open();
        Panel().TextOutPath->SetText(Folder.MakeFolder("out"));
        Select(u"Wav"_s);
        Window->AddFolder(Folder.Path("Music"));
        Window->StartRun();
        ASSERT_EQ(Rows().RowCount(), 1);
        EXPECT_EQ(Progress(1), supported ? u"100 %"_s : LanguageLines[100]);
    }
}

TEST_F(FormatChoice, TheSummaryTakesNoInput) {
    Open();
    const QString before = Summary();
    QTest::keyClicks(Panel().TextOutFormat, u"typed"_s);
    EXPECT_EQ(Summary(), before);
}

TEST_F(FormatChoice, ASummaryThatIsTooLongShowsItsBeginning) {
    Open();
    Panel().TextOutFormat->setFixedWidth(60);
    for (const QString& format : {u"Mp3"_s, u"Ogg"_s, u"Wav"_s}) {
        Select(format);
        EXPECT_EQ(Panel().TextOutFormat->cursorPosition(), 0) << format.toStdString();
    }
}

TEST_F(FormatChoice, AFirstStartTakesWhatIsSavedOfMp3) {
    Save(u"Mp3"_s, u"3"_s, u"192"_s);
    Open();
    EXPECT_EQ(Panel().ComboOutFormat->currentText(), u"Mp3"_s);
    EXPECT_EQ(Summary(), u"MPEG Layer-3 44100 Hz, Stereo, 192 kbit/s"_s);
    EXPECT_EQ(Probe(Convert(Sound(), "mp3"), "bit_rate"), "192000");
}

TEST_F(FormatChoice, AFirstStartWithoutTheEncoderSelectsWavAndAsksForMp3InVain) {
    OverrideEncoderSystemFolder(Folder.MakeFolder("no-encoder"));
    Open();
    EXPECT_EQ(Panel().ComboOutFormat->currentText(), u"Wav"_s);
    EXPECT_EQ(Panel().ComboOutFormat->findText(u"Mp3"_s), -1);
    EXPECT_EQ(Shown(), (QStringList{u"CmdFormatParameter"_s, u"TextOutFormat"_s}));
    EXPECT_TRUE(Summary().isEmpty()) << "the format asked for last was refused";
    EXPECT_EQ(Probe(Convert(Sound(), "wav"), "codec_name,sample_rate,channels"), "pcm_s16le,44100,2");
    Select(u"Ogg"_s);
    EXPECT_EQ(Summary(), u"Ogg Vorbis 44100 Hz, Stereo, quality 4.0"_s);
    Select(u"Wav"_s);
    EXPECT_EQ(Summary(), u"PCM 44100 Hz, Stereo, 16 bits"_s);
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(FormatChoice, EverySavedFormatComesBackWithItsControls) {
    SupportWma();
    for (const QString& format : {u"Mp3"_s, u"Wav"_s, u"Ogg"_s, Ape, Flac, Mpc, u"Wma"_s}) {
        Open();
        Select(format);
        const QStringList shown = Shown();
        EXPECT_TRUE(CloseWindow());
        EXPECT_EQ(Setting(u"Format"_s), format);
        Open();
        EXPECT_EQ(Panel().ComboOutFormat->currentText(), format);
        EXPECT_EQ(Shown(), shown);
    }
}

TEST_F(FormatChoice, SelectingTheSelectedFormatAgainTakesWhatIsSavedNow) {
    Open();
    Save(u"Mp3"_s, u"3"_s, u"256"_s);
    Select(u"Mp3"_s);
    EXPECT_EQ(Summary(), u"MPEG Layer-3 44100 Hz, Stereo, 256 kbit/s"_s);
}

TEST_F(FormatChoice, AWmaNumberBeyondTheListLeavesFormat39AndNoItem) {
    SupportWma();
    Save(u"AudioConverter"_s, u"Format"_s, u"Wma"_s);
    for (const QString& number : {u"52"_s, u"-1"_s}) {
        Save(u"WMA"_s, u"Num"_s, number);
        Open();
        EXPECT_EQ(Panel().ComboWmaFormat->currentIndex(), -1);
        EXPECT_EQ(Summary(), Panel().ComboWmaFormat->itemText(38).sliced(5));
        EXPECT_EQ(Saved(u"WMA"_s, u"Num"_s), number);
        EXPECT_EQ(Shown(), QStringList(u"ComboWmaFormat"_s));
    }
}

TEST_F(FormatChoice, AWmaNumberThatIsNoneStandsForTheDefault) {
    SupportWma();
    for (const QString& number : {u"many"_s, u"99999999999"_s}) {
        Save(u"WMA"_s, u"Num"_s, number);
        Open();
        Select(u"Wma"_s);
        EXPECT_EQ(Panel().ComboWmaFormat->currentIndex(), 42);
        EXPECT_EQ(Saved(u"WMA"_s, u"Num"_s), u"43"_s);
    }
    EXPECT_TRUE(Boxes.empty());
    EXPECT_EQ(ProgramEnds, 0);
}

TEST_F(FormatChoice, AChosenWmaFormatIsSavedAndWritten) {
    SupportWma();
    Open();
    Select(u"Wma"_s);
    Choose(Panel().ComboWmaFormat, 50);
    EXPECT_EQ(Saved(u"WMA"_s, u"Num"_s), u"51"_s);
    const QString text = Panel().ComboWmaFormat->currentText();
    const QByteArray probed = Probe(Convert(Sound(), "wma"), "codec_name,sample_rate");
    EXPECT_TRUE(probed.startsWith("wma")) << probed.constData();
    EXPECT_TRUE(text.contains(QString::fromLatin1(probed.mid(probed.indexOf(',') + 1))))
        << text.toStdString();
}

TEST_F(FormatChoice, SwitchingWmaChangesNeitherListUntilTheNextStart) {
    Open();
    const QStringList formats = ItemsOf(Panel().ComboOutFormat);
    Form().acceptWma->trigger();
    ASSERT_EQ(Boxes.size(), 1U);
    EXPECT_EQ(Boxes[0].Text, LanguageLines[48]);
    EXPECT_EQ(Boxes[0].Icon, MessageIcon::Information);
    EXPECT_EQ(Boxes[0].Title, u"Sonmira"_s);
    EXPECT_EQ(Saved(u"WMA"_s, u"WMASUPPORT"_s), u"True"_s);
    EXPECT_TRUE(Form().acceptWma->isChecked());
    EXPECT_EQ(ItemsOf(Panel().ComboOutFormat), formats);
    EXPECT_EQ(Panel().ComboWmaFormat->count(), 0);
    Open();
    EXPECT_TRUE(Form().acceptWma->isChecked());
    EXPECT_EQ(ItemsOf(Panel().ComboOutFormat), QStringList(formats) << u"Wma"_s);
    EXPECT_EQ(Panel().ComboWmaFormat->count(), 51);
    Form().acceptWma->trigger();
    EXPECT_EQ(Saved(u"WMA"_s, u"WMASUPPORT"_s), u"False"_s);
    EXPECT_FALSE(Form().acceptWma->isChecked());
    EXPECT_EQ(Panel().ComboWmaFormat->count(), 51);
    Save(u"WMA"_s, u"WMASUPPORT"_s, u"perhaps"_s);
    Form().acceptWma->trigger();
    EXPECT_EQ(Saved(u"WMA"_s, u"WMASUPPORT"_s), u"True"_s) << "whatever is not exactly that becomes it";
}

TEST_F(FormatChoice, TheButtonOpensTheWindowOfItsFormat) {
    Open();
    EXPECT_EQ(InMp3([](Mp3Options& window) {
                  EXPECT_EQ(window.parentWidget()->objectName(), u"BatchConverter"_s);
              }),
              1);
    Select(u"Ogg"_s);
    EXPECT_EQ(InOgg([](OggOptions& window) { EXPECT_TRUE(window.isModal()); }), 1);
    Select(u"Wav"_s);
    EXPECT_EQ(InWav([](WavOptions& window) { EXPECT_TRUE(window.isModal()); }), 1);
    EXPECT_TRUE(Boxes.empty());
}

TEST_F(FormatChoice, NoNumberIsSavedWithABlankButTheLanguages) {
    SupportWma();
    Open();
    InMp3([](Mp3Options& window) { Click(window.cmdOK); });
    Select(u"Ogg"_s);
    InOgg([](OggOptions& window) { Click(window.cmdOk); });
    Select(u"Wav"_s);
    InWav([](WavOptions& window) { Click(window.Command1); });
    for (const QString& format : {Ape, Flac, Mpc, u"Wma"_s}) Select(format);
    Panel().ComboMPCFormat->SelectPlace(4);
    int numbers = 0;
    for (const QByteArray& line : ContentOf(Folder.Native("settings/Sonmira.ini")).split('\n')) {
        const QByteArray value = line.mid(line.indexOf('=') + 1);
        if (!value.isEmpty() && std::isdigit(static_cast<unsigned char>(value.trimmed().back())) != 0)
            ++numbers;
        EXPECT_EQ(value.startsWith(' ') || value.endsWith(' '), line == "VALUE= 0") << line.constData();
    }
    EXPECT_GE(numbers, 1 + 15 + 8 + 3 + 2) << "or it looked at nothing";
}

TEST_F(FormatChoice, IsLockedDuringARunButForMusepack) {
    MakeLongWav("Music/a.wav", 20);
    Open();
    Panel().TextOutPath->SetText(Folder.Path("out"));
    AddFolderByCommand(Folder.Path("Music"));
    const std::initializer_list<const QWidget*> locked = {
        Panel().ComboOutFormat,     Panel().ComboWmaFormat, Panel().ComboAPEFormat, Panel().ComboFLACFormat,
        Panel().CmdFormatParameter, Panel().CmdSelectPath,  Panel().CheckOutPath,   Panel().Check2};
    int looked = 0;
    WhenReached(1, [&] {
        ++looked;
        for (const QWidget* control : locked) {
            EXPECT_FALSE(control->isEnabled()) << control->objectName().toStdString();
        }
        EXPECT_TRUE(Panel().ComboMPCFormat->isEnabled());
        Panel().ComboMPCFormat->SelectPlace(8);
        EXPECT_EQ(Window->Settings().MpcQuality, 8);
        Click(Panel().CmdFormatParameter);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        ClickToolbar(6);
    });
    ClickToolbar(5);
    EXPECT_EQ(looked, 1);
    for (const QWidget* control : locked) {
        EXPECT_TRUE(control->isEnabled()) << control->objectName().toStdString();
    }
}

TEST_F(FormatChoice, TheOutputFolderIsChosenOrBesideTheOriginal) {
    Open();
    QString title;
    QString answer = Folder.Path("out");
    Dialogs().BrowseForFolder = [&](const QString& asked) {
        title = asked;
        return answer;
    };
    Click(Panel().CmdSelectPath);
    EXPECT_EQ(title, LanguageLines[18]);
    EXPECT_EQ(Panel().TextOutPath->Text(), Folder.Path("out"));
    answer.clear();
    Click(Panel().CmdSelectPath);
    EXPECT_EQ(Panel().TextOutPath->Text(), Folder.Path("out"));
    Tick(Panel().CheckOutPath);
    EXPECT_FALSE(Panel().TextOutPath->isEnabled());
    EXPECT_FALSE(Panel().CmdSelectPath->isEnabled());
    Tick(Panel().CheckOutPath);
    EXPECT_TRUE(Panel().TextOutPath->isEnabled());
    EXPECT_TRUE(Panel().CmdSelectPath->isEnabled());
}

TEST_F(FormatChoice, FlacAndApeWriteSmallerFilesAtTheirHighestLevels) {
    Open();
    const auto sizeAt = [this](ChoiceList* list, int place, const QByteArray& extension) {
        Choose(list, place);
        return std::filesystem::file_size(Convert(Sound(), extension).toStdString());
    };
    Select(Flac);
    EXPECT_LT(sizeAt(Panel().ComboFLACFormat, 8, "flac"),
              sizeAt(Panel().ComboFLACFormat, 0, "flac") * 99 / 100);
    EXPECT_EQ(RunTool({"flac", "-t", "-s", Folder.Native("out/Music/a.flac")}).ExitCode, 0);
    Select(Ape);
    EXPECT_LT(sizeAt(Panel().ComboAPEFormat, 3, "ape"), sizeAt(Panel().ComboAPEFormat, 0, "ape") * 99 / 100);
    EXPECT_EQ(Probe(Folder.Native("out/Music/a.ape"), "codec_name"), "ape");
}

TEST_F(FormatChoice, MusepackComesOutTheSameWhateverItsList) {
    Open();
    Select(Mpc);
    std::vector<QByteArray> made;
    for (const int quality : {0, 5, 9}) {
        Choose(Panel().ComboMPCFormat, quality);
        made.push_back(ContentOf(Convert(Sound(), "mpc")));
    }
    EXPECT_GT(made[0].size(), 1000);
    EXPECT_EQ(made[0], made[1]);
    EXPECT_EQ(made[0], made[2]);
}

}  // namespace
}  // namespace Sonmira

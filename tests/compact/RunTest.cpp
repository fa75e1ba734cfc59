// Conversions of the list and of one row.
#include "AudiotoolTest.h"
#include "engine/OutputFormats.h"
#include "platform/Clock.h"
#include "platform/Failure.h"
#include "support/Timing.h"

#include <QElapsedTimer>
#include <QLineEdit>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class ConvertingRows : public AudiotoolTest {
public:
    ConvertingRows() { OverrideCurrentYear(2031); }
    ~ConvertingRows() override { OverrideCurrentYear(0); }

protected:
    void Convert() { Click(Form().CmdConvert); }
    void ConvertNow(int row) {
        Select(row);
        Form().ConvertNow->trigger();
    }
    QByteArray CodecOf(const QByteArray& name) {
        return RunTool({"ffprobe", "-v", "error", "-show_entries", "stream=codec_name", "-of", "csv=p=0",
                        Folder.Native(name)})
            .Output.trimmed();
    }
    QByteArray TagOf(const QByteArray& name, const QByteArray& tag) {
        return RunTool({"ffprobe", "-v", "error", "-show_entries",
                        "format_tags=" + tag + ":stream_tags=" + tag, "-of", "default=nw=1:nk=1",
                        Folder.Native(name)})
            .Output.trimmed();
    }
    bool Made(const QByteArray& name) { return NativeExists(Folder.Native(name)); }
};

TEST_F(ConvertingRows, AllOutputsLieInOneFolder) {
    OpenFor(FormatName::Mp3);
    MakeWav("Music/a.wav");
    MakeWav("Music/Rock/b.wav");
    AddFiles({"Music/a.wav", "Music/Rock/b.wav"});
    Convert();
    EXPECT_EQ(CodecOf("out/a.mp3"), "mp3");
    EXPECT_EQ(CodecOf("out/b.mp3"), "mp3");
    EXPECT_EQ(IconOf(1), u"converted"_s);
    EXPECT_EQ(Bar(0).value(), 100);
    EXPECT_EQ(Bar(1).Text(), u"100 %"_s);
    EXPECT_EQ(Rows().State(2).Progress, u"100 %"_s);
    EXPECT_TRUE(Made("Music/a.wav")) << "sources are never removed here";
    EXPECT_FALSE(Window->State().Busy());
}

TEST_F(ConvertingRows, TwoFilesOfOneNameGetTwoOutputs) {
    OpenFor(FormatName::Wav);
    MakeWav("Music/a.wav");
    MakeWav("Music/Rock/a.wav");
    AddFiles({"Music/a.wav", "Music/Rock/a.wav"});
    Convert();
    EXPECT_TRUE(Made("out/a.wav"));
    EXPECT_TRUE(Made("out/a(1).wav"));
}

TEST_F(ConvertingRows, OutputsGoBesideTheirSourcesWhereAskedFor) {
    OpenFor(FormatName::Ogg);
    Panel().CheckOutPath->setChecked(true);
    MakeWav("Music/a.wav");
    Make("Music/Rock/b.flac", 2500);
    AddFiles({"Music/a.wav", "Music/Rock/b.flac"});
    Form().convertmenu->trigger();
    EXPECT_TRUE(Made("Music/a.ogg"));
    EXPECT_TRUE(Made("Music/Rock/b.ogg")) << "also after the way through a temporary WAV";
    EXPECT_FALSE(Panel().TextOutPath->isEnabled());
}

TEST_F(ConvertingRows, EveryFormatIsMade) {
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    OpenFor(FormatName::Mp3);
    MakeWav("a.wav", 2500);
    AddFiles({"a.wav"});
    const std::pair<QStringView, const char*> codecs[] = {
        {FormatName::Mp3, "mp3"}, {FormatName::Ogg, "vorbis"}, {FormatName::Wav, "pcm_s16le"},
        {FormatName::Wma, "wma"}, {FormatName::Ape, "ape"},    {FormatName::Flac, "flac"},
        {FormatName::Mpc, "mus"}};
    const char* endings[] = {"mp3", "ogg", "wav", "wma", "ape", "flac", "mpc"};
    int n = 0;
    for (const auto& [format, codec] : codecs) {
        Panel().ComboOutFormat->SelectText(format.toString());
        Convert();
        EXPECT_TRUE(CodecOf("out/a." + QByteArray(endings[n++])).startsWith(codec)) << codec;
        EXPECT_EQ(IconOf(1), u"converted"_s) << codec;
    }
}

TEST_F(ConvertingRows, LabelsTellTheFileAndItsPosition) {
    OpenFor(FormatName::Wav);
    MakeWav("a.wav", 3000);
    MakeWav("b.wav", 3000);
    AddFiles({"a.wav", "b.wav"});
    EXPECT_EQ(Form().LabelCurrentFile->text(), LanguageLines[20]);
    QStringList names;
    QStringList counts;
    QObject::connect(&Rows(), &AudiotoolRows::StateChanged, Window.get(), [&] {
        if (!names.contains(Form().LabelCurrentFile->text())) names.append(Form().LabelCurrentFile->text());
        if (!counts.contains(Form().LabelCounterFiles->text()))
            counts.append(Form().LabelCounterFiles->text());
    });
    Convert();
    EXPECT_EQ(names, (QStringList{LanguageLines[20] + u"a.wav"_s, LanguageLines[20] + u"b.wav"_s}));
    EXPECT_EQ(counts, (QStringList{u"1 / 2"_s, u"2 / 2"_s}));
}

TEST_F(ConvertingRows, TheRowInHandIsScrolledIntoView) {
    OpenFor(FormatName::Wav);
    AddTracks(60);
    Convert();
    EXPECT_TRUE(List().viewport()->rect().contains(List().visualRect(Rows().index(59, 1))));
    EXPECT_EQ(IconOf(60), u"converted"_s);
    EXPECT_TRUE(Bar(59).isVisible());
    EXPECT_TRUE(Bar(0).isHidden());
}

TEST_F(ConvertingRows, TheBarOfTheRowShowsTheFilesProgress) {
    OpenFor(FormatName::Mp3);
    MakeLongWav("a.wav", 3);
    MakeWav("b.wav");
    AddFiles({"a.wav", "b.wav"});
    std::vector<int> seen;
    std::vector<int> other;
    QObject::connect(&Rows(), &AudiotoolRows::StateChanged, Window.get(), [&](int row) {
        if (row == 1 && (seen.empty() || seen.back() != Bar(0).value())) seen.push_back(Bar(0).value());
        if (row == 1) other.push_back(Bar(1).value());
    });
    Convert();
    EXPECT_GT(seen.size(), 20U);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end() - 2)) << "up to the end of the copy";
    EXPECT_EQ(seen.back(), 100);
    EXPECT_EQ(std::count(other.begin(), other.end(), 0), static_cast<std::ptrdiff_t>(other.size()));
    EXPECT_EQ(Bar(1).value(), 100);
}

TEST_F(ConvertingRows, ANewRunBeginsWithEmptyBars) {
    OpenFor(FormatName::Wav);
    AddTracks(3);
    Convert();
    QStringList icons;
    QObject::connect(&Rows(), &AudiotoolRows::StateChanged, Window.get(), [&](int row) {
        if (row == 1) icons.append(IconOf(3));
    });
    Convert();
    EXPECT_EQ(icons.last(), QString()) << "the third row waits while the first is converted";
    EXPECT_EQ(IconOf(3), u"converted"_s);
}

TEST_F(ConvertingRows, OneRowIsConvertedAlone) {
    OpenFor(FormatName::Ogg);
    MakeWav("a.wav");
    MakeWav("b.wav");
    AddFiles({"a.wav", "b.wav"});
    ConvertNow(2);
    EXPECT_FALSE(Made("out/a.ogg"));
    EXPECT_TRUE(Made("out/b.ogg"));
    EXPECT_EQ(Form().LabelCurrentFile->text(), LanguageLines[20] + u"b.wav"_s);
    EXPECT_EQ(Form().LabelCounterFiles->text(), u"2 / 2"_s);
    EXPECT_EQ(IconOf(1), QString());
    EXPECT_EQ(IconOf(2), u"converted"_s);
    EXPECT_TRUE(Form().CmdConvert->isEnabled());
}

TEST_F(ConvertingRows, WithoutASelectedRowNothingIsConverted) {
    OpenFor(FormatName::Ogg);
    AddTracks(1);
    List().clearSelection();
    Form().ConvertNow->trigger();
    EXPECT_EQ(IconOf(1), QString());
}

TEST_F(ConvertingRows, AnEmptyListConvertsNothing) {
    OpenFor(FormatName::Ogg);
    Convert();
    EXPECT_TRUE(Form().CmdConvert->isEnabled());
    EXPECT_EQ(Form().LabelCounterFiles->text(), QString());
}

TEST_F(ConvertingRows, AFileThatIsGoneFailsWithItsReasonAndTheRunGoesOn) {
    OpenFor(FormatName::Wav);
    MakeWav("a.wav");
    MakeWav("b.wav");
    AddFiles({"a.wav", "b.wav"});
    std::filesystem::remove(Folder.Native("a.wav").toStdString());
    Convert();
    EXPECT_EQ(IconOf(1), u"error"_s);
    EXPECT_EQ(Rows().State(1).Progress, LanguageLines[95]);
    EXPECT_EQ(Bar(0).Text(), LanguageLines[95]);
    EXPECT_EQ(Rows().index(0, AudiotoolRows::ProgressColumn).data(Qt::ToolTipRole).toString(),
              LanguageLines[95]);
    EXPECT_EQ(IconOf(2), u"converted"_s);
    EXPECT_TRUE(Said.empty()) << "only the row says it";
}

TEST_F(ConvertingRows, AnOutputFolderThatCannotBeWrittenFailsTheRow) {
    OpenFor(FormatName::Mp3);
    AddTracks(1);
    Panel().TextOutPath->SetText(Folder.Path("nowhere"));
    Convert();
    EXPECT_EQ(IconOf(1), u"error"_s);
    EXPECT_EQ(Bar(0).Text(), LanguageLines[96]);
}

TEST_F(ConvertingRows, TheInputsAreLockedDuringARun) {
    OpenFor(FormatName::Mp3);
    MakeLongWav("a.wav", 20);
    MakeWav("b.wav");
    AddFiles({"a.wav"});
    EXPECT_FALSE(Form().cmdCancel->isEnabled());
    bool looked = false;
    WhenBarReaches(1, [&] {
        looked = true;
        for (const QAbstractButton* button : std::initializer_list<QAbstractButton*>{
                 Form().Image1, Form().ClearList, Form().CmdConvert, Panel().CmdSelectPath,
                 Panel().CmdFormatParameter, Panel().CheckOutPath}) {
            EXPECT_FALSE(button->isEnabled()) << qPrintable(button->objectName());
        }
        for (const QAction* action : {Form().addfile, Form().MenuDeletefiles, Form().convertmenu,
                                      Form().ConvertNow, Form().Deletefromlist}) {
            EXPECT_FALSE(action->isEnabled()) << qPrintable(action->objectName());
        }
        EXPECT_FALSE(Panel().ComboOutFormat->isEnabled());
        EXPECT_TRUE(Panel().ComboMPCFormat->isEnabled());
        EXPECT_TRUE(Panel().TextOutPath->isEnabled());
        EXPECT_TRUE(Form().cmdCancel->isEnabled());
        EXPECT_FALSE(Drop({"b.wav"}));
        Select(1);
        PressDelete();
        EXPECT_EQ(Rows().Count(), 1);
        Form().cmdCancel->click();
    });
    Convert();
    EXPECT_TRUE(looked);
    EXPECT_TRUE(Form().CmdConvert->isEnabled());
    EXPECT_TRUE(Drop({"b.wav"}));
    EXPECT_EQ(Rows().Count(), 2);
}

TEST_F(ConvertingRows, CancelStopsTheFileInHandAndTheRun) {
    OpenFor(FormatName::Mp3);
    MakeLongWav("a.wav", 20);
    MakeWav("b.wav");
    AddFiles({"a.wav", "b.wav"});
    QElapsedTimer sinceClick;
    int farthest = 0;  // percent, after the click
    QObject::connect(&Rows(), &AudiotoolRows::StateChanged, Window.get(), [&](int row) {
        if (sinceClick.isValid() && row == 1) farthest = std::max(farthest, Rows().State(row).Percent);
    });
    WhenBarReaches(5, [&] {
        sinceClick.start();
        Click(Form().cmdCancel);
    });
    Convert();
    ASSERT_TRUE(sinceClick.isValid());
    EXPECT_LT(farthest, 60) << "the file goes on to its end where nobody hears";
    if (LooksAtMilliseconds()) {
        EXPECT_LT(sinceClick.elapsed(), 500);
    }
    EXPECT_EQ(IconOf(1), u"error"_s);
    EXPECT_EQ(Bar(0).Text(), LanguageLines[96]);
    EXPECT_EQ(IconOf(2), QString());
    EXPECT_FALSE(Made("out/b.mp3"));
    EXPECT_EQ(Window->State().KillFlag(), 1);
    EXPECT_FALSE(Window->State().Busy());
}

TEST_F(ConvertingRows, TheEscapeKeyCancels) {
    OpenFor(FormatName::Mp3);
    MakeLongWav("a.wav", 20);
    AddFiles({"a.wav"});
    Window->LanguageItems().Item(1)->trigger();
    WhenBarReaches(1, [this] { QTest::keyClick(Window->windowHandle(), Qt::Key_Escape); });
    Convert();
    EXPECT_EQ(IconOf(1), u"error"_s);
}

TEST_F(ConvertingRows, ARowThatIsNotThereFailsAndLocksNothing) {
    OpenFor(FormatName::Mp3);
    AddTracks(1);
    EXPECT_THROW(Window->ConvertRow(2), Failure);
    EXPECT_TRUE(Form().CmdConvert->isEnabled());
}

TEST_F(ConvertingRows, CancelWithoutARunDoesNothing) {
    OpenFor(FormatName::Mp3);
    Form().cmdCancel->setEnabled(true);
    Form().cmdCancel->click();
    EXPECT_FALSE(Window->State().CancelAll());
    EXPECT_EQ(Window->State().KillFlag(), 0);
}

TEST_F(ConvertingRows, CancelDuringTheDecodingOfAnApeFileLeavesNoOutput) {
    OpenFor(FormatName::Wav);
    MakeWav("long.wav", 240000);
    RunTool({"jmac", "c2", Folder.Native("long.wav"), Folder.Native("a.ape")});
    MakeWav("b.wav");
    AddFiles({"a.ape", "b.wav"});
    When([this] { return Window->State().Busy(); }, [this] { Form().cmdCancel->click(); });
    Convert();
    EXPECT_FALSE(Made("out/a.wav"));
    EXPECT_FALSE(Made("out/b.wav"));
    EXPECT_EQ(IconOf(2), QString());
    EXPECT_FALSE(Window->State().Busy());
    EXPECT_TRUE(Form().CmdConvert->isEnabled()) << "the window is free again";
}

TEST_F(ConvertingRows, CancelDuringTheDecodingOfAMusepackFileLetsItComeToItsEnd) {
    OpenFor(FormatName::Wav);
    MakeWav("long.wav", 240000);
    RunTool({"mpcenc", "--silent", "--overwrite", Folder.Native("long.wav"), Folder.Native("a.mpc")});
    AddFiles({"a.mpc"});
    int highest = 0;
    QObject::connect(&Rows(), &AudiotoolRows::StateChanged, Window.get(), [&](int row) {
        if (Window->State().CancelAll()) highest = std::max(highest, Rows().State(row).Percent);
    });
    WhenBarReaches(1, [this] { Form().cmdCancel->click(); });
    Convert();
    EXPECT_GE(highest, 99);
    EXPECT_FALSE(Made("out/a.wav")) << "but nothing is made of it";
    EXPECT_FALSE(Window->State().Busy());
    EXPECT_TRUE(Form().CmdConvert->isEnabled());
}

TEST_F(ConvertingRows, ARunHasTheTracksOfAFullRunAndARowThoseOfASingleConversion) {
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    OpenFor(FormatName::Mp3);
    Make("a.wma", 2000, {"-metadata", "title=Tide", "-metadata", "artist=Pier", "-metadata", "track=5"});
    AddFiles({"a.wma"});
    Convert();
    ConvertNow(1);
    const int whole = TagOf("out/a.mp3", "track").toInt();
    const int single = TagOf("out/a(1).mp3", "track").toInt();
    EXPECT_EQ(whole, single + 1);
}

TEST_F(ConvertingRows, AnUntaggedApeFileHasAnotherYearInARunThanAlone) {
    OpenFor(FormatName::Mp3);
    RunTool({"jmac", "c2", MakeWav("made/in.wav", 3000), Folder.Native("a.ape")});
    RunTool({"mpcenc", "--silent", "--overwrite", MakeWav("made/in.wav", 3000), Folder.Native("b.mpc")});
    AddFiles({"a.ape", "b.mpc"});
    Convert();
    ConvertNow(1);
    ConvertNow(2);
    EXPECT_EQ(TagOf("out/a.mp3", "date").left(4), "2010");
    EXPECT_EQ(TagOf("out/b.mp3", "date").left(4), "2009");
    EXPECT_EQ(TagOf("out/a(1).mp3", "date").left(4), "2008");
    EXPECT_EQ(TagOf("out/b(1).mp3", "date").left(4), "2008");
}

TEST_F(ConvertingRows, TheChosenQualityReachesTheMusepackEncoder) {
    OpenFor(FormatName::Mpc);
    Folder.MakeFile("a.wav", WavOf(MakeNoise(44100, 2, 441000), WavKind::Signed16));
    AddFiles({"a.wav"});
    Panel().ComboMPCFormat->SelectPlace(2);
    Convert();
    Panel().ComboMPCFormat->SelectPlace(9);
    Convert();
    const qsizetype low = ContentOf(Folder.Native("out/a.mpc")).size();
    const qsizetype high = ContentOf(Folder.Native("out/a(1).mpc")).size();
    EXPECT_GT(low, 10000);
    EXPECT_GT(high, low * 3 / 2);
}

TEST_F(ConvertingRows, AWmaStageThatFailsIsToldInABoxOfAnotherTitle) {
    WriteIniValue(SettingsFile, u"WMA"_s, u"WMASUPPORT"_s, u"True"_s);
    OpenFor(FormatName::Wma);
    Make("a.mp3", 2000);
    MakeWav("b.wav", 2000);
    AddFiles({"a.mp3", "b.wav"});
    Said.clear();
    // The file turns into another between the check and the encoding, while its tags are read. The event loop
    // runs there only where it has not run for a moment.
    QObject::connect(&Rows(), &AudiotoolRows::StateChanged, Window.get(), [](int row) {
        if (row == 1) QTest::qSleep(20);
    });
    When([this] { return Window->State().Busy(); },
         [this] { Folder.MakeFile("a.mp3", "no music any more"); });
    Convert();
    ASSERT_EQ(Said.size(), 1U);
    EXPECT_EQ(Said[0].Text, LanguageLines[46]);
    EXPECT_EQ(Said[0].Title, u"Sonmira Cutter"_s);
    EXPECT_EQ(IconOf(1), u"error"_s);
    EXPECT_EQ(IconOf(2), u"converted"_s);
}

TEST_F(ConvertingRows, FieldsOfATagPageAreHeldWithoutAScreen) {
    OpenFor(FormatName::Flac);
    MakeWav("a.wav", 2500);
    AddFiles({"a.wav"});
    Convert();
    EXPECT_EQ(TagOf("out/a.flac", "artist"), "") << "an empty genre is no number, so no tag is written";
    // An AAC file with a block at its end fills them, and they stay.
    Make("b.aac", 3000);
    QByteArray block(128, '\0');
    block.replace(0, 3, "TAG").replace(33, 4, "Pier").replace(127, 1, QByteArray(1, 17));
    Folder.MakeFile("b.aac", ContentOf(Folder.Native("b.aac")) + block.left(128));
    AddFiles({"b.aac"});
    ConvertNow(2);
    ConvertNow(1);
    EXPECT_EQ(TagOf("out/a(1).flac", "artist"), "Pier");
}

TEST_F(ConvertingRows, AFileWhoseNameHasNoDotEndsTheRunAndLocksTheWindow) {
    OpenFor(FormatName::Wav);
    MakeWav("songwav");
    MakeWav("b.wav");
    AddFiles({"songwav", "b.wav"});
    Convert();
    EXPECT_EQ(IconOf(1), u"conversion"_s);
    EXPECT_EQ(IconOf(2), QString());
    EXPECT_TRUE(Window->State().Busy());
    EXPECT_FALSE(Form().CmdConvert->isEnabled());
    EXPECT_FALSE(Window->close());
}

TEST_F(ConvertingRows, AFolderTypedDuringARunHoldsForTheNextFile) {
    OpenFor(FormatName::Wav);
    Folder.MakeFolder("other");
    MakeLongWav("a.wav", 2);
    MakeWav("b.wav");
    AddFiles({"a.wav", "b.wav"});
    WhenBarReaches(1, [this] { Panel().TextOutPath->SetText(Folder.Path("other")); });
    Convert();
    EXPECT_TRUE(Made("out/a.wav"));
    EXPECT_TRUE(Made("other/b.wav"));
}

}  // namespace
}  // namespace Sonmira

#include "MadeSources.h"
#include "RealEngine.h"
#include "engine/SelectionDriver.h"
#include "engine/StopCommands.h"
#include "library/Removal.h"
#include "platform/Paths.h"
#include "platform/TemporaryFolder.h"
#include "support/Tool.h"

#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// What real files leave on disk besides their outputs.
class RealEdge : public RealEngine {
protected:
    void TakeSource(const QByteArray& name, int seconds = 3) {
        Folder.MakeFile("in.wav",
                        WavOf(MakeSweep(44100, 2, std::int64_t{seconds} * 44100), WavKind::Signed16));
        MakeSource(Folder.Native("in.wav"), Folder.Native(name));
        TakeFile(Folder.Path(name));
    }
    static QByteArray Temporary(const QString& name) {
        return ToNative(WithBackslash(TemporaryFolder()) + name);
    }
    static QByteArray TagBy(const QByteArray& file, const QByteArray& name) {
        return RunTool({"ffprobe", "-v", "error", "-show_entries", "format_tags=" + name, "-of",
                        "default=nw=1:nk=1", file})
            .Output.trimmed();
    }
    // Acts once, at the first yield that `when` is true at.
    void AtFirst(const std::function<bool()>& when, const std::function<void()>& act) {
        Acted = false;
        Host.AtYield = [this, when, act] {
            if (Acted || !when()) return;
            Acted = true;
            act();
        };
    }
    static QByteArray Trashed(const QByteArray& name) {
        return qgetenv("XDG_DATA_HOME") + "/Trash/files/" + name;
    }

    bool Acted = false;
};

TEST_F(RealEdge, AnOlderTemporaryWavOfTheSameNameIsOverwritten) {
    TakeSource("song.flac");
    std::ofstream(Temporary(u"song.wav"_s).toStdString()) << std::string(2'000'000, 'x');
    Convert(FormatName::Wav);
    const QByteArray sound = ContentOf(Folder.Native("in.wav")).mid(44);
    EXPECT_EQ(ContentOf(Folder.Native("out/song.wav")).indexOf(sound), 44);
    EXPECT_FALSE(NativeExists(Temporary(u"song.wav"_s)));
}

TEST_F(RealEdge, ALinkInTheTemporaryPlaceGivesWayAndWhatItNamesStaysWhole) {
    TakeSource("song.flac");
    Folder.MakeFile("other.wav", "another song");
    for (const char* target : {"other.wav", "nowhere.wav"}) {
        std::filesystem::create_symlink(Folder.Native(target).toStdString(),
                                        Temporary(u"song.wav"_s).toStdString());
        Convert(FormatName::Wav);
        const QByteArray sound = ContentOf(Folder.Native("in.wav")).mid(44);
        EXPECT_EQ(ContentOf(Folder.Native("out/song.wav")).indexOf(sound), 44) << target;
        EXPECT_EQ(ContentOf(Folder.Native("other.wav")), "another song");
        std::filesystem::remove_all(Folder.Native("out").toStdString());
        Folder.MakeFolder("out");
    }
    EXPECT_FALSE(NativeExists(Folder.Native("nowhere.wav")));
}

TEST_F(RealEdge, TheTemporaryWavOfAnMp3OnItsWayToFlacStays) {
    TakeSource("song.mp3");
    Convert(FormatName::Flac);
    const ToolResult tested = RunTool({"flac", "-t", "-s", Folder.Native("out/song.flac")});
    EXPECT_EQ(tested.ExitCode, 0) << tested.Errors.constData();
    EXPECT_GT(ContentOf(Temporary(u"song.wav"_s)).size(), 3 * 44100 * 4);
}

TEST_F(RealEdge, TheTemporaryWavOfADecoderGoesOnEveryRoute) {
    for (const char* ending : {"flac", "ape", "mpc", "aac"}) {
        TakeSource(QByteArray("song.") + ending);
        for (const OutputFormat& format : OutputFormats) {
            Convert(format.Name);
            EXPECT_FALSE(NativeExists(Temporary(u"song.wav"_s))) << ending << " to " << format.Ending;
        }
    }
}

TEST_F(RealEdge, AFileStoppedInItsDecoderGoesToTheTrashThoughThereIsNoOutput) {
    TakeSource("stopped.flac", 30);
    const QByteArray source = ContentOf(Folder.Native("stopped.flac"));
    Host.RemoveOriginal = true;
    AtFirst([this] { return Host.Progress > 0; }, [this] { CancelByMenu(Run, Items, Codecs.Parts()); });
    Convert(FormatName::Mp3);
    EXPECT_EQ(Row().Icon, ConvertedIcon);
    EXPECT_FALSE(NativeExists(Folder.Native("out/stopped.mp3")));
    EXPECT_FALSE(NativeExists(Folder.Native("stopped.flac")));
    EXPECT_EQ(ContentOf(Trashed("stopped.flac")), source);
}

// Skipped while it decodes, a file of any kind is one that failed: its source stays.
TEST_F(RealEdge, AFileSkippedInItsDecoderIsAnErrorAndItsSourceStays) {
    Host.RemoveOriginal = true;
    for (const char* ending : {"aac", "flac", "ape", "mpc"}) {
        const QByteArray name = QByteArray("skipped.") + ending;
        TakeSource(name, 30);
        for (const QStringView format :
             {FormatName::Mp3, FormatName::Ogg, FormatName::Wav, FormatName::Wma}) {
            AtFirst([this] { return Host.Progress > 0; }, [this] { SkipFile(Run, Codecs.Parts()); });
            Convert(format);
            EXPECT_EQ(Row().Icon, ErrorIcon) << ending << " to " << format.toString().toStdString();
            EXPECT_EQ(Row().Progress, u"line 96"_s);
            EXPECT_TRUE(NativeExists(Folder.Native(name))) << ending;
        }
    }
}

TEST_F(RealEdge, ACancelInTheAacDecoderFinishesTheFileAsConverted) {
    TakeSource("song.aac", 30);
    AtFirst([this] { return Host.Progress > 0; }, [this] { CancelByMenu(Run, Items, Codecs.Parts()); });
    Convert(FormatName::Mp3);
    EXPECT_EQ(Row().Icon, ConvertedIcon);
    EXPECT_EQ(Row().Progress, u"0 %"_s);
    EXPECT_FALSE(NativeExists(Folder.Native("out/song.mp3")));
}

TEST_F(RealEdge, AClickWhileTagsAreReadStopsTheDecoderThatStartsBehindIt) {
    TakeSource("song.mpc", 60);
    int yields = 0;
    int bar = 0;
    Host.AtYield = [&] {
        if (++yields == 1) CancelByToolbar(Run, Items, Codecs.Parts());
        bar = std::max(bar, Host.Progress);
    };
    Convert(FormatName::Wav);
    EXPECT_LT(bar, 50) << "the decoder goes on to its end";
    EXPECT_EQ(Row().Icon, ConvertedIcon);
    EXPECT_FALSE(NativeExists(Folder.Native("out/song.wav")));
}

TEST_F(RealEdge, TheTrackOfAWmaKeepsItsNumberInAFullRunAndLosesOneInASelection) {
    Folder.MakeFile("in.wav", WavOf(MakeSweep(44100, 2, 2L * 44100), WavKind::Signed16));
    ASSERT_EQ(RunTool({"ffmpeg", "-v", "error", "-i", Folder.Native("in.wav"), "-metadata", "track=5",
                       "-metadata", "title=Title", "-c:a", "wmav2", Folder.Native("song.wma")})
                  .ExitCode,
              0);
    TakeFile(Folder.Path("song.wma"));
    Convert(FormatName::Wma);
    EXPECT_EQ(TagBy(Folder.Native("out/song.wma"), "track"), "5");
    SetFormat(FormatName::Wma);
    SelectionDriver(Run, Host, Codecs.Parts(), Items).ConvertNode(Folder.Path("song.wma"));
    EXPECT_EQ(TagBy(Folder.Native("out/song(1).wma"), "track"), "4");
}

TEST_F(RealEdge, TheOtherEncodersWithoutAnOutputFolderFinishAsConverted) {
    TakeSource("song.wav");
    Host.OutputFolder = Folder.Path("gone");
    for (const QStringView format : {FormatName::Ape, FormatName::Flac, FormatName::Mpc}) {
        Convert(format);
        EXPECT_EQ(Row().Icon, ConvertedIcon) << "nobody reads their results";
        EXPECT_TRUE(Host.ControlsEnabled);
    }
    EXPECT_FALSE(NativeExists(Folder.Native("gone")));
}

TEST_F(RealEdge, AnOutputIsNeverWrittenThroughALink) {
    TakeSource("song.wav");
    const QByteArray precious = Folder.Native("precious");
    for (const OutputFormat& format : OutputFormats) {
        const std::string link = Folder.Native(QByteArray("out/song.") + format.Ending).toStdString();
        std::filesystem::create_symlink(precious.toStdString(), link);  // to what is not there
        Convert(format.Name);
        EXPECT_FALSE(NativeExists(precious)) << format.Ending;
    }
}

// The name was free when it was looked for; another program may take it while the sound is copied.
TEST_F(RealEdge, AnOutputWhoseNameIsTakenMeanwhileGetsTheNextOne) {
    for (const QByteArray ending : {"ape", "flac", "mpc"}) {
        TakeSource("song.mp3");
        const QByteArray taken = Folder.Native("out/song." + ending);
        AtFirst([this] { return Host.Progress > 0; },
                [&] { std::ofstream(taken.toStdString()) << "of another program"; });
        for (const OutputFormat& format : OutputFormats) {
            if (ending == format.Ending) Convert(format.Name);
        }
        EXPECT_EQ(Row().Icon, ConvertedIcon);
        EXPECT_EQ(ContentOf(taken), "of another program");
        const ToolResult decoded = RunTool(
            {"ffmpeg", "-v", "error", "-i", Folder.Native("out/song(1)." + ending), "-f", "s16le", "-"});
        EXPECT_NEAR(static_cast<double>(decoded.Output.size()) / 4, 3 * 44100, 4000) << ending.constData();
    }
}

TEST_F(RealEdge, AFolderInTheOutputsPlaceIsAnError) {
    TakeSource("song.wav");
    Folder.MakeFolder("out/song.mp3");
    Convert(FormatName::Mp3);
    EXPECT_EQ(Row().Icon, ErrorIcon);
    EXPECT_FALSE(NativeExists(Folder.Native("out/song(1).mp3")));
}

TEST_F(RealEdge, AnOutputThatIsNeverBegunLeavesNoEmptyFile) {
    TakeFile(Folder.MakeFile("song.wav", "no sound at all"));
    for (const OutputFormat& format : OutputFormats) {
        Convert(format.Name);
        EXPECT_FALSE(NativeExists(Folder.Native(QByteArray("out/song.") + format.Ending))) << format.Ending;
    }
}

TEST_F(RealEdge, AFolderRemovedWhileItsFileIsDecodedStillGetsItsOutput) {
    Folder.MakeFile("Music/0.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    Folder.MakeFolder("Music/A");
    TakeSource("Music/A/a.flac", 10);
    Items = {};
    AddMusic();
    AtFirst([this] { return Host.Rows.size() == 2 && Host.Progress > 0; },
            [this] { RemoveFromCollection(Items, Host, Folder.Path("Music/A")); });
    Convert(FormatName::Wav);
    EXPECT_EQ(Row(2).Icon, ConvertedIcon);
    EXPECT_TRUE(NativeExists(Folder.Native("out/Music/A/a.wav")));
    EXPECT_FALSE(NativeExists(Folder.Native("out/Music/0(1).wav")));
    EXPECT_TRUE(Host.ControlsEnabled);
}

// What a decoder made goes; what the user listed stays, though the encoder takes both in the same way.
TEST_F(RealEdge, AWavBehindAFileWithADecoderOfItsOwnKeepsItsSource) {
    const QByteArray wav = WavOf(MakeSweep(44100, 2, 3L * 44100), WavKind::Signed16);
    Folder.MakeFile("Music/b.wav", wav);
    MakeSource(Folder.Native("Music/b.wav"), Folder.Native("Music/a.flac"));
    AddMusic();
    for (const OutputFormat& format : OutputFormats) {
        Convert(format.Name);
        ASSERT_EQ(Host.Rows.size(), 2U);
        EXPECT_EQ(Row(1).Name, u"a.flac"_s);
        EXPECT_EQ(Row(2).Icon, ConvertedIcon);
        EXPECT_EQ(ContentOf(Folder.Native("Music/b.wav")), wav) << format.Ending;
    }
}

}  // namespace
}  // namespace Sonmira

#include "RealEngine.h"
#include "engine/StopCommands.h"
#include "support/Tool.h"

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// Whole runs with the real components, judged by other programs' decoders.
class RealRun : public RealEngine {
protected:
    static constexpr std::int64_t Frames = 100003;  // a prime, so that no frame size divides it

    // Frames that another program decodes from a file below the output folder.
    std::int64_t FramesBy(const QList<QByteArray>& decoder) {
        const ToolResult decoded = RunTool(decoder);
        EXPECT_EQ(decoded.ExitCode, 0) << decoded.Errors.constData();
        const QByteArray wav = ContentOf(Folder.Native("decoded.wav"));
        const qsizetype data = wav.indexOf("data");
        return (wav.size() - data - 8) / 4;
    }
};

TEST_F(RealRun, WavToMp3IsAsLongAsTheSourceByItsLameTag) {
    Folder.MakeFile("Music/a.wav", WavOf(MakeTone(44100, 2, Frames, 440), WavKind::Signed16));
    AddMusic();
    Convert(u"Mp3"_s);
    EXPECT_EQ(FramesBy({"lame", "--quiet", "--decode", Folder.Native("out/Music/a.mp3"),
                        Folder.Native("decoded.wav")}),
              Frames);
}

TEST_F(RealRun, WavToOggIsAsLongAsTheSource) {
    Folder.MakeFile("Music/a.wav", WavOf(MakeTone(44100, 2, Frames, 440), WavKind::Signed16));
    AddMusic();
    Convert(u"Ogg"_s);
    EXPECT_EQ(
        FramesBy({"oggdec", "-Q", "-o", Folder.Native("decoded.wav"), Folder.Native("out/Music/a.ogg")}),
        Frames);
}

TEST_F(RealRun, WavToTheSameWavKeepsEverySample) {
    const TestSound sound = MakeNoise(44100, 2, Frames);
    Folder.MakeFile("Music/a.wav", WavOf(sound, WavKind::Signed16));
    AddMusic();
    Convert(u"Wav"_s);
    const QByteArray pcm = PcmOf(sound, WavKind::Signed16);
    EXPECT_EQ(ContentOf(Folder.Native("out/Music/a.wav")).indexOf(pcm), 44);
}

TEST_F(RealRun, FlacComesInToo) {
    Folder.MakeFile("a.wav", WavOf(MakeTone(44100, 2, Frames, 440), WavKind::Signed16));
    Folder.MakeFolder("Music");
    ASSERT_EQ(RunTool({"flac", "-s", "-o", Folder.Native("Music/a.flac"), Folder.Native("a.wav")}).ExitCode,
              0);
    AddMusic();
    Convert(u"Wav"_s);
    EXPECT_EQ(ContentOf(Folder.Native("out/Music/a.wav")).indexOf(ContentOf(Folder.Native("a.wav")).mid(44)),
              44);
}

TEST_F(RealRun, ADamagedFileGetsAnErrorRowAndTheRunGoesOn) {
    Folder.MakeFile("Music/a.mp3", QByteArray(5000, '\x5A'));
    Folder.MakeFile("Music/b.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    Folder.MakeFile("Music/c.flac", "fLaC");
    Folder.MakeFile("Music/d.ogg", "");
    AddMusic();
    Convert(u"Mp3"_s);
    ASSERT_EQ(Host.Rows.size(), 4U);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_EQ(Host.Rows[0].Progress, u"line 99"_s);
    EXPECT_EQ(Host.Rows[1].Icon, u"converted"_s);
    EXPECT_EQ(Host.Rows[2].Icon, u"error"_s);
    EXPECT_EQ(Host.Rows[3].Icon, u"error"_s);
    EXPECT_TRUE(Host.ControlsEnabled);
}

TEST_F(RealRun, AStreamThatLostSoundKeepsItsSource) {
    const QByteArray wav = WavOf(MakeNoise(44100, 2, 3 * 44100), WavKind::Signed16);
    Folder.MakeFile("Music/cut.wav", wav.first(wav.size() / 3));
    AddMusic();
    Host.RemoveOriginal = true;
    Convert(u"Wav"_s);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_TRUE(NativeExists(Folder.Native("Music/cut.wav")));
}

// Nobody reads the result of the FLAC decoder; the trash is what keeps such a source.
TEST_F(RealRun, AFlacThatLostSoundIsAnErrorThatKeepsItsSourceAndTheSoundThatIsThere) {
    Folder.MakeFolder("Music");
    Folder.MakeFile("whole.wav", WavOf(MakeNoise(44100, 2, 3 * 44100), WavKind::Signed16));
    ASSERT_EQ(
        RunTool({"flac", "-s", "-o", Folder.Native("Music/hole.flac"), Folder.Native("whole.wav")}).ExitCode,
        0);
    QByteArray flac = ContentOf(Folder.Native("Music/hole.flac"));
    flac.replace(flac.size() / 2, 5000, QByteArray(5000, '\x55'));
    Folder.MakeFile("Music/hole.flac", flac);
    AddMusic();
    Host.RemoveOriginal = true;
    Convert(u"Wav"_s);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_EQ(Host.Rows[0].Progress, u"line 96"_s);
    EXPECT_EQ(ContentOf(Folder.Native("Music/hole.flac")), flac);
    EXPECT_GT(ContentOf(Folder.Native("out/Music/hole.wav")).size(), 44) << "what could be read is there";
}

TEST_F(RealRun, ATextThatNamesAPartOfAnApeIsConvertedAndRemovedWithoutTheApe) {
    constexpr int Second = 44100;
    const TestSound disc = MakeNoise(Second, 2, 6 * Second);
    Folder.MakeFile("disc.wav", WavOf(disc, WavKind::Signed16));
    CompressFile(Folder.Path("disc.wav"), Folder.Path("disc.ape"), 2000, {}, 0);
    const QByteArray image = ContentOf(Folder.Native("disc.ape"));
    Folder.MakeFile("Music/song.apl",
                    "[Monkey's Audio Image Link File]\nImage File=..\\disc.ape\n"
                    "Start Block=44100\nFinish Block=176400\n" +
                        QByteArray("TAGSong").leftJustified(93, '\0') +
                        QByteArray("1999").leftJustified(35, '\0'));
    Folder.MakeFile("Music/gone.apl", "[Monkey's Audio Image Link File]\nImage File=gone.ape\n");
    AddMusic();
    Host.RemoveOriginal = true;
    Convert(FormatName::Wav);
    ASSERT_EQ(Host.Rows.size(), 2U);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_EQ(Host.Rows[0].Progress, u"line 99"_s);
    EXPECT_EQ(Host.Rows[1].Icon, u"converted"_s);
    TestSound song = disc;
    song.Samples = {disc.Samples.begin() + 2 * Second, disc.Samples.begin() + 8 * Second};
    EXPECT_TRUE(ContentOf(Folder.Native("out/Music/song.wav")).contains(PcmOf(song, WavKind::Signed16)));
    EXPECT_EQ(Run.Tag().Title.left(4), u"Song"_s);
    EXPECT_FALSE(NativeExists(Folder.Native("Music/song.apl")));
    EXPECT_TRUE(NativeExists(Folder.Native("Music/gone.apl")));
    EXPECT_TRUE(ContentOf(Folder.Native("disc.ape")) == image);
}

TEST_F(RealRun, AnEmptyWavIsConvertedToAnEmptyOne) {
    Folder.MakeFile("Music/a.wav", WavOf(MakeSilence(44100, 2, 0), WavKind::Signed16));
    AddMusic();
    Convert(u"Wav"_s);
    EXPECT_EQ(Host.Rows[0].Icon, u"converted"_s);
    EXPECT_EQ(Host.Rows[0].Progress, u"100 %"_s);
    EXPECT_TRUE(NativeExists(Folder.Native("out/Music/a.wav")));
}

TEST_F(RealRun, OddNamesAreConvertedAndNamedRight) {
    const std::vector<QByteArray> stems = {"a b",
                                           "M\xC3\xBC\xC3\x9F",
                                           "\xE6\x97\xA5\xE6\x9C\xAC",
                                           "\xF0\x9F\x8E\xB5",
                                           "x\\y",
                                           "two\nlines",
                                           "raw\xE9\xFF",
                                           "-dash",
                                           "100%s;",
                                           "http:song"};
    const QByteArray wav = WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16);
    for (const QByteArray& stem : stems) Folder.MakeFile("Music/" + stem + ".wav", wav);
    AddMusic();
    Convert(u"Ogg"_s);
    EXPECT_EQ(Host.Count, u"10 / 10"_s);
    for (const QByteArray& stem : stems) {
        EXPECT_TRUE(ContentOf(Folder.Native("out/Music/" + stem + ".ogg")).startsWith("OggS"))
            << stem.constData();
    }
}

TEST_F(RealRun, TheSourceIsNeverOverwrittenByItsOwnOutput) {
    const QByteArray wav = WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16);
    Folder.MakeFile("Music/song.wav", wav);
    AddMusic();
    Host.SaveBesideOriginal = true;
    Convert(u"Wav"_s);
    EXPECT_EQ(ContentOf(Folder.Native("Music/song.wav")), wav);
    EXPECT_TRUE(NativeExists(Folder.Native("Music/song(1).wav")));
}

TEST_F(RealRun, AnOutputFolderThatIsGoneGivesErrorRowsAndKeepsTheSources) {
    Folder.MakeFile("Music/a.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    AddMusic();
    Host.OutputFolder = Folder.Path("gone");
    Host.RemoveOriginal = true;
    Convert(u"Mp3"_s);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_TRUE(NativeExists(Folder.Native("Music/a.wav")));
}

TEST_F(RealRun, AStoppedFileLeavesItsPartialOutput) {
    Folder.MakeFile("Music/a.wav", WavOf(MakeTone(44100, 2, 30 * 44100, 440), WavKind::Signed16));
    Folder.MakeFile("Music/b.wav", WavOf(MakeTone(44100, 2, 4410, 440), WavKind::Signed16));
    AddMusic();
    Host.AtYield = [this] {
        if (Host.Progress >= 10) CancelByMenu(Run, Items, Codecs.Parts());
    };
    Convert(u"Wav"_s);
    ASSERT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Host.Rows[0].Icon, u"error"_s);
    EXPECT_EQ(Host.Rows[0].Progress, u"line 96"_s);
    EXPECT_GT(ContentOf(Folder.Native("out/Music/a.wav")).size(), 44);
}

}  // namespace
}  // namespace Sonmira

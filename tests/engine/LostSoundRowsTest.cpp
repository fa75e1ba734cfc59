#include "MadeSources.h"
#include "RealEngine.h"
#include "support/Tool.h"

#include <sys/resource.h>

#include <csignal>
#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

constexpr int Seconds = 10;

// Sources that have lost sound, on their way to every format.
class LostSoundRow : public RealEngine, public ::testing::WithParamInterface<const char*> {
protected:
    QByteArray Name() const { return QByteArray("song.") + GetParam(); }
    bool Is(QByteArrayView ending) const { return ending == GetParam(); }

    QByteArray Made() const {
        Folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, Seconds * 44100L, 0.3), WavKind::Signed16));
        MakeSource(Folder.Native("in.wav"), Folder.Native(Name()));
        return ContentOf(Folder.Native(Name()));
    }
    // What is wrong with it in the way of its format.
    QByteArray Damaged() const {
        QByteArray made = Made();
        const qsizetype middle = made.size() / 2;
        if (Is("ape")) made.replace(middle, 20, QByteArray(20, '\x55'));
        if (Is("mpc")) made.replace(made.indexOf("AP", middle), 20, QByteArray(20, '\xFF'));
        if (Is("ogg")) made.remove(made.size() * 3 / 10, made.size() * 4 / 10);
        return Is("flac") || Is("mp3") || Is("wma") ? made.first(middle) : made;
    }
    double SecondsOfOutput(const QByteArray& ending) const {
        const ToolResult raw = RunTool({"ffmpeg", "-v", "error", "-i", Folder.Native("out/song." + ending),
                                        "-f", "s16le", "-ac", "2", "-ar", "44100", "-"});
        return static_cast<double>(raw.Output.size()) / 4 / 44100;
    }
};

TEST_P(LostSoundRow, IsAnErrorWhoseSourceStaysAndWhoseOutputHoldsWhatThereWas) {
    const QByteArray damaged = Damaged();
    TakeFile(Folder.MakeFile(Name(), damaged));
    Host.RemoveOriginal = true;
    for (const OutputFormat& format : OutputFormats) {
        if (format.FromWav) continue;
        SCOPED_TRACE(format.Ending);
        Convert(format.Name);
        ASSERT_EQ(Host.Rows.size(), 1U);
        EXPECT_EQ(Row().Icon, ErrorIcon);
        EXPECT_EQ(Row().Progress, u"line 96"_s);
        EXPECT_EQ(ContentOf(Folder.Native(Name())), damaged);
        EXPECT_GT(SecondsOfOutput(format.Ending), 2.5);
    }
}

class DecodedLostSoundRow : public LostSoundRow {};

// Nobody asks these encoders how it went.
TEST_P(DecodedLostSoundRow, IsConvertedAsFarAsItGoesByTheEncodersThatReadAWav) {
    TakeFile(Folder.MakeFile(Name(), Damaged()));
    for (const OutputFormat& format : OutputFormats) {
        if (!format.FromWav) continue;
        SCOPED_TRACE(format.Ending);
        Convert(format.Name);
        EXPECT_EQ(Row().Icon, ConvertedIcon);
        EXPECT_GT(SecondsOfOutput(format.Ending), 2.5);
        std::filesystem::remove(Folder.Native(QByteArray("out/song.") + format.Ending).toStdString());
    }
}

INSTANTIATE_TEST_SUITE_P(Of, LostSoundRow, ::testing::Values("flac", "ape", "mpc", "ogg", "mp3", "wma"),
                         [](const auto& ending) { return std::string(ending.param); });

INSTANTIATE_TEST_SUITE_P(Of, DecodedLostSoundRow, ::testing::Values("flac", "ape", "mpc"),
                         [](const auto& ending) { return std::string(ending.param); });

// The WAV on the way does not fit, the output would. The limit of one file stands for the disk.
class FullTemporaryFolder : public RealEngine, public ::testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        const QByteArray name = QByteArray("song.") + GetParam();
        Folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, Seconds * 44100L, 0.3), WavKind::Signed16));
        MakeSource(Folder.Native("in.wav"), Folder.Native(name));
        TakeFile(Folder.Path(name));
        ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &Usual), 0);
        Handler = std::signal(SIGXFSZ, SIG_IGN);
        rlimit full = Usual;
        full.rlim_cur = 1'000'000;
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &full), 0);
    }
    void TearDown() override {
        setrlimit(RLIMIT_FSIZE, &Usual);
        std::signal(SIGXFSZ, Handler);
    }

    rlimit Usual = {};
    void (*Handler)(int) = SIG_DFL;
};

TEST_P(FullTemporaryFolder, IsAnErrorWhoseSourceStays) {
    Host.RemoveOriginal = true;
    Convert(FormatName::Mp3);
    ASSERT_EQ(Host.Rows.size(), 1U);
    EXPECT_EQ(Row().Icon, ErrorIcon);
    EXPECT_EQ(Row().Progress, u"line 96"_s);
    EXPECT_TRUE(NativeExists(Folder.Native(QByteArray("song.") + GetParam())));
    EXPECT_GT(ContentOf(Folder.Native("out/song.mp3")).size(), 50'000) << "five seconds or so";
}

INSTANTIATE_TEST_SUITE_P(Of, FullTemporaryFolder, ::testing::Values("flac", "ape", "mpc", "alac", "aac"),
                         [](const auto& ending) { return std::string(ending.param); });

}  // namespace
}  // namespace Sonmira

#include "codecs/Conversion.h"
#include "codecs/MpcEncoder.h"
#include "codecs/WavDecoders.h"
#include "platform/Failure.h"
#include "support/Timing.h"
#include "support/Tool.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdlib>

namespace Sonmira {
namespace {

bool HasNoChild() {
    return ::waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
}

constexpr int LongWavSeconds = 90;

QString LongWav(const TestFolder& folder) {
    return folder.MakeFile("long.wav",
                           WavOf(MakeNoise(44100, 2, LongWavSeconds * 44100LL), WavKind::Signed16));
}

// Puts a program of our own in the encoder's place.
void PutInPlaceOfTheEncoder(const TestFolder& folder, const QByteArray& script) {
    folder.MakeFile("bin/mpcenc", "#!/bin/sh\n" + script + "\n");
    ASSERT_EQ(chmod(folder.Native("bin/mpcenc").constData(), 0700), 0);
    setenv("PATH", (folder.Native("bin") + ":/usr/bin:/bin").constData(), 1);
}

class RestoredPath : public ::testing::Test {
public:
    ~RestoredPath() override { setenv("PATH", Path.constData(), 1); }

private:
    QByteArray Path = qgetenv("PATH");
};

using MpcEncoderTest = RestoredPath;

TEST_F(MpcEncoderTest, GivesTheFileThatTheProgramMakesOfTheSameWav) {
    const TestFolder folder;
    for (const WavKind kind : {WavKind::Unsigned8, WavKind::Signed16, WavKind::Signed24}) {
        for (const int channels : {1, 2}) {
            const QString path = folder.MakeFile("in.wav", WavOf(MakeSweep(44100, channels, 200001), kind));
            MpcEncoder().EncodeFromWav(path, Anew(folder.Path("ours.mpc")));
            RunTool({"mpcenc", "--overwrite", "--silent", "--quality", "5", folder.Native("in.wav"),
                     folder.Native("theirs.mpc")});
            EXPECT_FALSE(ContentOf(folder.Native("theirs.mpc")).isEmpty());
            EXPECT_TRUE(ContentOf(folder.Native("ours.mpc")) == ContentOf(folder.Native("theirs.mpc")));
        }
    }
    EXPECT_TRUE(HasNoChild());
}

TEST_F(MpcEncoderTest, HasAQualityOfFiveUnlessAnotherIsSet) {
    const TestFolder folder;
    MpcEncoder encoder;
    EXPECT_EQ(encoder.Quality(), 5);
    const QString path = folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, 200000), WavKind::Signed16));
    QByteArray before;
    for (const qint16 quality : {0, 3, 5, 8, 10}) {
        encoder.SetQuality(quality);
        encoder.EncodeFromWav(path, Anew(folder.Path("out.mpc")));
        const QByteArray now = ContentOf(folder.Native("out.mpc"));
        EXPECT_GT(now.size(), before.size());
        before = now;
    }
    encoder.SetQuality(-4);
    EXPECT_EQ(encoder.Quality(), 0);
    encoder.SetQuality(400);
    EXPECT_EQ(encoder.Quality(), 10);
}

struct Source {
    int Rate;
    int Channels;
    WavKind Kind;
    int ExpectedRate;
};

class AnyWav : public ::testing::TestWithParam<Source> {};

TEST_P(AnyWav, BecomesMusepackOfItsLengthAndLoudness) {
    const TestFolder folder;
    const Source& source = GetParam();
    const std::int64_t frames = source.Rate * 3LL / 2 + 1;
    const TestSound sound = MakeTone(source.Rate, source.Channels, frames, 440, 0.5);
    const auto header = source.Channels > 2 ? WavHeader::Extensible : WavHeader::Plain;
    MpcEncoder().EncodeFromWav(folder.MakeFile("in.wav", WavOf(sound, source.Kind, header)),
                               folder.Path("out.mpc"));
    ASSERT_EQ(RunTool({"mpcdec", folder.Native("out.mpc"), folder.Native("back.wav")}).ExitCode, 0);
    const TestSound back = DecodedByFfmpeg(folder.Native("back.wav"));
    EXPECT_EQ(back.Rate, source.ExpectedRate);
    EXPECT_EQ(back.Channels, std::min(source.Channels, 2));
    EXPECT_EQ(back.Frames(), std::llround(static_cast<double>(frames) * back.Rate / source.Rate));
    EXPECT_NEAR(LevelAt(ChannelOf(back, 0), back.Rate, 440), 0.5, 0.01);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, AnyWav,
    ::testing::Values(Source{8000, 1, WavKind::Unsigned8, 32000}, Source{22050, 2, WavKind::Signed16, 32000},
                      Source{37800, 2, WavKind::Signed16, 37800}, Source{48000, 2, WavKind::Float32, 48000},
                      Source{88200, 2, WavKind::Signed24, 44100}, Source{96000, 2, WavKind::Signed32, 48000},
                      Source{44100, 6, WavKind::Signed16, 44100}),
    [](const auto& source) {
        return std::to_string(source.param.Rate) + "_" + std::to_string(source.param.Channels);
    });

TEST_F(MpcEncoderTest, MakesAValidFileOfAnEmptyWav) {
    const TestFolder folder;
    MpcEncoder().EncodeFromWav(folder.MakeFile("in.wav", WavOf(MakeSilence(44100, 2, 0), WavKind::Signed16)),
                               folder.Path("out.mpc"));
    MpcDecoder().DecodeToWav(folder.Path("out.mpc"), folder.Path("back.wav"));
    EXPECT_EQ(ContentOf(folder.Native("back.wav")).size(), 44);
}

TEST_F(MpcEncoderTest, TakesAnyFileName) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeTone(44100, 2, 44100, 440), WavKind::Signed16);
    for (const QByteArray name : {"-v.mpc", "--help", "\xFF\xFE odd.ogg", "b\\\"a'c $x;.mpc"}) {
        MpcEncoder().EncodeFromWav(folder.MakeFile("in.wav", wav), folder.Path(name));
        EXPECT_TRUE(ContentOf(folder.Native(name)).startsWith("MPCK")) << name.constData();
    }
}

TEST_F(MpcEncoderTest, StopsAtOnceAndLeavesWhatWasWritten) {
    const TestFolder folder;
    const QString path = LongWav(folder);
    MpcEncoder encoder;
    int calls = 0;
    int callsAfterTheStop = 0;
    encoder.Progress = [&](qint32 total, qint32 done) {
        EXPECT_LE(done, total);
        ++calls;
        if (done <= total / 4) return;
        encoder.StopCodec();
        ++callsAfterTheStop;
    };
    encoder.EncodeFromWav(path, Anew(folder.Path("out.mpc")));
    EXPECT_GT(calls, 10);
    EXPECT_EQ(callsAfterTheStop, 1) << "the one that asked for it";
    EXPECT_TRUE(NativeExists(folder.Native("out.mpc")));
    EXPECT_TRUE(HasNoChild());
}

TEST_F(MpcEncoderTest, CallsProgressManyTimesASecondOrWithEachSecondOfSound) {
    const TestFolder folder;
    const QString path = LongWav(folder);
    MpcEncoder encoder;
    int calls = 0;
    encoder.Progress = [&](qint32, qint32) { ++calls; };
    const auto start = std::chrono::steady_clock::now();
    encoder.EncodeFromWav(path, Anew(folder.Path("out.mpc")));
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    EXPECT_GT(calls, LongWavSeconds / 2);
    if (LooksAtMilliseconds()) {
        EXPECT_GT(calls, time.count() * 8);
    }
}

TEST_F(MpcEncoderTest, WithoutTheProgramFailsAndLeavesTheFileOfAnEarlierRunAlone) {
    const TestFolder folder;
    const QString path = LongWav(folder);
    folder.MakeFile("out.mpc", "earlier");
    setenv("PATH", folder.Native().constData(), 1);
    const QString text = FailureTextOf([&] { MpcEncoder().EncodeFromWav(path, folder.Path("out.mpc")); });
    EXPECT_TRUE(text.contains(QStringLiteral("mpcenc"))) << text.toStdString();
    EXPECT_EQ(ContentOf(folder.Native("out.mpc")), "earlier");
}

TEST_F(MpcEncoderTest, WhoseProgramIsKilledFailsAndLeavesWhatWasWritten) {
    const TestFolder folder;
    const QString path = LongWav(folder);
    PutInPlaceOfTheEncoder(folder, "head -c 500000 >/dev/null; printf MPCK; kill -9 $$");
    const QString text =
        FailureTextOf([&] { MpcEncoder().EncodeFromWav(path, Anew(folder.Path("out.mpc"))); });
    EXPECT_EQ(text, QStringLiteral("The Musepack encoder was ended from outside"));
    EXPECT_EQ(ContentOf(folder.Native("out.mpc")), "MPCK");
    EXPECT_TRUE(HasNoChild());
}

TEST_F(MpcEncoderTest, WhoseProgramFailsOrWritesOnlyAPartFails) {
    const TestFolder folder;
    const QString path = LongWav(folder);
    for (const QByteArray script :
         {"cat >/dev/null; exit 1", "cat >/dev/null; exit 0", "cat >/dev/null; printf MPCK; exit 0", "exit 0",
          "/usr/bin/mpcenc \"$@\" | head -c 100000"}) {
        PutInPlaceOfTheEncoder(folder, script);
        EXPECT_FALSE(
            FailureTextOf([&] { MpcEncoder().EncodeFromWav(path, Anew(folder.Path("out.mpc"))); }).isEmpty())
            << script.constData();
    }
    EXPECT_TRUE(HasNoChild());
}

TEST_F(MpcEncoderTest, WhoseProgramHangsCanBeStopped) {
    const TestFolder folder;
    const QString path = LongWav(folder);
    PutInPlaceOfTheEncoder(folder, QByteArray("exec sleep ") + Sleeper);
    MpcEncoder encoder;
    int calls = 0;
    encoder.Progress = [&](qint32, qint32) {
        if (++calls > 20) encoder.StopCodec();
    };
    const auto start = std::chrono::steady_clock::now();
    encoder.EncodeFromWav(path, Anew(folder.Path("out.mpc")));
    EXPECT_LT(std::chrono::steady_clock::now() - start, FarLessThanTheSleeper);
    EXPECT_TRUE(HasNoChild());
}

TEST_F(MpcEncoderTest, OnAFullDiskSaysSo) {
    const TestFolder folder;
    const QString path = LongWav(folder);
    folder.MakeFolder("small");
    const QByteArray small = folder.Native("small");
    const int apart = getuid() == 0 ? CLONE_NEWNS : CLONE_NEWUSER | CLONE_NEWNS;
    if (unshare(apart) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        mount("none", small.constData(), "tmpfs", 0, "size=128k") != 0) {
        GTEST_SKIP() << "no disk of our own here";
    }
    const QString text =
        FailureTextOf([&] { MpcEncoder().EncodeFromWav(path, folder.Path("small/out.mpc")); });
    umount(small.constData());
    EXPECT_EQ(text, QStringLiteral("The disk is full"));
}

TEST_F(MpcEncoderTest, FailsClearlyAtFilesThatItCannotUse) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeNoise(44100, 2, 44100), WavKind::Signed16);
    const QString path = folder.MakeFile("in.wav", wav);
    const auto textOf = [](const QString& from, const QString& to) {
        return FailureTextOf([&] { MpcEncoder().EncodeFromWav(from, to); });
    };
    EXPECT_FALSE(textOf(folder.Path("none.wav"), folder.Path("a.mpc")).isEmpty());
    EXPECT_FALSE(NativeExists(folder.Native("a.mpc")));
    EXPECT_FALSE(textOf(path, folder.Path("none/a.mpc")).isEmpty());
    EXPECT_FALSE(textOf(path, path).isEmpty());
    EXPECT_EQ(ContentOf(folder.Native("in.wav")), wav);
    EXPECT_FALSE(textOf(path, QStringLiteral("\\dev\\full")).isEmpty());
    EXPECT_TRUE(NativeExists("/dev/full"));
}

TEST_F(MpcEncoderTest, GivesAGoodFileOfAWavThatIsCutShortAndFails) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeNoise(44100, 2, 400000), WavKind::Signed16);
    const QString path = folder.MakeFile("in.wav", wav.first(1'000'044));
    EXPECT_THROW(MpcEncoder().EncodeFromWav(path, Anew(folder.Path("out.mpc"))), Failure);
    MpcDecoder().DecodeToWav(folder.Path("out.mpc"), folder.Path("back.wav"));
    EXPECT_EQ(ContentOf(folder.Native("back.wav")).size(), 1'000'044);
}

}  // namespace
}  // namespace Sonmira

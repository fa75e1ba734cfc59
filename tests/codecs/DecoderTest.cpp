#include "codecs/WavDecoders.h"
#include "codecs/read/LostSound.h"
#include "platform/Failure.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

constexpr std::int64_t Frames = 100003;

// A file that `command` makes of a WAV; "in.wav" and the target come last.
QString Encoded(const TestFolder& folder, const QByteArray& name, const TestSound& sound, WavKind kind,
                QList<QByteArray> command) {
    folder.MakeFile("in.wav", WavOf(sound, kind));
    if (command.first() == "ffmpeg") {
        command = QList<QByteArray>{"ffmpeg", "-v", "error", "-i", folder.Native("in.wav")} + command.mid(1) +
                  QList<QByteArray>{folder.Native(name)};
    } else if (command.first() == "flac") {
        command += {"-s", "-o", folder.Native(name), folder.Native("in.wav")};
    } else {
        command += {folder.Native("in.wav"), folder.Native(name)};
    }
    EXPECT_EQ(RunTool(command).ExitCode, 0) << command.join(QByteArray(" ")).constData();
    return folder.Path(name);
}

QByteArray DataOf(const QByteArray& wav) {
    return wav.mid(44);
}

// The largest difference of two sounds from sample `skip` on.
double Difference(const TestSound& one, const TestSound& other, std::size_t skip = 0) {
    double most = 0;
    for (std::size_t i = skip; i < std::min(one.Samples.size(), other.Samples.size()); ++i) {
        most = std::max(most, std::abs(one.Samples[i] - other.Samples[i]));
    }
    return most;
}

constexpr double LeastBit = 1.0 / 32768;

TEST(AacDecoder, MakesAWavOfWhatOthersDecode) {
    const TestFolder folder;
    const TestSound sound = MakeSweep(44100, 2, Frames, 0.4);
    for (const QByteArray name : {"a.aac", "b.m4a", "c.latm"}) {
        AacDecoder decoder;
        QList<QByteArray> command = {"ffmpeg", "-c:a", "aac", "-b:a", "192k"};
        if (name.endsWith("latm")) command += {"-f", "latm"};
        decoder.SetInputFile(Encoded(folder, name, sound, WavKind::Signed16, command));
        decoder.SetOutputFile(folder.Path("out.wav"));
        EXPECT_EQ(decoder.DecodeToWav(), 1);
        EXPECT_EQ(decoder.GetOutputFile(), folder.Path("out.wav"));
        const TestSound ours = DecodedByFfmpeg(folder.Native("out.wav"));
        const TestSound theirs = DecodedByFfmpeg(folder.Native(name));
        EXPECT_EQ(ours.Rate, 44100);
        EXPECT_EQ(ours.Channels, 2);
        EXPECT_EQ(ours.Frames(), name.endsWith("m4a") ? Frames : theirs.Frames()) << name.constData();
        EXPECT_LT(Difference(ours, theirs), 2 * LeastBit) << name.constData();
        ASSERT_EQ(unlink(folder.Native("in.wav").constData()), 0);
    }
}

TEST(AacDecoder, LimitsPeaksAboveFullScale) {
    const TestFolder folder;
    TestSound square = MakeTone(44100, 1, Frames, 300, 1.0);
    for (double& sample : square.Samples) sample = sample < 0 ? -1 : 1;
    AacDecoder decoder;
    decoder.SetInputFile(Encoded(folder, "a.aac", square, WavKind::Signed16, {"ffmpeg", "-b:a", "64k"}));
    decoder.SetOutputFile(folder.Path("out.wav"));
    decoder.DecodeToWav();
    const TestSound ours = DecodedByFfmpeg(folder.Native("out.wav"));
    const TestSound theirs = DecodedByFfmpeg(folder.Native("a.aac"));
    std::size_t limited = 0;
    for (std::size_t i = 0; i < ours.Samples.size(); ++i) {
        if (std::abs(theirs.Samples[i]) <= 1) continue;
        ++limited;
        EXPECT_NEAR(ours.Samples[i], theirs.Samples[i] < 0 ? -1 : 1, LeastBit * 1.5);
    }
    EXPECT_GT(limited, 100U);
}

TEST(AacDecoder, RefusesWhatItCannotReadWhenItIsNamed) {
    const TestFolder folder;
    AacDecoder decoder;
    decoder.SetInputFile(
        Encoded(folder, "a.aac", MakeTone(44100, 1, 44100, 440), WavKind::Signed16, {"ffmpeg"}));
    EXPECT_FALSE(FailureTextOf([&] { decoder.SetInputFile(folder.Path("none.aac")); }).isEmpty());
    EXPECT_FALSE(FailureTextOf([&] {
                     decoder.SetInputFile(folder.MakeFile("zeros.aac", QByteArray(50000, '\0')));
                 }).isEmpty());
    decoder.SetOutputFile(folder.Path("out.wav"));
    EXPECT_THROW(decoder.DecodeToWav(), Failure) << "the file before is not decoded in its place";
    EXPECT_FALSE(NativeExists(folder.Native("out.wav")));
}

TEST(AacDecoder, AnswersOneAndLeavesAReadableWavWhenItIsStopped) {
    const TestFolder folder;
    AacDecoder decoder;
    decoder.SetInputFile(
        Encoded(folder, "a.aac", MakeNoise(44100, 2, 30LL * 44100), WavKind::Signed16, {"ffmpeg"}));
    decoder.SetOutputFile(folder.Path("out.wav"));
    std::vector<int> percents;
    decoder.Progress = [&](qint16 percent) {
        percents.push_back(percent);
        if (percent >= 50) decoder.StopCodec();
    };
    EXPECT_EQ(decoder.DecodeToWav(), 1);
    EXPECT_GT(percents.size(), 10U);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_NEAR(static_cast<double>(ReadWhole(folder.Path("out.wav")).Frames), 15 * 44100, 44100);
    decoder.Progress = {};
    EXPECT_EQ(decoder.DecodeToWav(), 1) << "a stop ends one decoding only";
    EXPECT_GT(ReadWhole(folder.Path("out.wav")).Frames, 30 * 44100 - 1);
}

TEST(AacDecoder, NeverWritesOverItsInput) {
    const TestFolder folder;
    const QString path =
        Encoded(folder, "a.aac", MakeTone(44100, 1, 44100, 440), WavKind::Signed16, {"ffmpeg"});
    const QByteArray before = ContentOf(folder.Native("a.aac"));
    AacDecoder decoder;
    decoder.SetInputFile(path);
    decoder.SetOutputFile(path);
    EXPECT_THROW(decoder.DecodeToWav(), Failure);
    EXPECT_EQ(ContentOf(folder.Native("a.aac")), before);
}

struct Lossless {
    WavKind Kind;
    int Channels;
};

void PrintTo(const Lossless& kind, std::ostream* stream) {
    *stream << static_cast<int>(kind.Kind) << " with " << kind.Channels << " channels";
}

class LosslessDecoder : public ::testing::TestWithParam<Lossless> {
protected:
    TestSound Sound() const { return MakeNoise(48000, GetParam().Channels, Frames, 0.9); }
};

class FlacLosslessDecoder : public LosslessDecoder {};

class AppleLosslessDecoder : public LosslessDecoder {};

TEST_P(FlacLosslessDecoder, GivesBackBitForBit) {
    const TestFolder folder;
    FlacDecoder decoder;
    decoder.SetInputFile(Encoded(folder, "a.flac", Sound(), GetParam().Kind, {"flac"}));
    decoder.SetOutputFile(folder.Path("out.wav"));
    decoder.DecodeToWav();
    EXPECT_EQ(ContentOf(folder.Native("out.wav")), WavOf(Sound(), GetParam().Kind));
}

TEST_P(AppleLosslessDecoder, GivesBackBitForBit) {
    const TestFolder folder;
    for (const QByteArray name : {"a.m4a", "b.caf"}) {
        const QString path = Encoded(folder, name, Sound(), GetParam().Kind, {"ffmpeg", "-c:a", "alac"});
        EXPECT_EQ(AlacDecoder().IsAlac(path), 1);
        std::vector<qint32> counts;
        AlacDecoder decoder;
        decoder.Progress = [&](qint32 done, qint32 total) {
            EXPECT_LE(done, total);
            counts.push_back(done);
        };
        EXPECT_EQ(decoder.DecodeToWav(path, folder.Path("out.wav")), 1);
        EXPECT_EQ(DataOf(ContentOf(folder.Native("out.wav"))), PcmOf(Sound(), GetParam().Kind));
        EXPECT_EQ(counts.back(), Frames);
        ASSERT_EQ(unlink(folder.Native("in.wav").constData()), 0);
    }
}

std::string NameOf(const ::testing::TestParamInfo<Lossless>& kind) {
    return std::to_string(static_cast<int>(kind.param.Kind)) + "_" + std::to_string(kind.param.Channels);
}

INSTANTIATE_TEST_SUITE_P(Widths, FlacLosslessDecoder,
                         ::testing::Values(Lossless{WavKind::Unsigned8, 1}, Lossless{WavKind::Signed16, 1},
                                           Lossless{WavKind::Signed16, 2}, Lossless{WavKind::Signed24, 2},
                                           Lossless{WavKind::Signed32, 2}),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(Widths, AppleLosslessDecoder,
                         ::testing::Values(Lossless{WavKind::Signed16, 1}, Lossless{WavKind::Signed16, 2},
                                           Lossless{WavKind::Signed24, 2}),
                         NameOf);

TEST(AlacDecoder, KnowsAppleLosslessByItsContent) {
    const TestFolder folder;
    const TestSound tone = MakeTone(44100, 2, 2LL * 44100 + 44099, 440);
    const QString path = Encoded(folder, "a.m4a", tone, WavKind::Signed16, {"ffmpeg", "-c:a", "alac"});
    ASSERT_EQ(rename(folder.Native("a.m4a").constData(), folder.Native("a.alac").constData()), 0);
    EXPECT_EQ(AlacDecoder().IsAlac(folder.Path("a.alac")), 1);
    EXPECT_EQ(AlacDecoder().IsAlac(path), 0) << "which is gone";
    EXPECT_EQ(AlacDecoder().IsAlac(folder.Path("in.wav")), 0);
    double duration = -1;
    qint32 rate = -1;
    qint32 channels = -1;
    qint32 bits = -1;
    EXPECT_EQ(AlacDecoder().TrackInfo(folder.Path("a.alac"), duration, rate, channels, bits), 1);
    EXPECT_EQ(duration, 2) << "whole seconds, cut";
    EXPECT_EQ(rate, 44100);
    EXPECT_EQ(channels, 2);
    EXPECT_EQ(bits, 16);
    EXPECT_EQ(AlacDecoder().TrackInfo(path, duration, rate, channels, bits), 0);
    EXPECT_EQ(duration, 0);
    EXPECT_EQ(rate, 0);
}

TEST(FlacDecoder, TellsTheCommentsOfItsFile) {
    const TestFolder folder;
    const QString path =
        Encoded(folder, "a.flac", MakeTone(44100, 2, 44100, 440), WavKind::Signed16,
                {"flac", "-T", "TITLE=A\xC3\xAFr", "-T", "artist=Artist", "-T", "Album=Album", "-T",
                 "DATE=1999", "-T", "COMMENT=Words", "-T", "GENRE=Jazz"});
    FlacDecoder decoder;
    decoder.SetInputFile(path);
    EXPECT_EQ(decoder.Title(), QStringLiteral("A\u00EFr"));
    EXPECT_EQ(decoder.Artist(), QStringLiteral("Artist"));
    EXPECT_EQ(decoder.Album(), QStringLiteral("Album"));
    EXPECT_EQ(decoder.Year(), QStringLiteral("1999"));
    EXPECT_EQ(decoder.Comment(), QStringLiteral("Words"));
    EXPECT_EQ(decoder.Genre(), QStringLiteral("Jazz"));
    EXPECT_THROW(decoder.SetInputFile(folder.Path("none.flac")), Failure);
    EXPECT_EQ(decoder.Title(), QString()) << "a file that is not there has no comments";
}

// Low enough for a channel of bass.
constexpr double Tone = 60;

TEST(Decoders, MixMoreChannelsThanTwoAndDropNone) {
    const TestFolder folder;
    for (int channel = 0; channel < 6; ++channel) {
        TestSound sound = MakeSilence(48000, 6, 48000);
        const TestSound tone = MakeTone(48000, 1, 48000, Tone, 0.5);
        for (std::size_t i = 0; i < tone.Samples.size(); ++i) {
            sound.Samples[i * 6 + static_cast<std::size_t>(channel)] = tone.Samples[i];
        }
        FlacDecoder flac;
        flac.SetInputFile(Encoded(folder, "a.flac", sound, WavKind::Signed16, {"ffmpeg", "-y"}));
        flac.SetOutputFile(folder.Path("flac.wav"));
        flac.DecodeToWav();
        AacDecoder aac;
        aac.SetInputFile(Encoded(folder, "a.aac", sound, WavKind::Signed16, {"ffmpeg", "-y"}));
        aac.SetOutputFile(folder.Path("aac.wav"));
        aac.DecodeToWav();
        for (const QByteArray name : {"flac.wav", "aac.wav"}) {
            const TestSound mixed = DecodedByFfmpeg(folder.Native(name));
            EXPECT_EQ(mixed.Channels, 2);
            const double left = LevelAt(ChannelOf(mixed, 0), 48000, Tone);
            const double right = LevelAt(ChannelOf(mixed, 1), 48000, Tone);
            EXPECT_GT(std::max(left, right), 0.02) << name.constData() << " channel " << channel;
        }
    }
}

TEST(FlacDecoder, LeavesThePartialWavWhenItIsStopped) {
    const TestFolder folder;
    FlacDecoder decoder;
    decoder.SetInputFile(
        Encoded(folder, "a.flac", MakeNoise(44100, 2, 20LL * 44100), WavKind::Signed16, {"flac", "-0"}));
    decoder.SetOutputFile(folder.Path("out.wav"));
    decoder.Progress = [&](qint16 percent) {
        if (percent >= 25) decoder.StopCodec();
    };
    decoder.DecodeToWav();
    const qint64 frames = ReadWhole(folder.Path("out.wav")).Frames;
    EXPECT_GE(frames, 5 * 44100);
    EXPECT_LT(frames, 6 * 44100);
}

// Its frames are the smallest that there are, and FFmpeg passes over them.
TEST(FlacDecoder, GivesBackQuietSoundOfEightBitsInOneChannel) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeSilence(8000, 1, 8000), WavKind::Unsigned8);
    folder.MakeFile("in.wav", wav);
    RunTool({"flac", "-s", "-o", folder.Native("a.flac"), folder.Native("in.wav")});
    FlacDecoder decoder;
    decoder.SetInputFile(folder.Path("a.flac"));
    decoder.SetOutputFile(folder.Path("out.wav"));
    decoder.DecodeToWav();
    EXPECT_EQ(ContentOf(folder.Native("out.wav")), wav);
}

TEST(FlacDecoder, FailsAtDamageAndKeepsWhatItDecoded) {
    const TestFolder folder;
    const QString path =
        Encoded(folder, "a.flac", MakeNoise(44100, 2, 5LL * 44100), WavKind::Signed16, {"flac", "-0"});
    QByteArray content = ContentOf(folder.Native("a.flac"));
    FlacDecoder decoder;
    decoder.SetInputFile(folder.MakeFile("cut.flac", content.first(content.size() / 2)));
    decoder.SetOutputFile(folder.Path("out.wav"));
    EXPECT_FALSE(FailureTextOf([&] { decoder.DecodeToWav(); }).isEmpty());
    EXPECT_GT(ReadPart(folder.Path("out.wav")).Frames, 2 * 44100);
    EXPECT_EQ(FlacDecoder().TrackLength(path), 5);
}

TEST(FlacDecoder, FailsAtDamageIn32BitsToo) {
    const TestFolder folder;
    const QString path =
        Encoded(folder, "a.flac", MakeNoise(44100, 2, 3LL * 44100), WavKind::Signed32, {"flac", "-0"});
    EXPECT_EQ(FlacDecoder().TrackLength(path), 3);
    const QByteArray content = ContentOf(folder.Native("a.flac"));
    QByteArray changed = content;
    changed[changed.size() / 2] = static_cast<char>(changed[changed.size() / 2] ^ 1);
    for (const QByteArray& bad : {content.first(content.size() / 2), changed}) {
        FlacDecoder decoder;
        decoder.SetInputFile(folder.MakeFile("bad.flac", bad));
        decoder.SetOutputFile(folder.Path("out.wav"));
        EXPECT_FALSE(FailureTextOf([&] { decoder.DecodeToWav(); }).isEmpty());
        EXPECT_GT(ReadPart(folder.Path("out.wav")).Frames, 44100);
    }
}

TEST(FlacDecoder, CutsTheLengthToWholeSecondsAndAnswersNoughtForNoFile) {
    const TestFolder folder;
    const QString path =
        Encoded(folder, "a.flac", MakeTone(44100, 1, 3LL * 44100 - 1, 440), WavKind::Signed16, {"flac"});
    EXPECT_EQ(FlacDecoder().TrackLength(path), 2);
    EXPECT_EQ(FlacDecoder().TrackLength(folder.Path("none.flac")), 0);
    EXPECT_EQ(FlacDecoder().TrackLength(folder.MakeFile("zeros.flac", QByteArray(5000, '\0'))), 0);
}

class MusepackFile : public ::testing::TestWithParam<int> {};

TEST_P(MusepackFile, IsDecodedToTheLengthAndPlaceOfItsSource) {
    const TestFolder folder;
    const int channels = GetParam();
    const TestSound sound = MakeSweep(44100, channels, Frames, 0.4);
    const QString path = Encoded(folder, "a.mpc", sound, WavKind::Signed16, {"mpcenc", "--silent"});
    MpcDecoder decoder;
    std::vector<qint32> counts;
    decoder.Progress = [&](qint32 total, qint32 done) {
        EXPECT_EQ(total, Frames);
        counts.push_back(done);
    };
    decoder.DecodeToWav(path, folder.Path("out.wav"));
    EXPECT_EQ(counts.back(), Frames);
    RunTool({"mpcdec", folder.Native("a.mpc"), folder.Native("theirs.wav")});
    const TestSound ours = DecodedByFfmpeg(folder.Native("out.wav"));
    const TestSound theirs = DecodedByFfmpeg(folder.Native("theirs.wav"));
    EXPECT_EQ(ours.Frames(), Frames);
    EXPECT_EQ(ours.Channels, channels);
    EXPECT_EQ(theirs.Frames(), Frames);
    EXPECT_LT(Difference(ours, theirs), 2.1 * LeastBit);
    EXPECT_EQ(MpcDecoder().TrackLength(path), 2);
}

INSTANTIATE_TEST_SUITE_P(Channels, MusepackFile, ::testing::Values(1, 2));

TEST(MpcDecoder, LeavesThePartialWavWhenItIsStopped) {
    const TestFolder folder;
    const QString path = Encoded(folder, "a.mpc", MakeNoise(44100, 2, 20LL * 44100), WavKind::Signed16,
                                 {"mpcenc", "--silent"});
    MpcDecoder decoder;
    decoder.Progress = [&](qint32 total, qint32 done) {
        if (done > total / 2) decoder.StopCodec();
    };
    decoder.DecodeToWav(path, folder.Path("out.wav"));
    EXPECT_NEAR(static_cast<double>(ReadWhole(folder.Path("out.wav")).Frames), 10 * 44100, 44100);
}

TEST(MpcDecoder, FailsAtWhatIsNoMusepackAndAtWhatIsCut) {
    const TestFolder folder;
    const QString path =
        Encoded(folder, "a.mpc", MakeNoise(44100, 2, 5LL * 44100), WavKind::Signed16, {"mpcenc", "--silent"});
    const QByteArray content = ContentOf(folder.Native("a.mpc"));
    const QString cut = folder.MakeFile("cut.mpc", content.first(content.size() / 2));
    MpcDecoder decoder;
    EXPECT_FALSE(FailureTextOf([&] { decoder.DecodeToWav(cut, folder.Path("cut.wav")); }).isEmpty());
    EXPECT_GT(ReadPart(folder.Path("cut.wav")).Frames, 2 * 44100);
    const QString wav = folder.Path("in.wav");
    EXPECT_FALSE(FailureTextOf([&] { decoder.DecodeToWav(wav, folder.Path("b.wav")); }).isEmpty());
    EXPECT_EQ(MpcDecoder().TrackLength(wav), 0);
    EXPECT_EQ(MpcDecoder().TrackLength(folder.Path("none.mpc")), 0);
    EXPECT_THROW(decoder.DecodeToWav(path, path), Failure);
    EXPECT_EQ(ContentOf(folder.Native("a.mpc")), content);
}

}  // namespace
}  // namespace Sonmira

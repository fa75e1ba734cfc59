#include "codecs/Conversion.h"
#include "codecs/FlacEncoder.h"
#include "codecs/flac/FlacSegment.h"
#include "platform/Failure.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Sonmira {
namespace {

// Sound whose two sides drift between alike and unlike, so that an encoder keeps changing its mind.
TestSound Drifting(int rate, int channels, std::int64_t frames) {
    TestSound sound = MakeSweep(rate, channels, frames, 0.4);
    const TestSound noise = MakeNoise(rate, channels, frames, 0.4);
    for (std::size_t i = 0; i < sound.Samples.size(); ++i) {
        sound.Samples[i] += noise.Samples[i] * std::pow(std::sin(static_cast<double>(i) / rate * 1.7), 2);
    }
    return sound;
}

QByteArray Number(int value) {
    return QByteArray::number(value);
}

class FlacLevel : public ::testing::TestWithParam<int> {};

// The command-line encoder is the library in one thread.
TEST_P(FlacLevel, GivesTheVeryFileOfOneThread) {
    const TestFolder folder;
    struct Form {
        int Rate;
        int Channels;
        WavKind Kind;
        std::int64_t Frames;
    };
    for (const Form& form :
         {Form{44100, 2, WavKind::Signed16, 700001}, Form{96000, 2, WavKind::Signed24, 600000},
          Form{22050, 1, WavKind::Unsigned8, 530000}, Form{8001, 2, WavKind::Signed16, 300000}}) {
        const QByteArray wav = WavOf(Drifting(form.Rate, form.Channels, form.Frames), form.Kind);
        const QString path = folder.MakeFile("in.wav", wav);
        FlacEncoder().EncodeFromWav(path, Anew(folder.Path("ours.flac")), static_cast<qint16>(GetParam()));
        ASSERT_EQ(RunTool({"flac", "-s", "-f", "-" + Number(GetParam()), "-o", folder.Native("theirs.flac"),
                           folder.Native("in.wav")})
                      .ExitCode,
                  0);
        EXPECT_TRUE(ContentOf(folder.Native("ours.flac")) == ContentOf(folder.Native("theirs.flac")))
            << form.Rate << " Hz";
        EXPECT_EQ(RunTool({"flac", "-t", "-s", folder.Native("ours.flac")}).ExitCode, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(All, FlacLevel, ::testing::Range(0, 9));

class FlacLength : public ::testing::TestWithParam<int> {};

TEST_P(FlacLength, IsKeptToTheFrame) {
    const TestFolder folder;
    const QString path = folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, GetParam()), WavKind::Signed16));
    FlacEncoder().EncodeFromWav(path, Anew(folder.Path("out.flac")), 5);
    EXPECT_EQ(RunTool({"flac", "-t", "-s", folder.Native("out.flac")}).ExitCode, 0);
    RunTool({"flac", "-s", "-d", "-o", folder.Native("back.wav"), folder.Native("out.flac")});
    EXPECT_EQ(ContentOf(folder.Native("back.wav")).mid(44), ContentOf(folder.Native("in.wav")).mid(44));
}

INSTANTIATE_TEST_SUITE_P(Lengths, FlacLength,
                         ::testing::Values(0, 1, 4095, 4096, 4097, 307200, 307201, 614399, 614400));

TEST(FlacEncoder, BringsWiderAndFloatSamplesTo24Bits) {
    const TestFolder folder;
    const TestSound sound = MakeSweep(48000, 2, 100000, 0.7);
    for (const WavKind kind : {WavKind::Signed32, WavKind::Float32, WavKind::Float64}) {
        FlacEncoder().EncodeFromWav(folder.MakeFile("in.wav", WavOf(sound, kind)),
                                    Anew(folder.Path("out.flac")), 5);
        const ToolResult bits = RunTool({"metaflac", "--show-bps", folder.Native("out.flac")});
        EXPECT_EQ(bits.Output.trimmed(), "24");
        const TestSound back = DecodedByFfmpeg(folder.Native("out.flac"));
        double most = 0;
        for (std::size_t i = 0; i < sound.Samples.size(); ++i) {
            most = std::max(most, std::abs(back.Samples[i] - sound.Samples[i]));
        }
        EXPECT_LT(most, 2.0 / (1 << 23));
        EXPECT_GT(most, 0);
    }
}

TEST(FlacEncoder, LimitsWhatIsBeyondFullScale) {
    const TestFolder folder;
    const TestSound loud = MakeTone(44100, 1, 44100, 440, 1.5);
    FlacEncoder().EncodeFromWav(folder.MakeFile("in.wav", WavOf(loud, WavKind::Float32)),
                                folder.Path("out.flac"), 5);
    const TestSound back = DecodedByFfmpeg(folder.Native("out.flac"));
    for (std::size_t i = 0; i < loud.Samples.size(); ++i) {
        ASSERT_NEAR(back.Samples[i], std::clamp(loud.Samples[i], -1.0, 1.0), 1e-6);
    }
}

TEST(FlacEncoder, MixesMoreChannelsThanTwoToTwo) {
    const TestFolder folder;
    const QByteArray wav =
        WavOf(MakeTone(44100, 6, 44100, 440, 0.5), WavKind::Signed16, WavHeader::Extensible, 0x3F);
    FlacEncoder().EncodeFromWav(folder.MakeFile("in.wav", wav), folder.Path("out.flac"), 5);
    const TestSound back = DecodedByFfmpeg(folder.Native("out.flac"));
    EXPECT_EQ(back.Channels, 2);
    EXPECT_NEAR(LevelAt(ChannelOf(back, 0), 44100, 440), 0.5, 0.01);
    EXPECT_EQ(RunTool({"flac", "-t", "-s", folder.Native("out.flac")}).ExitCode, 0);
}

TEST(FlacEncoder, TellsItsProgressUpToTheEnd) {
    const TestFolder folder;
    FlacEncoder encoder;
    std::vector<int> percents;
    encoder.Progress = [&](qint16 percent) { percents.push_back(percent); };
    encoder.EncodeFromWav(
        folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, 60LL * 44100), WavKind::Signed16)),
        folder.Path("out.flac"), 8);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_EQ(percents.back(), 100);
    EXPECT_GT(percents.size(), 10U);
}

TEST(FlacEncoder, FailsClearlyAtWhatItCannotDo) {
    const TestFolder folder;
    FlacEncoder encoder;
    const QByteArray wav = WavOf(MakeNoise(44100, 2, 44100), WavKind::Signed16);
    const QString path = folder.MakeFile("in.wav", wav);
    const auto textOf = [&](const QString& from, const QString& to, qint16 level) {
        return FailureTextOf([&] { encoder.EncodeFromWav(from, to, level); });
    };
    EXPECT_FALSE(textOf(path, folder.Path("a.flac"), 9).isEmpty());
    EXPECT_FALSE(textOf(path, folder.Path("a.flac"), -1).isEmpty());
    EXPECT_FALSE(textOf(folder.Path("none.wav"), folder.Path("a.flac"), 5).isEmpty());
    EXPECT_FALSE(NativeExists(folder.Native("a.flac")));
    EXPECT_FALSE(textOf(path, folder.Path("none/a.flac"), 5).isEmpty());
    EXPECT_FALSE(textOf(path, path, 5).isEmpty());
    EXPECT_EQ(ContentOf(folder.Native("in.wav")), wav);
    EXPECT_EQ(textOf(path, QStringLiteral("\\dev\\full"), 5), QStringLiteral("The disk is full"));
}

TEST(FlacEncoder, GivesAGoodFileOfAWavThatIsCutShortAndFails) {
    const TestFolder folder;
    const QByteArray wav = WavOf(MakeNoise(44100, 2, 400000), WavKind::Signed16);
    const QString path = folder.MakeFile("in.wav", wav.first(1'000'044));
    EXPECT_THROW(FlacEncoder().EncodeFromWav(path, Anew(folder.Path("out.flac")), 5), Failure);
    EXPECT_EQ(RunTool({"flac", "-t", "-s", folder.Native("out.flac")}).ExitCode, 0);
    EXPECT_EQ(FramesByFfmpeg(folder.Native("out.flac"), 2), 250000);
}

// A frame under its own number again is the frame as it was, whatever numbers it had between.
TEST(FlacFrame, KeepsEverythingButItsNumber) {
    const TestFolder folder;
    folder.MakeFile("in.wav", WavOf(MakeNoise(12345, 1, 3000), WavKind::Signed16));
    RunTool({"flac", "-s", "--lax", "--no-padding", "--no-seektable", "-b", "3001", "-o",
             folder.Native("a.flac"), folder.Native("in.wav")});
    const QByteArray file = ContentOf(folder.Native("a.flac"));
    const qsizetype start = file.indexOf("\xFF\xF8");
    ASSERT_GT(start, 0);
    const std::span<const char> chars(file.constData() + start,
                                      static_cast<std::size_t>(file.size() - start));
    const auto bytes = std::as_bytes(chars);
    const std::vector<std::byte> frame(bytes.begin(), bytes.end());
    for (const std::uint32_t number : {0x7FU, 0x80U, 0x7FFU, 0x800U, 0xFFFFU, 0x10000U, 0x1FFFFFU, 0x200000U,
                                       0x3FFFFFFU, 0x4000000U, 0x7FFFFFFFU}) {
        std::vector<std::byte> other;
        AppendRenumbered(frame, number, other);
        const std::size_t more = number < 0x80        ? 0
                                 : number < 0x800     ? 1
                                 : number < 0x10000   ? 2
                                 : number < 0x200000  ? 3
                                 : number < 0x4000000 ? 4
                                                      : 5;
        EXPECT_EQ(other.size(), frame.size() + more) << number;
        std::vector<std::byte> again;
        AppendRenumbered(other, 0, again);
        EXPECT_EQ(again, frame) << number;
    }
}

}  // namespace
}  // namespace Sonmira

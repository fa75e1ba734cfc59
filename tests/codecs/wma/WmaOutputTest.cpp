#include "codecs/Conversion.h"
#include "codecs/wma/WmaWriter.h"
#include "platform/Failure.h"
#include "support/Sanitized.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace Sonmira {
namespace {

FormatSetting Wma(int number) {
    return [number](AudioFile& file) { file.SelectWmaFormat(number); };
}

int BlockOf(const WmaFormat& format) {
    return format.Rate <= 16000 ? 512 : format.Rate <= 22050 ? 1024 : 2048;
}

// The frames by which `other` lies behind `one`, -4096 to 4096, where both fit best.
int ShiftOf(const std::vector<double>& one, const std::vector<double>& other) {
    constexpr int most = 4096;
    int best = 0;
    double highest = 0;
    for (int shift = -most; shift <= most; ++shift) {
        double sum = 0;
        for (std::size_t i = most; i + most < std::min(one.size(), other.size()); i += 11) {
            sum += one[i] * other[static_cast<std::size_t>(static_cast<std::ptrdiff_t>(i) + shift)];
        }
        if (sum > highest) {
            highest = sum;
            best = shift;
        }
    }
    return best;
}

// Low noise, which has one place only where it fits itself and which every bit rate carries.
TestSound Rumble(int rate, int channels, std::int64_t frames) {
    TestSound sound = MakeNoise(rate, channels, frames, 1.0);
    double low = 0;
    for (std::size_t i = 0; i < sound.Samples.size(); ++i) {
        if (i % static_cast<std::size_t>(channels) == 0) low += 0.15 * (sound.Samples[i] - low);
        sound.Samples[i] = low;
    }
    return sound;
}

class WmaNumber : public ::testing::TestWithParam<int> {};

TEST_P(WmaNumber, GivesTheSoundItsPlaceAndLosesNothing) {
    const TestFolder folder;
    const WmaFormat format = WmaFormatOf(GetParam()).value();
    const TestSound sound = Rumble(format.Rate, format.Channels, format.Rate * 2LL + 1);
    ConvertFile(folder.MakeFile("in.wav", WavOf(sound, WavKind::Signed16)), folder.Path("out.wma"),
                Wma(GetParam()));
    const TestSound decoded = DecodedByFfmpeg(folder.Native("out.wma"));
    EXPECT_EQ(decoded.Rate, format.Rate);
    EXPECT_EQ(decoded.Channels, format.Channels);
    const int block = BlockOf(format);
    EXPECT_GE(decoded.Frames(), sound.Frames());
    EXPECT_LT(decoded.Frames(), sound.Frames() + 2LL * block);
    EXPECT_EQ(ShiftOf(ChannelOf(sound, 0), ChannelOf(decoded, 0)), 0);
    // The last frames are there as well as those in the middle.
    double error = 0;
    double power = 0;
    for (std::size_t i = sound.Samples.size() -
                         static_cast<std::size_t>(block) * static_cast<std::size_t>(format.Channels);
         i < sound.Samples.size(); ++i) {
        error += std::pow(decoded.Samples[i] - sound.Samples[i], 2);
        power += std::pow(sound.Samples[i], 2);
    }
    EXPECT_LT(error, power / 4);
}

TEST_P(WmaNumber, HoldsItsBitRate) {
    const TestFolder folder;
    const WmaFormat format = WmaFormatOf(GetParam()).value();
    constexpr int seconds = 10;
    const TestSound sound = MakeNoise(format.Rate, format.Channels, format.Rate * std::int64_t{seconds});
    ConvertFile(folder.MakeFile("in.wav", WavOf(sound, WavKind::Signed16)), folder.Path("out.wma"),
                Wma(GetParam()));
    const double kilobits =
        static_cast<double>(ContentOf(folder.Native("out.wma")).size()) * 8 / 1000 / seconds;
    EXPECT_GT(kilobits, format.Kilobits * 0.97);
    // The container has 17 bytes around each block of the codec, and its head.
    const double around = 17 * 8 / 1000.0 * format.Rate / BlockOf(format);
    EXPECT_LT(kilobits, (format.Kilobits + around) * 1.03 + 3);
}

INSTANTIATE_TEST_SUITE_P(All, WmaNumber, ::testing::Range(1, WmaFormatCount + 1, UnderSanitizers ? 5 : 1));

TEST(WmaFormats, HaveTextsThatAreAllDifferent) {
    AudioFile file;
    std::set<QString> texts;
    for (int number = 1; number <= WmaFormatCount; ++number) {
        file.SelectWmaFormat(number);
        EXPECT_FALSE(file.FormatString().isEmpty());
        texts.insert(file.FormatString());
    }
    EXPECT_EQ(texts.size(), static_cast<std::size_t>(WmaFormatCount));
    file.SelectWmaFormat(43);
    EXPECT_EQ(file.FormatString(), QStringLiteral("Windows Media Audio 44100 Hz, Stereo, 128 kbit/s"));
    for (const int number : {0, -1, 52, 1000}) {
        file.SelectWmaFormat(43);
        file.SelectWmaFormat(number);
        EXPECT_TRUE(file.FormatString().isEmpty()) << number;
    }
}

class WmaLength : public ::testing::TestWithParam<int> {};

TEST_P(WmaLength, IsReadByOthersToItsEnd) {
    const TestFolder folder;
    const TestSound sound = MakeTone(44100, 2, GetParam(), 440);
    ConvertFile(folder.MakeFile("in.wav", WavOf(sound, WavKind::Signed16)), folder.Path("out.wma"), Wma(43));
    const ToolResult check =
        RunTool({"ffmpeg", "-v", "error", "-i", folder.Native("out.wma"), "-f", "null", "-"});
    EXPECT_EQ(check.ExitCode, 0);
    EXPECT_EQ(check.Errors, "");
    const std::int64_t frames = FramesByFfmpeg(folder.Native("out.wma"), 2);
    EXPECT_GE(frames, GetParam());
    EXPECT_LT(frames, GetParam() + 4096);
    EXPECT_EQ(ReadWhole(folder.Path("out.wma")).Frames, frames);
}

INSTANTIATE_TEST_SUITE_P(Lengths, WmaLength, ::testing::Values(0, 1, 2047, 2048, 2049, 44100, 300000));

TEST(WmaOutput, IsTheSameForTheSameSound) {
    const TestFolder folder;
    const QString path = folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, 100000), WavKind::Signed16));
    ConvertFile(path, folder.Path("a.wma"), Wma(43));
    ConvertFile(path, folder.Path("b.wma"), Wma(43));
    EXPECT_TRUE(ContentOf(folder.Native("a.wma")) == ContentOf(folder.Native("b.wma")));
}

TEST(WmaOutput, ThatCannotBeWrittenFails) {
    const TestFolder folder;
    const QString path = folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, 1'000'000), WavKind::Signed16));
    EXPECT_EQ(FailureTextOf([&] { ConvertFile(path, QStringLiteral("\\dev\\full"), Wma(43)); }),
              QStringLiteral("The disk is full"));
}

TEST(WmaSupport, SwitchedOffRefusesWmaFilesAndFormats) {
    const TestFolder folder;
    const QString path = folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, 100000), WavKind::Signed16));
    ConvertFile(path, folder.Path("a.wma"), Wma(43));
    ASSERT_EQ(rename(folder.Native("a.wma").constData(), folder.Native("a.mp3").constData()), 0);
    AudioFile file;
    file.EnableWma(false);
    EXPECT_FALSE(FailureTextOf([&] { file.OpenForRead(folder.Path("a.mp3")); }).isEmpty());
    EXPECT_LT(file.FormatCode(), 0);
    EXPECT_NO_THROW(file.OpenForRead(path));
    file.SelectWmaFormat(43);
    EXPECT_TRUE(file.FormatString().isEmpty());
    EXPECT_THROW(file.OpenForWrite(folder.Path("b.wma")), Failure);
    file.EnableWma(true);
    EXPECT_NO_THROW(file.OpenForRead(folder.Path("a.mp3")));
    file.SelectWmaFormat(43);
    EXPECT_FALSE(file.FormatString().isEmpty());
    file.EnableWma(false);
    EXPECT_TRUE(file.FormatString().isEmpty()) << "the format goes with the support";
    file.SetFormatPCM(44100, 2, 16);
    file.EnableWma(false);
    EXPECT_FALSE(file.FormatString().isEmpty()) << "another format stays";
}

}  // namespace
}  // namespace Sonmira

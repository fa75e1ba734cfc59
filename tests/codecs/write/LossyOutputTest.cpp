#include "codecs/Conversion.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Sonmira {
namespace {

class LossyOutputOfLength : public ::testing::TestWithParam<int> {
protected:
    QString MakeSource(const TestFolder& folder, int channels) const {
        return folder.MakeFile("in.wav",
                               WavOf(MakeTone(44100, channels, GetParam(), 1000), WavKind::Signed16));
    }
};

TEST_P(LossyOutputOfLength, HasAsManyFramesAsItsSourceInMp3) {
    const TestFolder folder;
    for (const int channels : {1, 2}) {
        ConvertFile(MakeSource(folder, channels), folder.Path("out.mp3"),
                    [&](AudioFile& file) { file.SetFormatMP3(44100, 128, channels); });
        EXPECT_EQ(FramesByFfmpeg(folder.Native("out.mp3"), channels), GetParam());
        EXPECT_EQ(ReadWhole(folder.Path("out.mp3")).StreamLength, GetParam());
        RunTool({"lame", "--quiet", "--decode", folder.Native("out.mp3"), folder.Native("out.wav")});
        EXPECT_EQ(ContentOf(folder.Native("out.wav")).size(), 44 + GetParam() * channels * 2);
    }
}

TEST_P(LossyOutputOfLength, HasAsManyFramesAsItsSourceInOggVorbis) {
    const TestFolder folder;
    ConvertFile(MakeSource(folder, 2), folder.Path("out.ogg"),
                [](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, {}, {}, {}, 400); });
    EXPECT_EQ(ReadWhole(folder.Path("out.ogg")).Frames, GetParam());
    EXPECT_EQ(ReadWhole(folder.Path("out.ogg")).StreamLength, GetParam());
    const auto oggdec =
        RunTool({"oggdec", "-Q", "-R", "-o", folder.Native("out.raw"), folder.Native("out.ogg")});
    EXPECT_EQ(oggdec.ExitCode, 0) << oggdec.Errors.constData();
    EXPECT_EQ(ContentOf(folder.Native("out.raw")).size(), GetParam() * 4);
}

INSTANTIATE_TEST_SUITE_P(Lengths, LossyOutputOfLength,
                         ::testing::Values(1, 2, 575, 1151, 1152, 1153, 44100, 65537, 100003));

class Mp3OutputAtRate : public ::testing::TestWithParam<std::pair<int, int>> {};

TEST_P(Mp3OutputAtRate, KeepsTheLoudnessAndThePlaceOfTheSound) {
    const int rate = GetParam().first;
    const int kilobits = GetParam().second;
    const TestFolder folder;
    TestSound sound = MakeTone(rate, 2, rate, 440, 0.5);
    const QString from = folder.MakeFile("in.wav", WavOf(sound, WavKind::Signed16));
    ConvertFile(from, folder.Path("out.mp3"), [&](AudioFile& file) { file.SetFormatMP3(rate, kilobits, 2); });
    const TestSound decoded = DecodedByFfmpeg(folder.Native("out.mp3"));
    EXPECT_EQ(decoded.Rate, rate);
    ASSERT_EQ(decoded.Frames(), sound.Frames());
    EXPECT_NEAR(LevelAt(ChannelOf(decoded, 0), rate, 440), 0.5, 0.006);
    double error = 0;
    for (std::size_t i = 0; i < decoded.Samples.size(); ++i) {
        error += std::pow(decoded.Samples[i] - sound.Samples[i], 2);
    }
    // A tone that was moved by a hundredth of its period would be further off.
    EXPECT_LT(std::sqrt(error / static_cast<double>(decoded.Samples.size())), 0.02);
}

INSTANTIATE_TEST_SUITE_P(Rates, Mp3OutputAtRate,
                         ::testing::Values(std::pair(8000, 64), std::pair(11025, 64), std::pair(16000, 64),
                                           std::pair(22050, 96), std::pair(24000, 144), std::pair(32000, 160),
                                           std::pair(44100, 128), std::pair(44100, 192),
                                           std::pair(44100, 224), std::pair(44100, 320),
                                           std::pair(48000, 256)));

TEST(Mp3Output, HasTheBitRateThatWasAskedFor) {
    const TestFolder folder;
    const QString from = folder.MakeFile("in.wav", WavOf(MakeNoise(44100, 2, 88200), WavKind::Signed16));
    for (const int kilobits : {32, 128, 320}) {
        ConvertFile(from, folder.Path("out.mp3"),
                    [&](AudioFile& file) { file.SetFormatMP3(44100, kilobits, 2); });
        const auto probe = RunTool({"ffprobe", "-v", "error", "-show_entries", "stream=bit_rate", "-of",
                                    "csv=p=0", folder.Native("out.mp3")});
        EXPECT_EQ(probe.Output.trimmed().toInt(), kilobits * 1000);
    }
}

TEST(VorbisOutput, KeepsTheLoudnessInEachOfItsThreeShapes) {
    const TestFolder folder;
    const QString from = folder.MakeFile("in.wav", WavOf(MakeTone(44100, 2, 44100, 440), WavKind::Signed24));
    const FormatSetting shapes[] = {
        [](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, {}, {}, {}, 400); },
        [](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, 128); },
        [](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, 128, 96, 160); },
    };
    for (const FormatSetting& shape : shapes) {
        ConvertFile(from, folder.Path("out.ogg"), shape);
        EXPECT_EQ(RunTool({"ogginfo", folder.Native("out.ogg")}).ExitCode, 0);
        const TestSound decoded = DecodedByFfmpeg(folder.Native("out.ogg"));
        EXPECT_EQ(decoded.Frames(), 44100);
        EXPECT_NEAR(LevelAt(ChannelOf(decoded, 1), 44100, 440), 0.5, 0.01);
    }
}

TEST(LossyOutput, IsTheSameInEachRun) {
    const TestFolder folder;
    const QString from = folder.MakeFile("in.wav", WavOf(MakeSweep(48000, 1, 60000), WavKind::Float32));
    const FormatSetting formats[] = {
        [](AudioFile& file) { file.SetFormatMP3(44100, 128, 2); },
        [](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, {}, {}, {}, 400); },
        [](AudioFile& file) { file.SetFormatPCM(44100, 2, 16); },
    };
    for (const FormatSetting& format : formats) {
        ConvertFile(from, folder.Path("first"), format);
        ConvertFile(from, folder.Path("second"), format);
        EXPECT_EQ(ContentOf(folder.Native("first")), ContentOf(folder.Native("second")));
    }
}

TEST(LossyOutput, TakesSamplesThatAreNoNumbersOrFarBeyondFullScale) {
    const TestFolder folder;
    TestSound sound = MakeTone(44100, 2, 20000, 440);
    for (std::size_t i = 0; i < sound.Samples.size(); i += 97) {
        sound.Samples[i] = i % 2 == 0 ? std::nan("") : (i % 3 == 0 ? HUGE_VAL : -1e30);
    }
    const QString from = folder.MakeFile("in.wav", WavOf(sound, WavKind::Float32));
    ConvertFile(from, folder.Path("out.mp3"), [](AudioFile& file) { file.SetFormatMP3(44100, 128, 2); });
    ConvertFile(from, folder.Path("out.ogg"),
                [](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, {}, {}, {}, 400); });
    ConvertFile(from, folder.Path("out.wav"), [](AudioFile& file) { file.SetFormatPCM(22050, 1, 16); });
    EXPECT_EQ(FramesByFfmpeg(folder.Native("out.mp3"), 2), 20000);
    EXPECT_EQ(FramesByFfmpeg(folder.Native("out.ogg"), 2), 20000);
    EXPECT_EQ(FramesByFfmpeg(folder.Native("out.wav"), 1), 10000);
}

}  // namespace
}  // namespace Sonmira

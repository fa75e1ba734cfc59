#include "Conversion.h"
#include "codecs/sound/StreamConverter.h"
#include "platform/Failure.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Sonmira {
namespace {

TestSound Converted(const TestSound& sound, WavKind kind, int rate, int channels, int bits,
                    std::uint32_t speakers = 0) {
    const TestFolder folder;
    const WavHeader header = speakers != 0 ? WavHeader::Extensible : WavHeader::Plain;
    const QString from = folder.MakeFile("in.wav", WavOf(sound, kind, header, speakers));
    ConvertFile(from, folder.Path("out.wav"),
                [&](AudioFile& file) { file.SetFormatPCM(rate, channels, bits); });
    return DecodedByFfmpeg(folder.Native("out.wav"));
}

double Decibels(double level) {
    return 20 * std::log10(level);
}

TEST(RateConversion, GivesExactlyTheFramesThatTheRatioAsksFor) {
    for (const auto& [from, to] :
         {std::pair(44100, 48000), std::pair(48000, 44100), std::pair(8000, 48000), std::pair(96000, 11025),
          std::pair(192000, 8000), std::pair(22050, 44100)}) {
        for (const qint64 frames : {0LL, 1LL, 2LL, 100LL, 1153LL, 44101LL}) {
            const std::vector<float> sound(static_cast<std::size_t>(frames) * 2, 0.5F);
            std::vector<float> converted;
            Resampler resampler(from, to, 2, ResamplerPrecision::Bits20);
            for (std::size_t at = 0; at < sound.size(); at += 6000) {
                resampler.Convert(
                    std::span(sound).subspan(at, std::min<std::size_t>(6000, sound.size() - at)), converted);
            }
            resampler.Finish(converted);
            EXPECT_EQ(static_cast<qint64>(converted.size() / 2), (frames * to * 2 + from) / (2LL * from))
                << frames << " frames from " << from << " to " << to;
        }
    }
}

TEST(RateConversion, OfARateThatIsNoneIsRefused) {
    EXPECT_THROW(Resampler(44, 44100, 2, ResamplerPrecision::Bits20), Failure);
    EXPECT_THROW(Resampler(48000, 47, 2, ResamplerPrecision::Bits20), Failure);
    EXPECT_NO_THROW(Resampler(45, 44100, 2, ResamplerPrecision::Bits20));
}

TEST(RateConversion, GivesTheSameInLargeBlocksAndInSmall) {
    const TestFolder folder;
    const QString from = folder.MakeFile("in.wav", WavOf(MakeNoise(200, 2, 20000), WavKind::Signed16));
    for (const qint64 size : {400, 1'000'000}) {
        AudioFile reader;
        AudioFile writer;
        writer.SetFormatPCM(48000, 2, 16);
        reader.OpenForRead(from);
        writer.OpenForWrite(folder.Path(QByteArray::number(size)));
        writer.SetSourceFormat(200, 2);
        for (AudioBlock block = reader.ReadBlock(size); !block.IsEmpty(); block = reader.ReadBlock(size)) {
            writer.WriteBlock(block);
        }
        writer.CloseFile();
    }
    EXPECT_TRUE(ContentOf(folder.Native("400")) == ContentOf(folder.Native("1000000")));
}

TEST(RateConversion, IsPartOfTheConversionOfAFile) {
    const TestSound sound = Converted(MakeTone(44100, 1, 44101, 100), WavKind::Signed16, 48000, 2, 16);
    EXPECT_EQ(sound.Frames(), 48001);
}

TEST(RateConversion, KeepsAToneInPlaceAndInLevel) {
    const TestSound sound = Converted(MakeTone(44100, 2, 44100, 997), WavKind::Float32, 48000, 2, 24);
    const TestSound expected = MakeTone(48000, 2, 48000, 997);
    double worst = 0;
    for (std::size_t i = 2000; i + 2000 < sound.Samples.size(); ++i) {
        worst = std::max(worst, std::abs(sound.Samples[i] - expected.Samples[i]));
    }
    EXPECT_LT(Decibels(worst), -110);
}

TEST(RateConversion, LetsNoToneFoldBack) {
    // 15 kHz has no place at 22.05 kHz and would come back as 7050 Hz.
    const TestSound sound = Converted(MakeTone(44100, 1, 88200, 15000), WavKind::Signed24, 22050, 1, 24);
    EXPECT_LT(Decibels(LevelAt(sound.Samples, 22050, 7050)), -110);
}

TEST(RateConversion, BetweenRatesTooFarApartIsRefusedOrWorks) {
    std::vector<float> converted;
    const std::vector<float> frames(1000, 0.5F);
    for (const auto& rates : {std::pair(1, 384000), std::pair(6'200'000, 8000), std::pair(6'200'000, 1)}) {
        const int from = rates.first;
        const int to = rates.second;
        converted.clear();
        const bool works = PassOver([&] {
            Resampler resampler(from, to, 1, ResamplerPrecision::Bits20);
            resampler.Convert(std::span(frames).first(10), converted);
            resampler.Finish(converted);
        });
        const auto expected = static_cast<std::size_t>(std::llround(10.0 * to / from));
        EXPECT_TRUE(!works || converted.size() == expected) << from << " to " << to;
    }
}

TEST(ChannelConversion, OfStereoToMonoIsTheMean) {
    TestSound stereo{44100, 2, {}};
    for (int i = 0; i < 1000; ++i) stereo.Samples.insert(stereo.Samples.end(), {0.5, -0.25});
    const TestSound mono = Converted(stereo, WavKind::Signed16, 44100, 1, 16);
    ASSERT_EQ(mono.Frames(), 1000);
    for (const double sample : mono.Samples) ASSERT_DOUBLE_EQ(sample, 0.125);
}

TEST(ChannelConversion, OfSixToTwoLosesNoChannel) {
    for (int channel = 0; channel < 6; ++channel) {
        TestSound sound = MakeTone(48000, 6, 9600, 1000);
        for (std::size_t i = 0; i < sound.Samples.size(); ++i) {
            if (static_cast<int>(i % 6) != channel) sound.Samples[i] = 0;
        }
        const TestSound stereo = Converted(sound, WavKind::Signed16, 48000, 2, 16, 0x3F);
        ASSERT_EQ(stereo.Frames(), 9600);
        const double level =
            LevelAt(ChannelOf(stereo, 0), 48000, 1000) + LevelAt(ChannelOf(stereo, 1), 48000, 1000);
        EXPECT_GT(level, 0.05) << channel;
    }
}

TEST(WidthConversion, OfQuietSoundToSixteenBitsKeepsIt) {
    const double level = std::pow(10, -96.0 / 20);
    const TestSound sound =
        Converted(MakeTone(44100, 1, 220500, 1000, level), WavKind::Signed24, 44100, 1, 16);
    EXPECT_NEAR(LevelAt(sound.Samples, 44100, 1000) / level, 1.0, 0.15);
}

TEST(WidthConversion, OfDigitalSilenceIsSilence) {
    for (const int bits : {8, 16, 24}) {
        const TestSound sound = Converted(MakeSilence(48000, 2, 5000), WavKind::Float32, 44100, 2, bits);
        for (const double sample : sound.Samples) ASSERT_EQ(sample, 0.0) << bits;
    }
}

TEST(WidthConversion, OfFloatBeyondFullScaleIsLimited) {
    const TestSound sound = Converted(MakeTone(44100, 1, 4410, 441, 4.0), WavKind::Float32, 44100, 1, 16);
    const auto [least, most] = std::minmax_element(sound.Samples.begin(), sound.Samples.end());
    EXPECT_EQ(*least, -1.0);
    EXPECT_EQ(*most, 32767.0 / 32768.0);
}

}  // namespace
}  // namespace Sonmira

#include "Mp3Encoding.h"
#include "Mp3Frames.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

// Parameters at that rate, of an encoder that wastes no time.
Mp3Parameters At(int rate) {
    Mp3Parameters set;
    set.SampleRate = rate;
    set.EncoderQuality = 7;
    return set;
}

class Mp3SampleRate : public ::testing::TestWithParam<int> {};

TEST_P(Mp3SampleRate, IsThatOfEachFrameAndKeepsThePitch) {
    const int rate = GetParam();
    const TestSound tone = MakeTone(44100, 2, 22050, 440);
    const QByteArray mp3 = EncodedMp3(At(rate), tone);
    for (const Mp3Frame& frame : Mp3FileOf(mp3).Frames) {
        EXPECT_EQ(frame.Rate, rate);
        EXPECT_EQ(frame.Version, rate >= 32000 ? 1 : rate >= 16000 ? 2 : 25);
    }
    const TestSound heard = DecodedMp3(mp3);
    EXPECT_EQ(heard.Rate, rate);
    EXPECT_NEAR(static_cast<double>(heard.Frames()), rate / 2.0, 1);
    EXPECT_NEAR(GainAt(tone, heard, 440), 0, 0.15);
}

TEST_P(Mp3SampleRate, HasEachBitRateOrTheNearestThatItKnowsInEachFrameAndInItsText) {
    const int rate = GetParam();
    const TestSound tone = MakeTone(rate, 2, rate / 3, 440);
    for (const int kilobits : {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}) {
        Mp3Parameters set = At(rate);
        set.Bitrate = kilobits;
        const Mp3File file = Mp3FileOf(EncodedMp3(set, tone));
        EXPECT_EQ(file.LeastKilobits(), NearestMp3Bitrate(kilobits, rate));
        EXPECT_EQ(file.MostKilobits(), NearestMp3Bitrate(kilobits, rate));
        const QString text = QStringLiteral(" Hz, Stereo, %1 kbit/s").arg(file.MostKilobits());
        EXPECT_TRUE(Mp3FormatString(set).endsWith(text)) << kilobits;
    }
}

TEST_P(Mp3SampleRate, HoldsTheAverageThatItsTextStates) {
    const int rate = GetParam();
    const TestSound noise = MakeNoise(rate, 2, rate, 0.5);
    for (const int kilobits : {4, 64, 123, 320}) {
        for (const int most : {8, 64, 320}) {
            Mp3Parameters set = At(rate);
            set.VbrMethod = Mp3Parameters::Abr;
            set.AbrBitrate = static_cast<qint16>(kilobits);
            set.MaxVbrBitrate = most;
            const Mp3File file = Mp3FileOf(EncodedMp3(set, noise));
            const QString text = Mp3FormatString(set).section(QStringLiteral(", "), -1);
            EXPECT_TRUE(text.endsWith(QStringLiteral(" kbit/s on average")));
            const double stated = text.section(u' ', 0, 0).toDouble();
            EXPECT_NEAR(file.MeanKilobits(), stated, stated * 0.15) << kilobits << " to " << most;
        }
    }
}

TEST_P(Mp3SampleRate, NeverGoesAboveTheMostThatTheTextOfVbrStates) {
    const int rate = GetParam();
    const TestSound noise = MakeNoise(rate, 2, rate / 2, 0.9);
    for (const qint32 method : {Mp3Parameters::Old, Mp3Parameters::New}) {
        for (const int most : {8, 56, 96, 320}) {
            Mp3Parameters set = At(rate);
            set.VbrMethod = method;
            set.VbrQuality = 0;
            set.MaxVbrBitrate = most;
            const Mp3File file = Mp3FileOf(EncodedMp3(set, noise));
            const QString text =
                QStringLiteral("VBR quality 0, up to %1 kbit/s").arg(NearestMp3Bitrate(most, rate));
            EXPECT_TRUE(Mp3FormatString(set).endsWith(text));
            EXPECT_LE(file.MostKilobits(), NearestMp3Bitrate(most, rate)) << method;
            EXPECT_GT(file.MostKilobits(), NearestMp3Bitrate(most, rate) / 2) << method;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, Mp3SampleRate,
                         ::testing::Values(8000, 11025, 12000, 16000, 22050, 24000, 32000, 44100, 48000));

class Mp3Loudness : public ::testing::TestWithParam<int> {};

TEST_P(Mp3Loudness, IsThatOfTheSourceAtEachConstantAndAverageBitRate) {
    for (const int rate : {12000, 24000, 44100}) {
        const TestSound tone = MakeTone(rate, 2, rate / 3, 440);
        for (const qint32 method : {Mp3Parameters::None, Mp3Parameters::Abr}) {
            Mp3Parameters set = At(rate);
            set.VbrMethod = method;
            set.Bitrate = GetParam();
            set.AbrBitrate = static_cast<qint16>(GetParam());
            EXPECT_NEAR(GainAt(tone, DecodedMp3(EncodedMp3(set, tone)), 440), 0, 0.05)
                << rate << " Hz, method " << method;
        }
    }
}

// With the rates around those where the encoder's own gain changes.
INSTANTIATE_TEST_SUITE_P(Rates, Mp3Loudness, ::testing::Values(64, 160, 175, 176, 192, 208, 224, 240, 320));

TEST(Mp3FormatString, StatesTheQualityThatTheEncoderTakes) {
    Mp3Parameters set;
    set.VbrMethod = Mp3Parameters::New;
    for (const auto& [asked, taken] : {std::pair(-3, 0), std::pair(5, 5), std::pair(12, 9)}) {
        set.VbrQuality = static_cast<qint16>(asked);
        EXPECT_EQ(
            Mp3FormatString(set),
            QStringLiteral("MPEG Layer-3 44100 Hz, Stereo, VBR quality %1, up to 320 kbit/s").arg(taken));
    }
}

TEST(Mp3FormatString, IsEmptyForAnySampleRateOrChannelCountThatMp3HasNot) {
    for (const int rate : {0, -1, 44101, 96000}) {
        Mp3Parameters set;
        set.SampleRate = rate;
        EXPECT_EQ(Mp3FormatString(set), QString()) << rate;
    }
    for (const int channels : {0, -1, 3}) {
        Mp3Parameters set;
        set.ChannelCount = channels;
        EXPECT_EQ(Mp3FormatString(set), QString()) << channels;
    }
}

}  // namespace
}  // namespace Sonmira

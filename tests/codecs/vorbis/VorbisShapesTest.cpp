#include "codecs/Conversion.h"
#include "support/Tool.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Sonmira {
namespace {

constexpr int Bitrates[] = {8, 16, 24, 32, 48, 56, 64, 96, 112, 128, 160, 192, 224, 256, 320};

// What stands at the beginning of the stream, in the packet that Vorbis I calls the identification header.
struct Identification {
    int Channels;
    int Rate;
    int Most;  // bits a second; 0 or less for none
    int Nominal;
    int Least;
};

Identification IdentificationOf(const QByteArray& ogg) {
    const qsizetype start = ogg.indexOf("\x01vorbis");
    const auto number = [&](qsizetype at) {
        std::uint32_t value = 0;
        for (int i = 3; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(ogg.at(start + at + i));
        return static_cast<int>(value);
    };
    return {static_cast<unsigned char>(ogg.at(start + 11)), number(12), number(16), number(20), number(24)};
}

QByteArray EncodedVorbis(const TestSound& sound, const FormatSetting& setFormat) {
    const TestFolder folder;
    ConvertFile(folder.MakeFile("in.wav", WavOf(sound, WavKind::Signed16)), folder.Path("out.ogg"),
                setFormat);
    return ContentOf(folder.Native("out.ogg"));
}

// Another decoder finds as many frames as there were.
void ExpectDecoded(const TestSound& sound, const FormatSetting& setFormat) {
    const TestFolder folder;
    folder.MakeFile("out.ogg", EncodedVorbis(sound, setFormat));
    const ToolResult result =
        RunTool({"oggdec", "-Q", "-R", "-o", folder.Native("out.raw"), folder.Native("out.ogg")});
    EXPECT_EQ(result.ExitCode, 0);
    EXPECT_EQ(ContentOf(folder.Native("out.raw")).size(), sound.Frames() * sound.Channels * 2);
}

TEST(VorbisShapes, OfAQualityStateWhatTheLibraryExpectsAndNoLimits) {
    const TestSound sound = MakeTone(44100, 2, 2000, 440);
    // The library's own bit rates for its qualities 0 to 10.
    constexpr int kilobits[] = {64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 500};
    for (int quality = 0; quality <= 10; ++quality) {
        const auto header = IdentificationOf(EncodedVorbis(
            sound, [&](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, {}, {}, {}, quality * 100); }));
        EXPECT_EQ(header.Channels, 2);
        EXPECT_EQ(header.Rate, 44100);
        EXPECT_NEAR(header.Nominal / 1000.0, kilobits[quality], 1);
        EXPECT_LE(header.Least, 0);
        EXPECT_LE(header.Most, 0);
    }
}

TEST(VorbisShapes, OfANominalRateStateItWithoutLimits) {
    const TestSound sound = MakeTone(48000, 1, 2000, 440);
    for (const int kilobits : {32, 96, 224}) {
        const auto header = IdentificationOf(
            EncodedVorbis(sound, [&](AudioFile& file) { file.SetFormatOggVorbis(48000, 1, kilobits); }));
        EXPECT_EQ(header.Channels, 1);
        EXPECT_EQ(header.Rate, 48000);
        EXPECT_EQ(header.Nominal, kilobits * 1000);
        EXPECT_LE(header.Least, 0);
        EXPECT_LE(header.Most, 0);
    }
}

TEST(VorbisShapes, OfManagedRatesStateAllThree) {
    const TestSound sound = MakeTone(44100, 2, 2000, 440);
    const int shapes[][3] = {{128, 96, 160}, {128, 128, 128}, {64, 48, 320}, {320, 8, 320}};
    for (const auto& [nominal, least, most] : shapes) {
        ASSERT_TRUE(AudioFile().IsFormatOggVorbisAvailable(44100, 2, nominal, least, most));
        const auto header = IdentificationOf(
            EncodedVorbis(sound, [&, one = nominal, low = least, high = most](AudioFile& file) {
                file.SetFormatOggVorbis(44100, 2, one, low, high);
            }));
        EXPECT_EQ(header.Nominal, nominal * 1000);
        EXPECT_EQ(header.Least, least * 1000);
        EXPECT_EQ(header.Most, most * 1000);
    }
}

TEST(VorbisShapes, OfManagedRatesHoldThem) {
    // Silence wants fewer bits than there must be.
    TestSound sound = MakeNoise(44100, 2, 4 * 44100LL, 0.9);
    const auto kilobits = [&](const FormatSetting& setFormat) {
        return static_cast<double>(EncodedVorbis(sound, setFormat).size()) * 8 / 1000 / 4;
    };
    const double held = kilobits([](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, 128, 96, 128); });
    EXPECT_NEAR(held, 128, 13);
    std::fill(sound.Samples.begin(), sound.Samples.end(), 0.0);
    EXPECT_LT(kilobits([](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, 128); }), 20);
    EXPECT_NEAR(kilobits([](AudioFile& file) { file.SetFormatOggVorbis(44100, 2, 128, 96, 160); }), 96, 10);
}

TEST(VorbisShapes, OfHigherQualitiesAreLarger) {
    const TestSound sound = MakeNoise(44100, 2, 44100);
    qsizetype smaller = 0;
    for (int quality = 0; quality <= 1000; quality += 100) {
        const qsizetype size = EncodedVorbis(sound, [&](AudioFile& file) {
                                   file.SetFormatOggVorbis(44100, 2, {}, {}, {}, quality);
                               }).size();
        EXPECT_GT(size, smaller) << quality;
        smaller = size;
    }
}

// The bit rates between which the library has modes, for one and two channels.
struct Limits {
    int Rate;
    int Least[2];
    int Most[2];
};

void PrintTo(const Limits& limits, std::ostream* stream) {
    *stream << limits.Rate << " Hz";
}

class VorbisLimits : public ::testing::TestWithParam<Limits> {};

TEST_P(VorbisLimits, AreThoseOfTheAvailableFormatsAllOfWhichEncode) {
    const auto& [rate, least, most] = GetParam();
    for (const int channels : {1, 2}) {
        const TestSound sound = MakeTone(rate, channels, rate / 10, 440);
        for (const int kilobits : Bitrates) {
            SCOPED_TRACE(testing::Message() << channels << " channels, " << kilobits << " kbit");
            const bool isThere = kilobits >= least[channels - 1] && kilobits <= most[channels - 1];
            AudioFile file;
            EXPECT_EQ(file.IsFormatOggVorbisAvailable(rate, channels, kilobits, 0, 0), isThere);
            EXPECT_EQ(file.IsFormatOggVorbisAvailable(rate, channels, kilobits, kilobits, kilobits), isThere);
            file.SetFormatOggVorbis(rate, channels, kilobits);
            EXPECT_EQ(!file.FormatString().isEmpty(), isThere);
            if (!isThere) continue;
            ExpectDecoded(sound, [&, rate = rate](AudioFile& writer) {
                writer.SetFormatOggVorbis(rate, channels, kilobits);
            });
            // Limits make the library slow.
            if (channels == 1) continue;
            ExpectDecoded(sound, [&, rate = rate](AudioFile& writer) {
                writer.SetFormatOggVorbis(rate, channels, kilobits, kilobits, kilobits);
            });
        }
    }
}

TEST_P(VorbisLimits, LeaveEachQualityItsFormat) {
    const int rate = GetParam().Rate;
    for (const int channels : {1, 2}) {
        const TestSound sound = MakeTone(rate, channels, rate / 10, 440);
        for (const int quality : {0, 1, 500, 1000}) {
            ExpectDecoded(sound, [&](AudioFile& writer) {
                writer.SetFormatOggVorbis(rate, channels, {}, {}, {}, quality);
            });
        }
    }
}

TEST_P(VorbisLimits, AreKnownToOtherDecodersAsWell) {
    const int rate = GetParam().Rate;
    const TestFolder folder;
    folder.MakeFile("out.ogg", EncodedVorbis(MakeTone(rate, 2, rate + 7, 440), [&](AudioFile& writer) {
                        writer.SetFormatOggVorbis(rate, 2, 64);
                    }));
    const TestSound decoded = DecodedByFfmpeg(folder.Native("out.ogg"));
    EXPECT_EQ(decoded.Rate, rate);
    EXPECT_EQ(decoded.Frames(), rate + 7);
    EXPECT_NEAR(LevelAt(ChannelOf(decoded, 1), rate, 440), 0.5, 0.03);
}

INSTANTIATE_TEST_SUITE_P(
    Rates, VorbisLimits,
    ::testing::Values(Limits{8000, {8, 12}, {42, 84}}, Limits{11025, {12, 16}, {50, 100}},
                      Limits{12000, {12, 16}, {50, 100}}, Limits{16000, {16, 24}, {100, 200}},
                      Limits{22050, {16, 30}, {90, 180}}, Limits{24000, {16, 30}, {90, 180}},
                      Limits{32000, {30, 36}, {190, 380}}, Limits{44100, {32, 45}, {240, 500}},
                      Limits{48000, {32, 45}, {240, 500}}));

TEST(VorbisShapes, OfLimitsInTheWrongOrderAreNotAvailable) {
    const AudioFile file;
    EXPECT_TRUE(file.IsFormatOggVorbisAvailable(44100, 2, 128, 96, 160));
    EXPECT_TRUE(file.IsFormatOggVorbisAvailable(44100, 2, 128, 0, 160));
    EXPECT_TRUE(file.IsFormatOggVorbisAvailable(44100, 2, 128, 96, 0));
    EXPECT_FALSE(file.IsFormatOggVorbisAvailable(44100, 2, 128, 160, 192));
    EXPECT_FALSE(file.IsFormatOggVorbisAvailable(44100, 2, 128, 96, 112));
    EXPECT_FALSE(file.IsFormatOggVorbisAvailable(44100, 2, 0, 96, 160));
    EXPECT_FALSE(file.IsFormatOggVorbisAvailable(44100, 3, 128, 0, 0));
    EXPECT_FALSE(file.IsFormatOggVorbisAvailable(0, 2, 128, 0, 0));
}

}  // namespace
}  // namespace Sonmira

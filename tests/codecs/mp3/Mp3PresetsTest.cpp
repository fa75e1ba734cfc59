#include "Mp3Encoding.h"
#include "Mp3Frames.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

// What a file of a preset must be, by what the encoder's documentation says of it.
struct Preset {
    const char* Name;
    int Number;
    int Rate;
    int Mode;     // of the header: 0 stereo, 1 joint, 3 mono
    int Method;   // of the tag: 1 constant, 3 old, 4 newest
    int Amount;   // kbit, or quality of VBR
    int Lowpass;  // Hz; 0 for that of the encoder's choice
    int Quality;
    bool HasShortBlocks;
};

void PrintTo(const Preset& preset, std::ostream* stream) {
    *stream << preset.Name;
}

std::string NameOf(const ::testing::TestParamInfo<Preset>& info) {
    return info.param.Name;
}

void ExpectHeard(const Preset& preset, const Mp3Parameters& set) {
    EXPECT_TRUE(IsMp3Setting(set));
    EXPECT_EQ(set.LowpassFrequency, preset.Lowpass > 0 ? preset.Lowpass : -1);
    EXPECT_EQ(set.EncoderQuality, preset.Quality);
    const QByteArray mp3 = EncodedMp3(set, MakeMusic(44100, 2, 1.2));
    const Mp3File file = Mp3FileOf(mp3);
    const Mp3Frame& frame = file.Frames.at(0);
    EXPECT_EQ(frame.Rate, preset.Rate);
    EXPECT_EQ(frame.Mode, preset.Mode);
    EXPECT_EQ(file.ShortBlocks(0) > 0, preset.HasShortBlocks);
    if (preset.Method == 1) {
        EXPECT_EQ(file.LeastKilobits(), preset.Amount);
        EXPECT_EQ(file.MostKilobits(), preset.Amount);
    } else {
        EXPECT_LT(file.LeastKilobits(), file.MostKilobits());
        EXPECT_EQ(file.Tag.value().VbrQuality, preset.Amount);
    }
    // Frames of the smallest rates have no room for a tag.
    if (preset.Amount > 56 || preset.Method != 1) {
        EXPECT_EQ(file.Tag.value().Method, preset.Method);
        if (preset.Lowpass > 0) {
            EXPECT_EQ(file.Tag.value().Lowpass, preset.Lowpass / 100);
        }
    }
    // What is above the filter is gone, what is well below it is there.
    if (preset.Lowpass == 0 || preset.Lowpass > 19000) return;
    const TestSound comb = MakeComb(preset.Rate, 2, 0.7, 500);
    const TestSound heard = DecodedMp3(EncodedMp3(set, comb));
    EXPECT_GT(GainAt(comb, heard, 1000), -3);
    const int above = (preset.Lowpass / 500 + 2) * 500;
    if (above < preset.Rate / 2) {
        EXPECT_LT(GainAt(comb, heard, above), -40);
    }
}

class Mp3Preset : public ::testing::TestWithParam<Preset> {};

TEST_P(Mp3Preset, IsHeardInTheFile) {
    Mp3Parameters set;
    // All of these are the preset's own business.
    set.VbrMethod = Mp3Parameters::Abr;
    set.HighpassFrequency = 3000;
    set.Emphasis = 2;
    set.SetPreset(static_cast<qint16>(GetParam().Number));
    EXPECT_EQ(set.HighpassFrequency, GetParam().Number == 1 ? 125 : -1);
    EXPECT_EQ(set.Emphasis, 0);
    ExpectHeard(GetParam(), set);
}

INSTANTIATE_TEST_SUITE_P(All, Mp3Preset,
                         ::testing::Values(Preset{"Phone", 1, 8000, 3, 1, 16, 3400, 5, false},
                                           Preset{"ShortWave", 2, 11025, 3, 1, 24, 4000, 5, true},
                                           Preset{"Am", 3, 16000, 3, 1, 40, 7500, 5, true},
                                           Preset{"Fm", 4, 32000, 1, 1, 112, 15000, 5, true},
                                           Preset{"Voice", 5, 24000, 3, 1, 56, 12000, 5, false},
                                           Preset{"Radio", 6, 44100, 1, 1, 128, 15000, 5, true},
                                           Preset{"Tape", 7, 44100, 1, 1, 128, 18000, 5, true},
                                           Preset{"HiFi", 8, 44100, 1, 1, 160, 18000, 2, true},
                                           Preset{"Cd", 9, 44100, 0, 1, 192, 0, 2, true},
                                           Preset{"Studio", 10, 44100, 0, 1, 256, 0, 2, true},
                                           Preset{"R3mix", 11, 44100, 1, 4, 3, 18000, 2, true}),
                         NameOf);

class Mp3AltPreset : public ::testing::TestWithParam<Preset> {};

TEST_P(Mp3AltPreset, IsHeardInTheFile) {
    Mp3Parameters set;
    set.SampleRate = 8000;
    set.ChannelCount = 1;
    set.SetAltPreset(static_cast<qint16>(GetParam().Number));
    ExpectHeard(GetParam(), set);
}

INSTANTIATE_TEST_SUITE_P(All, Mp3AltPreset,
                         ::testing::Values(Preset{"FastStandard", 1, 44100, 1, 4, 2, 18500, 2, true},
                                           Preset{"Standard", 2, 44100, 1, 3, 2, 18500, 2, true},
                                           Preset{"FastExtreme", 3, 44100, 1, 4, 0, 19500, 2, true},
                                           Preset{"Extreme", 4, 44100, 1, 3, 0, 19500, 2, true},
                                           Preset{"Insane", 5, 44100, 1, 1, 320, 20500, 2, true}),
                         NameOf);

TEST(Mp3Presets, OfUnknownNumbersChangeNothing) {
    Mp3Parameters set;
    set.Bitrate = 96;
    set.Emphasis = 1;
    for (const qint16 number : {-32768, -1, 0, 6, 12, 32767}) {
        if (number != 6) set.SetPreset(number);
        set.SetAltPreset(number);
        EXPECT_EQ(set.Bitrate, 96) << number;
        EXPECT_EQ(set.Emphasis, 1) << number;
    }
}

}  // namespace
}  // namespace Sonmira

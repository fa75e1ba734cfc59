#include "Mp3Encoding.h"
#include "Mp3Frames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace Sonmira {
namespace {

constexpr qsizetype FirstFrame = 417;  // of sound, behind the tag, at 128 kbit and 44100 Hz

using Setting = void (*)(Mp3Parameters&);
using Measure = double (*)(const Mp3File&);

struct Range {
    double Least;
    double Most;
};

// One property: what its change makes of the file. `Rest` sets what the property needs to be heard.
struct Row {
    const char* Name;
    Setting Rest;
    Setting Change;
    Measure Measured;
    Range Before;
    Range After;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.Name;
}

void Nothing(Mp3Parameters& /*set*/) {}
void BestVbr(Mp3Parameters& set) {
    set.VbrMethod = Mp3Parameters::New;
    set.VbrQuality = 0;
}
void Average(Mp3Parameters& set) {
    set.VbrMethod = Mp3Parameters::Abr;
    set.AbrBitrate = 160;
}
void DualChannels(Mp3Parameters& set) {
    set.StereoMode = 4;
    set.Bitrate = 192;
}
void MostConstant(Mp3Parameters& set) {
    set.Bitrate = 320;
}

double Most(const Mp3File& file) {
    return file.MostKilobits();
}
double Least(const Mp3File& file) {
    return file.LeastKilobits();
}
double Mean(const Mp3File& file) {
    return file.MeanKilobits();
}
double TagMethod(const Mp3File& file) {
    return file.Tag ? file.Tag->Method : -1;
}
double TagVbrQuality(const Mp3File& file) {
    return file.Tag ? file.Tag->VbrQuality : -1;
}
double TagKilobits(const Mp3File& file) {
    return file.Tag ? file.Tag->Kilobits : -1;
}
double IsUnwise(const Mp3File& file) {
    return file.Tag && file.Tag->IsUnwise ? 1 : 0;
}
double HasTag(const Mp3File& file) {
    return file.Tag ? 1 : 0;
}
double Reservoir(const Mp3File& file) {
    return file.MostReservoirBytes();
}
double ShortBlocks(const Mp3File& file) {
    return file.ShortBlocks(0);
}

// The part of the frames of which it holds, 0 to 1.
template <class Holds>
double Share(const Mp3File& file, Holds&& holds) {
    const auto count = std::count_if(file.Frames.begin(), file.Frames.end(), holds);
    return static_cast<double>(count) / static_cast<double>(file.Frames.size());
}

double Mode(const Mp3File& file) {
    const int mode = file.Frames.at(0).Mode;
    return Share(file, [&](const Mp3Frame& frame) { return frame.Mode == mode; }) == 1 ? mode : -1;
}
double MidSide(const Mp3File& file) {
    return Share(file, [](const Mp3Frame& frame) { return (frame.ModeExtension & 2) != 0; });
}
double Emphasis(const Mp3File& file) {
    const int mark = file.Frames.at(0).Emphasis;
    return Share(file, [&](const Mp3Frame& frame) { return frame.Emphasis == mark; }) == 1 ? mark : -1;
}
double GoodChecksums(const Mp3File& file) {
    return Share(file, [](const Mp3Frame& frame) { return frame.HasChecksum && frame.ChecksumFits; });
}
// The part of the frames where one channel has a short block and the other one has not.
double DifferentBlocks(const Mp3File& file) {
    return Share(file, [](const Mp3Frame& frame) {
        const auto isShort = [&](std::size_t i) { return frame.Granules[i].BlockType == 2; };
        return isShort(0) != isShort(1) || isShort(2) != isShort(3);
    });
}

const Row Rows[] = {
    {"MaxVbrBitrate",
     BestVbr,
     [](Mp3Parameters& set) { set.MaxVbrBitrate = 160; },
     Most,
     {192, 320},
     {160, 160}},
    {"MaxVbrBitrateWithOld",
     [](Mp3Parameters& set) {
         set.VbrMethod = Mp3Parameters::Old;
         set.VbrQuality = 0;
     },
     [](Mp3Parameters& set) { set.MaxVbrBitrate = 160; },
     Most,
     {192, 320},
     {160, 160}},
    {"MaxVbrBitrateWithAbr",
     Average,
     [](Mp3Parameters& set) { set.MaxVbrBitrate = 160; },
     Most,
     {192, 320},
     {160, 160}},
    {"VbrQuality", BestVbr, [](Mp3Parameters& set) { set.VbrQuality = 9; }, Mean, {150, 320}, {32, 80}},
    {"VbrQualityInTheTag",
     BestVbr,
     [](Mp3Parameters& set) { set.VbrQuality = 9; },
     TagVbrQuality,
     {0, 0},
     {9, 9}},
    {"VbrMethodDefault",
     Nothing,
     [](Mp3Parameters& set) { set.VbrMethod = Mp3Parameters::Default; },
     TagMethod,
     {1, 1},
     {4, 4}},
    {"VbrMethodOld",
     Nothing,
     [](Mp3Parameters& set) { set.VbrMethod = Mp3Parameters::Old; },
     TagMethod,
     {1, 1},
     {3, 3}},
    {"VbrMethodNew",
     Nothing,
     [](Mp3Parameters& set) { set.VbrMethod = Mp3Parameters::New; },
     TagMethod,
     {1, 1},
     {4, 5}},
    {"VbrMethodMtrh",
     Nothing,
     [](Mp3Parameters& set) { set.VbrMethod = Mp3Parameters::Mtrh; },
     TagMethod,
     {1, 1},
     {4, 4}},
    {"VbrMethodAbr",
     Nothing,
     [](Mp3Parameters& set) { set.VbrMethod = Mp3Parameters::Abr; },
     TagMethod,
     {1, 1},
     {2, 2}},
    {"AbrBitrate", Average, [](Mp3Parameters& set) { set.AbrBitrate = 80; }, Mean, {145, 175}, {72, 90}},
    {"AbrBitrateInTheTag",
     Average,
     [](Mp3Parameters& set) { set.AbrBitrate = 83; },
     TagKilobits,
     {160, 160},
     {83, 83}},
    {"StereoModeStereo", Nothing, [](Mp3Parameters& set) { set.StereoMode = 1; }, Mode, {1, 1}, {0, 0}},
    {"StereoModeStereoWithoutMidAndSide",
     Nothing,
     [](Mp3Parameters& set) { set.StereoMode = 1; },
     MidSide,
     {0.01, 1},
     {0, 0}},
    {"StereoModeForcedJoint",
     MostConstant,
     [](Mp3Parameters& set) { set.StereoMode = 3; },
     MidSide,
     {0, 0.99},
     {1, 1}},
    {"StereoModeDual", Nothing, [](Mp3Parameters& set) { set.StereoMode = 4; }, Mode, {1, 1}, {2, 2}},
    {"WriteVbrHeader",
     BestVbr,
     [](Mp3Parameters& set) { set.WriteVbrHeader = false; },
     HasTag,
     {1, 1},
     {0, 0}},
    {"WriteVbrHeaderWithAbr",
     Average,
     [](Mp3Parameters& set) { set.WriteVbrHeader = false; },
     HasTag,
     {1, 1},
     {0, 0}},
    {"WriteVbrHeaderNotAtAConstantRate",
     Nothing,
     [](Mp3Parameters& set) { set.WriteVbrHeader = false; },
     HasTag,
     {1, 1},
     {1, 1}},
    {"BitReservoir",
     Nothing,
     [](Mp3Parameters& set) { set.BitReservoir = false; },
     Reservoir,
     {100, 511},
     {0, 0}},
    {"BitReservoirWithVbr",
     BestVbr,
     [](Mp3Parameters& set) { set.BitReservoir = false; },
     Reservoir,
     {10, 511},
     {0, 0}},
    {"BlockTypesDiffer",
     DualChannels,
     [](Mp3Parameters& set) { set.BlockTypesDiffer = true; },
     DifferentBlocks,
     {0, 0},
     {0.02, 1}},
    {"ShortBlocks",
     Nothing,
     [](Mp3Parameters& set) { set.ShortBlocks = false; },
     ShortBlocks,
     {2, 1000},
     {0, 0}},
    {"ShortBlocksWithVbr",
     BestVbr,
     [](Mp3Parameters& set) { set.ShortBlocks = false; },
     ShortBlocks,
     {2, 1000},
     {0, 0}},
    {"EmphasisOf50And15Microseconds",
     Nothing,
     [](Mp3Parameters& set) { set.Emphasis = 1; },
     Emphasis,
     {0, 0},
     {1, 1}},
    {"EmphasisOfJ17", Nothing, [](Mp3Parameters& set) { set.Emphasis = 2; }, Emphasis, {0, 0}, {3, 3}},
    {"StrictIso",
     MostConstant,
     [](Mp3Parameters& set) { set.StrictIso = true; },
     Reservoir,
     {10, 511},
     {0, 0}},
    {"AthControlOnly", Nothing, [](Mp3Parameters& set) { set.AthControl = 1; }, IsUnwise, {0, 0}, {1, 1}},
    {"AthControlDisabled", Nothing, [](Mp3Parameters& set) { set.AthControl = 2; }, IsUnwise, {0, 0}, {1, 1}},
    {"ErrorProtection",
     Nothing,
     [](Mp3Parameters& set) { set.ErrorProtection = true; },
     GoodChecksums,
     {0, 0},
     {1, 1}},
    {"ErrorProtectionWithVbr",
     BestVbr,
     [](Mp3Parameters& set) { set.ErrorProtection = true; },
     GoodChecksums,
     {0, 0},
     {1, 1}},
    {"ChannelCount", Nothing, [](Mp3Parameters& set) { set.ChannelCount = 1; }, Mode, {1, 1}, {3, 3}},
    {"BitrateDown", Nothing, [](Mp3Parameters& set) { set.Bitrate = 32; }, Most, {128, 128}, {32, 32}},
    {"BitrateUp", Nothing, [](Mp3Parameters& set) { set.Bitrate = 320; }, Least, {128, 128}, {320, 320}},
};

class Mp3Property : public ::testing::TestWithParam<Row> {};

TEST_P(Mp3Property, ChangesTheFileAsItSays) {
    const Row& row = GetParam();
    const TestSound sound = MakeMusic(44100, 2, 1.2);
    Mp3Parameters set;
    row.Rest(set);
    const Mp3File before = Mp3FileOf(EncodedMp3(set, sound));
    row.Change(set);
    const Mp3File after = Mp3FileOf(EncodedMp3(set, sound));
    for (const Mp3File& file : {before, after}) {
        EXPECT_GE(file.Frames.size(), 45U);
        EXPECT_EQ(file.Rest, 0);
        EXPECT_EQ(file.Tag ? file.Tag->Frames : std::ssize(file.Frames), std::ssize(file.Frames));
    }
    EXPECT_GE(row.Measured(before), row.Before.Least);
    EXPECT_LE(row.Measured(before), row.Before.Most);
    EXPECT_GE(row.Measured(after), row.After.Least);
    EXPECT_LE(row.Measured(after), row.After.Most);
}

INSTANTIATE_TEST_SUITE_P(Each, Mp3Property, ::testing::ValuesIn(Rows),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(Mp3Parameters, NoFrameFallsBelowAnEnforcedLeastBitRateNotEvenInSilence) {
    TestSound sound = MakeMusic(44100, 2, 0.5);
    sound.Samples.resize(sound.Samples.size() * 3);
    for (const qint32 method : {Mp3Parameters::Old, Mp3Parameters::New, Mp3Parameters::Abr}) {
        Mp3Parameters set;
        set.VbrMethod = method;
        set.Bitrate = 96;
        EXPECT_LT(Mp3FileOf(EncodedMp3(set, sound)).LeastKilobits(), 96) << method;
        set.EnforceMinBitrate = true;
        EXPECT_EQ(Mp3FileOf(EncodedMp3(set, sound)).LeastKilobits(), 96) << method;
    }
}

// Qualities that the encoder treats alike give the same file.
TEST(Mp3Parameters, TheEncoderQualityStandsInTheTagAndChangesTheSound) {
    const TestSound sound = MakeMusic(44100, 2, 0.7);
    constexpr int inTag[] = {0, 1, 2, 3, 4, 5, 6, 7, 7, 9};
    std::set<QByteArray> files;
    for (qint16 quality = 0; quality <= 9; ++quality) {
        Mp3Parameters set;
        set.EncoderQuality = quality;
        const QByteArray mp3 = EncodedMp3(set, sound);
        EXPECT_EQ(Mp3FileOf(mp3).Tag.value().EncoderQuality, inTag[quality]);
        files.insert(mp3.mid(FirstFrame));
    }
    EXPECT_GE(files.size(), 7U);
}

TEST(Mp3Parameters, TheThresholdOfHearingSwitchedOffChangesTheSound) {
    const TestSound sound = MakeMusic(44100, 2, 1);
    Mp3Parameters set;
    const QByteArray with = EncodedMp3(set, sound).mid(FirstFrame);
    set.AthControl = 1;
    EXPECT_TRUE(EncodedMp3(set, sound).mid(FirstFrame) == with);
    set.AthControl = 2;
    EXPECT_FALSE(EncodedMp3(set, sound).mid(FirstFrame) == with);
}

TEST(Mp3Parameters, BlockTypesStayTheSameWithoutShortBlocksWhateverElseIsSaid) {
    Mp3Parameters set;
    set.StereoMode = 4;
    set.ShortBlocks = false;
    set.BlockTypesDiffer = true;
    const Mp3File file = Mp3FileOf(EncodedMp3(set, MakeMusic(44100, 2, 1)));
    EXPECT_EQ(file.ShortBlocks(0) + file.ShortBlocks(1), 0);
}

}  // namespace
}  // namespace Sonmira

#include "Mp3Encoding.h"
#include "Mp3Frames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

constexpr std::size_t Count = 22;
using Values = std::array<int, Count>;

// All properties that can be read, in the order of their declaration.
enum Property {
    MaxVbr,
    VbrQuality,
    Method,
    Abr,
    Stereo,
    Quality,
    Header,
    Reservoir,
    Differ,
    Short,
    Emphasis,
    Iso,
    Enforce,
    Ath,
    Lowpass,
    Highpass,
    LowpassWidth,
    HighpassWidth,
    Checksum,
    Rate,
    Channels,
    Bitrate
};

Values ValuesOf(const Mp3Parameters& set) {
    return {set.MaxVbrBitrate,     set.VbrQuality,     set.VbrMethod,        set.AbrBitrate,
            set.StereoMode,        set.EncoderQuality, set.WriteVbrHeader,   set.BitReservoir,
            set.BlockTypesDiffer,  set.ShortBlocks,    set.Emphasis,         set.StrictIso,
            set.EnforceMinBitrate, set.AthControl,     set.LowpassFrequency, set.HighpassFrequency,
            set.LowpassWidth,      set.HighpassWidth,  set.ErrorProtection,  set.SampleRate,
            set.ChannelCount,      set.Bitrate};
}

// A command line and the properties that it makes different from those of a new object.
struct Line {
    const char* Text;
    std::vector<std::pair<Property, int>> Changes;
};

void PrintTo(const Line& line, std::ostream* stream) {
    *stream << '"' << line.Text << '"';
}

class Mp3CommandLine : public ::testing::TestWithParam<Line> {};

TEST_P(Mp3CommandLine, ChangesWhatItNamesAndNothingElse) {
    Mp3Parameters set;
    // Nothing of what was there before stays.
    set.Emphasis = 2;
    set.Bitrate = 8;
    set.SampleRate = 8000;
    set.SetCommandLine(QString::fromUtf8(GetParam().Text));
    Values expected = ValuesOf(Mp3Parameters());
    for (const auto& [property, value] : GetParam().Changes) expected.at(property) = value;
    EXPECT_EQ(ValuesOf(set), expected);
}

INSTANTIATE_TEST_SUITE_P(
    OneOption, Mp3CommandLine,
    ::testing::Values(
        Line{"-b 192", {{Bitrate, 192}}}, Line{"-b192", {{Bitrate, 192}}}, Line{"-B 160", {{MaxVbr, 160}}},
        Line{"-B160", {{MaxVbr, 160}}}, Line{"-V 2", {{Method, 0}, {VbrQuality, 2}}},
        Line{"-V2", {{Method, 0}, {VbrQuality, 2}}}, Line{"-V 3.7", {{Method, 0}, {VbrQuality, 3}}},
        Line{"-v", {{Method, 0}}}, Line{"-q 0", {{Quality, 0}}}, Line{"-q9", {{Quality, 9}}},
        Line{"-f", {{Quality, 7}}}, Line{"-h", {{Quality, 2}}}, Line{"-m s", {{Stereo, 1}}}, Line{"-mj", {}},
        Line{"-m f", {{Stereo, 3}}}, Line{"-md", {{Stereo, 4}}}, Line{"-m m", {{Channels, 1}}},
        Line{"-a", {{Channels, 1}}}, Line{"-e n", {}}, Line{"-e5", {{Emphasis, 1}}},
        Line{"-e c", {{Emphasis, 2}}}, Line{"-F", {{Enforce, 1}}}, Line{"-p", {{Checksum, 1}}},
        Line{"-t", {{Header, 0}}}, Line{"-T", {}}, Line{"--abr 160", {{Method, 4}, {Abr, 160}}},
        Line{"-v --cbr", {}}, Line{"--vbr-old", {{Method, 1}}}, Line{"--vbr-new", {{Method, 2}}},
        Line{"--vbr-mtrh", {{Method, 3}}}, Line{"--resample 22.05", {{Rate, 22050}}},
        Line{"--resample 48000", {{Rate, 48000}}}, Line{"--resample 11", {{Rate, 11025}}},
        Line{"--lowpass 16", {{Lowpass, 16000}}}, Line{"--lowpass 15500", {{Lowpass, 15500}}},
        Line{"--lowpass 0", {}}, Line{"--lowpass -1", {{Lowpass, 0}}},
        Line{"--tt \"Live -b 32\" -p", {{Checksum, 1}}}, Line{"--highpass 0.2", {{Highpass, 200}}},
        Line{"--lowpass-width 1.5", {{LowpassWidth, 1500}}},
        Line{"--highpass-width 100", {{HighpassWidth, 100}}}, Line{"--nores", {{Reservoir, 0}}},
        Line{"--strictly-enforce-ISO", {{Iso, 1}}}, Line{"--noshort", {{Short, 0}}},
        Line{"--noshort --short", {}}, Line{"--athonly", {{Ath, 1}}}, Line{"--noath", {{Ath, 2}}},
        Line{"--athshort", {{Ath, 3}}}, Line{"--preset 150", {{Method, 4}, {Abr, 150}, {Bitrate, 150}}},
        Line{"--preset cbr 192", {{Abr, 192}, {Bitrate, 192}}}));

INSTANTIATE_TEST_SUITE_P(
    Together, Mp3CommandLine,
    ::testing::Values(
        Line{"-hp -V2 --resample 32 -m s",
             {{Quality, 2}, {Checksum, 1}, {Method, 0}, {VbrQuality, 2}, {Rate, 32000}, {Stereo, 1}}},
        Line{"-pq4 -b320", {{Checksum, 1}, {Quality, 4}, {Bitrate, 320}}},
        Line{"--vbr-new -V 5", {{Method, 2}, {VbrQuality, 5}}},
        Line{"  -b\t96\n -a ", {{Bitrate, 96}, {Channels, 1}}}, Line{"-b 96 -b 64", {{Bitrate, 64}}},
        Line{"-m m -m s", {{Stereo, 1}}}));

INSTANTIATE_TEST_SUITE_P(
    Odd, Mp3CommandLine,
    ::testing::Values(Line{"", {}}, Line{"-", {}}, Line{"--", {}}, Line{"- -- ---", {}}, Line{"-b", {}},
                      Line{"-b -a", {{Channels, 1}}}, Line{"-b many", {}}, Line{"-bmany", {}},
                      Line{"-b nan", {}}, Line{"-V nan", {}}, Line{"--resample nan", {}},
                      Line{"--lowpass nan", {}}, Line{"-b inf", {{Bitrate, 320}}},
                      Line{"-b -5", {{Bitrate, 8}}}, Line{"-b 99999999999", {{Bitrate, 320}}},
                      Line{"-q 77", {{Quality, 9}}}, Line{"--resample 1e300", {{Rate, 48000}}},
                      Line{"--lowpass inf", {{Lowpass, 48000}}}, Line{"--resample 1", {{Rate, 8000}}},
                      Line{"-m x -e x", {}}, Line{"in.wav out.mp3", {}},
                      Line{"--scale 0.5 -k --comp 11 --tt Title --no-such-option", {}},
                      Line{"--preset nothing", {}}, Line{"--preset", {}}, Line{"--preset cbr", {}},
                      Line{"\xE2\x82\xAC -b \xE2\x82\xAC", {}}));

struct Named {
    const char* Text;
    int Preset;
    int AltPreset;
};

TEST(Mp3CommandLineOfAPreset, GivesThePresetOfThatName) {
    const Named named[] = {
        {"phone", 1, 0},    {"sw", 2, 0},           {"am", 3, 0},      {"fm", 4, 0},
        {"voice", 5, 0},    {"radio", 6, 0},        {"tape", 7, 0},    {"hifi", 8, 0},
        {"cd", 9, 0},       {"studio", 10, 0},      {"r3mix", 11, 0},  {"fast standard", 0, 1},
        {"standard", 0, 2}, {"fast extreme", 0, 3}, {"extreme", 0, 4}, {"insane", 0, 5}};
    for (const auto& [text, number, alternative] : named) {
        Mp3Parameters expected;
        expected.SetPreset(static_cast<qint16>(number));
        expected.SetAltPreset(static_cast<qint16>(alternative));
        for (const char* option : {"--preset ", "--alt-preset "}) {
            Mp3Parameters set;
            set.SetCommandLine(QString::fromUtf8(option) + QString::fromUtf8(text));
            EXPECT_EQ(ValuesOf(set), ValuesOf(expected)) << option << text;
        }
    }
    Mp3Parameters expected;
    expected.SetPreset(11);
    Mp3Parameters set;
    set.SetCommandLine(u"--r3mix"_s);
    EXPECT_EQ(ValuesOf(set), ValuesOf(expected));
}

// Lines of options, values and nonsense in any order.
QString RandomLine(std::mt19937& random) {
    static const QStringList words = {u"-b"_s,
                                      u"-B"_s,
                                      u"-V"_s,
                                      u"-q"_s,
                                      u"-m"_s,
                                      u"-e"_s,
                                      u"-hp"_s,
                                      u"-aFtv"_s,
                                      u"-b320"_s,
                                      u"-V0"_s,
                                      u"--abr"_s,
                                      u"--cbr"_s,
                                      u"--vbr-old"_s,
                                      u"--vbr-new"_s,
                                      u"--preset"_s,
                                      u"fast"_s,
                                      u"cbr"_s,
                                      u"phone"_s,
                                      u"standard"_s,
                                      u"insane"_s,
                                      u"--resample"_s,
                                      u"--lowpass"_s,
                                      u"--highpass"_s,
                                      u"--lowpass-width"_s,
                                      u"--highpass-width"_s,
                                      u"--nores"_s,
                                      u"--noshort"_s,
                                      u"--noath"_s,
                                      u"8"_s,
                                      u"0"_s,
                                      u"-1"_s,
                                      u"44.1"_s,
                                      u"320"_s,
                                      u"1e9"_s,
                                      u"-1e99"_s,
                                      u"inf"_s,
                                      u"nan"_s,
                                      u"s"_s,
                                      u"d"_s,
                                      u"f"_s,
                                      u"m"_s,
                                      u"5"_s,
                                      u"c"_s,
                                      u"--"_s,
                                      u"-"_s,
                                      u"\u20AC"_s,
                                      u"\""_s,
                                      u"--\u00E4 = ;"_s,
                                      u"--no-such"_s};
    QString line;
    for (unsigned count = random() % 12; count > 0; --count) {
        line += words[static_cast<qsizetype>(random() % static_cast<unsigned>(words.size()))];
        line += random() % 5 == 0 ? u""_s : u" "_s;
    }
    return line;
}

class Mp3RandomLines : public ::testing::TestWithParam<unsigned> {};

TEST_P(Mp3RandomLines, AlwaysGiveAFormatThatEncodesTheSound) {
    std::mt19937 random(GetParam());
    const TestSound sound = MakeTone(44100, 2, 6000, 440);
    for (int round = 0; round < 60; ++round) {
        const QString line = RandomLine(random);
        SCOPED_TRACE(line.toStdString());
        Mp3Parameters set;
        set.SetCommandLine(line);
        ASSERT_TRUE(IsMp3Setting(set));
        EXPECT_FALSE(Mp3FormatString(set).isEmpty());
        const Mp3File file = Mp3FileOf(EncodedMp3(set, sound));
        EXPECT_EQ(file.Rest, 0);
        ASSERT_FALSE(file.Frames.empty());
        EXPECT_EQ(file.Frames[0].Rate, set.SampleRate);
        EXPECT_EQ(file.Frames[0].Mode == 3, set.ChannelCount == 1);
        // Six thousand frames of the source are about as long.
        const double frames =
            (set.SampleRate >= 32000 ? 1152.0 : 576.0) * static_cast<double>(file.Frames.size());
        EXPECT_GE(frames, 6000.0 * set.SampleRate / 44100);
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Mp3RandomLines, ::testing::Range(1U, 9U));

// As damaged settings give them.
TEST(Mp3Parameters, OfAnyValuesEncodeOrAreRefused) {
    std::mt19937 random(5);
    const TestSound sound = MakeTone(44100, 2, 3000, 440);
    constexpr int odd[] = {-2147483647 - 1, -32768, -1,    0,         1, 2, 3, 4, 9, 10, 100, 320,
                           32767,           44100,  48000, 2147483647};
    const auto any = [&] { return odd[random() % std::size(odd)]; };
    const auto few = [&] { return static_cast<qint16>(any()); };
    for (int round = 0; round < 100; ++round) {
        Mp3Parameters set;
        set.MaxVbrBitrate = any();
        set.VbrQuality = few();
        set.VbrMethod = any();
        set.AbrBitrate = few();
        set.StereoMode = any();
        set.EncoderQuality = few();
        set.Emphasis = few();
        set.AthControl = few();
        set.LowpassFrequency = any();
        set.HighpassFrequency = any();
        set.LowpassWidth = any();
        set.HighpassWidth = any();
        set.EnforceMinBitrate = random() % 2 == 0;
        set.Bitrate = any();
        EXPECT_FALSE(Mp3FormatString(set).isEmpty());
        EXPECT_FALSE(Mp3FileOf(EncodedMp3(set, sound)).Frames.empty());
    }
}

}  // namespace
}  // namespace Sonmira

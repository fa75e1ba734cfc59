#include "Mp3Encoding.h"
#include "Mp3Frames.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

constexpr double Gone = -60;    // dB, where nothing is heard any more
constexpr double Whole = -0.5;  // and where nothing is missing

// What became of tones at all multiples of 500 Hz.
class Heard {
public:
    explicit Heard(const Mp3Parameters& set)
        : Source(MakeComb(44100, 2, 0.5, 500)), Mp3(EncodedMp3(set, Source)), Decoded(DecodedMp3(Mp3)) {}

    // By how many dB the tone there is louder than it was.
    double At(double frequency) const { return GainAt(Source, Decoded, frequency); }
    Mp3Tag Tag() const { return Mp3FileOf(Mp3).Tag.value(); }

private:
    TestSound Source;
    QByteArray Mp3;
    TestSound Decoded;
};

// At a bit rate that leaves tones as they are.
Mp3Parameters Faithful() {
    Mp3Parameters set;
    set.Bitrate = 320;
    return set;
}

class Mp3LowpassAt : public ::testing::TestWithParam<int> {};

TEST_P(Mp3LowpassAt, TakesAwayWhatLiesAboveAndNothingBelow) {
    Mp3Parameters set = Faithful();
    set.LowpassFrequency = GetParam();
    const Heard heard(set);
    EXPECT_GT(heard.At(GetParam() - 500), Whole);
    EXPECT_LT(heard.At(GetParam() + 1000), Gone);
    EXPECT_EQ(heard.Tag().Lowpass, GetParam() / 100);
}

INSTANTIATE_TEST_SUITE_P(Frequencies, Mp3LowpassAt, ::testing::Values(4000, 8000, 16000));

TEST(Mp3Filters, ALowpassOfZeroIsNoneAndANegativeOneTheChoiceOfTheEncoder) {
    Mp3Parameters set = Faithful();
    EXPECT_LT(Heard(set).At(21000), Gone);
    set.LowpassFrequency = 0;
    EXPECT_GT(Heard(set).At(21000), Whole);
    set.LowpassFrequency = -1;
    set.Bitrate = 96;
    const Heard heard(set);
    EXPECT_GT(heard.At(14000), Whole);
    EXPECT_LT(heard.At(17000), Gone);
}

TEST(Mp3Filters, TheWidthOfALowpassIsHeardBelowItsFrequency) {
    Mp3Parameters set = Faithful();
    set.LowpassFrequency = 10000;
    EXPECT_GT(Heard(set).At(9000), Whole);
    set.LowpassWidth = 4000;
    const Heard wide(set);
    EXPECT_NEAR(wide.At(9000), -6, 1);
    EXPECT_LT(wide.At(11000), Gone);
}

class Mp3HighpassAt : public ::testing::TestWithParam<int> {};

TEST_P(Mp3HighpassAt, TakesAwayWhatLiesBelowAndNothingAbove) {
    Mp3Parameters set = Faithful();
    set.HighpassFrequency = GetParam();
    const Heard heard(set);
    EXPECT_LT(heard.At(GetParam() - 1000), Gone);
    EXPECT_GT(heard.At(GetParam() + 1000), Whole);
}

INSTANTIATE_TEST_SUITE_P(Frequencies, Mp3HighpassAt, ::testing::Values(1500, 4000, 8000));

TEST(Mp3Filters, AHighpassOfZeroIsNone) {
    Mp3Parameters set = Faithful();
    set.HighpassFrequency = 0;
    EXPECT_GT(Heard(set).At(500), Whole);
}

TEST(Mp3Filters, TheWidthOfAHighpassIsHeardAboveItsFrequency) {
    Mp3Parameters set = Faithful();
    set.HighpassFrequency = 6000;
    EXPECT_GT(Heard(set).At(8000), Whole);
    set.HighpassWidth = 4000;
    const Heard wide(set);
    EXPECT_NEAR(wide.At(8000), -3.8, 1);
    EXPECT_LT(wide.At(5000), Gone);
}

}  // namespace
}  // namespace Sonmira

#include "platform/Failure.h"
#include "platform/Values.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <cfenv>
#include <clocale>
#include <cmath>
#include <limits>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

template <class Routine>
int FailureOf(Routine routine) {
    try {
        routine();
        return 0;
    } catch (const Failure& failure) {
        return failure.Number;
    }
}

TEST(LeadingNumber, StopsAtTheFirstCharacterThatDoesNotBelong) {
    EXPECT_EQ(LeadingNumber(u"12abc"), 12);
    EXPECT_EQ(LeadingNumber(u"-3.5e2x"), -350);
    EXPECT_EQ(LeadingNumber(u".5"), 0.5);
    EXPECT_EQ(LeadingNumber(u"5."), 5);
    EXPECT_EQ(LeadingNumber(u"+7"), 7);
    EXPECT_EQ(LeadingNumber(u"1.2.3"), 1.2);
    EXPECT_EQ(LeadingNumber(u"44100 Hz"), 44100);
    EXPECT_EQ(LeadingNumber(u"1,5"), 1);
}

TEST(LeadingNumber, TakesAnExponentOnlyWithDigits) {
    EXPECT_EQ(LeadingNumber(u"1e"), 1);
    EXPECT_EQ(LeadingNumber(u"1e+"), 1);
    EXPECT_EQ(LeadingNumber(u"2E-1"), 0.2);
    EXPECT_EQ(LeadingNumber(u"2e+1"), 20);
}

TEST(LeadingNumber, IsZeroWithoutANumber) {
    for (const QStringView text : {u"", u"abc", u"-", u".", u"-.", u"e5", u"True"}) {
        EXPECT_EQ(LeadingNumber(text), 0) << text.toUtf8().constData();
    }
}

TEST(LeadingNumber, SkipsBlanksInFrontOnly) {
    EXPECT_EQ(LeadingNumber(u" \t 6"), 6);
    EXPECT_EQ(LeadingNumber(u"1 2"), 1);
    EXPECT_EQ(LeadingNumber(u"- 2"), 0);
}

TEST(LeadingNumber, KnowsPlainDigitsOnly) {
    EXPECT_EQ(LeadingNumber(u"\u0663"), 0);
    EXPECT_EQ(LeadingNumber(u"0x1F"), 0);
    EXPECT_EQ(LeadingNumber(u"inf"), 0);
    EXPECT_EQ(LeadingNumber(u"nan"), 0);
}

TEST(LeadingNumber, NeverFailsHoweverLargeTheNumber) {
    EXPECT_TRUE(std::isinf(LeadingNumber(u"1e999")));
    EXPECT_EQ(LeadingNumber(u"-1e999"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(LeadingNumber(u"1e-999"), 0);
    EXPECT_TRUE(std::isinf(LeadingNumber(u"1e99999999999999999999")));
    EXPECT_TRUE(std::isinf(LeadingNumber(QString(5000, u'9'))));
}

TEST(LeadingNumber, HasAPointInEveryLocale) {
    QLocale::setDefault(QLocale::German);
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8"}) std::setlocale(LC_ALL, locale);
    EXPECT_EQ(LeadingNumber(u"2.5"), 2.5);
    EXPECT_EQ(LeadingNumber(u"2,5"), 2);
}

TEST(Integers, RoundHalvesToTheEvenNumber) {
    EXPECT_EQ(ToInteger32(u"2.5"), 2);
    EXPECT_EQ(ToInteger32(u"3.5"), 4);
    EXPECT_EQ(ToInteger32(u"-2.5"), -2);
    EXPECT_EQ(ToInteger16(u"2.51"), 3);
    EXPECT_EQ(ToInteger16(-1.5), -2);
    EXPECT_EQ(ToInteger32(0.5), 0);
}

TEST(Integers, AllowBlanksAroundTheNumber) {
    EXPECT_EQ(ToInteger32(u" 12 "), 12);
    EXPECT_EQ(ToInteger16(u"\t 12\t"), 12);
}

// Fields of a fixed size are filled up with zeros.
TEST(Integers, EndAtTheFirstNul) {
    EXPECT_EQ(ToInteger32(QStringView(u"199\0", 4)), 199);
    EXPECT_EQ(ToInteger16(QStringView(u" 7 \0x8", 6)), 7);
    for (const QStringView text :
         {QStringView(u"\0\0\0\0", 4), QStringView(u"\0001", 2), QStringView(u"19x\0", 4)}) {
        EXPECT_EQ(FailureOf([&] { ToInteger32(text); }), FailureNumber::TypeMismatch);
    }
}

TEST(Integers, AcceptAnExponent) {
    EXPECT_EQ(ToInteger32(u"1e3"), 1000);
}

TEST(Integers, FailForTextThatIsNoNumber) {
    for (const QStringView text :
         {u"", u" ", u"12abc", u"abc", u"1 2", u"1e", u"&H1F", u"True", u"-", u"1,5"}) {
        EXPECT_EQ(FailureOf([&] { ToInteger16(text); }), FailureNumber::TypeMismatch)
            << text.toUtf8().constData();
        EXPECT_EQ(FailureOf([&] { ToInteger32(text); }), FailureNumber::TypeMismatch)
            << text.toUtf8().constData();
    }
}

TEST(Integers, OverflowAtTheEndsOf16Bits) {
    EXPECT_EQ(ToInteger16(u"32767"), 32767);
    EXPECT_EQ(ToInteger16(u"-32768"), -32768);
    EXPECT_EQ(ToInteger16(32767.4), 32767);
    for (const QStringView text : {u"32768", u"32767.5", u"-32769", u"99999"}) {
        EXPECT_EQ(FailureOf([&] { ToInteger16(text); }), FailureNumber::Overflow)
            << text.toUtf8().constData();
    }
}

TEST(Integers, OverflowAtTheEndsOf32Bits) {
    EXPECT_EQ(ToInteger32(u"2147483647"), 2147483647);
    EXPECT_EQ(ToInteger32(u"-2147483648"), std::numeric_limits<qint32>::min());
    for (const QStringView text : {u"2147483648", u"2147483647.5", u"-2147483649", u"1e999"}) {
        EXPECT_EQ(FailureOf([&] { ToInteger32(text); }), FailureNumber::Overflow)
            << text.toUtf8().constData();
    }
}

TEST(Integers, OverflowForWhatIsNoFiniteNumber) {
    EXPECT_EQ(FailureOf([] { ToInteger16(std::nan("")); }), FailureNumber::Overflow);
    EXPECT_EQ(FailureOf([] { ToInteger32(HUGE_VAL); }), FailureNumber::Overflow);
}

TEST(Flags, AreWordsInAnyCaseOrNumbers) {
    for (const QStringView text : {u"True", u"TRUE", u"true", u" True ", u"2", u"-1", u"0.1"}) {
        EXPECT_TRUE(ToFlag(text)) << text.toUtf8().constData();
    }
    for (const QStringView text : {u"False", u"FALSE", u"0", u" 0 ", u"0.0"}) {
        EXPECT_FALSE(ToFlag(text)) << text.toUtf8().constData();
    }
}

TEST(Flags, FailForOtherText) {
    for (const QStringView text : {u"", u"yes", u"Tru", u"1x"}) {
        EXPECT_EQ(FailureOf([&] { ToFlag(text); }), FailureNumber::TypeMismatch) << text.toUtf8().constData();
    }
}

TEST(Flags, AreWrittenAsWords) {
    EXPECT_EQ(FlagText(true), u"True"_s);
    EXPECT_EQ(FlagText(false), u"False"_s);
}

TEST(RoundHalfEven, TakesTheNearestNumberAndTheEvenOneBetweenTwo) {
    const std::vector<std::pair<double, double>> cases{
        {0, 0},    {0.5, 0},   {1.5, 2},   {2.5, 2},   {2.4, 2},       {2.6, 3},
        {-0.5, 0}, {-1.5, -2}, {-2.5, -2}, {-2.6, -3}, {1e300, 1e300}, {0.49999999999999994, 0}};
    for (const auto& [number, rounded] : cases) EXPECT_EQ(RoundHalfEven(number), rounded) << number;
    EXPECT_TRUE(std::isnan(RoundHalfEven(std::nan(""))));
    EXPECT_TRUE(std::isinf(RoundHalfEven(HUGE_VAL)));
}

TEST(RoundHalfEven, DoesNotFollowTheRoundingMode) {
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(mode);
        const double below = RoundHalfEven(2.25);
        const double half = RoundHalfEven(2.5);
        const double odd = RoundHalfEven(-3.5);
        std::fesetround(FE_TONEAREST);
        EXPECT_EQ(below, 2) << mode;
        EXPECT_EQ(half, 2) << mode;
        EXPECT_EQ(odd, -4) << mode;
    }
}

TEST(NumberText, HasALeadingBlankUnlessNegative) {
    EXPECT_EQ(NumberText(6), u" 6"_s);
    EXPECT_EQ(NumberText(0), u" 0"_s);
    EXPECT_EQ(NumberText(-6), u"-6"_s);
}

TEST(NumberText, PlainNumbersAreDigitsOnly) {
    EXPECT_EQ(PlainNumber(44100), u"44100"_s);
    EXPECT_EQ(PlainNumber(-1), u"-1"_s);
    EXPECT_EQ(PlainNumber(std::numeric_limits<qint64>::min()), u"-9223372036854775808"_s);
}

TEST(FormatNumber, FillsUpWithZeros) {
    EXPECT_EQ(FormatNumber(7, u"#00"), u"07"_s);
    EXPECT_EQ(FormatNumber(0, u"#00"), u"00"_s);
    EXPECT_EQ(FormatNumber(7, u"###000"), u"007"_s);
}

TEST(FormatNumber, ShowsAllDigitsOfALargerNumber) {
    EXPECT_EQ(FormatNumber(123, u"#00"), u"123"_s);
    EXPECT_EQ(FormatNumber(12345, u"#00"), u"12345"_s);
    EXPECT_EQ(FormatNumber(1234, u"###000"), u"1234"_s);
}

TEST(FormatNumber, KeepsTheRestOfThePicture) {
    EXPECT_EQ(FormatNumber(5, u"#00 - "), u"05 - "_s);
    EXPECT_EQ(FormatNumber(105, u"#00 - "), u"105 - "_s);
}

TEST(FormatNumber, PutsTheSignInFront) {
    EXPECT_EQ(FormatNumber(-7, u"#00"), u"-07"_s);
    EXPECT_EQ(FormatNumber(std::numeric_limits<qint64>::min(), u"#00"), u"-9223372036854775808"_s);
}

}  // namespace
}  // namespace Sonmira

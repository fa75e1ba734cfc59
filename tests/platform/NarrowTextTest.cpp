#include "platform/Paths.h"

#include <gtest/gtest.h>

#include <random>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

QString Units(std::initializer_list<char16_t> units) {
    QString text;
    for (const char16_t unit : units) text += QChar(unit);
    return text;
}

TEST(NarrowText, ReadsCharactersOfOneToFourBytes) {
    EXPECT_EQ(FromNarrow("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8E\xB5"), u"a\u00e9\u20ac\U0001F3B5"_s);
    EXPECT_EQ(FromNarrow("\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF4\x8F\xBF\xBF"),
              Units({0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0xDBFF, 0xDFFF}));
}

TEST(NarrowText, CarriesAnInvalidByteAsALoneSurrogate) {
    EXPECT_EQ(FromNarrow("a\xE9z"), Units({u'a', 0xDCE9, u'z'}));
    EXPECT_EQ(FromNarrow("\x80\xFF"), Units({0xDC80, 0xDCFF}));
}

TEST(NarrowText, TakesACharacterThatIsCutOffForSingleBytes) {
    EXPECT_EQ(FromNarrow("\xE2\x82"), Units({0xDCE2, 0xDC82}));
    EXPECT_EQ(FromNarrow("\xE2\x82z"), Units({0xDCE2, 0xDC82, u'z'}));
}

TEST(NarrowText, TakesOverlongFormsForSingleBytes) {
    EXPECT_EQ(FromNarrow("\xC0\xAF"), Units({0xDCC0, 0xDCAF}));
    EXPECT_EQ(FromNarrow("\xE0\x80\xAF"), Units({0xDCE0, 0xDC80, 0xDCAF}));
    EXPECT_EQ(FromNarrow("\xF0\x8F\xBF\xBF"), Units({0xDCF0, 0xDC8F, 0xDCBF, 0xDCBF}));
}

TEST(NarrowText, TakesEncodedSurrogatesForSingleBytes) {
    EXPECT_EQ(FromNarrow("\xED\xB3\xA9"), Units({0xDCED, 0xDCB3, 0xDCA9}));
    EXPECT_EQ(FromNarrow("\xED\xA0\xBC"), Units({0xDCED, 0xDCA0, 0xDCBC}));
}

TEST(NarrowText, TakesNumbersBeyondTheLastCharacterForSingleBytes) {
    EXPECT_EQ(FromNarrow("\xF4\x90\x80\x80"), Units({0xDCF4, 0xDC90, 0xDC80, 0xDC80}));
    EXPECT_EQ(FromNarrow("\xF8"), Units({0xDCF8}));
}

TEST(NarrowText, KeepsAByteOrderMark) {
    EXPECT_EQ(FromNarrow("\xEF\xBB\xBFz"), Units({0xFEFF, u'z'}));
}

TEST(NarrowText, KeepsZeroBytes) {
    const QByteArray bytes("a\0b", 3);
    EXPECT_EQ(FromNarrow(bytes), Units({u'a', 0, u'b'}));
    EXPECT_EQ(ToNarrow(FromNarrow(bytes)), bytes);
}

TEST(NarrowText, AnyBytesComeBackUnchanged) {
    std::mt19937 random(20);
    // Leads and continuations often, so that nearly valid sequences are common.
    constexpr std::array<uchar, 16> Common{0x41, 0x80, 0xBF, 0xA0, 0x9F, 0x8F, 0xC2, 0xC0,
                                           0xE0, 0xED, 0xEF, 0xF0, 0xF4, 0xF5, 0xBB, 0xB3};
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes(static_cast<qsizetype>(random() % 24), '\0');
        for (char& byte : bytes) {
            byte = static_cast<char>(random() % 3 == 0 ? random() % 256 : Common[random() % Common.size()]);
        }
        ASSERT_EQ(ToNarrow(FromNarrow(bytes)), bytes) << bytes.toHex().constData();
    }
}

TEST(NarrowText, ASurrogateThatIsNoByteGoesOutAsTheReplacementCharacter) {
    EXPECT_EQ(ToNarrow(Units({u'a', 0xD800, u'b'})),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(ToNarrow(Units({0xDC7F})), "\xEF\xBF\xBD");
    EXPECT_EQ(ToNarrow(Units({0xDD00})), "\xEF\xBF\xBD");
}

TEST(NarrowText, AByteBehindAPairStaysAByte) {
    const QByteArray bytes("\xF0\x9F\x8E\xB5\xB5");
    EXPECT_EQ(FromNarrow(bytes), Units({0xD83C, 0xDFB5, 0xDCB5}));
    EXPECT_EQ(ToNarrow(FromNarrow(bytes)), bytes);
}

TEST(NarrowText, KnowsTextThatHoldsRawBytes) {
    EXPECT_TRUE(HoldsRawBytes(FromNarrow("a\xE9")));
    EXPECT_TRUE(HoldsRawBytes(Units({0xD83C})));
    EXPECT_FALSE(HoldsRawBytes(u"a\u00e9\U0001F3B5"));
    EXPECT_FALSE(HoldsRawBytes(u""));
}

}  // namespace
}  // namespace Sonmira

#include "platform/Paths.h"

#include <QUrl>

#include <gtest/gtest.h>

#include <random>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

TEST(NativePath, SwapsSeparators) {
    EXPECT_EQ(FromNative("/Music/a b.mp3"), u"\\Music\\a b.mp3"_s);
    EXPECT_EQ(ToNative(u"\\Music\\a b.mp3"), "/Music/a b.mp3");
}

TEST(NativePath, ARelativeNameOnlySwaps) {
    EXPECT_EQ(FromNative("Music/a.mp3"), u"Music\\a.mp3"_s);
    EXPECT_EQ(ToNative(u"a.mp3"), "a.mp3");
    EXPECT_EQ(FromNative(""), QString());
}

TEST(NativePath, ALiteralBackslashTravelsAsAPrivateCharacter) {
    EXPECT_EQ(FromNative("/a\\b"), u"\\a\uF05Cb"_s);
    EXPECT_EQ(ToNative(u"\\a\uF05Cb"), "/a\\b");
}

TEST(NativePath, TheRootHasADrive) {
    EXPECT_EQ(FromNative("/"), u"Z:\\"_s);
    EXPECT_EQ(ToNative(u"Z:\\"), "/");
}

TEST(NativePath, ADriveIsDropped) {
    EXPECT_EQ(ToNative(u"Z:\\Music\\a"), "/Music/a");
    EXPECT_EQ(ToNative(u"c:\\Music\\a"), "/Music/a");
    EXPECT_EQ(ToNative(u"Z:/Music"), "/Music");
    EXPECT_EQ(ToNative(u"Z:"), "");
}

TEST(NativePath, ANameWithAColonHasNoDrive) {
    EXPECT_EQ(ToNative(u"A: first.mp3"), "A: first.mp3");
    EXPECT_EQ(ToNative(u"1:\\a"), "1:/a");
    EXPECT_EQ(ToNative(u"\\B:\\a"), "/B:/a");
}

TEST(NativePath, ATypedSlashIsASeparator) {
    EXPECT_EQ(ToNative(u"\\Music/a"), "/Music/a");
}

TEST(NativePath, AZeroCharacterNamesNothing) {
    const QString path = u"\\a"_s + QChar(u'\0') + u"b"_s;
    EXPECT_EQ(ToNative(path), QByteArray());
}

TEST(NativePath, KeepsBytesThatAreNoText) {
    const QByteArray native("/M\xFCsik/\xC3\xA9\xE9");
    EXPECT_TRUE(HoldsRawBytes(FromNative(native)));
    EXPECT_EQ(ToNative(FromNative(native)), native);
}

TEST(NativePath, ANameThatHoldsThePrivateCharacterItselfComesBack) {
    const QByteArray native(
        "/a\xEF\x81\x9C"
        "b\\c\xEF\x81\x9C");
    EXPECT_EQ(ToNative(FromNative(native)), native);
}

TEST(NativePath, AnyAbsoluteNameComesBackUnchanged) {
    std::mt19937 random(21);
    constexpr QByteArrayView Common = "/\\:Z.\xEF\x81\x9C\xE9";
    for (int round = 0; round < 20000; ++round) {
        QByteArray native = "/";
        for (size_t left = random() % 16; left > 0; --left) {
            const char any = static_cast<char>(1 + random() % 255);
            native += random() % 3 == 0 ? any : Common[static_cast<qsizetype>(random() % 9)];
        }
        ASSERT_EQ(ToNative(FromNative(native)), native) << native.toHex().constData();
    }
}

TEST(NativePath, PeopleReadTheFormOfTheDesktop) {
    EXPECT_EQ(ShownPath(u"Z:\\"), u"/"_s);
    EXPECT_EQ(ShownPath(u"\\a\\b"), u"/a/b"_s);
    EXPECT_EQ(ShownPath(u"Z:\\a"), u"/a"_s);
    EXPECT_EQ(ShownPath(u"\\a\uF05Cb"), u"/a\\b"_s);
    EXPECT_EQ(ShownPath(u""), QString());
}

TEST(NativePath, TypedPathsMayHaveEitherSeparator) {
    EXPECT_EQ(PathFromShown(u"/a/b"), u"\\a\\b"_s);
    EXPECT_EQ(PathFromShown(u"\\a\\b"), u"\\a\\b"_s);
    EXPECT_EQ(PathFromShown(u"Z:\\a/b"), u"Z:\\a\\b"_s);
    EXPECT_EQ(PathFromShown(u""), QString());
}

TEST(NativePath, ATypedRootIsNeverABareBackslash) {
    EXPECT_EQ(PathFromShown(u"/"), u"Z:\\"_s);
    EXPECT_EQ(PathFromShown(u"\\"), u"Z:\\"_s);
}

TEST(NativePath, AFileUrlKeepsItsBytes) {
    EXPECT_EQ(ToNative(PathFromUrl(QUrl::fromEncoded("file:///M%FCsik/a%20b%23.mp3"))), "/M\xFCsik/a b#.mp3");
    EXPECT_EQ(PathFromUrl(QUrl::fromLocalFile(u"/\u00e9/a\\b"_s)), u"\\\u00e9\\a\uF05Cb"_s);
    EXPECT_EQ(PathFromUrl(QUrl::fromEncoded("file:///")), u"Z:\\"_s);
}

TEST(NativePath, AFileUrlMayNameThisHost) {
    EXPECT_EQ(PathFromUrl(QUrl::fromEncoded("file://localhost/a")), u"\\a"_s);
}

TEST(NativePath, AUrlThatIsNoLocalFileHasNoPath) {
    EXPECT_EQ(PathFromUrl(QUrl::fromEncoded("file://elsewhere/a")), QString());
    EXPECT_EQ(PathFromUrl(QUrl::fromEncoded("https://localhost/a")), QString());
    EXPECT_EQ(PathFromUrl(QUrl::fromEncoded("file:a")), QString());
    EXPECT_EQ(PathFromUrl(QUrl::fromEncoded("file:///a%00b")), QString());
    EXPECT_EQ(PathFromUrl(QUrl()), QString());
}

}  // namespace
}  // namespace Sonmira

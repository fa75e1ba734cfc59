#include "platform/Dialogs.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

TEST(Paths, TheFileNameStandsBehindTheLastBackslash) {
    EXPECT_EQ(FileNameOf(u"\\Music\\a b.mp3"_s), u"a b.mp3"_s);
    EXPECT_EQ(FileNameOf(u"\\a"_s), u"a"_s);
}

TEST(Paths, ABareNameHasNoFileName) {
    EXPECT_EQ(FileNameOf(u"a.mp3"_s), QString());
    EXPECT_EQ(FileNameOf(QString()), QString());
}

TEST(Paths, APathThatEndsInABackslashHasNoFileName) {
    EXPECT_EQ(FileNameOf(u"\\Music\\"_s), QString());
}

TEST(Paths, TheFolderKeepsItsBackslash) {
    EXPECT_EQ(FolderOf(u"\\Music\\a.mp3"_s), u"\\Music\\"_s);
    EXPECT_EQ(FolderOf(u"\\Music\\"_s), u"\\Music\\"_s);
    EXPECT_EQ(FolderOf(u"\\a.mp3"_s), u"\\"_s);
}

TEST(Paths, ABareNameHasNoFolder) {
    EXPECT_EQ(FolderOf(u"a.mp3"_s), QString());
    EXPECT_EQ(FolderOf(QString()), QString());
}

TEST(Paths, TheExtensionKeepsItsDotAndCase) {
    EXPECT_EQ(ExtensionOf(u"\\Music\\a.b.Mp3"_s), u".Mp3"_s);
    EXPECT_EQ(ExtensionOf(u".mp3"_s), u".mp3"_s);
    EXPECT_EQ(ExtensionOf(u"\\Music\\a."_s), u"."_s);
}

TEST(Paths, ANameWithoutADotHasTheExtensionZzz) {
    EXPECT_EQ(ExtensionOf(u"\\Music\\a"_s), u"zzz"_s);
    EXPECT_EQ(ExtensionOf(QString()), u"zzz"_s);
}

TEST(Paths, TheSearchForTheExtensionDoesNotStopAtABackslash) {
    EXPECT_EQ(ExtensionOf(u"\\My.Music\\a"_s), u".Music\\a"_s);
}

TEST(Paths, AFileExistsByItsName) {
    const TestFolder folder;
    EXPECT_TRUE(FileExists(folder.MakeFile("a.mp3")));
    EXPECT_FALSE(FileExists(folder.Path("b.mp3")));
}

TEST(Paths, NoFileExistsByAnEmptyTextOrATrailingBackslash) {
    const TestFolder folder;
    EXPECT_FALSE(FileExists(QString()));
    EXPECT_FALSE(FileExists(folder.MakeFile("a.mp3") + u'\\'));
    EXPECT_FALSE(FileExists(u"Z:\\"_s));
    EXPECT_FALSE(FileExists(u"\\"_s));
}

TEST(Paths, HiddenFilesAndFoldersAreNoFiles) {
    const TestFolder folder;
    EXPECT_FALSE(FileExists(folder.MakeFile(".a.mp3")));
    EXPECT_FALSE(FileExists(folder.MakeFolder("sub")));
}

TEST(Paths, WildcardsActAsAPattern) {
    const TestFolder folder;
    folder.MakeFile("a.mp3");
    EXPECT_TRUE(FileExists(folder.Path("?.mp*")));
    EXPECT_FALSE(FileExists(folder.Path("?.wav")));
}

TEST(Paths, ADirectoryExistsWithAndWithoutItsBackslash) {
    const TestFolder folder;
    const QString sub = folder.MakeFolder("sub");
    EXPECT_TRUE(DirectoryExists(sub));
    EXPECT_TRUE(DirectoryExists(sub + u'\\'));
    EXPECT_FALSE(DirectoryExists(sub + u"\\\\"_s));
    EXPECT_FALSE(DirectoryExists(folder.Path("none")));
    EXPECT_FALSE(DirectoryExists(folder.Path("none") + u'\\'));
    EXPECT_FALSE(DirectoryExists(QString()));
}

TEST(Paths, APlainFileCountsAsADirectory) {
    const TestFolder folder;
    EXPECT_TRUE(DirectoryExists(folder.MakeFile("a.mp3")));
    EXPECT_TRUE(DirectoryExists(folder.MakeFile("b.mp3") + u'\\'));
}

TEST(Paths, AHiddenFolderIsADirectory) {
    const TestFolder folder;
    EXPECT_TRUE(DirectoryExists(folder.MakeFolder(".config")));
}

TEST(Paths, TheRootIsADirectory) {
    EXPECT_TRUE(DirectoryExists(u"Z:\\"_s));
    EXPECT_TRUE(DirectoryExists(u"\\"_s));
}

TEST(Paths, OnlyARootIsADrive) {
    for (const QString& path : {u"\\"_s, u"Z:\\"_s, u"C:\\"_s, u"Z:"_s}) {
        EXPECT_TRUE(IsDriveRoot(path)) << path.toStdString();
    }
    for (const QString& path : {u"\\h"_s, u"\\hd"_s, u"Z:\\h"_s, u"Z:\\hd"_s, u"\\home"_s}) {
        EXPECT_FALSE(IsDriveRoot(path)) << path.toStdString();
    }
}

TEST(Paths, AFolderExistsForFoldersOnly) {
    const TestFolder folder;
    EXPECT_TRUE(FolderExists(folder.MakeFolder("sub")));
    EXPECT_TRUE(FolderExists(folder.Path("sub") + u'\\'));
    EXPECT_TRUE(FolderExists(u"Z:\\"_s));
    EXPECT_FALSE(FolderExists(folder.MakeFile("a.mp3")));
    EXPECT_FALSE(FolderExists(folder.Path("none")));
    EXPECT_FALSE(FolderExists(QString()));
}

TEST(Paths, SpecialFoldersHaveTheirNumbers) {
    const TestFolder folder;
    folder.MakeFolder("Desktop");
    folder.MakeFolder("config");
    setenv("HOME", folder.Native().constData(), 1);
    setenv("XDG_CONFIG_HOME", folder.Native("config").constData(), 1);
    EXPECT_EQ(GetSpecialFolder(16), folder.Path("Desktop"));
    EXPECT_EQ(GetSpecialFolder(26), folder.Path("config"));
    EXPECT_EQ(GetKnownFolder(16), folder.Path("Desktop"));
    EXPECT_EQ(GetKnownFolder(26), folder.Path("config"));
}

TEST(Paths, ASpecialFolderThatIsNoneIsTheProgramsOwn) {
    const TestFolder folder;
    setenv("HOME", folder.Native("none").constData(), 1);
    setenv("XDG_CONFIG_HOME", folder.Native("none").constData(), 1);
    for (const int number : {16, 26, 5}) {
        EXPECT_EQ(GetSpecialFolder(number), ProgramFolder()) << number;
        EXPECT_EQ(GetKnownFolder(number), QString()) << number;
    }
}

TEST(Paths, BrowsingAsksTheUser) {
    Dialogs().BrowseForFolder = [](const QString& title) { return u"\\chosen\\"_s + title; };
    EXPECT_EQ(BrowseForFolder(u"Where"_s), u"\\chosen\\Where"_s);
    Dialogs().BrowseForFolder = [](const QString&) { return QString(); };
    EXPECT_EQ(BrowseForFolder(u"Where"_s), QString());
}

TEST(Paths, GetABackslashUnlessTheyHaveOne) {
    EXPECT_EQ(WithBackslash(u"\\a"_s), u"\\a\\"_s);
    EXPECT_EQ(WithBackslash(u"\\a\\"_s), u"\\a\\"_s);
    EXPECT_EQ(WithBackslash(QString()), u"\\"_s);
}

TEST(Paths, EndsAreComparedInUpperCase) {
    EXPECT_TRUE(EndsInUpper(u"\\a.mP3"_s, u"MP3"));
    EXPECT_TRUE(EndsInUpper(u"xmp3"_s, u"MP3"));
    EXPECT_FALSE(EndsInUpper(u"p3"_s, u"MP3"));
    EXPECT_FALSE(EndsInUpper(u"a.mp3"_s, u"mp3"));
}

}  // namespace
}  // namespace Sonmira

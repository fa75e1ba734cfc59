#include "platform/Folders.h"
#include "platform/Paths.h"
#include "support/TestFolder.h"
#include "support/Timing.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <filesystem>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

class FileSearch : public ::testing::Test {
protected:
    void Link(const QByteArray& target, const QByteArray& name) const {
        fs::create_symlink(target.toStdString(), Folder.Native(name).toStdString());
    }
    QString First(const QByteArray& name, SearchFor what = SearchFor::VisibleFiles) const {
        return FindFirstName(Folder.Path(name), what);
    }
    QStringList Names() const {
        QStringList names;
        for (const FolderEntry& entry : ListFolder(Folder.Path())) names += entry.Name;
        return names;
    }

    TestFolder Folder;
};

TEST_F(FileSearch, FindsAFileByItsName) {
    Folder.MakeFile("sub/a.mp3");
    EXPECT_EQ(First("sub/a.mp3"), u"a.mp3"_s);
    EXPECT_EQ(First("sub/b.mp3"), QString());
    EXPECT_EQ(First("none/a.mp3"), QString());
    EXPECT_EQ(FindFirstName(QString(), SearchFor::FilesAndFolders), QString());
}

TEST_F(FileSearch, NamesDifferByCase) {
    Folder.MakeFile("a.mp3");
    EXPECT_EQ(First("A.mp3"), QString());
    EXPECT_EQ(First("A*"), QString());
}

TEST_F(FileSearch, OnlyTheSearchWithFoldersFindsFolders) {
    Folder.MakeFolder("sub");
    EXPECT_EQ(First("sub"), QString());
    EXPECT_EQ(First("s*"), QString());
    EXPECT_EQ(First("sub", SearchFor::FilesAndFolders), u"sub"_s);
    EXPECT_EQ(First("s*", SearchFor::FilesAndFolders), u"sub"_s);
}

TEST_F(FileSearch, OnlyTheSearchWithFoldersFindsHiddenEntries) {
    Folder.MakeFile(".a.mp3");
    EXPECT_EQ(First(".a.mp3"), QString());
    EXPECT_EQ(First("*"), QString());
    EXPECT_EQ(First(".a.mp3", SearchFor::FilesAndFolders), u".a.mp3"_s);
    EXPECT_EQ(First("*", SearchFor::FilesAndFolders), u".a.mp3"_s);
}

TEST_F(FileSearch, AStarStandsForAnyText) {
    Folder.MakeFile("track 01 live.mp3");
    for (const char* pattern : {"*", "*.mp3", "track*", "*01*", "t*k*l*v*3", "**", "track 01 live.mp3*"}) {
        EXPECT_EQ(First(pattern), u"track 01 live.mp3"_s) << pattern;
    }
    for (const char* pattern : {"*.wav", "rack*", "*02*", "*.mp"})
        EXPECT_EQ(First(pattern), QString()) << pattern;
}

TEST_F(FileSearch, AQuestionMarkStandsForOneCharacter) {
    Folder.MakeFile("\xF0\x9F\x8E\xB5\xC3\xA9.mp3");
    EXPECT_EQ(First("\?\?.mp3"), u"\U0001F3B5\u00e9.mp3"_s);
    EXPECT_EQ(First("?.mp3"), QString());
    EXPECT_EQ(First("\?\?\?.mp3"), QString());
}

TEST_F(FileSearch, StarDotStarFindsNamesWithoutADot) {
    Folder.MakeFile("name");
    EXPECT_EQ(First("*.*"), u"name"_s);
    EXPECT_EQ(First("n*.*"), QString());
}

TEST_F(FileSearch, TheFirstNameInTheOrderOfTheFolderIsFound) {
    for (const char* name : {"b.mp3", "A.mp3", "c.mp3"}) Folder.MakeFile(name);
    EXPECT_EQ(First("*.mp3"), u"A.mp3"_s);
    EXPECT_EQ(First("?.mp3"), u"A.mp3"_s);
}

TEST_F(FileSearch, TheLiteralNameIsTriedBeforeThePattern) {
    Folder.MakeFile("a1.mp3");
    Folder.MakeFile("a?.mp3");
    EXPECT_EQ(First("a?.mp3"), u"a?.mp3"_s);
}

TEST_F(FileSearch, WildcardsInTheFolderPartAreLiteral) {
    Folder.MakeFile("sub/a.mp3");
    EXPECT_EQ(First("s*b/a.mp3"), QString());
    Folder.MakeFile("s*b/a.mp3");
    EXPECT_EQ(First("s*b/*.mp3"), u"a.mp3"_s);
}

TEST_F(FileSearch, ALinkCountsAsWhatItLeadsTo) {
    Folder.MakeFile("real/a.mp3");
    Link("real/a.mp3", "file");
    Link("real", "folder");
    EXPECT_EQ(First("file"), u"file"_s);
    EXPECT_EQ(First("folder"), QString());
    EXPECT_EQ(First("folder", SearchFor::FilesAndFolders), u"folder"_s);
    EXPECT_TRUE(IsFolder(Folder.Path("folder")));
}

TEST_F(FileSearch, ADanglingLinkCountsAsNothing) {
    Link("none", "a.mp3");
    EXPECT_EQ(First("a.mp3", SearchFor::FilesAndFolders), QString());
    EXPECT_EQ(First("*", SearchFor::FilesAndFolders), QString());
}

TEST_F(FileSearch, ATrailingSeparatorMatchesNothing) {
    Folder.MakeFolder("sub");
    EXPECT_EQ(First("sub/", SearchFor::FilesAndFolders), QString());
    EXPECT_EQ(First("sub/"), QString());
}

TEST_F(FileSearch, TheRootIsFoundByTheSearchWithFolders) {
    EXPECT_EQ(FindFirstName(u"Z:\\", SearchFor::FilesAndFolders), u"."_s);
    EXPECT_EQ(FindFirstName(u"\\", SearchFor::FilesAndFolders), u"."_s);
    EXPECT_EQ(FindFirstName(u"Z:\\", SearchFor::VisibleFiles), QString());
}

TEST_F(FileSearch, FindsNamesThatAreNoText) {
    const QByteArray name("\xE9t\xE9.mp3");
    Folder.MakeFile(name);
    EXPECT_EQ(ToNative(First(name)), name);
    EXPECT_EQ(ToNative(First("*.mp3")), name);
    EXPECT_EQ(ToNative(First("?t?.mp3")), name);
    EXPECT_EQ(Names(), QStringList{FromNative(name)});
}

TEST_F(FileSearch, OddNamesAreFoundByAPattern) {
    Folder.MakeFile("Z:");
    EXPECT_EQ(First("*"), u"Z:"_s);
    Folder.MakeFile("A\\b");
    EXPECT_EQ(First("*"), u"A\uF05Cb"_s);
}

TEST_F(FileSearch, KnowsAFolderFromAFile) {
    Folder.MakeFile("sub/a");
    EXPECT_TRUE(IsFolder(Folder.Path("sub")));
    EXPECT_TRUE(IsFolder(Folder.Path("sub") + u'\\'));
    EXPECT_FALSE(IsFolder(Folder.Path("sub/a")));
    EXPECT_FALSE(IsFolder(Folder.Path("none")));
    EXPECT_FALSE(IsFolder(QString()));
}

TEST_F(FileSearch, ListsFilesAndFoldersMixedByUpperCasedName) {
    for (const char* name : {"b.mp3", "C.mp3", "a.mp3", "A.mp3", "_.mp3", "\xC3\xA9", "\xC3\x88"}) {
        Folder.MakeFile(name);
    }
    Folder.MakeFolder("Bb");
    EXPECT_EQ(Names(), QStringList({u"A.mp3"_s, u"a.mp3"_s, u"b.mp3"_s, u"Bb"_s, u"C.mp3"_s, u"_.mp3"_s,
                                    u"\u00c8"_s, u"\u00e9"_s}));
}

TEST_F(FileSearch, AListTellsFoldersAndHiddenEntries) {
    Folder.MakeFile(".h");
    Folder.MakeFile("a");
    Folder.MakeFolder("b");
    Link("b", "c");
    Link("none", "d");
    QStringList told;
    for (const FolderEntry& entry : ListFolder(Folder.Path())) {
        told += entry.Name + (entry.IsFolder ? u" folder"_s : u" file"_s) +
                (entry.IsHidden ? u" hidden"_s : QString());
    }
    EXPECT_EQ(told,
              QStringList({u".h file hidden"_s, u"a file"_s, u"b folder"_s, u"c folder"_s, u"d file"_s}));
}

TEST_F(FileSearch, WhatIsNoFolderListsNothing) {
    EXPECT_TRUE(ListFolder(Folder.Path("none")).empty());
    EXPECT_TRUE(ListFolder(Folder.MakeFile("a")).empty());
    EXPECT_TRUE(ListFolder(QString()).empty());
}

TEST_F(FileSearch, TenThousandEntriesAreListedAtOnce) {
    for (int i = 0; i < 10000; ++i) Folder.MakeFile("Track " + QByteArray::number(i * 7919 % 10000));
    const auto start = CpuClock::now();
    const auto entries = ListFolder(Folder.Path());
    EXPECT_LT(CpuClock::now() - start, std::chrono::seconds(10));
    ASSERT_EQ(entries.size(), 10000U);
    EXPECT_EQ(entries[1].Name, u"Track 1"_s);
    EXPECT_EQ(entries[2].Name, u"Track 10"_s);
}

TEST_F(FileSearch, AFolderIsTheSameByEveryPath) {
    Folder.MakeFolder("a");
    Folder.MakeFolder("b");
    Link("a", "link");
    EXPECT_EQ(IdentityOf(Folder.Path("a")), IdentityOf(Folder.Path("link")));
    EXPECT_EQ(IdentityOf(Folder.Path("a")), IdentityOf(Folder.Path("b/../a")));
    EXPECT_NE(IdentityOf(Folder.Path("a")), IdentityOf(Folder.Path("b")));
    EXPECT_FALSE(IdentityOf(Folder.Path("none")).has_value());
}

}  // namespace
}  // namespace Sonmira

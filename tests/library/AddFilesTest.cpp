#include "HeadlessHost.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class AddFiles : public ::testing::Test {
protected:
    TestFolder Folder;
    Collection Items;
    HeadlessHost Host;

    // Keys of the nodes below the test folder.
    std::vector<QString> Nodes() const {
        std::vector<QString> keys;
        for (const QString& key : Host.NodeKeys) keys.push_back(key.mid(Folder.Path().size() + 1));
        return keys;
    }
    const ConversionRecord& Last() const { return Items.Records[Items.Records.UpperBound()]; }
};

TEST_F(AddFiles, ADialogFileGoesUnderTheRootWithNoRelativeFolder) {
    AddFileRecord(Items, Host, Folder.MakeFile("a.mp3"));
    EXPECT_EQ(Last().Name, u"a.mp3"_s);
    EXPECT_EQ(Last().Index, 1);
    EXPECT_EQ(Last().Parent, 0);
    EXPECT_EQ(Last().RelativeFolder, QString());
    EXPECT_EQ(Host.FileCount, 1);
    EXPECT_EQ(Host.NodeKeys, std::vector<QString>{Folder.Path("a.mp3")});
}

TEST_F(AddFiles, TheSameFileTwiceLeavesOneRecord) {
    const QString path = Folder.MakeFile("a.mp3");
    AddFileRecord(Items, Host, path);
    AddFileRecord(Items, Host, path);
    AddDropped(Items, Host, {path});
    EXPECT_EQ(Items.Records.UpperBound(), 1);
    EXPECT_EQ(Items.FileCount, 1);
}

TEST_F(AddFiles, NamesThatDifferInCapitalsAreDifferentFilesAndFolders) {
    for (const char* name : {"a.mp3", "A.mp3", "A.MP3", "Music/x.wav", "MUSIC/x.wav"}) Folder.MakeFile(name);
    AddFileRecord(Items, Host, Folder.Path("a.mp3"));
    AddFileRecord(Items, Host, Folder.Path("A.mp3"));
    AddDropped(Items, Host, {Folder.Path("A.MP3"), Folder.Path("Music"), Folder.Path("MUSIC")});
    AddDirectory(Items, Host, Folder.Path("music"));
    EXPECT_EQ(Nodes(), (std::vector<QString>{u"a.mp3"_s, u"A.mp3"_s, u"A.MP3"_s, u"Music"_s,
                                             u"Music\\x.wav"_s, u"MUSIC"_s, u"MUSIC\\x.wav"_s, u"music"_s}));
    EXPECT_EQ(Items.Records.UpperBound(), 8);
}

TEST_F(AddFiles, AFileWithoutADotHasARecordButNoNodeAndNoCount) {
    AddFileRecord(Items, Host, Folder.MakeFile("song"));
    EXPECT_EQ(Items.Records.UpperBound(), 1);
    EXPECT_TRUE(Host.NodeKeys.empty());
    EXPECT_EQ(Items.FileCount, 0);
}

TEST_F(AddFiles, AFolderComesInWholeAndInOrderOfUpperCasedNames) {
    Folder.MakeFile("Music/a.wav");
    Folder.MakeFile("Music/B.Mp3");
    Folder.MakeFile("Music/note.txt");
    Folder.MakeFolder("Music/Empty");
    Folder.MakeFile("Music/Rock/x.ogg");
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Nodes(), (std::vector<QString>{u"Music"_s, u"Music\\a.wav"_s, u"Music\\B.Mp3"_s,
                                             u"Music\\Empty"_s, u"Music\\Rock"_s, u"Music\\Rock\\x.ogg"_s}));
    EXPECT_EQ(Host.DirectoryCount, 3);
    EXPECT_EQ(Host.FileCount, 3);
    EXPECT_EQ(Last().RelativeFolder, u"Music\\Rock\\x.ogg"_s);
    EXPECT_EQ(Last().Parent, Items.Records[5].Index);
    EXPECT_EQ(Items.Records[5].RelativeFolder, u"Music\\Rock"_s);
    EXPECT_FALSE(Items.ScanRunning);
    EXPECT_TRUE(Host.ControlsEnabled);
    EXPECT_EQ(Host.StatusPath, QString());
}

TEST_F(AddFiles, ASubfolderOfAnAddedFolderIsNotAddedAgain) {
    Folder.MakeFile("Music/Rock/x.ogg");
    AddDirectory(Items, Host, Folder.Path("Music"));
    const int before = Items.Records.UpperBound();
    AddDirectory(Items, Host, Folder.Path("Music/Rock"));
    EXPECT_EQ(Items.Records.UpperBound(), before);
    EXPECT_TRUE(Host.ControlsEnabled);
}

TEST_F(AddFiles, AFolderAddedAfterItsSubfolderHoldsThatSubfolderTwice) {
    Folder.MakeFile("Music/Rock/x.ogg");
    AddDirectory(Items, Host, Folder.Path("Music/Rock"));
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Items.Records.UpperBound(), 5);
    EXPECT_EQ(Host.DirectoryCount, 3);
    EXPECT_EQ(Host.FileCount, 2);
    EXPECT_EQ(Nodes(), (std::vector<QString>{u"Music\\Rock"_s, u"Music\\Rock\\x.ogg"_s, u"Music"_s}));
}

TEST_F(AddFiles, ADroppedFileKeepsItsNameAsRelativeFolder) {
    AddDropped(Items, Host, {Folder.MakeFile("a.mpc"), Folder.MakeFile("b.txt")});
    EXPECT_EQ(Items.Records.UpperBound(), 1);
    EXPECT_EQ(Last().RelativeFolder, u"a.mpc"_s);
}

TEST_F(AddFiles, ADropTakesFilesAndFoldersInTheirOrder) {
    Folder.MakeFile("Music/x.ogg");
    AddDropped(Items, Host, {Folder.MakeFile("z.wav"), Folder.Path("Music"), Folder.MakeFile("a.wav")});
    EXPECT_EQ(Nodes(), (std::vector<QString>{u"z.wav"_s, u"Music"_s, u"Music\\x.ogg"_s, u"a.wav"_s}));
}

TEST_F(AddFiles, AFolderOfMpcFilesComesInWithoutThemWhileADropTakesThem) {
    const QString file = Folder.MakeFile("Music/a.mpc");
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Host.FileCount, 0);
    AddDropped(Items, Host, {file});
    EXPECT_EQ(Host.FileCount, 1);
}

TEST_F(AddFiles, AScannedNameWithoutADotHasARecordOnly) {
    Folder.MakeFile("Music/xwav");
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Items.Records.UpperBound(), 2);
    EXPECT_EQ(Nodes(), std::vector<QString>{u"Music"_s});
    EXPECT_EQ(Host.FileCount, 0);
}

TEST_F(AddFiles, AFileThatAScanFoundIsNotAddedByTheDialogAgain) {
    const QString file = Folder.MakeFile("Music/a.wav");
    AddDirectory(Items, Host, Folder.Path("Music"));
    AddFileRecord(Items, Host, file);
    EXPECT_EQ(Items.Records.UpperBound(), 2);
}

TEST_F(AddFiles, AFileThatStandsByItselfDoesNotComeInAgainWithItsFolder) {
    Folder.MakeFile("Music/a.wav");
    Folder.MakeFile("Music/Rock/b.wav");
    Folder.MakeFile("Music/Rock/c.wav");
    AddFileRecord(Items, Host, Folder.Path("Music/a.wav"));
    AddDropped(Items, Host, {Folder.Path("Music/Rock/b.wav")});
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Nodes(), (std::vector<QString>{u"Music\\a.wav"_s, u"Music\\Rock\\b.wav"_s, u"Music"_s,
                                             u"Music\\Rock"_s, u"Music\\Rock\\c.wav"_s}));
    EXPECT_EQ(Items.Records.UpperBound(), 5);
    EXPECT_EQ(Items.Records[1].Parent, 0) << "it stays where it stands";
    EXPECT_EQ(Host.FileCount, 3);
    EXPECT_EQ(Host.DirectoryCount, 2);
}

TEST_F(AddFiles, AFileThatStoodByItselfComesInWithItsFolderOnceItWasRemoved) {
    const QString path = Folder.MakeFile("Music/a.wav");
    AddFileRecord(Items, Host, path);
    Items.Records.MarkRemoved(1);
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Last().Path, path);
    EXPECT_EQ(Last().Parent, 2);
}

TEST_F(AddFiles, AFolderThatStandsWhereAFileWasDoesNotKeepTheFileOut) {
    const QString path = Folder.MakeFile("Music/a.wav");
    AddDirectory(Items, Host, path);  // a folder by the record alone
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Last().Path, path);
    EXPECT_TRUE(Last().IsFile);
}

TEST_F(AddFiles, AStopEndsADropBetweenTwoPaths) {
    Folder.MakeFile("Music/Rock/a.wav");
    Host.AtYield = [this] { Items.StopScan = true; };
    AddDropped(Items, Host, {Folder.Path("Music"), Folder.MakeFile("z.wav")});
    EXPECT_FALSE(Items.Records.HoldsPath(Folder.Path("z.wav")));
    EXPECT_TRUE(Host.ControlsEnabled);
}

TEST_F(AddFiles, RecordsBeyond16BitsKeepZeroAndTheScanGoesOn) {
    while (Items.Records.UpperBound() < 32764) Items.Records.Append({});
    for (const char* name :
         {"Music/1.wav", "Music/2.wav", "Music/A/3.wav", "Music/A/Deep/4.wav", "Music/z.wav"})
        Folder.MakeFile(name);
    AddDirectory(Items, Host, Folder.Path("Music"));
    struct Numbers {
        QString Name;
        int Index;
        int Parent;
    };
    const std::vector<Numbers> expected = {{u"Music"_s, 32765, 0},     {u"1.wav"_s, 32766, 32765},
                                           {u"2.wav"_s, 32767, 32765}, {u"A"_s, 0, 32765},
                                           {u"3.wav"_s, 0, 0},         {u"Deep"_s, 0, 0},
                                           {u"4.wav"_s, 0, 0},         {u"z.wav"_s, 0, 32765}};
    ASSERT_EQ(Items.Records.UpperBound(), 32764 + static_cast<int>(expected.size()));
    for (std::size_t n = 0; n < expected.size(); ++n) {
        const ConversionRecord& record = Items.Records[32765 + static_cast<int>(n)];
        EXPECT_EQ(record.Name, expected[n].Name);
        EXPECT_EQ(record.Index, expected[n].Index) << record.Name.toStdString();
        EXPECT_EQ(record.Parent, expected[n].Parent) << record.Name.toStdString();
    }
    EXPECT_EQ(Last().RelativeFolder, u"Music\\z.wav"_s);
    EXPECT_EQ(Items.Records[32765 + 6].RelativeFolder, u"Music\\A\\Deep\\4.wav"_s) << "taken by position";
    EXPECT_EQ(Nodes().size(), expected.size());
    EXPECT_EQ(Host.FileCount, 5);
    EXPECT_TRUE(Host.ControlsEnabled);
}

TEST_F(AddFiles, AFolderBeyond16BitsHasARecordButIsNotWalked) {
    while (Items.Records.UpperBound() < 32767) Items.Records.Append({});
    Folder.MakeFile("Music/a.wav");
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Items.Records.UpperBound(), 32768);
    EXPECT_EQ(Last().Name, u"Music"_s);
    EXPECT_TRUE(Nodes().empty());
    EXPECT_EQ(Items.DirectoryCount, 0);
    EXPECT_TRUE(Host.ControlsEnabled);
    EXPECT_FALSE(Items.ScanRunning);
}

TEST_F(AddFiles, LinksCountAsWhatTheyLeadTo) {
    Folder.MakeFile("Store/real.wav");
    Folder.MakeFile("Store/Album/song.ogg");
    Folder.MakeFolder("Music");
    ASSERT_EQ(symlink("../Store/real.wav", Folder.Native("Music/file.mp3").constData()), 0);
    ASSERT_EQ(symlink("../Store/Album", Folder.Native("Music/folder.wav").constData()), 0);
    ASSERT_EQ(symlink("../Store/real.wav", Folder.Native("Music/note.txt").constData()), 0);
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Nodes(), (std::vector<QString>{u"Music"_s, u"Music\\file.mp3"_s, u"Music\\folder.wav"_s,
                                             u"Music\\folder.wav\\song.ogg"_s}));
    EXPECT_TRUE(Items.Records[2].IsFile);
    EXPECT_FALSE(Items.Records[3].IsFile);
    EXPECT_EQ(Host.FileCount, 2);
    EXPECT_EQ(Host.DirectoryCount, 2);
}

TEST_F(AddFiles, TwoLinksToOneFolderAreBothWalked) {
    Folder.MakeFile("Store/song.ogg");
    Folder.MakeFolder("Music");
    for (const char* name : {"Music/A", "Music/B"})
        ASSERT_EQ(symlink("../Store", Folder.Native(name).constData()), 0);
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Host.FileCount, 2) << "neither lies on the way to the other";
}

TEST_F(AddFiles, AStopIsHeardWhenASubfolderIsFinished) {
    Folder.MakeFile("Music/A/1.wav");
    Folder.MakeFile("Music/A/2.wav");
    Folder.MakeFile("Music/B/3.wav");
    Host.AtYield = [this] { Items.StopScan = true; };
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Host.FileCount, 2);
    EXPECT_TRUE(Host.ControlsEnabled);
}

TEST_F(AddFiles, ALinkBackToAFolderOnTheWayIsNotWalkedAgain) {
    Folder.MakeFile("Music/Rock/x.ogg");
    ASSERT_EQ(symlink("..", Folder.Native("Music/Rock/back").constData()), 0);
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Host.FileCount, 1);
    EXPECT_EQ(Host.DirectoryCount, 3);
}

TEST_F(AddFiles, OddNamesComeInUnchanged) {
    const std::vector<QByteArray> names = {"a b.wav",         "ä.wav",    "\xE9.wav", "new\nline.wav",
                                           "back\\slash.wav", "日本.wav", "🎵.wav"};
    for (const QByteArray& name : names) Folder.MakeFile("Music/" + name);
    AddDirectory(Items, Host, Folder.Path("Music"));
    EXPECT_EQ(Host.FileCount, static_cast<int>(names.size()));
    for (const QByteArray& name : names) {
        EXPECT_TRUE(Items.Records.HoldsPath(Folder.Path("Music/" + name))) << name.constData();
    }
}

// What a path is by its length, whether it is there or not.
TEST_F(AddFiles, AFolderWithAShortNameBelowTheRootOfTheFileSystemIsNoDrive) {
    Host.AtYield = [this] { Items.StopScan = true; };  // of the drive no more than has to be
    for (const QString& path : {u"\\q7"_s, u"\\q"_s, u"Z:\\"_s}) AddDirectory(Items, Host, path);
    ASSERT_GE(Host.NodeKeys.size(), 3U);
    EXPECT_EQ(Host.NodeKeys.at(2), u"Z:\\"_s);
    EXPECT_EQ(Host.NodeImages.at(0), FolderImage);
    EXPECT_EQ(Host.NodeImages.at(1), FolderImage);
    EXPECT_EQ(Host.NodeImages.at(2), DriveImage);
}

TEST_F(AddFiles, AFolderThatCannotBeListedHasNoChildren) {
    AddDirectory(Items, Host, Folder.Path("gone"));
    EXPECT_EQ(Items.Records.UpperBound(), 1);
    EXPECT_EQ(Host.FileCount, 0);
}

}  // namespace
}  // namespace Sonmira

#include "HeadlessHost.h"
#include "engine/Destination.h"
#include "engine/RunState.h"
#include "library/ConversionRecords.h"
#include "platform/Failure.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Destinations : public ::testing::Test {
protected:
    Destinations() { Host.OutputFolder = u"\\out"_s; }

    int AddFolder(const QString& relativeFolder) {
        ConversionRecord record;
        record.RelativeFolder = relativeFolder;
        return Records.Append(record);
    }
    // The stem for a file of that name below the record at `parent`.
    QString StemOf(const QByteArray& name, int parent) {
        Run.CurrentInput = Folder.MakeFile(name);
        EXPECT_TRUE(Target.TakeStem(Run));
        ConversionRecord record;
        record.IsFile = true;
        record.Parent = static_cast<qint16>(parent);
        Target.SetOutputStem(Run, Host, Records, record);
        return Run.OutputStem;
    }

    TestFolder Folder;
    RunState Run;
    HeadlessHost Host;
    ConversionRecords Records;
    Destination Target;
};

TEST_F(Destinations, LieBelowTheOutputFolderInTheFolderOfTheParent) {
    EXPECT_EQ(StemOf("x.ogg", AddFolder(u"Music\\Rock"_s)), u"\\out\\Music\\Rock\\x"_s);
}

TEST_F(Destinations, OfAFileUnderTheRootStandBehindTwoBackslashes) {
    EXPECT_EQ(StemOf("x.ogg", 0), u"\\out\\\\x"_s);
}

TEST_F(Destinations, AppendTheBackslashToTheOutputFolderItself) {
    StemOf("x.ogg", 0);
    EXPECT_EQ(Host.OutputFolder, u"\\out\\"_s);
}

TEST_F(Destinations, OfAnEmptyOutputFolderLieInTheRootFolder) {
    Host.OutputFolder.clear();
    EXPECT_EQ(StemOf("x.ogg", 0), u"\\\\x"_s);
    EXPECT_EQ(Host.OutputFolder, u"\\"_s);
}

TEST_F(Destinations, KeepTheFolderOfTheFileBeforeWhereTheParentsIsABackslash) {
    const int rock = AddFolder(u"Rock"_s);
    const int bare = AddFolder(u"\\"_s);
    EXPECT_EQ(StemOf("a.ogg", bare), u"\\out\\a"_s);
    EXPECT_EQ(StemOf("b.ogg", rock), u"\\out\\Rock\\b"_s);
    EXPECT_EQ(StemOf("c.ogg", bare), u"\\out\\Rock\\c"_s);
}

TEST_F(Destinations, LieBesideTheSourceWhereThatIsChecked) {
    Host.SaveBesideOriginal = true;
    EXPECT_EQ(StemOf("Music/x.y.ogg", 0), Folder.Path("Music/x.y"));
    EXPECT_EQ(Host.OutputFolder, u"\\out"_s);
}

TEST_F(Destinations, LieBesideTheListedSourceEvenForATemporaryWav) {
    Host.SaveBesideOriginal = true;
    Run.EncodageParticulier = true;
    Run.RealFileName = u"\\music\\x.flac"_s;
    EXPECT_EQ(StemOf("tmp/x.wav", 0), u"\\music\\x"_s);
}

TEST_F(Destinations, AreRefusedToAFileWithoutADotOrThatIsGone) {
    Run.CurrentInput = Folder.MakeFile("song");
    EXPECT_FALSE(Target.TakeStem(Run));
    Run.CurrentInput = Folder.Path("gone.wav");
    EXPECT_FALSE(Target.TakeStem(Run));
}

TEST_F(Destinations, KeepTheFolderOfTheFileBeforeWhereTheParentWasRemoved) {
    EXPECT_EQ(StemOf("b.ogg", AddFolder(u"Rock"_s)), u"\\out\\Rock\\b"_s);
    EXPECT_EQ(StemOf("x.ogg", 99), u"\\out\\Rock\\x"_s);
}

}  // namespace
}  // namespace Sonmira

#include "HeadlessHost.h"
#include "engine/Destination.h"
#include "engine/Run.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Destinations : public ::testing::Test {
protected:
    Destinations() { Host.OutputFolder = u"\\out"_s; }

    // The stem for a file of that name in a folder with that RelativeFolder.
    QString StemOf(const QByteArray& name, const QString& parentFolder) {
        Run.BeginFile(Folder.MakeFile(name));
        EXPECT_TRUE(Target.TakeStem(Run));
        Target.SetOutputStemInParent(Run, Host, parentFolder);
        return Run.OutputStem();
    }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    Destination Target;
};

TEST_F(Destinations, LieBelowTheOutputFolderInTheFolderOfTheParent) {
    EXPECT_EQ(StemOf("x.ogg", u"Music\\Rock"_s), u"\\out\\Music\\Rock\\x"_s);
}

TEST_F(Destinations, OfAFileUnderTheRootStandBehindTwoBackslashes) {
    EXPECT_EQ(StemOf("x.ogg", QString()), u"\\out\\\\x"_s);
}

TEST_F(Destinations, AppendTheBackslashToTheOutputFolderItself) {
    StemOf("x.ogg", QString());
    EXPECT_EQ(Host.OutputFolder, u"\\out\\"_s);
}

TEST_F(Destinations, OfAnEmptyOutputFolderLieInTheRootFolder) {
    Host.OutputFolder.clear();
    EXPECT_EQ(StemOf("x.ogg", QString()), u"\\\\x"_s);
    EXPECT_EQ(Host.OutputFolder, u"\\"_s);
}

TEST_F(Destinations, KeepTheFolderOfTheFileBeforeWhereTheParentsIsABackslash) {
    EXPECT_EQ(StemOf("a.ogg", u"\\"_s), u"\\out\\a"_s);
    EXPECT_EQ(StemOf("b.ogg", u"Rock"_s), u"\\out\\Rock\\b"_s);
    EXPECT_EQ(StemOf("c.ogg", u"\\"_s), u"\\out\\Rock\\c"_s);
}

TEST_F(Destinations, LieBesideTheSourceWhereThatIsChecked) {
    Host.SaveBesideOriginal = true;
    EXPECT_EQ(StemOf("Music/x.y.ogg", {}), Folder.Path("Music/x.y"));
    EXPECT_EQ(Host.OutputFolder, u"\\out"_s);
}

TEST_F(Destinations, LieBesideTheListedSourceEvenForATemporaryWav) {
    Host.SaveBesideOriginal = true;
    Run.BeginFile(u"\\music\\x.flac"_s);
    Run.KeepSource();
    EXPECT_EQ(StemOf("tmp/x.wav", {}), u"\\music\\x"_s);
}

TEST_F(Destinations, AreRefusedToAFileWithoutADotOrThatIsGone) {
    Run.BeginFile(Folder.MakeFile("song"));
    EXPECT_FALSE(Target.TakeStem(Run));
    Run.BeginFile(Folder.Path("gone.wav"));
    EXPECT_FALSE(Target.TakeStem(Run));
}

}  // namespace
}  // namespace Sonmira

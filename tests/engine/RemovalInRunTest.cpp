#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/JobDriver.h"
#include "engine/Run.h"
#include "engine/SelectionDriver.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "library/Removal.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

// What a removal before or in the middle of a run does to the run, over fake components.
class RemovalInRun : public ::testing::Test {
protected:
    RemovalInRun() {
        NumberLanguageLines();
        Host.Format = u"Mp3"_s;
        Host.OutputFolder = Folder.MakeFolder("out");
        Codecs.Sink.MakesFile = true;
    }

    void Add(const QByteArray& folder, std::initializer_list<QByteArray> names) {
        for (const QByteArray& name : names) Folder.MakeFile(folder + '/' + name);
        AddDirectory(Items, Host, Folder.Path(folder));
    }
    void Remove(const QByteArray& name) { RemoveFromCollection(Items, Host, Folder.Path(name)); }
    // Removes these when the file of that row is copied.
    void RemoveInRow(std::size_t row, QList<QByteArray> names) {
        Host.AtYield = [this, row, names]() mutable {
            if (Host.Rows.size() != row || !Run.Busy()) return;
            for (const QByteArray& name : std::exchange(names, {})) Remove(name);
        };
    }
    void ConvertAll() { JobDriver(Run, Host, Codecs.Parts(), Items).RunAllConversions(); }
    void ConvertNode(const QByteArray& name) {
        SelectionDriver(Run, Host, Codecs.Parts(), Items).ConvertNode(Folder.Path(name));
    }

    QStringList Names() const {
        QStringList names;
        for (const HeadlessHost::Row& row : Host.Rows) names.append(row.Name);
        return names;
    }
    bool IsMade(const QByteArray& name) const { return NativeExists(Folder.Native("out/" + name)); }

    TestFolder Folder;
    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    Collection Items;
};

TEST_F(RemovalInRun, AFolderThatSharesANumberAfterARemovalGetsItsOwnFiles) {
    Add("A", {"a.wav"});
    Add("B", {"b.wav"});
    Remove("A");
    Add("C", {"c.wav"});
    ASSERT_EQ(Items.Records[1].Index, Items.Records[3].Index) << "B and C share a number";
    ConvertAll();
    EXPECT_TRUE(IsMade("B/b.mp3"));
    EXPECT_TRUE(IsMade("C/c.mp3"));
    EXPECT_FALSE(IsMade("B/c.mp3"));
}

TEST_F(RemovalInRun, AFileUnderTheRootGoesIntoTheOutputFolderWhateverNumbersAreShared) {
    Add("A", {"a.wav"});
    Remove("A");
    AddFileRecord(Items, Host, Folder.MakeFile("x.wav"));
    ConvertAll();
    EXPECT_TRUE(IsMade("x.mp3"));
}

TEST_F(RemovalInRun, OfAnEarlierFileSkipsNone) {
    Add("A", {"1.wav", "2.wav", "3.wav", "4.wav"});
    RemoveInRow(2, {"A/1.wav"});
    ConvertAll();
    EXPECT_EQ(Names(), (QStringList{u"1.wav"_s, u"2.wav"_s, u"3.wav"_s, u"4.wav"_s}));
}

TEST_F(RemovalInRun, OfSeveralEarlierOnesAndALaterOneSkipsOnlyTheLaterOne) {
    Add("A", {"1.wav", "2.wav"});
    Add("B", {"3.wav", "4.wav", "5.wav"});
    RemoveInRow(3, {"A", "B/4.wav"});
    ConvertAll();
    EXPECT_EQ(Names(), (QStringList{u"1.wav"_s, u"2.wav"_s, u"3.wav"_s, u"5.wav"_s}));
}

TEST_F(RemovalInRun, OfTheFileInHandFinishesItAndRemovesItsSourceWhereThatIsChecked) {
    Add("A", {"1.wav", "2.wav", "3.wav"});
    Host.RemoveOriginal = true;
    RemoveInRow(2, {"A/2.wav"});
    ConvertAll();
    EXPECT_EQ(Names(), (QStringList{u"1.wav"_s, u"2.wav"_s, u"3.wav"_s}));
    EXPECT_EQ(Host.Rows[1].Icon, ConvertedIcon);
    EXPECT_TRUE(IsMade("A/2.mp3"));
    EXPECT_FALSE(NativeExists(Folder.Native("A/2.wav")));
}

TEST_F(RemovalInRun, OfTheFolderInHandKeepsItsFilesDestination) {
    Add("A", {"1.wav"});
    Add("B", {"2.flac", "3.wav"});
    Add("C", {"4.wav"});
    Codecs.Meanwhile = [this] {
        Remove("B");
    };  // while its WAV is made, before the destination is worked out
    ConvertAll();
    EXPECT_EQ(Names(), (QStringList{u"1.wav"_s, u"2.flac"_s, u"4.wav"_s}));
    EXPECT_TRUE(IsMade("B/2.mp3"));
    EXPECT_TRUE(IsMade("C/4.mp3"));
}

TEST_F(RemovalInRun, LeavesTheCountsAsTheyAre) {
    Add("A", {"1.wav", "2.wav", "3.wav"});
    RemoveInRow(2, {"A/1.wav"});
    ConvertAll();
    EXPECT_EQ(Host.Count, u"3 / 2"_s) << "three were done, two are left in the collection";
}

TEST_F(RemovalInRun, OfASelectionSkipsNoneOnAnyLevel) {
    Add("A", {"0.wav", "Sub/1.wav", "Sub/2.wav", "Sub/3.wav", "z.wav"});
    RemoveInRow(3, {"A/0.wav", "A/Sub/1.wav"});
    ConvertNode("A");
    EXPECT_EQ(Names(), (QStringList{u"0.wav"_s, u"1.wav"_s, u"2.wav"_s, u"3.wav"_s, u"z.wav"_s}));
}

TEST_F(RemovalInRun, OfTheSubfolderThatIsWalkedGoesOnBehindIt) {
    Add("A", {"Sub/1.wav", "Sub/2.wav", "z.wav"});
    RemoveInRow(1, {"A/Sub"});
    ConvertNode("A");
    EXPECT_EQ(Names(), (QStringList{u"1.wav"_s, u"z.wav"_s}));
}

TEST_F(RemovalInRun, OfEverythingEndsTheRunBehindTheFileInHand) {
    Add("A", {"1.wav", "2.wav"});
    RemoveInRow(1, {"A"});
    ConvertAll();
    EXPECT_EQ(Names(), QStringList{u"1.wav"_s});
    EXPECT_TRUE(Host.ControlsEnabled);
    EXPECT_FALSE(Run.Busy());
}

}  // namespace
}  // namespace Sonmira

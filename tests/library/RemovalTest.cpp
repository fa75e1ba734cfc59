#include "HeadlessHost.h"
#include "library/AddFiles.h"
#include "library/Collection.h"
#include "library/Removal.h"
#include "support/TestFolder.h"

#include <gtest/gtest.h>

#include <random>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Removal : public ::testing::Test {
protected:
    void Add(const QByteArray& folder) { AddDirectory(Items, Host, Folder.Path(folder)); }
    void Remove(const QByteArray& name) { RemoveFromCollection(Items, Host, Folder.Path(name)); }
    QStringList Names() const {
        QStringList names;
        for (int n = 1; n <= Items.Records.UpperBound(); ++n) names.append(Items.Records[n].Name);
        return names;
    }

    TestFolder Folder;
    HeadlessHost Host;
    Collection Items;
};

TEST_F(Removal, OfAFolderTakesItsWholeSubtreeAndCountsAnew) {
    for (const char* name : {"A/one.mp3", "A/B/two.mp3", "A/B/C/three.mp3", "A/B2/four.mp3"})
        Folder.MakeFile(name);
    Add("A");
    Remove("A/B");
    EXPECT_EQ(Names(), (QStringList{u"A"_s, u"B2"_s, u"four.mp3"_s, u"one.mp3"_s}));
    EXPECT_EQ(Items.DirectoryCount, 2);
    EXPECT_EQ(Items.FileCount, 2);
    EXPECT_EQ(Host.DirectoryCount, 2);
    EXPECT_EQ(Host.FileCount, 2);
}

TEST_F(Removal, OfAFileTakesThatFile) {
    for (const char* name : {"A/one.mp3", "A/two.mp3"}) Folder.MakeFile(name);
    Add("A");
    Remove("A/one.mp3");
    EXPECT_EQ(Names(), (QStringList{u"A"_s, u"two.mp3"_s}));
}

TEST_F(Removal, ComparesPathsExactly) {
    Folder.MakeFile("A/one.mp3");
    Add("A");
    Remove("a/one.mp3");
    EXPECT_EQ(Names().size(), 2);
}

TEST_F(Removal, NumbersStayAsTheyWere) {
    for (const char* name : {"A/one.mp3", "B/two.mp3"}) Folder.MakeFile(name);
    Add("A");
    Add("B");
    Remove("A");
    ASSERT_EQ(Names(), (QStringList{u"B"_s, u"two.mp3"_s}));
    EXPECT_EQ(Items.Records[1].Index, 3);
    EXPECT_EQ(Items.Records[2].Index, 4);
    EXPECT_EQ(Items.Records[2].Parent, 3);
}

TEST_F(Removal, AfterwardsTwoFoldersMayShareANumberAndGoTogether) {
    for (const char* name : {"A/one.mp3", "B/two.mp3", "C/three.mp3"}) Folder.MakeFile(name);
    Add("A");
    Add("B");  // number 3, its file 4
    Remove("A");
    Add("C");  // position 3 and so number 3 again
    Remove("C");
    EXPECT_EQ(Names(), QStringList{u"B"_s}) << "the file of B has the parent number 3, too";
}

TEST_F(Removal, OfTheLastOneLeavesTheCollectionEmpty) {
    Folder.MakeFile("A/one.mp3");
    Add("A");
    Remove("A");
    EXPECT_EQ(Items.Records.UpperBound(), 0);
    EXPECT_EQ(Host.DirectoryCount, 0);
    EXPECT_EQ(Host.FileCount, 0);
}

TEST_F(Removal, AFileWithoutANodeCountsFromTheNextRemovalOn) {
    Folder.MakeFile("A/one.mp3");
    Folder.MakeFile("A/xmp3");
    Folder.MakeFile("B/two.mp3");
    Add("A");
    Add("B");
    EXPECT_EQ(Items.FileCount, 2);
    Remove("B");
    EXPECT_EQ(Items.FileCount, 2) << "one.mp3 and the one that no node shows";
}

TEST_F(Removal, AFolderBeyondTheNumbersTakesOnlyItself) {
    ConversionRecords& records = Items.Records;
    while (records.UpperBound() < 32767) records.Append({});
    ConversionRecord folder;
    folder.Path = u"\\late"_s;
    const int position = records.Append(folder);
    EXPECT_EQ(records[position].Index, 0);
    RemoveFromCollection(Items, Host, u"\\late"_s);
    EXPECT_EQ(records.UpperBound(), 32767);
}

// The marks that a plain walk over the whole array sets.
void MarkByWalking(std::vector<ConversionRecord>& records, int index) {
    if (index == 0) return;
    for (std::size_t n = 1; n < records.size(); ++n) {
        if (records[n].Parent != index || records[n].Removed) continue;
        records[n].Removed = true;
        if (!records[n].IsFile) MarkByWalking(records, records[n].Index);
    }
}

TEST_F(Removal, MarksWhatAPlainWalkOverTheArrayMarks) {
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        ConversionRecords records;
        for (int n = 1; n <= 60; ++n) {
            ConversionRecord record;
            record.Path = QString::number(n);
            record.IsFile = random() % 2 == 0;
            record.Parent = static_cast<qint16>(random() % static_cast<unsigned>(n));
            records.Append(record);
            // Now and then one goes, so that numbers and positions part.
            if (random() % 10 == 0) {
                records.MarkRemoved(records.UpperBound());
                records.Compact();
            }
        }
        std::vector<ConversionRecord> plain;
        for (int n = 0; n <= records.UpperBound(); ++n) plain.push_back(records[n]);
        const int start = 1 + static_cast<int>(random() % static_cast<unsigned>(records.UpperBound()));
        MarkChildrenRemoved(records, start);
        MarkByWalking(plain, plain[static_cast<std::size_t>(start)].Index);
        for (int n = 0; n <= records.UpperBound(); ++n) {
            EXPECT_EQ(records[n].Removed, plain[static_cast<std::size_t>(n)].Removed) << round << ' ' << n;
        }
    }
}

}  // namespace
}  // namespace Sonmira

#include "library/ConversionRecords.h"
#include "platform/Failure.h"

#include <gtest/gtest.h>

#include <random>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

ConversionRecord Made(const QString& path, bool isFile = true) {
    ConversionRecord record;
    record.Path = path;
    record.IsFile = isFile;
    return record;
}

TEST(ConversionRecords, StartWithABlankSentinelAtZero) {
    const ConversionRecords records;
    EXPECT_EQ(records.UpperBound(), 0);
    EXPECT_TRUE(records[0].Path.isEmpty());
    EXPECT_FALSE(records[0].IsFile);
}

TEST(ConversionRecords, NumberARecordByItsPosition) {
    ConversionRecords records;
    EXPECT_EQ(records.Append(Made(u"\\a.mp3"_s)), 1);
    EXPECT_EQ(records.Append(Made(u"\\b.mp3"_s)), 2);
    EXPECT_EQ(records[2].Index, 2);
}

TEST(ConversionRecords, FailOutsideTheArray) {
    const ConversionRecords records;
    EXPECT_THROW(records[1], Failure);
    EXPECT_THROW(records[-1], Failure);
}

TEST(ConversionRecords, KeepZeroForANumberBeyond16Bits) {
    ConversionRecords records;
    for (int n = 1; n <= 32767; ++n) records.Append(Made(u"\\f"_s));
    EXPECT_EQ(records[32767].Index, 32767);
    EXPECT_EQ(records.Append(Made(u"\\g"_s)), 32768);
    EXPECT_EQ(records[32768].Index, 0);
    EXPECT_EQ(records.FirstWithIndex(0), 0);
}

TEST(ConversionRecords, TreatARemovedRecordAsAbsentForAdding) {
    ConversionRecords records;
    records.MarkRemoved(records.Append(Made(u"\\a.mp3"_s)));
    EXPECT_FALSE(records.HoldsPath(u"\\a.mp3"_s));
    records.Append(Made(u"\\a.mp3"_s));
    EXPECT_TRUE(records.HoldsPath(u"\\a.mp3"_s));
}

// Each look-up beside what a walk over the array from 0 up finds.
void ExpectAnswersOfAPlainWalk(const ConversionRecords& records, int paths, int numbers) {
    for (int p = 0; p < paths; ++p) {
        const QString path = u"\\p%1"_s.arg(p);
        bool anyLive = false;
        bool anyFolder = false;
        bool anySingle = false;
        std::optional<int> first;
        for (int n = 0; n <= records.UpperBound(); ++n) {
            if (records[n].Path != path) continue;
            if (!first) first = n;
            anyLive = anyLive || !records[n].Removed;
            anyFolder = anyFolder || (!records[n].Removed && !records[n].IsFile);
            anySingle = anySingle || (!records[n].Removed && records[n].IsFile && records[n].Parent == 0);
        }
        EXPECT_EQ(records.HoldsPath(path), anyLive) << p;
        EXPECT_EQ(records.HoldsFolder(path), anyFolder) << p;
        EXPECT_EQ(records.HoldsSingleFile(path), anySingle) << p;
        EXPECT_EQ(records.FirstWithPath(path), first) << p;
    }
    for (qint16 number = 0; number < numbers; ++number) {
        std::optional<int> first;
        QList<int> children;
        for (int n = 0; n <= records.UpperBound(); ++n) {
            if (!first && records[n].Index == number) first = n;
            if (n > 0 && records[n].Parent == number) children.append(n);
        }
        EXPECT_EQ(records.FirstWithIndex(number), first) << number;
        EXPECT_EQ(records.ChildrenOf(number), children) << number;
        // Also where the walk goes on behind a record that is no child.
        for (int from = 0; from <= records.UpperBound() + 1; from += 7) {
            std::optional<int> next;
            for (const int child : children) {
                if (!next && child > from) next = child;
            }
            EXPECT_EQ(records.NextChildOf(number, from), next) << number << ' ' << from;
        }
    }
}

class RandomRecords : public ::testing::TestWithParam<unsigned> {};

// Additions, removals with their compaction, and a new start, in any order.
TEST_P(RandomRecords, AnswerWhatAPlainWalkWouldAnswer) {
    constexpr int Paths = 60;
    constexpr int Numbers = 300;
    std::mt19937 random(GetParam());
    const auto below = [&](int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); };
    ConversionRecords records;
    bool numbersWereShared = false;
    for (int step = 0; step < 600; ++step) {
        ConversionRecord record = Made(u"\\p%1"_s.arg(below(Paths)), below(2) == 0);
        record.Parent = static_cast<qint16>(below(3) == 0 ? 0 : below(records.UpperBound() + 2));
        const int position = records.Append(record);
        numbersWereShared = numbersWereShared || records.FirstWithIndex(records[position].Index) != position;
        if (below(4) == 0) records.MarkRemoved(1 + below(records.UpperBound()));
        if (below(40) == 0) records.Compact();
        if (below(250) == 0) records.Reset();
        if (step % 20 == 0) ExpectAnswersOfAPlainWalk(records, Paths + 1, Numbers);
    }
    EXPECT_TRUE(numbersWereShared) << "or the sequence shows nothing";
    records.Compact();
    ExpectAnswersOfAPlainWalk(records, Paths + 1, Numbers);
    records.Reset();
    ExpectAnswersOfAPlainWalk(records, Paths + 1, Numbers);
    EXPECT_EQ(records.UpperBound(), 0);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRecords, ::testing::Range(1U, 9U));

}  // namespace
}  // namespace Sonmira

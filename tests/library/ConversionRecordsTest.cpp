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

TEST(ConversionRecords, AnswerWhatAPlainWalkWouldAnswer) {
    std::mt19937 random(7);
    ConversionRecords records;
    for (int n = 0; n < 2000; ++n) {
        records.Append(Made(u"\\p%1"_s.arg(random() % 300), random() % 2 == 0));
        if (random() % 5 == 0) {
            records.MarkRemoved(static_cast<int>(random() % static_cast<unsigned>(records.UpperBound() + 1)));
        }
    }
    for (int p = 0; p < 310; ++p) {
        const QString path = u"\\p%1"_s.arg(p);
        bool anyLive = false;
        bool anyFolder = false;
        std::optional<int> first;
        for (int n = 0; n <= records.UpperBound(); ++n) {
            if (records[n].Path != path) continue;
            if (!first) first = n;
            anyLive = anyLive || !records[n].Removed;
            anyFolder = anyFolder || (!records[n].Removed && !records[n].IsFile);
        }
        EXPECT_EQ(records.HoldsPath(path), anyLive) << p;
        EXPECT_EQ(records.HoldsFolder(path), anyFolder) << p;
        EXPECT_EQ(records.FirstWithPath(path), first) << p;
    }
}

}  // namespace
}  // namespace Sonmira

#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/ProgressEvents.h"
#include "engine/Run.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class ProgressEvent : public ::testing::Test {
protected:
    ProgressEvent() { Run.TakeRow(Host.AddRow()); }
    const QString& RowText() const { return Host.Rows.front().Progress; }

    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    const Components Parts = Codecs.Parts();
    const ProgressEvents Events{Run, Host, Parts};
};

TEST_F(ProgressEvent, RoundsAPartOfTheWholeHalvesToTheEvenNumber) {
    const std::function<void(qint32 done, qint32 total)> reports[] = {
        [&](qint32 done, qint32 total) { Parts.alacdec1.Progress(done, total); },
        [&](qint32 done, qint32 total) { Parts.mpcdecoder1.Progress(total, done); },
        [&](qint32 done, qint32 total) { Parts.mpcencoder1.Progress(total, done); },
        [&](qint32 done, qint32 total) { MakeApeProgress(Host)(done * (100'000 / total)); }};
    for (const auto& report : reports) {
        std::vector<int> bar;
        for (const qint32 eighths : {1, 3, 5, 7}) {
            report(eighths, 8);
            bar.push_back(Host.Progress);
        }
        EXPECT_EQ(bar, (std::vector<int>{12, 38, 62, 88})) << "report " << &report - reports;
    }
}

TEST_F(ProgressEvent, OfAnEncoderMovesTheBarOnlyWhereTheRowGetsANewText) {
    const std::function<void(int percent)> reports[] = {
        [&](int percent) { Parts.FlacCodec_Encoder1.Progress(static_cast<qint16>(percent)); },
        [&](int percent) { Parts.mpcencoder1.Progress(100, percent); }};
    for (const auto& report : reports) {
        report(40);
        EXPECT_EQ(Host.Progress, 40);
        EXPECT_EQ(RowText(), u"40 %"_s);
        Host.Progress = 7;
        report(40);
        EXPECT_EQ(Host.Progress, 7) << "report " << &report - reports;
        report(41);
        EXPECT_EQ(Host.Progress, 41);
        EXPECT_EQ(RowText(), u"41 %"_s);
    }
}

TEST_F(ProgressEvent, OfADecoderMovesTheBarAndNeverTheRow) {
    Host.SetRowPercent(1, 0);
    const std::function<void()> reports[] = {
        [&] { Parts.AACDecoder1.Progress(40); }, [&] { Parts.FlacCodec1.Progress(40); },
        [&] { Parts.alacdec1.Progress(2, 5); }, [&] { Parts.mpcdecoder1.Progress(5, 2); },
        [&] { MakeApeProgress(Host)(40'000); }};
    for (const auto& report : reports) {
        Host.Progress = 0;
        report();
        EXPECT_EQ(Host.Progress, 40) << "report " << &report - reports;
        EXPECT_EQ(RowText(), u"0 %"_s);
    }
}

}  // namespace
}  // namespace Sonmira

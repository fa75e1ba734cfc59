#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/OutputStage.h"
#include "engine/Run.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class Transcoder : public ::testing::Test {
protected:
    Transcoder() {
        NumberLanguageLines();
        Run.AcceptFile();
        Run.TakeRow(Host.AddRow());
    }
    void Copy() { TranscodeStream(Run, Host, Codecs.Parts(), u"\\in.wav"_s, u"\\out.mp3"_s); }
    const HeadlessHost::Row& Row() const { return Host.Rows.front(); }

    Sonmira::Run Run;
    HeadlessHost Host;
    FakeCodecs Codecs;
    FakeSource& Source = Codecs.Source;
    FakeSink& Sink = Codecs.Sink;
};

TEST_F(Transcoder, CopiesEveryBlockInTheSourcesFormat) {
    Copy();
    EXPECT_EQ(Sink.Path, u"\\out.mp3"_s);
    EXPECT_EQ(Sink.Rate, 100);
    EXPECT_EQ(Sink.Channels, 2);
    EXPECT_EQ(Sink.Written, 4);
    EXPECT_EQ(Source.SizesAsked, std::vector<qint64>(5, 200));  // rate times channels
    EXPECT_EQ(Sink.Closed, 1);
    EXPECT_EQ(Source.Closed, 1);
    EXPECT_FALSE(Run.FileError());
}

TEST_F(Transcoder, ShowsRisingPercentagesAndEndsAt100WithAnEmptyBar) {
    Copy();
    EXPECT_EQ(Row().ProgressSeen,
              (std::vector<QString>{u"25 %"_s, u"50 %"_s, u"75 %"_s, u"100 %"_s, u"100 %"_s}));
    EXPECT_EQ(Host.Progress, 0);
}

TEST_F(Transcoder, WritesTheRowOnlyWhenTheNumberChanges) {
    Source.Blocks = 1000;
    Source.BlockBytes = 4;
    Source.Frames = 1000;
    Copy();
    EXPECT_EQ(Row().ProgressSeen.size(), 101U);  // 1 to 100, and the last word
}

TEST_F(Transcoder, RoundsPercentagesHalfToEven) {
    Source.Blocks = 2;
    Source.BlockBytes = 4;
    Source.Frames = 40;  // 2.5 and 5 percent
    Copy();
    EXPECT_EQ(Row().ProgressSeen.front(), u"2 %"_s);
}

TEST_F(Transcoder, TheFirstBlockOfALongFileShowsOne) {
    Source.Blocks = 1;
    Source.BlockBytes = 4;
    Source.Frames = 100000;
    std::vector<int> bar;
    Host.AtYield = [&] { bar.push_back(Host.Progress); };
    Copy();
    EXPECT_EQ(bar, std::vector<int>{1});
}

TEST_F(Transcoder, AStreamLongerThanItSaysStopsAt100) {
    Source.Blocks = 8;
    Copy();
    EXPECT_EQ(Sink.Written, 8);
    EXPECT_EQ(Row().ProgressSeen.size(), 5U) << "25, 50, 75, 100 and the last word";
}

TEST_F(Transcoder, AFileWithoutSoundIsDoneAtOnce) {
    Source.Blocks = 0;
    Source.Frames = 0;
    Copy();
    EXPECT_FALSE(Run.FileError());
    EXPECT_EQ(Row().Progress, u"100 %"_s);
}

TEST_F(Transcoder, AStreamLengthOfZeroWithSoundFails) {
    Source.Frames = 0;
    Copy();
    EXPECT_TRUE(Run.FileError());
    EXPECT_EQ(Row().Progress, u"line 96"_s);
}

TEST_F(Transcoder, AFrameOfNoBytesFails) {
    Source.BytesOfFrame = 0;
    Copy();
    EXPECT_TRUE(Run.FileError());
}

TEST_F(Transcoder, AnyFailureMarksTheRowAndClosesBothFiles) {
    const auto fails = [this](bool& flag) {
        Run.BeginFile({});
        Source.Closed = Sink.Closed = 0;
        flag = true;
        Copy();
        flag = false;
        return Run.FileError() && Row().Icon == u"error" && Row().Progress == u"line 96" &&
               Host.Progress == 0 && Source.Closed >= 1 && Sink.Closed >= 1;
    };
    EXPECT_TRUE(fails(Source.OpenFails));
    EXPECT_TRUE(fails(Sink.OpenFails));
    EXPECT_TRUE(fails(Sink.WriteFails));
    EXPECT_TRUE(fails(Sink.CloseFails));
    Source.FailsAtBlock = 2;
    bool none = false;
    EXPECT_TRUE(fails(none));
}

TEST_F(Transcoder, ASkippedFileLooksLikeAFailedOne) {
    Host.AtYield = [this] { Run.SkipFile(); };
    Copy();
    EXPECT_EQ(Sink.Written, 1);
    EXPECT_TRUE(Run.FileError());
    EXPECT_FALSE(Run.CancelAll());
    EXPECT_EQ(Row().Progress, u"line 96"_s);
}

TEST_F(Transcoder, ACancelIsHeardAtTheNextBlock) {
    Host.AtYield = [this] { Run.Cancel(); };
    Copy();
    EXPECT_EQ(Sink.Written, 1);
    EXPECT_TRUE(Run.FileError());
    EXPECT_TRUE(Run.CancelAll());
}

TEST_F(Transcoder, ACancelFromBeforeIsForgotten) {
    Run.Cancel();
    Copy();
    EXPECT_FALSE(Run.FileError());
    EXPECT_EQ(Sink.Written, 4);
}

TEST_F(Transcoder, ARunThatIsNoLongerBusyLeavesTheLoopAndFinishesTheFile) {
    Host.AtYield = [this] { Run.End(Host); };
    Copy();
    EXPECT_EQ(Sink.Written, 1);
    EXPECT_FALSE(Run.FileError());
    EXPECT_EQ(Row().Progress, u"100 %"_s);
}

TEST_F(Transcoder, OpensTheReaderFirstAndClosesTheWriterFirst) {
    QStringList order;
    Source.AtOpen = [&] { order.append(u"reader opens"_s); };
    Sink.AtOpen = [&] { order.append(u"writer opens"_s); };
    Sink.AtClose = [&] { order.append(u"writer closes"_s); };
    Source.AtClose = [&] { order.append(u"reader closes"_s); };
    for (const int failing : {-1, 2}) {
        order.clear();
        Source.FailsAtBlock = failing;
        Copy();
        EXPECT_EQ(order,
                  (QStringList{u"reader opens"_s, u"writer opens"_s, u"writer closes"_s, u"reader closes"_s}))
            << "failing at block " << failing;
    }
}

TEST_F(Transcoder, ASourceThatCannotBeOpenedLeavesNoOutput) {
    Source.OpenFails = true;
    Copy();
    EXPECT_EQ(Sink.Path, QString());
}

TEST_F(Transcoder, ACancelBehindTheLastBlockFailsTheFileToo) {
    Source.AtEnd = [this] { Run.Cancel(); };
    Copy();
    EXPECT_EQ(Sink.Written, 4);
    EXPECT_TRUE(Run.FileError());
    EXPECT_EQ(Row().Icon, ErrorIcon);
    EXPECT_EQ(Row().Progress, u"line 96"_s);
    EXPECT_TRUE(Codecs.TagsSaved.empty());
}

TEST_F(Transcoder, ACancelInALoopThatIsNoLongerBusyFailsTheFileToo) {
    Host.AtYield = [this] {
        Run.End(Host);
        Run.Cancel();
    };
    Copy();
    EXPECT_TRUE(Run.FileError());
    EXPECT_EQ(Row().Progress, u"line 96"_s);
}

TEST_F(Transcoder, ACancelWhileTheOutputIsClosedOnlyKeepsItFromBeingTagged) {
    Copy();
    EXPECT_FALSE(Codecs.TagsSaved.empty());
    Codecs.TagsSaved.clear();
    Sink.AtClose = [this] { Run.Cancel(); };
    Copy();
    EXPECT_FALSE(Run.FileError());
    EXPECT_EQ(Row().Progress, u"100 %"_s);
    EXPECT_TRUE(Codecs.TagsSaved.empty());
}

// Eighths are whole in a computer's numbers, so that their halves are halves.
TEST_F(Transcoder, RoundsHalvesToTheEvenNumberAboveAndBelow) {
    Source.Blocks = 8;
    Source.BlockBytes = 4;
    Source.Frames = 8;
    std::vector<int> bar;
    Host.AtYield = [&] { bar.push_back(Host.Progress); };
    Copy();
    EXPECT_EQ(bar, (std::vector<int>{12, 25, 38, 50, 62, 75, 88, 100}));
}

}  // namespace
}  // namespace Sonmira

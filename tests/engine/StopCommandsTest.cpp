#include "FakeComponents.h"
#include "HeadlessHost.h"
#include "engine/Run.h"
#include "engine/StopCommands.h"
#include "library/Collection.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

using namespace Qt::StringLiterals;

class StopCommand : public ::testing::Test {
protected:
    Sonmira::Run Run;
    Collection Items;
    FakeCodecs Codecs;
};

TEST_F(StopCommand, CancelStopsAScanEvenWhenNoRunIsBusy) {
    CancelByMenu(Run, Items, Codecs.Parts());
    EXPECT_TRUE(Items.StopScan);
    EXPECT_FALSE(Run.CancelAll());
    EXPECT_EQ(Run.KillFlag(), 0);
    Items.StopScan = false;
    CancelByToolbar(Run, Items, Codecs.Parts());
    EXPECT_TRUE(Items.StopScan);
    EXPECT_TRUE(Codecs.Calls.isEmpty());
}

TEST_F(StopCommand, CancelOfTheMenuTellsTheComponentsInItsOrder) {
    Run.AcceptFile();
    CancelByMenu(Run, Items, Codecs.Parts());
    EXPECT_TRUE(Run.CancelAll());
    EXPECT_EQ(Run.KillFlag(), 1);
    EXPECT_EQ(Codecs.Calls, (QStringList{u"stop AACDecoder1"_s, u"stop FlacCodec1"_s, u"stop mpcencoder1"_s,
                                         u"stop mpcdecoder1"_s}));
}

TEST_F(StopCommand, CancelOfTheToolbarTellsThemInAnother) {
    Run.AcceptFile();
    CancelByToolbar(Run, Items, Codecs.Parts());
    EXPECT_TRUE(Run.CancelAll());
    EXPECT_EQ(Run.KillFlag(), 1);
    EXPECT_EQ(Codecs.Calls, (QStringList{u"stop AACDecoder1"_s, u"stop mpcencoder1"_s, u"stop mpcdecoder1"_s,
                                         u"stop FlacCodec1"_s}));
}

TEST_F(StopCommand, CancelOfTheButtonTellsAllButTheMusepackDecoder) {
    CancelByButton(Run, Codecs.Parts());
    EXPECT_FALSE(Run.CancelAll());
    EXPECT_EQ(Run.KillFlag(), 0);
    EXPECT_TRUE(Codecs.Calls.isEmpty());
    Run.AcceptFile();
    CancelByButton(Run, Codecs.Parts());
    EXPECT_TRUE(Run.CancelAll());
    EXPECT_EQ(Run.KillFlag(), 1);
    EXPECT_EQ(Codecs.Calls, (QStringList{u"stop AACDecoder1"_s, u"stop FlacCodec1"_s, u"stop alacdec1"_s,
                                         u"stop mpcencoder1"_s}));
    EXPECT_TRUE(Run.File().DecodingStopped);
    EXPECT_FALSE(Run.File().MpcDecodingStopped);
    EXPECT_FALSE(Items.StopScan);
}

TEST_F(StopCommand, SkippingAFileLeavesTheRunGoing) {
    SkipFile(Run, Codecs.Parts());
    EXPECT_FALSE(Run.SkipCurrentFile());
    Run.AcceptFile();
    SkipFile(Run, Codecs.Parts());
    EXPECT_TRUE(Run.SkipCurrentFile());
    EXPECT_FALSE(Run.CancelAll());
    EXPECT_EQ(Run.KillFlag(), 1);
    EXPECT_EQ(Codecs.Calls.size(), 4);
    EXPECT_EQ(Codecs.Calls[1], u"stop FlacCodec1"_s);
}

TEST_F(StopCommand, CancellingOneFileSetsItsFlagAndNothingElse) {
    CancelOneFile(Run);
    EXPECT_TRUE(Run.SkipCurrentFile());
    EXPECT_EQ(Run.KillFlag(), 0);
    EXPECT_TRUE(Codecs.Calls.isEmpty());
}

TEST(StopCommands, RowsAreNotClearedDuringARun) {
    Sonmira::Run run;
    HeadlessHost host;
    host.AddRow();
    run.AcceptFile();
    ClearRowsWhenIdle(run, host);
    EXPECT_EQ(host.Rows.size(), 1U);
    run.End(host);
    ClearRowsWhenIdle(run, host);
    EXPECT_TRUE(host.Rows.empty());
}

}  // namespace
}  // namespace Sonmira

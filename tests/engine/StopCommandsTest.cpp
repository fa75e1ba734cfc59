#include "HeadlessHost.h"
#include "engine/RunState.h"
#include "engine/StopCommands.h"
#include "library/Collection.h"

#include <gtest/gtest.h>

namespace Sonmira {
namespace {

TEST(StopCommands, CancelStopsAScanEvenWhenNoRunIsBusy) {
    RunState run;
    Collection collection;
    CancelEverything(run, collection);
    EXPECT_TRUE(collection.StopScan);
    EXPECT_FALSE(run.CancelAll);
    EXPECT_EQ(run.KillFlag, 0);
}

TEST(StopCommands, CancelStopsABusyRun) {
    RunState run;
    run.Busy = true;
    Collection collection;
    CancelEverything(run, collection);
    EXPECT_TRUE(run.CancelAll);
    EXPECT_EQ(run.KillFlag, 1);
}

TEST(StopCommands, SkippingAFileLeavesTheRunGoing) {
    RunState run;
    SkipFile(run);
    EXPECT_FALSE(run.SkipCurrentFile);
    run.Busy = true;
    SkipFile(run);
    EXPECT_TRUE(run.SkipCurrentFile);
    EXPECT_FALSE(run.CancelAll);
    EXPECT_EQ(run.KillFlag, 1);
}

TEST(StopCommands, RowsAreNotClearedDuringARun) {
    RunState run;
    HeadlessHost host;
    host.AddRow();
    run.Busy = true;
    ClearRowsWhenIdle(run, host);
    EXPECT_EQ(host.Rows.size(), 1U);
    run.Busy = false;
    ClearRowsWhenIdle(run, host);
    EXPECT_TRUE(host.Rows.empty());
}

}  // namespace
}  // namespace Sonmira

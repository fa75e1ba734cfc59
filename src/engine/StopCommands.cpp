#include "engine/StopCommands.h"

#include "engine/RunState.h"
#include "engine/RunView.h"
#include "library/Collection.h"

namespace Sonmira {

void CancelEverything(RunState& run, Collection& collection) {
    collection.StopScan = true;
    if (!run.Busy) return;
    run.KillFlag = 1;
    run.CancelAll = true;
}

void SkipFile(RunState& run) {
    if (!run.Busy) return;
    run.SkipCurrentFile = true;
    run.KillFlag = 1;
}

void ClearRowsWhenIdle(const RunState& run, RunView& view) {
    if (!run.Busy) view.ClearRows();
}

}  // namespace Sonmira

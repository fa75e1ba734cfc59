#pragma once

#include "engine/Components.h"
#include "engine/ProgressEvents.h"

namespace Sonmira {

class RecordSteps;
class RunView;
struct Collection;
struct ConversionRecord;
struct RunState;

// Turns the files of the collection into output files, one at a time, on the user-interface thread. What
// keeps the window alive meanwhile is that every step of a file yields to the event loop.
class JobDriver {
public:
    JobDriver(RunState& state, RunView& shown, Components used, const Collection& gathered)
        : Run(state), View(shown), Parts(used), Items(gathered), Progress(state, shown, used) {}

    // Converts every record in order. One file's failure never ends the run; a stop command does.
    void RunAllConversions();

private:
    bool ConvertRecord(RecordSteps& steps, const ConversionRecord& record);
    void EnterFolder(const ConversionRecord& record);
    void ShowCount();

    RunState& Run;
    RunView& View;
    Components Parts;
    const Collection& Items;
    ProgressEvents Progress;
    int FilesDone = 0;
};

}  // namespace Sonmira

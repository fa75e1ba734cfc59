#pragma once

#include "engine/Components.h"
#include "engine/ProgressEvents.h"

namespace Sonmira {

class RecordSteps;
class Run;
class RunView;
struct Collection;
struct ConversionRecord;

// Turns the files of the collection into output files, one at a time, on the user-interface thread. What
// keeps the window alive meanwhile is that every step of a file yields to the event loop.
class JobDriver {
public:
    JobDriver(Run& state, RunView& shown, Components used, Collection& gathered)
        : ThisRun(state), View(shown), Parts(used), Items(gathered), Progress(state, shown, used) {}

    // Converts every record in order. A file that fails ends as an error in its row and the run goes on. A
    // stop command ends it, and so does a file without a dot in its name, which leaves the controls locked
    // (see RecordSteps). While a file is converted the user may remove records: none of the others is passed
    // by, and one that is in hand is finished.
    void RunAllConversions();

private:
    bool ConvertRecord(RecordSteps& steps, const ConversionRecord& record);
    void EnterFolder(const ConversionRecord& record);
    void ShowCount();

    Run& ThisRun;
    RunView& View;
    Components Parts;
    Collection& Items;
    ProgressEvents Progress;
    int FilesDone = 0;
};

}  // namespace Sonmira

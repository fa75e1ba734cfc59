#include "engine/JobDriver.h"

#include "engine/RecordSteps.h"
#include "engine/RunState.h"
#include "engine/RunView.h"
#include "library/Collection.h"
#include "platform/Failure.h"

namespace Sonmira {

void JobDriver::RunAllConversions() {
    View.SetControlsEnabled(false);
    Run.CancelAll = Run.Busy = Run.FileError = Run.SkipCurrentFile = false;
    View.ClearRows();
    Run.CurrentItem = 0;

    RecordSteps steps(Run, View, Parts, Items.Records, Items.FileCount);
    steps.ShowCount();
    for (int position = 1; position <= Items.Records.UpperBound(); ++position) {
        Checked16(position);  // the records are numbered in 16 bits; a longer collection is an overflow
        if (Run.CancelAll) break;
        if (!steps.Convert(Items.Records[position])) return;
    }

    Run.Busy = false;
    View.SetControlsEnabled(true);
    Run.FileError = false;
}

}  // namespace Sonmira

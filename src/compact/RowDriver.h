#pragma once

#include "engine/Components.h"
#include "engine/ProgressEvents.h"
#include "engine/RecordSteps.h"

namespace Sonmira {

class AudiotoolRows;
class AudiotoolRunView;
class Run;
class RecordSteps;

// Turns the files of a flat list into output files, one at a time, by the steps that every file goes through.
// All outputs of a run lie in one folder, or each beside its source.
class RowDriver {
public:
    RowDriver(Run& state, AudiotoolRunView& shown, Components used, const AudiotoolRows& gathered);

    // Converts every row in order, by the rules of a run over a whole collection.
    void RunAllRows();
    // Converts one row, by the rules of the conversion of one file.
    void ConvertRow(int row);

private:
    bool Convert(RecordSteps& steps, int row);

    Run& ThisRun;
    AudiotoolRunView& View;
    Components Parts;
    const AudiotoolRows& Rows;
    ProgressEvents Progress;
};

}  // namespace Sonmira

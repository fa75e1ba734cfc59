#pragma once

#include "engine/Components.h"
#include "engine/Destination.h"

namespace Sonmira {

class ConversionRecords;
class RunView;
struct ConversionRecord;
struct RunState;

// The steps of one record in a run, in the order in which they are taken. Holds what a run remembers from
// record to record; a new run takes a new object.
class RecordSteps {
public:
    RecordSteps(RunState& state, RunView& shown, Components used, const ConversionRecords& collected,
                int fileTotal);

    // Shows "0 / n" before the first record.
    void ShowCount();

    // Converts a file, or makes the output folder of a folder, and finishes the record. Returns false when
    // the run is to be left at once, without its closing steps: a file without a dot in its name, or a
    // decoded file that is not there, ends a run.
    bool Convert(const ConversionRecord& record);

private:
    void EnterFolder(const ConversionRecord& record);
    bool ConvertFile(const ConversionRecord& record);
    void AddRow(const ConversionRecord& record);
    void Finish(const ConversionRecord& record);

    // Runs one statement of the driver. Until the first file is finished a failure is nobody's to handle
    // here; from then on it is passed over, so that one file never ends the run of the others.
    template <class Step>
    void Statement(Step&& step);

    RunState& Run;
    RunView& View;
    Components Parts;
    const ConversionRecords& Records;
    Destination Target;
    int FilesDone = 0;
    int FileTotal;
    bool PassesFailuresOver = false;
};

}  // namespace Sonmira

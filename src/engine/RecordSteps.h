#pragma once

#include "engine/Components.h"
#include "engine/Destination.h"
#include "engine/DriverRules.h"
#include "platform/FileIdentity.h"

namespace Sonmira {

class Run;
class RunView;
struct ConversionRecord;

// The steps of one file, in the order in which they are taken, the same for both drivers but for their rules.
// Holds what a run remembers from file to file; a new run takes a new object.
class RecordSteps {
public:
    RecordSteps(Run& state, RunView& shown, Components used, const DriverRules& rules)
        : ThisRun(state), View(shown), Parts(used), Rules(rules) {}

    // Sets OutputStem once the stem is known.
    using SetStem = std::function<void(Destination& target)>;

    // Takes a file from its row to its output. Returns false when the run is to be left at once, without its
    // closing steps: a file without a dot in its name, or a decoded file that is not there, ends a run.
    bool Convert(const ConversionRecord& record, const SetStem& setStem);

    // What comes after each file, also a refused one: `showCount`, the row's last icon, the removal of the
    // source where it is asked for. From here on failures of the driver's statements are passed over.
    void Finish(const ConversionRecord& record, const std::function<void()>& showCount);

private:
    void AddRow(const ConversionRecord& record);
    void DeleteTempWav();
    void RemoveSource(const QString& path);

    Run& ThisRun;
    RunView& View;
    Components Parts;
    const DriverRules& Rules;
    Statements Statement;
    Destination Target;
    QString HeldTitle;  // of the last AAC file that had one
};

}  // namespace Sonmira

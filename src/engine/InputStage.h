#pragma once

#include "engine/Components.h"
#include "engine/DriverRules.h"
#include "engine/Statements.h"

namespace Sonmira {

class Run;
class RunView;

// Decides by the ending of CurrentInput what reads it: collects its tags, and for what the streaming reader
// cannot read has a decoder make a temporary WAV and moves CurrentInput there.
class InputStage {
public:
    InputStage(Run& state, RunView& shown, Components used, const DriverRules& rules,
               const Statements& statement)
        : ThisRun(state), View(shown), Parts(used), Rules(rules), Statement(statement) {}

    // Returns false where the AAC or ALAC decoder could not decode: the record is finished at once, as one
    // that did not fail. `heldTitle` keeps the title of an AAC file for the rest of a run.
    bool Prepare(QString& heldTitle);

private:
    bool PrepareAac(QString& heldTitle);
    void PrepareFlac(const QString& heldTitle);
    void PrepareApe();
    void PrepareMpc();

    Run& ThisRun;
    RunView& View;
    Components Parts;
    const DriverRules& Rules;
    const Statements& Statement;
};

}  // namespace Sonmira

#pragma once

#include "engine/Components.h"
#include "engine/DriverRules.h"
#include "engine/Statements.h"
#include "engine/TempWav.h"

namespace Sonmira {

class RunView;
struct RunState;

// Decides by the ending of CurrentInput what reads it: collects its tags, and for what the streaming reader
// cannot read has a decoder make a temporary WAV and moves CurrentInput there.
class InputStage {
public:
    InputStage(RunState& state, RunView& shown, Components used, const DriverRules& rules,
               const Statements& statement)
        : Run(state), View(shown), Parts(used), Rules(rules), Statement(statement) {}

    // Returns false where the AAC or ALAC decoder could not decode: the record is finished at once, as one
    // that did not fail. `heldTitle` keeps the title of an AAC file for the rest of a run.
    bool Prepare(TempWav& temp, QString& heldTitle);

private:
    bool PrepareAac(TempWav& temp, QString& heldTitle);
    void PrepareFlac(TempWav& temp, const QString& heldTitle);
    void PrepareApe(TempWav& temp);
    void PrepareMpc(TempWav& temp);
    void BeginDecoding(TempWav& temp, int extensionLength);
    void TakeTempWav(TempWav& temp);

    RunState& Run;
    RunView& View;
    Components Parts;
    const DriverRules& Rules;
    const Statements& Statement;
};

}  // namespace Sonmira

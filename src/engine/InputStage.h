#pragma once

#include "engine/Components.h"
#include "engine/RecordSteps.h"

#include <optional>

namespace Sonmira {

class Run;
class RunView;

// Decides by the ending of CurrentInput what reads it: collects its tags, and for what the streaming reader
// cannot read has a decoder make a temporary WAV and moves CurrentInput there.
class InputStage {
public:
    // `heldTitle` keeps the title of an AAC file for the rest of a run.
    InputStage(Run& state, RunView& shown, Components used, const DriverRules& rules,
               const Statements& statement, QString& heldTitle)
        : ThisRun(state),
          View(shown),
          Parts(used),
          Rules(rules),
          Statement(statement),
          HeldTitle(heldTitle) {}

    // Returns false where the AAC or ALAC decoder could not decode: the record is finished at once, as one
    // that did not fail.
    bool Prepare();

    // The length in seconds of what a decoder of its own reads; nothing where that decoder tells none.
    static std::optional<double> DecodedLength(Components parts, const QString& path);

private:
    struct Road;
    static const Road Roads[];
    static const Road* RoadOf(const QString& path);

    bool Take(const Road& road);
    bool DecodeAac(QString& wav);

    Run& ThisRun;
    RunView& View;
    Components Parts;
    const DriverRules& Rules;
    const Statements& Statement;
    QString& HeldTitle;
};

}  // namespace Sonmira

#pragma once

#include "engine/Components.h"

namespace Sonmira {

class Run;
class RunView;

// One routine an output format. Each makes the output name free by the "(n)" rule, which stays in
// OutputStem, and encodes CurrentInput; none does anything unless the run is busy. The parameters are those
// that stand in FileWenc or the run's state at that moment.
class OutputStage {
public:
    OutputStage(Run& state, RunView& shown, Components used) : ThisRun(state), View(shown), Parts(used) {}

    // Calls the routine of the format that the window names, compared exactly. Any other text selects none.
    void Dispatch();

    void EncodeToWma();
    void EncodeToMp3();
    void EncodeToOgg();
    void EncodeToWav();
    // These three take a WAV: any other input is copied to a temporary one first.
    void EncodeToApe();
    void EncodeToFlac();
    void EncodeToMpc();

private:
    void EncodeByStream(const QString& extension);
    template <class Encode>
    void EncodeFromWav(const QString& extension, Encode encode);
    // The WAV to encode; nothing where the user stopped on the way to it.
    std::optional<QString> WavInput();

    Run& ThisRun;
    RunView& View;
    Components Parts;
};

}  // namespace Sonmira

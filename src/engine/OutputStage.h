#pragma once

#include "engine/Components.h"

namespace Sonmira {

class OutputName;
class Run;
class RunView;
struct OutputRow;

// Takes CurrentInput to the output by the road of its format. The output name is made free by the "(n)" rule,
// which stays in OutputStem; nothing is done unless the run is busy. The parameters are those that stand in
// FileWenc or in the settings at that moment.
class OutputStage {
public:
    OutputStage(Run& state, RunView& shown, Components used) : ThisRun(state), View(shown), Parts(used) {}

    // Takes the row of the format that the window names, compared exactly. Any other text selects none.
    void Dispatch();

private:
    void EncodeByStream(const QString& extension);
    // The reader is asked first whether the input has a usable format.
    void EncodeToWma(const QString& extension);
    // Any other input than a WAV is copied to a temporary one first.
    void EncodeFromWav(const OutputRow& row, const QString& extension);
    // The WAV to encode; nothing where the user stopped the run on the way to it.
    std::optional<QString> WavInput();

    Run& ThisRun;
    RunView& View;
    Components Parts;
};

// Copies the sound of `inputPath` block by block from the reader to the writer, whose format is in place,
// and shows the percentage in the row and on the bar. A stop command is heard after each block. A failure
// or a stop sets FileError and marks the row; what was written so far stays on disk. The output gets its name
// when it is created, or has the one that is given.
void TranscodeStream(Run& run, RunView& view, Components components, const QString& inputPath,
                     OutputName& output);
void TranscodeStream(Run& run, RunView& view, Components components, const QString& inputPath,
                     const QString& outputPath);

}  // namespace Sonmira

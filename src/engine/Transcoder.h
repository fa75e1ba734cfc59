#pragma once

#include "engine/Components.h"

namespace Sonmira {

class OutputName;
class Run;
class RunView;

// Copies the sound of `inputPath` block by block from the reader to the writer, whose format is in place,
// and shows the percentage in the row and on the bar. A stop command is heard after each block. A failure
// or a stop sets FileError and marks the row; what was written so far stays on disk. The output gets its name
// when it is created, or has the one that is given.
void TranscodeStream(Run& run, RunView& view, Components components, const QString& inputPath,
                     OutputName& output);
void TranscodeStream(Run& run, RunView& view, Components components, const QString& inputPath,
                     const QString& outputPath);

}  // namespace Sonmira

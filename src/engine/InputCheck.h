#pragma once

#include "engine/Components.h"

namespace Sonmira {

class RunView;
struct RunState;

// Whether the file is there and can be read; opening it is the test. A file that is refused gets the
// reason into its row and sets FileError.
bool CheckInputFile(RunState& run, RunView& view, AudioSource& fileRenc, const QString& path);

}  // namespace Sonmira

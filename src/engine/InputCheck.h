#pragma once

#include "engine/Components.h"

namespace Sonmira {

class Run;
class RunView;

// Whether the file is there and fit to be converted: what the streaming reader reads is opened, what a
// decoder of its own reads must be longer than a second (AAC: can be read at all). A file that is refused
// gets the reason into its row and sets FileError.
bool CheckInputFile(Run& run, RunView& view, Components parts, const QString& path);

}  // namespace Sonmira

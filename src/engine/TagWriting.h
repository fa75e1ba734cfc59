#pragma once

#include "engine/Components.h"

namespace Sonmira {

class Run;
class RunView;

// Writes the tag of a finished output. APE, FLAC and Musepack get the texts that the tag page shows at that
// moment, and of TagRecord only the genre; all others get TagRecord, as both kinds of tag. A failure ends it
// in silence with what was written so far: an output without a tag is a success.
void WriteOutputTag(Run& run, RunView& view, Components parts, const QString& outputPath);

}  // namespace Sonmira

#pragma once

#include "engine/Components.h"
#include "engine/RecordSteps.h"

namespace Sonmira {

class Run;
class RunView;

// How the tag of the file in hand (CurrentInput) gets into TagRecord. Each family of inputs fills another
// part of it; the differences are old and outputs rely on them.

// AAC and ALAC: nothing but a genre text. The title goes into `heldTitle`, the rest of the block onto the tag
// page, whose texts the outputs of the panel route carry.
void ReadTagOfAac(Run& run, RunView& view, Components parts, QString& heldTitle);

// What the streaming reader reads, and Musepack first: all fields, of the first kind of tag that has a title
// or an artist. A file whose tag cannot be read is passed over as `statement` passes over failures.
void ReadTagOfStream(Run& run, RunView& view, AudioInformation& tags, const DriverRules& rules,
                     const Statements& statement);

// FlacCodec1: the comments; then, unless a held title says otherwise, the ID3v1 block over them, also where
// the file has none and the block is empty.
void ReadTagOfFlac(Run& run, Components parts, const QString& heldTitle);

// APE and Musepack: the ID3v1 block; without one, empty fields and `untaggedYear`.
void ReadTagOfBlock(Run& run, Components parts, QStringView untaggedYear);

// Writes the tag of a finished output. Those of OutputTag::OfPage get the texts that the tag page shows at
// that moment, and of TagRecord only the genre; all others get TagRecord, as both kinds of tag. A failure
// ends it in silence with what was written so far: an output without a tag is a success.
void WriteOutputTag(Run& run, RunView& view, Components parts, const QString& outputPath);

}  // namespace Sonmira

#pragma once

#include "codecs/tagging/SimpleTags.h"

namespace Sonmira {

// Writes the fields as Vorbis comments, and the ID3v1 block of them where Id3Block.h says. Other comments and
// blocks, and the sound, stay.
void WriteFlacTags(const QString& path, const SimpleTagFields& fields, bool clears, bool writesId3);

}  // namespace Sonmira

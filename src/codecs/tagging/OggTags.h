#pragma once

#include "codecs/tagging/TaggedFile.h"

namespace Sonmira {

// Vorbis, FLAC and Opus in Ogg, each with Vorbis comments in a packet of its own. Null for what is none.
std::unique_ptr<TaggedFile> OpenOggTags(const QByteArray& file);

}  // namespace Sonmira

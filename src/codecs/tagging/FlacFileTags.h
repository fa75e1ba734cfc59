#pragma once

#include "codecs/tagging/TaggedFile.h"

namespace Sonmira {

// FLAC, perhaps with an ID3v2 tag in front, and with an ID3v1 block at its end or in a block of ours. Null
// for what is none.
std::unique_ptr<TaggedFile> OpenFlacFileTags(const QByteArray& file);

}  // namespace Sonmira

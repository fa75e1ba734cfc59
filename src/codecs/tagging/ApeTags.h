#pragma once

#include "codecs/tagging/TaggedFile.h"

namespace Sonmira {

// Monkey's Audio and Musepack: APEv2, and what only an ID3v1 tag behind it says.
std::unique_ptr<TaggedFile> OpenApeTags(const QByteArray& file);

}  // namespace Sonmira

#pragma once

#include "codecs/tagging/TaggedFile.h"

namespace Sonmira {

// WMA: a content description of four texts, and attributes by name. Tracks are counted from 0.
// Source of the facts: Advanced Systems Format, Microsoft, and the attribute names of Windows Media.
std::unique_ptr<TaggedFile> OpenAsfTags(const QByteArray& file);

}  // namespace Sonmira

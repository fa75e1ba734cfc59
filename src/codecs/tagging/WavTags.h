#pragma once

#include "codecs/tagging/TaggedFile.h"

namespace Sonmira {

// WAV: ID3v2 holds everything; the INFO list repeats what it can for programs that know only that.
std::unique_ptr<TaggedFile> OpenWavTags(const QByteArray& file);

}  // namespace Sonmira

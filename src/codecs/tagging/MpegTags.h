#pragma once

#include "codecs/tagging/TaggedFile.h"

namespace Sonmira {

// MPEG audio: both kinds of ID3, apart from each other. Any file may carry them.
std::unique_ptr<TaggedFile> OpenMpegTags(const QByteArray& file);

}  // namespace Sonmira

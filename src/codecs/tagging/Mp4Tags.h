#pragma once

#include "codecs/tagging/TaggedFile.h"

namespace Sonmira {

// MP4: atoms of the item list; two fields go by free-form atoms. A file whose list holds an item that the
// library cannot keep is not written.
std::unique_ptr<TaggedFile> OpenMp4Tags(const QByteArray& file);

}  // namespace Sonmira

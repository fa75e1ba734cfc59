#pragma once

#include "codecs/tagging/TagStream.h"

namespace Sonmira {

// Bytes of the APEv2 and the ID3v1 tag at the end of a file, by their own word; 0 where there is none.
qint64 TagsAtEnd(TagStream& file);

// Fails where the APEv2 tag at the end of a file (before an ID3v1 tag, if there is one) says a size that its
// items do not have: the tag library would take sound for a part of it.
// Source of the facts: APE tags 2.000 as Hydrogenaudio keeps them.
void CheckApeTagSize(TagStream& file);

}  // namespace Sonmira

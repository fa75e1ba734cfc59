#pragma once

#include "codecs/tagging/SimpleTags.h"

namespace TagLib::ID3v1 {
class Tag;
}

namespace Sonmira {

// Sets the fields of an ID3v1 tag, which is Latin-1: characters beyond that become question marks. Year and
// track are numbers there, and a genre that has no number is left out.
void SetId3Fields(TagLib::ID3v1::Tag& tag, const SimpleTagFields& fields, bool clears);

}  // namespace Sonmira

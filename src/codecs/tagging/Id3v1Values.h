#pragma once

#include "codecs/AudioInformation.h"

namespace TagLib::ID3v1 {
class Tag;
}

namespace Sonmira {

// The fields that an ID3v1 tag holds; a number beyond the table of genres is none.
TagValues ReadId3v1(const TagLib::ID3v1::Tag& tag);

// Changes those fields in which `values` differs from `now`. Texts are Latin-1 there and cut at 30
// characters, a track is at most 255.
void ChangeId3v1(TagLib::ID3v1::Tag& tag, const TagValues& now, const TagValues& values);

}  // namespace Sonmira

#pragma once

#include "codecs/tagging/TagStream.h"

namespace Sonmira {

// How the atoms of an MP4 file lie in each other. The tag library believes every size and count in them.
enum class Mp4Sizes {
    Fit,
    DoNotFit,  // can be read, but not be written
    TooDeep    // take all of the stack or of the time
};
Mp4Sizes SizesOf(TagStream& file);

}  // namespace Sonmira

#pragma once

#include "codecs/AudioStreams.h"

namespace Sonmira {

// The audio components that a run works with. Owned by the window; shared by all files of a run, which is
// why two files are never in hand at once.
struct Components {
    AudioSource& FileRenc;
    AudioSink& FileWenc;
};

}  // namespace Sonmira

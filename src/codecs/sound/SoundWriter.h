#pragma once

#include "codecs/sound/AudioBlock.h"
#include "platform/OutputFile.h"

namespace Sonmira {

// Encodes one stream into a file. Made before the file is, so that a missing encoder leaves the file of an
// earlier run alone. All calls fail with Failure; they may come from one thread after another.
class SoundWriter {
public:
    virtual ~SoundWriter() = default;
    // Whole frames at the rate and channel count of the format, in any sample type.
    virtual void Write(const AudioBlock& block, OutputFile& file) = 0;
    // Writes what is left and completes headers; also makes a valid file of no frames at all. The caller
    // closes the file.
    virtual void Finish(OutputFile& file) = 0;
};

}  // namespace Sonmira

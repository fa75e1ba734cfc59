#pragma once

#include "codecs/sound/AudioBlock.h"
#include "codecs/sound/ChannelMix.h"
#include "codecs/sound/Resampler.h"

#include <optional>

namespace Sonmira {

// Brings the blocks of one stream to the rate and channel count of another. What has both already passes
// untouched, and one channel becomes two in its own sample type, so that PCM stays exact; everything else
// is mixed and resampled in float.
class StreamConverter {
public:
    // `target` has one or two channels. Fails when the rates are too far apart to be converted.
    StreamConverter(StreamFormat source, StreamFormat target, ResamplerPrecision precision);

    // The converted frames that are ready; may be empty.
    AudioBlock Convert(AudioBlock block);
    // What is left at the end of the stream; may be empty.
    AudioBlock Finish();

    // The most bytes of a source block of that type that should be converted at once, whole frames: rates far
    // apart make much of little.
    std::size_t SourceBytesAtOnce(SampleType type) const;
    // Bytes of one frame of a source block of that type.
    std::size_t SourceFrameSize(SampleType type) const;

private:
    StreamFormat Source;
    StreamFormat Target;
    std::optional<ChannelMix> Mix;  // made by the first block, which says what the channels are for
    std::unique_ptr<Resampler> Rates;
};

}  // namespace Sonmira

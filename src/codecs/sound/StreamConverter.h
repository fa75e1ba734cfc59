#pragma once

#include "codecs/sound/AudioBlock.h"
#include "codecs/sound/ChannelMix.h"

#include <QtGlobal>

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace Sonmira {

// How far the conversion's own errors lie below full scale.
enum class ResamplerPrecision {
    Bits20,  // -120 dB: for everything that ends in 16 bits or in a lossy format
    Bits28,  // as good as the 32-bit samples between the stages can be
};

// Converts interleaved frames of one rate to another by the soxr library, without delay: frame 0 stays
// frame 0, and n frames become exactly n * to / from of them, rounded to the nearest whole number.
class Resampler {
public:
    // Rates in Hz, 1 or more. Fails when they are more than a thousand times apart.
    Resampler(int from, int to, int channels, ResamplerPrecision precision);
    ~Resampler();
    Resampler(const Resampler&) = delete;
    Resampler& operator=(const Resampler&) = delete;

    // Takes all of `frames` and appends what is ready.
    void Convert(std::span<const float> frames, std::vector<float>& converted);
    // Ends the stream and appends the rest.
    void Finish(std::vector<float>& converted);

private:
    class Library;
    std::unique_ptr<Library> Handle;
    qint64 From;
    qint64 To;
    std::size_t Channels;
    qint64 FramesIn = 0;
    qint64 FramesOut = 0;
};

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

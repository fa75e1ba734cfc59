#pragma once

#include "codecs/sound/AudioBlock.h"
#include "codecs/sound/StreamConverter.h"

#include <memory>

struct AVFrame;

namespace Sonmira {

// Turns decoded frames into interleaved samples of one format for the whole stream, which is that of the
// first frame: 8 bits are widened to 16 exactly, 16 and 32 bits stay, 64 bits become 32, double precision
// becomes single. Frames of another rate, channel count or type, as in chained streams, are converted.
class FrameSamples {
public:
    // From the first frame, or from the headers of a stream without any; `sampleFormat` is a value of
    // AVSampleFormat.
    explicit FrameSamples(const AVFrame& first);
    FrameSamples(int rate, int channels, int sampleFormat);
    ~FrameSamples();
    FrameSamples(const FrameSamples&) = delete;
    FrameSamples& operator=(const FrameSamples&) = delete;

    const StreamFormat& Format() const { return Stream; }
    SampleType Type() const { return Kind; }
    // As AudioBlock::Speakers.
    std::uint64_t Speakers() const { return Mask; }
    std::size_t FrameSize() const { return BytesOf(Kind) * static_cast<std::size_t>(Stream.Channels); }

    void Append(const AVFrame& frame, std::vector<std::byte>& samples);
    // At the end: what a conversion still holds.
    void Finish(std::vector<std::byte>& samples);

private:
    class Change;
    StreamFormat Stream;
    SampleType Kind;
    std::uint64_t Mask = 0;
    std::unique_ptr<Change> Changed;
};

}  // namespace Sonmira

#include "codecs/sound/StreamConverter.h"

#include "codecs/sound/Samples.h"

#include <algorithm>

namespace Sonmira {

namespace {

template <class Sample>
AudioBlock Doubled(const AudioBlock& block) {
    AudioBlock both{block.Type, std::vector<std::byte>(block.Bytes.size() * 2)};
    auto* target = static_cast<Sample*>(static_cast<void*>(both.Bytes.data()));
    for (const Sample sample : SamplesOf<Sample>(block)) {
        *target++ = sample;
        *target++ = sample;
    }
    return both;
}

AudioBlock BothChannels(const AudioBlock& block) {
    return block.Type == SampleType::Int16 ? Doubled<std::int16_t>(block) : Doubled<std::int32_t>(block);
}

}  // namespace

StreamConverter::StreamConverter(StreamFormat source, StreamFormat target, ResamplerPrecision precision)
    : Source(source), Target(target) {
    // Of one channel and two, only the smaller number goes through the resampler.
    const int channels = source.Channels == 1 ? 1 : target.Channels;
    if (source.Rate != target.Rate) {
        Rates = std::make_unique<Resampler>(source.Rate, target.Rate, channels, precision);
    }
}

AudioBlock StreamConverter::Convert(AudioBlock block) {
    const bool doubles = Source.Channels == 1 && Target.Channels == 2;
    if (!Rates && Source.Channels == Target.Channels) return block;
    if (!Rates && doubles) return BothChannels(block);

    std::vector<float> frames = FloatsOf(block);
    if (Source.Channels > Target.Channels) {
        if (!Mix) Mix.emplace(Source.Channels, block.Speakers, Target.Channels);
        std::vector<float> mixed;
        Mix->Mix(frames, mixed);
        frames = std::move(mixed);
    }
    if (Rates) {
        std::vector<float> converted;
        Rates->Convert(frames, converted);
        frames = std::move(converted);
    }
    return doubles ? BothChannels(BlockOf(frames)) : BlockOf(frames);
}

AudioBlock StreamConverter::Finish() {
    if (!Rates) return {};
    std::vector<float> rest;
    Rates->Finish(rest);
    const AudioBlock block = BlockOf(rest);
    return Source.Channels == 1 && Target.Channels == 2 ? BothChannels(block) : block;
}

std::size_t StreamConverter::SourceBytesAtOnce(SampleType type) const {
    constexpr qint64 most = 1 << 18;  // frames, before and after
    const qint64 frames = std::max<qint64>(most * Source.Rate / std::max(Source.Rate, Target.Rate), 1);
    return static_cast<std::size_t>(frames) * SourceFrameSize(type);
}

std::size_t StreamConverter::SourceFrameSize(SampleType type) const {
    return BytesOf(type) * static_cast<std::size_t>(Source.Channels);
}

}  // namespace Sonmira

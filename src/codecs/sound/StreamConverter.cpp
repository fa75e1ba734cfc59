#include "codecs/sound/StreamConverter.h"

#include "codecs/sound/AudioBlock.h"
#include "platform/Failure.h"
#include "platform/Handles.h"

#include <soxr.h>

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// soxr names its error type as a pointer to a text for programmers; people get one of their own.
Failure ResamplerFailure() {
    return {FailureNumber::Component, u"The sample rate cannot be converted"_s};
}

// Rates further apart than this are those of a header that lies: a few bytes would become hours, and the
// library's filters hundreds of megabytes.
constexpr qint64 MostRatio = 1000;

// Room for this many frames more than were asked for is offered in each call.
constexpr std::size_t SpareFrames = 4096;

}  // namespace

class Resampler::Library {
public:
    Library(qint64 from, qint64 to, std::size_t channels, ResamplerPrecision precision) {
        const soxr_quality_spec_t quality =
            soxr_quality_spec(precision == ResamplerPrecision::Bits28 ? SOXR_VHQ : SOXR_HQ, 0);
        const soxr_io_spec_t types = soxr_io_spec(SOXR_FLOAT32_I, SOXR_FLOAT32_I);
        const soxr_runtime_spec_t threads = soxr_runtime_spec(1);
        soxr_error_t error = nullptr;
        Stream.reset(soxr_create(static_cast<double>(from), static_cast<double>(to),
                                 static_cast<unsigned>(channels), &error, &types, &quality, &threads));
        if (error != nullptr || !Stream) throw ResamplerFailure();
    }

    // Gives `frames` frames, or the end of the stream where `in` is null, and takes at most `room` frames.
    // Returns the frames taken and given.
    std::pair<std::size_t, std::size_t> Process(const float* in, std::size_t frames, float* out,
                                                std::size_t room) {
        std::size_t used = 0;
        std::size_t made = 0;
        if (soxr_process(Stream.get(), in, frames, &used, out, room, &made) != nullptr) {
            throw ResamplerFailure();
        }
        return {used, made};
    }

private:
    CHandle<soxr, soxr_delete> Stream;
};

Resampler::Resampler(int from, int to, int channels, ResamplerPrecision precision)
    : From(from), To(to), Channels(static_cast<std::size_t>(channels)) {
    if (From > MostRatio * To || To > MostRatio * From) throw ResamplerFailure();
    Handle = std::make_unique<Library>(From, To, Channels, precision);
}

Resampler::~Resampler() = default;

void Resampler::Convert(std::span<const float> frames, std::vector<float>& converted) {
    std::size_t left = frames.size() / Channels;
    FramesIn += static_cast<qint64>(left);
    const float* in = frames.data();
    bool full = false;
    while (left > 0 || full) {
        const auto expected = static_cast<std::size_t>(static_cast<qint64>(left) * To / From);
        const std::size_t room = std::min<std::size_t>(expected, 1 << 20) + SpareFrames;
        const std::size_t start = converted.size();
        converted.resize(start + room * Channels);
        // A null pointer would end the stream.
        const float nothing = 0;
        const auto [used, made] =
            Handle->Process(left > 0 ? in : &nothing, left, converted.data() + start, room);
        converted.resize(start + made * Channels);
        FramesOut += static_cast<qint64>(made);
        left -= used;
        in += used * Channels;
        full = made == room;
        if (used == 0 && made == 0) break;
    }
}

void Resampler::Finish(std::vector<float>& converted) {
    // The library's own count may be a frame off, and it makes none at all of a very short sound.
    const qint64 length = (FramesIn * To + From / 2) / From;
    while (FramesOut < length) {
        const auto room = static_cast<std::size_t>(std::min<qint64>(length - FramesOut, 1 << 20));
        const std::size_t start = converted.size();
        converted.resize(start + room * Channels);
        const std::size_t made = Handle->Process(nullptr, 0, converted.data() + start, room).second;
        FramesOut += static_cast<qint64>(made);
        converted.resize(start + made * Channels);
        if (made == 0) {
            converted.resize(start + room * Channels);
            FramesOut += static_cast<qint64>(room);
        }
    }
}

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

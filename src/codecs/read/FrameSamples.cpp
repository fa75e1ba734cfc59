#include "codecs/read/FrameSamples.h"

#include "platform/Handles.h"

#include <algorithm>
#include <type_traits>

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/frame.h>
#include <libavutil/opt.h>
#include <libavutil/samplefmt.h>
#include <libswresample/swresample.h>
}

namespace Sonmira {

namespace {

SampleType TypeOf(int sampleFormat) {
    switch (av_get_packed_sample_fmt(static_cast<AVSampleFormat>(sampleFormat))) {
        case AV_SAMPLE_FMT_S32:
        case AV_SAMPLE_FMT_S64:
            return SampleType::Int32;
        case AV_SAMPLE_FMT_FLT:
        case AV_SAMPLE_FMT_DBL:
            return SampleType::Float32;
        default:
            return SampleType::Int16;
    }
}

AVSampleFormat LibraryTypeOf(SampleType type) {
    switch (type) {
        case SampleType::Int16:
            return AV_SAMPLE_FMT_S16;
        case SampleType::Int32:
            return AV_SAMPLE_FMT_S32;
        case SampleType::Float32:
            break;
    }
    return AV_SAMPLE_FMT_FLT;
}

template <class From>
auto Widened(From sample) {
    if constexpr (std::is_same_v<From, std::uint8_t>) {
        return static_cast<std::int16_t>((sample - 128) * 256);
    } else if constexpr (std::is_same_v<From, std::int64_t>) {
        return static_cast<std::int32_t>(sample >> 32);
    } else if constexpr (std::is_same_v<From, double>) {
        return static_cast<float>(sample);
    } else {
        return sample;
    }
}

// A planar frame has one plane a channel, an interleaved one has all in the first.
template <class From>
void AppendAs(const AVFrame& frame, std::vector<std::byte>& samples) {
    using To = decltype(Widened(From{}));
    const bool planar = av_sample_fmt_is_planar(static_cast<AVSampleFormat>(frame.format)) != 0;
    const auto channels = static_cast<std::size_t>(frame.ch_layout.nb_channels);
    const std::size_t planes = planar ? channels : 1;
    const std::size_t perPlane = static_cast<std::size_t>(frame.nb_samples) * channels / planes;
    const std::size_t start = samples.size();
    samples.resize(start + perPlane * planes * sizeof(To));
    auto* target = static_cast<To*>(static_cast<void*>(samples.data() + start));
    for (std::size_t plane = 0; plane < planes; ++plane) {
        const auto* source = static_cast<const From*>(static_cast<const void*>(frame.extended_data[plane]));
        for (std::size_t i = 0; i < perPlane; ++i) target[i * planes + plane] = Widened(source[i]);
    }
}

void AppendSamples(const AVFrame& frame, std::vector<std::byte>& samples) {
    switch (av_get_packed_sample_fmt(static_cast<AVSampleFormat>(frame.format))) {
        case AV_SAMPLE_FMT_U8:
            return AppendAs<std::uint8_t>(frame, samples);
        case AV_SAMPLE_FMT_S16:
            return AppendAs<std::int16_t>(frame, samples);
        case AV_SAMPLE_FMT_S32:
            return AppendAs<std::int32_t>(frame, samples);
        case AV_SAMPLE_FMT_S64:
            return AppendAs<std::int64_t>(frame, samples);
        case AV_SAMPLE_FMT_FLT:
            return AppendAs<float>(frame, samples);
        case AV_SAMPLE_FMT_DBL:
            return AppendAs<double>(frame, samples);
        default:
            return;
    }
}

// The layout of a stream in the form that the resampling library can mix.
class Layout {
public:
    Layout(int channels, std::uint64_t mask) {
        if (mask == 0 || av_channel_layout_from_mask(&Value, mask) != 0) {
            av_channel_layout_default(&Value, channels);
        }
    }
    ~Layout() { av_channel_layout_uninit(&Value); }
    Layout(const Layout&) = delete;
    Layout& operator=(const Layout&) = delete;
    AVChannelLayout Value = {};
};

std::uint64_t MaskOf(const AVFrame& frame) {
    return frame.ch_layout.order == AV_CHANNEL_ORDER_NATIVE ? frame.ch_layout.u.mask : 0;
}

}  // namespace

constexpr double BassLevel = 0.5;

// The way from another format to that of the stream.
class FrameSamples::Change {
public:
    Change(const AVFrame& from, const FrameSamples& to)
        : Rate(from.sample_rate),
          Channels(from.ch_layout.nb_channels),
          Type(from.format),
          ToRate(to.Stream.Rate),
          FrameSize(to.FrameSize()) {
        Layout source(Channels, MaskOf(from));
        Layout target(to.Stream.Channels, to.Mask);
        SwrContext* context = nullptr;
        swr_alloc_set_opts2(&context, &target.Value, LibraryTypeOf(to.Kind), ToRate, &source.Value,
                            static_cast<AVSampleFormat>(Type), Rate, 0, nullptr);
        Context.reset(context);
        if (Context) {
            // By itself the library leaves the bass channel out and lets a mix grow beyond full scale.
            av_opt_set_double(Context.get(), "lfe_mix_level", BassLevel, 0);
            av_opt_set_double(Context.get(), "rematrix_maxval", 1.0, 0);
        }
        // A layout that cannot be mixed: its frames are skipped like others that cannot be decoded.
        if (Context && swr_init(Context.get()) < 0) Context.reset();
    }

    bool IsFrom(const AVFrame& frame) const {
        return frame.sample_rate == Rate && frame.ch_layout.nb_channels == Channels && frame.format == Type;
    }

    // Converts `frames` frames, or what is left inside where `planes` is null.
    void Convert(const uint8_t** planes, int frames, std::vector<std::byte>& samples) {
        if (!Context) return;
        const int room = swr_get_out_samples(Context.get(), frames);
        if (room <= 0) return;
        const std::size_t start = samples.size();
        samples.resize(start + static_cast<std::size_t>(room) * FrameSize);
        auto* target = static_cast<uint8_t*>(static_cast<void*>(samples.data() + start));
        const int made = swr_convert(Context.get(), &target, room, planes, frames);
        samples.resize(start + static_cast<std::size_t>(std::max(made, 0)) * FrameSize);
    }

private:
    int Rate;
    int Channels;
    int Type;
    int ToRate;
    std::size_t FrameSize;
    CHandleByAddress<SwrContext, swr_free> Context;
};

FrameSamples::FrameSamples(const AVFrame& first)
    : FrameSamples(first.sample_rate, first.ch_layout.nb_channels, first.format) {
    Mask = MaskOf(first);
}

FrameSamples::FrameSamples(int rate, int channels, int sampleFormat)
    : Stream{rate, channels}, Kind(TypeOf(sampleFormat)) {}

FrameSamples::~FrameSamples() = default;

void FrameSamples::Append(const AVFrame& frame, std::vector<std::byte>& samples) {
    const bool same = frame.sample_rate == Stream.Rate && frame.ch_layout.nb_channels == Stream.Channels &&
                      TypeOf(frame.format) == Kind;
    if (Changed && (same || !Changed->IsFrom(frame))) Finish(samples);
    if (same) return AppendSamples(frame, samples);
    if (!Changed) Changed = std::make_unique<Change>(frame, *this);
    Changed->Convert(const_cast<const uint8_t**>(frame.extended_data), frame.nb_samples, samples);
}

void FrameSamples::Finish(std::vector<std::byte>& samples) {
    if (Changed) Changed->Convert(nullptr, 0, samples);
    Changed.reset();
}

}  // namespace Sonmira

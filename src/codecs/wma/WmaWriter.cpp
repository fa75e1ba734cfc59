#include "codecs/wma/WmaWriter.h"

#include "codecs/sound/AudioBlock.h"
#include "platform/Failure.h"
#include "platform/Handles.h"

#include <algorithm>
#include <array>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
}

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

// Rate, channels, kbit a second. New ones could only be added at the end.
constexpr std::array<WmaFormat, WmaFormatCount> Formats = {{
    {8000, 1, 24},   {8000, 1, 32},   {8000, 2, 24},   {8000, 2, 32},   {11025, 1, 24},  {11025, 1, 32},
    {11025, 2, 32},  {11025, 2, 48},  {16000, 1, 24},  {16000, 1, 32},  {16000, 1, 48},  {16000, 2, 32},
    {16000, 2, 48},  {16000, 2, 64},  {22050, 1, 24},  {22050, 1, 32},  {22050, 1, 48},  {22050, 1, 64},
    {22050, 2, 32},  {22050, 2, 48},  {22050, 2, 64},  {22050, 2, 80},  {22050, 2, 96},  {32000, 1, 32},
    {32000, 1, 48},  {32000, 1, 64},  {32000, 2, 48},  {32000, 2, 64},  {32000, 2, 80},  {32000, 2, 96},
    {32000, 2, 128}, {44100, 1, 48},  {44100, 1, 64},  {44100, 1, 80},  {44100, 1, 96},  {44100, 1, 128},
    {44100, 2, 48},  {44100, 2, 56},  {44100, 2, 64},  {44100, 2, 80},  {44100, 2, 96},  {44100, 2, 112},
    {44100, 2, 128}, {44100, 2, 160}, {44100, 2, 192}, {44100, 2, 256}, {44100, 2, 320}, {48000, 2, 96},
    {48000, 2, 128}, {48000, 2, 192}, {48000, 2, 320},
}};

}  // namespace

std::optional<WmaFormat> WmaFormatOf(int number) {
    if (number < 1 || number > WmaFormatCount) return {};
    return Formats[static_cast<std::size_t>(number) - 1];
}

namespace {

constexpr int BufferSize = 64 * 1024;
// ASF packets of about this size; they hold a whole number of blocks of the codec, each with this much around
// it, after a head of so many bytes. By itself the library fills packets only in part, so that a file of 320
// kbit a second would take 560.
constexpr qint64 PacketSize = 3200;
constexpr qint64 BlockHead = 17;
constexpr qint64 PacketHead = 30;

int Checked(int code) {
    if (code < 0) throw Failure(FailureNumber::Component, u"The WMA encoder failed"_s);
    return code;
}

// The file as FFmpeg's output layer wants it.
struct OutputState {
    OutputFile* File = nullptr;
    qint64 Position = 0;
    std::exception_ptr Error;
};

void WriteAt(OutputState& state, std::span<const std::byte> bytes) {
    const auto size = static_cast<qint64>(bytes.size());
    const qint64 there = std::clamp<qint64>(state.File->Size() - state.Position, 0, size);
    const auto old = static_cast<std::size_t>(there);
    if (old > 0) state.File->Patch(state.Position, bytes.first(old));
    if (old < bytes.size()) state.File->Write(bytes.subspan(old));
    state.Position += size;
}

// The bytes are constant from libavformat 61 on.
template <class Byte>
int WritePacket(void* opaque, Byte* bytes, int size) {
    auto& state = *static_cast<OutputState*>(opaque);
    try {
        WriteAt(state, std::as_bytes(std::span(bytes, static_cast<std::size_t>(size))));
        return size;
    } catch (const std::exception&) {
        if (!state.Error) state.Error = std::current_exception();
        return AVERROR(EIO);
    }
}

int64_t Seek(void* opaque, int64_t offset, int whence) {
    auto& state = *static_cast<OutputState*>(opaque);
    if ((whence & AVSEEK_SIZE) != 0) return state.File->Size();
    if (whence != SEEK_SET || offset < 0 || offset > state.File->Size()) return AVERROR(EINVAL);
    return state.Position = offset;
}

void FreeOutputLayer(AVIOContext* layer) {
    av_freep(static_cast<void*>(&layer->buffer));
    avio_context_free(&layer);
}

CHandle<AVIOContext, FreeOutputLayer> MakeOutputLayer(OutputState& state) {
    CHandle<void, av_free> buffer(av_malloc(BufferSize));
    if (!buffer) throw std::bad_alloc();
    CHandle<AVIOContext, FreeOutputLayer> layer(avio_alloc_context(
        static_cast<unsigned char*>(buffer.get()), BufferSize, 1, &state, nullptr, WritePacket, Seek));
    if (!layer) throw std::bad_alloc();
    static_cast<void>(buffer.release());
    return layer;
}

CHandleByAddress<AVCodecContext, avcodec_free_context> MakeCodec(const WmaFormat& format) {
    const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_WMAV2);
    if (codec == nullptr) throw Failure(FailureNumber::Component, u"The WMA encoder is missing"_s);
    CHandleByAddress<AVCodecContext, avcodec_free_context> context(avcodec_alloc_context3(codec));
    if (!context) throw std::bad_alloc();
    context->sample_fmt = AV_SAMPLE_FMT_FLTP;
    context->sample_rate = format.Rate;
    context->bit_rate = qint64{format.Kilobits} * 1000;
    context->time_base = {1, format.Rate};
    // What the container must have lies beside the frames.
    context->flags = AV_CODEC_FLAG_GLOBAL_HEADER | AV_CODEC_FLAG_BITEXACT;
    av_channel_layout_default(&context->ch_layout, format.Channels);
    if (avcodec_open2(context.get(), codec, nullptr) < 0) {
        throw Failure(FailureNumber::Component, u"WMA has no such format"_s);
    }
    return context;
}

}  // namespace

class WmaWriter::Encoder {
public:
    explicit Encoder(const WmaFormat& format)
        : Codec(MakeCodec(format)),
          Layer(MakeOutputLayer(State)),
          Container(MakeContainer()),
          Channels(static_cast<std::size_t>(format.Channels)),
          FrameSize(static_cast<std::size_t>(Codec->frame_size)),
          // Decoders drop the first two blocks. One is the encoder's own delay, the other is silence.
          Pending(FrameSize * Channels) {
        if (!Packet || !Frame) throw std::bad_alloc();
        Frame->nb_samples = Codec->frame_size;
        Frame->format = Codec->sample_fmt;
        Checked(av_channel_layout_copy(&Frame->ch_layout, &Codec->ch_layout));
        Checked(av_frame_get_buffer(Frame.get(), 0));
        // The first packet of the file is that of time 0, which the encoder sets its delay earlier.
        NextTime = Codec->frame_size;
    }

    void Encode(std::span<const float> samples, OutputFile& file) {
        Begin(file);
        Pending.insert(Pending.end(), samples.begin(), samples.end());
        const std::size_t block = FrameSize * Channels;
        std::size_t done = 0;
        for (; Pending.size() - done >= block; done += block) {
            EncodeBlock(std::span<const float>(Pending).subspan(done, block));
        }
        Pending.erase(Pending.begin(), Pending.begin() + static_cast<std::ptrdiff_t>(done));
    }

    void Finish(OutputFile& file) {
        // The last block is filled up; what is in it comes out only with the next one.
        const std::size_t block = FrameSize * Channels;
        const std::size_t missing = Pending.empty() ? 0 : block - Pending.size();
        Encode(std::vector<float>(missing + block), file);
        Send(nullptr);
        CheckWriting(av_write_trailer(Container.get()));
        // What the layer still holds may fail too.
        avio_flush(Layer.get());
        CheckWriting(0);
    }

private:
    CHandle<AVFormatContext, avformat_free_context> MakeContainer() {
        AVFormatContext* made = nullptr;
        Checked(avformat_alloc_output_context2(&made, nullptr, "asf", nullptr));
        CHandle<AVFormatContext, avformat_free_context> context(made);
        context->pb = Layer.get();
        context->flags |= AVFMT_FLAG_BITEXACT;
        AVStream* stream = avformat_new_stream(context.get(), nullptr);
        if (stream == nullptr) throw std::bad_alloc();
        stream->time_base = Codec->time_base;
        Checked(avcodec_parameters_from_context(stream->codecpar, Codec.get()));
        return context;
    }

    void Begin(OutputFile& file) {
        State.File = &file;
        if (std::exchange(Begun, true)) return;
        const qint64 block = std::max(Codec->block_align, 1) + BlockHead;
        const qint64 size = PacketHead + std::max<qint64>(PacketSize / block, 1) * block;
        AVDictionary* options = nullptr;
        av_dict_set_int(&options, "packet_size", size, 0);
        const int code = avformat_write_header(Container.get(), &options);
        av_dict_free(&options);
        CheckWriting(code);
    }

    void EncodeBlock(std::span<const float> samples) {
        Checked(av_frame_make_writable(Frame.get()));
        for (std::size_t channel = 0; channel < Channels; ++channel) {
            auto* target = static_cast<float*>(static_cast<void*>(Frame->extended_data[channel]));
            for (std::size_t i = 0; i < FrameSize; ++i) target[i] = samples[i * Channels + channel];
        }
        Frame->pts = NextTime;
        NextTime += Codec->frame_size;
        Send(Frame.get());
    }

    void Send(const AVFrame* frame) {
        Checked(avcodec_send_frame(Codec.get(), frame));
        while (true) {
            const int code = avcodec_receive_packet(Codec.get(), Packet.get());
            if (code == AVERROR(EAGAIN) || code == AVERROR_EOF) return;
            Checked(code);
            Packet->stream_index = 0;
            av_packet_rescale_ts(Packet.get(), Codec->time_base, Container->streams[0]->time_base);
            CheckWriting(av_interleaved_write_frame(Container.get(), Packet.get()));
        }
    }

    void CheckWriting(int code) const {
        if (State.Error) std::rethrow_exception(State.Error);
        Checked(code);
    }

    CHandleByAddress<AVCodecContext, avcodec_free_context> Codec;
    OutputState State;
    CHandle<AVIOContext, FreeOutputLayer> Layer;
    CHandle<AVFormatContext, avformat_free_context> Container;
    CHandleByAddress<AVPacket, av_packet_free> Packet{av_packet_alloc()};
    CHandleByAddress<AVFrame, av_frame_free> Frame{av_frame_alloc()};
    std::size_t Channels;
    std::size_t FrameSize;
    std::vector<float> Pending;
    qint64 NextTime = 0;
    bool Begun = false;
};

WmaWriter::WmaWriter(const WmaFormat& format) : Stream(std::make_unique<Encoder>(format)) {}

WmaWriter::~WmaWriter() = default;

void WmaWriter::Write(const AudioBlock& block, OutputFile& file) {
    Stream->Encode(LimitedFloatsOf(block), file);
}

void WmaWriter::Finish(OutputFile& file) {
    Stream->Finish(file);
}

}  // namespace Sonmira

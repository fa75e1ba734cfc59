#include "codecs/read/SoundDecoder.h"

#include "codecs/read/MediaInput.h"
#include "platform/CHandle.h"

#include <cerrno>
#include <thread>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace Sonmira {

namespace {

// More threads than this only lengthen the way from packet to sound.
constexpr unsigned MostThreads = 8;

}  // namespace

bool IsLossless(int codec) {
    const AVCodecDescriptor* about = avcodec_descriptor_get(static_cast<AVCodecID>(codec));
    return about != nullptr && (about->props & AV_CODEC_PROP_LOSSLESS) != 0 &&
           (about->props & AV_CODEC_PROP_LOSSY) == 0;
}

class SoundDecoder::Parts {
public:
    explicit Parts(const AVStream& stream) {
        const AVCodec* codec = avcodec_find_decoder(stream.codecpar->codec_id);
        if (codec == nullptr) throw MediaFailure(AVERROR_DECODER_NOT_FOUND);
        Codec.reset(avcodec_alloc_context3(codec));
        if (!Codec || !Packet || !Frame) throw MediaFailure(AVERROR(ENOMEM));
        Check(avcodec_parameters_to_context(Codec.get(), stream.codecpar));
        Codec->pkt_timebase = stream.time_base;
        // A lossless frame whose check sum does not fit is no sound of the file: it is left out and missed.
        if (IsLossless(codec->id)) Codec->err_recognition = AV_EF_CRCCHECK | AV_EF_EXPLODE;
        if ((codec->capabilities & AV_CODEC_CAP_FRAME_THREADS) != 0) {
            Codec->thread_count =
                static_cast<int>(std::clamp(std::thread::hardware_concurrency(), 1U, MostThreads));
        }
        Check(avcodec_open2(Codec.get(), codec, nullptr));
    }

    static void Check(int code) {
        if (code < 0) throw MediaFailure(code);
    }

    CHandleByAddress<AVCodecContext, avcodec_free_context> Codec;
    CHandleByAddress<AVPacket, av_packet_free> Packet{av_packet_alloc()};
    CHandleByAddress<AVFrame, av_frame_free> Frame{av_frame_alloc()};
};

SoundDecoder::SoundDecoder(MediaInput& input)
    : Input(input), Libraries(std::make_unique<Parts>(input.Sound())), Missing(input) {}

SoundDecoder::~SoundDecoder() = default;

const AVFrame* SoundDecoder::Next() {
    AVCodecContext* codec = Libraries->Codec.get();
    AVFrame* frame = Libraries->Frame.get();
    while (true) {
        const int code = avcodec_receive_frame(codec, frame);
        if (code == 0) {
            if (frame->nb_samples > 0 && frame->sample_rate > 0 && frame->ch_layout.nb_channels > 0) {
                Missing.Take(*frame);
                return frame;
            }
            continue;
        }
        if (code == AVERROR_EOF) return nullptr;
        if (code == AVERROR(ENOMEM)) throw MediaFailure(code);
        if (code != AVERROR(EAGAIN)) Lose();
        if (!Draining) {
            if (!SendPacket()) return nullptr;
        } else if (++FailuresAtEnd > MostThreads) {
            // Before that, a decoder of several threads may have frames behind one that failed.
            return nullptr;
        }
    }
}

// Gives the decoder its next packet, or the end of the stream. False when it does not take that.
bool SoundDecoder::SendPacket() {
    AVCodecContext* codec = Libraries->Codec.get();
    AVPacket* packet = Libraries->Packet.get();
    if (!Input.Read(*packet)) {
        Draining = true;
        return avcodec_send_packet(codec, nullptr) == 0;
    }
    // Vorbis begins before time 0 with a packet that only primes the decoder. Where all packets share one
    // page its time is not known and counts as 0; the end that follows from it comes too early by as much.
    // Such a stream is decoded in full, and cut where its page says.
    if (std::exchange(First, false) && codec->codec_id == AV_CODEC_ID_VORBIS && packet->pts == 0) {
        codec->flags2 |= AV_CODEC_FLAG2_SKIP_MANUAL;
    }
    Missing.Read(*packet);
    const int code = avcodec_send_packet(codec, packet);
    av_packet_unref(packet);
    if (code == AVERROR(ENOMEM)) throw MediaFailure(code);
    ++Sent;
    if (code < 0) Lose();
    return true;
}

void SoundDecoder::Lose() {
    ++Bad;
    Missing.Lose();
}

int SoundDecoder::Rate() const {
    return Libraries->Codec->sample_rate;
}

int SoundDecoder::Channels() const {
    return Libraries->Codec->ch_layout.nb_channels;
}

int SoundDecoder::SampleFormat() const {
    return Libraries->Codec->sample_fmt;
}

}  // namespace Sonmira

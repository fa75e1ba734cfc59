#include "codecs/read/SoundDecoder.h"

#include "codecs/read/MediaInput.h"
#include "platform/Handles.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <string_view>
#include <thread>
#include <utility>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace Sonmira {

namespace {

using Names = std::initializer_list<std::string_view>;

bool IsOneOf(const MediaInput& input, Names names) {
    const std::string_view name = input.Container().iformat->name;
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool BeginsAnew(const AVPacket& packet) {
    return av_packet_get_side_data(&packet, AV_PKT_DATA_NEW_EXTRADATA, nullptr) != nullptr ||
           av_packet_get_side_data(&packet, AV_PKT_DATA_METADATA_UPDATE, nullptr) != nullptr;
}

}  // namespace

SoundGaps::SoundGaps(const MediaInput& input) : Input(input) {
    Tells = !IsOneOf(input, {"mp3", "aac", "loas", "ac3", "eac3", "dts", "amr", "mpc", "mpc8"});
    EndsExactly = IsOneOf(input, {"ogg", "flac"});
    const bool isExact = IsOneOf(
        input, {"mov,mp4,m4a,3gp,3g2,mj2", "caf", "wav", "w64", "aiff", "au", "wv", "tta", "tak", "ape"});
    // Other containers round to milliseconds, or stamp a packet by a frame that only begins in it.
    LeastJump = isExact ? 0.01 : 0.06;
    const AVStream& sound = input.Sound();
    const bool isBySamples = av_cmp_q(sound.time_base, {1, std::max(sound.codecpar->sample_rate, 1)}) == 0;
    CountsSamples = EndsExactly || (isExact && isBySamples);
}

void SoundGaps::Read(const AVPacket& packet) {
    const double unit = av_q2d(Input.Sound().time_base);
    // What lies before the start of a short Ogg stream makes a length below 0, which the library keeps in 32
    // bits without a sign.
    const bool isLength = packet.duration > 0 && packet.duration <= std::numeric_limits<int32_t>::max();
    PacketSeconds = isLength ? static_cast<double>(packet.duration) * unit : 0;
    // The next link of a chain has times of its own.
    if (BeginsAnew(packet)) {
        Missing += std::exchange(Ahead, 0);
        Clock.reset();
        PacketsEnd = 0;
    }
    const int64_t stamp = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
    if (stamp == AV_NOPTS_VALUE) return;
    LastRead = static_cast<double>(stamp) * unit;
    PacketsEnd = std::max(PacketsEnd, LastRead + PacketSeconds);
}

void SoundGaps::Lose() {
    Failed += std::exchange(PacketSeconds, 0);
}

void SoundGaps::Take(const AVFrame& frame) {
    const double length = static_cast<double>(frame.nb_samples) / frame.sample_rate;
    if (frame.pts == AV_NOPTS_VALUE) {
        Missing += Failed;
        if (Clock) *Clock += length;
        LastEnd += length;
    } else {
        const double start = static_cast<double>(frame.pts) * av_q2d(Input.Sound().time_base);
        TakeAt(start, Clock ? start - *Clock : 0);
        *Clock += length;
        LastEnd = start + length;
    }
    Failed = 0;
    PacketSeconds = 0;
}

void SoundGaps::TakeAt(double start, double jump) {
    constexpr double leastStepBack = 0.1;
    if (CountsSamples && Clock && jump > -leastStepBack) {
        Ahead = std::max(jump, 0.0);
        return;
    }
    Missing += std::exchange(Ahead, 0);
    // A jump that is too short to be one counts where a packet failed in it.
    Missing += jump > LeastJump ? jump : std::min(Failed, std::max(jump, 0.0));
    Clock = start;
}

// What the packets last beyond the last frame. That of an Ogg stream lasts until the time that its page
// tells, whatever is missing before it, and decoders of several threads keep to themselves that the last
// packets were damaged. Lossy formats are cut to their length, and elsewhere the last packet may count as a
// full one.
double SoundGaps::Unheard() const {
    constexpr double fullPacket = 0.1;
    if (!Clock || !(EndsExactly || IsLossless(Input.Sound().codecpar->codec_id))) return 0;
    const double seconds = PacketsEnd - LastEnd;
    return EndsExactly || seconds > fullPacket ? seconds : 0;
}

// What an index counts behind the last packet that could be read. Only that of MP4 stands apart from the
// sound, so that a cut file may still have it.
double SoundGaps::Unread() const {
    if (!IsOneOf(Input, {"mov,mp4,m4a,3gp,3g2,mj2"})) return 0;
    // The library's list of them is not for reading alone, though nothing is changed by it.
    auto* sound = const_cast<AVStream*>(&Input.Sound());
    const int entries = avformat_index_get_entries_count(sound);
    if (entries == 0) return 0;
    const AVIndexEntry* last = avformat_index_get_entry(sound, entries - 1);
    return static_cast<double>(last->timestamp) * av_q2d(sound->time_base) - LastRead;
}

double SoundGaps::Seconds() const {
    if (!Tells) return 0;
    return Missing + Ahead + std::max({Failed, Unheard(), Unread(), 0.0});
}

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
            // What only primes the decoder comes out of newer libraries as sound.
            if (Primes && Sent == 1) continue;
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
        Primes = true;
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

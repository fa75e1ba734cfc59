#include "codecs/read/MediaLength.h"

#include "codecs/read/MediaInput.h"
#include "codecs/read/SoundDecoder.h"
#include "platform/Handles.h"

#include <QByteArray>
#include <QList>

#include <string_view>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/intreadwrite.h>
}

namespace Sonmira {

namespace {

qint64 InFrames(qint64 duration, AVRational unit, int rate) {
    return av_rescale_q(duration, unit, AVRational{1, rate});
}

qint64 DeclaredLength(const MediaInput& input, int rate) {
    const AVStream& sound = input.Sound();
    if (sound.duration > 0) return InFrames(sound.duration, sound.time_base, rate);
    const qint64 whole = input.Container().duration;
    return whole > 0 ? InFrames(whole, AVRational{1, AV_TIME_BASE}, rate) : 0;
}

bool IsContainer(const MediaInput& input, std::string_view name) {
    return std::string_view(input.Container().iformat->name).find(name) != std::string_view::npos;
}

// By the head of its stream; the library's own length is a guess beside it.
qint64 AviLength(const MediaInput& input, int rate) {
    return InFrames(input.Sound().nb_frames, input.Sound().time_base, rate);
}

bool IsFilm(const MediaInput& input) {
    return IsContainer(input, "matroska") || IsContainer(input, "flv");
}

// Streams that last; covers do not.
unsigned CountSoundAndFilm(const MediaInput& input) {
    unsigned count = 0;
    for (unsigned i = 0; i < input.Container().nb_streams; ++i) {
        const bool isCover = (input.Container().streams[i]->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
        if (!isCover) ++count;
    }
    return count;
}

bool IsGuess(const MediaInput& input) {
    return input.Container().duration_estimation_method == AVFMT_DURATION_FROM_BITRATE;
}

bool HeadersOnlyEstimate(const MediaInput& input) {
    return IsGuess(input) || input.Sound().codecpar->codec_id == AV_CODEC_ID_MP3 ||
           IsContainer(input, "avi") || IsContainer(input, "ogg") ||
           DeclaredLength(input, input.Sound().codecpar->sample_rate) == 0;
}

// Frames that the decoder drops at the start and at the end by a packet's side data: two 32-bit numbers.
struct Skipped {
    qint64 Start = 0;
    qint64 End = 0;
};

Skipped SkippedBy(const AVPacket& packet) {
    std::size_t size = 0;
    const uint8_t* data = av_packet_get_side_data(&packet, AV_PKT_DATA_SKIP_SAMPLES, &size);
    if (data == nullptr || size < 8) return {};
    return {AV_RL32(data), AV_RL32(data + 4)};
}

constexpr qint64 PacketsATurn = 64;

qint64 ScannedLength(const MediaInput& input, int rate, const std::function<bool()>& givesUp) {
    MediaInput again(input.File());
    const CHandleByAddress<AVPacket, av_packet_free> packet(av_packet_alloc());
    if (!packet) throw MediaFailure(AVERROR(ENOMEM));
    const AVRational unit = again.Sound().time_base;
    qint64 duration = 0;
    Skipped skipped;
    // A packet of more than some seconds is a mistake in the times of its neighbours.
    const qint64 longest = av_rescale_q(10, AVRational{1, 1}, unit);
    // Ogg packets say what remains of the last one both in its duration and as a number to skip.
    const bool skipsEnd = !IsContainer(input, "ogg");
    qint64 packets = 0;
    for (bool first = true; again.Read(*packet); first = false) {
        // Packets are too small to be worth a turn of the event loop each.
        if (packets++ % PacketsATurn == 0) YieldWhileScanning();
        if (givesUp && givesUp()) break;
        if (packet->duration > 0 && packet->duration <= longest) duration += packet->duration;
        const Skipped now = SkippedBy(*packet);
        // A stream that begins before time 0 has its delay there, in Ogg and MP4 often in both ways.
        if (first && packet->pts != AV_NOPTS_VALUE && packet->pts < 0) {
            skipped.Start = std::max(now.Start, InFrames(-packet->pts, unit, rate));
        } else {
            skipped.Start += now.Start;
        }
        if (skipsEnd) skipped.End += now.End;
        av_packet_unref(packet.get());
    }
    return std::max<qint64>(InFrames(duration, unit, rate) - skipped.Start - skipped.End, 0);
}

// Edit lists count in the units of the whole film, mostly milliseconds, but the stream itself in frames.
// Where its own end, the delay at its start taken off, is the declared one before rounding, it is the true
// one.
qint64 UnroundedEnd(const MediaInput& input, int rate, qint64 declared) {
    MediaInput whole(input.File(), MediaInput::Times::Whole);
    const CHandleByAddress<AVPacket, av_packet_free> packet(av_packet_alloc());
    if (!packet) throw MediaFailure(AVERROR(ENOMEM));
    if (!whole.Read(*packet)) return declared;
    const qint64 end = DeclaredLength(whole, rate) - SkippedBy(*packet).Start;
    return std::abs(end - declared) <= rate / 1000 + 1 ? end : declared;
}

// The count of the gapless entry that players of such files agree on: blank-separated hexadecimal numbers,
// of which the fourth is the number of frames.
std::optional<qint64> GaplessEntry(const MediaInput& input) {
    const AVDictionaryEntry* entry = av_dict_get(input.Container().metadata, "iTunSMPB", nullptr, 0);
    if (entry == nullptr) return {};
    const QList<QByteArray> numbers = QByteArray(entry->value).simplified().split(' ');
    bool isNumber = false;
    const qint64 frames = numbers.value(3).toLongLong(&isNumber, 16);
    return isNumber && frames > 0 ? std::optional(frames) : std::nullopt;
}

}  // namespace

qint64 SoundLength(const MediaInput& input, int rate, std::optional<qint64> end,
                   const std::function<bool()>& givesUp) {
    if (!HeadersOnlyEstimate(input)) return end.value_or(DeclaredLength(input, rate));
    const qint64 scanned = ScannedLength(input, rate, givesUp);
    if (end && std::abs(scanned - *end) <= MostPadding) return *end;
    return scanned > 0 ? scanned : DeclaredLength(input, rate);
}

qint64 LeastLength(const MediaInput& input, int rate, std::optional<qint64> end) {
    if (IsContainer(input, "avi")) return std::max<qint64>(AviLength(input, rate) - rate / 10, 0);
    const AVCodecID codec = input.Sound().codecpar->codec_id;
    // Windows Media rounds its times, Musepack counts whole packets, and edit lists may go beyond the stream.
    const bool isRough = IsContainer(input, "asf") || IsContainer(input, "xwma") ||
                         IsContainer(input, "mpc") || IsContainer(input, "mp4");
    const bool isEstimated = HeadersOnlyEstimate(input) && !(codec == AV_CODEC_ID_MP3 && IsFilm(input));
    if (isRough || isEstimated || IsGuess(input)) return 0;
    // The length of all streams is that of the longest.
    if (input.Sound().duration <= 0 && CountSoundAndFilm(input) > 1) return 0;
    // Times in units of a clock slower than the sample rate are off by less than this.
    int tolerance = IsLossless(codec) ? rate / 200 : rate / 10;
    // Core Audio files count whole packets, and the other numbers in a WAV of packets are seldom right.
    if (IsContainer(input, "caf")) tolerance = rate / 10 + MostPadding;
    // So are those of RealMedia.
    if (!IsLossless(codec) && (IsContainer(input, "wav") || IsContainer(input, "rm"))) tolerance = rate;
    return std::max<qint64>(end.value_or(DeclaredLength(input, rate)) - tolerance, 0);
}

std::optional<qint64> SoundEnd(const MediaInput& input, int rate) {
    const AVCodecID codec = input.Sound().codecpar->codec_id;
    const bool isAac = IsContainer(input, "mp4") && codec == AV_CODEC_ID_AAC;
    const bool isVorbis = IsContainer(input, "ogg") && codec == AV_CODEC_ID_VORBIS;
    const qint64 declared = DeclaredLength(input, rate);
    if (declared <= 0 || IsGuess(input) || !(isAac || isVorbis)) return {};
    // An entry that a later cut of the file made wrong would take sound away.
    const auto entry = GaplessEntry(input);
    if (entry && std::abs(*entry - declared) <= 2 * MostPadding) return entry;
    return isAac ? UnroundedEnd(input, rate, declared) : declared;
}

}  // namespace Sonmira

#include "codecs/read/SoundGaps.h"

#include "codecs/read/MediaInput.h"
#include "codecs/read/SoundDecoder.h"

#include <algorithm>
#include <limits>
#include <string_view>
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

}  // namespace Sonmira

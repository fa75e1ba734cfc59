#include "codecs/read/Mp3Counts.h"

#include "codecs/sound/Id3v2Head.h"
#include "platform/InputFile.h"

#include <QByteArray>
#include <QtEndian>

#include <optional>

namespace Sonmira {

namespace {

// Of the four bytes that begin a frame, as ISO 11172-3 and 13818-3 have them.
struct Frame {
    double Seconds = 0;
    qsizetype SideInformation = 0;  // bytes
    qint64 Bytes = 0;               // all in all; 0 where the head does not tell
};

std::optional<Frame> FrameOf(const char* head) {
    const auto bits = qFromBigEndian<quint32>(head);
    const quint32 version = bits >> 19 & 3;  // 3 stands for 1, 2 for 2, 0 for "2.5"
    const quint32 rateIndex = bits >> 10 & 3;
    const bool isLayer3 = bits >> 21 == 0x7FF && version != 1 && (bits >> 17 & 3) == 1 && rateIndex != 3;
    if (!isLayer3) return {};
    constexpr int rates[] = {44100, 48000, 32000};
    const int rate = rates[rateIndex] / (version == 3 ? 1 : version == 2 ? 2 : 4);
    const bool isMono = (bits >> 6 & 3) == 3;
    constexpr int kilobits[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
    constexpr int kilobitsOf2[] = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0};
    const int bitrate = (version == 3 ? kilobits : kilobitsOf2)[bits >> 12 & 15] * 1000;
    const int samples = version == 3 ? 1152 : 576;
    const qint64 bytes = bitrate > 0 ? samples / 8 * bitrate / rate + (bits >> 9 & 1) : 0;
    const qsizetype side = version == 3 ? (isMono ? 17 : 32) : (isMono ? 9 : 17);
    return Frame{static_cast<double>(samples) / rate, side, bytes};
}

bool IsTag(const QByteArray& bytes) {
    return bytes.startsWith("TAG") || bytes.startsWith("APETAGEX") || bytes.startsWith("LYRICSBEGIN");
}

// How many frames stand from there to the end of the sound, one behind the other and each of them all there;
// nothing where anything else is among them.
std::optional<qint64> WholeFrames(const InputFile& file, qint64 at) {
    constexpr qint64 piece = 1 << 20;
    qint64 frames = 0;
    while (at < file.Size()) {
        const QByteArray bytes = BytesAt(file, at, piece);
        qsizetype place = 0;
        while (place + 4 <= bytes.size()) {
            const auto frame = FrameOf(bytes.constData() + place);
            if (!frame || frame->Bytes == 0) break;
            place += frame->Bytes;
            ++frames;
        }
        at += place;
        const bool goesOn = place > 0 && place + 4 > bytes.size();
        if (!goesOn) return IsTag(BytesAt(file, at, 16)) ? std::optional(frames) : std::nullopt;
    }
    return at == file.Size() ? std::optional(frames) : std::nullopt;
}

struct Counts {
    qint64 Frames = 0;
    qint64 Bytes = 0;
};

qint64 NumberAt(const QByteArray& bytes, qsizetype place) {
    return place + 4 <= bytes.size() ? qFromBigEndian<quint32>(bytes.constData() + place) : 0;
}

std::optional<Counts> CountsOf(const QByteArray& head, const Frame& frame) {
    constexpr qsizetype fixedPlace = 4 + 32;
    if (head.mid(fixedPlace, 4) == "VBRI")
        return Counts{NumberAt(head, fixedPlace + 14), NumberAt(head, fixedPlace + 10)};
    const qsizetype place = 4 + frame.SideInformation;
    const QByteArray name = head.mid(place, 4);
    if (name != "Xing" && name != "Info") return {};
    const qint64 flags = NumberAt(head, place + 4);
    const bool hasFrames = (flags & 1) != 0;
    const bool hasBytes = (flags & 2) != 0;
    return Counts{hasFrames ? NumberAt(head, place + 8) : 0,
                  hasBytes ? NumberAt(head, place + (hasFrames ? 12 : 8)) : 0};
}

}  // namespace

double MissingMp3Seconds(const InputFile& file, qint64 frames) {
    const qint64 start = BehindId3v2(file);
    const QByteArray head = BytesAt(file, start, 64);
    if (head.size() < 64) return 0;
    const auto frame = FrameOf(head.constData());
    const auto counts = frame ? CountsOf(head, *frame) : std::nullopt;
    if (!counts) return 0;
    const qint64 there = file.Size() - start;
    const bool lacksBytes = counts->Bytes > there;
    if (counts->Frames > 0) {
        qint64 wanted = counts->Frames;
        // Of editors that leave an old count behind: the frames tell themselves that they are all, but for
        // the first one, which holds the counts.
        const bool isLacking = wanted > frames;
        if (const auto whole = isLacking && !lacksBytes ? WholeFrames(file, start) : std::nullopt)
            wanted = std::min(wanted, *whole - 1);
        return static_cast<double>(wanted - frames) * frame->Seconds;
    }
    if (!lacksBytes || there <= 0) return 0;
    const double missing = static_cast<double>(counts->Bytes - there) / static_cast<double>(there);
    return missing * static_cast<double>(frames) * frame->Seconds;
}

}  // namespace Sonmira

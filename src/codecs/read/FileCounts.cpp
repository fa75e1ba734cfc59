#include "codecs/read/FileCounts.h"

#include "codecs/read/MediaInput.h"
#include "codecs/sound/Id3v2Head.h"
#include "platform/Files.h"

#include <QByteArray>
#include <QtEndian>

#include <optional>
#include <string_view>

extern "C" {
#include <libavformat/avformat.h>
}

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
    const qint64 bytes = bitrate > 0 ? samples / 8 * bitrate / rate + static_cast<int>(bits >> 9 & 1) : 0;
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

namespace {

// Bytes that a container counts for its sound, and those of them that lie beyond the end of the file.
struct Counted {
    qint64 Bytes = 0;
    qint64 Missing = 0;

    void Add(qint64 start, qint64 size, qint64 fileSize) {
        Bytes += size;
        Missing += std::clamp<qint64>(start + size - fileSize, 0, size);
    }
    // As long as the same share of what is there.
    double Seconds(double given) const {
        const qint64 there = Bytes - Missing;
        return there > 0 ? given * static_cast<double>(Missing) / static_cast<double>(there) : 0;
    }
};

template <class Number>
qint64 NumberAt(const QByteArray& bytes, qsizetype place) {
    return static_cast<qint64>(qFromLittleEndian<Number>(bytes.constData() + place));
}

// A Windows Media file counts its packets, all of one size, in the properties of its header and in front of
// them. Who writes while he records leaves a mark and no count.
Counted CountAsf(const InputFile& file) {
    constexpr qsizetype mostHeader = qsizetype{1} << 20;
    constexpr qint64 dataHead = 50;
    constexpr quint32 isRecording = 1;
    const qint64 headerSize = NumberAt<quint64>(BytesAt(file, 0, 24).leftJustified(24, '\0'), 16);
    if (headerSize < 30 || headerSize > mostHeader) return {};
    const QByteArray header = BytesAt(file, 0, headerSize);
    const qsizetype properties = header.indexOf(QByteArray::fromHex("a1dcab8c47a9cf118ee400c00c205365"));
    if (properties < 0 || properties + 104 > header.size()) return {};
    const QByteArray data = BytesAt(file, headerSize, dataHead);
    if (data.size() < dataHead) return {};
    const qint64 packets = std::min(NumberAt<quint64>(header, properties + 56), NumberAt<quint64>(data, 40));
    const qint64 packetSize = NumberAt<quint32>(header, properties + 92);
    const bool isOneSize = packetSize == NumberAt<quint32>(header, properties + 96);
    const bool isCounted = (NumberAt<quint32>(header, properties + 88) & isRecording) == 0 && packets > 0 &&
                           packets < (qint64{1} << 40);
    // No file is larger than that, and no count of one overflows.
    constexpr qint64 mostBytes = qint64{1} << 60;
    if (!isOneSize || !isCounted || packetSize == 0 || packets > mostBytes / packetSize) return {};
    Counted counted;
    counted.Add(headerSize + dataHead, packets * packetSize, file.Size());
    return counted;
}

// The time at which the last page ends, where the file ends in the middle of it: the library leaves such a
// page out. A page is a head of 27 bytes, in it its time in frames at 6, a table of as many sizes as the last
// of these bytes says, and the bytes that the table counts.
qint64 FramesAtCutPage(const InputFile& file) {
    constexpr qint64 largest = 27 + 255 + 255 * 255;
    const QByteArray end = BytesAt(file, std::max<qint64>(file.Size() - largest, 0), largest);
    const qsizetype page = end.lastIndexOf("OggS");
    if (page < 0 || end.size() < page + 27) return 0;
    const qsizetype table = static_cast<quint8>(end[page + 26]);
    qsizetype size = 27 + table;
    for (const char part : end.mid(page + 27, table)) size += static_cast<quint8>(part);
    return page + size > end.size() ? NumberAt<qint64>(end, page + 6) : 0;
}

double CutOggSeconds(const MediaInput& input, double end) {
    // Pages of other streams, and their times, would be taken for those of the sound.
    if (input.Container().nb_streams != 1) return 0;
    const qint64 frames = FramesAtCutPage(*input.File());
    return frames > 0 ? static_cast<double>(frames) * av_q2d(input.Sound().time_base) - end : 0;
}

}  // namespace

double MissingByCounts(const MediaInput& input, const SoundGiven& given) {
    const std::string_view container = input.Container().iformat->name;
    const InputFile& file = *input.File();
    if (container == "asf") return CountAsf(file).Seconds(given.Seconds);
    if (container == "ogg") return CutOggSeconds(input, given.End);
    if (container == "mp3") return MissingMp3Seconds(file, given.Packets);
    return 0;
}

}  // namespace Sonmira

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
};

std::optional<Frame> FrameOf(const QByteArray& head) {
    const auto bits = qFromBigEndian<quint32>(head.constData());
    const quint32 version = bits >> 19 & 3;  // 3 stands for 1, 2 for 2, 0 for "2.5"
    const quint32 rateIndex = bits >> 10 & 3;
    const bool isLayer3 = bits >> 21 == 0x7FF && version != 1 && (bits >> 17 & 3) == 1 && rateIndex != 3;
    if (!isLayer3) return {};
    constexpr int rates[] = {44100, 48000, 32000};
    const int rate = rates[rateIndex] / (version == 3 ? 1 : version == 2 ? 2 : 4);
    const bool isMono = (bits >> 6 & 3) == 3;
    if (version == 3) return Frame{1152.0 / rate, isMono ? 17 : 32};
    return Frame{576.0 / rate, isMono ? 9 : 17};
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
    const auto frame = FrameOf(head);
    const auto counts = frame ? CountsOf(head, *frame) : std::nullopt;
    if (!counts) return 0;
    if (counts->Frames > 0) return static_cast<double>(counts->Frames - frames) * frame->Seconds;
    const qint64 there = file.Size() - start;
    if (counts->Bytes <= there || there <= 0) return 0;
    const double missing = static_cast<double>(counts->Bytes - there) / static_cast<double>(there);
    return missing * static_cast<double>(frames) * frame->Seconds;
}

}  // namespace Sonmira

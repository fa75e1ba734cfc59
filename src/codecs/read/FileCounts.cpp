#include "codecs/read/FileCounts.h"

#include "codecs/read/MediaInput.h"
#include "codecs/read/Mp3Counts.h"

#include <QByteArray>
#include <QtEndian>

#include <string_view>

extern "C" {
#include <libavformat/avformat.h>
}

namespace Sonmira {

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

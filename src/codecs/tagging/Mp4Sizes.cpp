#include "codecs/tagging/Mp4Sizes.h"

#include <QtEndian>

#include <algorithm>

namespace Sonmira {

namespace {

constexpr qint64 HeadSize = 8;

// Atoms that hold atoms; the library follows them as deep as they go, on the stack.
constexpr const char* Containers[] = {"moov", "udta", "mdia", "meta", "ilst", "stbl",
                                      "minf", "moof", "traf", "trak", "stsd"};
constexpr int MostLevels = 32;
constexpr int MostAtoms = 1'000'000;

// Tables of places in the file, which a save goes through: how large their entries are.
qint64 EntrySize(const QByteArray& name) {
    return name == "stco" ? 4 : name == "co64" ? 8 : 0;
}

class Walk {
public:
    explicit Walk(TagStream& file) : File(file) {}

    Mp4Sizes Over(qint64 begin, qint64 end, int level) {
        Mp4Sizes worst = Mp4Sizes::Fit;
        for (qint64 at = begin; at + HeadSize <= end && worst != Mp4Sizes::TooDeep;) {
            const QByteArray head = File.Bytes(at, 3 * HeadSize);
            if (head.size() < HeadSize) return worst;
            if (level > MostLevels || ++Atoms > MostAtoms) return Mp4Sizes::TooDeep;
            qint64 size = qFromBigEndian<quint32>(head.constData());
            const bool isLong = size == 1 && head.size() >= 2 * HeadSize;
            if (isLong) size = qFromBigEndian<qint64>(head.constData() + HeadSize);
            const qint64 headSize = isLong ? 2 * HeadSize : HeadSize;
            if (size == 0) size = end - at;
            if (size < headSize) return worst;
            const QByteArray name = head.sliced(4, 4);
            // A file that was cut in its sound can still be tagged.
            const bool isCut = size > end - at && (level > 0 || name == "moov");
            // The library looks for the entries of a table behind a short head.
            const bool isTableWell = isLong ? EntrySize(name) == 0 : IsTableWell(name, head, size);
            if (isCut || !isTableWell) worst = Mp4Sizes::DoNotFit;
            const qint64 inside = at + headSize + MoreOf(name, head.sliced(headSize));
            if (IsContainer(name)) {
                worst = std::max(worst, Over(inside, at + std::min(size, end - at), level + 1));
            }
            if (size > end - at) return worst;
            at += size;
        }
        return worst;
    }

private:
    static bool IsContainer(const QByteArray& name) {
        return std::any_of(std::begin(Containers), std::end(Containers),
                           [&](const char* one) { return name == one; });
    }
    // As the library has it: the head of a list of items may take four bytes more, that of a list of formats
    // takes eight.
    static qint64 MoreOf(const QByteArray& name, const QByteArray& behindHead) {
        const bool hasVersion = name == "meta" && behindHead.startsWith(QByteArray(4, '\0'));
        return name == "stsd" ? 8 : hasVersion ? 4 : 0;
    }
    static bool IsTableWell(const QByteArray& name, const QByteArray& head, qint64 size) {
        const qint64 entry = EntrySize(name);
        if (entry > 0) {
            if (head.size() < 2 * HeadSize || size < 2 * HeadSize) return false;
            return qFromBigEndian<quint32>(head.constData() + 12) * entry <= size - 2 * HeadSize;
        }
        // The place of a fragment's sound, where it says one.
        constexpr qint64 PlacedSize = 24;
        return name != "tfhd" || (head.size() > 11 && ((head[11] & 1) == 0 || size >= PlacedSize));
    }

    TagStream& File;
    int Atoms = 0;
};

}  // namespace

Mp4Sizes SizesOf(TagStream& file) {
    return Walk(file).Over(0, file.length(), 0);
}

}  // namespace Sonmira

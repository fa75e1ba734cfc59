#include "codecs/tagging/Id3v2Parsing.h"

#include <algorithm>

namespace Sonmira {

namespace {

int ByteAt(const QByteArray& bytes, qsizetype at) {
    return static_cast<unsigned char>(bytes[at]);
}

bool IsNameAt(const QByteArray& body, qsizetype at, int version) {
    return std::all_of(body.begin() + at, body.begin() + at + (version < 3 ? 3 : 4),
                       [](char c) { return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); });
}

// The bytes of the extended header; more than there are where it lies.
qint64 ExtensionSize(int version, int flags, const QByteArray& body) {
    if (version < 3 || (flags & Id3v2HasExtension) == 0) return 0;
    if (body.size() < 6) return body.size() + 1;
    const qint64 size = version == 3 ? Id3v2NumberIn(body.first(4), 8) + 4 : Id3v2NumberIn(body.first(4), 7);
    return std::max<qint64>(size, 6);
}

std::optional<Id3v2Reading> ReadIn(const QByteArray& body, int version, int flags, int bits) {
    Id3v2Reading reading;
    const qint64 extension = ExtensionSize(version, flags, body);
    if (extension > body.size()) return {};
    reading.Extension = body.first(extension);
    reading.CountsInSevens = bits == 7;
    const qsizetype head = Id3v2FrameHead(version);
    qint64 at = extension;
    while (at < body.size() && body[at] != '\0') {
        if (at + head > body.size() || !IsNameAt(body, at, version)) return {};
        const qsizetype name = version < 3 ? 3 : 4;
        const QByteArray sizeBytes = body.sliced(at + name, version < 3 ? 3 : 4);
        const bool isSevens =
            std::all_of(sizeBytes.begin(), sizeBytes.end(), [](char c) { return (c & 0x80) == 0; });
        const qint64 size = Id3v2NumberIn(sizeBytes, bits);
        if ((bits == 7 && !isSevens) || size == 0 || size > body.size() - at - head) return {};
        reading.Frames.append({body.sliced(at, name), body.sliced(at, head + size)});
        at += head + size;
    }
    reading.End = at;
    const bool isPadded = std::all_of(body.begin() + at, body.end(), [](char c) { return c == '\0'; });
    return isPadded ? std::optional(reading) : std::nullopt;
}

// Whether two ways of reading differ in nothing but zeros behind the last frame.
bool IsSameButZeros(const Id3v2Reading& one, const Id3v2Reading& other) {
    const qsizetype count = one.Frames.size();
    if (count != other.Frames.size() || one.Extension != other.Extension) return false;
    for (qsizetype n = 0; n + 1 < count; ++n) {
        if (one.Frames[n].Bytes != other.Frames[n].Bytes) return false;
    }
    return count == 0 || other.Frames.last().Bytes.startsWith(one.Frames.last().Bytes) ||
           one.Frames.last().Bytes.startsWith(other.Frames.last().Bytes);
}

}  // namespace

QByteArray Id3v2Number(qint64 number, int count, int bits) {
    QByteArray bytes;
    for (int n = count - 1; n >= 0; --n) bytes += static_cast<char>(number >> (bits * n) & ((1 << bits) - 1));
    return bytes;
}

qint64 Id3v2NumberIn(const QByteArray& bytes, int bits) {
    qint64 number = 0;
    for (qsizetype n = 0; n < bytes.size(); ++n)
        number = number << bits | (ByteAt(bytes, n) & ((1 << bits) - 1));
    return number;
}

QByteArray Id3v2Unsynchronise(const QByteArray& bytes) {
    QByteArray out;
    for (qsizetype at = 0; at < bytes.size(); ++at) {
        out += bytes[at];
        if (ByteAt(bytes, at) != 0xFF) continue;
        const int next = at + 1 < bytes.size() ? ByteAt(bytes, at + 1) : 0;
        if (next == 0 || next >= 0xE0) out += '\0';
    }
    return out;
}

bool Id3v2HasSum(int version, const QByteArray& extension) {
    if (extension.size() < 6) return false;
    return version == 3 ? (extension[4] & 0x80) != 0 : (extension[5] & 0x20) != 0;
}

QByteArray Id3v2WithPadding(int version, const QByteArray& extension, qsizetype padding) {
    if (version != 3 || extension.size() < 10) return extension;
    return extension.first(6) + Id3v2Number(padding, 4, 8) + extension.sliced(10);
}

std::optional<Id3v2Reading> ReadId3v2(const QByteArray& tag) {
    if (tag.size() < Id3v2HeadSize || !tag.startsWith("ID3")) return {};
    const int version = ByteAt(tag, 3);
    const int flags = ByteAt(tag, 5);
    // Compressed as a whole, which never came into use.
    if (version < 2 || version > 4 || (version == 2 && (flags & Id3v2HasExtension) != 0)) return {};
    const qint64 size = Id3v2NumberIn(tag.sliced(6, 4), 7);
    if (size > tag.size() - Id3v2HeadSize) return {};
    const QByteArray plain = tag.sliced(Id3v2HeadSize, size);
    QByteArray joined = plain;
    joined.replace(QByteArray("\xFF\0", 2), QByteArray("\xFF", 1));
    // As it should be first, and then as programs wrote it.
    const bool mayBeApart = version < 4 && (flags & Id3v2Unsynchronised) != 0 && joined != plain;
    const QList<int> countings = version == 2 ? QList{8} : version == 3 ? QList{8, 7} : QList{7, 8};
    std::optional<Id3v2Reading> best;
    for (const bool isApart : {true, false}) {
        if (isApart && !mayBeApart) continue;
        for (const int bits : countings) {
            auto reading = ReadIn(isApart ? joined : plain, version, flags, bits);
            if (!reading) continue;
            reading->IsUnsynchronised = isApart;
            if (bits != countings.first() || (mayBeApart && !isApart))
                reading->OddPadding = plain.size() - reading->End;
            if (!best) {
                best = reading;
                continue;
            }
            // Two ways that both fill the tag: nobody knows which one was meant.
            if (isApart != best->IsUnsynchronised || !IsSameButZeros(*best, *reading)) return {};
            best->LeastPadding = std::max(reading->End - best->End, qsizetype{0});
        }
    }
    return best;
}

}  // namespace Sonmira

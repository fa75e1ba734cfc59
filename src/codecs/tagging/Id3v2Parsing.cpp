#include "codecs/tagging/Id3v2Parsing.h"

#include "codecs/tagging/TagProperties.h"
#include "platform/Failure.h"
#include "platform/Paths.h"

#include <QString>

#include <algorithm>
#include <string_view>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr char LatinNumber = static_cast<char>(Id3v2Text::Latin);
constexpr char MarkedNumber = static_cast<char>(Id3v2Text::Marked);
constexpr char BigEndianNumber = static_cast<char>(Id3v2Text::BigEndian);
constexpr char Utf8Number = static_cast<char>(Id3v2Text::Utf8);

bool IsWide(char encoding) {
    return encoding == MarkedNumber || encoding == BigEndianNumber;
}

bool HasMark(const QByteArray& bytes) {
    return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

// Most letters have a zero in their high byte.
bool LooksLittleEndian(const QByteArray& bytes) {
    qsizetype low = 0;
    qsizetype high = 0;
    for (qsizetype at = 0; at + 1 < bytes.size(); at += 2) {
        low += bytes[at] == '\0' ? 1 : 0;
        high += bytes[at + 1] == '\0' ? 1 : 0;
    }
    return high >= low;
}

QByteArray Marked(const QByteArray& bytes) {
    if (bytes.size() < 2 || HasMark(bytes)) return bytes;
    return (LooksLittleEndian(bytes) ? "\xFF\xFE" : "\xFE\xFF") + bytes;
}

// Where the NUL stands that ends the first text.
qsizetype EndOf(const QByteArray& bytes, char encoding) {
    if (!IsWide(encoding)) return bytes.indexOf('\0');
    for (qsizetype at = 0; at + 1 < bytes.size(); at += 2) {
        if (bytes[at] == '\0' && bytes[at + 1] == '\0') return at;
    }
    return -1;
}

}  // namespace

TagLib::String DecodeId3v2(const QByteArray& bytes, char encoding) {
    if (!IsWide(encoding)) {
        if (encoding == Utf8Number) return FromFileText(bytes);
        return {bytes.toStdString(), TagLib::String::Latin1};
    }
    const QByteArray marked = encoding == BigEndianNumber ? "\xFE\xFF" + bytes : Marked(bytes);
    return {TagLib::ByteVector(marked.constData(), static_cast<unsigned>(marked.size())),
            TagLib::String::UTF16};
}

QByteArray EncodeId3v2(const TagLib::String& text, Id3v2Text encoding) {
    const TagLib::ByteVector bytes = text.data(static_cast<TagLib::String::Type>(encoding));
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

Id3v2Text Id3v2EncodingFor(const TagLib::StringList& texts, int version, bool withoutLatin) {
    bool isLatin = !withoutLatin;
    for (const TagLib::String& text : texts) isLatin = isLatin && text.isLatin1();
    if (isLatin) return Id3v2Text::Latin;
    return version < 4 ? Id3v2Text::Marked : Id3v2Text::Utf8;
}

QList<QByteArray> SplitId3v2(const QByteArray& bytes, char encoding) {
    QList<QByteArray> texts;
    QByteArray left = bytes;
    for (auto parted = FirstOfId3v2(left, encoding); parted; parted = FirstOfId3v2(left, encoding)) {
        texts.append(parted->first);
        left = parted->second;
    }
    if (!left.isEmpty() || texts.isEmpty()) texts.append(left);
    return texts;
}

std::optional<std::pair<QByteArray, QByteArray>> FirstOfId3v2(const QByteArray& bytes, char encoding) {
    const qsizetype end = EndOf(bytes, encoding);
    if (end < 0) return {};
    return std::pair(bytes.first(end), bytes.sliced(end + (IsWide(encoding) ? 2 : 1)));
}

QByteArray RepairedId3v2Text(const QByteArray& content) {
    if (content.isEmpty()) return content;
    const QByteArray text = content.sliced(1);
    if (content[0] == MarkedNumber) return content.first(1) + Marked(text);
    if (content[0] == Utf8Number && HoldsRawBytes(FromNarrow(text))) return LatinNumber + text;
    return content;
}

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

namespace {

// Frames with frames in them; books have some hundred chapters.
constexpr int MostChapters = 1000;

// The frames of the first version that have a name today, four letters each.
constexpr std::string_view FirstVersion =
    "BUF CNT COM CRA EQU ETC GEO GP1 IPL MCI MLL MVI MVN PCS PIC POP REV RVA SLT STC TAL TBP TCM TCO TCP TCR "
    "TCT "
    "TDA TDR TDS TDY TEN TFT TID TIM TKE TLA TLE TMT TOA TOF TOL TOR TOT TP1 TP2 TP3 TP4 TPA TPB TRC TRD TRK "
    "TS2 "
    "TSA TSC TSI TSP TSS TST TT1 TT2 TT3 TXT TXX TYE UFI ULT WAF WAR WAS WCM WCP WFD WPB WXX";

// Frames that some libraries drop.
constexpr std::string_view LostByTheLibrary = "EQU RVA TDA TIM TSI EQUA RVAD TRDA TSIZ";

[[noreturn]] void Refuse() {
    throw Failure(FailureNumber::Component, u"The tag holds parts that a save would lose"_s);
}

void CheckKind(const Id3v2Frame& frame, int version, FrameKeeping keeping) {
    const std::string_view name(frame.Id.constData(), static_cast<std::size_t>(frame.Id.size()));
    const bool isLibraryAlone = keeping == FrameKeeping::OfTheLibraryAlone;
    if (version < 3 && FirstVersion.find(name) == std::string_view::npos) Refuse();
    if (isLibraryAlone && LostByTheLibrary.find(name) != std::string_view::npos) Refuse();
    if (version < 3) return;
    // Marked for programs that do not know such a frame.
    const int marked = version == 3 ? 0x80 : 0x40;
    if (isLibraryAlone && (ByteAt(frame.Bytes, 8) & marked) != 0) Refuse();
    // Encrypted frames and those of a group hang together with others.
    const int flags = ByteAt(frame.Bytes, 9);
    const int apart = version == 3 ? 0x40 | 0x20 : 0x40 | 0x04;
    if ((flags & apart) != 0) Refuse();
}

}  // namespace

bool IsNestedTooDeep(const QByteArray& tag) {
    return tag.count("CHAP") + tag.count("CTOC") > MostChapters;
}

void CheckFramesAreKept(const QByteArray& tag, FrameKeeping keeping) {
    if (tag.size() < Id3v2HeadSize || tag.size() != Id3v2Size(tag)) Refuse();
    const auto reading = ReadId3v2(tag);
    if (!reading) Refuse();
    for (const Id3v2Frame& frame : reading->Frames) CheckKind(frame, ByteAt(tag, 3), keeping);
}

void CheckSoundFollows(const QByteArray& behind) {
    const auto at = std::find_if(behind.begin(), behind.end(), [](char c) { return c != '\0'; });
    const QByteArray next = behind.sliced(at - behind.begin());
    const auto byte = [&](qsizetype place) { return place < next.size() ? ByteAt(next, place) : 0; };
    const bool isSynchronised = (byte(0) == 0xFF || byte(0) == 0x56) && (byte(1) & 0xE0) == 0xE0;
    constexpr const char* Marks[] = {"TAG", "APETAGEX", "LYRICSBEGIN", "ADIF", "RIFF", "fLaC"};
    const bool isKnown = std::any_of(std::begin(Marks), std::end(Marks),
                                     [&](const char* mark) { return next.startsWith(mark); });
    if (!next.isEmpty() && !isSynchronised && !isKnown) Refuse();
}

}  // namespace Sonmira

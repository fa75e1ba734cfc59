#include "codecs/tagging/Id3v2Texts.h"

#include "codecs/tagging/TagProperties.h"
#include "platform/NarrowText.h"

namespace Sonmira {

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

}  // namespace Sonmira

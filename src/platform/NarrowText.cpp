#include "platform/NarrowText.h"

namespace Sonmira {

namespace {

constexpr char16_t FirstRawByte = 0xDC80;
constexpr char16_t LastRawByte = 0xDCFF;

bool IsContinuation(uchar byte) {
    return (byte & 0xC0) == 0x80;
}

struct Decoded {
    char32_t CodePoint = 0;
    qsizetype Length = 0;  // 0 where the bytes are no valid character
};

// The character of two to four bytes that starts at `at`, in its shortest form only.
Decoded DecodeLong(QByteArrayView bytes, qsizetype at) {
    const auto lead = static_cast<uchar>(bytes[at]);
    qsizetype length = 0;
    char32_t smallest = 0;
    char32_t value = 0;
    if ((lead & 0xE0) == 0xC0) {
        length = 2, smallest = 0x80, value = lead & 0x1FU;
    } else if ((lead & 0xF0) == 0xE0) {
        length = 3, smallest = 0x800, value = lead & 0x0FU;
    } else if ((lead & 0xF8) == 0xF0) {
        length = 4, smallest = 0x10000, value = lead & 0x07U;
    } else {
        return {};
    }
    if (bytes.size() - at < length) return {};
    for (qsizetype i = 1; i < length; ++i) {
        const auto byte = static_cast<uchar>(bytes[at + i]);
        if (!IsContinuation(byte)) return {};
        value = (value << 6) | (byte & 0x3FU);
    }
    if (value < smallest || value > 0x10FFFF || QChar::isSurrogate(value)) return {};
    return {value, length};
}

void AppendEncoded(QByteArray& bytes, char32_t value) {
    const auto add = [&](char32_t byte) { bytes.append(static_cast<char>(byte)); };
    if (value < 0x80) {
        add(value);
    } else if (value < 0x800) {
        add(0xC0 | (value >> 6));
        add(0x80 | (value & 0x3F));
    } else if (value < 0x10000) {
        add(0xE0 | (value >> 12));
        add(0x80 | ((value >> 6) & 0x3F));
        add(0x80 | (value & 0x3F));
    } else {
        add(0xF0 | (value >> 18));
        add(0x80 | ((value >> 12) & 0x3F));
        add(0x80 | ((value >> 6) & 0x3F));
        add(0x80 | (value & 0x3F));
    }
}

bool IsPairAt(QStringView text, qsizetype at) {
    return text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
}

}  // namespace

QByteArray ToNarrow(QStringView text) {
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at].unicode();
        if (IsPairAt(text, at)) {
            AppendEncoded(bytes, QChar::surrogateToUcs4(text[at], text[at + 1]));
            ++at;
        } else if (unit >= FirstRawByte && unit <= LastRawByte) {
            bytes.append(static_cast<char>(unit & 0xFF));
        } else {
            AppendEncoded(bytes, QChar::isSurrogate(unit) ? char16_t{QChar::ReplacementCharacter} : unit);
        }
    }
    return bytes;
}

// Qt's own decoder drops a byte order mark at the start and replaces what is invalid, so that the bytes
// could not come back.
QString FromNarrow(QByteArrayView bytes) {
    QString text;
    text.reserve(bytes.size());
    for (qsizetype at = 0; at < bytes.size();) {
        const auto byte = static_cast<uchar>(bytes[at]);
        if (byte < 0x80) {
            text.append(QChar(char16_t{byte}));
            ++at;
            continue;
        }
        const Decoded decoded = DecodeLong(bytes, at);
        if (decoded.Length == 0) {
            text.append(QChar(static_cast<char16_t>(0xDC00 | byte)));
            ++at;
        } else {
            text.append(QChar::fromUcs4(decoded.CodePoint));
            at += decoded.Length;
        }
    }
    return text;
}

bool HoldsRawBytes(QStringView text) {
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (IsPairAt(text, at)) {
            ++at;
        } else if (text[at].isSurrogate()) {
            return true;
        }
    }
    return false;
}

}  // namespace Sonmira

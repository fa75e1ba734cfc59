#include "platform/Paths.h"

#include "platform/Dialogs.h"
#include "platform/Folders.h"

#include <QUrl>

namespace Sonmira {

using namespace Qt::StringLiterals;

QString FileNameOf(const QString& path) {
    const qsizetype backslash = path.lastIndexOf(u'\\');
    return backslash < 0 ? QString() : path.sliced(backslash + 1);
}

QString FolderOf(const QString& path) {
    return path.first(path.lastIndexOf(u'\\') + 1);
}

QString ExtensionOf(const QString& path) {
    const qsizetype dot = path.lastIndexOf(u'.');
    return dot < 0 ? u"zzz"_s : path.sliced(dot);
}

bool FileExists(const QString& path) {
    if (path.isEmpty() || path.endsWith(u'\\')) return false;
    return !FindFirstName(path, SearchFor::VisibleFiles).isEmpty();
}

bool DirectoryExists(const QString& path) {
    QString name = path;
    if (name.endsWith(u'\\')) name.chop(1);
    // Without its backslash a root has no name to look for.
    if (name.isEmpty() || (name.size() == 2 && name[1] == u':')) name = path;
    return !FindFirstName(name, SearchFor::FilesAndFolders).isEmpty();
}

bool FolderExists(const QString& path) {
    return IsFolder(path);
}

bool IsDriveRoot(const QString& path) {
    constexpr qsizetype Longest = 3;
    constexpr qsizetype Drive = 2;
    const bool hasDrive = path.size() >= Drive && path[1] == u':';
    return path.size() + (hasDrive ? 0 : Drive) <= Longest;
}

QString GetSpecialFolder(int number) {
    const QString folder = GetKnownFolder(number);
    return folder.isEmpty() ? ProgramFolder() : folder;
}

QString GetKnownFolder(int number) {
    switch (number) {
        case DesktopFolderNumber:
            return DesktopFolder();
        case ApplicationDataFolderNumber:
            return ApplicationDataFolder();
        default:
            return {};
    }
}

QString BrowseForFolder(const QString& title) {
    return Dialogs().BrowseForFolder(title);
}

QString WithBackslash(const QString& path) {
    return path.endsWith(u'\\') ? path : path + u'\\';
}

bool EndsInUpper(const QString& path, QStringView upperTail) {
    return path.right(upperTail.size()).toUpper() == upperTail;
}

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

namespace {

constexpr char16_t LiteralBackslash = 0xF05C;
// U+F05C as UTF-8. A native name that holds these bytes would come out as a backslash.
constexpr QByteArrayView LiteralBackslashBytes = "\xEF\x81\x9C";

// A name such as "A: first.mp3" has no drive: a drive's colon is followed by a separator or by nothing.
QStringView WithoutDrive(QStringView path) {
    if (path.size() < 2 || path[1] != u':') return path;
    const char16_t letter = path[0].toUpper().unicode();
    if (letter < u'A' || letter > u'Z') return path;
    if (path.size() > 2 && path[2] != u'\\' && path[2] != u'/') return path;
    return path.sliced(2);
}

// Bytes of a name, in which a separator no longer occurs.
void AppendName(QString& path, QByteArrayView name) {
    const auto appendPlain = [&](QByteArrayView plain) {
        path += FromNarrow(plain).replace(u'\\', QChar(LiteralBackslash));
    };
    for (qsizetype at = name.indexOf(LiteralBackslashBytes); at >= 0;
         at = name.indexOf(LiteralBackslashBytes)) {
        appendPlain(name.first(at));
        for (const char byte : LiteralBackslashBytes) {
            path += QChar(static_cast<char16_t>(0xDC00 | static_cast<uchar>(byte)));
        }
        name = name.sliced(at + LiteralBackslashBytes.size());
    }
    appendPlain(name);
}

}  // namespace

QByteArray ToNative(QStringView path) {
    // A system call would stop at the zero character and act on another file.
    if (path.contains(QChar(u'\0'))) return {};
    return ToNarrow(ShownPath(path));
}

QString FromNative(QByteArrayView bytes) {
    if (bytes == QByteArrayView("/")) return u"Z:\\"_s;
    QString path;
    path.reserve(bytes.size());
    while (true) {
        const qsizetype separator = bytes.indexOf('/');
        AppendName(path, separator < 0 ? bytes : bytes.first(separator));
        if (separator < 0) return path;
        path += u'\\';
        bytes = bytes.sliced(separator + 1);
    }
}

QString ShownPath(QStringView path) {
    QString shown = WithoutDrive(path).toString();
    for (QChar& c : shown) {
        if (c == u'\\') {
            c = u'/';
        } else if (c == QChar(LiteralBackslash)) {
            c = u'\\';
        }
    }
    return shown;
}

QString ShownName(QStringView name) {
    return name.toString().replace(QChar(LiteralBackslash), u'\\');
}

QString PathFromShown(QStringView shown) {
    QString path = shown.toString().replace(u'/', u'\\');
    return path == u"\\" ? u"Z:\\"_s : path;
}

QString PathFromUrl(const QUrl& url) {
    if (url.scheme().compare(u"file", Qt::CaseInsensitive) != 0) return {};
    if (!url.host().isEmpty() && url.host().compare(u"localhost", Qt::CaseInsensitive) != 0) return {};
    // Only the encoded form still has the bytes that are no valid UTF-8.
    QByteArray native = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    // A folder's address may end in a separator, its path does not.
    while (native.size() > 1 && native.endsWith('/')) native.chop(1);
    if (!native.startsWith('/') || native.contains('\0')) return {};
    return FromNative(native);
}

}  // namespace Sonmira

#include "platform/NativePath.h"

#include "platform/NarrowText.h"

#include <QUrl>

namespace Sonmira {

using namespace Qt::StringLiterals;

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

#pragma once

#include <QByteArray>
#include <QString>

class QUrl;

namespace Sonmira {

// Text is wide inside the system and narrow (UTF-8) at every border. A byte that is no valid UTF-8
// travels inside as the lone surrogate U+DC80 to U+DCFF (0xDC00 | byte) and goes out unchanged, so
// that any byte sequence makes the round trip.

QByteArray ToNarrow(QStringView text);
QString FromNarrow(QByteArrayView bytes);

// Whether the text came from bytes that are no valid UTF-8, that is, holds a lone surrogate.
bool HoldsRawBytes(QStringView text);

// The only place where a path changes between its two forms.
//
// Inside, a path is backslash-separated text. Outside, it is the bytes that the file system knows:
// "/" and "\" swap; a literal backslash of a native name is U+F05C inside; the root of the file system
// is "Z:\" inside, so that it never equals the key of the tree's root; a drive prefix ("Z:") is dropped
// on the way out; a "/" that a user typed counts as a separator.

QByteArray ToNative(QStringView path);
QString FromNative(QByteArrayView bytes);

// The form that people read (a path box, the status bar): separators as the desktop writes them.
QString ShownPath(QStringView path);
// The form of one name, such as a file's, that people read.
QString ShownName(QStringView name);
// What a user typed into a path box, as an inner path.
QString PathFromShown(QStringView shown);

// The inner path of a dropped or picked file URL; empty for anything that is no local file. Keeps bytes
// that are no valid UTF-8 and accepts "file://localhost/...".
QString PathFromUrl(const QUrl& url);

}  // namespace Sonmira

#pragma once

#include <QByteArray>
#include <QString>

class QUrl;

namespace Sonmira {

// The path routines that everybody uses. Paths are inner paths: backslash-separated text. No routine
// changes case or normalises a path, and each has odd corners that callers rely on.

// The text behind the last backslash. Empty without a backslash: a bare name has no file name here.
QString FileNameOf(const QString& path);

// The text up to and with the last backslash; empty without one.
QString FolderOf(const QString& path);

// The text from the last "." on, dot included, case as it stands; "zzz" without a dot. The search does not
// stop at a backslash.
QString ExtensionOf(const QString& path);

// Whether a visible file of that name exists. False for the empty text and for a trailing backslash;
// wildcards in the last component act as a pattern.
bool FileExists(const QString& path);

// Whether a folder, or a file, of that name exists; one trailing backslash is ignored.
bool DirectoryExists(const QString& path);

// True for folders only.
bool FolderExists(const QString& path);

// Whether the path is the root of a drive. It is told by its length, as the system always told it, but with
// the drive in front: "\hd" is a folder of the drive that the file system is shown as.
bool IsDriveRoot(const QString& path);

// The numbers of the special folders that the system asks for.
inline constexpr int DesktopFolderNumber = 16;
inline constexpr int ApplicationDataFolderNumber = 26;

// The special folder of that number, or the program's own folder when there is none.
QString GetSpecialFolder(int number);

// The special folder of that number, or the empty text.
QString GetKnownFolder(int number);

// Asks the user for a folder; the empty text when cancelled.
QString BrowseForFolder(const QString& title);

// The path with a backslash behind it unless it ends in one.
QString WithBackslash(const QString& path);

// Whether the path ends in `tail`, compared in upper case.
bool EndsInUpper(const QString& path, QStringView upperTail);

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

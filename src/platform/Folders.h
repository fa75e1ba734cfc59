#pragma once

#include <QString>

#include <optional>
#include <utility>
#include <vector>

namespace Sonmira {

// The well-known folders. All are inner paths without a trailing backslash unless said otherwise; none
// is made here except by CreateFolder.

// The folder of the running program.
QString ProgramFolder();

// The per-user application data folder: $XDG_CONFIG_HOME, else ~/.config, which is made when it is
// missing. Empty when neither can be had: a set variable that names no folder counts as missing.
QString ApplicationDataFolder();

// The XDG desktop folder where it exists, else the home folder; empty when there is neither.
QString DesktopFolder();

// The library folder of the program, in which the MP3 encoder library must lie: lib/sonmira beside the folder
// of the running program, as in /usr/bin and /usr/lib/sonmira. Ends without a backslash.
QString EncoderSystemFolder();
// For tests: makes EncoderSystemFolder answer `folder`; the empty text goes back to the real one.
void OverrideEncoderSystemFolder(const QString& folder);

// Makes one folder (one level only, mode 0777 less the umask). Returns whether it was made; an existing
// folder or a missing parent gives false.
bool CreateFolder(QStringView path);

// Looking for names in folders. A name that starts with a dot is a hidden entry.

enum class SearchFor {
    VisibleFiles,     // files that are not hidden
    FilesAndFolders,  // every entry, hidden ones too
};

// The name (last component) of the first entry that `pattern` matches, else the empty text. "*" and "?"
// in the last component act as a pattern; the literal name is tried before that. A link counts as what it
// leads to; a dangling link counts as nothing. A trailing separator matches nothing, except that the root
// of the file system ("Z:\", "\") is found by FilesAndFolders and answers ".".
QString FindFirstName(QStringView pattern, SearchFor what);

// True for an existing folder only (or a link to one). The empty path is no folder.
bool IsFolder(QStringView path);

struct FolderEntry {
    QString Name;
    bool IsFolder = false;
    bool IsHidden = false;
};

// All entries of a folder except "." and "..", sorted by upper-cased name (then by name), files and
// folders mixed. Links count as what they lead to; a dangling link is listed as a file. A folder that
// cannot be read, or is none, gives an empty list.
std::vector<FolderEntry> ListFolder(QStringView path);

// What makes a folder the same folder by whatever path it was reached: device and inode.
using FolderIdentity = std::pair<quint64, quint64>;
std::optional<FolderIdentity> IdentityOf(QStringView path);

}  // namespace Sonmira

#include "platform/Paths.h"

#include "platform/Dialogs.h"
#include "platform/FileSearch.h"
#include "platform/Folders.h"

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

}  // namespace Sonmira

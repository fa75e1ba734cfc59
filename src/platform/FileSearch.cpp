#include "platform/FileSearch.h"

#include "platform/NativePath.h"

#include <dirent.h>
#include <sys/stat.h>

#include <memory>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

std::optional<struct stat> StatusOf(const QByteArray& native) {
    struct stat status {};
    if (stat(native.constData(), &status) != 0) return {};
    return status;
}

bool IsHiddenName(QStringView name) {
    return name.startsWith(u'.');
}

bool IsLookedFor(const QByteArray& native, QStringView name, SearchFor what) {
    const auto status = StatusOf(native);
    if (!status) return false;
    return what == SearchFor::FilesAndFolders || (!S_ISDIR(status->st_mode) && !IsHiddenName(name));
}

// "*" stands for any text, "?" for one character. Keeps the place behind the last "*" to go back to, so
// that the time stays bounded.
bool Matches(QStringView name, QStringView pattern) {
    const auto step = [&](qsizetype at) {
        const bool isPair =
            name[at].isHighSurrogate() && at + 1 < name.size() && name[at + 1].isLowSurrogate();
        return at + (isPair ? 2 : 1);
    };
    qsizetype inName = 0;
    qsizetype inPattern = 0;
    qsizetype behindStar = -1;
    qsizetype retryAt = 0;
    while (inName < name.size()) {
        if (inPattern < pattern.size() && pattern[inPattern] == u'*') {
            behindStar = ++inPattern;
            retryAt = inName;
        } else if (inPattern < pattern.size() && pattern[inPattern] == u'?') {
            inName = step(inName);
            ++inPattern;
        } else if (inPattern < pattern.size() && pattern[inPattern] == name[inName]) {
            ++inName;
            ++inPattern;
        } else if (behindStar >= 0) {
            retryAt = step(retryAt);
            inName = retryAt;
            inPattern = behindStar;
        } else {
            return false;
        }
    }
    while (inPattern < pattern.size() && pattern[inPattern] == u'*') ++inPattern;
    return inPattern == pattern.size();
}

bool LeadsToFolder(const QByteArray& native) {
    const auto status = StatusOf(native);
    return status && S_ISDIR(status->st_mode);
}

struct SortedEntry {
    QString Key;
    FolderEntry Entry;
};

}  // namespace

QString FindFirstName(QStringView pattern, SearchFor what) {
    const QByteArray native = ToNative(pattern);
    if (native == "/") return what == SearchFor::FilesAndFolders ? u"."_s : QString();
    const qsizetype nameStart = native.lastIndexOf('/') + 1;
    QString wanted = FromNative(native.sliced(nameStart));
    if (wanted.isEmpty()) return {};
    if (IsLookedFor(native, wanted, what)) return wanted;
    if (!wanted.contains(u'*') && !wanted.contains(u'?')) return {};

    const QString folder = FromNative(nameStart == 0 ? QByteArray("./") : native.first(nameStart));
    const QStringView namePattern = wanted == u"*.*" ? QStringView(u"*") : QStringView(wanted);
    for (const FolderEntry& entry : ListFolder(folder)) {
        if (Matches(entry.Name, namePattern) &&
            IsLookedFor(ToNative(folder + entry.Name), entry.Name, what)) {
            return entry.Name;
        }
    }
    return {};
}

bool IsFolder(QStringView path) {
    return LeadsToFolder(ToNative(path));
}

std::vector<FolderEntry> ListFolder(QStringView path) {
    QByteArray native = ToNative(path);
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(native.constData()), &closedir);
    if (!folder) return {};
    if (!native.endsWith('/')) native += '/';

    std::vector<SortedEntry> sorted;
    while (const dirent* found = readdir(folder.get())) {
        const QByteArray name(found->d_name);
        if (name == "." || name == "..") continue;
        // Most file systems tell the kind along with the name, which saves a call for each entry.
        const bool isTold = found->d_type != DT_LNK && found->d_type != DT_UNKNOWN;
        FolderEntry entry{FromNative(name), isTold ? found->d_type == DT_DIR : LeadsToFolder(native + name),
                          name.startsWith('.')};
        QString key = entry.Name.toUpper();
        sorted.push_back({std::move(key), std::move(entry)});
    }
    std::sort(sorted.begin(), sorted.end(), [](const SortedEntry& a, const SortedEntry& b) {
        const int order = a.Key.compare(b.Key);
        return order != 0 ? order < 0 : a.Entry.Name < b.Entry.Name;
    });

    std::vector<FolderEntry> entries;
    entries.reserve(sorted.size());
    for (SortedEntry& entry : sorted) entries.push_back(std::move(entry.Entry));
    return entries;
}

std::optional<FolderIdentity> IdentityOf(QStringView path) {
    const auto status = StatusOf(ToNative(path));
    if (!status || !S_ISDIR(status->st_mode)) return {};
    return FolderIdentity{status->st_dev, status->st_ino};
}

}  // namespace Sonmira

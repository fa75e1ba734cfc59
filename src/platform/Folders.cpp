#include "platform/Folders.h"

#include "platform/Files.h"
#include "platform/Paths.h"

#include <QList>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <memory>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

QString overriddenEncoderFolder;

QByteArray Environment(const char* name) {
    return {getenv(name)};
}

QByteArray WithoutLastSeparators(QByteArray native) {
    while (native.size() > 1 && native.endsWith('/')) native.chop(1);
    return native;
}

// The inner path of a folder that exists, else the empty text. A relative name means nothing here: it
// would name another folder with each working directory.
QString ExistingFolder(const QByteArray& native) {
    if (!native.startsWith('/')) return {};
    QString path = FromNative(WithoutLastSeparators(native));
    return IsFolder(path) ? path : QString();
}

QString FolderOfFile(const QByteArray& native) {
    const qsizetype separator = native.lastIndexOf('/');
    return separator < 0 ? QString() : FromNative(native.first(std::max<qsizetype>(separator, 1)));
}

// What stands between the quotes of a line XDG_DESKTOP_DIR="...", as a shell would read it. The file may
// be sourced by a shell, where the last such line counts.
QByteArray DesktopOf(const QByteArray& userFolders, const QByteArray& home) {
    constexpr QByteArrayView Start = "XDG_DESKTOP_DIR=\"";
    constexpr QByteArrayView Home = "$HOME";
    QByteArray desktop;
    for (const QByteArray& line : userFolders.split('\n')) {
        QByteArray text = line.trimmed();
        if (!text.startsWith(Start) || !text.endsWith('"') || text.size() <= Start.size()) continue;
        text = text.sliced(Start.size()).chopped(1);
        const bool isBelowHome = text.startsWith(Home);
        if (isBelowHome) text = text.sliced(Home.size());
        QByteArray plain;
        for (qsizetype i = 0; i < text.size(); ++i) {
            if (text[i] == '\\' && i + 1 < text.size()) ++i;
            plain += text[i];
        }
        desktop = isBelowHome ? home + plain : plain;
    }
    return desktop;
}

}  // namespace

QString ProgramFolder() {
    QByteArray program(PATH_MAX, '\0');
    const ssize_t size = readlink("/proc/self/exe", program.data(), static_cast<size_t>(program.size()));
    if (size <= 0) return {};
    program.truncate(size);
    return FolderOfFile(program);
}

QString ApplicationDataFolder() {
    const QByteArray configured = Environment("XDG_CONFIG_HOME");
    if (!configured.isEmpty()) return ExistingFolder(configured);
    const QByteArray home = Environment("HOME");
    if (!home.startsWith('/')) return {};
    const QByteArray usual = WithoutLastSeparators(home) + "/.config";
    // Settings are nobody else's business, hence the mode.
    mkdir(usual.constData(), 0700);
    return ExistingFolder(usual);
}

QString DesktopFolder() {
    const QByteArray home = WithoutLastSeparators(Environment("HOME"));
    QByteArray config = Environment("XDG_CONFIG_HOME");
    if (config.isEmpty()) config = home + "/.config";
    const QByteArray userFolders = ReadFileBytes(config + "/user-dirs.dirs").value_or(QByteArray());
    const QByteArray configured = DesktopOf(userFolders, home);
    const QString desktop = ExistingFolder(configured.isEmpty() ? home + "/Desktop" : configured);
    return desktop.isEmpty() ? ExistingFolder(home) : desktop;
}

QString EncoderSystemFolder() {
    if (!overriddenEncoderFolder.isEmpty()) return overriddenEncoderFolder;
    const QString programs = ProgramFolder();
    return programs.first(std::max<qsizetype>(programs.lastIndexOf(u'\\'), 0)) + u"\\lib\\sonmira"_s;
}

void OverrideEncoderSystemFolder(const QString& folder) {
    overriddenEncoderFolder = folder;
}

bool CreateFolder(QStringView path) {
    return mkdir(ToNative(path).constData(), 0777) == 0;
}

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

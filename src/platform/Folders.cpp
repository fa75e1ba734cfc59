#include "platform/Folders.h"

#include "platform/FileBytes.h"
#include "platform/FileSearch.h"
#include "platform/NativePath.h"

#include <QList>

#include <dlfcn.h>
#include <link.h>
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

QString ResolvedFolderOfFile(const char* native) {
    const std::unique_ptr<char, decltype(&free)> resolved(realpath(native, nullptr), &free);
    return resolved ? FolderOfFile(resolved.get()) : QString();
}

// The folder of the C library, which is the one that the loader searches for libraries of its own kind.
QString LibraryFolder() {
    void* library = dlopen("libc.so.6", RTLD_LAZY | RTLD_NOLOAD);
    if (library == nullptr) return {};
    const link_map* map = nullptr;
    QString folder;
    if (dlinfo(library, RTLD_DI_LINKMAP, static_cast<void*>(&map)) == 0 && map != nullptr) {
        folder = ResolvedFolderOfFile(map->l_name);
    }
    dlclose(library);
    return folder;
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
    return overriddenEncoderFolder.isEmpty() ? LibraryFolder() : overriddenEncoderFolder;
}

void OverrideEncoderSystemFolder(const QString& folder) {
    overriddenEncoderFolder = folder;
}

bool CreateFolder(QStringView path) {
    return mkdir(ToNative(path).constData(), 0777) == 0;
}

}  // namespace Sonmira

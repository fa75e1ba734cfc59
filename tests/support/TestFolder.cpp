#include "support/TestFolder.h"

#include "platform/Paths.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace Sonmira {

namespace fs = std::filesystem;

namespace {
fs::path AsPath(const QByteArray& native) {
    return fs::path(native.toStdString());
}
}  // namespace

TestFolder::TestFolder() {
    std::string pattern = (fs::temp_directory_path() / "sonmira-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no temporary folder");
    Root = QByteArray::fromStdString(pattern);
}

TestFolder::~TestFolder() {
    std::error_code ignored;
    for (auto it = fs::recursive_directory_iterator(AsPath(Root), ignored);
         it != fs::recursive_directory_iterator(); it.increment(ignored)) {
        if (ignored) break;
        if (it->is_directory(ignored) && !it->is_symlink(ignored)) {
            fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
        }
    }
    fs::remove_all(AsPath(Root), ignored);
}

QByteArray TestFolder::Native(const QByteArray& name) const {
    return name.isEmpty() ? Root : Root + '/' + name;
}

QString TestFolder::Path(const QByteArray& name) const {
    return FromNative(Native(name));
}

QString TestFolder::MakeFolder(const QByteArray& name) const {
    fs::create_directories(AsPath(Native(name)));
    return Path(name);
}

QString TestFolder::MakeFile(const QByteArray& name, const QByteArray& content) const {
    const fs::path path = AsPath(Native(name));
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary).write(content.constData(), content.size());
    return Path(name);
}

QString Anew(const QString& path) {
    const fs::path native = AsPath(ToNative(path));
    if (fs::is_regular_file(fs::symlink_status(native))) fs::remove(native);
    return path;
}

QByteArray ContentOf(const QByteArray& nativePath) {
    std::ifstream file(AsPath(nativePath), std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return QByteArray::fromStdString(content.str());
}

bool NativeExists(const QByteArray& nativePath) {
    return fs::exists(fs::symlink_status(AsPath(nativePath)));
}

}  // namespace Sonmira

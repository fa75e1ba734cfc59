#include "platform/ProfileFile.h"

#include "platform/Files.h"
#include "platform/Paths.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <thread>

namespace Sonmira {

namespace {

constexpr QByteArrayView ByteOrderMark = "\xEF\xBB\xBF";

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

QByteArrayView Trimmed(QByteArrayView text) {
    while (!text.isEmpty() && IsBlank(text.front())) text = text.sliced(1);
    while (!text.isEmpty() && IsBlank(text.back())) text.chop(1);
    return text;
}

// The name in "[name]"; nothing for any other line.
std::optional<QByteArrayView> SectionNameOf(QByteArrayView line) {
    line = Trimmed(line);
    if (!line.startsWith('[')) return {};
    const qsizetype close = line.lastIndexOf(']');
    if (close < 0) return {};
    return Trimmed(line.first(close).sliced(1));
}

// The key in "key=value"; nothing for any other line.
std::optional<QByteArrayView> KeyOf(QByteArrayView line) {
    line = Trimmed(line);
    if (line.startsWith(';') || SectionNameOf(line)) return {};
    const qsizetype equals = line.indexOf('=');
    if (equals < 0) return {};
    return Trimmed(line.first(equals));
}

bool IsSameName(QByteArrayView found, QStringView wanted) {
    return FromNarrow(found).trimmed().compare(wanted.trimmed(), Qt::CaseInsensitive) == 0;
}

QByteArray OnOneLine(QByteArray text) {
    return text.replace('\r', ' ').replace('\n', ' ');
}

}  // namespace

ProfileText::ProfileText(QByteArrayView content) {
    if (content.startsWith(ByteOrderMark)) {
        Mark = ByteOrderMark.toByteArray();
        content = content.sliced(ByteOrderMark.size());
    }
    while (!content.isEmpty()) {
        const qsizetype feed = content.indexOf('\n');
        const qsizetype size = feed < 0 ? content.size() : feed + 1;
        qsizetype text = feed < 0 ? size : feed;
        if (feed > 0 && content[feed - 1] == '\r') --text;
        Lines.push_back({content.first(text).toByteArray(), content.first(size).sliced(text).toByteArray()});
        content = content.sliced(size);
    }
    if (!Lines.empty() && !Lines.front().End.isEmpty()) LineEnd = Lines.front().End;
}

std::optional<ProfileText::Place> ProfileText::FindSection(QStringView name) const {
    std::optional<Place> place;
    for (size_t i = 0; i < Lines.size(); ++i) {
        const auto found = SectionNameOf(Lines[i].Text);
        if (!found) continue;
        if (place) return Place{place->First, i};
        if (IsSameName(*found, name)) place = Place{i + 1, Lines.size()};
    }
    return place;
}

std::optional<size_t> ProfileText::FindKey(Place section, QStringView key) const {
    for (size_t i = section.First; i < section.Last; ++i) {
        const auto found = KeyOf(Lines[i].Text);
        if (found && IsSameName(*found, key)) return i;
    }
    return {};
}

std::optional<QByteArray> ProfileText::Value(QStringView section, QStringView key) const {
    const auto place = FindSection(section);
    const auto line = place ? FindKey(*place, key) : std::nullopt;
    if (!line) return {};
    const QByteArrayView text = Lines[*line].Text;
    return Trimmed(text.sliced(text.indexOf('=') + 1)).toByteArray();
}

bool ProfileText::SetValue(QStringView section, QStringView key, QByteArrayView value) {
    const QByteArray header = '[' + ToNarrow(section) + ']';
    const QByteArray name = ToNarrow(key);
    const QByteArray line = name + '=';
    // With its value: behind a key that opens a bracket the value may close it.
    const QByteArray text = line + OnOneLine(value.toByteArray());
    const auto readSection = SectionNameOf(header);
    const auto readKey = KeyOf(text);
    if (header != OnOneLine(header) || name != OnOneLine(name)) return false;
    if (!readSection || !IsSameName(*readSection, section)) return false;
    if (!readKey || readKey->isEmpty() || !IsSameName(*readKey, key)) return false;

    const auto place = FindSection(section);
    if (!place) {
        InsertLine(Lines.size(), header);
        InsertLine(Lines.size(), text);
    } else if (const auto found = FindKey(*place, key)) {
        // No blank is kept behind the "=": values that start with one would grow with each write.
        QByteArray& old = Lines[*found].Text;
        old = old.first(old.indexOf('=') + 1) + text.sliced(line.size());
    } else {
        size_t at = place->Last;
        while (at > place->First && Trimmed(Lines[at - 1].Text).isEmpty()) --at;
        InsertLine(at, text);
    }
    return true;
}

void ProfileText::InsertLine(size_t at, QByteArray text) {
    if (at > 0 && Lines[at - 1].End.isEmpty()) Lines[at - 1].End = LineEnd;
    Lines.insert(Lines.begin() + static_cast<std::ptrdiff_t>(at), {std::move(text), LineEnd});
}

QByteArray ProfileText::Content() const {
    QByteArray content = Mark;
    for (const Line& line : Lines) content += line.Text + line.End;
    return content;
}

namespace {

// Another instance holds the lock for one short write. One that was stopped in the middle must not stop
// this one as well.
constexpr auto LongestWait = std::chrono::seconds(10);

// An open folder, which is closed and thereby unlocked at the end.
class FolderHandle {
public:
    explicit FolderHandle(const QByteArray& native)
        : Descriptor(open(native.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}
    ~FolderHandle() {
        if (Descriptor >= 0) close(Descriptor);
    }
    FolderHandle(const FolderHandle&) = delete;
    FolderHandle& operator=(const FolderHandle&) = delete;

    // The folder itself carries the lock, so that no lock file is left lying about. True also where the
    // file system knows no locks.
    bool Lock() const {
        if (Descriptor < 0) return false;
        const auto end = std::chrono::steady_clock::now() + LongestWait;
        while (flock(Descriptor, LOCK_EX | LOCK_NB) != 0) {
            if (errno == EINTR) continue;
            if (errno != EWOULDBLOCK) return true;
            if (std::chrono::steady_clock::now() > end) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return true;
    }

    const int Descriptor;
};

QByteArray FolderPart(const QByteArray& native) {
    const qsizetype separator = native.lastIndexOf('/');
    if (separator < 0) return ".";
    return native.first(std::max<qsizetype>(separator, 1));
}

// The file that a chain of links ends at, there or not.
QByteArray ResolveLinks(QByteArray native) {
    constexpr int LongestChain = 40;
    for (int i = 0; i < LongestChain; ++i) {
        QByteArray target(PATH_MAX, '\0');
        const ssize_t size = readlink(native.constData(), target.data(), static_cast<size_t>(target.size()));
        if (size <= 0) return native;
        target.truncate(size);
        native = target.startsWith('/') ? target : FolderPart(native) + '/' + target;
    }
    return {};
}

// Puts `content` in the place of `name` by way of a temporary file, so that neither a crash nor a full
// disk leaves half a file.
bool Replace(int folder, const QByteArray& name, const QByteArray& content, std::optional<mode_t> mode) {
    static std::atomic<unsigned> count = 0;
    const QByteArray temporary =
        ".sonmira-" + QByteArray::number(getpid()) + '-' + QByteArray::number(count++) + ".tmp";
    const int file =
        openat(folder, temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (file < 0) return false;
    bool isWritten = !mode || fchmod(file, *mode) == 0;
    isWritten = isWritten && WriteAll(file, content);
    isWritten = close(file) == 0 && isWritten;
    isWritten = isWritten && renameat(folder, temporary.constData(), folder, name.constData()) == 0;
    if (!isWritten) unlinkat(folder, temporary.constData(), 0);
    return isWritten;
}

// Half a pair would go out as another character (a high half) or as a byte (a low one), and what is read here
// is mostly the path of a folder, which then were another one's.
QString CutToLongest(QString value) {
    if (value.size() <= LongestProfileValue) return value;
    const bool isPair =
        value[LongestProfileValue - 1].isHighSurrogate() && value[LongestProfileValue].isLowSurrogate();
    value.truncate(isPair ? LongestProfileValue - 1 : LongestProfileValue);
    return value;
}

}  // namespace

QString ReadProfileValue(QStringView file, QStringView section, QStringView key) {
    const auto content = ReadFileBytes(ToNative(file));
    if (!content) return {};
    const auto value = ProfileText(*content).Value(section, key);
    return value ? CutToLongest(FromNarrow(*value)) : QString();
}

bool WriteProfileValue(QStringView file, QStringView section, QStringView key, QStringView value) {
    const QByteArray native = ResolveLinks(ToNative(file));
    const QByteArray name = native.sliced(native.lastIndexOf('/') + 1);
    if (name.isEmpty()) return false;
    const FolderHandle folder(FolderPart(native));
    if (!folder.Lock()) return false;

    const auto content = ReadFileBytes(native);
    if (!content && errno != ENOENT) return false;
    std::optional<mode_t> mode;
    if (content) {
        // A rename would get past a file's own write protection.
        if (faccessat(folder.Descriptor, name.constData(), W_OK, AT_EACCESS) != 0) return false;
        struct stat status {};
        if (fstatat(folder.Descriptor, name.constData(), &status, 0) != 0) return false;
        mode = status.st_mode & 07777U;
    }
    ProfileText text(content.value_or(QByteArray()));
    return text.SetValue(section, key, ToNarrow(value)) &&
           Replace(folder.Descriptor, name, text.Content(), mode);
}

}  // namespace Sonmira

#include "shell/LanguageFiles.h"

#include "platform/Dialogs.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Paths.h"
#include "platform/Processes.h"

namespace Sonmira {

using namespace Qt::StringLiterals;

LanguageTable LanguageLines;

namespace {

QString overriddenFolder;

QString LanguageFolder() {
    return overriddenFolder.isEmpty() ? WithBackslash(ProgramFolder()) + u"Lang\\"_s
                                      : WithBackslash(overriddenFolder);
}

// Bytes that are no UTF-8 come as halves of a pair, one each; files from before UTF-8 mean Latin-1 by them.
QString WithLatin1(QString line) {
    constexpr char16_t FirstRawByte = 0xDC80;
    constexpr char16_t LastRawByte = 0xDCFF;
    for (qsizetype n = 0; n < line.size(); ++n) {
        const char16_t unit = line[n].unicode();
        const bool isPaired = n > 0 && line[n - 1].isHighSurrogate();
        if (unit >= FirstRawByte && unit <= LastRawByte && !isPaired) line[n] = QChar(unit - 0xDC00);
    }
    return line;
}

QStringList LinesOf(QByteArrayView content) {
    constexpr QByteArrayView ByteOrderMark = "\xEF\xBB\xBF";
    if (content.startsWith(ByteOrderMark)) content = content.sliced(ByteOrderMark.size());
    QStringList lines;
    while (!content.isEmpty()) {
        const qsizetype feed = content.indexOf('\n');
        QByteArrayView line = feed < 0 ? content : content.first(feed);
        if (feed >= 0 && line.endsWith('\r')) line.chop(1);
        lines += WithLatin1(FromNarrow(line));
        content = feed < 0 ? QByteArrayView() : content.sliced(feed + 1);
    }
    return lines;
}

}  // namespace

const QString& LanguageTable::operator[](int line) const {
    if (line < 0 || line >= Lines.size()) throw Failure(FailureNumber::SubscriptOutOfRange);
    return Lines[line];
}

QString LanguageLineOr(int line, const QString& standard) {
    QString text;
    PassOver([&] { text = LanguageLines[line]; });
    return text.isEmpty() ? standard : text;
}

void OverrideLanguageFolder(const QString& folder) {
    overriddenFolder = folder;
}

std::vector<LanguageFile> FindLanguageFiles() {
    constexpr qsizetype DotAndExtension = 4;
    const QString folder = LanguageFolder();
    std::vector<LanguageFile> files;
    for (const FolderEntry& entry : ListFolder(folder)) {
        if (entry.IsFolder || !entry.Name.endsWith(u"lng")) continue;
        files.push_back({entry.Name.left(std::max<qsizetype>(entry.Name.size() - DotAndExtension, 0)),
                         folder + entry.Name});
    }
    return files;
}

void LoadLanguageFile(const QString& path) {
    LanguageLines.Assign({QString()});
    if (!FileExists(path)) {
        Dialogs().ShowMessage(u"Can't find the Language file"_s, MessageIcon::Critical, u"Sonmira Audio"_s);
        EndProcessNow(0);
    }
    const auto content = ReadFileBytes(ToNative(path));
    if (!content) throw Failure(FailureNumber::PathFileAccess);
    LanguageLines.Assign(LinesOf(*content) << QString());
}

}  // namespace Sonmira

#include "codecs/ape/ApeLink.h"

#include "codecs/read/MediaInput.h"
#include "platform/Paths.h"

#include <algorithm>
#include <array>
#include <span>

namespace Sonmira {

namespace {

constexpr QByteArrayView Ending = "apl";
constexpr QByteArrayView Title = "[Monkey's Audio Image Link File]";
constexpr QByteArrayView Mark = "\xEF\xBB\xBF";  // that some editors put in front of UTF-8
// Before the tag there are a few short lines. What is behind this many bytes is not looked at.
constexpr qsizetype MostText = qsizetype{64} * 1024;
constexpr QByteArrayView TagStart = "APETAGEX";

bool IsLinkName(const QString& path) {
    return path.endsWith(QLatin1StringView(Ending.data(), Ending.size()), Qt::CaseInsensitive);
}

// The lines between the title and the tag; nothing without the title.
std::optional<QList<QByteArray>> LinesOf(const InputFile& file) {
    QByteArray text(MostText, Qt::Uninitialized);
    text.truncate(static_cast<qsizetype>(file.ReadFully(0, std::as_writable_bytes(std::span(text)))));
    if (text.startsWith(Mark)) text.remove(0, Mark.size());
    if (!text.startsWith(Title)) return {};
    const qsizetype tag = text.indexOf(TagStart);
    if (tag >= 0) text.truncate(tag);
    QList<QByteArray> lines = text.split('\n');
    for (QByteArray& line : lines) {
        if (line.endsWith('\r')) line.chop(1);
    }
    return lines;
}

std::optional<QByteArray> ValueOf(const QList<QByteArray>& lines, QByteArrayView key) {
    for (const QByteArray& line : lines) {
        const qsizetype sign = line.indexOf('=');
        if (sign >= 0 && line.first(sign).trimmed().compare(key, Qt::CaseInsensitive) == 0) {
            return line.sliced(sign + 1);
        }
    }
    return {};
}

// A block's number; nothing where the line is missing or says that there is none.
std::optional<qint64> BlockOf(const QList<QByteArray>& lines, QByteArrayView key) {
    constexpr qint64 None = -1;
    const auto value = ValueOf(lines, key);
    if (!value) return {};
    bool isNumber = false;
    const qint64 block = value->trimmed().toLongLong(&isNumber);
    if (!isNumber || block < None) throw DamagedFile();
    return block == None ? std::nullopt : std::optional(block);
}

// Native paths that a name may mean, the likeliest first.
std::vector<QByteArray> MeaningsOf(const QByteArray& name) {
    std::vector<QByteArray> meanings = {name};
    if (HoldsRawBytes(FromNarrow(name))) meanings.push_back(QString::fromLatin1(name).toUtf8());
    const auto literal = static_cast<std::ptrdiff_t>(meanings.size());
    for (std::ptrdiff_t n = 0; n < literal; ++n) {
        // With separators of either kind, and without the drive in front of them.
        meanings.push_back(ToNative(FromNarrow(meanings[static_cast<std::size_t>(n)])));
    }
    return meanings;
}

std::shared_ptr<const InputFile> OpenImage(const QString& path, const QByteArray& name) {
    const QByteArray beside = ToNative(path.first(path.lastIndexOf(u'\\') + 1));
    std::optional<Failure> first;
    for (const QByteArray& meaning : MeaningsOf(name)) {
        const QByteArray native = meaning.startsWith('/') ? meaning : beside + meaning;
        try {
            return std::make_shared<const InputFile>(FromNative(native));
        } catch (const Failure& failure) {
            if (!first) first = failure;
        }
    }
    throw Failure(*first);
}

}  // namespace

ApeLink::Part ApeLink::PartOf(qint64 blocks) const {
    const qint64 finish = Finish.value_or(blocks);
    const Part part = {Start, std::min(finish, blocks), finish > blocks};
    if (part.Start >= part.Finish) throw DamagedFile();
    return part;
}

std::optional<ApeLink> ReadApeLink(const QString& path, const InputFile& file) {
    if (!IsLinkName(path)) return {};
    const auto lines = LinesOf(file);
    if (!lines) return {};
    const auto image = ValueOf(*lines, "Image File");
    if (!image) throw DamagedFile();
    ApeLink link;
    link.Start = BlockOf(*lines, "Start Block").value_or(0);
    link.Finish = BlockOf(*lines, "Finish Block");
    link.Image = OpenImage(path, *image);
    return link;
}

}  // namespace Sonmira

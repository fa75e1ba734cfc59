#include "codecs/tagging/ApeTagCheck.h"

#include "codecs/tagging/Id3v1Values.h"
#include "platform/Failure.h"

#include <QString>
#include <QtEndian>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 BlockSize = 32;  // of the footer, and of the header alike
constexpr quint32 HeaderFlag = 0x80000000U;

quint32 NumberAt(const QByteArray& bytes, qsizetype at) {
    return at + 4 <= bytes.size() ? qFromLittleEndian<quint32>(bytes.constData() + at) : 0;
}

// Whether the items fill their room: a size and flags of 32 bits each, a key that ends with a zero, the
// value.
bool DoItemsFill(const QByteArray& items, quint32 count) {
    qint64 at = 0;
    for (quint32 n = 0; n < count && at < items.size(); ++n) {
        const qsizetype keyEnd = items.indexOf('\0', at + 8);
        if (keyEnd < 0) return false;
        at = keyEnd + 1 + qint64{NumberAt(items, at)};
    }
    return at == items.size();
}

// What the end of a file says of its tags.
struct TagEnd {
    explicit TagEnd(TagStream& file)
        : Id3v1(Id3v1AtEnd(file).size()),
          FooterAt(file.length() - Id3v1 - BlockSize),
          Footer(file.Bytes(FooterAt, BlockSize)) {}

    bool HasApeTag() const { return Footer.startsWith("APETAGEX"); }
    bool HasHeader() const { return (NumberAt(Footer, 20) & HeaderFlag) != 0; }
    // Items and footer.
    qint64 Size() const { return NumberAt(Footer, 12); }

    qint64 Id3v1;
    qint64 FooterAt;
    QByteArray Footer;
};

}  // namespace

qint64 TagsAtEnd(TagStream& file) {
    const TagEnd end(file);
    if (!end.HasApeTag()) return end.Id3v1;
    return end.Id3v1 + end.Size() + (end.HasHeader() ? BlockSize : 0);
}

void CheckApeTagSize(TagStream& file) {
    const TagEnd end(file);
    if (!end.HasApeTag()) return;
    const qint64 itemsAt = end.FooterAt + BlockSize - end.Size();
    const bool fits = end.Size() >= BlockSize && itemsAt >= 0 &&
                      DoItemsFill(file.Bytes(itemsAt, end.Size() - BlockSize), NumberAt(end.Footer, 16));
    const bool hasHeader = fits && file.Bytes(itemsAt - BlockSize, 8) == "APETAGEX";
    if (!fits || (end.HasHeader() && !hasHeader))
        throw Failure(FailureNumber::Component, u"The tag is damaged, and a save could hurt the sound"_s);
}

}  // namespace Sonmira

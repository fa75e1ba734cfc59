#include "codecs/tagging/ApeItems.h"

#include "codecs/tagging/Id3v1Values.h"
#include "codecs/tagging/TagProperties.h"
#include "platform/Failure.h"

#include <QString>
#include <QtEndian>

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype BlockSize = 32;  // of the footer, and of the header alike
constexpr quint32 HeaderFlag = 0x80000000U;
constexpr quint32 IsHeader = 0x20000000U;
constexpr quint32 KindOfItem = 6;  // 0 is text

// 0 where the bytes end before.
quint32 NumberAt(const QByteArray& bytes, qsizetype at) {
    return at + 4 <= bytes.size() ? qFromLittleEndian<quint32>(bytes.constData() + at) : 0;
}
QByteArray Number(quint32 number) {
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

// The property that an item holds.
QByteArray KeyOf(const QByteArray& item) {
    QByteArray key = item.toUpper();
    if (key == "YEAR") return YearKey;
    if (key == "TRACK") return TrackKey;
    return key;
}

}  // namespace

ApeItems::ApeItems(const QByteArray& tag) : Flags(HeaderFlag) {
    if (tag.size() < BlockSize) return;
    const qsizetype footer = tag.size() - BlockSize;
    Version = NumberAt(tag, footer + 8);
    Flags = NumberAt(tag, footer + 20);
    qint64 at = (Flags & HeaderFlag) != 0 ? BlockSize : 0;
    for (quint32 left = NumberAt(tag, footer + 16); left > 0 && at + 8 < footer; --left) {
        const qint64 size = NumberAt(tag, at);
        const qsizetype end = tag.indexOf('\0', at + 8);
        if (end < 0 || size > footer - end - 1) return;
        Items.append({NumberAt(tag, at + 4), tag.sliced(at + 8, end - at - 8), tag.sliced(end + 1, size)});
        at = end + 1 + size;
    }
}

TagLib::PropertyMap ApeItems::Properties() const {
    TagLib::PropertyMap properties;
    for (const Item& item : Items) {
        if ((item.Flags & KindOfItem) != 0) continue;
        TagLib::StringList& texts = properties[KeyOf(item.Key).constData()];
        for (const QByteArray& text : item.Value.split('\0')) texts.append(FromFileText(text));
    }
    return properties;
}

// Several texts of an item are parted by NULs; the first is the field's.
void ApeItems::Change(const TagLib::PropertyMap& changes) {
    for (const auto& [name, texts] : changes) {
        const QByteArray key = ToFileText(name);
        const auto isWanted = [&](const Item& item) {
            return (item.Flags & KindOfItem) == 0 && KeyOf(item.Key) == key;
        };
        if (texts.isEmpty()) {
            ChangeFirst(Items, isWanted, nullptr);
            continue;
        }
        const auto old = std::find_if(Items.begin(), Items.end(), isWanted);
        Item fresh{0, key == YearKey ? "YEAR" : key == TrackKey ? "TRACK" : key, ToFileText(texts.front())};
        if (old != Items.end()) {
            const qsizetype further = old->Value.indexOf('\0');
            fresh = {old->Flags, old->Key,
                     fresh.Value + (further < 0 ? QByteArray() : old->Value.sliced(further))};
        }
        ChangeFirst(Items, isWanted, &fresh);
    }
}

QByteArray ApeItems::Block(quint32 flags, qsizetype size) const {
    return "APETAGEX" + Number(Version) + Number(static_cast<quint32>(size)) +
           Number(static_cast<quint32>(Items.size())) + Number(flags) + QByteArray(8, '\0');
}

QByteArray ApeItems::Bytes() const {
    QByteArray items;
    for (const Item& item : Items) {
        items += Number(static_cast<quint32>(item.Value.size())) + Number(item.Flags) + item.Key + '\0' +
                 item.Value;
    }
    const qsizetype size = items.size() + BlockSize;
    const QByteArray header = (Flags & HeaderFlag) != 0 ? Block(Flags | IsHeader, size) : QByteArray();
    return header + items + Block(Flags, size);
}

RawFields ApeItems::Fields() const {
    RawFields fields;
    for (const Item& item : Items) {
        const QByteArray key = (item.Flags & KindOfItem) == 0 ? KeyOf(item.Key) : QByteArray();
        fields.append({item.Key.toUpper(), key, Number(item.Flags) + item.Key + '\0' + item.Value});
    }
    return fields;
}

namespace {

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

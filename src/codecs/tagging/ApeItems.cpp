#include "codecs/tagging/ApeItems.h"

#include "codecs/tagging/TagProperties.h"

#include <QtEndian>

#include <algorithm>

namespace Sonmira {

namespace {

constexpr qsizetype BlockSize = 32;  // of the footer, and of the header alike
constexpr quint32 HasHeader = 0x80000000U;
constexpr quint32 IsHeader = 0x20000000U;
constexpr quint32 KindOfItem = 6;  // 0 is text

quint32 NumberAt(const QByteArray& bytes, qsizetype at) {
    return qFromLittleEndian<quint32>(bytes.constData() + at);
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

ApeItems::ApeItems(const QByteArray& tag) : Flags(HasHeader) {
    if (tag.size() < BlockSize) return;
    const qsizetype footer = tag.size() - BlockSize;
    Version = NumberAt(tag, footer + 8);
    Flags = NumberAt(tag, footer + 20);
    qint64 at = (Flags & HasHeader) != 0 ? BlockSize : 0;
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
    const QByteArray header = (Flags & HasHeader) != 0 ? Block(Flags | IsHeader, size) : QByteArray();
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

}  // namespace Sonmira

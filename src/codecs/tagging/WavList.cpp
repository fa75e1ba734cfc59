#include "codecs/tagging/WavList.h"

#include "codecs/tagging/TagProperties.h"

#include <QSet>
#include <QtEndian>

#include <algorithm>

namespace Sonmira {

namespace {

constexpr qint64 ItemHeadSize = 8;

struct ListName {
    const char* Id;
    const char* Key;
};
constexpr ListName ListNames[] = {{"INAM", "TITLE"},   {"IART", "ARTIST"},    {"IPRD", "ALBUM"},
                                  {"ICMT", "COMMENT"}, {"IGNR", "GENRE"},     {"ICRD", YearKey},
                                  {"IPRT", TrackKey},  {"ICOP", "COPYRIGHT"}, {"ITCH", "ENCODEDBY"}};

QByteArray KeyOfItem(const QByteArray& id) {
    const auto found = std::find_if(std::begin(ListNames), std::end(ListNames),
                                    [&](const ListName& name) { return id == name.Id; });
    return found == std::end(ListNames) ? QByteArray() : QByteArray(found->Key);
}

QByteArray SizeBytes(qsizetype number) {
    QByteArray bytes(4, '\0');
    qToLittleEndian(static_cast<quint32>(number), bytes.data());
    return bytes;
}

}  // namespace

WavList::WavList(const QByteArray& content) : WasWhole(false) {
    QSet<QByteArray> seen;
    bool isTwice = false;
    for (qint64 at = 4; at < content.size();) {
        if (content[at] == '\0') {
            Rest = content.sliced(at);
            WasWhole = !isTwice && std::all_of(Rest.begin(), Rest.end(), [](char c) { return c == '\0'; });
            return;
        }
        if (at + ItemHeadSize > content.size()) return;
        const QByteArray name = content.sliced(at, 4);
        const bool isName =
            std::all_of(name.begin(), name.end(), [](char c) { return c >= ' ' && c < '\x7F'; });
        const qint64 size = qFromLittleEndian<quint32>(content.constData() + at + 4);
        if (!isName || size > content.size() - at - ItemHeadSize) return;
        isTwice = isTwice || seen.contains(name);
        seen.insert(name);
        const qint64 end = at + ItemHeadSize + size;
        Items.append({name, content.sliced(at + ItemHeadSize, size),
                      content.sliced(end, std::min<qint64>(size % 2, content.size() - end))});
        at = end + size % 2;
    }
    WasWhole = !isTwice;
}

TagLib::PropertyMap WavList::Properties() const {
    TagLib::PropertyMap properties;
    for (const Item& item : Items) {
        const QByteArray key = KeyOfItem(item.Name);
        const qsizetype end = item.Text.indexOf('\0');
        const QByteArray text = end < 0 ? item.Text : item.Text.first(end);
        const bool isFirst = !key.isEmpty() && !properties.contains(key.constData());
        if (isFirst && !text.isEmpty()) properties.insert(key.constData(), FromFileText(text));
    }
    return properties;
}

void WavList::Change(const TagLib::PropertyMap& changes) {
    for (const auto& [name, texts] : changes) {
        const QByteArray key = ToFileText(name);
        const auto isWanted = [&](const Item& item) { return KeyOfItem(item.Name) == key; };
        const auto found = std::find_if(std::begin(ListNames), std::end(ListNames),
                                        [&](const ListName& one) { return key == one.Key; });
        if (found == std::end(ListNames)) continue;
        for (const Item& item : Items) {
            if (isWanted(item)) CheckIsText(item.Text);
        }
        if (texts.isEmpty()) {
            ChangeFirst(Items, isWanted, nullptr);
            continue;
        }
        const QByteArray text = ToFileText(texts.front()) + '\0';
        const Item fresh{found->Id, text, QByteArray(text.size() % 2, '\0')};
        ChangeFirst(Items, isWanted, &fresh);
    }
}

QByteArray WavList::Content() const {
    QByteArray content = "INFO";
    for (const Item& item : Items) {
        content += item.Name + SizeBytes(item.Text.size()) + item.Text;
        content += item.Text.size() % 2 != 0 && item.Pad.isEmpty() ? QByteArray(1, '\0') : item.Pad;
    }
    return content + Rest;
}

RawFields WavList::Fields() const {
    RawFields fields;
    for (const Item& item : Items) fields.append({item.Name, KeyOfItem(item.Name), item.Text});
    return fields;
}

}  // namespace Sonmira

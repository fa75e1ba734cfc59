#include "codecs/tagging/Mp4Items.h"

#include "codecs/tagging/TagProperties.h"

#include <QtEndian>

#include <id3v1genres.h>

#include <algorithm>

namespace Sonmira {

namespace {

constexpr qsizetype Head = 8;
constexpr qsizetype DataHead = 16;
constexpr quint32 Utf8Kind = 1;
constexpr quint32 WideKind = 2;
constexpr const char* TrackAtom = "trkn";
constexpr const char* GenreNumberAtom = "gnre";

struct AtomName {
    const char* Key;
    const char* Atom;
};
constexpr AtomName AtomNames[] = {{"TITLE", "\251nam"},
                                  {"ARTIST", "\251ART"},
                                  {"ALBUM", "\251alb"},
                                  {"COMMENT", "\251cmt"},
                                  {"GENRE", "\251gen"},
                                  {"GENRE", GenreNumberAtom},
                                  {YearKey, "\251day"},
                                  {TrackKey, TrackAtom},
                                  {"COMPOSER", "\251wrt"},
                                  {"COPYRIGHT", "cprt"},
                                  {"ENCODEDBY", "\251too"},
                                  {"URL", "----:com.apple.iTunes:URL"},
                                  {"ORIGINALARTIST", "----:com.apple.iTunes:ORIGINALARTIST"}};

quint32 NumberAt(const QByteArray& bytes, qsizetype at) {
    return qFromBigEndian<quint32>(bytes.constData() + at);
}

QByteArray Atom(const QByteArray& name, const QByteArray& content) {
    QByteArray size(4, '\0');
    qToBigEndian(static_cast<quint32>(content.size() + Head), size.data());
    return size + name + content;
}

QByteArray Data(quint32 kind, const QByteArray& content) {
    QByteArray head(8, '\0');
    qToBigEndian(kind, head.data());
    return Atom("data", head + content);
}

// The atoms within an item, each with its head, as far as their sizes fit.
QList<QByteArray> PartsOf(const QByteArray& item) {
    QList<QByteArray> parts;
    for (qsizetype at = Head; at + Head <= item.size();) {
        const quint32 size = NumberAt(item, at);
        if (size < Head || size > item.size() - at) break;
        parts.append(item.sliced(at, size));
        at += size;
    }
    return parts;
}

bool IsData(const QByteArray& part) {
    return part.size() >= DataHead && part.sliced(4, 4) == "data";
}

QByteArray KeyOf(const Mp4Items::Item& item) {
    const QByteArray whole = item.Name == "----" ? Mp4FreeName(item.Bytes) : item.Name;
    for (const AtomName& name : AtomNames) {
        if (whole == name.Atom) return name.Key;
    }
    return {};
}

TagLib::String TextOf(const QByteArray& item, const QByteArray& data) {
    const QByteArray content = data.sliced(DataHead);
    if (item == TrackAtom) {
        if (content.size() < 6) return {};
        const auto track = qFromBigEndian<quint16>(content.constData() + 2);
        const auto total = qFromBigEndian<quint16>(content.constData() + 4);
        if (track == 0 && total == 0) return {};
        return TagLib::String::number(track) + (total > 0 ? "/" + TagLib::String::number(total) : "");
    }
    if (item == GenreNumberAtom) {
        const int number = content.size() < 2 ? 0 : qFromBigEndian<quint16>(content.constData());
        return number > 0 ? TagLib::ID3v1::genre(number - 1) : TagLib::String();
    }
    if ((NumberAt(data, Head) & 0xFF) == WideKind) {
        return {TagLib::ByteVector(content.constData(), static_cast<unsigned>(content.size())),
                TagLib::String::UTF16BE};
    }
    return FromFileText(content);
}

// The number in front of "3/12"; everything else in the item stays.
QByteArray TrackData(const QByteArray& old, const TagLib::String& text) {
    QByteArray data = old.size() >= DataHead + 6 ? old : Data(0, QByteArray(8, '\0'));
    const int number = std::clamp(text.toInt(), 0, 0xFFFF);
    qToBigEndian(static_cast<quint16>(number), data.data() + DataHead + 2);
    return data;
}

Mp4Items::Item Fresh(const QByteArray& key, const TagLib::String& text, const Mp4Items::Item* old) {
    QByteArray whole;
    for (const AtomName& name : AtomNames) {
        if (whole.isEmpty() && key == name.Key) whole = name.Atom;
    }
    QByteArray front;  // what stands before the first text
    QByteArray data;
    QByteArray further;
    if (old != nullptr && old->Name != GenreNumberAtom) {
        for (const QByteArray& part : PartsOf(old->Bytes)) {
            if (!data.isEmpty()) {
                further += part;
            } else if (IsData(part)) {
                data = part;
            } else {
                front += part;
            }
        }
    } else if (whole.startsWith("----")) {
        const QList<QByteArray> parts = whole.split(':');
        front = Atom("mean", QByteArray(4, '\0') + parts[1]) + Atom("name", QByteArray(4, '\0') + parts[2]);
    }
    data = whole == TrackAtom ? TrackData(data, text) : Data(Utf8Kind, ToFileText(text));
    const QByteArray name = whole.first(4);
    return {name, Atom(name, front + data + further)};
}

}  // namespace

QByteArray Mp4FreeName(const QByteArray& item) {
    constexpr qsizetype Version = 4;
    QByteArray name = "----";
    const QList<QByteArray> parts = PartsOf(item);
    for (qsizetype n = 0; n < 2 && n < parts.size() && parts[n].size() >= Head + Version; ++n)
        name += ':' + parts[n].sliced(Head + Version);
    return name;
}

TagLib::PropertyMap Mp4Items::Properties() const {
    TagLib::PropertyMap properties;
    for (const Item& item : Items) {
        const QByteArray key = KeyOf(item);
        if (key.isEmpty()) continue;
        for (const QByteArray& part : PartsOf(item.Bytes)) {
            if (!IsData(part)) continue;
            const TagLib::String text = TextOf(item.Name, part);
            if (!text.isEmpty()) properties[key.constData()].append(text);
        }
    }
    return properties;
}

void Mp4Items::Change(const TagLib::PropertyMap& changes) {
    for (const auto& [name, texts] : changes) {
        const QByteArray key = ToFileText(name);
        const auto isWanted = [&](const Item& item) { return KeyOf(item) == key; };
        const auto old = std::find_if(Items.begin(), Items.end(), isWanted);
        const Item* const before = old == Items.end() ? nullptr : &*old;
        if (texts.isEmpty()) {
            ChangeFirst(Items, isWanted, nullptr);
        } else {
            const Item fresh = Fresh(key, texts.front(), before);
            ChangeFirst(Items, isWanted, &fresh);
        }
    }
}

QByteArray Mp4Items::Bytes() const {
    QByteArray bytes;
    for (const Item& item : Items) bytes += item.Bytes;
    return bytes;
}

RawFields Mp4Items::Fields() const {
    RawFields fields;
    for (const Item& item : Items) {
        // What a save puts in to fill the list.
        if (item.Name == "free") continue;
        const QByteArray name = item.Name == "----" ? Mp4FreeName(item.Bytes) : item.Name;
        fields.append({name, KeyOf(item), item.Bytes});
    }
    return fields;
}

namespace {

// Atoms that hold atoms; the library follows them as deep as they go, on the stack.
constexpr const char* Containers[] = {"moov", "udta", "mdia", "meta", "ilst", "stbl",
                                      "minf", "moof", "traf", "trak", "stsd"};
constexpr int MostLevels = 32;
constexpr int MostAtoms = 1'000'000;

// Tables of places in the file, which a save goes through: how large their entries are.
qint64 EntrySize(const QByteArray& name) {
    return name == "stco" ? 4 : name == "co64" ? 8 : 0;
}

class Walk {
public:
    explicit Walk(TagStream& file) : File(file) {}

    Mp4Sizes Over(qint64 begin, qint64 end, int level) {
        Mp4Sizes worst = Mp4Sizes::Fit;
        for (qint64 at = begin; at + Mp4HeadSize <= end && worst != Mp4Sizes::TooDeep;) {
            const QByteArray head = File.Bytes(at, 3 * Mp4HeadSize);
            if (head.size() < Mp4HeadSize) return worst;
            if (level > MostLevels || ++Atoms > MostAtoms) return Mp4Sizes::TooDeep;
            qint64 size = qFromBigEndian<quint32>(head.constData());
            const bool isLong = size == 1 && head.size() >= 2 * Mp4HeadSize;
            if (isLong) size = qFromBigEndian<qint64>(head.constData() + Mp4HeadSize);
            const qint64 headSize = isLong ? 2 * Mp4HeadSize : Mp4HeadSize;
            if (size == 0) size = end - at;
            if (size < headSize) return worst;
            const QByteArray name = head.sliced(4, 4);
            // A file that was cut in its sound can still be tagged.
            const bool isCut = size > end - at && (level > 0 || name == "moov");
            // The library looks for the entries of a table behind a short head.
            const bool isTableWell = isLong ? EntrySize(name) == 0 : IsTableWell(name, head, size);
            if (isCut || !isTableWell) worst = Mp4Sizes::DoNotFit;
            const qint64 inside = at + headSize + MoreOf(name, head.sliced(headSize));
            if (IsContainer(name)) {
                worst = std::max(worst, Over(inside, at + std::min(size, end - at), level + 1));
            }
            if (size > end - at) return worst;
            at += size;
        }
        return worst;
    }

private:
    static bool IsContainer(const QByteArray& name) {
        return std::any_of(std::begin(Containers), std::end(Containers),
                           [&](const char* one) { return name == one; });
    }
    // As the library has it: the head of a list of items may take four bytes more, that of a list of formats
    // takes eight.
    static qint64 MoreOf(const QByteArray& name, const QByteArray& behindHead) {
        const bool hasVersion = name == "meta" && behindHead.startsWith(QByteArray(4, '\0'));
        return name == "stsd" ? 8 : hasVersion ? 4 : 0;
    }
    static bool IsTableWell(const QByteArray& name, const QByteArray& head, qint64 size) {
        const qint64 entry = EntrySize(name);
        if (entry > 0) {
            if (head.size() < 2 * Mp4HeadSize || size < 2 * Mp4HeadSize) return false;
            return qFromBigEndian<quint32>(head.constData() + 12) * entry <= size - 2 * Mp4HeadSize;
        }
        // The place of a fragment's sound, where it says one.
        constexpr qint64 PlacedSize = 24;
        return name != "tfhd" || (head.size() > 11 && ((head[11] & 1) == 0 || size >= PlacedSize));
    }

    TagStream& File;
    int Atoms = 0;
};

}  // namespace

Mp4Sizes SizesOf(TagStream& file) {
    return Walk(file).Over(0, file.length(), 0);
}

}  // namespace Sonmira

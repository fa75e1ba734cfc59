#include "codecs/tagging/Mp4Tags.h"

#include "codecs/tagging/PropertyTags.h"
#include "platform/Failure.h"

#include <QtEndian>

#include <mp4atom.h>
#include <mp4file.h>

#include <algorithm>
#include <set>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

using TagLib::MP4::Item;

constexpr const char* TrackAtom = "trkn";

struct Name {
    const char* Key;
    const char* Atom;
};
constexpr Name Names[] = {{"TITLE", "\251nam"},
                          {"ARTIST", "\251ART"},
                          {"ALBUM", "\251alb"},
                          {"COMMENT", "\251cmt"},
                          {"GENRE", "\251gen"},
                          {YearKey, "\251day"},
                          {"COMPOSER", "\251wrt"},
                          {"COPYRIGHT", "cprt"},
                          {"ENCODEDBY", "\251too"},
                          {"URL", "----:com.apple.iTunes:URL"},
                          {"ORIGINALARTIST", "----:com.apple.iTunes:ORIGINALARTIST"}};

// Atoms that hold atoms; the library follows them as deep as they go, on the stack.
constexpr const char* Containers[] = {"moov", "udta", "mdia", "meta", "ilst", "stbl",
                                      "minf", "moof", "traf", "trak", "stsd"};
constexpr int MostLevels = 32;
constexpr int MostAtoms = 1'000'000;

bool IsTooDeep(TagStream& file, qint64 begin, qint64 end, int level, int& atoms) {
    constexpr qint64 HeadSize = 8;
    for (qint64 at = begin; at + HeadSize <= end;) {
        const QByteArray head = file.Bytes(at, 2 * HeadSize);
        if (head.size() < HeadSize) return false;
        if (level > MostLevels || ++atoms > MostAtoms) return true;
        qint64 size = qFromBigEndian<quint32>(head.constData());
        if (size == 1 && head.size() == 2 * HeadSize)
            size = qFromBigEndian<qint64>(head.constData() + HeadSize);
        if (size == 0) size = end - at;
        if (size < HeadSize) return false;
        const QByteArray name = head.sliced(4, 4);
        const bool isContainer = std::any_of(std::begin(Containers), std::end(Containers),
                                             [&](const char* one) { return name == one; });
        // As the library has it: the head of a list of items may take four bytes more, that of a list of
        // formats takes eight.
        const bool hasVersion = name == "meta" && head.sliced(8).startsWith(QByteArray(4, '\0'));
        const qint64 inside = at + HeadSize + (name == "stsd" ? 8 : hasVersion ? 4 : 0);
        if (isContainer && IsTooDeep(file, inside, std::min(at + size, end), level + 1, atoms)) return true;
        at += size;
    }
    return false;
}

class Mp4Tags : public LibraryFile<TagLib::MP4::File> {
public:
    explicit Mp4Tags(const QByteArray& file) : LibraryFile(file) {}

    TagValues Read(qint16 /*kind*/) override { return ValuesOf(Properties()); }

    bool Says(qint16 kind, const TagValues& values) override {
        return ChangesTo(Properties(), values, kind).isEmpty();
    }

    bool Write(qint16 kind, const TagValues& values) override {
        CheckKeepsAll();
        for (const auto& [key, texts] : ChangesTo(Properties(), values, kind)) Set(key, texts);
        return Saved(File.save());
    }

private:
    TagLib::MP4::Tag& Tag() { return *File.tag(); }

    TagLib::PropertyMap Properties() {
        TagLib::PropertyMap properties;
        for (const Name& name : Names) {
            if (!Tag().contains(name.Atom)) continue;
            const TagLib::StringList texts = Tag().item(name.Atom).toStringList();
            if (!texts.isEmpty()) properties.insert(name.Key, texts);
        }
        if (Tag().contains(TrackAtom)) {
            const Item::IntPair track = Tag().item(TrackAtom).toIntPair();
            const TagLib::String total = track.second > 0 ? "/" + TagLib::String::number(track.second) : "";
            if (track.first > 0 || track.second > 0)
                properties.insert(TrackKey, TagLib::String::number(track.first) + total);
        }
        return properties;
    }

    void Set(const TagLib::String& key, const TagLib::StringList& texts) {
        if (key == TrackKey) {
            const int total = Tag().contains(TrackAtom) ? Tag().item(TrackAtom).toIntPair().second : 0;
            const int track = texts.isEmpty() ? 0 : texts.front().toInt();
            if (track == 0 && total == 0) {
                Tag().removeItem(TrackAtom);
            } else {
                Tag().setItem(TrackAtom, Item(track, total));
            }
            return;
        }
        for (const Name& name : Names) {
            if (key != name.Key) continue;
            if (texts.isEmpty()) {
                Tag().removeItem(name.Atom);
            } else {
                Tag().setItem(name.Atom, Item(texts));
            }
        }
    }

    // The name by which the library knows an item: free-form items have their own inside, and a genre by
    // number becomes one by name.
    TagLib::String NameOf(const TagLib::MP4::Atom& atom) {
        if (atom.name == "gnre") return {"\251gen", TagLib::String::Latin1};
        if (atom.name != "----") return {atom.name, TagLib::String::Latin1};
        constexpr qsizetype Head = 8;
        constexpr qsizetype Version = 4;
        constexpr qint64 Most = 65536;
        const QByteArray item = Stream.Bytes(atom.offset + Head, std::min<qint64>(atom.length - Head, Most));
        QByteArray name = "----";
        for (qsizetype at = 0, parts = 0; parts < 2 && at + Head + Version <= item.size(); ++parts) {
            const qsizetype size = qFromBigEndian<quint32>(item.constData() + at);
            if (size < Head + Version || size > item.size() - at) break;
            name += ':' + item.sliced(at + Head + Version, size - Head - Version);
            at += size;
        }
        return {name.toStdString(), TagLib::String::UTF8};
    }

    // The library writes the whole list from what it understood of it, and of two items of one name that is
    // the first.
    void CheckKeepsAll() {
        TagLib::MP4::Atoms atoms(&File);
        const TagLib::MP4::Atom* const list = atoms.find("moov", "udta", "meta", "ilst");
        if (list == nullptr) return;
        std::set<TagLib::String> seen;
        for (const TagLib::MP4::Atom* atom : list->children) {
            if (atom->name == "free") continue;
            const TagLib::String name = NameOf(*atom);
            if (!Tag().contains(name) || !seen.insert(name).second) {
                throw Failure(FailureNumber::Component,
                              u"The file holds a tag of a kind that would be lost"_s);
            }
        }
    }
};

}  // namespace

std::unique_ptr<TaggedFile> OpenMp4Tags(const QByteArray& file) {
    TagStream stream(file);
    int atoms = 0;
    if (IsTooDeep(stream, 0, stream.length(), 0, atoms)) return nullptr;
    return TryOpen<Mp4Tags>(file);
}

}  // namespace Sonmira

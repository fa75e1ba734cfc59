#include "codecs/tagging/Mp4Tags.h"

#include "codecs/tagging/PropertyTags.h"
#include "platform/Failure.h"

#include <mp4atom.h>
#include <mp4file.h>

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

    // The library writes the whole list from what it understood of it.
    void CheckKeepsAll() {
        TagLib::MP4::Atoms atoms(&File);
        const TagLib::MP4::Atom* const list = atoms.find("moov", "udta", "meta", "ilst");
        if (list == nullptr) return;
        for (const TagLib::MP4::Atom* atom : list->children) {
            // Free-form items are kept by names of their own; a genre by number becomes one by name.
            const bool isKept = atom->name == "----" || atom->name == "gnre" || atom->name == "free" ||
                                Tag().contains(TagLib::String(atom->name, TagLib::String::Latin1));
            if (!isKept) {
                throw Failure(FailureNumber::Component,
                              u"The file holds a tag of a kind that would be lost"_s);
            }
        }
    }
};

}  // namespace

std::unique_ptr<TaggedFile> OpenMp4Tags(const QByteArray& file) {
    return TryOpen<Mp4Tags>(file);
}

}  // namespace Sonmira

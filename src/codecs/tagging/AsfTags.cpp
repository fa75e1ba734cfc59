#include "codecs/tagging/AsfTags.h"

#include "codecs/tagging/PropertyTags.h"

#include <asffile.h>
#include <asftag.h>

#include <algorithm>

namespace Sonmira {

namespace {

using TagLib::ASF::Attribute;
using TagLib::ASF::AttributeList;

constexpr const char* TrackName = "WM/TrackNumber";
constexpr const char* OldTrackName = "WM/Track";  // counts from 0

struct Name {
    const char* Key;
    const char* Attribute;
};
constexpr Name Names[] = {{"ALBUM", "WM/AlbumTitle"},  {"GENRE", "WM/Genre"},
                          {YearKey, "WM/Year"},        {TrackKey, TrackName},
                          {"COMPOSER", "WM/Composer"}, {"ENCODEDBY", "WM/EncodedBy"},
                          {"URL", "WM/AuthorURL"},     {"ORIGINALARTIST", "WM/OriginalArtist"}};

// Some programs say the texts of the content description once more as attributes, or only there, and others
// believe the attribute.
constexpr Name Doubles[] = {{"TITLE", "Title"},
                            {"TITLE", "title"},
                            {"ARTIST", "Author"},
                            {"COMMENT", "Description"},
                            {"COPYRIGHT", "Copyright"}};

class AsfTags : public LibraryFile<TagLib::ASF::File> {
public:
    explicit AsfTags(const QByteArray& file) : LibraryFile(file) {}

    TagValues Read(qint16 /*kind*/) override {
        TagValues values = ValuesOf(Properties());
        values.Track = static_cast<qint16>(std::max(values.Track - 1, 0));
        return values;
    }

    bool Says(qint16 kind, const TagValues& values) override {
        return Has(TrackName) && Changes(kind, values).isEmpty() && DoublesAgree();
    }

    bool Write(qint16 kind, const TagValues& values) override {
        const TagLib::PropertyMap changes = Changes(kind, values);
        const TagLib::PropertyMap wanted = Changed(Properties(), changes);
        for (const auto& [key, texts] : changes) SetKey(key, texts);
        if (!Has(TrackName)) Set(TrackName, Front(wanted, TrackKey));
        for (const Name& other : Doubles) {
            const TagLib::String text = Front(wanted, other.Key);
            if (Has(other.Attribute) && FirstOf(other.Attribute) != text) Set(other.Attribute, text);
        }
        return Saved(File.save());
    }

private:
    TagLib::ASF::Tag& Tag() { return *File.tag(); }
    bool Has(const char* name) { return Tag().attributeListMap().contains(name); }

    static TagLib::String Front(const TagLib::PropertyMap& properties, const char* key) {
        const auto found = properties.find(key);
        return found == properties.end() || found->second.isEmpty() ? TagLib::String()
                                                                    : found->second.front();
    }
    TagLib::String FirstOf(const char* name) {
        if (!Has(name)) return {};
        const AttributeList& list = Tag().attributeListMap()[name];
        return list.isEmpty() ? TagLib::String() : TextOf(list.front());
    }
    static TagLib::String TextOf(const Attribute& attribute) {
        switch (attribute.type()) {
            case Attribute::DWordType:
                return TagLib::String::number(static_cast<int>(attribute.toUInt()));
            case Attribute::WordType:
                return TagLib::String::number(attribute.toUShort());
            case Attribute::QWordType:
                return TagLib::String::number(static_cast<int>(attribute.toULongLong()));
            default:
                return attribute.toString();
        }
    }

    // Tracks as the attribute of today counts them, from 1; none is no number.
    TagLib::PropertyMap Properties() {
        TagLib::PropertyMap properties;
        const auto add = [&](const char* key, const TagLib::String& text) {
            if (!text.isEmpty() && !properties.contains(key)) properties.insert(key, text);
        };
        add("TITLE", Tag().title());
        add("ARTIST", Tag().artist());
        add("COMMENT", Tag().comment());
        add("COPYRIGHT", Tag().copyright());
        for (const Name& other : Doubles) add(other.Key, FirstOf(other.Attribute));
        for (const Name& name : Names) add(name.Key, FirstOf(name.Attribute));
        if (!Has(TrackName) && Has(OldTrackName))
            add(TrackKey, TagLib::String::number(FirstOf(OldTrackName).toInt() + 1));
        return properties;
    }
    TagLib::PropertyMap Changes(qint16 kind, TagValues values) {
        values.Track = static_cast<qint16>(std::clamp<int>(values.Track, -1, 32766) + 1);
        return ChangesTo(Properties(), values, kind);
    }
    bool DoublesAgree() {
        const TagLib::PropertyMap said = Properties();
        return std::all_of(std::begin(Doubles), std::end(Doubles), [&](const Name& other) {
            return !Has(other.Attribute) || FirstOf(other.Attribute) == Front(said, other.Key);
        });
    }

    void SetKey(const TagLib::String& key, const TagLib::StringList& texts) {
        const TagLib::String text = texts.isEmpty() ? TagLib::String() : texts.front();
        if (key == "TITLE") Tag().setTitle(text);
        if (key == "ARTIST") Tag().setArtist(text);
        if (key == "COMMENT") Tag().setComment(text);
        if (key == "COPYRIGHT") Tag().setCopyright(text);
        for (const Name& name : Names) {
            if (key == name.Key) Set(name.Attribute, text);
        }
        if (key == TrackKey && Has(OldTrackName))
            Set(OldTrackName, TagLib::String::number(std::max(text.toInt() - 1, 0)));
    }
    // The first of the attributes of that name; further ones stay, and a number stays one.
    void Set(const char* name, const TagLib::String& text) {
        if (text.isEmpty()) {
            Tag().removeItem(name);
            return;
        }
        AttributeList list = Has(name) ? Tag().attributeListMap()[name] : AttributeList();
        const bool isNumber = !list.isEmpty() && list.front().type() == Attribute::DWordType;
        const Attribute value = isNumber ? Attribute(static_cast<unsigned>(text.toInt())) : Attribute(text);
        if (!list.isEmpty()) list.erase(list.begin());
        list.prepend(value);
        Tag().setAttribute(name, list);
    }
};

}  // namespace

std::unique_ptr<TaggedFile> OpenAsfTags(const QByteArray& file) {
    return TryOpen<AsfTags>(file);
}

}  // namespace Sonmira

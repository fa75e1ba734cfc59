#pragma once

#include "codecs/tagging/ApeTagCheck.h"
#include "codecs/tagging/Id3v1Values.h"
#include "codecs/tagging/PropertyTags.h"

#include <apetag.h>
#include <id3v1tag.h>

namespace Sonmira {

// APEv2, and what only an ID3v1 tag behind it says. `Library` is the file of Monkey's Audio or of Musepack.
template <class Library>
class ApeTags : public LibraryFile<Library> {
public:
    using LibraryFile<Library>::LibraryFile;

    TagValues Read(qint16 /*kind*/) override { return ValuesOf(Properties()); }
    bool Says(qint16 kind, const TagValues& values) override {
        return ChangesTo(Properties(), values, kind).isEmpty();
    }
    bool Write(qint16 kind, const TagValues& values) override {
        CheckApeTagSize(this->Stream);
        const TagLib::PropertyMap now = Properties();
        const TagLib::PropertyMap changes = ChangesTo(now, values, kind);
        // One that is there is kept in step, since some programs, a conversion here among them, read only
        // that.
        if (this->File.hasID3v1Tag())
            ChangeId3v1(*this->File.ID3v1Tag(), ValuesOf(now), ValuesOf(Changed(now, changes)));
        TagLib::APE::Tag& tag = *this->File.APETag(true);
        for (const auto& [key, texts] : changes) Set(tag, key, texts);
        return this->Saved(this->File.save());
    }

private:
    TagLib::PropertyMap Properties() {
        TagLib::PropertyMap properties;
        if (this->File.hasAPETag()) properties = this->File.APETag()->properties();
        if (!this->File.hasID3v1Tag()) return properties;
        for (const auto& [key, texts] : this->File.ID3v1Tag()->properties()) {
            if (!properties.contains(key)) properties.insert(key, texts);
        }
        return properties;
    }
    static void Set(TagLib::APE::Tag& tag, const TagLib::String& key, const TagLib::StringList& texts) {
        const TagLib::String name = key == YearKey ? "YEAR" : key == TrackKey ? "TRACK" : key;
        tag.removeItem(key);
        tag.removeItem(name);
        if (!texts.isEmpty()) tag.setItem(name, TagLib::APE::Item(name, texts));
    }
};

}  // namespace Sonmira

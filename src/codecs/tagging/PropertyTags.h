#pragma once

#include "codecs/tagging/TagProperties.h"
#include "codecs/tagging/TagStream.h"
#include "codecs/tagging/TaggedFile.h"

namespace Sonmira {

// A file of the library over a stream of ours, and the end of its saves. `Arguments` are what that kind of
// file wants between the stream and the properties of the sound, which nobody here asks for.
template <class Library>
class LibraryFile : public TaggedFile {
public:
    template <class... Arguments>
    explicit LibraryFile(const QByteArray& file, Arguments... arguments)
        : Stream(file), File(&Stream, arguments..., false) {}

    bool IsValid() { return File.isValid(); }

protected:
    bool Saved(bool isSaved) const {
        Stream.CheckWrites();
        return isSaved;
    }

    TagStream Stream;
    Library File;
};

// A file of one kind of tag whose named properties the library changes one by one.
template <class Library>
class PropertyTags : public LibraryFile<Library> {
public:
    using LibraryFile<Library>::LibraryFile;

    TagValues Read(qint16 /*kind*/) override { return ValuesOf(this->File.properties()); }
    bool Says(qint16 kind, const TagValues& values) override {
        return ChangesTo(this->File.properties(), values, kind).isEmpty();
    }
    bool Write(qint16 kind, const TagValues& values) override {
        const TagLib::PropertyMap now = this->File.properties();
        this->File.setProperties(Changed(now, ChangesTo(now, values, kind)));
        return this->Saved(this->File.save());
    }
};

// Opens the file as one of that kind; null where it is none.
template <class Tagged, class... Arguments>
std::unique_ptr<TaggedFile> TryOpen(const QByteArray& file, Arguments... arguments) {
    auto tagged = std::make_unique<Tagged>(file, arguments...);
    if (!tagged->IsValid()) return nullptr;
    return tagged;
}

}  // namespace Sonmira

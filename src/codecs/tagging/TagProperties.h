#pragma once

#include "codecs/tagging/TagStream.h"
#include "codecs/tagging/TagValues.h"
#include "codecs/tagging/TaggedFile.h"

#include <tpropertymap.h>

namespace Sonmira {

// The fields of a tag against the named properties that the tag library has for most formats.

// Keys that a format spells in a way of its own.
inline constexpr const char* YearKey = "DATE";
inline constexpr const char* TrackKey = "TRACKNUMBER";

QString FromTagText(const TagLib::String& text);
// Without what follows a first NUL.
TagLib::String ToTagText(const QString& text);

// A text as files hold it: UTF-8 today, and Latin-1 where older programs wrote it.
TagLib::String FromFileText(const QByteArray& bytes);
QByteArray ToFileText(const TagLib::String& text);

// Fails where something follows the NUL that ends a text that is to change: a damaged size takes in other
// fields then. `step` is how many bytes a letter has.
void CheckIsText(const QByteArray& bytes, int step = 1);

TagValues ValuesOf(const TagLib::PropertyMap& properties);

// What has to change so that `properties` say `values`: the new texts of each such key, none where it goes.
// Only the first text of a key is the field's; further ones stay behind a new first. `kind` decides which of
// the two genre fields has the word: the number for 1, the text for 2, each where it says something.
TagLib::PropertyMap ChangesTo(const TagLib::PropertyMap& properties, const TagValues& values, qint16 kind);

// `properties` after those changes.
TagLib::PropertyMap Changed(TagLib::PropertyMap properties, const TagLib::PropertyMap& changes);

TagEdits EditsOf(const TagLib::PropertyMap& changes);

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

// Opens the file as one of that kind; null where it is none.
template <class Tagged, class... Arguments>
std::unique_ptr<TaggedFile> TryOpen(const QByteArray& file, Arguments... arguments) {
    auto tagged = std::make_unique<Tagged>(file, arguments...);
    if (!tagged->IsValid()) return nullptr;
    return tagged;
}

}  // namespace Sonmira

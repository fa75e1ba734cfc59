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

// Opens the file as one of that kind; null where it is none.
template <class Tagged, class... Arguments>
std::unique_ptr<TaggedFile> TryOpen(const QByteArray& file, Arguments... arguments) {
    auto tagged = std::make_unique<Tagged>(file, arguments...);
    if (!tagged->IsValid()) return nullptr;
    return tagged;
}

}  // namespace Sonmira

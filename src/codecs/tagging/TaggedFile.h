#pragma once

#include "codecs/tagging/RawFields.h"
#include "codecs/tagging/TagValues.h"

#include <memory>

namespace Sonmira {

// One opened file with room for tags, whatever they are called in its format.
class TaggedFile {
public:
    virtual ~TaggedFile() = default;

    // The fields of the tag of that kind (see AudioInformation).
    virtual TagValues Read(qint16 kind) = 0;
    // Whether a Write of these values would change nothing.
    virtual bool Says(qint16 kind, const TagValues& values) = 0;
    // What a Write of these values changes.
    virtual TagEdits Edits(qint16 kind, const TagValues& values) = 0;
    // All parts of all tags of the file.
    virtual RawFields Raw() = 0;
    // Writes what differs and returns whether the file took it.
    virtual bool Write(qint16 kind, const TagValues& values) = 0;
};

// Opens the file (native path) by what it begins with; MPEG audio, which begins with nothing certain, by the
// ending of `name`. Null for a file of which no tag is understood here: its tag reads as empty.
std::unique_ptr<TaggedFile> OpenTagged(const QByteArray& file, const QByteArray& name);

}  // namespace Sonmira

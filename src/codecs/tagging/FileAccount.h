#pragma once

#include "codecs/tagging/TagValues.h"

#include <set>

namespace Sonmira {

// What a file holds beside the fields of its tag, seen by other libraries than the one that writes tags, and
// the parts of its tags as they lie in the file, whatever they mean.
struct FileAccount {
    QByteArray Sound;                  // a sum over the packets of its sound; empty where none can be read
    std::multiset<QByteArray> Others;  // texts that no field names, pictures, chapters
    RawFields Parts;
};

// Reads the whole file (native path) once, and counts in the parts of its tags. Fails when the drive does.
FileAccount AccountOf(const QByteArray& file, RawFields parts);

// Whether all that was there and was not edited still is.
bool KeepsAll(const FileAccount& before, const FileAccount& after, const TagEdits& edits);

}  // namespace Sonmira

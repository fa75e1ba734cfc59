#pragma once

#include <QByteArray>

#include <set>

namespace Sonmira {

// What a file holds beside the fields of its tag, seen by other libraries than the one that writes tags.
struct FileAccount {
    QByteArray Sound;                  // a sum over the packets of its sound; empty where none can be read
    std::multiset<QByteArray> Others;  // texts that no field names, pictures, chapters
};

// Reads the whole file (native path) once. Fails when the drive does.
FileAccount AccountOf(const QByteArray& file);

// Whether all that was there still is. Names of texts may have changed, as from one version of a tag to the
// next.
bool KeepsAll(const FileAccount& before, const FileAccount& after);

}  // namespace Sonmira

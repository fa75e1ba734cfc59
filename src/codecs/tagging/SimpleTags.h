#pragma once

#include <QString>

namespace TagLib::ID3v1 {
class Tag;
}

namespace Sonmira {

// The fields that every kind of tag has; each is cut at its first NUL.
struct SimpleTagFields {
    QString Artist;
    QString Album;
    QString Title;
    QString Comment;
    QString Genre;
    QString Year;
    QString Track;
};

// Writes them as TagFileSimple says (ApeFunctions.h).
void WriteSimpleTags(const QString& path, SimpleTagFields fields, bool clears, bool writesId3);

// Writes the fields as Vorbis comments, and the ID3v1 block of them where Id3v1.h says. Other comments and
// blocks, and the sound, stay.
void WriteFlacTags(const QString& path, const SimpleTagFields& fields, bool clears, bool writesId3);

// Sets the fields of an ID3v1 tag, which is Latin-1: characters beyond that become question marks. Year and
// track are numbers there, and a genre that has no number is left out.
void SetId3Fields(TagLib::ID3v1::Tag& tag, const SimpleTagFields& fields, bool clears);

}  // namespace Sonmira

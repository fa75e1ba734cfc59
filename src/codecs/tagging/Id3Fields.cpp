#include "codecs/tagging/Id3Fields.h"

#include <taglib/id3v1genres.h>
#include <taglib/id3v1tag.h>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr unsigned NoGenre = 255;

TagLib::String LatinOf(const QString& text) {
    return {text.toLatin1().toStdString(), TagLib::String::Latin1};
}

// Genre names are spelt in several ways, which mostly differ in what is no letter.
QString Letters(const QString& name) {
    QString letters;
    for (const QChar c : name) {
        if (c.isLetterOrNumber()) letters += c.toCaseFolded();
    }
    return letters;
}

unsigned GenreNumber(const QString& name) {
    const QString wanted = Letters(name);
    if (wanted.isEmpty()) return NoGenre;
    const TagLib::StringList names = TagLib::ID3v1::genreList();
    for (unsigned i = 0; i < names.size(); ++i) {
        if (Letters(QString::fromStdString(names[i].to8Bit(true))) == wanted) return i;
    }
    return NoGenre;
}

}  // namespace

void SetId3Fields(TagLib::ID3v1::Tag& tag, const SimpleTagFields& fields, bool clears) {
    const auto isSet = [&](const QString& text) { return clears || !text.isEmpty(); };
    if (isSet(fields.Artist)) tag.setArtist(LatinOf(fields.Artist));
    if (isSet(fields.Album)) tag.setAlbum(LatinOf(fields.Album));
    if (isSet(fields.Title)) tag.setTitle(LatinOf(fields.Title));
    if (isSet(fields.Comment)) tag.setComment(LatinOf(fields.Comment));
    if (isSet(fields.Genre)) tag.setGenreNumber(GenreNumber(fields.Genre));
    if (isSet(fields.Year)) tag.setYear(fields.Year.left(4).toUInt());
    if (isSet(fields.Track)) tag.setTrack(fields.Track.section(u'/', 0, 0).toUInt());
}

}  // namespace Sonmira

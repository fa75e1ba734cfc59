#include "codecs/tagging/Id3v1Values.h"

#include "codecs/GenreNames.h"
#include "codecs/tagging/TagProperties.h"

#include <id3v1tag.h>

#include <algorithm>

namespace Sonmira {

namespace {

struct Sign {
    char16_t Typographic;
    char16_t Plain;
};
constexpr Sign Signs[] = {{u'\u2018', u'\''}, {u'\u2019', u'\''}, {u'\u201C', u'"'},
                          {u'\u201D', u'"'},  {u'\u2013', u'-'},  {u'\u2014', u'-'}};

// Latin-1, with question marks for the letters that it does not have; the library would write nothing at all.
// A text of which nothing is left stays out, so that whoever reads on finds it in a tag that can hold it.
TagLib::String LatinText(QString text) {
    text = text.normalized(QString::NormalizationForm_C);
    for (const Sign& sign : Signs) text.replace(sign.Typographic, sign.Plain);
    const QString latin = QString::fromLatin1(text.toLatin1());
    const bool isReadable =
        std::any_of(latin.begin(), latin.end(), [](QChar c) { return c.isLetterOrNumber(); });
    return isReadable || latin == text ? ToTagText(latin) : TagLib::String();
}

}  // namespace

TagValues ReadId3v1(const TagLib::ID3v1::Tag& tag) {
    TagValues values;
    values.Title = FromTagText(tag.title());
    values.Artist = FromTagText(tag.artist());
    values.Album = FromTagText(tag.album());
    values.Comment = FromTagText(tag.comment());
    values.Year = static_cast<qint32>(tag.year());
    values.Track = static_cast<qint16>(tag.track());
    if (tag.genreNumber() < GenreCount) {
        values.Genre = static_cast<qint16>(tag.genreNumber());
        values.GenreString = GenreName(values.Genre);
    }
    return values;
}

void ChangeId3v1(TagLib::ID3v1::Tag& tag, const TagValues& now, const TagValues& values) {
    const auto text = [&](QString TagValues::*field) { return LatinText(values.*field); };
    if (values.Title != now.Title) tag.setTitle(text(&TagValues::Title));
    if (values.Artist != now.Artist) tag.setArtist(text(&TagValues::Artist));
    if (values.Album != now.Album) tag.setAlbum(text(&TagValues::Album));
    if (values.Comment != now.Comment) tag.setComment(text(&TagValues::Comment));
    if (values.Year != now.Year) tag.setYear(static_cast<unsigned>(std::max(values.Year, 0)));
    if (values.Track != now.Track) tag.setTrack(static_cast<unsigned>(std::clamp<int>(values.Track, 0, 255)));
    if (values.Genre != now.Genre) {
        const bool isKnown = values.Genre >= 0 && values.Genre < GenreCount;
        tag.setGenreNumber(static_cast<unsigned>(isKnown ? values.Genre : TagValues::OtherGenre));
    }
}

}  // namespace Sonmira

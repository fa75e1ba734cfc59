#include "codecs/tagging/Id3v1Values.h"

#include "codecs/tagging/Id3v1.h"
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

// Where the fields lie.
struct Place {
    qsizetype At;
    qsizetype Size;
};
constexpr Place TitlePlace{3, 30};
constexpr Place ArtistPlace{33, 30};
constexpr Place AlbumPlace{63, 30};
constexpr Place YearPlace{93, 4};
constexpr Place CommentPlace{97, 28};
constexpr Place WholeComment{97, 30};
constexpr Place TrackPlace{125, 2};
constexpr Place GenrePlace{127, 1};

void Put(QByteArray& tag, const Place& place, const QByteArray& bytes) {
    tag.replace(place.At, place.Size, bytes.leftJustified(place.Size, '\0', true));
}

// The library's tag over bytes.
struct Id3v1OfBytes : TagLib::ID3v1::Tag {
    explicit Id3v1OfBytes(const QByteArray& bytes) {
        parse(TagLib::ByteVector(bytes.constData(), static_cast<unsigned>(bytes.size())));
    }
};

}  // namespace

QByteArray Id3v1AtEnd(TagStream& file) {
    const QByteArray tag = file.Bytes(file.length() - Id3v1Size, Id3v1Size);
    // The mark of another kind of tag ends with the same letters.
    const bool isOther = file.Bytes(file.length() - Id3v1Size - 5, 8) == "APETAGEX";
    return tag.size() == Id3v1Size && tag.startsWith("TAG") && !isOther ? tag : QByteArray();
}

QByteArray EmptyId3v1() {
    return "TAG" + QByteArray(Id3v1Size - 4, '\0') + '\xFF';
}

TagValues ReadId3v1(const QByteArray& bytes) {
    const Id3v1OfBytes tag(bytes);
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

bool IsTrackCrowdedOut(const QByteArray& tag) {
    const char last = tag[TrackPlace.At];
    const char behind = tag[TrackPlace.At + 1];
    // A blank before a letter is one of the comment's own.
    return last != '\0' && !(last == ' ' && (behind == ' ' || behind == '\0'));
}

void ChangeId3v1(QByteArray& tag, const TagValues& now, const TagValues& values) {
    const auto put = [&](QString TagValues::*field, const Place& place) {
        if (values.*field == now.*field) return;
        Put(tag, place, QByteArray::fromStdString(LatinText(values.*field).to8Bit()));
    };
    put(&TagValues::Title, TitlePlace);
    put(&TagValues::Artist, ArtistPlace);
    put(&TagValues::Album, AlbumPlace);
    if (IsTrackCrowdedOut(tag) && values.Comment != now.Comment) Put(tag, TrackPlace, {});
    put(&TagValues::Comment, CommentPlace);
    if (values.Year != now.Year)
        Put(tag, YearPlace, values.Year > 0 ? QByteArray::number(values.Year) : QByteArray());
    if (values.Track != now.Track && !IsTrackCrowdedOut(tag))
        Put(tag, TrackPlace, QByteArray(1, '\0') + static_cast<char>(std::clamp<int>(values.Track, 0, 255)));
    if (values.Genre != now.Genre) {
        const bool isKnown = values.Genre >= 0 && values.Genre < GenreCount;
        Put(tag, GenrePlace,
            QByteArray(1, static_cast<char>(isKnown ? values.Genre : TagValues::OtherGenre)));
    }
}

TagEdits EditsOfId3v1(const TagValues& now, const TagValues& values) {
    TagEdits edits;
    const auto add = [&](const char* key, bool isEdited) {
        if (isEdited) edits.insert(key, true);
    };
    add("TITLE", values.Title != now.Title);
    add("ARTIST", values.Artist != now.Artist);
    add("ALBUM", values.Album != now.Album);
    add("COMMENT", values.Comment != now.Comment);
    add("GENRE", values.Genre != now.Genre);
    add(YearKey, values.Year != now.Year);
    add(TrackKey, values.Track != now.Track);
    return edits;
}

RawFields Id3v1Fields(const QByteArray& tag) {
    if (tag.isEmpty()) return {};
    const auto part = [&](const char* name, const char* key, const Place& place) {
        return RawField{QByteArray("ID3v1 ") + name, key, tag.sliced(place.At, place.Size)};
    };
    RawFields fields{part("title", "TITLE", TitlePlace), part("artist", "ARTIST", ArtistPlace),
                     part("album", "ALBUM", AlbumPlace), part("year", YearKey, YearPlace),
                     part("genre", "GENRE", GenrePlace)};
    if (IsTrackCrowdedOut(tag)) {
        fields.append(part("comment", "COMMENT", WholeComment));
    } else {
        fields.append(part("comment", "COMMENT", CommentPlace));
        fields.append(part("track", TrackKey, TrackPlace));
    }
    return fields;
}

}  // namespace Sonmira

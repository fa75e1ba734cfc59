#include "codecs/TagProperties.h"

#include "codecs/GenreNames.h"

#include <algorithm>

namespace Sonmira {

namespace {

// Keys of the library's property maps; the second one is how other programs spell the same in Vorbis
// comments and APEv2 items.
struct TextKey {
    QString TagValues::*Field;
    const char* Key;
    const char* Other = nullptr;
};
constexpr TextKey TextKeys[] = {{&TagValues::Title, "TITLE"},
                                {&TagValues::Artist, "ARTIST"},
                                {&TagValues::Album, "ALBUM"},
                                {&TagValues::Comment, "COMMENT", "DESCRIPTION"},
                                {&TagValues::Copyright, "COPYRIGHT"},
                                {&TagValues::URL, "URL", "CONTACT"},
                                {&TagValues::EncodedBy, "ENCODEDBY", "ENCODED-BY"},
                                {&TagValues::Composer, "COMPOSER"},
                                {&TagValues::GenreString, "GENRE"},
                                {&TagValues::OriginalArtist, "ORIGINALARTIST"}};
constexpr const char* YearKey = "DATE";
constexpr const char* TrackKey = "TRACKNUMBER";

// The key under which the property stands, or shall stand.
const char* KeyIn(const TagLib::PropertyMap& properties, const TextKey& text) {
    const bool isOther =
        text.Other != nullptr && !properties.contains(text.Key) && properties.contains(text.Other);
    return isOther ? text.Other : text.Key;
}

QString TextOf(const TagLib::PropertyMap& properties, const char* key) {
    const auto found = properties.find(key);
    return found == properties.end() || found->second.isEmpty() ? QString()
                                                                : FromTagText(found->second.front());
}

// The number in front, such as the 3 of "3/12" and the 2010 of "2010-05-01".
int NumberInFront(const QString& text) {
    qsizetype length = 0;
    while (length < text.size() && text[length] >= u'0' && text[length] <= u'9') ++length;
    return text.first(length).toInt();
}

void SetText(TagLib::PropertyMap& properties, const char* key, const QString& text) {
    if (text.isEmpty()) {
        properties.erase(key);
    } else {
        properties.replace(key, TagLib::StringList(ToTagText(text)));
    }
}

void SetNumber(TagLib::PropertyMap& properties, const char* key, int number) {
    const QString now = TextOf(properties, key);
    if (NumberInFront(now) == number) return;
    // "3/12" keeps its total.
    const qsizetype total = now.indexOf(u'/');
    const bool keepsTotal = key == TrackKey && total >= 0 && number > 0;
    const QString text = number > 0 ? QString::number(number) : QString();
    SetText(properties, key, keepsTotal ? text + now.sliced(total) : text);
}

QString GenreOf(const TagValues& values, qint16 kind) {
    const QString named = values.Genre == TagValues::OtherGenre ? QString() : GenreName(values.Genre);
    const QString text = FromTagText(ToTagText(values.GenreString)).trimmed();
    const QString& first = kind == 1 ? named : text;
    const QString& second = kind == 1 ? text : named;
    if (!first.isEmpty()) return first;
    return second;
}

}  // namespace

QString FromTagText(const TagLib::String& text) {
    return QString::fromStdString(text.to8Bit(true));
}

TagLib::String ToTagText(const QString& text) {
    const qsizetype padding = text.indexOf(QChar(u'\0'));
    return {(padding < 0 ? text : text.first(padding)).toStdString(), TagLib::String::UTF8};
}

TagValues ValuesOf(const TagLib::PropertyMap& properties) {
    TagValues values;
    for (const TextKey& text : TextKeys) values.*text.Field = TextOf(properties, KeyIn(properties, text));
    const int genre = GenreIndexOf(values.GenreString);
    if (genre >= 0) values.Genre = static_cast<qint16>(genre);
    values.Year = NumberInFront(TextOf(properties, YearKey));
    values.Track = static_cast<qint16>(std::clamp(NumberInFront(TextOf(properties, TrackKey)), 0, 32767));
    return values;
}

TagLib::PropertyMap WithValues(TagLib::PropertyMap properties, const TagValues& values, qint16 kind) {
    const TagValues now = ValuesOf(properties);
    for (const TextKey& text : TextKeys) {
        const bool isGenre = text.Field == &TagValues::GenreString;
        const QString wanted = isGenre ? GenreOf(values, kind) : FromTagText(ToTagText(values.*text.Field));
        if (wanted != now.*text.Field) SetText(properties, KeyIn(properties, text), wanted);
    }
    SetNumber(properties, YearKey, values.Year);
    SetNumber(properties, TrackKey, values.Track);
    return properties;
}

}  // namespace Sonmira

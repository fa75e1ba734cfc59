#include "codecs/tagging/TagProperties.h"

#include "codecs/tagging/Id3v1.h"
#include "platform/Failure.h"
#include "platform/Paths.h"

#include <algorithm>
#include <limits>

namespace Sonmira {

using namespace Qt::StringLiterals;

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

// The number in front, such as the 3 of "3/12" and the 2010 of "2010-05-01"; `most` for any beyond that.
int NumberInFront(const QString& text, int most) {
    qint64 number = 0;
    for (qsizetype at = 0; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at)
        number = std::min<qint64>(number * 10 + text[at].digitValue(), most);
    return static_cast<int>(number);
}

int YearIn(const TagLib::PropertyMap& properties) {
    return NumberInFront(TextOf(properties, YearKey), std::numeric_limits<qint32>::max());
}

int TrackIn(const TagLib::PropertyMap& properties) {
    return NumberInFront(TextOf(properties, TrackKey), std::numeric_limits<qint16>::max());
}

// The change of one key.
struct Change {
    const TagLib::PropertyMap& Now;
    TagLib::PropertyMap& Changes;

    void SetText(const char* key, const QString& text) const {
        TagLib::StringList texts;
        if (!text.isEmpty()) {
            if (const auto found = Now.find(key); found != Now.end()) texts = found->second;
            if (!texts.isEmpty()) texts.erase(texts.begin());
            texts.prepend(ToTagText(text));
        }
        Changes.insert(key, texts);
    }

    void SetNumber(const char* key, int number) const {
        const QString now = TextOf(Now, key);
        // "3/12" keeps its total.
        const qsizetype total = now.indexOf(u'/');
        const bool keepsTotal = key == TrackKey && total >= 0 && number > 0;
        const QString text = number > 0 ? QString::number(number) : QString();
        SetText(key, keepsTotal ? text + now.sliced(total) : text);
    }
};

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

TagLib::String FromFileText(const QByteArray& bytes) {
    const bool isUtf8 = !HoldsRawBytes(FromNarrow(bytes));
    return {bytes.toStdString(), isUtf8 ? TagLib::String::UTF8 : TagLib::String::Latin1};
}

QByteArray ToFileText(const TagLib::String& text) {
    return QByteArray::fromStdString(text.to8Bit(true));
}

void CheckIsText(const QByteArray& bytes, int step) {
    const QByteArray end(step, '\0');
    for (qsizetype at = 0; at + step <= bytes.size(); at += step) {
        if (bytes.sliced(at, step) != end) continue;
        const bool isPadding = std::all_of(bytes.begin() + at, bytes.end(), [](char c) { return c == '\0'; });
        if (isPadding) return;
        throw Failure(FailureNumber::Component, u"The field holds more than text: the tag is damaged"_s);
    }
}

TagValues ValuesOf(const TagLib::PropertyMap& properties) {
    TagValues values;
    for (const TextKey& text : TextKeys) values.*text.Field = TextOf(properties, KeyIn(properties, text));
    const int genre = GenreIndexOf(values.GenreString);
    if (genre >= 0) values.Genre = static_cast<qint16>(genre);
    values.Year = YearIn(properties);
    values.Track = static_cast<qint16>(TrackIn(properties));
    return values;
}

TagLib::PropertyMap ChangesTo(const TagLib::PropertyMap& properties, const TagValues& values, qint16 kind) {
    TagLib::PropertyMap changes;
    const Change change{properties, changes};
    const TagValues now = ValuesOf(properties);
    for (const TextKey& text : TextKeys) {
        const bool isGenre = text.Field == &TagValues::GenreString;
        const QString wanted = isGenre ? GenreOf(values, kind) : FromTagText(ToTagText(values.*text.Field));
        // Nobody is shown what follows a NUL.
        const QString shown = FromTagText(ToTagText(now.*text.Field));
        if (wanted == (isGenre ? shown.trimmed() : shown)) continue;
        // A genre of the table keeps the spelling that the file has.
        if (isGenre && GenreIndexOf(wanted) >= 0 && GenreIndexOf(wanted) == GenreIndexOf(now.GenreString))
            continue;
        change.SetText(KeyIn(properties, text), wanted);
    }
    if (values.Year != now.Year) change.SetNumber(YearKey, values.Year);
    if (values.Track != now.Track) change.SetNumber(TrackKey, values.Track);
    return changes;
}

TagLib::PropertyMap Changed(TagLib::PropertyMap properties, const TagLib::PropertyMap& changes) {
    for (const auto& [key, texts] : changes) {
        properties.erase(key);
        if (!texts.isEmpty()) properties.insert(key, texts);
    }
    return properties;
}

TagEdits EditsOf(const TagLib::PropertyMap& changes) {
    TagEdits edits;
    for (const auto& [key, texts] : changes) edits.insert(ToFileText(key), texts.isEmpty());
    return edits;
}

}  // namespace Sonmira

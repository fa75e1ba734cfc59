#include "codecs/tagging/AsfObjects.h"
#include "codecs/tagging/TagProperties.h"
#include "codecs/tagging/TaggedFile.h"
#include "platform/Failure.h"

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr const char* TrackName = "WM/TrackNumber";
constexpr const char* OldTrackName = "WM/Track";  // counts from 0

struct Name {
    const char* Key;
    const char* Attribute;
};
constexpr Name Names[] = {{"ALBUM", "WM/AlbumTitle"},  {"GENRE", "WM/Genre"},
                          {YearKey, "WM/Year"},        {TrackKey, TrackName},
                          {"COMPOSER", "WM/Composer"}, {"ENCODEDBY", "WM/EncodedBy"},
                          {"URL", "WM/AuthorURL"},     {"ORIGINALARTIST", "WM/OriginalArtist"}};

// Some programs say the texts of the content description once more as attributes, or only there, and others
// believe the attribute.
constexpr Name Doubles[] = {{"TITLE", "Title"},
                            {"TITLE", "title"},
                            {"ARTIST", "Author"},
                            {"COMMENT", "Description"},
                            {"COPYRIGHT", "Copyright"}};

struct TextKey {
    const char* Key;
    AsfObjects::Text Text;
};
constexpr TextKey Texts[] = {{"TITLE", AsfObjects::Title},
                             {"ARTIST", AsfObjects::Author},
                             {"COMMENT", AsfObjects::Description},
                             {"COPYRIGHT", AsfObjects::Copyright}};

class AsfTags : public TaggedFile {
public:
    explicit AsfTags(const QByteArray& file) : Stream(file), Objects(Stream) {}

    TagValues Read(qint16 /*kind*/) override {
        TagValues values = ValuesOf(Properties());
        values.Track = static_cast<qint16>(std::max(values.Track - 1, 0));
        return values;
    }

    bool IsUpToDate(qint16 kind, const TagValues& values) override {
        return Objects.Has(TrackName) && Changes(kind, values).isEmpty();
    }

    TagEdits Edits(qint16 kind, const TagValues& values) override {
        TagEdits edits = EditsOf(Changes(kind, values));
        if (!Objects.Has(TrackName)) edits.insert(TrackKey, false);
        return edits;
    }

    RawFields Raw() override {
        RawFields fields = Objects.Fields();
        if (!Objects.Fit()) fields.append({"header", {}, Stream.Bytes(0, Objects.Size())});
        for (RawField& field : fields) field.Key = KeyOf(field.Name);
        return fields;
    }

    bool Write(qint16 kind, const TagValues& values) override {
        if (!Objects.Fit())
            throw Failure(FailureNumber::Component, u"The header is damaged, and a save would lose parts"_s);
        const TagLib::PropertyMap now = Properties();
        const TagLib::PropertyMap changes = Changes(kind, values);
        for (const auto& [key, texts] : changes)
            Set(ToFileText(key), Front(now, key), texts.isEmpty() ? QString() : FromTagText(texts.front()));
        if (!Objects.Has(TrackName)) Objects.SetValue(TrackName, Front(Changed(now, changes), TrackKey));
        const QByteArray header = Objects.Bytes();
        Stream.Replace(0, Objects.Size(), header);
        Stream.CheckWrites();
        Objects = AsfObjects(Stream);
        return true;
    }

private:
    static QString Front(const TagLib::PropertyMap& properties, const TagLib::String& key) {
        const auto found = properties.find(key);
        return found == properties.end() || found->second.isEmpty() ? QString()
                                                                    : FromTagText(found->second.front());
    }
    static QByteArray KeyOf(const QByteArray& name) {
        for (const TextKey& text : Texts) {
            if (name == "text " + QByteArray::number(int{text.Text})) return text.Key;
        }
        for (const Name& one : Names) {
            if (name == one.Attribute) return one.Key;
        }
        for (const Name& one : Doubles) {
            if (name == one.Attribute) return one.Key;
        }
        if (name == OldTrackName) return TrackKey;
        return {};
    }

    // Tracks as the attribute of today counts them, from 1; none is no number.
    TagLib::PropertyMap Properties() const {
        TagLib::PropertyMap properties;
        const auto add = [&](const char* key, const QString& text) {
            if (!text.isEmpty() && !properties.contains(key)) properties.insert(key, ToTagText(text));
        };
        for (const TextKey& text : Texts) add(text.Key, Objects.TextOf(text.Text));
        for (const Name& other : Doubles) add(other.Key, Objects.ValueOf(other.Attribute));
        for (const Name& name : Names) add(name.Key, Objects.ValueOf(name.Attribute));
        if (!Objects.Has(TrackName) && Objects.Has(OldTrackName))
            add(TrackKey, QString::number(Objects.ValueOf(OldTrackName).toLongLong() + 1));
        return properties;
    }
    TagLib::PropertyMap Changes(qint16 kind, TagValues values) const {
        values.Track = static_cast<qint16>(std::clamp<int>(values.Track, -1, 32766) + 1);
        return ChangesTo(Properties(), values, kind);
    }

    // A double that said the same goes on to do that; another text of that name is one of its own.
    void Set(const QByteArray& key, const QString& before, const QString& text) {
        for (const TextKey& one : Texts) {
            if (key == one.Key) Objects.SetText(one.Text, text);
        }
        for (const Name& one : Doubles) {
            const bool isDouble = key == one.Key && Objects.Has(one.Attribute);
            if (isDouble && (text.isEmpty() || Objects.ValueOf(one.Attribute) == before))
                Objects.SetValue(one.Attribute, text);
        }
        for (const Name& one : Names) {
            if (key == one.Key) Objects.SetValue(one.Attribute, text);
        }
        if (key == TrackKey && Objects.Has(OldTrackName))
            Objects.SetValue(OldTrackName, QString::number(std::max(text.toInt() - 1, 0)));
    }

    TagStream Stream;
    AsfObjects Objects;
};

}  // namespace

std::unique_ptr<TaggedFile> OpenAsfTags(const QByteArray& file) {
    return std::make_unique<AsfTags>(file);
}

}  // namespace Sonmira

#include "codecs/tagging/WavTags.h"

#include "codecs/tagging/Id3v2Check.h"
#include "codecs/tagging/Id3v2Frames.h"
#include "codecs/tagging/PropertyTags.h"
#include "platform/Failure.h"
#include "platform/NarrowText.h"

#include <QSet>
#include <QtEndian>

#include <id3v2tag.h>
#include <infotag.h>
#include <wavfile.h>

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

using Library = TagLib::RIFF::WAV::File;
using InfoTag = TagLib::RIFF::Info::Tag;

// The library never destroys one through its base, which has no virtual destructor.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
// Texts of the list are UTF-8 today and were Latin-1 once; the library drops those.
class InfoTexts final : public TagLib::RIFF::Info::StringHandler {
public:
    InfoTexts() = default;
    virtual ~InfoTexts() = default;
    TagLib::String parse(const TagLib::ByteVector& data) const override {
        const QString text = FromNarrow(QByteArray(data.data(), static_cast<qsizetype>(data.size())));
        if (!HoldsRawBytes(text)) return StringHandler::parse(data);
        return {TagLib::String(data, TagLib::String::Latin1)};
    }
};
#pragma GCC diagnostic pop

// Fields that the list has under names that the library gives no property.
struct InfoField {
    const char* Name;
    const char* Key;
};
constexpr InfoField OwnFields[] = {{"ICOP", "COPYRIGHT"}, {"ITCH", "ENCODEDBY"}};

constexpr qint64 HeadSize = 8;

quint32 SizeIn(const QByteArray& bytes, qint64 head) {
    return qFromLittleEndian<quint32>(bytes.constData() + head + 4);
}

// What the chunks with tags hold, in their order.
struct TagChunks {
    QList<QByteArray> Id3v2;
    QList<QByteArray> Lists;  // with the mark "INFO" in front
};

TagChunks ChunksOf(TagStream& file) {
    TagChunks chunks;
    for (qint64 at = 12; at + HeadSize <= file.length();) {
        const QByteArray head = file.Bytes(at, HeadSize + 4);
        const qint64 size = SizeIn(head, 0);
        if (head.toLower().startsWith("id3 ")) {
            const QByteArray chunk = file.Bytes(at + HeadSize, size);
            chunks.Id3v2.append(chunk.first(std::min<qint64>(Id3v2Size(chunk), chunk.size())));
        }
        if (head.startsWith("LIST") && head.endsWith("INFO"))
            chunks.Lists.append(file.Bytes(at + HeadSize, size));
        at += HeadSize + size + size % 2;
    }
    return chunks;
}

// Whether the library reads the list to its end, and finds nothing in it twice, of which it would keep one.
bool IsListKept(const QByteArray& list) {
    QSet<QByteArray> seen;
    for (qint64 at = 4; at < list.size();) {
        if (list[at] == '\0')
            return std::all_of(list.begin() + at, list.end(), [](char c) { return c == '\0'; });
        if (at + HeadSize > list.size()) return false;
        const QByteArray name = list.sliced(at, 4);
        const bool isName =
            std::all_of(name.begin(), name.end(), [](char c) { return c >= ' ' && c < '\x7F'; });
        const qint64 size = SizeIn(list, at);
        if (!isName || seen.contains(name) || size > list.size() - at - HeadSize) return false;
        seen.insert(name);
        at += HeadSize + size + size % 2;
    }
    return true;
}

class WavTags : public LibraryFile<Library> {
public:
    explicit WavTags(const QByteArray& file) : LibraryFile(file) {}

    TagValues Read(qint16 /*kind*/) override { return ValuesOf(Properties()); }

    // ID3v2 has to say it, and the list no more than that.
    bool Says(qint16 kind, const TagValues& values) override {
        return ChangesTo(File.ID3v2Tag()->properties(), values, kind).isEmpty() &&
               ChangesTo(Properties(), values, kind).isEmpty();
    }

    bool Write(qint16 kind, const TagValues& values) override {
        CheckChunks();
        TagLib::ID3v2::Tag& tag = *File.ID3v2Tag();
        const auto version = VersionToWrite(tag);
        const TagLib::PropertyMap now = Properties();
        const TagLib::PropertyMap wanted = Changed(now, ChangesTo(now, values, kind));
        ChangeFrames(tag, ChangesTo(tag.properties(), ValuesOf(wanted), kind));
        WriteList(wanted);
        return Saved(File.save(Library::AllTags, TagLib::File::StripNone, version));
    }

private:
    // The library writes one tag of each kind from what it understood of the first, and has no way to keep
    // some frames in files of this kind.
    void CheckChunks() {
        const TagChunks chunks = ChunksOf(Stream);
        const bool isOneOfEach = chunks.Id3v2.size() <= 1 && chunks.Lists.size() <= 1;
        if (!isOneOfEach || (!chunks.Lists.isEmpty() && !IsListKept(chunks.Lists.front())))
            throw Failure(FailureNumber::Component, u"The file holds a tag that a save would lose"_s);
        for (const QByteArray& tag : chunks.Id3v2) {
            if (!tag.isEmpty()) CheckFramesAreKept(tag, FrameKeeping::OfTheLibraryAlone);
        }
    }
    // What ID3v2 says, and what only the list says.
    TagLib::PropertyMap Properties() {
        TagLib::PropertyMap properties = File.ID3v2Tag()->properties();
        for (const auto& [key, texts] : ListProperties()) {
            if (!properties.contains(key)) properties.insert(key, texts);
        }
        return properties;
    }
    TagLib::PropertyMap ListProperties() {
        const InfoTag& info = *File.InfoTag();
        TagLib::PropertyMap properties = info.properties();
        for (const InfoField& field : OwnFields) {
            const TagLib::String text = info.fieldText(field.Name);
            if (!text.isEmpty()) properties.insert(field.Key, text);
        }
        return properties;
    }
    // Only what differs, since the library would cut a full date to its year and a track to its number.
    void WriteList(const TagLib::PropertyMap& wantedProperties) {
        InfoTag& info = *File.InfoTag();
        const TagValues now = ValuesOf(ListProperties());
        const TagValues wanted = ValuesOf(wantedProperties);
        if (wanted.Title != now.Title) info.setTitle(ToTagText(wanted.Title));
        if (wanted.Artist != now.Artist) info.setArtist(ToTagText(wanted.Artist));
        if (wanted.Album != now.Album) info.setAlbum(ToTagText(wanted.Album));
        if (wanted.Comment != now.Comment) info.setComment(ToTagText(wanted.Comment));
        if (wanted.GenreString != now.GenreString) info.setGenre(ToTagText(wanted.GenreString));
        // As ID3v2 has them: "3/12", or a full date.
        if (wanted.Year != now.Year) info.setFieldText("ICRD", wantedProperties[YearKey].toString());
        if (wanted.Track != now.Track) info.setFieldText("IPRT", wantedProperties[TrackKey].toString());
        if (wanted.Copyright != now.Copyright) info.setFieldText("ICOP", ToTagText(wanted.Copyright));
        if (wanted.EncodedBy != now.EncodedBy) info.setFieldText("ITCH", ToTagText(wanted.EncodedBy));
    }
};

}  // namespace

std::unique_ptr<TaggedFile> OpenWavTags(const QByteArray& file) {
    TagStream stream(file);
    const QList<QByteArray> tags = ChunksOf(stream).Id3v2;
    if (std::any_of(tags.begin(), tags.end(), IsBottomless)) return nullptr;
    static const InfoTexts Texts;
    InfoTag::setStringHandler(&Texts);
    return TryOpen<WavTags>(file);
}

}  // namespace Sonmira

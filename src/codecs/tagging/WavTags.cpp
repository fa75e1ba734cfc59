#include "codecs/tagging/WavTags.h"

#include "codecs/tagging/Id3v2Check.h"
#include "codecs/tagging/Id3v2Frames.h"
#include "codecs/tagging/PropertyTags.h"
#include "platform/NarrowText.h"

#include <QtEndian>

#include <id3v2tag.h>
#include <infotag.h>
#include <wavfile.h>

#include <algorithm>

namespace Sonmira {

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

// The tag in the chunk that holds one; empty where there is none.
QByteArray Id3v2Chunk(TagStream& file) {
    constexpr qint64 HeadSize = 8;
    for (qint64 at = 12; at + HeadSize <= file.length();) {
        const QByteArray head = file.Bytes(at, HeadSize);
        const qint64 size = qFromLittleEndian<quint32>(head.constData() + 4);
        if (head.toLower().startsWith("id3 ")) {
            const QByteArray chunk = file.Bytes(at + HeadSize, size);
            return chunk.first(std::min<qint64>(Id3v2Size(chunk), chunk.size()));
        }
        at += HeadSize + size + size % 2;
    }
    return {};
}

class WavTags : public LibraryFile<Library> {
public:
    explicit WavTags(const QByteArray& file) : LibraryFile(file) {}

    TagValues Read(qint16 /*kind*/) override { return ValuesOf(Properties()); }

    // Both have to say it.
    bool Says(qint16 kind, const TagValues& values) override {
        return ChangesTo(File.ID3v2Tag()->properties(), values, kind).isEmpty();
    }

    bool Write(qint16 kind, const TagValues& values) override {
        CheckChunk();
        TagLib::ID3v2::Tag& tag = *File.ID3v2Tag();
        const auto version = VersionToWrite(tag);
        const TagLib::PropertyMap now = Properties();
        const TagLib::PropertyMap wanted = Changed(now, ChangesTo(now, values, kind));
        ChangeFrames(tag, ChangesTo(tag.properties(), ValuesOf(wanted), kind));
        WriteList(wanted);
        return Saved(File.save(Library::AllTags, TagLib::File::StripNone, version));
    }

private:
    // Frames of which the library has no way to keep in files of this kind.
    void CheckChunk() {
        static constexpr const char* Lost[] = {"EQUA", "RVAD", "TRDA", "TSIZ"};
        const QByteArray tag = Id3v2Chunk(Stream);
        if (!tag.isEmpty()) CheckFramesAreKept(tag, Lost);
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
    if (IsBottomless(Id3v2Chunk(stream))) return nullptr;
    static const InfoTexts Texts;
    InfoTag::setStringHandler(&Texts);
    return TryOpen<WavTags>(file);
}

}  // namespace Sonmira

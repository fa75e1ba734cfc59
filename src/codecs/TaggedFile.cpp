#include "codecs/TaggedFile.h"

#include "codecs/Descriptor.h"
#include "codecs/GenreNames.h"
#include "codecs/TagProperties.h"
#include "codecs/TagStream.h"

#include <apefile.h>
#include <apetag.h>
#include <asffile.h>
#include <asftag.h>
#include <fcntl.h>
#include <flacfile.h>
#include <id3v1tag.h>
#include <id3v2framefactory.h>
#include <id3v2header.h>
#include <id3v2tag.h>
#include <infotag.h>
#include <mp4file.h>
#include <mpcfile.h>
#include <mpegfile.h>
#include <oggflacfile.h>
#include <opusfile.h>
#include <unistd.h>
#include <vorbisfile.h>
#include <wavfile.h>

#include <algorithm>

namespace Sonmira {

namespace {

// The version of an ID3v2 tag that is there is kept: some players read the older one only.
TagLib::ID3v2::Version VersionOf(const TagLib::ID3v2::Tag* tag) {
    const bool isOld = tag != nullptr && !tag->isEmpty() && tag->header()->majorVersion() < 4;
    return isOld ? TagLib::ID3v2::v3 : TagLib::ID3v2::v4;
}

// `Library` is one of the library's files; two of them want to know how frames of ID3v2 are made.
template <class Library>
Library OpenBy(TagStream& stream) {
    using Factory = TagLib::ID3v2::FrameFactory;
    if constexpr (std::is_constructible_v<Library, TagLib::IOStream*, Factory*, bool>) {
        return Library(&stream, Factory::instance(), false);
    } else {
        return Library(&stream, false);
    }
}

// A file of one kind of tag, through its named properties.
template <class Library>
class PlainTagged : public TaggedFile {
public:
    explicit PlainTagged(const QByteArray& file) : Stream(file), File(OpenBy<Library>(Stream)) {}

    bool IsValid() { return File.isValid(); }
    TagValues Read(qint16 /*kind*/) override { return ValuesOf(File.properties()); }
    bool Says(qint16 kind, const TagValues& values) override {
        return WithValues(File.properties(), values, kind) == File.properties();
    }
    bool Write(qint16 kind, const TagValues& values) override {
        File.setProperties(WithValues(File.properties(), values, kind));
        return Saved(File.save());
    }

protected:
    bool Saved(bool isSaved) const {
        Stream.CheckWrites();
        return isSaved;
    }

    TagStream Stream;
    Library File;
};

// MPEG audio: both kinds of ID3, apart from each other.
class MpegTagged : public TaggedFile {
public:
    explicit MpegTagged(const QByteArray& file) : Stream(file), File(OpenBy<TagLib::MPEG::File>(Stream)) {}

    // Any file may carry these tags.
    bool IsValid() { return File.isOpen(); }

    TagValues Read(qint16 kind) override {
        if (kind == 2) return File.hasID3v2Tag() ? ValuesOf(File.ID3v2Tag()->properties()) : TagValues();
        TagValues values;
        if (!File.hasID3v1Tag()) return values;
        const TagLib::ID3v1::Tag& tag = *File.ID3v1Tag();
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

    bool Says(qint16 kind, const TagValues& values) override {
        if (kind != 2 || !File.hasID3v2Tag()) return false;
        const TagLib::PropertyMap now = File.ID3v2Tag()->properties();
        return WithValues(now, values, kind) == now;
    }

    bool Write(qint16 kind, const TagValues& values) override {
        constexpr auto KeepOthers = TagLib::File::StripNone;
        constexpr auto ToEachItsOwn = TagLib::File::DoNotDuplicate;
        if (kind == 2) {
            TagLib::ID3v2::Tag& tag = *File.ID3v2Tag(true);
            const auto version = VersionOf(&tag);
            tag.setProperties(WithValues(tag.properties(), values, kind));
            return Saved(File.save(TagLib::MPEG::File::ID3v2, KeepOthers, version, ToEachItsOwn));
        }
        TagLib::ID3v1::Tag& tag = *File.ID3v1Tag(true);
        tag.setTitle(ToTagText(values.Title));
        tag.setArtist(ToTagText(values.Artist));
        tag.setAlbum(ToTagText(values.Album));
        tag.setComment(ToTagText(values.Comment));
        tag.setYear(static_cast<unsigned>(std::max(values.Year, 0)));
        tag.setTrack(static_cast<unsigned>(std::clamp<int>(values.Track, 0, 255)));
        tag.setGenreNumber(values.Genre >= 0 && values.Genre < GenreCount
                               ? static_cast<unsigned>(values.Genre)
                               : static_cast<unsigned>(TagValues::OtherGenre));
        return Saved(File.save(TagLib::MPEG::File::ID3v1, KeepOthers, TagLib::ID3v2::v4, ToEachItsOwn));
    }

private:
    bool Saved(bool isSaved) const {
        Stream.CheckWrites();
        return isSaved;
    }

    TagStream Stream;
    TagLib::MPEG::File File;
};

// WAV: ID3v2 holds everything; the INFO list repeats what it can for programs that know only that.
class WavTagged : public PlainTagged<TagLib::RIFF::WAV::File> {
public:
    using PlainTagged::PlainTagged;

    TagValues Read(qint16 /*kind*/) override { return ValuesOf(Properties()); }

    bool Says(qint16 kind, const TagValues& values) override {
        const TagLib::PropertyMap now = File.ID3v2Tag()->properties();
        return WithValues(now, values, kind) == now;
    }

    bool Write(qint16 kind, const TagValues& values) override {
        const auto version = VersionOf(File.ID3v2Tag());
        File.ID3v2Tag()->setProperties(WithValues(Properties(), values, kind));
        WriteList(values, kind);
        return Saved(File.save(TagLib::RIFF::WAV::File::AllTags, TagLib::File::StripNone, version));
    }

private:
    // Only what differs, since the library would cut a full date to its year and a track to its number.
    void WriteList(const TagValues& values, qint16 kind) {
        TagLib::RIFF::Info::Tag& info = *File.InfoTag();
        const TagLib::PropertyMap before = info.properties();
        const TagValues now = ValuesOf(before);
        const TagValues wanted = ValuesOf(WithValues(before, values, kind));
        if (wanted.Title != now.Title) info.setTitle(ToTagText(wanted.Title));
        if (wanted.Artist != now.Artist) info.setArtist(ToTagText(wanted.Artist));
        if (wanted.Album != now.Album) info.setAlbum(ToTagText(wanted.Album));
        if (wanted.Comment != now.Comment) info.setComment(ToTagText(wanted.Comment));
        if (wanted.GenreString != now.GenreString) info.setGenre(ToTagText(wanted.GenreString));
        // As ID3v2 has them: "3/12", or a full date.
        const TagLib::PropertyMap full = File.ID3v2Tag()->properties();
        if (wanted.Year != now.Year) info.setFieldText("ICRD", full["DATE"].toString());
        if (wanted.Track != now.Track) info.setFieldText("IPRT", full["TRACKNUMBER"].toString());
        info.setFieldText("ICOP", ToTagText(values.Copyright));
        info.setFieldText("ITCH", ToTagText(values.EncodedBy));
    }
    // What ID3v2 says, and what only the list says.
    TagLib::PropertyMap Properties() {
        TagLib::PropertyMap properties = File.ID3v2Tag()->properties();
        for (const auto& [key, values] : File.InfoTag()->properties()) {
            if (!properties.contains(key)) properties.insert(key, values);
        }
        return properties;
    }
};

// APEv2: the library would write the whole map anew and drop items of which two mean the same to it.
template <class Library>
class ApeTagged : public PlainTagged<Library> {
public:
    using PlainTagged<Library>::PlainTagged;

    bool Write(qint16 kind, const TagValues& values) override {
        // Read before there is a tag: without one this is what ID3v1 says.
        const TagLib::PropertyMap wanted = WithValues(this->File.properties(), values, kind);
        TagLib::APE::Tag& tag = *this->File.APETag(true);
        const TagLib::PropertyMap now = tag.properties();
        for (const auto& [key, texts] : now) {
            if (!wanted.contains(key)) Set(tag, key, {});
        }
        for (const auto& [key, texts] : wanted) {
            if (!now.contains(key) || now[key] != texts) Set(tag, key, texts);
        }
        return this->Saved(this->File.save());
    }

private:
    static void Set(TagLib::APE::Tag& tag, const TagLib::String& key, const TagLib::StringList& texts) {
        const TagLib::String name = key == "DATE" ? "YEAR" : key == "TRACKNUMBER" ? "TRACK" : key;
        tag.removeItem(key);
        tag.removeItem(name);
        if (!texts.isEmpty()) tag.setItem(name, TagLib::APE::Item(name, texts));
    }
};

// WMA: two fields go by attributes of their own, and tracks are counted from 0.
class AsfTagged : public PlainTagged<TagLib::ASF::File> {
public:
    using PlainTagged::PlainTagged;

    TagValues Read(qint16 kind) override {
        TagValues values = PlainTagged::Read(kind);
        values.URL = Attribute(UrlName);
        values.OriginalArtist = Attribute(OriginalArtistName);
        for (const Double& other : Doubles) {
            if ((values.*other.Field).isEmpty()) values.*other.Field = Attribute(other.Name);
        }
        // The new attribute counts from 1, the old one from 0.
        if (Has(TrackName)) values.Track = static_cast<qint16>(std::max(values.Track - 1, 0));
        return values;
    }

    bool Write(qint16 kind, const TagValues& values) override {
        for (const Double& other : Doubles) {
            if (Has(other.Name)) SetAttribute(other.Name, values.*other.Field);
        }
        SetAttribute(UrlName, values.URL);
        SetAttribute(OriginalArtistName, values.OriginalArtist);
        if (Has(OldTrackName)) SetAttribute(OldTrackName, QString::number(std::max<int>(values.Track, 0)));
        return PlainTagged::Write(kind, Counted(values));
    }

    bool Says(qint16 kind, const TagValues& values) override {
        const bool areDoublesTrue =
            std::all_of(std::begin(Doubles), std::end(Doubles), [&](const Double& other) {
                return !Has(other.Name) ||
                       Attribute(other.Name) == FromTagText(ToTagText(values.*other.Field));
            });
        return areDoublesTrue && Attribute(UrlName) == FromTagText(ToTagText(values.URL)) &&
               Attribute(OriginalArtistName) == FromTagText(ToTagText(values.OriginalArtist)) &&
               Has(TrackName) && PlainTagged::Says(kind, Counted(values));
    }

private:
    static constexpr const char* UrlName = "WM/AuthorURL";
    static constexpr const char* OriginalArtistName = "WM/OriginalArtist";
    static constexpr const char* TrackName = "WM/TrackNumber";
    static constexpr const char* OldTrackName = "WM/Track";
    // Some programs say these once more as attributes, or only there, and others believe the attribute.
    struct Double {
        QString TagValues::*Field;
        const char* Name;
    };
    static constexpr Double Doubles[] = {{&TagValues::Title, "Title"},
                                         {&TagValues::Title, "title"},
                                         {&TagValues::Artist, "Author"},
                                         {&TagValues::Comment, "Description"},
                                         {&TagValues::Copyright, "Copyright"}};

    static TagValues Counted(TagValues values) {
        values.Track = static_cast<qint16>(std::clamp<int>(values.Track, -1, 32766) + 1);
        return values;
    }
    bool Has(const char* name) { return File.tag()->attributeListMap().contains(name); }
    QString Attribute(const char* name) {
        if (!Has(name)) return {};
        const TagLib::ASF::AttributeList& list = File.tag()->attribute(name);
        return list.isEmpty() ? QString() : FromTagText(list.front().toString());
    }
    void SetAttribute(const char* name, const QString& text) {
        const TagLib::String wanted = ToTagText(text);
        if (FromTagText(wanted) == Attribute(name)) return;
        if (wanted.isEmpty()) {
            File.tag()->removeItem(name);
        } else {
            File.tag()->setAttribute(name, TagLib::ASF::Attribute(wanted));
        }
    }
};

// MP4: two fields go by free-form atoms.
class Mp4Tagged : public PlainTagged<TagLib::MP4::File> {
public:
    using PlainTagged::PlainTagged;

    TagValues Read(qint16 kind) override {
        TagValues values = PlainTagged::Read(kind);
        values.URL = Item(UrlName);
        values.OriginalArtist = Item(OriginalArtistName);
        return values;
    }

    bool Write(qint16 kind, const TagValues& values) override {
        SetItem(UrlName, values.URL);
        SetItem(OriginalArtistName, values.OriginalArtist);
        return PlainTagged::Write(kind, values);
    }

    bool Says(qint16 kind, const TagValues& values) override {
        return Item(UrlName) == FromTagText(ToTagText(values.URL)) &&
               Item(OriginalArtistName) == FromTagText(ToTagText(values.OriginalArtist)) &&
               PlainTagged::Says(kind, values);
    }

private:
    static constexpr const char* UrlName = "----:com.apple.iTunes:URL";
    static constexpr const char* OriginalArtistName = "----:com.apple.iTunes:ORIGINALARTIST";

    QString Item(const char* name) {
        if (!File.tag()->contains(name)) return {};
        const TagLib::StringList texts = File.tag()->item(name).toStringList();
        return texts.isEmpty() ? QString() : FromTagText(texts.front());
    }
    void SetItem(const char* name, const QString& text) {
        const TagLib::String wanted = ToTagText(text);
        if (FromTagText(wanted) == Item(name)) return;
        if (wanted.isEmpty()) {
            File.tag()->removeItem(name);
        } else {
            File.tag()->setItem(name, TagLib::MP4::Item(TagLib::StringList(wanted)));
        }
    }
};

template <class Tagged>
std::unique_ptr<TaggedFile> TryOpen(const QByteArray& file) {
    auto tagged = std::make_unique<Tagged>(file);
    if (!tagged->IsValid()) return nullptr;
    return tagged;
}

// What a file begins with, behind an ID3v2 tag if there is one.
QByteArray Beginning(const QByteArray& file) {
    constexpr qint64 Enough = 16;
    const Descriptor handle(open(file.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    QByteArray bytes(Enough, '\0');
    const auto readAt = [&](qint64 offset) {
        const ssize_t count = pread(handle.Number(), bytes.data(), Enough, offset);
        return count < 0 ? 0 : count;
    };
    const ssize_t count = readAt(0);
    if (!bytes.startsWith("ID3")) return bytes.first(count);
    qint64 size = 10;
    // Four bytes of seven bits each.
    for (int n = 0; n < 4; ++n) size += qint64{bytes[6 + n] & 0x7F} << (21 - 7 * n);
    return bytes.first(readAt(size));
}

}  // namespace

std::unique_ptr<TaggedFile> OpenTagged(const QByteArray& file, const QByteArray& name) {
    const QByteArray beginning = Beginning(file);
    if (beginning.startsWith("fLaC")) return TryOpen<PlainTagged<TagLib::FLAC::File>>(file);
    if (beginning.startsWith("OggS")) {
        if (auto vorbis = TryOpen<PlainTagged<TagLib::Ogg::Vorbis::File>>(file)) return vorbis;
        if (auto flac = TryOpen<PlainTagged<TagLib::Ogg::FLAC::File>>(file)) return flac;
        return TryOpen<PlainTagged<TagLib::Ogg::Opus::File>>(file);
    }
    if (beginning.startsWith("\x30\x26\xB2\x75")) return TryOpen<AsfTagged>(file);
    if (beginning.startsWith("RIFF") &&
        beginning.sliced(std::min<qsizetype>(8, beginning.size())).startsWith("WAVE"))
        return TryOpen<WavTagged>(file);
    if (beginning.startsWith("MAC ")) return TryOpen<ApeTagged<TagLib::APE::File>>(file);
    if (beginning.startsWith("MP+") || beginning.startsWith("MPCK")) {
        return TryOpen<ApeTagged<TagLib::MPC::File>>(file);
    }
    if (beginning.sliced(std::min<qsizetype>(4, beginning.size())).startsWith("ftyp")) {
        return TryOpen<Mp4Tagged>(file);
    }
    // MPEG audio has no mark of its own that could be trusted: there the ending has the word.
    const QByteArray lower = name.toLower();
    for (const char* ending : {".mp3", ".mp2", ".mp1", ".aac"}) {
        if (lower.endsWith(ending)) return TryOpen<MpegTagged>(file);
    }
    return nullptr;
}

}  // namespace Sonmira

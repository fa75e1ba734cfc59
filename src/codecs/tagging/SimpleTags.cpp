#include "codecs/tagging/SimpleTags.h"

#include "codecs/sound/Id3v2Head.h"
#include "codecs/tagging/Id3v1.h"
#include "codecs/tagging/TagStream.h"
#include "codecs/tagging/VorbisComments.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Handles.h"
#include "platform/Paths.h"

#include <FLAC/metadata.h>
#include <fcntl.h>
#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/id3v1genres.h>
#include <taglib/id3v1tag.h>
#include <taglib/mpcfile.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

enum class Kind { Ape, Musepack, Flac };

Kind KindOf(const QString& path) {
    const InputFile file(path);
    if (FlacStart(file)) return Kind::Flac;
    std::array<std::byte, 4> name{};
    file.ReadFully(BehindId3v2(file), name);
    if (std::memcmp(name.data(), "MAC ", 4) == 0) return Kind::Ape;
    if (std::memcmp(name.data(), "MPCK", 4) == 0 || std::memcmp(name.data(), "MP+", 3) == 0)
        return Kind::Musepack;
    throw Failure(FailureNumber::Component, u"Files of this kind cannot be tagged"_s);
}

void SetFields(TagLib::APE::Tag& tag, const SimpleTagFields& fields, bool clears) {
    const auto set = [&](const char* key, const QString& text) {
        if (text.isEmpty() && !clears) return;
        // An empty value takes the item away.
        tag.addValue(key, TagLib::String(ToNarrow(text).toStdString(), TagLib::String::UTF8), true);
    };
    set("ARTIST", fields.Artist);
    set("ALBUM", fields.Album);
    set("TITLE", fields.Title);
    set("COMMENT", fields.Comment);
    set("GENRE", fields.Genre);
    set("YEAR", fields.Year);
    set("TRACK", fields.Track);
}

template <class File>
void TagEnd(const QString& path, const SimpleTagFields& fields, bool clears, bool writesId3) {
    TagStream stream(ToNative(path));
    File file(&stream, false);
    if (!file.isValid() || file.readOnly()) throw WritingFailure(EACCES);
    SetFields(*file.APETag(true), fields, clears);
    if (writesId3) SetId3Fields(*file.ID3v1Tag(true), fields, clears);
    const bool isSaved = file.save();
    stream.CheckWrites();
    if (!isSaved) throw Failure(FailureNumber::Component, u"The tags cannot be written"_s);
}

}  // namespace

void WriteSimpleTags(const QString& path, SimpleTagFields fields, bool clears, bool writesId3) {
    for (QString* text : {&fields.Artist, &fields.Album, &fields.Title, &fields.Comment, &fields.Genre,
                          &fields.Year, &fields.Track}) {
        if (const qsizetype end = text->indexOf(QChar(u'\0')); end >= 0) text->truncate(end);
    }
    switch (KindOf(path)) {
        case Kind::Ape:
            return TagEnd<TagLib::APE::File>(path, fields, clears, writesId3);
        case Kind::Musepack:
            return TagEnd<TagLib::MPC::File>(path, fields, clears, writesId3);
        case Kind::Flac:
            return WriteFlacTags(path, fields, clears, writesId3);
    }
}

namespace {

using Chain = CHandle<FLAC__Metadata_Chain, FLAC__metadata_chain_delete>;
using Iterator = CHandle<FLAC__Metadata_Iterator, FLAC__metadata_iterator_delete>;
using Block = CHandle<FLAC__StreamMetadata, FLAC__metadata_object_delete>;

void Check(bool isWell) {
    if (!isWell) throw Failure(FailureNumber::Component, u"The tags cannot be written"_s);
}

bool IsId3Application(const FLAC__StreamMetadata& block) {
    return block.type == FLAC__METADATA_TYPE_APPLICATION &&
           std::memcmp(block.data.application.id, FlacId3Application.data(), FlacId3Application.size()) == 0;
}

// The first block that `isWanted`; where there is none, a new one of that type.
template <class IsWanted>
FLAC__StreamMetadata* FindOrAdd(FLAC__Metadata_Chain& chain, FLAC__MetadataType type, IsWanted&& isWanted) {
    const Iterator at(FLAC__metadata_iterator_new());
    Check(at != nullptr);
    FLAC__metadata_iterator_init(at.get(), &chain);
    do {
        FLAC__StreamMetadata* const block = FLAC__metadata_iterator_get_block(at.get());
        if (block != nullptr && isWanted(*block)) return block;
    } while (FLAC__metadata_iterator_next(at.get()) != 0);
    // Behind the first block, which is the stream's own, and before any padding.
    FLAC__metadata_iterator_init(at.get(), &chain);
    Block fresh(FLAC__metadata_object_new(type));
    Check(fresh != nullptr && FLAC__metadata_iterator_insert_block_after(at.get(), fresh.get()) != 0);
    return fresh.release();
}

void SetComment(FLAC__StreamMetadata& comments, const char* name, const QString& text, bool clears) {
    if (text.isEmpty() && !clears) return;
    Check(FLAC__metadata_object_vorbiscomment_remove_entries_matching(&comments, name) >= 0);
    if (text.isEmpty()) return;
    const QByteArray value = ToNarrow(text);
    FLAC__StreamMetadata_VorbisComment_Entry entry{};
    Check(FLAC__metadata_object_vorbiscomment_entry_from_name_value_pair(&entry, name, value.constData()) !=
          0);
    // Takes over what the entry owns.
    Check(FLAC__metadata_object_vorbiscomment_append_comment(&comments, entry, false) != 0);
}

// What the block is to be, on the ground of what it was.
Id3Block ChangedId3(const std::optional<Id3Block>& before, const SimpleTagFields& fields, bool clears) {
    TagLib::ID3v1::Tag tag;
    if (before) {
        const auto text = [&](std::size_t from, std::size_t most) {
            const char* const start = before->data() + from;
            return QString::fromLatin1(start, static_cast<qsizetype>(strnlen(start, most)));
        };
        const bool hasTrack = (*before)[125] == 0 && (*before)[126] != 0;
        SetId3Fields(
            tag, {text(33, 30), text(63, 30), text(3, 30), text(97, hasTrack ? 28 : 30), {}, text(93, 4), {}},
            true);
        tag.setTrack(hasTrack ? static_cast<uchar>((*before)[126]) : 0);
        tag.setGenreNumber(static_cast<uchar>((*before)[127]));
    }
    SetId3Fields(tag, fields, clears);
    const TagLib::ByteVector bytes = tag.render();
    Id3Block block{};
    Check(bytes.size() == block.size());
    std::memcpy(block.data(), bytes.data(), block.size());
    return block;
}

// A block that a program put behind the sound stays there and tells the same.
void OverwriteAtEnd(const QByteArray& native, const Id3Block& block) {
    const Descriptor file(::open(native.constData(), O_WRONLY | O_CLOEXEC));
    if (!file.IsOpen()) throw WritingFailure(errno);
    if (::lseek(file.Number(), -static_cast<off_t>(block.size()), SEEK_END) < 0 ||
        !WriteAll(file.Number(), QByteArrayView(block.data(), std::ssize(block)))) {
        throw WritingFailure(errno);
    }
}

}  // namespace

void WriteFlacTags(const QString& path, const SimpleTagFields& fields, bool clears, bool writesId3) {
    const QByteArray native = ToNative(path);
    {
        TagStream stream(native);
        CheckFlacBlocks(stream);
    }
    const Chain chain(FLAC__metadata_chain_new());
    Check(chain != nullptr && FLAC__metadata_chain_read(chain.get(), native.constData()) != 0);
    FLAC__StreamMetadata& comments =
        *FindOrAdd(*chain, FLAC__METADATA_TYPE_VORBIS_COMMENT,
                   [](const auto& block) { return block.type == FLAC__METADATA_TYPE_VORBIS_COMMENT; });
    SetComment(comments, "ARTIST", fields.Artist, clears);
    SetComment(comments, "ALBUM", fields.Album, clears);
    SetComment(comments, "TITLE", fields.Title, clears);
    SetComment(comments, "COMMENT", fields.Comment, clears);
    SetComment(comments, "GENRE", fields.Genre, clears);
    SetComment(comments, "DATE", fields.Year, clears);
    SetComment(comments, "TRACKNUMBER", fields.Track, clears);
    std::optional<Id3Block> atEnd;
    std::optional<Id3Block> changed;
    if (writesId3) {
        atEnd = Id3BlockAtEnd(InputFile(path));
        changed = ChangedId3(ReadId3Block(path), fields, clears);
        FLAC__StreamMetadata& application =
            *FindOrAdd(*chain, FLAC__METADATA_TYPE_APPLICATION, IsId3Application);
        std::memcpy(application.data.application.id, FlacId3Application.data(), FlacId3Application.size());
        auto* const data = static_cast<FLAC__byte*>(static_cast<void*>(changed->data()));
        const auto size = static_cast<std::uint32_t>(changed->size());
        Check(FLAC__metadata_object_application_set_data(&application, data, size, true) != 0);
    }
    FLAC__metadata_chain_sort_padding(chain.get());
    Check(FLAC__metadata_chain_write(chain.get(), true, false) != 0);
    if (atEnd) OverwriteAtEnd(native, *changed);
}

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

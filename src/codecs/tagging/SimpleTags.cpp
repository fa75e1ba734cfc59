#include "codecs/tagging/SimpleTags.h"

#include "codecs/sound/Id3v2Head.h"
#include "codecs/tagging/FlacTags.h"
#include "codecs/tagging/Id3Block.h"
#include "codecs/tagging/Id3Fields.h"
#include "codecs/tagging/TagStream.h"
#include "platform/FileFailure.h"
#include "platform/InputFile.h"
#include "platform/NarrowText.h"
#include "platform/NativePath.h"

#include <taglib/apefile.h>
#include <taglib/apetag.h>
#include <taglib/id3v1tag.h>
#include <taglib/mpcfile.h>

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

}  // namespace Sonmira

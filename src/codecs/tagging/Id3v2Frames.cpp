#include "codecs/tagging/Id3v2Frames.h"

#include "codecs/tagging/Id3v2Parsing.h"
#include "codecs/tagging/TagProperties.h"
#include "platform/Failure.h"

#include <id3v2header.h>
#include <id3v2tag.h>

#include <algorithm>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

struct Name {
    const char* Key;
    const char* Id;
    const char* First;  // in the first version
    const char* Other;  // in the newest one where that differs
};
constexpr Name Names[] = {{"TITLE", "TIT2", "TT2", nullptr},     {"ARTIST", "TPE1", "TP1", nullptr},
                          {"ALBUM", "TALB", "TAL", nullptr},     {"GENRE", "TCON", "TCO", nullptr},
                          {"COPYRIGHT", "TCOP", "TCR", nullptr}, {YearKey, "TYER", "TYE", "TDRC"},
                          {TrackKey, "TRCK", "TRK", nullptr},    {"COMPOSER", "TCOM", "TCM", nullptr},
                          {"ENCODEDBY", "TENC", "TEN", nullptr}, {"ORIGINALARTIST", "TOPE", "TOA", nullptr},
                          {"COMMENT", "COMM", "COM", nullptr},   {"URL", "WXXX", "WXX", nullptr}};

bool IsComment(const QByteArray& id) {
    return id == "COM" || id == "COMM";
}
bool IsDescribed(const QByteArray& id) {
    return IsComment(id) || id.startsWith("TXX") || id.startsWith("WXX");
}

// A frame of a description and a text: what stands before the description, it, and what follows.
struct Described {
    char Encoding;
    QByteArray Language;
    QByteArray Description;
    QByteArray Text;
};

std::optional<Described> DescribedIn(const QByteArray& id, const QByteArray& content) {
    const qsizetype language = IsComment(id) ? 3 : 0;
    if (content.size() < 1 + language) return {};
    const auto parted = FirstOfId3v2(content.sliced(1 + language), content[0]);
    if (!parted) return {};
    return Described{content[0], content.sliced(1, language), parted->first, parted->second};
}

[[noreturn]] void Refuse(const QString& reason) {
    throw Failure(FailureNumber::Component, reason);
}

// The texts behind the first of a text frame. Fails where they are none, but frames behind one whose size is
// damaged.
TagLib::StringList FurtherTexts(const QByteArray& content) {
    TagLib::StringList texts;
    if (content.isEmpty()) return texts;
    bool wasEmpty = false;
    for (const QByteArray& bytes : SplitId3v2(content.sliced(1), content[0]).sliced(1)) {
        const TagLib::String text = DecodeId3v2(bytes, content[0]);
        const bool isStrange = std::any_of(text.begin(), text.end(), [](wchar_t c) {
            return c < L' ' && c != L'\t' && c != L'\n' && c != L'\r';
        });
        if (isStrange || (wasEmpty && !text.isEmpty()))
            Refuse(u"The field holds more than text: the tag is damaged"_s);
        wasEmpty = wasEmpty || text.isEmpty();
        texts.append(text);
    }
    return texts;
}

TagLib::String YearIn(const TagLib::String& text) {
    return text.substr(0, 4);
}

// The library's tag over bytes.
struct TagOfBytes : TagLib::ID3v2::Tag {
    explicit TagOfBytes(const QByteArray& bytes) {
        const auto part = [&](qsizetype from, qsizetype size) {
            return TagLib::ByteVector(bytes.constData() + from, static_cast<unsigned>(size));
        };
        header()->setData(part(0, Id3v2HeadSize));
        parse(part(Id3v2HeadSize, bytes.size() - Id3v2HeadSize));
    }
};

}  // namespace

Id3v2Frames::Id3v2Frames() : Head("ID3\4\0\0\0\0\0\0", Id3v2HeadSize) {}

std::optional<Id3v2Frames> Id3v2Frames::Parse(const QByteArray& tag) {
    const auto reading = ReadId3v2(tag);
    if (!reading) return {};
    Id3v2Frames frames;
    frames.Head = tag.first(Id3v2HeadSize);
    frames.Extension = reading->Extension;
    frames.Counting = reading->CountsInSevens ? Sizes::Sevens : Sizes::Eights;
    frames.IsUnsynchronised = reading->IsUnsynchronised;
    frames.LeastPadding = reading->LeastPadding;
    frames.OddPadding = reading->OddPadding;
    frames.Frames = reading->Frames;
    return frames;
}

// Whether bytes that mean the beginning of sound to old players may not stand in what is added.
bool Id3v2Frames::IsLeftPlain() const {
    return (Head[5] & Id3v2Unsynchronised) != 0 && !IsUnsynchronised;
}

// Without what the newest version may put before a frame's content and between its bytes.
QByteArray Id3v2Frames::ContentOf(const Id3v2Frame& frame) const {
    const qsizetype head = Id3v2FrameHead(Version());
    QByteArray content = frame.Bytes.sliced(head);
    if (Version() < 4) return content;
    const auto flags = static_cast<unsigned char>(frame.Bytes[9]);
    if ((flags & Id3v2HasLength) != 0) content = content.sliced(std::min<qsizetype>(4, content.size()));
    if ((flags & Id3v2FrameUnsynchronised) != 0 || (Head[5] & Id3v2Unsynchronised) != 0)
        content.replace(QByteArray("\xFF\0", 2), QByteArray("\xFF", 1));
    return content;
}

QByteArray Id3v2Frames::KeyOf(const Id3v2Frame& frame) const {
    if (IsDescribed(frame.Id)) {
        const auto parts = DescribedIn(frame.Id, ContentOf(frame));
        if (!parts) return {};
        const QByteArray plain = IsComment(frame.Id) ? "COMMENT" : frame.Id.startsWith("WXX") ? "URL" : "";
        QByteArray key = ToFileText(DecodeId3v2(parts->Description, parts->Encoding).upper());
        if (plain.isEmpty()) return key;
        return key.isEmpty() || key == plain ? plain : QByteArray();
    }
    for (const Name& name : Names) {
        if (frame.Id == name.Id || frame.Id == name.First ||
            (name.Other != nullptr && frame.Id == name.Other))
            return name.Key;
    }
    return {};
}

// The texts alone, in the simplest form of the tag's version, for the library to read.
QByteArray Id3v2Frames::Normalised() const {
    QByteArray frames;
    const qsizetype head = Id3v2FrameHead(Version());
    for (const Id3v2Frame& frame : Frames) {
        const bool isText = frame.Id.startsWith('T');
        if (!isText && !frame.Id.startsWith('W') && !IsComment(frame.Id)) continue;
        const bool isPlain = Version() < 3 || (frame.Bytes[9] & ~Id3v2FrameUnsynchronised) == 0;
        const QByteArray content = isPlain ? ContentOf(frame) : frame.Bytes.sliced(head);
        const QByteArray size =
            Id3v2Number(isPlain && isText ? RepairedId3v2Text(content).size() : content.size(),
                        Version() < 3 ? 3 : 4, Version() < 4 ? 8 : 7);
        frames += frame.Id + size;
        if (Version() >= 3) frames += QByteArray(1, '\0') + (isPlain ? '\0' : frame.Bytes[9]);
        frames += isPlain && isText ? RepairedId3v2Text(content) : content;
    }
    return Head.first(4) + QByteArray(2, '\0') + Id3v2Number(frames.size(), 4, 7) + frames;
}

TagLib::PropertyMap Id3v2Frames::Properties() const {
    return TagOfBytes(Normalised()).properties();
}

RawFields Id3v2Frames::Fields() const {
    RawFields fields{{"ID3v2", {}, Head.first(6)}};
    if (!Extension.isEmpty()) {
        // What it says of the padding changes with that.
        const bool tellsPadding = Version() == 3 && Extension.size() >= 10;
        fields.append(
            {"extension", {}, tellsPadding ? Extension.first(6) + Extension.sliced(10) : Extension});
    }
    for (const Id3v2Frame& frame : Frames) fields.append({frame.Id, KeyOf(frame), frame.Bytes});
    return fields;
}

Id3v2Frame Id3v2Frames::FrameOf(const QByteArray& id, const QByteArray& content, char flags) const {
    if (IsLeftPlain() && Version() < 4 && content.contains(QByteArray("\xFF\0", 2)))
        Refuse(u"The tag says of itself what it is not, and the text cannot be added to it"_s);
    const bool inSevens = Counting == Sizes::Sevens;
    const QByteArray size = Id3v2Number(content.size(), Version() < 3 ? 3 : 4, inSevens ? 7 : 8);
    if (Id3v2NumberIn(size, inSevens ? 7 : 8) != content.size()) Refuse(u"The text is too long"_s);
    QByteArray bytes = id + size;
    if (Version() >= 3) bytes += QByteArray(1, flags) + '\0';
    return {id, bytes + content};
}

// A frame that is there keeps its name, its language, its description and its further texts.
Id3v2Frame Id3v2Frames::Fresh(const QByteArray& key, const TagLib::String& text,
                              const Id3v2Frame* old) const {
    QByteArray id = Version() < 3 ? "TXX" : "TXXX";
    for (const Name& name : Names) {
        if (key == name.Key)
            id = Version() < 3 ? name.First : Version() > 3 && name.Other != nullptr ? name.Other : name.Id;
    }
    char flags = '\0';
    QByteArray content;
    if (old != nullptr) {
        id = old->Id;
        content = ContentOf(*old);
        if (Version() >= 3) {
            flags = old->Bytes[8];
            const int known = Version() == 3 ? 0 : Id3v2FrameUnsynchronised | Id3v2HasLength;
            if ((old->Bytes[9] & ~known) != 0) Refuse(u"The field is packed in a way that is not written"_s);
        }
    }
    // No byte of UTF-8 is one that old players stumble over.
    const bool withoutLatin = Version() == 4 && (Head[5] & Id3v2Unsynchronised) != 0;
    if (IsDescribed(id)) {
        const auto parts = DescribedIn(id, content);
        const bool isUrl = id.startsWith("WXX");
        TagLib::String description;
        if (parts) {
            description = DecodeId3v2(parts->Description, parts->Encoding);
        } else if (id.startsWith("TXX")) {
            description = TagLib::String(key.toStdString(), TagLib::String::UTF8);
        }
        TagLib::StringList texts = description;
        if (!isUrl) texts.append(text);
        const Id3v2Text encoding = Id3v2EncodingFor(texts, Version(), withoutLatin);
        const QByteArray language =
            IsComment(id) ? parts ? parts->Language : QByteArray("XXX") : QByteArray();
        const QByteArray end(encoding == Id3v2Text::Marked ? 2 : 1, '\0');
        return FrameOf(id,
                       static_cast<char>(encoding) + language + EncodeId3v2(description, encoding) + end +
                           EncodeId3v2(text, isUrl ? Id3v2Text::Latin : encoding),
                       flags);
    }
    TagLib::StringList texts = id == "TYER" || id == "TYE" ? YearIn(text) : text;
    texts.append(FurtherTexts(content));
    const Id3v2Text encoding = Id3v2EncodingFor(texts, Version(), withoutLatin);
    QByteArray bytes(1, static_cast<char>(encoding));
    for (auto one = texts.begin(); one != texts.end(); ++one) {
        if (one != texts.begin()) bytes += QByteArray(encoding == Id3v2Text::Marked ? 2 : 1, '\0');
        bytes += EncodeId3v2(*one, encoding);
    }
    return FrameOf(id, bytes, flags);
}

void Id3v2Frames::Change(const TagLib::PropertyMap& changes) {
    for (const auto& [name, texts] : changes) {
        const QByteArray key = ToFileText(name);
        const auto isWanted = [&](const Id3v2Frame& frame) { return KeyOf(frame) == key; };
        const auto found = std::find_if(Frames.begin(), Frames.end(), isWanted);
        if (texts.isEmpty()) {
            for (const Id3v2Frame& frame : Frames) {
                if (isWanted(frame) && !IsDescribed(frame.Id)) FurtherTexts(ContentOf(frame));
            }
            Frames.removeIf(isWanted);
        } else if (found != Frames.end()) {
            *found = Fresh(key, texts.front(), &*found);
        } else {
            // In front, since it may not be certain where the last one ends.
            Frames.prepend(Fresh(key, texts.front(), nullptr));
        }
    }
}

QByteArray Id3v2Frames::Bytes(qint64 room) const {
    constexpr qsizetype UsualPadding = 1024;
    if (Id3v2HasSum(Version(), Extension)) Refuse(u"The tag holds a sum over its parts"_s);
    QByteArray frames;
    for (const Id3v2Frame& frame : Frames) frames += frame.Bytes;
    const auto joined = [&](qsizetype padding) {
        QByteArray body = Id3v2WithPadding(Version(), Extension, padding) + frames;
        if (IsUnsynchronised) body = Id3v2Unsynchronise(body);
        return body;
    };
    const bool hasFooter = Version() == 4 && (Head[5] & Id3v2HasFooter) != 0;
    const qsizetype least = Id3v2HeadSize + joined(0).size() + LeastPadding;
    const qsizetype padding = OddPadding      ? *OddPadding
                              : hasFooter     ? LeastPadding
                              : least <= room ? static_cast<qsizetype>(room) - least + LeastPadding
                                              : std::max(UsualPadding, LeastPadding);
    const QByteArray body = joined(padding) + QByteArray(padding, '\0');
    const QByteArray size = Id3v2Number(body.size(), 4, 7);
    if (Id3v2NumberIn(size, 7) != body.size()) Refuse(u"The tag would be too large"_s);
    const QByteArray tag = Head.first(6) + size + body;
    return hasFooter ? tag + "3DI" + tag.sliced(3, 7) : tag;
}

}  // namespace Sonmira

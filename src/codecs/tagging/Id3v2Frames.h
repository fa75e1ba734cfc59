#pragma once

#include "codecs/tagging/TagValues.h"

#include <tpropertymap.h>

#include <optional>

namespace Sonmira {

// One frame: what it is called, and its bytes with its head.
struct Id3v2Frame {
    QByteArray Id;
    QByteArray Bytes;
};

// An ID3v2 tag as its bytes lie in the file. Frames that are not named in a change keep theirs, whatever they
// mean and however the program that wrote them counted their sizes.
// Source of the facts: ID3v2.2.0, ID3v2.3.0 and ID3v2.4.0, id3.org.
class Id3v2Frames {
public:
    // A new tag of the newest version, without frames.
    Id3v2Frames();
    // Nothing where no way of counting sizes fills the tag to its last byte, or where two ways do that differ
    // in more than the padding.
    static std::optional<Id3v2Frames> Parse(const QByteArray& tag);

    int Version() const { return static_cast<unsigned char>(Head[3]); }
    const QList<Id3v2Frame>& All() const { return Frames; }
    TagLib::PropertyMap Properties() const;
    RawFields Fields() const;

    // Fails where the frame to change is of a kind that cannot be written here.
    void Change(const TagLib::PropertyMap& changes);
    // The bytes of the tag: as many as `room`, if they fit into that. Fails where a tag cannot be so large,
    // or holds a sum over its old frames.
    QByteArray Bytes(qint64 room) const;

private:
    enum class Sizes { Sevens, Eights };

    bool IsLeftPlain() const;
    QByteArray ContentOf(const Id3v2Frame& frame) const;
    QByteArray KeyOf(const Id3v2Frame& frame) const;
    Id3v2Frame Fresh(const QByteArray& key, const TagLib::String& text, const Id3v2Frame* old) const;
    Id3v2Frame FrameOf(const QByteArray& id, const QByteArray& content, char flags) const;
    QByteArray Normalised() const;

    QByteArray Head;       // the first ten bytes
    QByteArray Extension;  // the extended header
    QList<Id3v2Frame> Frames;
    Sizes Counting = Sizes::Sevens;
    bool IsUnsynchronised = false;  // all of it, so that bytes stand between others
    qsizetype LeastPadding = 0;
    std::optional<qsizetype> OddPadding;  // no more and no less
};

}  // namespace Sonmira

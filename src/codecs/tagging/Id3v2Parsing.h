#pragma once

#include "codecs/sound/Id3v2Head.h"
#include "codecs/tagging/Id3v2Frames.h"

#include <QByteArray>

#include <tstringlist.h>

#include <optional>

namespace Sonmira {

// The texts within frames of ID3v2, as programs wrote them and not only as they should have.
// Source of the facts: ID3v2.2.0, ID3v2.3.0 and ID3v2.4.0, id3.org.

enum class Id3v2Text : char { Latin = 0, Marked = 1, BigEndian = 2, Utf8 = 3 };

// A text in the encoding of that number: UTF-16 without its mark counts as the byte order that it looks like,
// and what is no UTF-8 as Latin-1.
TagLib::String DecodeId3v2(const QByteArray& bytes, char encoding);
QByteArray EncodeId3v2(const TagLib::String& text, Id3v2Text encoding);

// How texts are written into a tag of that version.
Id3v2Text Id3v2EncodingFor(const TagLib::StringList& texts, int version, bool withoutLatin);

// The texts of a list, which a NUL in that encoding parts.
QList<QByteArray> SplitId3v2(const QByteArray& bytes, char encoding);
// The first text and all behind it; nothing where no NUL ends it.
std::optional<std::pair<QByteArray, QByteArray>> FirstOfId3v2(const QByteArray& bytes, char encoding);

// The content of a text frame (encoding and texts) with a mark in front of UTF-16 that has none, and with the
// right number where it claims to be UTF-8 and is not.
QByteArray RepairedId3v2Text(const QByteArray& content);

// Of a frame of the newest version.
constexpr int Id3v2FrameUnsynchronised = 0x02;
constexpr int Id3v2HasLength = 0x01;

constexpr qsizetype Id3v2FrameHead(int version) {
    return version < 3 ? 6 : 10;
}

// Numbers of that many bits a byte, highest first.
QByteArray Id3v2Number(qint64 number, int count, int bits);
qint64 Id3v2NumberIn(const QByteArray& bytes, int bits);

QByteArray Id3v2Unsynchronise(const QByteArray& bytes);

// Of extended headers: whether one holds a sum over the frames, and one that tells of that much padding.
bool Id3v2HasSum(int version, const QByteArray& extension);
QByteArray Id3v2WithPadding(int version, const QByteArray& extension, qsizetype padding);

// A tag read in the one way that fills it.
struct Id3v2Reading {
    QByteArray Extension;
    QList<Id3v2Frame> Frames;
    bool CountsInSevens = false;
    bool IsUnsynchronised = false;
    // Zeros behind the last frame that may be a part of it.
    qsizetype LeastPadding = 0;
    qsizetype End = 0;  // of the frames
    // Set where the tag is not written as it should be: with other padding it could be read the other way.
    std::optional<qsizetype> OddPadding;
};
std::optional<Id3v2Reading> ReadId3v2(const QByteArray& tag);

// ID3v2 before anybody writes it, since a tag is believed what it says of its own size.
// Source of the facts: ID3v2.2.0, ID3v2.3.0 and ID3v2.4.0, id3.org.

// Whether a tag nests its frames so often that reading it would take all of the stack.
bool IsNestedTooDeep(const QByteArray& tag);

// Where the tag lies: in WAV files other programs drop more of its frames, so that those are left alone.
enum class FrameKeeping { OfOurFactory, OfTheLibraryAlone };

// Fails where a save would lose a part of the tag: frames behind a damaged one, or of a kind that `keeping`
// cannot write again.
void CheckFramesAreKept(const QByteArray& tag, FrameKeeping keeping = FrameKeeping::OfOurFactory);

// Fails where what follows the tag in a file of MPEG audio is neither sound nor another kind of tag: its size
// takes in sound then, or a second tag would be taken for padding. `behind` are the first bytes there.
void CheckSoundFollows(const QByteArray& behind);

}  // namespace Sonmira

#pragma once

#include "codecs/tagging/TagStream.h"
#include "codecs/tagging/TagValues.h"

#include <QList>

#include <tpropertymap.h>

namespace Sonmira {

// A block of Vorbis comments, of which only those change that are named: others stay with their bytes,
// whether they are UTF-8 or not, and whether or not they have a name.
// Source of the facts: Ogg Vorbis I format specification, comment field and header.
class VorbisComments {
public:
    VorbisComments() = default;
    // As far as the sizes in the block fit into it.
    explicit VorbisComments(const QByteArray& block);

    // Whether that was all of it; else it is not to be written.
    bool IsWhole() const { return WasWhole; }
    TagLib::PropertyMap Properties() const;
    void Change(const TagLib::PropertyMap& changes);
    QByteArray Block() const;
    RawFields Fields() const;

private:
    bool WasWhole = true;
    QByteArray Vendor;
    QList<QByteArray> Comments;
    QByteArray Rest;  // a closing bit, padding, or what other programs keep there
};

// The blocks of metadata in front of the sound of a FLAC file, behind an ID3v2 tag if there is one.
// Source of the facts: Free Lossless Audio Codec, RFC 9639.
struct FlacBlock {
    int Kind;
    qint64 At;  // of its content
    qint64 Size;
};

constexpr int FlacPadding = 1;
constexpr int FlacApplication = 2;
constexpr int FlacComments = 4;

struct FlacBlocks {
    explicit FlacBlocks(TagStream& file);

    qint64 Start;  // of the first block's head
    QList<FlacBlock> All;
    qint64 End;
    // Whether sound, or nothing, follows the last block, and the first is the stream's own.
    bool Fit = false;
};

// Fails where the blocks, or the comments in theirs, lie about their size.
void CheckFlacBlocks(TagStream& file);

}  // namespace Sonmira

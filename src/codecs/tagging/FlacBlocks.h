#pragma once

#include "codecs/tagging/TagStream.h"

#include <QList>

namespace Sonmira {

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

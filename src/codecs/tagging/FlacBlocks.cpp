#include "codecs/tagging/FlacBlocks.h"

#include "codecs/tagging/Id3v2Check.h"
#include "codecs/tagging/VorbisComments.h"
#include "platform/Failure.h"

#include <QString>

namespace Sonmira {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype HeadSize = 4;
constexpr int MostBlocks = 100'000;

}  // namespace

FlacBlocks::FlacBlocks(TagStream& file) : Start(Id3v2Size(file.Bytes(0, 10)) + 4), End(Start) {
    for (bool isLast = false; !isLast;) {
        const QByteArray head = file.Bytes(End, HeadSize);
        if (head.size() < HeadSize || All.size() > MostBlocks) return;
        isLast = (head[0] & 0x80) != 0;
        qint64 size = 0;
        for (int n = 1; n < HeadSize; ++n) size = size << 8 | static_cast<unsigned char>(head[n]);
        if (size > file.length() - End - HeadSize) return;
        All.append({head[0] & 0x7F, End + HeadSize, size});
        End += HeadSize + size;
    }
    constexpr qint64 StreamSize = 34;
    const QByteArray next = file.Bytes(End, 2);
    const bool isSound = next.size() == 2 && next[0] == '\xFF' && (next[1] & 0xFC) == 0xF8;
    Fit = (isSound || End == file.length()) && All[0].Kind == 0 && All[0].Size >= StreamSize;
}

void CheckFlacBlocks(TagStream& file) {
    const FlacBlocks blocks(file);
    bool fit = blocks.Fit;
    for (const FlacBlock& block : blocks.All) {
        if (fit && block.Kind == FlacComments)
            fit = VorbisComments(file.Bytes(block.At, block.Size)).IsWhole();
    }
    if (!fit) {
        throw Failure(FailureNumber::Component,
                      u"The parts of the file are not of the size that it says, and a save would hurt it"_s);
    }
}

}  // namespace Sonmira

#pragma once

#include "codecs/sound/Id3v2Head.h"
#include "codecs/tagging/Id3v2Frames.h"

namespace Sonmira {

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

}  // namespace Sonmira

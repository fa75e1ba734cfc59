#pragma once

#include "codecs/ApeFunctions.h"

#include <array>

namespace Sonmira {

using Id3Bytes = std::array<char, 128>;

// What is written at one go into the tag of an output of OutputTag::OfPage.
struct SimpleTag {
    QString Artist;
    QString Album;
    QString Title;
    QString Comment;
    QString Genre;
    QString Year;
    QString Track;
};

// The functions for Monkey's Audio as one component. For what each does see ApeFunctions.h.
class ApeCodec {
public:
    virtual ~ApeCodec() = default;

    virtual void CompressFile(const QString& wav, const QString& ape, qint32 level,
                              const ApeProgressCallback& progress, const qint32& killFlag) {
        Sonmira::CompressFile(wav, ape, level, progress, killFlag);
    }
    virtual void DecompressFile(const QString& ape, const QString& wav, const ApeProgressCallback& progress,
                                const qint32& killFlag) {
        Sonmira::DecompressFile(ape, wav, progress, killFlag);
    }
    virtual void GetID3Tag(const QString& path, Id3Bytes& block) { Sonmira::GetID3Tag(path, block); }
    virtual qint32 GetDurationTrack(const QString& path) { return Sonmira::GetDurationTrack(path); }
    // Over what an earlier tag says.
    virtual void TagFileSimple(const QString& path, const SimpleTag& tag) {
        constexpr qint32 ClearFirst = 1;
        constexpr qint32 UseOldId3 = 1;
        Sonmira::TagFileSimple(path, tag.Artist, tag.Album, tag.Title, tag.Comment, tag.Genre, tag.Year,
                               tag.Track, ClearFirst, UseOldId3);
    }
};

}  // namespace Sonmira

#pragma once

#include "codecs/ape/ApeProgress.h"

#include <QString>

#include <array>

// Monkey's Audio: encoding, decoding, and the tags and lengths that go with it.
namespace Sonmira {

// Encodes a sound file to an APE file of version 3990. `level` is 1000 (fast), 2000, 3000, 4000 or 5000
// (smallest; not for 24 bits). A PCM WAV of one or two channels and 8, 16 or 24 bits is kept whole, so that
// decoding gives the very file back; other sound is mixed to two channels where it has more, and brought to
// 24 bits unless it decodes to 16.
//
// Blocks; works on all cores; memory is bounded whatever the length. `killFlag` is looked at on the calling
// thread after each call of `progress`: when it is not 0 the function returns early and the partial file
// stays. Fails with Failure where a file cannot be read or written, for an unknown level, and, after writing
// what there was, where the source holds less sound than its header counts. Paths are inner paths.
void CompressFile(const QString& wav, const QString& ape, qint32 level, const ApeProgressCallback& progress,
                  const qint32& killFlag);

// Decodes an APE file of any version to a plain PCM WAV: the very file that was encoded where that was a
// plain one and its header was kept. Works and stops like CompressFile. Fails for anything that is no APE
// file, and at the end when frames were damaged or missing: damaged ones are silent in the WAV, so that the
// rest keeps its time.
//
// A path that ends in "apl" may be that of a text that names an APE file and a part of it; then just that
// part is decoded. It fails where there is no such file or nothing of the part, and, after writing what there
// is, where the file ends before the part does.
void DecompressFile(const QString& ape, const QString& wav, const ApeProgressCallback& progress,
                    const qint32& killFlag);

// The length of an APE file, or of the part that a text names, in whole seconds, cut; 0 when it cannot be
// read. Never fails.
qint32 GetDurationTrack(const QString& path);

// Fills `block` with the ID3v1 block at the end of the file, for a text that names a part the one of the
// text; in a FLAC file without one, with the block that TagFileSimple put into it. Leaves `block` as it is
// when there is none. Never fails.
void GetID3Tag(const QString& path, std::array<char, 128>& block);

// Tags an APE or Musepack file (APEv2, and an ID3v1 block behind it, which no decoder minds) or a FLAC file
// (Vorbis comments; the ID3v1 block goes into an application block of its own, since strict decoders refuse
// FLAC files with anything behind the sound). Texts end at their first NUL. What the file has besides the
// seven fields stays. With `clearFirst` an empty text takes the field away, else it leaves the field alone;
// with `useOldId3` the ID3v1 block is written too, else it stays as it is. Fails with Failure for files of
// other kinds and where the file cannot be written.
void TagFileSimple(const QString& path, const QString& artist, const QString& album, const QString& title,
                   const QString& comment, const QString& genre, const QString& year, const QString& track,
                   qint32 clearFirst, qint32 useOldId3);

}  // namespace Sonmira

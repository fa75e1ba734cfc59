#pragma once

#include <QString>

#include <array>
#include <optional>

namespace Sonmira {

// The genres that a number stands for: 0 to 79 as ID3v1 defines them, 80 to 147 as players extended them.
inline constexpr int GenreCount = 148;

// The name of a genre; the empty text for any other number.
QString GenreName(int index);

// The number of the genre of exactly that name, case aside; -1 for none.
int GenreIndexOf(const QString& name);

class InputFile;

// The 128 bytes of an ID3v1 tag, with the marker "TAG" first.
using Id3Block = std::array<char, 128>;

// The block at the end of a file, else the one that a FLAC file of ours holds. Fails where the file cannot be
// read.
std::optional<Id3Block> ReadId3Block(const QString& path);
// Only the one at the end.
std::optional<Id3Block> Id3BlockAtEnd(const InputFile& file);

// Where the block that a FLAC file of ours holds begins.
std::optional<qint64> Id3BlockPlaceInFlac(const InputFile& file);

// Where the stream of a FLAC file begins, behind ID3v2 tags; nothing for files of other kinds.
std::optional<qint64> FlacStart(const InputFile& file);

// By this name FLAC files keep the block in an application block, since behind their end it does harm.
inline constexpr std::array<char, 4> FlacId3Application = {'S', 'n', 'm', 'r'};

}  // namespace Sonmira

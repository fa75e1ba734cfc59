#pragma once

#include <QByteArrayView>

namespace Sonmira {

class InputFile;

// The head of an ID3v2 tag: "ID3", two bytes of version, one of flags, four of size with 7 bits each. Source
// of the facts: ID3 tag version 2.4.0, main structure, section 3.1.
inline constexpr qsizetype Id3v2HeadSize = 10;
inline constexpr int Id3v2Unsynchronised = 0x80;
inline constexpr int Id3v2HasExtension = 0x40;
inline constexpr int Id3v2HasFooter = 0x10;  // from version 4 on

// Bytes of the whole tag, head and footer among them; 0 where none begins.
qint64 Id3v2Size(QByteArrayView head);

// Where a file begins in earnest: behind the ID3v2 tags that stand in front of it.
qint64 BehindId3v2(const InputFile& file);

}  // namespace Sonmira

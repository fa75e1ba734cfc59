#pragma once

#include <QtGlobal>

namespace Sonmira {

class InputFile;

// Programs that write into a pipe put the largest number that they can think of: all ones, or nearly 2 GB.
inline constexpr qint64 LeastUnknownWavSize = 0x7FFFF000;

// Bytes of sound that the header of a RIFF WAVE file counts but that lie beyond the end of the file: what a
// cut file has lost. 0 for a whole file, for one whose writer could not know its size (a count of 0, or
// of nearly 2 GB and more), and for anything that is no such file. The layout is the one that Microsoft and
// IBM published in 1991: chunks of a name, a 32-bit size and as many bytes, padded to an even number.
qint64 MissingWavBytes(const InputFile& file);

}  // namespace Sonmira

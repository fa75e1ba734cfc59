#pragma once

#include <QtGlobal>

namespace Sonmira {

class InputFile;

// Programs that write into a pipe put the largest number that they can think of: all ones, or about 2 GB.
inline constexpr qint64 LeastUnknownWavSize = 0x7FFFF000;
constexpr bool IsUnknownWavSize(qint64 size) {
    return size == 0 || (size >= LeastUnknownWavSize && size < 0x80001000) || size >= 0xFFFF0000;
}

// What the header of a WAV that lost sound counts, for `there` bytes of sound behind it: `wanted`, or what is
// nearest to it of the numbers that are more than there is and are not taken for an unknown size. Beyond
// 4 GiB no number says that.
qint64 WavSizeBeyond(qint64 there, qint64 wanted);

// Bytes of sound that the header of a RIFF WAVE file counts but that lie beyond the end of the file: what a
// cut file has lost. 0 for a whole file, for one whose writer could not know its size (IsUnknownWavSize),
// and for anything that is no such file. The layout is the one that Microsoft and
// IBM published in 1991: chunks of a name, a 32-bit size and as many bytes, padded to an even number.
qint64 MissingWavBytes(const InputFile& file);

// Whether it is a RIFF WAVE file that counts no sound and has none: what follows are other chunks, up to the
// end of the file, rather than the sound of a writer that could not know its size.
bool IsWavWithoutSound(const InputFile& file);

}  // namespace Sonmira

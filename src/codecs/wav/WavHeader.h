#pragma once

#include "codecs/sound/AudioBlock.h"

#include <QtGlobal>

namespace Sonmira {

inline constexpr qint64 WavHeaderSize = 44;
// Stands for the size of a stream that nobody knows yet.
inline constexpr qint64 UnknownWavSize = 0xFFFFFFFF;

// The header of a RIFF WAVE file with the plain 16-byte PCM format chunk, in front of `dataSize` bytes of
// sound. Fields as "Multimedia Programming Interface and Data Specifications 1.0" (1991) gives them.
std::vector<std::byte> WavHeader(const PcmFormat& format, qint64 dataSize);

// Whether WAV files of that format are written: 8, 16, 24 or 32 bits, 1 to 384000 Hz, one or two channels.
bool IsPcmFormat(const PcmFormat& format);

// Programs that write into a pipe put the largest number that they can think of: all ones, or about 2 GB.
inline constexpr qint64 LeastUnknownWavSize = 0x7FFFF000;
constexpr bool IsUnknownWavSize(qint64 size) {
    return size == 0 || (size >= LeastUnknownWavSize && size < 0x80001000) || size >= 0xFFFF0000;
}

// What the header of a WAV that lost sound counts, for `there` bytes of sound behind it: `wanted`, or what is
// nearest to it of the numbers that are more than there is and are not taken for an unknown size. Beyond
// 4 GiB no number says that.
qint64 WavSizeBeyond(qint64 there, qint64 wanted);

}  // namespace Sonmira

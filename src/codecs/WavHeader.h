#pragma once

#include "codecs/OutputFormat.h"

#include <cstddef>
#include <vector>

namespace Sonmira {

inline constexpr qint64 WavHeaderSize = 44;
// Stands for the size of a stream that nobody knows yet.
inline constexpr qint64 UnknownWavSize = 0xFFFFFFFF;

// The header of a RIFF WAVE file with the plain 16-byte PCM format chunk, in front of `dataSize` bytes of
// sound. Fields as "Multimedia Programming Interface and Data Specifications 1.0" (1991) gives them.
std::vector<std::byte> WavHeader(const PcmFormat& format, qint64 dataSize);

}  // namespace Sonmira

#pragma once

#include "codecs/ape/ApeFormat.h"

#include <functional>
#include <optional>
#include <span>

namespace Sonmira {

// Where the sound of a RIFF WAVE file lies, when that is integer PCM of one or two channels and 8, 16 or 24
// bits. The layout is the one that Microsoft and IBM published in 1991, with the extensible format of 2001.
struct WavLayout {
    ApeSound Sound;
    bool IsPlain = false;     // the format chunk is the classic one of 16 bytes
    qint64 DataStart = 0;     // the first byte of the sound
    quint32 DataClaimed = 0;  // its bytes by the header, which may not be there
};

// Reads `count` bytes at a position; fewer at the end.
using BytesReader = std::function<std::size_t(qint64 position, std::span<std::byte> target)>;

// Nothing for any other file.
std::optional<WavLayout> WavLayoutOf(const BytesReader& read);

}  // namespace Sonmira

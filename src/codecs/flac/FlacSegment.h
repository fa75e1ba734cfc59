#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Sonmira {

// Appends a FLAC frame of fixed block size under another number to `frames`. The frame's layout, by RFC 9639:
// four bytes of sync and codes, the number in one to six bytes of the kind that UTF-8 uses, block size and
// rate where the codes say so, a CRC-8 of all that, the sound, a CRC-16 of the whole frame.
void AppendRenumbered(std::span<const std::byte> frame, std::uint32_t number, std::vector<std::byte>& frames);

struct FlacFormat {
    int Rate = 44100;
    int Channels = 2;
    int Bits = 16;  // 8, 16 or 24
    int Level = 5;  // 0 to 8
};

// Frames of sound in each FLAC frame but the last of a stream, as the library chooses it for the level.
int FlacBlockSize(const FlacFormat& format);
// Frames of sound in a segment that can be encoded by itself: whole FLAC frames, and as many of them that
// the library's own steps from frame to frame begin anew with the next segment.
std::size_t FlacSegmentLength(const FlacFormat& format);

// FLAC frames behind each other, and the size of each.
struct FlacSegment {
    std::vector<std::byte> Frames;
    std::vector<std::uint32_t> FrameSizes;
    std::size_t Length = 0;  // in frames of sound
};

// Encodes a segment of a stream. `pcm` is interleaved, signed and little-endian, and of FlacSegmentLength or,
// at the end of the stream, fewer frames of sound; `firstFrame` is the number of its first FLAC frame. Fails
// for a format that FLAC does not know. May be called by several threads at once.
FlacSegment EncodeFlacSegment(const FlacFormat& format, std::span<const std::byte> pcm,
                              std::uint32_t firstFrame);

}  // namespace Sonmira

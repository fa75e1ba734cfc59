#pragma once

#include "codecs/flac/FlacSegment.h"

#include <QtGlobal>

#include <array>

namespace Sonmira {

// What stands before the frames of a FLAC file: stream information, a seek table of one point each ten
// seconds, a comment of no entries and room for tags. Blocks as RFC 9639 has them. Its size depends on the
// expected length alone, so that it can be written first and again at the end, when all is known.
class FlacHeader {
public:
    // `length` is the expected number of frames of sound, 0 where it is not known.
    FlacHeader(const FlacFormat& format, qint64 length);

    // Takes note of the next frames of the stream.
    void Add(const FlacSegment& segment);
    // The MD5 sum of all samples, interleaved, signed and little-endian.
    void SetSum(const std::array<std::uint8_t, 16>& sum) { Sum = sum; }

    std::vector<std::byte> Bytes() const;
    // FLAC frames and frames of sound so far.
    std::uint32_t FrameCount() const { return Frames; }
    qint64 Length() const { return SoundFrames; }

private:
    struct SeekPoint {
        qint64 Sample = -1;  // none
        qint64 Offset = 0;
        int Length = 0;
    };

    void AddFrame(std::uint32_t size, int length);

    FlacFormat Format;
    std::vector<SeekPoint> Points;
    std::size_t PointsSet = 0;
    std::uint32_t Frames = 0;
    qint64 SoundFrames = 0;
    qint64 Size = 0;
    std::uint32_t LeastFrame = 0;
    std::uint32_t LargestFrame = 0;
    std::array<std::uint8_t, 16> Sum = {};
};

}  // namespace Sonmira

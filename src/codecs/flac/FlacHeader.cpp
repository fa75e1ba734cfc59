#include "codecs/flac/FlacHeader.h"

#include <FLAC/format.h>

#include <algorithm>
#include <string_view>

namespace Sonmira {

namespace {

constexpr int SecondsBetweenPoints = 10;
constexpr qint64 MostPoints = 32768;
// So much can a tag grow before the file must be written anew.
constexpr std::size_t RoomForTags = 8192;

class BigEndianBytes {
public:
    void Number(std::uint64_t value, int bytes) {
        for (int i = bytes - 1; i >= 0; --i) Bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
    }
    void Text(std::string_view text) {
        for (const char c : text) Bytes.push_back(static_cast<std::byte>(c));
    }
    void Block(FLAC__MetadataType type, std::size_t size, bool isLast = false) {
        Number(static_cast<std::uint64_t>(type) | (isLast ? 0x80 : 0), 1);
        Number(size, 3);
    }
    std::vector<std::byte> Bytes;
};

std::uint64_t LittleEndian32(std::size_t value) {
    return __builtin_bswap32(static_cast<std::uint32_t>(value));
}

}  // namespace

FlacHeader::FlacHeader(const FlacFormat& format, qint64 length) : Format(format) {
    const qint64 step = qint64{SecondsBetweenPoints} * Format.Rate;
    Points.resize(static_cast<std::size_t>(std::clamp<qint64>((length + step - 1) / step, 0, MostPoints)));
}

void FlacHeader::Add(const FlacSegment& segment) {
    auto left = static_cast<qint64>(segment.Length);
    for (const std::uint32_t size : segment.FrameSizes) {
        const qint64 length = std::min<qint64>(left, FlacBlockSize(Format));
        AddFrame(size, static_cast<int>(length));
        left -= length;
    }
}

void FlacHeader::AddFrame(std::uint32_t size, int length) {
    const qint64 step = qint64{SecondsBetweenPoints} * Format.Rate;
    // A point leads to the frame that holds its sample.
    while (PointsSet < Points.size() && static_cast<qint64>(PointsSet) * step < SoundFrames + length) {
        Points[PointsSet++] = {SoundFrames, Size, length};
    }
    LeastFrame = Frames == 0 ? size : std::min(LeastFrame, size);
    LargestFrame = std::max(LargestFrame, size);
    ++Frames;
    SoundFrames += length;
    Size += size;
}

std::vector<std::byte> FlacHeader::Bytes() const {
    BigEndianBytes bytes;
    bytes.Text("fLaC");
    bytes.Block(FLAC__METADATA_TYPE_STREAMINFO, 34);
    const auto blockSize = static_cast<std::uint64_t>(FlacBlockSize(Format));
    bytes.Number(blockSize, 2);
    bytes.Number(blockSize, 2);
    bytes.Number(LeastFrame, 3);
    bytes.Number(LargestFrame, 3);
    const auto rate = static_cast<std::uint64_t>(Format.Rate);
    const auto channels = static_cast<std::uint64_t>(Format.Channels);
    const auto bits = static_cast<std::uint64_t>(Format.Bits);
    const auto length = static_cast<std::uint64_t>(SoundFrames) & 0xFFFFFFFFFU;
    bytes.Number(rate << 44 | (channels - 1) << 41 | (bits - 1) << 36 | length, 8);
    for (const std::uint8_t byte : Sum) bytes.Number(byte, 1);
    if (!Points.empty()) {
        bytes.Block(FLAC__METADATA_TYPE_SEEKTABLE, Points.size() * 18);
        for (const SeekPoint& point : Points) {
            bytes.Number(static_cast<std::uint64_t>(point.Sample), 8);
            bytes.Number(static_cast<std::uint64_t>(point.Offset), 8);
            bytes.Number(static_cast<std::uint64_t>(point.Length), 2);
        }
    }
    const std::string_view vendor(FLAC__VENDOR_STRING);
    bytes.Block(FLAC__METADATA_TYPE_VORBIS_COMMENT, vendor.size() + 8);
    bytes.Number(LittleEndian32(vendor.size()), 4);
    bytes.Text(vendor);
    bytes.Number(0, 4);
    bytes.Block(FLAC__METADATA_TYPE_PADDING, RoomForTags, true);
    bytes.Bytes.resize(bytes.Bytes.size() + RoomForTags);
    return std::move(bytes.Bytes);
}

}  // namespace Sonmira

#include "Mp3Frames.h"

#include <algorithm>

namespace Sonmira {

namespace {

constexpr int TagOfEncoder = 120;  // where the encoder's part of its tag begins, behind the name of the tag

int ByteAt(const QByteArray& bytes, qsizetype at) {
    return at < bytes.size() ? static_cast<unsigned char>(bytes[at]) : 0;
}

int NumberAt(const QByteArray& bytes, qsizetype at) {
    int value = 0;
    for (qsizetype i = 0; i < 4; ++i) value = value << 8 | ByteAt(bytes, at + i);
    return value;
}

class Bits {
public:
    Bits(const QByteArray& bytes, qsizetype start) : Bytes(bytes), At(start * 8) {}
    int Take(int count) {
        int value = 0;
        for (; count > 0; --count, ++At) value = value << 1 | (ByteAt(Bytes, At / 8) >> (7 - At % 8) & 1);
        return value;
    }

private:
    const QByteArray& Bytes;
    qsizetype At;
};

int ChannelsOf(const Mp3Frame& frame) {
    return frame.Mode == 3 ? 1 : 2;
}

qsizetype SideInfoSize(const Mp3Frame& frame) {
    if (frame.Version == 1) return ChannelsOf(frame) == 1 ? 17 : 32;
    return ChannelsOf(frame) == 1 ? 9 : 17;
}

qsizetype SideInfoStart(const Mp3Frame& frame) {
    return frame.HasChecksum ? 6 : 4;
}

int KilobitsOf(int index, int version) {
    constexpr int Mpeg1[] = {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0};
    constexpr int Mpeg2[] = {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0};
    return (version == 1 ? Mpeg1 : Mpeg2)[index];
}

// The checksum covers the second half of the header and the side information.
bool ChecksumFits(const QByteArray& bytes, qsizetype start, const Mp3Frame& frame) {
    int sum = 0xFFFF;
    const auto add = [&](int byte) {
        for (int bit = 7; bit >= 0; --bit) {
            const int carry = (sum >> 15 & 1) ^ (byte >> bit & 1);
            sum = (sum << 1 & 0xFFFF) ^ (carry != 0 ? 0x8005 : 0);
        }
    };
    add(ByteAt(bytes, start + 2));
    add(ByteAt(bytes, start + 3));
    for (qsizetype i = 0; i < SideInfoSize(frame); ++i) add(ByteAt(bytes, start + 6 + i));
    return sum == (ByteAt(bytes, start + 4) << 8 | ByteAt(bytes, start + 5));
}

void ReadSideInfo(const QByteArray& bytes, qsizetype start, Mp3Frame& frame) {
    const bool isFirst = frame.Version == 1;
    const int channels = ChannelsOf(frame);
    Bits bits(bytes, start + SideInfoStart(frame));
    frame.ReservoirBytes = bits.Take(isFirst ? 9 : 8);
    if (isFirst) {
        bits.Take(channels == 1 ? 5 : 3);
        bits.Take(4 * channels);
    } else {
        bits.Take(channels);
    }
    for (int i = 0; i < (isFirst ? 2 : 1) * channels; ++i) {
        Mp3Granule granule;
        granule.PartLength = bits.Take(12);
        bits.Take(isFirst ? 9 + 8 + 4 : 9 + 8 + 9);
        const bool isSwitched = bits.Take(1) != 0;
        granule.BlockType = bits.Take(2);
        if (!isSwitched) granule.BlockType = 0;
        bits.Take(20);
        bits.Take(isFirst ? 3 : 2);
        frame.Granules.push_back(granule);
    }
}

// None where no frame begins there; `size` becomes that of the frame.
std::optional<Mp3Frame> FrameAt(const QByteArray& bytes, qsizetype start, qsizetype& size) {
    const auto header = static_cast<unsigned>(NumberAt(bytes, start));
    const auto field = [&](unsigned shift, unsigned mask) {
        return static_cast<int>(header >> shift & mask);
    };
    constexpr int Versions[] = {25, 0, 2, 1};
    constexpr int Rates[] = {44100, 48000, 32000, 0};
    Mp3Frame frame;
    frame.Version = Versions[field(19, 3)];
    frame.Kilobits = KilobitsOf(field(12, 15), frame.Version);
    frame.Rate = Rates[field(10, 3)] / (frame.Version == 1 ? 1 : frame.Version == 2 ? 2 : 4);
    const bool isLayer3 = field(21, 0x7FF) == 0x7FF && frame.Version != 0 && field(17, 3) == 1;
    if (!isLayer3 || frame.Kilobits == 0 || frame.Rate == 0) return {};
    frame.HasChecksum = field(16, 1) == 0;
    frame.Mode = field(6, 3);
    frame.ModeExtension = field(4, 3);
    frame.Emphasis = field(0, 3);
    size = (frame.Version == 1 ? 144 : 72) * frame.Kilobits * 1000 / frame.Rate + field(9, 1);
    ReadSideInfo(bytes, start, frame);
    frame.ChecksumFits = !frame.HasChecksum || ChecksumFits(bytes, start, frame);
    return frame;
}

std::optional<Mp3Tag> TagIn(const QByteArray& bytes, const Mp3Frame& frame) {
    // The place does not move where the frame has a checksum.
    const qsizetype start = 4 + SideInfoSize(frame);
    Mp3Tag tag;
    tag.Name = bytes.mid(start, 4);
    if (tag.Name != "Xing" && tag.Name != "Info") return {};
    tag.Frames = NumberAt(bytes, start + 8);
    const int quality = 100 - NumberAt(bytes, start + 116);
    tag.VbrQuality = quality / 10;
    tag.EncoderQuality = quality % 10;
    const qsizetype encoder = start + TagOfEncoder;
    tag.Method = ByteAt(bytes, encoder + 9) & 15;
    tag.Lowpass = ByteAt(bytes, encoder + 10);
    tag.AthType = ByteAt(bytes, encoder + 19) & 15;
    tag.Kilobits = ByteAt(bytes, encoder + 20);
    tag.IsUnwise = (ByteAt(bytes, encoder + 24) & 0x20) != 0;
    return tag;
}

}  // namespace

Mp3File Mp3FileOf(const QByteArray& bytes) {
    Mp3File file;
    qsizetype start = 0;
    while (start + 4 <= bytes.size()) {
        qsizetype size = 0;
        std::optional<Mp3Frame> frame = FrameAt(bytes, start, size);
        if (!frame || start + size > bytes.size()) break;
        if (start == 0) file.Tag = TagIn(bytes, *frame);
        if (start > 0 || !file.Tag) file.Frames.push_back(std::move(*frame));
        start += size;
    }
    file.Rest = bytes.size() - start;
    return file;
}

double Mp3File::MeanKilobits() const {
    double sum = 0;
    for (const Mp3Frame& frame : Frames) sum += frame.Kilobits;
    return sum / static_cast<double>(std::max<std::size_t>(Frames.size(), 1));
}

int Mp3File::LeastKilobits() const {
    int least = 1000;
    for (const Mp3Frame& frame : Frames) least = std::min(least, frame.Kilobits);
    return least;
}

int Mp3File::MostKilobits() const {
    int most = 0;
    for (const Mp3Frame& frame : Frames) most = std::max(most, frame.Kilobits);
    return most;
}

int Mp3File::ShortBlocks(int channel) const {
    int count = 0;
    for (const Mp3Frame& frame : Frames) {
        const auto step = static_cast<std::size_t>(ChannelsOf(frame));
        for (auto i = static_cast<std::size_t>(channel); i < frame.Granules.size(); i += step) {
            if (frame.Granules[i].BlockType == 2) ++count;
        }
    }
    return count;
}

int Mp3File::MostReservoirBytes() const {
    int most = 0;
    for (const Mp3Frame& frame : Frames) most = std::max(most, frame.ReservoirBytes);
    return most;
}

}  // namespace Sonmira

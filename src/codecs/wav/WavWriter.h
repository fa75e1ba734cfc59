#pragma once

#include "codecs/sound/AudioBlock.h"
#include "codecs/sound/PcmPacker.h"
#include "codecs/sound/SoundReader.h"

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

// The most bytes of sound that its sizes of 32 bits can count.
inline constexpr qint64 MostWavData = 0xFFFFFFFF - 64;

// RIFF WAVE with the plain 16-byte PCM format chunk at every width and nothing else around the data: the
// header of 44 bytes that every program reads. It is complete once Finish has run.
//
// Its sizes are 32-bit, so a file ends just below 4 GiB (6.7 hours of CD sound): Write fails there, and the
// sound up to that point stays readable. One that only our own encoders read may grow on, and tells no size
// then.
//
// A file that another one is decoded into claims the sound of the whole stream until Finish, and beyond that
// where some of it was lost: whoever reads the file finds less than it counts, and that is how he learns of
// a failure whose report nobody read, or of a disk that took no more.
class WavWriter final : public SoundWriter {
public:
    enum class Beyond4Gb { Fails, GrowsOn };

    // `most` is the number of data bytes that the sizes can count; only a test gives another.
    explicit WavWriter(const PcmFormat& format, Beyond4Gb beyond = Beyond4Gb::Fails,
                       qint64 most = MostWavData);

    // Before the first block: how many frames there should be; 0 where nobody knows.
    void Claim(qint64 frames);
    // Before Finish: some of these frames, or of those that were written, are lost.
    void KeepClaim() { Keeps = true; }

    void Write(const AudioBlock& block, OutputFile& file) override;
    void Finish(OutputFile& file) override;

private:
    qint64 FrameSize() const { return qint64{Format.Channels} * Format.Bits / 8; }

    PcmFormat Format;
    qint64 Claimed = 0;  // bytes that the header tells until Finish
    bool Keeps = false;
    Beyond4Gb Beyond;
    qint64 Most;
    PcmPacker Packer;
    std::vector<std::byte> Packed;
};

}  // namespace Sonmira

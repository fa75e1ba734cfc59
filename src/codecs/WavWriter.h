#pragma once

#include "codecs/PcmPacker.h"
#include "codecs/SoundWriter.h"

namespace Sonmira {

// The most bytes of sound that its sizes of 32 bits can count.
inline constexpr qint64 MostWavData = 0xFFFFFFFF - 64;

// RIFF WAVE with the plain 16-byte PCM format chunk at every width and nothing else around the data: the
// header of 44 bytes that every program reads. It is complete once Finish has run.
//
// Its sizes are 32-bit, so a file ends just below 4 GiB (6.7 hours of CD sound): Write fails there, and the
// sound up to that point stays readable. One that only our own encoders read may grow on, and tells no size
// then.
class WavWriter final : public SoundWriter {
public:
    enum class Beyond4Gb { Fails, GrowsOn };

    // `most` is the number of data bytes that the sizes can count; only a test gives another.
    explicit WavWriter(const PcmFormat& format, Beyond4Gb beyond = Beyond4Gb::Fails,
                       qint64 most = MostWavData);

    void Write(const AudioBlock& block, OutputFile& file) override;
    void Finish(OutputFile& file) override;

private:
    PcmFormat Format;
    Beyond4Gb Beyond;
    qint64 Most;
    PcmPacker Packer;
    std::vector<std::byte> Packed;
};

}  // namespace Sonmira

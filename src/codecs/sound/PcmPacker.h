#pragma once

#include "codecs/sound/AudioBlock.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace Sonmira {

// Turns samples into little-endian PCM of 8 (unsigned), 16, 24 or 32 bits, as WAV files hold it.
//
// Samples that fit the width pass bit for bit. From the first one on that does not, triangular dither of
// one least bit is added before rounding to the nearest value, so that quiet sounds survive as they are
// rather than as distortion. What exceeds full scale is limited to it. The noise is the same for each
// packer: equal sound gives equal bytes, however it is cut into blocks.
class PcmPacker {
public:
    explicit PcmPacker(int bits) : Bits(bits) {}

    // Appends the samples of one block.
    void Pack(const AudioBlock& block, std::vector<std::byte>& packed);

private:
    template <class Sample>
    void PackSamples(std::span<const Sample> samples, std::vector<std::byte>& packed);

    int Bits;
    bool Dithering = false;
    std::uint32_t SamplesDithered = 0;
};

// Bytes of a file's header, put together field by field.
class LittleEndianBytes {
public:
    void Name(std::string_view name) {
        for (const char c : name) Bytes.push_back(static_cast<std::byte>(c));
    }
    void Number(std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) Bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
    }
    std::vector<std::byte> Bytes;
};

}  // namespace Sonmira

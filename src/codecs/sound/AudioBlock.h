#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace Sonmira {

// How one sample of a block is held; native byte order.
enum class SampleType {
    Int16,    // -32768 to 32767
    Int32,    // full scale is 32 bits; sources of fewer bits stand in the upper ones
    Float32,  // full scale is -1.0 to 1.0; lossy decoders may go beyond it
};

constexpr std::size_t BytesOf(SampleType type) {
    return type == SampleType::Int16 ? 2 : 4;
}

// A stretch of decoded sound on its way from a reader to a writer: whole frames, channels interleaved in
// the order front left, front right, ... The samples keep the width that the reader decoded, so that PCM
// reaches PCM bit for bit. An empty block means the end of the file.
struct AudioBlock {
    SampleType Type = SampleType::Int16;
    std::vector<std::byte> Bytes;
    // Which loudspeakers the channels are for, one bit a channel as in WAVE_FORMAT_EXTENSIBLE (ChannelMix.h
    // names them); 0 stands for the usual ones of the channel count.
    std::uint64_t Speakers = 0;

    bool IsEmpty() const { return Bytes.empty(); }
};

// What a stream of frames is. Rates are in Hz.
struct StreamFormat {
    int Rate = 0;
    int Channels = 0;
    bool operator==(const StreamFormat&) const = default;
};

// Integer samples, packed as in WAV files: little-endian, 8 bits unsigned and more signed.
struct PcmFormat {
    int Rate = 44100;
    int Channels = 2;  // 1 or 2
    int Bits = 16;     // 8, 16, 24 or 32

    int FrameSize() const { return Channels * Bits / 8; }  // bytes
    bool operator==(const PcmFormat&) const = default;
};

// The samples of a block as numbers.

// A view of the samples, of the C++ type that belongs to block.Type. Valid as long as the block's bytes. The
// memory of a vector of bytes comes from operator new and is aligned for any sample.
template <class Sample>
std::span<const Sample> SamplesOf(const AudioBlock& block) {
    return {static_cast<const Sample*>(static_cast<const void*>(block.Bytes.data())),
            block.Bytes.size() / sizeof(Sample)};
}

// All samples as floats, full scale 1.0.
std::vector<float> FloatsOf(const AudioBlock& block);
// The same, limited to full scale and free of what is no number: encoders of psychoacoustic formats take
// any float and go wrong in their own ways with such ones.
std::vector<float> LimitedFloatsOf(const AudioBlock& block);

AudioBlock BlockOf(std::span<const float> samples);

}  // namespace Sonmira

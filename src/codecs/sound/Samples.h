#pragma once

#include "codecs/sound/AudioBlock.h"

#include <cstring>
#include <span>
#include <vector>

// The samples of a block as numbers.
namespace Sonmira {

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

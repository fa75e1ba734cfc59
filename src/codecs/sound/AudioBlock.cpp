#include "codecs/sound/AudioBlock.h"

#include <algorithm>

namespace Sonmira {

namespace {

template <class Sample>
std::vector<float> Scaled(std::span<const Sample> samples, float scale) {
    std::vector<float> floats(samples.size());
    std::transform(samples.begin(), samples.end(), floats.begin(),
                   [scale](Sample sample) { return static_cast<float>(sample) * scale; });
    return floats;
}

}  // namespace

std::vector<float> FloatsOf(const AudioBlock& block) {
    switch (block.Type) {
        case SampleType::Int16:
            return Scaled(SamplesOf<std::int16_t>(block), 0x1p-15F);
        case SampleType::Int32:
            return Scaled(SamplesOf<std::int32_t>(block), 0x1p-31F);
        case SampleType::Float32:
            break;
    }
    const auto samples = SamplesOf<float>(block);
    return {samples.begin(), samples.end()};
}

std::vector<float> LimitedFloatsOf(const AudioBlock& block) {
    std::vector<float> floats = FloatsOf(block);
    if (block.Type != SampleType::Float32) return floats;
    for (float& sample : floats) {
        const float number = sample == sample ? sample : 0.0F;
        sample = std::min(std::max(number, -1.0F), 1.0F);
    }
    return floats;
}

AudioBlock BlockOf(std::span<const float> samples) {
    AudioBlock block{SampleType::Float32, std::vector<std::byte>(samples.size_bytes())};
    if (!samples.empty()) std::memcpy(block.Bytes.data(), samples.data(), samples.size_bytes());
    return block;
}

}  // namespace Sonmira

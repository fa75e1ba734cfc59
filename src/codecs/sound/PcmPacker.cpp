#include "codecs/sound/PcmPacker.h"

#include "codecs/sound/AudioBlock.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <type_traits>

namespace Sonmira {

static_assert(std::endian::native == std::endian::little);

namespace {

// Float samples are weighed in single precision where that is exact to a small part of the least bit.
template <int Bits>
using Work = std::conditional_t<(Bits <= 16), float, double>;

constexpr double FullScale(int bits) {
    return static_cast<double>(1ULL << (bits - 1));
}

// A sample in units of the least bit of the target.
template <int Bits, class Sample>
Work<Bits> Scaled(Sample sample) {
    using Real = Work<Bits>;
    if constexpr (std::is_same_v<Sample, float>) {
        const Real value = static_cast<Real>(sample) * static_cast<Real>(FullScale(Bits));
        return value == value ? value : Real{0};
    } else {
        constexpr double least = FullScale(Bits) / FullScale(static_cast<int>(sizeof(Sample)) * 8);
        return static_cast<Real>(static_cast<double>(sample) * least);
    }
}

// The nearest whole number within the width.
template <int Bits>
std::int32_t Rounded(Work<Bits> value) {
    using Real = Work<Bits>;
    constexpr auto least = static_cast<Real>(-FullScale(Bits));
    constexpr auto most = static_cast<Real>(FullScale(Bits) - 1);
    value = std::min(std::max(value, least), most);
    return static_cast<std::int32_t>(value + (value < 0 ? Real{-0.5} : Real{0.5}));
}

// Whether the sample is a whole number of the target's least bits. What is beyond full scale is limited and
// not dithered.
template <int Bits, class Sample>
bool Fits(Sample sample) {
    if constexpr (std::is_same_v<Sample, float>) {
        const auto value = Scaled<Bits>(sample);
        return value == std::trunc(value) || std::abs(value) > static_cast<Work<Bits>>(FullScale(Bits));
    } else {
        constexpr int lost = static_cast<int>(sizeof(Sample)) * 8 - Bits;
        if constexpr (lost <= 0) return true;
        return (sample & ((Sample{1} << std::max(lost, 0)) - 1)) == 0;
    }
}

// The sum of two even noises of one least bit, -1 to 1, for sample `number` of a stream. The bits come from
// a mixing of the number alone, so that a loop over samples has no chain of states to wait for.
float Noise(std::uint32_t number) {
    number *= 0x9E3779B9U;
    number ^= number >> 16;
    number *= 0x85EBCA6BU;
    number ^= number >> 13;
    number *= 0xC2B2AE35U;
    number ^= number >> 16;
    const auto sum = static_cast<std::int32_t>((number & 0xFFFFU) + (number >> 16));
    return static_cast<float>(sum - 0xFFFF) * (1.0F / 65536.0F);
}

template <int Bits>
void Store(std::int32_t value, std::byte* target) {
    const auto bits = static_cast<std::uint32_t>(Bits == 8 ? value + 128 : value);
    for (int byte = 0; byte < Bits / 8; ++byte) target[byte] = static_cast<std::byte>(bits >> (8 * byte));
}

template <int Bits, class Sample>
void StoreExact(std::span<const Sample> samples, std::byte* target) {
    if constexpr (std::is_integral_v<Sample> && sizeof(Sample) * 8 == Bits) {
        std::memcpy(target, samples.data(), samples.size_bytes());
    } else {
        for (const Sample sample : samples) {
            if constexpr (std::is_integral_v<Sample>) {
                constexpr int lost = static_cast<int>(sizeof(Sample)) * 8 - Bits;
                if constexpr (lost >= 0) {
                    Store<Bits>(sample >> lost, target);
                } else {
                    Store<Bits>(static_cast<std::int32_t>(sample) * (1 << -lost), target);
                }
            } else {
                Store<Bits>(Rounded<Bits>(Scaled<Bits>(sample)), target);
            }
            target += Bits / 8;
        }
    }
}

template <int Bits, class Sample>
void StoreDithered(std::span<const Sample> samples, std::uint32_t number, std::byte* target) {
    for (const Sample sample : samples) {
        Store<Bits>(Rounded<Bits>(Scaled<Bits>(sample) + Noise(number++)), target);
        target += Bits / 8;
    }
}

// Stores all samples; `dithering` and `number` carry over from block to block.
template <int Bits, class Sample>
void StoreAll(std::span<const Sample> samples, bool& dithering, std::uint32_t& number, std::byte* target) {
    std::size_t exact = 0;
    // 32 bits hold more than the float samples between the stages do.
    if constexpr (Bits == 32 || (std::is_integral_v<Sample> && sizeof(Sample) * 8 <= Bits)) {
        exact = samples.size();
    } else if (!dithering) {
        const auto first = std::find_if_not(samples.begin(), samples.end(), Fits<Bits, Sample>);
        exact = static_cast<std::size_t>(first - samples.begin());
        dithering = exact < samples.size();
    }
    StoreExact<Bits>(samples.first(exact), target);
    const std::span<const Sample> rest = samples.subspan(exact);
    StoreDithered<Bits>(rest, number, target + exact * (Bits / 8));
    number += static_cast<std::uint32_t>(rest.size());
}

}  // namespace

template <class Sample>
void PcmPacker::PackSamples(std::span<const Sample> samples, std::vector<std::byte>& packed) {
    if (samples.empty()) return;
    const std::size_t start = packed.size();
    packed.resize(start + samples.size() * static_cast<std::size_t>(Bits / 8));
    std::byte* target = packed.data() + start;
    switch (Bits) {
        case 8:
            return StoreAll<8>(samples, Dithering, SamplesDithered, target);
        case 16:
            return StoreAll<16>(samples, Dithering, SamplesDithered, target);
        case 24:
            return StoreAll<24>(samples, Dithering, SamplesDithered, target);
        default:
            return StoreAll<32>(samples, Dithering, SamplesDithered, target);
    }
}

void PcmPacker::Pack(const AudioBlock& block, std::vector<std::byte>& packed) {
    switch (block.Type) {
        case SampleType::Int16:
            return PackSamples(SamplesOf<std::int16_t>(block), packed);
        case SampleType::Int32:
            return PackSamples(SamplesOf<std::int32_t>(block), packed);
        case SampleType::Float32:
            return PackSamples(SamplesOf<float>(block), packed);
    }
}

}  // namespace Sonmira

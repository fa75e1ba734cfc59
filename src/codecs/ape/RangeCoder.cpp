#include "codecs/ape/RangeCoder.h"

#include "codecs/ape/ApeFormat.h"
#include "codecs/ape/ResidualCoding.h"

namespace Sonmira {

void ApeRangeEncoder::Start(const ApeCodedLanes& lanes, std::size_t first) {
    Lanes = lanes;
    Estimate.fill(ApeStartEstimate);
    Low = 0;
    Range = 1U << 31;
    Last = 0;
    if (Bytes.size() < first + MostBytes) Bytes.resize(first + MostBytes);
    Out = Bytes.data() + first;
}

void ApeRangeEncoder::Reserve(std::size_t numbers) {
    const auto used = static_cast<std::size_t>(Out - Bytes.data());
    const std::size_t needed = used + numbers * MostBytes + MostBytes;
    if (Bytes.size() >= needed) return;
    Bytes.resize(std::max(needed, Bytes.size() * 2));
    Out = Bytes.data() + used;
}

void ApeRangeEncoder::Finish() {
    Reserve(1);
    ApeFinish(*this);
    Bytes.resize(static_cast<std::size_t>(Out - Bytes.data()));
}

void ApeRangeDecoder::Start(const ApeCodedLanes& lanes, const std::uint8_t* in) {
    Lanes = lanes;
    Estimate.fill(ApeStartEstimate);
    Range = 1U << 31;
    Damaged = false;
    // The first byte is always 0; 31 bits follow.
    std::uint32_t start = 0;
    for (int i = 1; i <= 4; ++i) start = start << 8 | in[i];
    Code = start >> 1;
    In = in + 4;
}

}  // namespace Sonmira

// Compiled with AVX2, BMI and LZCNT switched on: only what Kernels.cpp finds to be there is ever called, and
// nothing in here may be shared with other files.
#include "codecs/ape/LaneKernels.h"
#include "codecs/ape/ResidualCoding.h"

#include <immintrin.h>

namespace Sonmira {
namespace {

struct Vector4 {
    __m128i V;

    static Vector4 Load(const std::int32_t* from) {
        return {_mm_load_si128(static_cast<const __m128i*>(static_cast<const void*>(from)))};
    }
    void Store(std::int32_t* to) const { _mm_store_si128(static_cast<__m128i*>(static_cast<void*>(to)), V); }
    static Vector4 All(std::int32_t value) { return {_mm_set1_epi32(value)}; }
    Vector4 operator+(Vector4 other) const { return {_mm_add_epi32(V, other.V)}; }
    Vector4 operator-(Vector4 other) const { return {_mm_sub_epi32(V, other.V)}; }
    Vector4 Times(Vector4 other) const { return {_mm_mullo_epi32(V, other.V)}; }
    template <int Bits>
    Vector4 ShiftedLeft() const {
        return {_mm_slli_epi32(V, Bits)};
    }
    template <int Bits>
    Vector4 ShiftedRight() const {
        return {_mm_srai_epi32(V, Bits)};
    }
    // Times -1, 0 or 1.
    Vector4 SignedBy(Vector4 sign) const { return {_mm_sign_epi32(V, sign.V)}; }
};

struct Vector8 {
    __m256i V;

    static Vector8 Load(const std::int32_t* from) {
        return {_mm256_load_si256(static_cast<const __m256i*>(static_cast<const void*>(from)))};
    }
    void Store(std::int32_t* to) const {
        _mm256_store_si256(static_cast<__m256i*>(static_cast<void*>(to)), V);
    }
    static Vector8 All(std::int32_t value) { return {_mm256_set1_epi32(value)}; }
    // The upper half of one, and above it the lower half of the other.
    static Vector8 HighThenLow(Vector8 one, Vector8 other) {
        return {_mm256_permute2x128_si256(one.V, other.V, 0x21)};
    }
    Vector8 operator+(Vector8 other) const { return {_mm256_add_epi32(V, other.V)}; }
    Vector8 operator-(Vector8 other) const { return {_mm256_sub_epi32(V, other.V)}; }
    Vector8 operator&(Vector8 other) const { return {_mm256_and_si256(V, other.V)}; }
    Vector8 operator|(Vector8 other) const { return {_mm256_or_si256(V, other.V)}; }
    Vector8 Times(Vector8 other) const { return {_mm256_mullo_epi32(V, other.V)}; }
    template <int Bits>
    Vector8 ShiftedLeft() const {
        return {_mm256_slli_epi32(V, Bits)};
    }
    template <int Bits>
    Vector8 ShiftedRight() const {
        return {_mm256_srai_epi32(V, Bits)};
    }
    Vector8 ShiftedRightBy(int bits) const { return {_mm256_sra_epi32(V, _mm_cvtsi32_si128(bits))}; }
    Vector8 SignedBy(Vector8 sign) const { return {_mm256_sign_epi32(V, sign.V)}; }
    Vector8 IsAbove(Vector8 other) const { return {_mm256_cmpgt_epi32(V, other.V)}; }
    // Of 16-bit halves.
    Vector8 PlusHalves(Vector8 other) const { return {_mm256_add_epi16(V, other.V)}; }
    Vector8 TimesHalves(Vector8 other) const { return {_mm256_mullo_epi16(V, other.V)}; }
    Vector8 HalvesSignedBy(Vector8 sign) const { return {_mm256_sign_epi16(V, sign.V)}; }
    // Both products of a lane, summed.
    Vector8 PairSums(Vector8 other) const { return {_mm256_madd_epi16(V, other.V)}; }
    // -1, 0 or 1 in both halves.
    Vector8 SignsInHalves() const {
        const __m256i nothing = _mm256_setzero_si256();
        return {_mm256_sub_epi16(_mm256_cmpgt_epi32(nothing, V), _mm256_cmpgt_epi32(V, nothing))};
    }
    Vector8 ClippedTo16() const {
        return {_mm256_max_epi32(_mm256_min_epi32(V, _mm256_set1_epi32(32767)), _mm256_set1_epi32(-32768))};
    }
};

}  // namespace

const ApeKernels Avx2ApeKernels = {"AVX2",
                                   LanePredict<Vector8>,
                                   LaneRestore<Vector4>,
                                   LaneFilterOfAnyOrder<Vector8, true>,
                                   LaneFilterOfAnyOrder<Vector8, false>,
                                   ApeEncodeResiduals,
                                   ApeDecodeResiduals};

}  // namespace Sonmira

// SSE2, which every x86-64 processor has.
#include "codecs/ape/LaneKernels.h"
#include "codecs/ape/ResidualCoding.h"

#include <emmintrin.h>

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
    Vector4 operator&(Vector4 other) const { return {_mm_and_si128(V, other.V)}; }
    Vector4 operator|(Vector4 other) const { return {_mm_or_si128(V, other.V)}; }
    // There is a product of every other lane only, and of those the lower 32 bits are wanted.
    Vector4 Times(Vector4 other) const {
        const __m128i even = _mm_mul_epu32(V, other.V);
        const __m128i odd = _mm_mul_epu32(_mm_srli_epi64(V, 32), _mm_srli_epi64(other.V, 32));
        return {_mm_unpacklo_epi32(_mm_shuffle_epi32(even, 0x08), _mm_shuffle_epi32(odd, 0x08))};
    }
    template <int Bits>
    Vector4 ShiftedLeft() const {
        return {_mm_slli_epi32(V, Bits)};
    }
    template <int Bits>
    Vector4 ShiftedRight() const {
        return {_mm_srai_epi32(V, Bits)};
    }
    Vector4 ShiftedRightBy(int bits) const { return {_mm_sra_epi32(V, _mm_cvtsi32_si128(bits))}; }
    Vector4 SignedBy(Vector4 sign) const {
        const __m128i negative = _mm_srai_epi32(sign.V, 31);
        const __m128i changed = _mm_sub_epi32(_mm_xor_si128(V, negative), negative);
        return {_mm_andnot_si128(_mm_cmpeq_epi32(sign.V, _mm_setzero_si128()), changed)};
    }
    Vector4 IsAbove(Vector4 other) const { return {_mm_cmpgt_epi32(V, other.V)}; }
    Vector4 PlusHalves(Vector4 other) const { return {_mm_add_epi16(V, other.V)}; }
    Vector4 TimesHalves(Vector4 other) const { return {_mm_mullo_epi16(V, other.V)}; }
    // The signs are -1, 0 or 1.
    Vector4 HalvesSignedBy(Vector4 sign) const { return {_mm_mullo_epi16(V, sign.V)}; }
    Vector4 PairSums(Vector4 other) const { return {_mm_madd_epi16(V, other.V)}; }
    Vector4 SignsInHalves() const {
        const __m128i nothing = _mm_setzero_si128();
        return {_mm_sub_epi16(_mm_cmplt_epi32(V, nothing), _mm_cmpgt_epi32(V, nothing))};
    }
    Vector4 ClippedTo16() const {
        const __m128i packed = _mm_packs_epi32(V, V);
        return {_mm_unpacklo_epi16(packed, packed)};
    }
};

// Two of four.
struct Vector8 {
    Vector4 Low;
    Vector4 High;

    static Vector8 Load(const std::int32_t* from) { return {Vector4::Load(from), Vector4::Load(from + 4)}; }
    void Store(std::int32_t* to) const {
        Low.Store(to);
        High.Store(to + 4);
    }
    static Vector8 All(std::int32_t value) { return {Vector4::All(value), Vector4::All(value)}; }
    static Vector8 HighThenLow(Vector8 one, Vector8 other) { return {one.High, other.Low}; }
    Vector8 operator+(Vector8 other) const { return {Low + other.Low, High + other.High}; }
    Vector8 operator-(Vector8 other) const { return {Low - other.Low, High - other.High}; }
    Vector8 operator&(Vector8 other) const { return {Low & other.Low, High & other.High}; }
    Vector8 operator|(Vector8 other) const { return {Low | other.Low, High | other.High}; }
    Vector8 Times(Vector8 other) const { return {Low.Times(other.Low), High.Times(other.High)}; }
    template <int Bits>
    Vector8 ShiftedLeft() const {
        return {Low.ShiftedLeft<Bits>(), High.ShiftedLeft<Bits>()};
    }
    template <int Bits>
    Vector8 ShiftedRight() const {
        return {Low.ShiftedRight<Bits>(), High.ShiftedRight<Bits>()};
    }
    Vector8 ShiftedRightBy(int bits) const { return {Low.ShiftedRightBy(bits), High.ShiftedRightBy(bits)}; }
    Vector8 SignedBy(Vector8 sign) const { return {Low.SignedBy(sign.Low), High.SignedBy(sign.High)}; }
    Vector8 IsAbove(Vector8 other) const { return {Low.IsAbove(other.Low), High.IsAbove(other.High)}; }
    Vector8 PlusHalves(Vector8 other) const {
        return {Low.PlusHalves(other.Low), High.PlusHalves(other.High)};
    }
    Vector8 TimesHalves(Vector8 other) const {
        return {Low.TimesHalves(other.Low), High.TimesHalves(other.High)};
    }
    Vector8 HalvesSignedBy(Vector8 sign) const {
        return {Low.HalvesSignedBy(sign.Low), High.HalvesSignedBy(sign.High)};
    }
    Vector8 PairSums(Vector8 other) const { return {Low.PairSums(other.Low), High.PairSums(other.High)}; }
    Vector8 SignsInHalves() const { return {Low.SignsInHalves(), High.SignsInHalves()}; }
    Vector8 ClippedTo16() const { return {Low.ClippedTo16(), High.ClippedTo16()}; }
};

}  // namespace

const ApeKernels Sse2ApeKernels = {"SSE2",
                                   LanePredict<Vector8>,
                                   LaneRestore<Vector4>,
                                   LaneFilterOfAnyOrder<Vector8, true>,
                                   LaneFilterOfAnyOrder<Vector8, false>,
                                   ApeEncodeResiduals,
                                   ApeDecodeResiduals};

}  // namespace Sonmira

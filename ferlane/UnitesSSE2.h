// The SSE2 unit tests the fast scans share: eight UTF-16 units compared at once. Only where the
// machine has SSE2 (every x86-64 does); the callers keep a unit-at-a-time path for the others.
#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>

#include <string_view>

// All ones on each unit c of `v` with bas <= c <= haut (unsigned): c - bas, saturating-minus
// haut - bas, is zero exactly then.
inline __m128i UnitesDans(__m128i v, char16_t bas, char16_t haut) {
  const __m128i decale = _mm_sub_epi16(v, _mm_set1_epi16(static_cast<short>(bas)));
  return _mm_cmpeq_epi16(_mm_subs_epu16(decale, _mm_set1_epi16(static_cast<short>(haut - bas))),
                         _mm_setzero_si128());
}

// The same on the sixteen bytes of `v` (units narrowed to bytes): v - bas, wrapping, is at most
// haut - bas exactly then.
inline __m128i OctetsDans(__m128i v, char bas, char haut) {
  const __m128i decale = _mm_sub_epi8(v, _mm_set1_epi8(bas));
  return _mm_cmpeq_epi8(_mm_min_epu8(decale, _mm_set1_epi8(static_cast<char>(haut - bas))), decale);
}

// All ones on each unit of `v` that is one of a set of one to four units (the set padded with
// its first unit): the compare the searches for a small set share. OctetsParmi: the same on the
// sixteen bytes of `v`, for a set of ASCII units.
template <int kBitsParVoie>
class ParmiSSE2 {
  static_assert(kBitsParVoie == 16 || kBitsParVoie == 8);

 public:
  explicit ParmiSSE2(std::u16string_view unites) {
    for (size_t k = 0; k < 4; ++k) {
      const char16_t u = unites[k < unites.size() ? k : 0];
      cibles_[k] = kBitsParVoie == 16 ? _mm_set1_epi16(static_cast<short>(u))
                                      : _mm_set1_epi8(static_cast<char>(u));
    }
  }
  __m128i operator()(__m128i v) const {
    return _mm_or_si128(_mm_or_si128(Egales(v, cibles_[0]), Egales(v, cibles_[1])),
                        _mm_or_si128(Egales(v, cibles_[2]), Egales(v, cibles_[3])));
  }

 private:
  static __m128i Egales(__m128i a, __m128i b) {
    return kBitsParVoie == 16 ? _mm_cmpeq_epi16(a, b) : _mm_cmpeq_epi8(a, b);
  }

  __m128i cibles_[4];
};
using UnitesParmi = ParmiSSE2<16>;
using OctetsParmi = ParmiSSE2<8>;
#endif

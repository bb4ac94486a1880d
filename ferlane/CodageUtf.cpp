// UTF-8 and UTF-16 conversions. Runs of ASCII, most of any document, go across sixteen bytes
// (or eight units) a step with SSE2 where the machine has it; the rest one sequence at a time.
#include "ferlane/CodageUtf.h"

#include <algorithm>
#include <bit>
#include <iterator>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

// Length of the valid UTF-8 sequence at `i` and its code point, or 0 when it is invalid.
size_t LitSequenceUtf8(std::string_view octets, size_t i, char32_t& codePoint) {
  const auto octet = [&](size_t k) { return static_cast<unsigned char>(octets[k]); };
  const unsigned char premier = octet(i);
  if (premier < 0x80) {
    codePoint = premier;
    return 1;
  }
  size_t longueur;
  char32_t minimum;
  if (premier >= 0xC2 && premier <= 0xDF) {
    longueur = 2, minimum = 0x80, codePoint = premier & 0x1F;
  } else if (premier >= 0xE0 && premier <= 0xEF) {
    longueur = 3, minimum = 0x800, codePoint = premier & 0x0F;
  } else if (premier >= 0xF0 && premier <= 0xF4) {
    longueur = 4, minimum = 0x10000, codePoint = premier & 0x07;
  } else {
    return 0;
  }
  if (octets.size() - i < longueur) return 0;
  for (size_t k = 1; k < longueur; ++k) {
    if ((octet(i + k) & 0xC0) != 0x80) return 0;
    codePoint = (codePoint << 6) | (octet(i + k) & 0x3F);
  }
  if (codePoint < minimum || codePoint > 0x10FFFF || EstSubstitut(codePoint)) return 0;
  return longueur;
}

// How many bytes an invalid sequence at `i` covers: its lead byte and the continuation bytes
// that follow it, up to the length the lead byte announces.
size_t LongueurInvalide(std::string_view octets, size_t i) {
  const unsigned char premier = static_cast<unsigned char>(octets[i]);
  const size_t annonce = premier >= 0xF0 ? 4 : premier >= 0xE0 ? 3 : premier >= 0xC0 ? 2 : 1;
  size_t k = 1;
  while (k < annonce && i + k < octets.size() &&
         (static_cast<unsigned char>(octets[i + k]) & 0xC0) == 0x80)
    ++k;
  return k;
}

// Widens the ASCII run that starts at octets[i] into `sortie` (room for every byte left), and
// returns the end of the run.
size_t CopieAscii(std::string_view octets, size_t i, char16_t*& sortie) {
  const auto* source = reinterpret_cast<const unsigned char*>(octets.data());
#if defined(__SSE2__)
  const __m128i zero = _mm_setzero_si128();
  for (; i + 16 <= octets.size(); i += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source + i));
    const int nonAscii = _mm_movemask_epi8(v);
    // All sixteen widened, and the output moves on by the ASCII ones before the first that is
    // not: the next writes go over the rest (the output is never ahead of the input).
    _mm_storeu_si128(reinterpret_cast<__m128i*>(sortie), _mm_unpacklo_epi8(v, zero));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(sortie + 8), _mm_unpackhi_epi8(v, zero));
    if (nonAscii != 0) {
      const int n = __builtin_ctz(static_cast<unsigned>(nonAscii));
      sortie += n;
      return i + static_cast<size_t>(n);
    }
    sortie += 16;
  }
#endif
  while (i < octets.size() && source[i] < 0x80) *sortie++ = source[i++];
  return i;
}

void EcritCodePoint(char16_t*& sortie, char32_t codePoint) {
  if (codePoint < 0x10000) {
    *sortie++ = static_cast<char16_t>(codePoint);
  } else {
    codePoint -= 0x10000;
    *sortie++ = static_cast<char16_t>(0xD800 + (codePoint >> 10));
    *sortie++ = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
  }
}

// Both decodings: a UTF-8 text never has more UTF-16 units than bytes, so the output is sized
// once and written through a pointer.
template <bool kStrict>
std::optional<size_t> Decode(std::string_view octets, std::u16string& texte) {
  texte.resize(octets.size());
  char16_t* const debut = texte.data();
  char16_t* sortie = debut;
  for (size_t i = 0;;) {
    i = CopieAscii(octets, i, sortie);
    if (i == octets.size()) break;
    char32_t codePoint;
    if (const size_t longueur = LitSequenceUtf8(octets, i, codePoint)) {
      EcritCodePoint(sortie, codePoint);
      i += longueur;
    } else {
      if constexpr (kStrict) return i;
      *sortie++ = u'\uFFFD';
      i += LongueurInvalide(octets, i);
    }
  }
  texte.resize(static_cast<size_t>(sortie - debut));
  return std::nullopt;
}

}  // namespace

std::u16string DecodeUtf8(std::string_view octets) {
  std::u16string texte;
  Decode<false>(octets, texte);
  return texte;
}

std::optional<size_t> DecodeUtf8Strict(std::string_view octets, std::u16string& texte) {
  return Decode<true>(octets, texte);
}

std::optional<size_t> TrouveErreurUtf8(std::string_view octets) {
  for (size_t i = 0; i < octets.size();) {
    if (static_cast<unsigned char>(octets[i]) < 0x80) {
      ++i;
      continue;
    }
    char32_t codePoint;
    const size_t longueur = LitSequenceUtf8(octets, i, codePoint);
    if (longueur == 0) return i;
    i += longueur;
  }
  return std::nullopt;
}

namespace {

// Narrows the ASCII run that starts at texte[i] into `sortie` and returns the end of the run.
size_t CopieAsciiEnOctets(std::u16string_view texte, size_t i, char*& sortie) {
#if defined(__SSE2__)
  const __m128i horsAscii = _mm_set1_epi16(static_cast<short>(0xFF80));
  const __m128i zero = _mm_setzero_si128();
  for (; i + 8 <= texte.size(); i += 8) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(texte.data() + i));
    const auto ascii = static_cast<unsigned>(
        _mm_movemask_epi8(_mm_cmpeq_epi16(_mm_and_si128(v, horsAscii), zero)));
    // Eight bytes written, and the output moves on by the ASCII units before the first that is
    // not (there is room for three bytes a unit left to encode).
    _mm_storel_epi64(reinterpret_cast<__m128i*>(sortie), _mm_packus_epi16(v, v));
    if (ascii != 0xFFFF) {
      const auto n = static_cast<size_t>(std::countr_one(ascii)) / 2;
      sortie += n;
      return i + n;
    }
    sortie += 8;
  }
#endif
  while (i < texte.size() && texte[i] < 0x80) *sortie++ = static_cast<char>(texte[i++]);
  return i;
}

}  // namespace

void AjouteUtf8(std::u16string_view texte, std::string& octets) {
  // At most three bytes a unit (a pair of two units gives four).
  const size_t avant = octets.size();
  octets.resize(avant + 3 * texte.size());
  char* const debut = octets.data() + avant;
  char* sortie = debut;
  for (size_t i = 0;;) {
    i = CopieAsciiEnOctets(texte, i, sortie);
    if (i == texte.size()) break;
    char32_t c = LitCodePoint(texte, i);
    if (EstSubstitut(c)) c = 0xFFFD;
    if (c < 0x80) {
      *sortie++ = static_cast<char>(c);
    } else if (c < 0x800) {
      *sortie++ = static_cast<char>(0xC0 | (c >> 6));
      *sortie++ = static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      *sortie++ = static_cast<char>(0xE0 | (c >> 12));
      *sortie++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      *sortie++ = static_cast<char>(0x80 | (c & 0x3F));
    } else {
      *sortie++ = static_cast<char>(0xF0 | (c >> 18));
      *sortie++ = static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      *sortie++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      *sortie++ = static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  octets.resize(avant + static_cast<size_t>(sortie - debut));
}

std::string EncodeUtf8(std::u16string_view texte) {
  std::string octets;
  AjouteUtf8(texte, octets);
  return octets;
}

void AjouteCodePoint(std::u16string& texte, char32_t codePoint) {
  if (codePoint < 0x10000) {
    texte += static_cast<char16_t>(codePoint);
  } else {
    codePoint -= 0x10000;
    texte += static_cast<char16_t>(0xD800 + (codePoint >> 10));
    texte += static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
  }
}

char32_t LitCodePoint(std::u16string_view texte, size_t& position) {
  const char16_t c = texte[position++];
  if (EstHautSubstitut(c) && position < texte.size() && EstBasSubstitut(texte[position])) {
    return 0x10000 + ((char32_t{c} - 0xD800) << 10) + (texte[position++] - 0xDC00);
  }
  return c;
}

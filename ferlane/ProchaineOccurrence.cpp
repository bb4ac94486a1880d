// The unit searches, sixteen units a step with SSE2 where the machine has it (every x86-64
// does), one at a time elsewhere.
#include "ferlane/ProchaineOccurrence.h"

#include <array>
#include <bit>
#include <stdexcept>

#include "ferlane/UnitesSSE2.h"

namespace {

// Positions p in [debut, fin) one at a time.
template <class Predicat>
uint64_t TrouveUnAUn(std::u16string_view texte, uint64_t debut, uint64_t fin, Predicat accepte) {
  for (uint64_t p = debut; p < fin; ++p)
    if (accepte(texte[p])) return p;
  return kPasTrouve;
}

#if defined(__SSE2__)
// The number of bits set in each byte value.
constexpr auto kBitsParOctet = [] {
  std::array<uint8_t, 256> bits{};
  for (size_t i = 1; i < bits.size(); ++i) bits[i] = static_cast<uint8_t>((i & 1) + bits[i / 2]);
  return bits;
}();

// Sixteen units a step: two 8-unit compares, one mask of 32 bits (two bits a unit). The last
// units are read as the text's final sixteen, the lanes before `p` masked off, so a short search
// (a line, say) has no unit-at-a-time tail; only a text under sixteen units leaves the rest to
// the caller, from `reprise`.
template <class Compare>
uint64_t TrouveParBlocs(std::u16string_view texte, uint64_t debut, Compare compare,
                        uint64_t& reprise) {
  const char16_t* donnees = texte.data();
  const auto masque = [&](uint64_t p) {
    const __m128i bas = _mm_loadu_si128(reinterpret_cast<const __m128i*>(donnees + p));
    const __m128i haut = _mm_loadu_si128(reinterpret_cast<const __m128i*>(donnees + p + 8));
    return static_cast<uint32_t>(_mm_movemask_epi8(compare(bas))) |
           static_cast<uint32_t>(_mm_movemask_epi8(compare(haut))) << 16;
  };
  uint64_t p = debut;
  for (; p + 16 <= texte.size(); p += 16) {
    const uint32_t m = masque(p);
    if (m != 0) return p + static_cast<uint64_t>(__builtin_ctz(m)) / 2;
  }
  if (p < texte.size() && texte.size() >= 16) {
    const uint64_t dernier = texte.size() - 16;  // p - dernier units already looked at
    const uint32_t m = masque(dernier) & (~uint32_t{0} << (2 * (p - dernier)));
    reprise = texte.size();
    return m != 0 ? dernier + static_cast<uint64_t>(__builtin_ctz(m)) / 2 : kPasTrouve;
  }
  reprise = p;
  return kPasTrouve;
}
__m128i LettresOuChiffres(__m128i v) {
  return _mm_or_si128(UnitesDans(v, u'0', u'9'),
                      UnitesDans(_mm_or_si128(v, _mm_set1_epi16(0x20)), u'a', u'z'));
}
#endif

bool EstLettreOuChiffreAscii(char16_t c) {
  const char16_t minuscule = c | 0x20;
  return (c >= u'0' && c <= u'9') || (minuscule >= u'a' && minuscule <= u'z');
}

}  // namespace

uint64_t TrouveUnite(std::u16string_view texte, uint64_t debut, char16_t unite) {
  if (debut >= texte.size()) return kPasTrouve;
#if defined(__SSE2__)
  const __m128i cible = _mm_set1_epi16(static_cast<short>(unite));
  uint64_t reprise = debut;
  const uint64_t trouve = TrouveParBlocs(
      texte, debut, [&](__m128i v) { return _mm_cmpeq_epi16(v, cible); }, reprise);
  if (trouve != kPasTrouve) return trouve;
  debut = reprise;
#endif
  return TrouveUnAUn(texte, debut, texte.size(), [&](char16_t c) { return c == unite; });
}

uint64_t TrouveUneDeDeux(std::u16string_view texte, uint64_t debut, char16_t a, char16_t b) {
  if (debut >= texte.size()) return kPasTrouve;
#if defined(__SSE2__)
  const __m128i ca = _mm_set1_epi16(static_cast<short>(a));
  const __m128i cb = _mm_set1_epi16(static_cast<short>(b));
  uint64_t reprise = debut;
  const uint64_t trouve = TrouveParBlocs(
      texte, debut,
      [&](__m128i v) { return _mm_or_si128(_mm_cmpeq_epi16(v, ca), _mm_cmpeq_epi16(v, cb)); },
      reprise);
  if (trouve != kPasTrouve) return trouve;
  debut = reprise;
#endif
  return TrouveUnAUn(texte, debut, texte.size(), [&](char16_t c) { return c == a || c == b; });
}

uint64_t TrouveUneDe(std::u16string_view texte, uint64_t debut, std::u16string_view unites) {
  if (unites.empty() || unites.size() > 4) throw std::invalid_argument("one to four units");
  if (debut >= texte.size()) return kPasTrouve;
  // Four units always: the set padded with its first.
  const char16_t u[4] = {unites[0], unites[unites.size() > 1 ? 1 : 0],
                         unites[unites.size() > 2 ? 2 : 0], unites[unites.size() > 3 ? 3 : 0]};
#if defined(__SSE2__)
  uint64_t reprise = debut;
  const uint64_t trouve = TrouveParBlocs(texte, debut, UnitesParmi(unites), reprise);
  if (trouve != kPasTrouve) return trouve;
  debut = reprise;
#endif
  return TrouveUnAUn(texte, debut, texte.size(),
                     [&](char16_t c) { return c == u[0] || c == u[1] || c == u[2] || c == u[3]; });
}

uint64_t FinDeMotsAscii(std::u16string_view texte, uint64_t debut, uint64_t& espaces) {
  uint64_t p = debut;
#if defined(__SSE2__)
  // Sixteen units a step, packed to a byte each. A space counts when the unit after it is a
  // letter or a digit: in the block for the first fifteen lanes, the first unit of the next block
  // for the last one.
  const __m128i espace = _mm_set1_epi16(0x20);
  for (; p + 16 <= texte.size(); p += 16) {
    const __m128i bas = _mm_loadu_si128(reinterpret_cast<const __m128i*>(texte.data() + p));
    const __m128i haut = _mm_loadu_si128(reinterpret_cast<const __m128i*>(texte.data() + p + 8));
    const __m128i mots = _mm_packs_epi16(LettresOuChiffres(bas), LettresOuChiffres(haut));
    const __m128i espaces16 =
        _mm_packs_epi16(_mm_cmpeq_epi16(bas, espace), _mm_cmpeq_epi16(haut, espace));
    const __m128i bonEspace = _mm_and_si128(espaces16, _mm_srli_si128(mots, 1));
    const auto pris = static_cast<uint32_t>(_mm_movemask_epi8(_mm_or_si128(mots, bonEspace)));
    const auto comptes = static_cast<uint32_t>(_mm_movemask_epi8(bonEspace));
    const auto k = static_cast<uint32_t>(std::countr_one(pris));  // the units taken
    const uint32_t pris16 = comptes & ((uint32_t{1} << k) - 1);
    espaces += kBitsParOctet[pris16 & 0xFF] + kBitsParOctet[pris16 >> 8];
    if (k == 16) continue;
    if (k < 15 || texte[p + 15] != u' ' || p + 16 >= texte.size() ||
        !EstLettreOuChiffreAscii(texte[p + 16]))
      return p + k;
    ++espaces;  // a space in the last lane, and a word after it: the run goes on
  }
  // Eight units, once, before the last few: a range that ends inside an argument is often short.
  if (p + 8 <= texte.size()) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(texte.data() + p));
    const __m128i mots = LettresOuChiffres(v);
    const __m128i bonEspace = _mm_and_si128(_mm_cmpeq_epi16(v, espace), _mm_srli_si128(mots, 2));
    const __m128i zero = _mm_setzero_si128();
    const auto pris = static_cast<uint32_t>(
        _mm_movemask_epi8(_mm_packs_epi16(_mm_or_si128(mots, bonEspace), zero)));
    const auto comptes = static_cast<uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(bonEspace, zero)));
    const auto k = static_cast<uint32_t>(std::countr_one(pris));
    espaces += kBitsParOctet[comptes & ((1u << k) - 1)];
    if (k < 7 || (k == 7 && (texte[p + 7] != u' ' || p + 8 >= texte.size() ||
                             !EstLettreOuChiffreAscii(texte[p + 8]))))
      return p + k;
    p += k;  // 8, or 7 and the space in the last lane, which the units after it decide
  }
#endif
  for (; p < texte.size(); ++p) {
    if (EstLettreOuChiffreAscii(texte[p])) continue;
    if (texte[p] != u' ' || p + 1 >= texte.size() || !EstLettreOuChiffreAscii(texte[p + 1])) break;
    ++espaces;
  }
  return p;
}

namespace {

// The first position p in [debut, dernier] where texte[p] == a and texte[p + 1] == b, with
// dernier + 1 < texte.size(); kPasTrouve when there is none. Two units make far fewer false
// starts than one ("``" among single backticks, "\r\n\r\n" among line ends): sixteen
// positions a step, each unit compared with its follower, loaded one unit further on; the last
// positions read as the final sixteen with those already seen masked off.
uint64_t TrouveDeuxUnites(std::u16string_view texte, uint64_t debut, uint64_t dernier, char16_t a,
                          char16_t b) {
  uint64_t p = debut;
#if defined(__SSE2__)
  const char16_t* donnees = texte.data();
  const __m128i ca = _mm_set1_epi16(static_cast<short>(a));
  const __m128i cb = _mm_set1_epi16(static_cast<short>(b));
  const auto masque = [&](uint64_t q) {
    const auto paires = [&](uint64_t r) {
      const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(donnees + r));
      const __m128i w = _mm_loadu_si128(reinterpret_cast<const __m128i*>(donnees + r + 1));
      return _mm_and_si128(_mm_cmpeq_epi16(v, ca), _mm_cmpeq_epi16(w, cb));
    };
    return static_cast<uint32_t>(_mm_movemask_epi8(paires(q))) |
           static_cast<uint32_t>(_mm_movemask_epi8(paires(q + 8))) << 16;
  };
  const uint64_t candidats = dernier + 1;  // positions [0, candidats) may start a pair
  for (; p + 16 <= candidats; p += 16) {
    const uint32_t m = masque(p);
    if (m != 0) return p + static_cast<uint64_t>(__builtin_ctz(m)) / 2;
  }
  if (p < candidats && candidats >= 16) {
    const uint64_t fin = candidats - 16;
    const uint32_t m = masque(fin) & (~uint32_t{0} << (2 * (p - fin)));
    return m != 0 ? fin + static_cast<uint64_t>(__builtin_ctz(m)) / 2 : kPasTrouve;
  }
#endif
  for (; p <= dernier; ++p)
    if (texte[p] == a && texte[p + 1] == b) return p;
  return kPasTrouve;
}

}  // namespace

uint64_t TrouveMotif(std::u16string_view texte, uint64_t debut, std::u16string_view motif) {
  if (motif.empty() || motif.size() > texte.size()) return kPasTrouve;
  const uint64_t dernier = texte.size() - motif.size();  // the last position it can start at
  if (motif.size() == 1) return TrouveUnite(texte, debut, motif[0]);
  for (uint64_t p = debut; p <= dernier; ++p) {
    p = TrouveDeuxUnites(texte, p, dernier, motif[0], motif[1]);
    if (p == kPasTrouve) return kPasTrouve;
    // Patterns are short (closing tags, line ends): a loop beats a call.
    size_t k = 2;
    while (k < motif.size() && texte[p + k] == motif[k]) ++k;
    if (k == motif.size()) return p;
  }
  return kPasTrouve;
}

// TexteLisible: one pass over the internal text. Runs of prose are copied as blocks; only the
// units left out or changed are looked at one by one.
#include "framework/TexteLisible.h"

#include <algorithm>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "ferlane/CodageUtf.h"
#include "ferlane/Convertisseur.h"
#include "ferlane/UniCaractere.h"

namespace {

constexpr char16_t kMarqueItem = u'\x0E';
constexpr char16_t kMarqueNote = u'\x07';
constexpr char16_t kMarqueTitre = u'\x11';

bool EstDeMot(char16_t c) {
  return c < 0x80 ? (c >= u'0' && c <= u'9') || ((c | 0x20) >= u'a' && (c | 0x20) <= u'z')
                  : EstSubstitut(c) || UniCaractere::EstAlphaNumerique(c);
}

bool EstMarqueur(char16_t c) {
  return c == kMarqueItem || c == kMarqueNote || c == kMarqueTitre;
}

// Where the run of units that are copied as they are ends: a marker, or a unit not prose.
// Sixteen units a step (SSE2, which every x86-64 has): the markers' lanes, packed to a byte a
// unit, and the bytes of bits give one mask whose first set bit is the end.
size_t FinDeProse(std::u16string_view texte, const TexteAvecAttributs& interne, size_t debut) {
  const BitsDAttributs* attributs = interne.AAttributs() ? interne.Attributs().data() : nullptr;
  size_t fin = debut;
#if defined(__SSE2__)
  const __m128i item = _mm_set1_epi16(kMarqueItem);
  const __m128i note = _mm_set1_epi16(kMarqueNote);
  const __m128i titre = _mm_set1_epi16(kMarqueTitre);
  const __m128i nonTexte = _mm_set1_epi8(static_cast<char>(eNonTexte));
  const auto marqueurs = [&](__m128i v) {
    return _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi16(v, item), _mm_cmpeq_epi16(v, note)),
                        _mm_cmpeq_epi16(v, titre));
  };
  for (; fin + 16 <= texte.size(); fin += 16) {
    const auto* unites = reinterpret_cast<const __m128i*>(texte.data() + fin);
    __m128i arrets =
        _mm_packs_epi16(marqueurs(_mm_loadu_si128(unites)), marqueurs(_mm_loadu_si128(unites + 1)));
    if (attributs != nullptr) {
      const __m128i bits = _mm_loadu_si128(reinterpret_cast<const __m128i*>(attributs + fin));
      arrets = _mm_or_si128(arrets, _mm_cmpeq_epi8(_mm_and_si128(bits, nonTexte), nonTexte));
    }
    const int masque = _mm_movemask_epi8(arrets);
    if (masque != 0) return fin + static_cast<size_t>(__builtin_ctz(static_cast<unsigned>(masque)));
  }
#endif
  while (fin < texte.size() && !EstMarqueur(texte[fin]) &&
         (attributs == nullptr || (attributs[fin] & eNonTexte) == 0))
    ++fin;
  return fin;
}

// Where the run of units not prose that starts at `debut` ends, sixteen bits a step: code and
// formulas are long stretches, left out whole.
size_t FinDeNonProse(const TexteAvecAttributs& interne, size_t debut) {
  const BitsDAttributs* attributs = interne.Attributs().data();
  const size_t n = interne.Longueur();
  size_t fin = debut;
#if defined(__SSE2__)
  const __m128i bit = _mm_set1_epi8(static_cast<char>(eNonTexte));
  for (; fin + 16 <= n; fin += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(attributs + fin));
    const int sans = _mm_movemask_epi8(_mm_cmpeq_epi8(_mm_and_si128(v, bit), _mm_setzero_si128()));
    if (sans != 0) return fin + static_cast<size_t>(__builtin_ctz(static_cast<unsigned>(sans)));
  }
#endif
  while (fin < n && (attributs[fin] & eNonTexte) != 0) ++fin;
  return fin;
}

}  // namespace

void ParcoursTexteLisible(const TexteAvecAttributs& interne,
                          const std::function<void(std::u16string_view)>& morceau) {
  const std::u16string_view texte = interne.Chaine().Vue();
  char16_t dernier = 0;  // the last unit handed over, 0 before any
  bool omis = false;     // something was left out since the last unit handed over
  for (size_t i = 0; i < texte.size();) {
    const char16_t c = texte[i];
    if ((interne.Attribut(i) & eNonTexte) != 0) {
      omis = true;
      i = FinDeNonProse(interne, i);
      continue;
    }
    if (c == kMarqueNote || c == kMarqueTitre) {
      omis = true;
      ++i;
      continue;
    }
    if (omis && dernier != 0) {
      if (EstDeMot(dernier) && EstDeMot(c)) {
        morceau(u" ");
        dernier = u' ';
      }
      // "see `x` here" reads "see here": the blanks before the span stand for those after.
      if (dernier == u' ' && c == u' ') {
        ++i;
        continue;
      }
    }
    omis = false;
    if (c == kMarqueItem) {
      morceau(u"\n");
      dernier = u'\n';
      ++i;
      continue;
    }
    const size_t fin = FinDeProse(texte, interne, i);
    morceau(texte.substr(i, fin - i));
    dernier = texte[fin - 1];
    i = fin;
  }
}

ChaineN TexteLisible(const TexteAvecAttributs& interne) {
  std::u16string lisible;
  lisible.reserve(interne.Longueur());
  ParcoursTexteLisible(interne, [&](std::u16string_view morceau) { lisible.append(morceau); });
  return ChaineN(std::move(lisible));
}

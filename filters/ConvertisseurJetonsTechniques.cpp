// ConvertisseurJetonsTechniques: one walk from token to token.
#include "filters/ConvertisseurJetonsTechniques.h"

#include "ferlane/UniCaractere.h"
#include "ferlane/UnitesSSE2.h"
#include "filters/JetonsTechniques.h"

namespace {

// Blanks and the markers the formats write (U+000E, U+0007, U+0011, tabs) end a token.
bool SepareLesJetons(char16_t c) {
  return c <= u' ' || (c >= 0x80 && UniCaractere::EstBlanc(c));
}

// The first position at or after `debut` whose unit is one of the ASCII units a rule needs
// (kUnitesTechniquesASCII), or the text's size: no unit beyond ASCII is one. With SSE2 (every
// x86-64 has it), sixteen units a step narrowed to bytes (a unit beyond 0xFF becomes 0 or 0xFF,
// neither a candidate), then eight, testing the ASCII ranges that hold those units: "()",
// "./0-9:", "<=>?@", "[\\]^_", "{|}"; the few extra units they let through are ruled out by the
// caller.
size_t ProchaineUniteCandidate(std::u16string_view unites, size_t debut) {
  size_t p = debut;
#if defined(__SSE2__)
  for (; p + 16 <= unites.size(); p += 16) {
    const auto* bloc = reinterpret_cast<const __m128i*>(unites.data() + p);
    const __m128i v = _mm_packus_epi16(_mm_loadu_si128(bloc), _mm_loadu_si128(bloc + 1));
    __m128i candidats = _mm_or_si128(OctetsDans(v, '(', ')'), OctetsDans(v, '.', ':'));
    candidats = _mm_or_si128(candidats, OctetsDans(v, '<', '@'));
    candidats = _mm_or_si128(candidats, OctetsDans(v, '[', '_'));
    candidats = _mm_or_si128(candidats, OctetsDans(v, '{', '}'));
    const int masque = _mm_movemask_epi8(candidats);
    if (masque != 0) return p + static_cast<size_t>(__builtin_ctz(masque));
  }
  for (; p + 8 <= unites.size(); p += 8) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(unites.data() + p));
    __m128i candidats = _mm_or_si128(UnitesDans(v, u'(', u')'), UnitesDans(v, u'.', u':'));
    candidats = _mm_or_si128(candidats, UnitesDans(v, u'<', u'@'));
    candidats = _mm_or_si128(candidats, UnitesDans(v, u'[', u'_'));
    candidats = _mm_or_si128(candidats, UnitesDans(v, u'{', u'}'));
    const int masque = _mm_movemask_epi8(candidats);
    if (masque != 0) return p + static_cast<size_t>(__builtin_ctz(masque)) / 2;
  }
#endif
  for (; p < unites.size(); ++p) {
    const char16_t c = unites[p];
    if (PeutRendreTechnique(c)) return p;
  }
  return unites.size();
}

}  // namespace

void ConvertisseurJetonsTechniques::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                             const FonctionRemplace& remplace,
                                                             const FonctionMarque& marque) {
  const Rapporteur rapporteur(remplace, marque);
  const std::u16string_view unites = texte.Chaine().Texte();
  // Only a token holding a unit some rule needs can be technical: the walk goes from one such
  // unit to the next, and looks at the token around it alone.
  for (size_t position = 0;
       (position = ProchaineUniteCandidate(unites, position)) < unites.size();) {
    if (SepareLesJetons(unites[position]) || !PeutRendreTechnique(unites[position])) {
      ++position;  // a unit no rule needs that the block test let through
      continue;
    }
    // Nothing but closing punctuation from here to the token's end ("word.", "end):"): the
    // units before it are none a rule needs, or the walk would have stopped there, so trimmed
    // the token is a word.
    size_t fin = position;
    while (fin < unites.size() && !SepareLesJetons(unites[fin]) && EstFermantDeJeton(unites[fin]))
      ++fin;
    if (fin == unites.size() || SepareLesJetons(unites[fin])) {
      position = fin;
      continue;
    }
    size_t debut = position;
    while (debut > 0 && !SepareLesJetons(unites[debut - 1])) --debut;
    position = fin;
    while (position < unites.size() && !SepareLesJetons(unites[position])) ++position;
    const BornesJeton jeton = RogneJeton(unites, debut, position);
    if (EstJetonTechnique(unites.substr(jeton.debut, jeton.fin - jeton.debut)))
      rapporteur.Marque(jeton.debut, jeton.fin, eNonTexte);
  }
}

// ConvertisseurJetonsTechniques: one walk from token to token.
#include "filters/ConvertisseurJetonsTechniques.h"

#include "ferlane/UniCaractere.h"
#include "filters/JetonsTechniques.h"

namespace {

// Blanks and the markers the formats write (U+000E, U+0007, U+0011, tabs) end a token.
bool SepareLesJetons(char16_t c) {
  return c <= u' ' || (c >= 0x80 && UniCaractere::EstBlanc(c));
}

}  // namespace

void ConvertisseurJetonsTechniques::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                             const FonctionRemplace& remplace,
                                                             const FonctionMarque& marque) {
  const Rapporteur rapporteur(remplace, marque);
  const std::u16string_view unites = texte.Chaine().Texte();
  size_t position = 0;
  while (position < unites.size()) {
    while (position < unites.size() && SepareLesJetons(unites[position])) ++position;
    const size_t debut = position;
    bool peutEtreTechnique = false;
    for (; position < unites.size() && !SepareLesJetons(unites[position]); ++position)
      peutEtreTechnique = peutEtreTechnique || PeutRendreTechnique(unites[position]);
    if (!peutEtreTechnique) continue;  // a word: most tokens end here
    const BornesJeton jeton = RogneJeton(unites, debut, position);
    if (EstJetonTechnique(unites.substr(jeton.debut, jeton.fin - jeton.debut)))
      rapporteur.Marque(jeton.debut, jeton.fin, eNonTexte);
  }
}

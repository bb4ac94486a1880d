// Fuzz target for the LaTeX converters, both directions. The first byte picks what runs: bit 0
// the backward direction, bit 1 the accent habit, bit 2 the comments converter rather than the
// LaTeX one, bit 3 the whole filter set (with its map), bit 4 the rest read as raw UTF-16 (lone
// surrogates included) rather than UTF-8. Every reported interval must be forward and inside
// the text, and nothing may escape the converters.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "OutilsFuzz.h"
#include "framework/FiltresCorrecteur.h"
#include "latex/ConvertisseurCommentairesLaTeX.h"
#include "latex/ConvertisseurLaTeX.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
  if (taille == 0 || taille > kTailleMaxFuzz) return 0;
  const uint8_t choix = donnees[0];
  const ChaineN chaine = TexteFuzz(donnees + 1, taille - 1, choix & 16);
  const uint64_t longueur = chaine.Longueur();

  if (choix & 8) {
    FiltresCorrecteur filtres;
    FiltresCorrecteur::Params params;
    params.Format = eFormatLaTeX;
    filtres.CreeFiltres(params);
    const MapChaines<TexteAvecAttributs> resultat = filtres.Mappeur().Convertis(chaine);
    if (resultat.Externe().Longueur() != longueur) std::abort();
    return 0;
  }

  const FonctionRemplace remplace = [&](MapPos::Intervalle i, const ChaineN&, MapPos::Attributs) {
    VerifieIntervalleFuzz(i, longueur);
  };
  const FonctionMarque marque = [&](MapPos::Intervalle i, uint32_t) {
    VerifieIntervalleFuzz(i, longueur);
  };
  const TexteAvecAttributs texte(chaine);
  if (choix & 4) {
    ConvertisseurCommentairesLaTeX commentaires;
    commentaires.ConvertisExterneAInterne(texte, remplace, marque);
  } else {
    ConvertisseurLaTeX latex((choix & 2) != 0);
    if (choix & 1)
      latex.ConvertisInterneAExterne(texte, remplace, marque);
    else
      latex.ConvertisExterneAInterne(texte, remplace, marque);
  }
  return 0;
}

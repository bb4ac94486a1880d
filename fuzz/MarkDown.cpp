// Fuzz target for the Markdown converter: the input becomes a document (UTF-8, or raw UTF-16
// units when the first byte is odd, so that lone surrogates and any control unit occur), and
// every report must be forward and inside the document, replacements never empty. The document
// then goes through a Markdown filter set in both profiles, with the document kept and without
// (the same text and styles), and through the detector.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "OutilsFuzz.h"
#include "framework/FiltresCorrecteur.h"
#include "markdown/ConvertisseurMarkDown.h"
#include "markdown/DetecteMarkDown.h"

namespace {

// The first byte picks the encoding; UTF-8 reads it as text too.
ChaineN Document(const uint8_t* donnees, size_t taille) {
  if (taille == 0 || (donnees[0] & 1) == 0) return TexteFuzz(donnees, taille, false);
  return TexteFuzz(donnees + 1, taille - 1, true);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
  if (taille > kTailleMaxFuzz) return 0;
  const ChaineN document = Document(donnees, taille);
  const uint64_t longueur = document.Longueur();

  const FonctionRemplace remplace = [&](MapPos::Intervalle i, const ChaineN&, MapPos::Attributs a) {
    ExigeFuzz(i.Debut < i.Fin && i.Fin <= longueur);
    ExigeFuzz(a.CaractereSpecial == 0 && a.Remplacable == 0);
  };
  const FonctionMarque marque = [&](MapPos::Intervalle i, uint32_t styles) {
    ExigeFuzz(i.Debut < i.Fin && i.Fin <= longueur);
    ExigeFuzz(styles != 0 && (styles & ~uint32_t{eItalique | eGras | eExposant | eIndice |
                                                 eNonTexte | eBarre}) == 0);
  };
  ConvertisseurMarkDown convertisseur;
  convertisseur.ConvertisExterneAInterne(TexteAvecAttributs(document), remplace, marque);

  // In both profiles; without the document the analyser works over the text itself, and must
  // give what it gives over a copy.
  for (const bool prose : {false, true}) {
    FiltresCorrecteur::Params params;
    params.Format = eFormatMarkDown;
    if (prose) params.Prose.Active();
    FiltresCorrecteur filtres;
    filtres.CreeFiltres(params);
    const MapChaines<TexteAvecAttributs> resultat = filtres.Mappeur().Convertis(document);
    if (!prose) ExigeFuzz(resultat.Interne().Longueur() <= longueur);  // one unit a replacement
    FiltresCorrecteur surPlace(MapChaines<TexteAvecAttributs>::eModeTexteSeul);
    surPlace.CreeFiltres(params);
    const MapChaines<TexteAvecAttributs> texte = surPlace.Mappeur().Convertis(document);
    ExigeFuzz(texte.Interne().Chaine() == resultat.Interne().Chaine());
    ExigeFuzz(texte.Interne().Attributs() == resultat.Interne().Attributs());
  }
  (void)DetecteMarkDown(document);
  return 0;
}

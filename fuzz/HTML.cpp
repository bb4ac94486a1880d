// Fuzz target for the HTML converter: the page read to internal text, then the same bytes
// written back as references, and the detector. Every reported interval must be forward and
// inside the text it was given. The first byte picks how the bytes become text (UTF-8, or
// UTF-16 units taken two bytes at a time, which reaches lone surrogates); input is capped so
// that a run stays short.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "OutilsFuzz.h"
#include "html/ConvertisseurHTML.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
  if (taille == 0 || taille > kTailleMaxFuzz) return 0;
  const TexteAvecAttributs texte{TexteFuzz(donnees + 1, taille - 1, donnees[0] & 1)};
  const uint64_t longueur = texte.Longueur();
  const FonctionRemplace remplace = [&](MapPos::Intervalle i, const ChaineN&, MapPos::Attributs) {
    VerifieIntervalleFuzz(i, longueur);
  };
  const FonctionMarque marque = [&](MapPos::Intervalle i, uint32_t) {
    VerifieIntervalleFuzz(i, longueur);
  };

  ConvertisseurHTML convertisseur;
  convertisseur.ConvertisExterneAInterne(texte, remplace, marque);
  // Written back with whatever the page decided, and once more with every non-ASCII unit.
  convertisseur.ConvertisInterneAExterne(texte, remplace, marque);
  convertisseur.ConvertirNonASCII = true;
  convertisseur.ConvertisInterneAExterne(texte, remplace, marque);
  ConvertisseurHTML::DetecteBalisesHTML(texte.Chaine());
  return 0;
}

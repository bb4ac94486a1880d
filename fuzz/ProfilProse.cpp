// Fuzz target for the prose profile: a document of any format through the whole filter set
// with the profile on. The map must stay exact: its segments partition both texts in order,
// and every internal unit and every document position maps back inside the other text. The
// first byte picks the format (its low bits) and the encoding (bit 3).
#include <cstddef>
#include <cstdint>

#include "OutilsFuzz.h"
#include "framework/FiltresCorrecteur.h"

namespace {

constexpr eFormatTexte kFormats[] = {eFormatLaTeX, eFormatMarkDown,  eFormatHTML,
                                     eFormatSRT,   eFormatTexteBrut, eFormatIndefini};

void VerifieMap(const MapChaines<TexteAvecAttributs>& resultat) {
  const uint64_t interne = resultat.Interne().Longueur();
  const uint64_t externe = resultat.Externe().Longueur();
  uint64_t finInterne = 0, finExterne = 0;
  for (const SegmentDeMap& s : resultat.Segments()) {
    ExigeFuzz(s.DebutInterne == finInterne && s.DebutExterne == finExterne);
    ExigeFuzz(s.DebutInterne <= s.FinInterne && s.DebutExterne <= s.FinExterne);
    finInterne = s.FinInterne;
    finExterne = s.FinExterne;
  }
  ExigeFuzz(finInterne == interne && finExterne == externe);
  for (uint64_t p = 0; p < interne; ++p)
    VerifieIntervalleFuzz(resultat.InterneVersExterne({uint32_t(p), uint32_t(p + 1)}), externe);
  for (uint64_t p = 0; p <= externe; ++p) ExigeFuzz(resultat.ExterneVersInterne(p) <= interne);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
  if (taille == 0 || taille > kTailleMaxFuzz) return 0;
  const uint8_t choix = donnees[0];
  const ChaineN document = TexteFuzz(donnees + 1, taille - 1, choix & 8);
  FiltresCorrecteur::Params params;
  params.Format = kFormats[(choix & 7) % std::size(kFormats)];
  params.Courriel = choix & 16;
  params.Prose.Active();
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  const MapChaines<TexteAvecAttributs> resultat = filtres.Mappeur().Convertis(document);
  ExigeFuzz(resultat.Externe().Longueur() == document.Longueur());
  VerifieMap(resultat);
  return 0;
}

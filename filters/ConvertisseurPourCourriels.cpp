// ConvertisseurPourCourriels: the scan for quoted lines.
#include "filters/ConvertisseurPourCourriels.h"

#include "ferlane/ProchaineOccurrence.h"
#include "ferlane/UniCaractere.h"

namespace {

bool EstMarqueur(char16_t c) {
  return c == u'>' || c == u'|';
}

}  // namespace

uint64_t ConvertisseurPourCourriels::FinDeLigne(const ChaineN& texte, uint64_t debut) const {
  uint64_t fin = debut;
  while (fin < texte.Longueur() && !UniCaractere::EstReturn(texte[fin])) ++fin;
  return fin;
}

// One past the last marker of the run that starts at `debut`; the blanks between markers belong
// to the run, those after the last one do not.
uint64_t ConvertisseurPourCourriels::FinDesMarqueurs(const ChaineN& texte, uint64_t debut) const {
  uint64_t dernierMarqueur = debut;
  for (uint64_t p = debut + 1; p < texte.Longueur(); ++p) {
    const char16_t c = texte[p];
    if (EstMarqueur(c))
      dernierMarqueur = p;
    else if (!UniCaractere::EstTransparent(c))
      break;  // a line end is not transparent either
  }
  return dernierMarqueur + 1;
}

void ConvertisseurPourCourriels::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                          const FonctionRemplace& remplace,
                                                          const FonctionMarque&) {
  const ChaineN& chaine = texte.Chaine();
  const uint64_t n = chaine.Longueur();
  for (uint64_t position = 0; position < n; ++position) {
    position = TrouveUneDeDeux(chaine.Vue(), position, u'>', u'|');  // the markers
    if (position == kPasTrouve) return;
    if (position > 0 && !UniCaractere::EstReturn(chaine[position - 1])) continue;
    if (MasqueLignesCitees_) {
      const uint64_t fin = FinDeLigne(chaine, position);
      MasqueIntervalle(position, fin, eRemplacableNon, remplace);
      position = fin;  // a line end is no marker; the unit after it starts a line
    } else {
      MasqueIntervalle(position, FinDesMarqueurs(chaine, position), eRemplacableNon, remplace);
    }
  }
}

// ConvertisseurFiltresInitiaux: the two reporting helpers of the common filters, which narrow
// positions through the reporter's check.
#include "filters/ConvertisseurFiltresInitiaux.h"

void ConvertisseurFiltresInitiaux::RemplaceIntervalle(uint64_t debut, uint64_t fin,
                                                      const ChaineN& texte,
                                                      eRemplacable remplacable,
                                                      const FonctionRemplace& remplace) {
  const MapPos::Attributs attributs{0, static_cast<uint8_t>(remplacable == eRemplacableOui)};
  remplace(Rapporteur::Intervalle(debut, fin), texte, attributs);
}

void ConvertisseurFiltresInitiaux::MasqueIntervalle(uint64_t debut, uint64_t fin,
                                                    eRemplacable remplacable,
                                                    const FonctionRemplace& remplace) {
  RemplaceIntervalle(debut, fin, kChaineNNulle, remplacable, remplace);
}

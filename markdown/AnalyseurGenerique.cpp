// AnalyseurGenerique: guarded reports and escape-aware searches.
#include "markdown/AnalyseurGenerique.h"

AnalyseurGenerique::AnalyseurGenerique(const TexteAvecAttributs& source,
                                       const FonctionRemplace& fonctionRemplace,
                                       const FonctionMarque& fonctionMarque)
    // Only the units are copied: no analysis reads attributes, and a copy without them keeps
    // every overwrite of a derived class an in-place copy of units.
    : copie_(source.Chaine()),
      texte_(copie_),
      remplace_(fonctionRemplace),
      marque_(fonctionMarque),
      finAnalyse_(source.Longueur()) {}

AnalyseurGenerique::AnalyseurGenerique(TexteAvecAttributs& source,
                                       const FonctionRemplace& fonctionRemplace,
                                       const FonctionMarque& fonctionMarque)
    : copie_(source.AAttributs() ? TexteAvecAttributs(source.Chaine()) : TexteAvecAttributs()),
      texte_(source.AAttributs() ? copie_ : source),
      remplace_(fonctionRemplace),
      marque_(fonctionMarque),
      finAnalyse_(source.Longueur()) {}

// Last kept first: a stretch kept twice gets back what stood there before either overwrite.
AnalyseurGenerique::~AnalyseurGenerique() {
  const std::u16string_view unites = unitesGardees_;
  uint64_t fin = unites.size();
  for (auto k = gardees_.size(); k-- > 0;) {
    const auto [debut, longueur] = gardees_[k];
    fin -= longueur;
    texte_.Ecrase(debut, unites.substr(fin, longueur));
  }
}

void AnalyseurGenerique::GardeAvantEffacement(uint64_t debut, uint64_t fin) {
  fin = std::min(fin, texte_.Longueur());
  if (&texte_ == &copie_ || fin <= debut) return;
  gardees_.emplace_back(debut, fin - debut);
  unitesGardees_.append(texte_.Chaine().Vue().substr(debut, fin - debut));
}

void AnalyseurGenerique::SupprimePlage(uint64_t debut, uint64_t fin) {
  RemplacePlage(debut, fin, kChaineNNulle);
}

void AnalyseurGenerique::RemplacePlage(uint64_t debut, uint64_t fin, const ChaineN& remplacement) {
  if (fin > texte_.Longueur() || debut >= fin) return;
  remplace_(Rapporteur::Intervalle(debut, fin), remplacement, kAttributsMasque);
}

void AnalyseurGenerique::MarquePlage(uint64_t debut, uint64_t fin, uint32_t styles) {
  if (fin > texte_.Longueur() || debut >= fin) return;
  marque_(Rapporteur::Intervalle(debut, fin), styles);
}

bool AnalyseurGenerique::TrouveSuivant(const ChaineN& motif, Plage& trouve, uint64_t debut) const {
  Plage plage;
  for (uint64_t depart = debut; texte_.Chaine().Contient(motif.Vue(), plage, depart);) {
    if (plage.Fin() > finAnalyse_) return false;
    if (!EstEchappe(plage.position)) {
      trouve = plage;
      return true;
    }
    depart = plage.Fin();
  }
  return false;
}

bool AnalyseurGenerique::TrouveALaPos(const ChaineN& motif, Plage& trouve,
                                      uint64_t position) const {
  if (!texte_.Chaine().ContientALaPos(motif.Vue(), position) || EstEchappe(position)) return false;
  trouve = Plage{position, motif.Longueur()};
  return true;
}

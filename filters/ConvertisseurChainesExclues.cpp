// ConvertisseurChainesExclues: the list edits, the search of each string (on the task runner
// for long texts) and the merged report.
#include "filters/ConvertisseurChainesExclues.h"

#include <algorithm>

#include "ferlane/FileOperations.h"
#include "filters/ChercheurDeChaine.h"

using Constructeur = ConvertisseurChainesExclues::ConstructeurDIntervallesAExclure;

ConvertisseurChainesExclues::ConstructeurDIntervallesAExclure::ConstructeurDIntervallesAExclure(
    const ChaineN& texte, ChaineN chaine, bool modeCourriel)
    : texte_(texte),
      chaine_(std::move(chaine)),
      longueurTexte_(texte.Longueur()),
      longueurChaine_(chaine_.Longueur()),
      modeCourriel_(modeCourriel) {}

void ConvertisseurChainesExclues::ConstructeurDIntervallesAExclure::Cherche() {
  if (longueurChaine_ == 0 || longueurTexte_ == 0) return;
  const ChercheurDeChaine chercheur(chaine_.Vue(),
                                    modeCourriel_ ? kMalgraySansCasseNiAccents : kMalgrayExact);
  // The length masked is the string's, also when case and accents are ignored: every mode
  // compares unit for unit.
  for (uint64_t position = 0; position < longueurTexte_;) {
    const std::optional<uint64_t> trouve = chercheur.Cherche(texte_.Vue(), position);
    if (!trouve || *trouve + longueurChaine_ > longueurTexte_) break;
    const uint64_t fin = *trouve + longueurChaine_;
    if (!occurrences_.empty() && occurrences_.back().fin == *trouve)
      occurrences_.back().fin = fin;  // the string repeated: one stretch
    else
      occurrences_.push_back({*trouve, fin});
    position = fin;
  }
}

ConvertisseurChainesExclues::EnsembleDIntervalles ConvertisseurChainesExclues::Fusionne(
    const std::vector<const EnsembleDIntervalles*>& ensembles) {
  EnsembleDIntervalles tous;
  size_t nombre = 0;
  for (const EnsembleDIntervalles* e : ensembles) nombre += e->size();
  tous.reserve(nombre);
  for (const EnsembleDIntervalles* e : ensembles) tous.insert(tous.end(), e->begin(), e->end());
  std::sort(tous.begin(), tous.end(), [](const Intervalle& a, const Intervalle& b) {
    return a.debut < b.debut;
  });
  EnsembleDIntervalles fusion;
  for (const Intervalle& i : tous) {
    if (!fusion.empty() && i.debut <= fusion.back().fin)
      fusion.back().fin = std::max(fusion.back().fin, i.fin);
    else
      fusion.push_back(i);
  }
  return fusion;
}

uint64_t ConvertisseurChainesExclues::AjouteChainesCourriel() {
  for (UniChaine& chaine : chainesExcluesCourriel_) chaine.NettoieBlancs();
  const uint64_t nombre = chainesExclues_.Nombre();
  const uint64_t ajouts = chainesExcluesCourriel_.Nombre();
  bool dejaAjoutees = ajouts <= nombre;
  for (uint64_t k = 0; dejaAjoutees && k < ajouts; ++k)
    dejaAjoutees = chainesExclues_[nombre - ajouts + k] == chainesExcluesCourriel_[k];
  if (dejaAjoutees) return nombre - ajouts;
  for (uint64_t k = 0; k < ajouts; ++k) chainesExclues_.Ajoute(chainesExcluesCourriel_[k]);
  return nombre;
}

void ConvertisseurChainesExclues::AjouteRetoursChariot() {
  reecrites_.resize(chainesExclues_.Nombre());
  for (uint64_t i = 0; i < chainesExclues_.Nombre(); ++i) {
    UniChaine& chaine = chainesExclues_[i];
    if (chaine.T() == reecrites_[i]) continue;  // rewritten before, or nothing to rewrite
    chaine.Remplace("\n", "\r\n", eCodageASCII);
    reecrites_[i] = chaine.T();
  }
}

void ConvertisseurChainesExclues::Cherche(std::vector<std::shared_ptr<Constructeur>>& constructeurs,
                                          uint64_t longueurTexte) const {
  if (RechercheParallele_ && longueurTexte > kLongueurMinimaleParallele && constructeurs.size() >= 2) {
    // Each task writes only its own constructor; the text and the strings are only read.
    FileOperations::GlobaleDeDefaut().Execute(
        constructeurs.size(), [&constructeurs](uint64_t i) { constructeurs[i]->Cherche(); });
    return;
  }
  for (const auto& constructeur : constructeurs) constructeur->Cherche();
}

void ConvertisseurChainesExclues::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                           const FonctionRemplace& remplace,
                                                           const FonctionMarque&) {
  const uint64_t nombreInitial = Courriel_ ? AjouteChainesCourriel() : chainesExclues_.Nombre();
  if (chainesExclues_.EstVide()) return;
  const ChaineN& chaine = texte.Chaine();
  Plage crlf;
  if (chaine.Contient(u"\r\n", crlf)) AjouteRetoursChariot();

  std::vector<std::shared_ptr<Constructeur>> constructeurs;
  for (uint64_t i = 0; i < chainesExclues_.Nombre(); ++i) {
    const ChaineN& exclue = chainesExclues_[i].T();
    if (exclue.EstVide()) continue;  // an empty string masks nothing
    constructeurs.push_back(std::make_shared<Constructeur>(chaine, exclue, i >= nombreInitial));
  }
  Cherche(constructeurs, chaine.Longueur());

  std::vector<const EnsembleDIntervalles*> ensembles;
  for (const auto& constructeur : constructeurs) ensembles.push_back(&constructeur->Occurrences());
  for (const Intervalle& i : Fusionne(ensembles))
    MasqueIntervalle(i.debut, i.fin, eRemplacableNon, remplace);
}

// ConvertisseurChainesExclues: the list edits, the search of the strings (one by one or all at
// once, on the task runner for long texts) and the merged report.
#include "filters/ConvertisseurChainesExclues.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <optional>

#include "ferlane/FileOperations.h"
#include "filters/AutomateDeChaines.h"
#include "filters/ChercheurDeChaine.h"

using Constructeur = ConvertisseurChainesExclues::ConstructeurDIntervallesAExclure;

namespace {

// Below this length an automaton (whose class table alone has 65,536 entries) costs more to
// build than the one-string searches cost to run.
constexpr uint64_t kLongueurMinimaleAutomate = 1 << 16;
// With fewer strings of one mode, the one-string searches, which skip ahead, are as fast.
constexpr size_t kChainesMinimalesAutomate = 4;
// The parallel automaton gives each task at least this many units, and each thread about four
// stretches so that an uneven stretch does not leave the others idle.
constexpr uint64_t kTrancheMinimale = 1 << 18;
constexpr uint64_t kTranchesParFil = 4;

// An occurrence collected by one stretch of the parallel automaton: the string and the offset
// from the stretch's start (a stretch is far shorter than 2^32 units).
struct OccurrenceDeTranche {
  uint32_t chaine;
  uint32_t decalage;
};

void ChercheAvecAutomate(const AutomateDeChaines& automate,
                         const std::vector<Constructeur*>& constructeurs, const ChaineN& texte,
                         bool parallele) {
  const std::u16string_view vue = texte.Vue();
  const uint64_t n = vue.size();
  if (!parallele) {
    automate.Parcourt(vue, 0, n,
                      [&](uint32_t k, uint64_t p) { constructeurs[k]->AjouteOccurrence(p); });
    return;
  }
  FileOperations& taches = FileOperations::GlobaleDeDefaut();
  const uint64_t tranche =
      std::max(kTrancheMinimale, n / (kTranchesParFil * taches.NombreDeFils()) + 1);
  const uint64_t nombre = (n + tranche - 1) / tranche;
  std::vector<std::vector<OccurrenceDeTranche>> trouvees(nombre);
  taches.Execute(nombre, [&](uint64_t t) {
    const uint64_t debut = t * tranche;
    automate.Parcourt(vue, debut, debut + tranche, [&](uint32_t k, uint64_t p) {
      trouvees[t].push_back({k, static_cast<uint32_t>(p - debut)});
    });
  });
  // Stretch by stretch, each constructor gets its occurrences in increasing order.
  for (uint64_t t = 0; t < nombre; ++t)
    for (const OccurrenceDeTranche& o : trouvees[t])
      constructeurs[o.chaine]->AjouteOccurrence(t * tranche + o.decalage);
}

}  // namespace

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
  while (suivante_ < longueurTexte_) {
    const std::optional<uint64_t> trouve = chercheur.Cherche(texte_.Vue(), suivante_);
    if (!trouve) break;
    AjouteOccurrence(*trouve);
  }
}

void ConvertisseurChainesExclues::ConstructeurDIntervallesAExclure::AjouteOccurrence(
    uint64_t position) {
  // The length masked is the string's, also when case and accents are ignored: every mode
  // compares unit for unit.
  const uint64_t fin = position + longueurChaine_;
  if (position < suivante_ || longueurChaine_ == 0 || fin > longueurTexte_) return;
  if (!occurrences_.empty() && occurrences_.back().fin == position)
    occurrences_.back().fin = fin;  // the string repeated: one stretch
  else
    occurrences_.push_back({position, fin});
  suivante_ = fin;
}

namespace {

using Intervalle = ConvertisseurChainesExclues::Intervalle;
using EnsembleDIntervalles = ConvertisseurChainesExclues::EnsembleDIntervalles;

void AjouteOuEtend(EnsembleDIntervalles& fusion, const Intervalle& i) {
  if (!fusion.empty() && i.debut <= fusion.back().fin)
    fusion.back().fin = std::max(fusion.back().fin, i.fin);
  else
    fusion.push_back(i);
}

// A merge of sorted sets, the one whose next interval starts first taken each time: n·log k
// for n intervals in k sets. Used when the intervals are few for the text's length.
EnsembleDIntervalles FusionneParTas(const std::vector<const EnsembleDIntervalles*>& ensembles) {
  struct Tete {
    uint64_t debut;
    size_t ensemble;
    size_t index;
    bool operator>(const Tete& autre) const { return debut > autre.debut; }
  };
  std::vector<Tete> tas;
  for (size_t e = 0; e < ensembles.size(); ++e)
    if (!ensembles[e]->empty()) tas.push_back({ensembles[e]->front().debut, e, 0});
  std::make_heap(tas.begin(), tas.end(), std::greater<>());
  EnsembleDIntervalles fusion;
  while (!tas.empty()) {
    std::pop_heap(tas.begin(), tas.end(), std::greater<>());
    Tete& tete = tas.back();
    const EnsembleDIntervalles& ensemble = *ensembles[tete.ensemble];
    AjouteOuEtend(fusion, ensemble[tete.index]);
    if (++tete.index < ensemble.size()) {
      tete.debut = ensemble[tete.index].debut;
      std::push_heap(tas.begin(), tas.end(), std::greater<>());
    } else {
      tas.pop_back();
    }
  }
  return fusion;
}

// The same by a bit a text position: every interval sets its bits, and the runs of set bits
// are the merged intervals (touching intervals leave no gap, so they make one run). Linear in
// the text's length / 64 plus the intervals: the better choice when intervals are dense.
EnsembleDIntervalles FusionneParBits(const std::vector<const EnsembleDIntervalles*>& ensembles,
                                     uint64_t longueurTexte) {
  std::vector<uint64_t> bits((longueurTexte + 63) / 64, 0);
  const auto masque = [](uint64_t de, uint64_t a) {  // bits [de, a) of one word, a <= 64
    return (a == 64 ? ~uint64_t{0} : (uint64_t{1} << a) - 1) & ~((uint64_t{1} << de) - 1);
  };
  for (const EnsembleDIntervalles* e : ensembles)
    for (const Intervalle& i : *e) {
      const uint64_t premier = i.debut / 64, dernier = (i.fin - 1) / 64;
      if (premier == dernier) {
        bits[premier] |= masque(i.debut % 64, (i.fin - 1) % 64 + 1);
        continue;
      }
      bits[premier] |= masque(i.debut % 64, 64);
      std::fill(bits.begin() + premier + 1, bits.begin() + dernier, ~uint64_t{0});
      bits[dernier] |= masque(0, (i.fin - 1) % 64 + 1);
    }
  EnsembleDIntervalles fusion;
  const uint64_t mots = bits.size();
  for (uint64_t m = 0; m < mots;) {
    if (bits[m] == 0) {
      ++m;
      continue;
    }
    const uint64_t debut = m * 64 + std::countr_zero(bits[m]);
    // The run goes on while the bits stay set: find the first clear bit after debut.
    uint64_t n = debut / 64;
    uint64_t inverse = ~bits[n] & ~((uint64_t{1} << (debut % 64)) - 1);
    while (inverse == 0 && ++n < mots) inverse = ~bits[n];
    const uint64_t fin = n < mots ? n * 64 + std::countr_zero(inverse) : mots * 64;
    fusion.push_back({debut, std::min(fin, longueurTexte)});
    if (n >= mots) break;
    bits[n] &= ~((uint64_t{1} << (fin % 64)) - 1);  // this run is taken
    m = n;
  }
  return fusion;
}

// The bit merge reads a word for every 64 units; it wins once there is an interval for every
// few words.
constexpr uint64_t kUnitesParIntervalleBits = 256;

}  // namespace

ConvertisseurChainesExclues::EnsembleDIntervalles ConvertisseurChainesExclues::Fusionne(
    const std::vector<const EnsembleDIntervalles*>& ensembles, uint64_t longueurTexte) {
  uint64_t nombre = 0;
  for (const EnsembleDIntervalles* e : ensembles) nombre += e->size();
  if (nombre > 1 && nombre >= longueurTexte / kUnitesParIntervalleBits)
    return FusionneParBits(ensembles, longueurTexte);
  return FusionneParTas(ensembles);
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

void ConvertisseurChainesExclues::Cherche(const Constructeurs& constructeurs,
                                          const ChaineN& texte) const {
  const uint64_t n = texte.Longueur();
  const bool parallele =
      RechercheParallele_ && n > kLongueurMinimaleParallele && constructeurs.size() >= 2;
  for (const bool modeCourriel : {false, true}) {
    std::vector<Constructeur*> groupe;
    std::vector<std::u16string_view> chaines;
    for (const auto& c : constructeurs)
      if (c->ModeCourriel() == modeCourriel)
        groupe.push_back(c.get()), chaines.push_back(c->Chaine().Vue());
    if (groupe.empty()) continue;
    std::optional<AutomateDeChaines> automate;
    if (n >= kLongueurMinimaleAutomate && groupe.size() >= kChainesMinimalesAutomate)
      automate = AutomateDeChaines::Construit(
          chaines, modeCourriel ? kMalgraySansCasseNiAccents : kMalgrayExact);
    if (automate) {
      ChercheAvecAutomate(*automate, groupe, texte, parallele);
    } else if (parallele) {
      // Each task writes only its own constructor; the text and the strings are only read.
      FileOperations::GlobaleDeDefaut().Execute(groupe.size(),
                                                [&groupe](uint64_t i) { groupe[i]->Cherche(); });
    } else {
      for (Constructeur* c : groupe) c->Cherche();
    }
  }
}

void ConvertisseurChainesExclues::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                           const FonctionRemplace& remplace,
                                                           const FonctionMarque&) {
  const uint64_t nombreInitial = Courriel_ ? AjouteChainesCourriel() : chainesExclues_.Nombre();
  if (chainesExclues_.EstVide()) return;
  const ChaineN& chaine = texte.Chaine();
  Plage crlf;
  if (chaine.Contient(u"\r\n", crlf)) AjouteRetoursChariot();

  Constructeurs constructeurs;
  for (uint64_t i = 0; i < chainesExclues_.Nombre(); ++i) {
    const ChaineN& exclue = chainesExclues_[i].T();
    if (exclue.EstVide()) continue;  // an empty string masks nothing
    constructeurs.push_back(std::make_shared<Constructeur>(chaine, exclue, i >= nombreInitial));
  }
  Cherche(constructeurs, chaine);

  std::vector<const EnsembleDIntervalles*> ensembles;
  for (const auto& constructeur : constructeurs) ensembles.push_back(&constructeur->Occurrences());
  for (const Intervalle& i : Fusionne(ensembles, chaine.Longueur()))
    MasqueIntervalle(i.debut, i.fin, eRemplacableNon, remplace);
}

// AutomateDeChaines: the unit classes, the tree of the strings, and the suffix links that make
// it an automaton.
#include "filters/AutomateDeChaines.h"

#include <algorithm>
#include <bit>
#include <set>

namespace {

constexpr uint32_t kUnites = 0x10000;

}  // namespace

std::optional<AutomateDeChaines> AutomateDeChaines::Construit(
    const std::vector<std::u16string_view>& chaines, Malgray mode) {
  uint64_t total = 0;
  for (std::u16string_view c : chaines) {
    if (c.empty()) return std::nullopt;
    total += c.size();
  }
  // The classes are counted on the units as written: folding can only merge them, so this
  // bounds the table before anything is built.
  std::set<char16_t> unites;
  for (std::u16string_view c : chaines) unites.insert(c.begin(), c.end());
  if ((total + 1) * std::bit_ceil(unites.size() + 1) > kTransitionsMaximales) return std::nullopt;
  AutomateDeChaines automate;
  automate.ConstruitClasses(chaines, mode);
  automate.ConstruitArbre(chaines);  // the classes fold the units
  automate.ConstruitLiens();
  return automate;
}

void AutomateDeChaines::ConstruitClasses(const std::vector<std::u16string_view>& chaines,
                                         Malgray mode) {
  std::vector<uint16_t> classeDuPli(kUnites, 0);
  nombreDeClasses_ = 1;
  for (std::u16string_view c : chaines)
    for (char16_t u : c) {
      uint16_t& classe = classeDuPli[PlieUnite(u, mode)];
      if (classe == 0) classe = static_cast<uint16_t>(nombreDeClasses_++);
    }
  decalage_ = static_cast<uint32_t>(std::countr_zero(std::bit_ceil(nombreDeClasses_)));
  classes_.resize(kUnites);
  for (uint32_t u = 0; u < kUnites; ++u)
    classes_[u] = classeDuPli[PlieUnite(static_cast<char16_t>(u), mode)];
}

void AutomateDeChaines::ConstruitArbre(const std::vector<std::u16string_view>& chaines) {
  uint64_t total = 0;
  for (std::u16string_view c : chaines) total += c.size();
  transitions_.assign((total + 1) << decalage_, kAucune);
  premiereChaine_.assign(total + 1, kAucune);
  chaineSuivante_.assign(chaines.size(), kAucune);
  nombreDEtats_ = 1;
  for (uint32_t k = 0; k < chaines.size(); ++k) {
    uint32_t etat = 0;
    for (char16_t u : chaines[k]) {
      uint32_t& suivant = transitions_[(uint64_t{etat} << decalage_) + classes_[u]];
      if (suivant == kAucune) suivant = nombreDEtats_++;
      etat = suivant;
    }
    chaineSuivante_[k] = premiereChaine_[etat];
    premiereChaine_[etat] = k;
    longueurs_.push_back(static_cast<uint32_t>(chaines[k].size()));
    longueurMaximale_ = std::max<uint64_t>(longueurMaximale_, chaines[k].size());
  }
  transitions_.resize(uint64_t{nombreDEtats_} << decalage_);
  premiereChaine_.resize(nombreDEtats_);
}

// Breadth first, so that the suffix link of a state is complete before its children need it.
// A missing transition is replaced by the one its suffix link takes: the tree becomes a full
// automaton that never moves back.
void AutomateDeChaines::ConstruitLiens() {
  const uint32_t K = nombreDeClasses_;
  std::vector<uint32_t> lien(nombreDEtats_, 0);
  sortie_.assign(nombreDEtats_, 0);
  sortieSuivante_.assign(nombreDEtats_, 0);
  std::vector<uint32_t> file;
  file.reserve(nombreDEtats_);
  for (uint32_t c = 0; c < K; ++c) {
    uint32_t& suivant = transitions_[c];
    if (suivant == kAucune)
      suivant = 0;
    else
      file.push_back(suivant);  // a child of the start links back to the start
  }
  for (size_t tete = 0; tete < file.size(); ++tete) {
    const uint32_t etat = file[tete];
    sortieSuivante_[etat] = sortie_[lien[etat]];
    sortie_[etat] = premiereChaine_[etat] != kAucune ? etat : sortieSuivante_[etat];
    for (uint32_t c = 0; c < K; ++c) {
      uint32_t& suivant = transitions_[(uint64_t{etat} << decalage_) + c];
      const uint32_t parLeLien = transitions_[(uint64_t{lien[etat]} << decalage_) + c];
      if (suivant == kAucune) {
        suivant = parLeLien;
      } else {
        lien[suivant] = parLeLien;
        file.push_back(suivant);
      }
    }
  }
  // From state numbers to shifted rows with the output bit (columns past the classes unused).
  for (uint32_t& suivant : transitions_)
    if (suivant != kAucune) suivant = (suivant << decalage_) | (sortie_[suivant] != 0 ? 1u : 0u);
}

std::vector<AutomateDeChaines::Occurrence> AutomateDeChaines::Collecte(std::u16string_view texte,
                                                                       uint64_t debut,
                                                                       uint64_t fin) const {
  std::vector<Occurrence> occurrences;
  Parcourt(texte, debut, fin, [&](uint32_t chaine, uint64_t position) {
    occurrences.push_back({chaine, position});
  });
  return occurrences;
}

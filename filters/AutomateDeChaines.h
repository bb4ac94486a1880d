// AutomateDeChaines: many strings searched at once in one pass over a long text (an automaton
// of Aho and Corasick over UTF-16 units). It finds, for every string, every occurrence that
// ChaineN::Contient would find under the same comparison mode, overlapping ones included.
//
// Units are first sorted into classes: one for each unit (folded under the mode) that some
// string holds, and one for all others; the automaton then moves on a table of states by
// classes, one step a unit, whatever the number of strings. Building it costs a table of 65,536
// classes and (total string length + 1) × classes transitions, so it pays on long texts only;
// Construit refuses string sets whose table would pass kTransitionsMaximales.
// Once built, the automaton is read-only: several threads may search with it at once.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "ferlane/ChaineN.h"

class AutomateDeChaines {
 public:
  // Beyond this many transitions (16 MB) the one-string searches are the better choice.
  static constexpr uint64_t kTransitionsMaximales = uint64_t{1} << 22;

  // An occurrence of string `chaine` (its index in the list given) starting at `position`.
  struct Occurrence {
    uint32_t chaine;
    uint64_t position;
  };

  // None when a string is empty or the table would be too large.
  static std::optional<AutomateDeChaines> Construit(const std::vector<std::u16string_view>& chaines,
                                                    Malgray mode);

  uint64_t LongueurMaximale() const { return longueurMaximale_; }

  // Calls `occurrence(chaine, position)` for every occurrence that starts in [debut, fin), in
  // increasing order of end position; the text is read up to fin + LongueurMaximale() - 1.
  template <class F>
  void Parcourt(std::u16string_view texte, uint64_t debut, uint64_t fin, F&& occurrence) const;

  // The same, collected.
  std::vector<Occurrence> Collecte(std::u16string_view texte, uint64_t debut, uint64_t fin) const;

 private:
  static constexpr uint32_t kAucune = UINT32_MAX;

  AutomateDeChaines() = default;
  void ConstruitClasses(const std::vector<std::u16string_view>& chaines, Malgray mode);
  void ConstruitArbre(const std::vector<std::u16string_view>& chaines);
  void ConstruitLiens();

  std::vector<uint16_t> classes_;  // a class for each of the 65,536 units
  uint32_t nombreDeClasses_ = 0;   // class 0: a unit that no string holds
  uint32_t decalage_ = 0;          // a state's row is 2^decalage_ transitions wide
  uint32_t nombreDEtats_ = 0;      // state 0: the start, nothing matched
  // [(state << decalage_) + class]: the next state's row, shifted as its index is, with bit 0
  // set when some string ends there. A step is then a load, a mask and an or.
  std::vector<uint32_t> transitions_;
  std::vector<uint32_t> premiereChaine_;  // per state: a string ending there, or kAucune
  std::vector<uint32_t> chaineSuivante_;  // per string: the next one ending at the same state
  std::vector<uint32_t> sortie_;  // per state: itself if a string ends there, else the nearest
                                  // suffix state where one does (0: none)
  std::vector<uint32_t> sortieSuivante_;  // per state: the next such state along the suffixes
  std::vector<uint32_t> longueurs_;       // per string
  uint64_t longueurMaximale_ = 0;
};

template <class F>
void AutomateDeChaines::Parcourt(std::u16string_view texte, uint64_t debut, uint64_t fin,
                                 F&& occurrence) const {
  fin = std::min<uint64_t>(fin, texte.size());
  if (debut >= fin) return;
  const uint64_t lecture = std::min<uint64_t>(texte.size(), fin + longueurMaximale_ - 1);
  const char16_t* const t = texte.data();
  const uint16_t* const classes = classes_.data();
  const uint32_t* const transitions = transitions_.data();
  uint32_t ligne = 0;
  for (uint64_t p = debut; p < lecture; ++p) {
    ligne = transitions[(ligne & ~1u) | classes[t[p]]];
    if ((ligne & 1) == 0) continue;
    for (uint32_t e = sortie_[ligne >> decalage_]; e != 0; e = sortieSuivante_[e]) {
      for (uint32_t k = premiereChaine_[e]; k != kAucune; k = chaineSuivante_[k]) {
        const uint64_t position = p + 1 - longueurs_[k];
        if (position < fin) occurrence(k, position);
      }
    }
  }
}

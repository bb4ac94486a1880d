// ChercheurDeChaine: one string searched many times over long texts, as the excluded-strings
// filter does for each of its strings. It finds exactly what ChaineN::Contient finds under the
// same comparison mode, faster when the string is searched more than once.
//
// The string is prepared once: folded under the mode, and a table of 256 shifts keyed on the
// low byte of a unit (the bad-character rule of Horspool's search). A search compares the last
// unit of the window first and moves by the shift of the text unit found there; units that
// share a low byte share the smallest shift, so no occurrence is ever jumped over.
// Cost: about n / m steps on prose for a string of m units; n·m at worst (a string such as
// "aaba" over "aaaa…"), no worse than the plain search. Searching is const and thread-safe.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "ferlane/ChaineN.h"

class ChercheurDeChaine {
 public:
  ChercheurDeChaine(std::u16string_view chaine, Malgray mode);

  // The first occurrence at or after `debut`; none for an empty string.
  std::optional<uint64_t> Cherche(std::u16string_view texte, uint64_t debut) const;

  uint64_t Longueur() const { return chaine_.size(); }

 private:
  template <bool kPlie>
  std::optional<uint64_t> ChercheAvecSauts(std::u16string_view texte, uint64_t debut) const;

  std::u16string chaine_;  // folded under mode_
  Malgray mode_;
  std::array<uint32_t, 256> sauts_{};
};

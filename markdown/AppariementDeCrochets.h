// AppariementDeCrochets: the bracket that closes an opening bracket of one kind ("(" or "["),
// nesting of that kind counted, before a stop position that ends every scan (a line end or the
// end of the stretch).
//
// One pass with a stack finds the match of every opener between the first question and the
// stop, so a line of thousands of "[x](" that never close costs one pass, not one pass per
// opener. The answers hold while nothing after the asked opener is overwritten: the caller
// reports each overwrite (NoteEffacement), and a question that an overwrite may have touched
// starts a new pass. Not thread-safe: one per analyser and bracket kind.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "ferlane/ChaineN.h"

class AppariementDeCrochets {
 public:
  AppariementDeCrochets(char16_t ouvrant, char16_t fermant)
      : ouvrant_(ouvrant), fermant_(fermant) {}

  // The position of the bracket that closes the opener at `position` (which holds the opening
  // bracket) before `arret`, or nothing when the stop comes first.
  std::optional<uint64_t> Fermant(const ChaineN& texte, uint64_t position, uint64_t arret);
  // [debut, fin) of the text was overwritten.
  void NoteEffacement(uint64_t debut, uint64_t fin);

 private:
  // Positions are held in 32 bits, as in every report: a line of openers costs 8 bytes each.
  static constexpr uint32_t kSansFermant = UINT32_MAX;

  void Apparie(const ChaineN& texte, uint64_t debut, uint64_t arret);

  char16_t ouvrant_;
  char16_t fermant_;
  bool valide_ = false;
  uint64_t debut_ = 0;
  uint64_t arret_ = 0;
  uint64_t effaceJusqua_ = 0;       // end of the furthest overwrite since the pass, before arret_
  std::vector<uint32_t> ouvrants_;  // the openers, in increasing position
  std::vector<uint32_t> fermants_;  // the closer of each, or kSansFermant
  std::vector<uint32_t> pile_;      // indexes of the openers still open
  size_t curseur_ = 0;              // where the last question was answered
};

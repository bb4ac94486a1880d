// ChercheurDeCaracteres: the next unit of a small set at or after a position, in a working copy
// whose units may be overwritten by units outside the set but never become members of it.
//
// What a search learns (a stretch free of the set, and the member that ends it) stays true as
// long as that member is not overwritten, so a walk that asks again and again from positions
// inside one stretch pays for the stretch once. This keeps the scans of the Markdown analyser
// linear when thousands of "[" share one "]" (or none) on a line, or when every line of a long
// document asks for the next pipe. Once the searches have read as many units as the text holds
// (nested blocks read their lines again), a map of the members, one bit a unit, made in one pass,
// answers the rest. Not thread-safe: one per analyser.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ferlane/ChaineN.h"

class ChercheurDeCaracteres {
 public:
  // `texte` must outlive the searcher; `ensemble` holds one to four ASCII units.
  ChercheurDeCaracteres(const ChaineN& texte, std::u16string_view ensemble);

  // First position in [debut, limite) holding a unit of the set; `limite` when there is none.
  // `limite` is clipped to the text's length.
  uint64_t Prochain(uint64_t debut, uint64_t limite);

 private:
  bool EstMembre(char16_t unite) const {
    return unite < 128 && ((membres_[unite >> 6] >> (unite & 63)) & 1) != 0;
  }
  uint64_t Cherche(uint64_t debut, uint64_t limite);
  void DresseCarte();
  uint64_t ChercheSurCarte(uint64_t debut, uint64_t limite);

  const ChaineN& texte_;
  std::u16string ensemble_;
  uint64_t membres_[2] = {0, 0};  // one bit per ASCII unit
  // [libreDebut_, libreFin_) holds no member; libreFin_ held one when `trouve_`, else it is
  // only as far as a search went.
  uint64_t libreDebut_ = 0;
  uint64_t libreFin_ = 0;
  bool trouve_ = false;
  uint64_t lues_ = 0;            // units read by searches, until the map is made
  std::vector<uint64_t> carte_;  // one bit a unit: a member when the map was made
};

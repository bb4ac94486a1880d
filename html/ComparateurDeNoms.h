// ComparateurDeNoms: "does the text at this position begin with this tag name, letter case
// ignored?", asked by the HTML reader each time it checks a closing tag against the open
// element and its parent.
//
// Short names are compared unit by unit. A long name compared that way at many nearby positions
// would cost its length each time: an open element named "a</a</a</…b" followed by thousands of
// "</a" that almost match is quadratic. Names longer than kLongueurComparaisonDirecte are
// therefore compared through polynomial hashes of the case-folded text, built once on the first
// such question (O(n)); a check then costs O(1), and the unit-by-unit confirmation is paid only
// when the hashes agree, that is when the name is there and the reader moves past it.
#pragma once

#include <cstdint>
#include <vector>

#include "ferlane/ChaineN.h"

class ComparateurDeNoms {
 public:
  // Up to this length, a name is compared unit by unit: a check costs at most this much.
  static constexpr uint64_t kLongueurComparaisonDirecte = 24;

  explicit ComparateurDeNoms(const ChaineN& texte) : texte_(texte) {}

  // The hash to keep with a name longer than kLongueurComparaisonDirecte (0 for shorter ones).
  static uint64_t Empreinte(const ChaineN& nom);
  // Does the text at `position` begin with `nom` (mode 4)? An empty name never matches.
  // `empreinte` is Empreinte(nom).
  bool CommencePar(uint64_t position, const ChaineN& nom, uint64_t empreinte);

 private:
  uint64_t EmpreinteDuTexte(uint64_t debut, uint64_t longueur) const;

  const ChaineN& texte_;
  std::vector<uint64_t> prefixes_;  // hash of each prefix of the folded text; empty until needed
};

// AppariementCrochets: the closing brace or bracket that matches each opening one of a document,
// found in one pass so that the scanner never walks the same nesting twice.
//
// Braces and square brackets are paired separately: a brace inside a bracket argument, or a
// bracket inside a brace argument, does not count. A bracket with a backslash just before it,
// where the character before that backslash is not a backslash too, is escaped and not counted.
// An opening bracket is matched by the first closing one after it at which the count of its kind
// falls back to zero. Building costs O(n) time and O(k) memory for k brackets; a query costs
// O(log d) for a distance d from the question before, which the scanner keeps short.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "ferlane/ChaineN.h"
#include "latex/VerbatimLaTeX.h"

class AppariementCrochets {
 public:
  // Brackets inside the `ignorees` stretches (code, in the prose profile) are not counted.
  explicit AppariementCrochets(const ChaineN& texte,
                               const std::vector<RegionVerbatim>& ignorees = {});

  // The matching closing character of the "{" or "[" at `ouvrant`, if it lies before `fin`.
  // An escaped opening character (which the scanner never hands over) is matched by a plain
  // walk to `fin`.
  std::optional<uint64_t> Fermant(uint64_t ouvrant, uint64_t fin) const;

  // The rule above for one character.
  static bool EstEchappe(const ChaineN& texte, uint64_t position);

 private:
  // Positions fit 32 bits (a filtered text is at most kLongueurMaximale units long), and a pair
  // in 8 bytes halves what a brace-heavy document claims.
  static constexpr uint32_t kSansFermant = UINT32_MAX;
  struct Paire {
    uint32_t ouvrant;
    uint32_t fermant;  // kSansFermant when the text never closes it
  };

  std::optional<uint64_t> ParcoursDepuis(uint64_t ouvrant, uint64_t fin) const;
  static std::vector<Paire>::const_iterator PaireDe(const std::vector<Paire>& paires,
                                                    size_t& curseur, uint64_t ouvrant);

  const ChaineN& texte_;
  std::vector<Paire> accolades_;  // in order of their opening position
  std::vector<Paire> crochets_;
  // Where the last question of each kind was answered: a hint, not part of the answer.
  mutable size_t curseurAccolades_ = 0;
  mutable size_t curseurCrochets_ = 0;
};

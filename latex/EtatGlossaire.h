// EtatGlossaire: the glossary entries and acronyms defined in one range of a LaTeX document, and
// the reading of a glossary command's arguments. A definition ("newglossaryentry",
// "newacronym") gives a label its text; a reference ("gls", "acrshort" and their kin) is replaced
// by that text, or by "[TeX]" when the label is not defined in the same range.
//
// Arguments are read by plain search over the whole document, not only the current range: the
// first "{" at or after the reading position, then the first "}" after it (the second one for an
// entry's body). A nested brace is not counted and a backslash escapes nothing.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ferlane/ChaineN.h"

// Where every "{" and every "}" of a document stands, so that no reading rescans the text.
class IndexAccolades {
 public:
  explicit IndexAccolades(const ChaineN& texte);
  std::optional<uint64_t> OuvranteDepuis(uint64_t position) const { return Depuis(ouvrantes_, position); }
  std::optional<uint64_t> FermanteDepuis(uint64_t position) const { return Depuis(fermantes_, position); }

 private:
  static std::optional<uint64_t> Depuis(const std::vector<uint64_t>& positions, uint64_t position);
  std::vector<uint64_t> ouvrantes_;
  std::vector<uint64_t> fermantes_;
};

struct EtatGlossaire {
  EtatGlossaire(const ChaineN& texte, const IndexAccolades& accolades)
      : texte(texte), accolades(accolades) {}

  std::unordered_map<ChaineN, ChaineN> entrees;                      // label to name
  std::unordered_map<ChaineN, std::pair<ChaineN, ChaineN>> acronymes;  // label to short, long
  const ChaineN& texte;
  const IndexAccolades& accolades;
  ChaineN resultat;       // the replacement of the command being handled
  uint64_t position = 0;  // reading position of the command being handled

  // Reads the command named `nom` from `position`: records a definition or resolves a reference
  // into `resultat`, and leaves `position` past the last argument read. A name that is no
  // glossary command raises std::invalid_argument.
  void Resous(std::u16string_view nom);

  // The next brace argument from `position`, up to the first "}" (the second one when
  // `imbrique`). With no "{" the value is empty and `position` stays; with a "{" but no closing
  // brace the value is empty and reading goes on just after that "{".
  std::u16string_view LisArgument(bool imbrique);
  // The name an entry's body gives: what stands between "name=" and the next ",", as written
  // (braces included); empty when either is missing.
  static std::u16string_view LisEntree(std::u16string_view corps);
};

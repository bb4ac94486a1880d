// EtatGlossaire: the glossary entries and acronyms defined in one range of a LaTeX document, and
// the reading of a glossary command's arguments. A definition ("newglossaryentry",
// "newacronym") gives a label its text; a reference ("gls", "acrshort" and their kin) is replaced
// by that text, or by "[TeX]" when the label is not defined in the same range.
//
// Arguments are read by plain search over the whole document, not only the current range: the
// first "{" at or after the reading position, then the first "}" after it (the second one for an
// entry's body). A nested brace is not counted and a backslash escapes nothing.
//
// Cost: a reading may span a long stretch (a reference whose braces close far away), and nested
// ranges may read the same stretch again. So nothing here walks or copies what it reads: values
// are views of the document, searches go through an index of the document built once, and
// labels are hashed on a bounded part. A command costs O(log n) plus the length of the text it
// resolves to.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "ferlane/ChaineN.h"

// Where every "{", "}", "name=" and "," of a document stands.
class IndexGlossaire {
 public:
  explicit IndexGlossaire(const ChaineN& texte);
  // The first occurrence at or after `debut`.
  std::optional<uint64_t> Ouvrante(uint64_t debut) const { return Depuis(ouvrantes_, debut); }
  std::optional<uint64_t> Fermante(uint64_t debut) const { return Depuis(fermantes_, debut); }
  std::optional<uint64_t> Nom(uint64_t debut) const { return Depuis(noms_, debut); }
  std::optional<uint64_t> Virgule(uint64_t debut) const { return Depuis(virgules_, debut); }

 private:
  static std::optional<uint64_t> Depuis(const std::vector<uint64_t>& positions, uint64_t debut);
  std::vector<uint64_t> ouvrantes_, fermantes_, noms_, virgules_;
};

// A label's hash from its length and its two ends: a label read over a long stretch costs no
// more to look up than a short one. Equal labels still compare in full.
struct HachageLibelle {
  size_t operator()(std::u16string_view libelle) const;
};

struct EtatGlossaire {
  using Vue = std::u16string_view;  // a stretch of the document

  EtatGlossaire(const ChaineN& texte, const IndexGlossaire& index) : texte(texte), index(index) {}

  std::unordered_map<Vue, Vue, HachageLibelle> entrees;                    // label to name
  std::unordered_map<Vue, std::pair<Vue, Vue>, HachageLibelle> acronymes;  // label to short, long
  const ChaineN& texte;
  const IndexGlossaire& index;
  ChaineN resultat;       // the replacement of the command being handled
  uint64_t position = 0;  // reading position of the command being handled

  // Reads the command named `nom` from `position`: records a definition or resolves a reference
  // into `resultat`, and leaves `position` past the last argument read. A name that is no
  // glossary command raises std::invalid_argument.
  void Resous(Vue nom);

  // The next brace argument from `position`, up to the first "}" (the second one when
  // `imbrique`). With no "{" the value is empty and `position` stays; with a "{" but no closing
  // brace the value is empty and reading goes on just after that "{".
  Vue LisArgument(bool imbrique);
  // The name an entry's body [debut, fin) gives: what stands between "name=" and the next ",",
  // as written (braces included); empty when either is missing from the body.
  Vue LisEntree(uint64_t debut, uint64_t fin) const;
};

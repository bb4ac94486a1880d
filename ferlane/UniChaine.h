// UniChaine: the string object of the core layer's object lists (ListeT), with the two in-place
// edits the excluded-strings filter makes on the caller's lists.
#pragma once

#include "ferlane/ChaineN.h"

// Root of the core layer's objects.
class Objet {
 public:
  virtual ~Objet() = default;
};

class UniChaine : public Objet {
 public:
  UniChaine() = default;
  UniChaine(ChaineN texte) : texte_(std::move(texte)) {}
  UniChaine(const char16_t* texte) : texte_(texte) {}

  // The text as a ChaineN.
  const ChaineN& T() const { return texte_; }

  // Removes the leading and trailing blanks and collapses every inner run of blanks to one
  // space (UniCaractere::EstBlanc).
  void NettoieBlancs();
  // Replaces every occurrence of `ancien` by `nouveau`, both byte strings in `codage`, scanning
  // left to right without reading the replacements again.
  void Remplace(const char* ancien, const char* nouveau, Codage codage);

  bool operator==(const UniChaine& autre) const { return texte_ == autre.texte_; }

 private:
  ChaineN texte_;
};

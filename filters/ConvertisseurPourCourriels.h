// ConvertisseurPourCourriels: hides the quotation structure of an e-mail reply. A quoted line
// begins, at its very start, with ">" or "|"; either the run of markers is masked (with the
// blanks between them, not those after the last), or the whole line but its line end.
//
// A line starts at position 0 and after every line-end character (UniCaractere::EstReturn), so
// a "\r\n" pair gives one line start that matters. A line that begins with a blank is not
// quoted. Reports come in increasing order, at most one a line.
#pragma once

#include "filters/ConvertisseurFiltresInitiaux.h"

class ConvertisseurPourCourriels : public ConvertisseurFiltresInitiaux {
 public:
  explicit ConvertisseurPourCourriels(bool masqueLignesCitees)
      : MasqueLignesCitees_(masqueLignesCitees) {}
  ConvertisseurPourCourriels(const ConvertisseurPourCourriels&) = default;
  ConvertisseurPourCourriels& operator=(const ConvertisseurPourCourriels&) = default;

  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;

 private:
  // Where the masking of a quoted line that starts at `debut` ends.
  uint64_t FinDeLigne(const ChaineN& texte, uint64_t debut) const;
  uint64_t FinDesMarqueurs(const ChaineN& texte, uint64_t debut) const;

  bool MasqueLignesCitees_;  // whole quoted lines rather than their markers
};

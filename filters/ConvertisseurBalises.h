// ConvertisseurBalises: masks every region that runs from one of the host's opening tag
// strings to the first occurrence of its own closing string, both included.
//
// At each position the first pair (in list order) whose opening string stands there is taken;
// when its closing string does not follow, no other pair is tried there and the scan moves on
// one unit. Regions never nest or overlap and are reported in increasing order. A pair whose
// opening or closing string is empty takes no part, and the extra strings of the longer list
// have no partner. The lists belong to the caller, are read at each run and never changed.
#pragma once

#include "ferlane/Listes.h"
#include "filters/ConvertisseurFiltresInitiaux.h"

class ConvertisseurBalises : public ConvertisseurFiltresInitiaux {
 public:
  ConvertisseurBalises(ListeC<ChaineN>& ouvrantes, ListeC<ChaineN>& fermantes)
      : ouvrantes_(ouvrantes), fermantes_(fermantes) {}
  ConvertisseurBalises(const ConvertisseurBalises&) = default;
  ConvertisseurBalises& operator=(const ConvertisseurBalises&) = delete;

  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;

 private:
  ListeC<ChaineN>& ouvrantes_;
  ListeC<ChaineN>& fermantes_;
};

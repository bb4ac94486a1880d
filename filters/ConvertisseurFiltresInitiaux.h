// ConvertisseurFiltresInitiaux: base of the common filters (excluded strings, tag pairs,
// e-mail quotation), which run for every format. It converts nothing itself and gives its
// subclasses two ways to report a stretch.
#pragma once

#include <cstdint>

#include "ferlane/Convertisseur.h"

// Whether a reported stretch is the textual equivalent of what it replaces. Only the value 0
// sets the Remplacable flag.
enum eRemplacable : uint32_t {
  eRemplacableOui = 0,
  eRemplacableNon = 1,
};

class ConvertisseurFiltresInitiaux : public Convertisseur {
 public:
  ConvertisseurFiltresInitiaux() = default;
  ConvertisseurFiltresInitiaux(const ConvertisseurFiltresInitiaux&) = default;
  ConvertisseurFiltresInitiaux& operator=(const ConvertisseurFiltresInitiaux&) = default;
  ~ConvertisseurFiltresInitiaux() override = default;

 protected:
  // Reports [debut, fin) replaced by `texte`; the caller reports only non-empty stretches.
  static void RemplaceIntervalle(uint64_t debut, uint64_t fin, const ChaineN& texte,
                                 eRemplacable remplacable, const FonctionRemplace& remplace);
  // The same with the empty text: [debut, fin) disappears from the internal text.
  static void MasqueIntervalle(uint64_t debut, uint64_t fin, eRemplacable remplacable,
                               const FonctionRemplace& remplace);
};

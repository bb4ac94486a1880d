// Helpers of the LaTeX tests: one converter's reports as a dump, and the internal text the whole
// LaTeX filter set makes of a document.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "DecritRapports.h"
#include "Outils.h"
#include "framework/FiltresCorrecteur.h"
#include "latex/ConvertisseurLaTeX.h"

inline std::string RapportsLaTeX(std::u16string_view entree) {
  ConvertisseurLaTeX convertisseur;
  return DecritRapports(convertisseur, entree);
}

// A table row: a document and the converter's reports, as a dump.
struct CasLaTeX {
  std::u16string_view entree;
  std::string_view attendu;
};

inline void VerifieRapports(const std::vector<CasLaTeX>& cas) {
  for (const CasLaTeX& c : cas) EXPECT_EQ(RapportsLaTeX(c.entree), c.attendu) << VersUtf8(c.entree);
}

// The document through the filter set built for the LaTeX format (comments, then LaTeX).
inline MapChaines<TexteAvecAttributs> ConvertisLaTeX(std::u16string_view document) {
  FiltresCorrecteur filtres;
  FiltresCorrecteur::Params params;
  params.Format = eFormatLaTeX;
  filtres.CreeFiltres(params);
  return filtres.Mappeur().Convertis(ChaineN(document));
}

inline std::string InterneLaTeX(std::u16string_view document) {
  return VersUtf8(ConvertisLaTeX(document).Interne().Chaine().Vue());
}

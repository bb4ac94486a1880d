// Helpers of the LaTeX tests: one converter's reports as a dump, and the internal text the whole
// LaTeX filter set makes of a document.
#pragma once

#include <string>
#include <string_view>

#include "DecritRapports.h"
#include "Outils.h"
#include "framework/FiltresCorrecteur.h"
#include "latex/ConvertisseurLaTeX.h"

inline std::string RapportsLaTeX(std::u16string_view entree) {
  ConvertisseurLaTeX convertisseur;
  return DecritRapports(convertisseur, entree);
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

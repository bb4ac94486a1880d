// A compact dump of a converter's reports, for table tests:
//   R[1,6)'&'{0,1}   remplace of [1,6) by "&" with {CaractereSpecial, Remplacable}
//   M[0,8)1          marque of [0,8) with style bits 1
// Reports are separated by one space, in report order. In texts, control characters, unpaired
// surrogates, "'" and "\" are escaped as \uXXXX; everything else is UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ferlane/Convertisseur.h"

struct Rapport {
  bool estMarque = false;
  MapPos::Intervalle intervalle;
  ChaineN texte;
  MapPos::Attributs attributs;
  uint32_t styles = 0;
};

// Runs the converter (ConvertisInterneAExterne when `inverse`) and collects its reports.
std::vector<Rapport> CollecteRapports(Convertisseur& convertisseur, std::u16string_view entree,
                                      bool inverse = false);
// The same over `texte` itself (ConvertisSurPlace), which the converter may change.
std::vector<Rapport> CollecteRapportsSurPlace(Convertisseur& convertisseur,
                                              TexteAvecAttributs& texte);
std::string DecritRapports(const std::vector<Rapport>& rapports);
std::string DecritRapports(Convertisseur& convertisseur, std::u16string_view entree,
                           bool inverse = false);
// A text in the dump's notation, quotes excluded.
std::string DecritTexte(std::u16string_view texte);

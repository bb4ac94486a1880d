// The converter contract as the filters see it: the base class, its callables and the style
// bits. The contract itself (positions, report order, empty callables) is stated once, above
// MapChaines::Convertisseur in ferlane/MapChaines.h; each converter's header covers only what
// differs.
#pragma once

#include <cstdint>

#include "ferlane/ChaineN.h"
#include "ferlane/MapChaines.h"
#include "ferlane/MapPos.h"

using Convertisseur = MapChaines<TexteAvecAttributs>::Convertisseur;
using FonctionRemplace = MapChaines<TexteAvecAttributs>::FonctionRemplace;
using FonctionMarque = MapChaines<TexteAvecAttributs>::FonctionMarque;

// Style bits reported through `marque`; one span may carry several.
enum eStyle : uint32_t {
  eItalique = 1,
  eGras = 2,
  eExposant = 4,
  eIndice = 8,
  eNonTexte = 16,  // not prose: formulas, keys, placeholders, code
  eBarre = 32,
};

// Attribute pairs in use, written {CaractereSpecial, Remplacable}.
inline constexpr MapPos::Attributs kAttributsMasque{0, 0};
inline constexpr MapPos::Attributs kAttributsEquivalent{0, 1};
inline constexpr MapPos::Attributs kAttributsSpecial{1, 1};

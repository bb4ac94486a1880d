// The converter contract as the filters see it: the base class, its callables and the style
// bits (declared with the reporter, ferlane/Rapporteur.h). The contract itself (positions, report
// order, empty callables) is stated once, above MapChaines::Convertisseur in ferlane/MapChaines.h;
// each converter's header covers only what differs.
#pragma once

#include <cstdint>

#include "ferlane/ChaineN.h"
#include "ferlane/MapChaines.h"
#include "ferlane/MapPos.h"
#include "ferlane/Rapporteur.h"  // the style bits and attribute pairs

// A format detector reads the first this many units of a document, no more: detection costs
// the same on a page and on a book.
inline constexpr uint64_t kFenetreDetection = 10000;

using Convertisseur = MapChaines<TexteAvecAttributs>::Convertisseur;
using FonctionRemplace = MapChaines<TexteAvecAttributs>::FonctionRemplace;
using FonctionMarque = MapChaines<TexteAvecAttributs>::FonctionMarque;

// Rapporteur: what a converter reports through, and the attribute and style constants it
// reports with. A converter scans with 64-bit positions; the chain's intervals are 32-bit. The
// reporter narrows every position in one place and refuses one that does not fit, so a text
// too long for the map stops the run with an error instead of coming out wrong. The chain
// refuses such a document before any converter runs (SuiteDeMapChaines); the check here catches
// a converter that reports past its text.
//
// It leaves out the resolution of reports (ComposeurDeRapports) and any check of order or
// overlap, which the chain resolves.
#pragma once

#include <cstdint>

#include "ferlane/ChaineN.h"
#include "ferlane/MapChaines.h"
#include "ferlane/MapPos.h"

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

// The longest text the chain maps: positions are 32-bit, and the end of the text is one too.
inline constexpr uint64_t kLongueurMaximale = UINT32_MAX;

class Rapporteur {
 public:
  using FonctionRemplace = MapChaines<TexteAvecAttributs>::FonctionRemplace;
  using FonctionMarque = MapChaines<TexteAvecAttributs>::FonctionMarque;

  // The callables must outlive the reporter; either may be empty if never used.
  Rapporteur(const FonctionRemplace& remplace, const FonctionMarque& marque)
      : remplace_(remplace), marque_(marque) {}

  // [debut, fin) becomes `texte`.
  void Remplace(uint64_t debut, uint64_t fin, const ChaineN& texte,
                MapPos::Attributs attributs) const {
    remplace_(Intervalle(debut, fin), texte, attributs);
  }
  // [debut, fin) leaves the internal text; nothing is reported for an empty stretch.
  void Masque(uint64_t debut, uint64_t fin, MapPos::Attributs attributs = kAttributsMasque) const {
    if (debut < fin) remplace_(Intervalle(debut, fin), kChaineNNulle, attributs);
  }
  // `texte` appears at `position`.
  void Insere(uint64_t position, const ChaineN& texte, MapPos::Attributs attributs) const {
    remplace_(Intervalle(position, position), texte, attributs);
  }
  // The units of [debut, fin) carry `styles`; nothing is reported for an empty stretch.
  void Marque(uint64_t debut, uint64_t fin, uint32_t styles) const {
    if (debut < fin) marque_(Intervalle(debut, fin), styles);
  }

  // The interval [debut, fin) in the chain's 32-bit positions; std::length_error when a
  // position does not fit.
  static MapPos::Intervalle Intervalle(uint64_t debut, uint64_t fin);

 private:
  const FonctionRemplace& remplace_;
  const FonctionMarque& marque_;
};

// Refuses (std::length_error) a text the chain cannot map: more than kLongueurMaximale units.
void VerifieLongueurMappable(uint64_t longueur);

// MapChaines: the converter base class and the result of a chain of converters, a document
// mapped onto its internal text.
//
// The converter contract
// ----------------------
// A converter is handed a text and reports, through two callables, what the internal text is
// made of; it builds no text itself and keeps nothing of its reports.
//
//   remplace(Intervalle, const ChaineN& texte, Attributs)
//       [Debut, Fin) of the given text is replaced by `texte`. An empty `texte` masks the
//       interval; an empty interval inserts `texte` at Debut.
//   marque(Intervalle, uint32_t styles)
//       the characters of [Debut, Fin) carry the style bits `styles` (eStyle).
//
// - Positions are UTF-16 code units of the text given to the call, end exclusive, never of a
//   text after earlier replacements. In ConvertisInterneAExterne that text is internal text and
//   the replacement texts are the external forms of what they cover.
// - Reports may come in any order and may overlap, nest, repeat or be empty; the chain resolves
//   them (SuiteDeMapChaines.h states how).
// - Calling an empty callable raises std::bad_function_call: the conversion stops there and the
//   reports already made stand. A converter that has nothing to report never touches its
//   callables, so empty callables are harmless then.
// - A converter reports synchronously, on the caller's thread, during the call.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "ferlane/ChaineN.h"
#include "ferlane/ChaineTemplateAvecAttributs.h"
#include "ferlane/MapPos.h"

// One stretch of the map between a document (external side) and its internal text. The
// segments of a map partition both texts, in order. An identity segment has sides of equal
// length, unit mapped to unit; any other segment maps its internal units, as a whole, onto its
// external stretch: a replacement, a deletion (empty internal side) or an insertion (empty
// external side).
struct SegmentDeMap {
  uint32_t DebutInterne = 0;
  uint32_t FinInterne = 0;
  uint32_t DebutExterne = 0;
  uint32_t FinExterne = 0;
  MapPos::Attributs Attributs;
  bool Identite = false;
  bool operator==(const SegmentDeMap&) const = default;
};

template <class T>
class MapChaines {
 public:
  // What the chain keeps of its work: eModeComplet builds the position map and keeps the
  // document; eModeTexteSeul only the internal text and its styles (faster and smaller: the
  // document is not kept, Externe() is empty, and InterneVersExterne is unavailable);
  // eModeSansDocument builds the map but does not keep the document, which the host has (or
  // does not need: the queries work as in eModeComplet, Externe() is empty).
  enum Mode : uint32_t { eModeComplet = 0, eModeTexteSeul = 1, eModeSansDocument = 2 };

  using FonctionRemplace =
      std::function<void(MapPos::Intervalle, const ChaineN&, MapPos::Attributs)>;
  using FonctionMarque = std::function<void(MapPos::Intervalle, uint32_t)>;

  class Convertisseur {
   public:
    Convertisseur() = default;
    Convertisseur(const Convertisseur&) = default;
    Convertisseur& operator=(const Convertisseur&) = default;
    virtual ~Convertisseur() = default;

    // External form to internal text. The default reports nothing.
    virtual void ConvertisExterneAInterne(const T& texte, const FonctionRemplace& remplace,
                                          const FonctionMarque& marque) {
      (void)texte, (void)remplace, (void)marque;
    }
    // The same conversion, free to use the units of `texte` as its scratch: the chain passes
    // its input this way when nothing needs the input after the step. On return every unit
    // that no reported replacement covers, and every attribute, is as it was; units under a
    // replacement may have changed (and any may have, if a callable raised). The default
    // converts the text as it stands.
    virtual void ConvertisSurPlace(T& texte, const FonctionRemplace& remplace,
                                   const FonctionMarque& marque) {
      ConvertisExterneAInterne(texte, remplace, marque);
    }
    // Internal text back to external form: re-encodes what the format cannot hold as it is.
    // The default reports nothing.
    virtual void ConvertisInterneAExterne(const T& texte, const FonctionRemplace& remplace,
                                          const FonctionMarque& marque) {
      (void)texte, (void)remplace, (void)marque;
    }
    // Called by nobody in the system; kept for hosts that prepare converters ahead of a run.
    virtual void Prepare() {}

    // The converter supplies ConvertisInterneAExterne.
    bool ConversionInverse = false;
  };

  MapChaines() = default;
  MapChaines(ChaineN externe, T interne, std::vector<SegmentDeMap> segments, bool avecMap)
      : externe_(std::move(externe)),
        interne_(std::move(interne)),
        segments_(std::move(segments)),
        avecMap_(avecMap),
        // The segments cover the whole document, kept or not.
        longueurExterne_(segments_.empty() ? externe_.Longueur() : segments_.back().FinExterne) {}

  // The document; empty when the chain did not keep it (eModeTexteSeul, eModeSansDocument).
  const ChaineN& Externe() const { return externe_; }
  const T& Interne() const { return interne_; }
  // Empty when the map was not built (eModeTexteSeul).
  const std::vector<SegmentDeMap>& Segments() const { return segments_; }
  bool AMap() const { return avecMap_; }

  // The queries below raise std::logic_error without a map and std::out_of_range for positions
  // outside the texts.
  // The document stretch an internal stretch comes from. For an empty internal interval, the
  // document position of that internal position (before any deletion that sits there).
  MapPos::Intervalle InterneVersExterne(MapPos::Intervalle interne) const;
  // The internal position of a document position; a position inside a replaced stretch gives
  // the start of its replacement. The document's length gives the internal text's length.
  uint64_t ExterneVersInterne(uint64_t externe) const;
  // The flags of the segment that internal unit `position` comes from.
  MapPos::Attributs AttributsInternes(uint64_t position) const;

 private:
  ChaineN externe_;
  T interne_;
  std::vector<SegmentDeMap> segments_;
  bool avecMap_ = true;
  uint64_t longueurExterne_ = 0;
};

using TexteAvecAttributs = ChaineTemplateAvecAttributs<ChaineN>;

extern template class MapChaines<TexteAvecAttributs>;

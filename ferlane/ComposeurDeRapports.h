// ComposeurDeRapports: collects the reports of one converter run over one text and builds the
// run's output text, its style bits and the map of that one step (output ↔ input).
//
// How reports are resolved (the same rule for every converter):
// - An interval that is reversed or ends past the text is ignored.
// - Non-empty replacements are taken in order of start, the longer first, then in report order;
//   each keeps only the part that those taken before it do not cover. So a replacement that
//   lies inside another is dropped (the outer wins, whichever came first), an interval reported
//   twice counts once (the first report's text stands), and one that partly overlaps an earlier
//   taken one is clipped to begin where that one ends, keeping its whole replacement text.
//   Every input unit thus lands in the output at most once, in order.
// - An insertion (empty interval) appears at its position, in report order, before a
//   replacement that starts there and after one that ends there; it is dropped when it lies
//   strictly inside a kept replacement.
// - Styles: for each bit, the positions covered by the spans carrying it form a set S. An
//   unchanged unit at p gets the bit when p is in S; a replacement text over [d, f) when all of
//   [d, f) is in S; an insertion at p when p - 1 and p both are. The units keep the bits they
//   had from earlier converters under the same rule (a replacement text keeps the bits common
//   to every unit it replaces).
// Building costs O(n + r log r) for n input units and r reports.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "ferlane/MapChaines.h"
#include "ferlane/VecteurBrut.h"

class ComposeurDeRapports {
 public:
  using FonctionRemplace = MapChaines<TexteAvecAttributs>::FonctionRemplace;
  using FonctionMarque = MapChaines<TexteAvecAttributs>::FonctionMarque;

  struct Etape {
    TexteAvecAttributs texte;
    // Internal side: the output text; external side: the input text.
    std::vector<SegmentDeMap> segments;
  };

  explicit ComposeurDeRapports(const TexteAvecAttributs& entree);

  void AjouteRemplacement(MapPos::Intervalle intervalle, const ChaineN& texte,
                          MapPos::Attributs attributs);
  void AjouteStyle(MapPos::Intervalle intervalle, uint32_t styles);
  // Callables that record into this composer; it must outlive them.
  FonctionRemplace Remplace();
  FonctionMarque Marque();

  bool AucunRapport() const { return remplacements_.empty() && styles_.empty(); }
  // Styles only: the text and the map stay as they are, so the step needs no output of its own.
  bool StylesSeulement() const { return remplacements_.empty() && !styles_.empty(); }
  // Adds this step's style bits to `texte` (the input itself) in place, as Construis would give
  // them to its unchanged units. Only when StylesSeulement().
  void AppliqueStyles(TexteAvecAttributs& texte);
  // Builds the output; the step's segments only when `avecSegments`. The composer's reports
  // are consumed (sorted in place): build once. `entreeLibre`, when given, is the input itself,
  // which nothing needs once the output is built: if it carries no style bits and the output
  // never runs ahead of the input (each replacement fits in what it replaces and the room that
  // earlier deletions left), the output is written over it, and it is left empty.
  // `segmentsEnPlus` is room claimed beyond the step's segments, for a composition written
  // into the same buffer (ComposeMaps).
  Etape Construis(bool avecSegments, TexteAvecAttributs* entreeLibre = nullptr,
                  size_t segmentsEnPlus = 0);

 private:
  // Sixteen bytes: the reports are the composer's largest buffer. A text of kTexteLong units
  // or more has its length in the two units before it in tampon_ (LongueurTexte).
  struct Remplacement {
    uint32_t debut, fin;
    uint32_t debutTexte;  // in tampon_
    uint16_t longueurCourte;
    MapPos::Attributs attributs;
  };
  static_assert(sizeof(Remplacement) == 16);
  static constexpr uint16_t kTexteLong = UINT16_MAX;
  uint32_t LongueurTexte(const Remplacement& r) const {
    if (r.longueurCourte != kTexteLong) return r.longueurCourte;
    return (uint32_t{tampon_[r.debutTexte - 2]} << 16) | tampon_[r.debutTexte - 1];
  }
  struct Style {
    uint32_t debut, fin, styles;
  };
  // The reported bits as steps: a step's styles cover the positions from its start to the next
  // step's; the first step starts at 0.
  struct Palier {
    uint32_t debut, styles;
  };
  std::vector<Palier> Paliers();
  class Construction;

  const TexteAvecAttributs& entree_;
  // The order of reports as one key: start first, then the end, the longest first.
  static uint64_t Cle(const Remplacement& r) {
    return uint64_t{r.debut} << 32 | (UINT32_MAX - r.fin);
  }

  VecteurBrut<Remplacement> remplacements_;
  // The reports that come after one that sorts later (the sort sets them aside), and the largest
  // key so far.
  size_t aEcarter_ = 0;
  uint64_t plusGrandeCle_ = 0;
  // A deque: a step may mark a token every few units, and growing a vector of them would copy
  // them all, holding both copies at once.
  std::deque<Style> styles_;
  std::u16string tampon_;  // every replacement text, end to end
};

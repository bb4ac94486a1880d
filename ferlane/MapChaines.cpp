// Queries on a document mapped onto its internal text: binary searches over the segments,
// which are ordered on both sides.
#include "ferlane/MapChaines.h"

#include <algorithm>
#include <stdexcept>

namespace {

const SegmentDeMap* PremierAvecFinInterneApres(const std::vector<SegmentDeMap>& segments,
                                               uint64_t position) {
  const auto it =
      std::partition_point(segments.begin(), segments.end(),
                           [&](const SegmentDeMap& s) { return s.FinInterne <= position; });
  return it == segments.end() ? nullptr : &*it;
}

}  // namespace

template <class T>
MapPos::Intervalle MapChaines<T>::InterneVersExterne(MapPos::Intervalle interne) const {
  if (!avecMap_) throw std::logic_error("the chain ran without a position map");
  if (interne.Debut > interne.Fin || interne.Fin > interne_.Longueur())
    throw std::out_of_range("internal interval outside the internal text");
  if (interne.Debut == interne.Fin) {
    // The first segment that holds the position strictly inside or starts at it; a deletion
    // sitting at the position comes before what follows it.
    const uint64_t p = interne.Debut;
    const auto it =
        std::partition_point(segments_.begin(), segments_.end(), [&](const SegmentDeMap& s) {
          return s.FinInterne < p || (s.FinInterne == p && s.DebutInterne < p);
        });
    if (it == segments_.end())
      return {static_cast<uint32_t>(longueurExterne_), static_cast<uint32_t>(longueurExterne_)};
    uint32_t externe = it->DebutExterne;
    if (it->Identite && it->DebutInterne < p)
      externe += static_cast<uint32_t>(p - it->DebutInterne);
    return {externe, externe};
  }
  const SegmentDeMap* premier = PremierAvecFinInterneApres(segments_, interne.Debut);
  const SegmentDeMap* dernier = PremierAvecFinInterneApres(segments_, interne.Fin - 1);
  const uint32_t debut = premier->Identite
                             ? premier->DebutExterne + (interne.Debut - premier->DebutInterne)
                             : premier->DebutExterne;
  const uint32_t fin = dernier->Identite
                           ? dernier->DebutExterne + (interne.Fin - dernier->DebutInterne)
                           : dernier->FinExterne;
  return {debut, fin};
}

template <class T>
uint64_t MapChaines<T>::ExterneVersInterne(uint64_t externe) const {
  if (!avecMap_) throw std::logic_error("the chain ran without a position map");
  if (externe > longueurExterne_) throw std::out_of_range("position outside the document");
  const auto it =
      std::partition_point(segments_.begin(), segments_.end(),
                           [&](const SegmentDeMap& s) { return s.FinExterne <= externe; });
  if (it == segments_.end()) return interne_.Longueur();
  return it->Identite ? it->DebutInterne + (externe - it->DebutExterne) : it->DebutInterne;
}

template <class T>
MapPos::Attributs MapChaines<T>::AttributsInternes(uint64_t position) const {
  if (!avecMap_) throw std::logic_error("the chain ran without a position map");
  const SegmentDeMap* segment = PremierAvecFinInterneApres(segments_, position);
  if (segment == nullptr || position >= interne_.Longueur())
    throw std::out_of_range("position outside the internal text");
  return segment->Attributs;
}

template class MapChaines<TexteAvecAttributs>;

// The chain's run: one ComposeurDeRapports a converter, maps composed step by step.
#include "ferlane/SuiteDeMapChaines.h"

#include "ferlane/ComposeurDeRapports.h"
#include "ferlane/CompositionDeMaps.h"

template <class T>
MapChaines<T> SuiteDeMapChaines<T>::Convertis(const ChaineN& document) const {
  const bool avecMap = mode_ == MapChaines<T>::eModeComplet;
  T texte(document);
  std::vector<SegmentDeMap> map;
  if (avecMap && !document.EstVide()) {
    const auto n = static_cast<uint32_t>(document.Longueur());
    map.push_back({0, n, 0, n, {}, true});
  }
  for (Convertisseur* convertisseur : convertisseurs_) {
    ComposeurDeRapports composeur(texte);
    convertisseur->ConvertisExterneAInterne(texte, composeur.Remplace(), composeur.Marque());
    if (composeur.AucunRapport()) continue;
    ComposeurDeRapports::Etape etape = composeur.Construis(avecMap);
    if (avecMap) {
      // Until a converter changes something, the map is the identity and composing with it
      // gives the step's own map.
      const bool identite = map.empty() || (map.size() == 1 && map[0].Identite);
      if (identite) {
        map = std::move(etape.segments);
        CompacteSegments(map);
      } else {
        map = ComposeMaps(map, etape.segments);
      }
    }
    texte = std::move(etape.texte);
  }
  return MapChaines<T>(document, std::move(texte), std::move(map), avecMap);
}

template class SuiteDeMapChaines<TexteAvecAttributs>;

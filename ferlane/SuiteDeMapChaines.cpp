// The chain's run: one ComposeurDeRapports a converter, maps composed step by step.
#include "ferlane/SuiteDeMapChaines.h"

#include <optional>

#include "ferlane/ComposeurDeRapports.h"
#include "ferlane/CompositionDeMaps.h"
#include "ferlane/Rapporteur.h"

template <class T>
MapChaines<T> SuiteDeMapChaines<T>::Convertis(const ChaineN& document) const {
  VerifieLongueurMappable(document.Longueur());  // before the copy
  return Convertis(ChaineN(document));
}

template <class T>
MapChaines<T> SuiteDeMapChaines<T>::Convertis(ChaineN&& document) const {
  VerifieLongueurMappable(document.Longueur());
  const bool avecMap = mode_ != MapChaines<T>::eModeTexteSeul;
  const bool avecDocument = mode_ == MapChaines<T>::eModeComplet;
  std::vector<SegmentDeMap> map;
  if (avecMap && !document.EstVide()) {
    const auto n = static_cast<uint32_t>(document.Longueur());
    map.push_back({0, n, 0, n, {}, true});
  }
  // The document is the first step's input; it moves aside once a step has built its output.
  std::optional<ChaineN> externe;
  T texte(std::move(document));
  for (Convertisseur* convertisseur : convertisseurs_) {
    // Once the document is set aside (at once when it is not kept), a step's input serves
    // nothing after the step: the converter may work over it, and the output be written over it.
    const bool entreeLibre = !avecDocument || externe.has_value();
    ComposeurDeRapports composeur(texte);
    if (entreeLibre)
      convertisseur->ConvertisSurPlace(texte, composeur.Remplace(), composeur.Marque());
    else
      convertisseur->ConvertisExterneAInterne(texte, composeur.Remplace(), composeur.Marque());
    if (composeur.AucunRapport()) continue;
    if (composeur.StylesSeulement()) {  // the text and the map stay: only bits are added
      composeur.AppliqueStyles(texte);
      continue;
    }
    // Until a converter changes something, the map is the identity and composing with it gives
    // the step's own map. Otherwise the step claims room for the composition in its own buffer.
    const bool identite = map.empty() || (map.size() == 1 && map[0].Identite);
    ComposeurDeRapports::Etape etape = composeur.Construis(avecMap, entreeLibre ? &texte : nullptr,
                                                           avecMap && !identite ? map.size() : 0);
    if (avecMap) {
      if (identite) {
        map = std::move(etape.segments);
        CompacteSegments(map);
      } else {
        map = ComposeMaps(map, std::move(etape.segments));
      }
    }
    // A document not kept gives its room to the next steps (a text without its map is the fast
    // path of a command printing text alone).
    if (!externe) externe.emplace(avecDocument ? texte.RetireChaine() : ChaineN());
    texte = std::move(etape.texte);
  }
  if (!externe) externe.emplace(avecDocument ? texte.Chaine() : ChaineN());  // nothing changed
  return MapChaines<T>(std::move(*externe), std::move(texte), std::move(map), avecMap);
}

template class SuiteDeMapChaines<TexteAvecAttributs>;

// The chain's run: one ComposeurDeRapports a converter, maps composed step by step.
#include "ferlane/SuiteDeMapChaines.h"

#include <future>
#include <memory>
#include <optional>
#include <system_error>

#include "ferlane/ComposeurDeRapports.h"
#include "ferlane/CompositionDeMaps.h"
#include "ferlane/Rapporteur.h"

namespace {

// A composition of at least this many step segments runs on a helper thread while the next
// converters run (they read the text alone, and the map is needed only by the next step that
// changes the text, or at the end); a smaller one costs less than a thread.
constexpr size_t kSegmentsAComposerAPart = size_t{1} << 16;

}  // namespace

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
  // Declared after `map`, which it writes: on the way out, an exception included, the helper
  // ends before the map goes.
  std::future<void> composition;
  const auto attendsLaMap = [&composition] {
    if (composition.valid()) composition.get();
  };
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
    attendsLaMap();
    // Until a converter changes something, the map is the identity and composing with it gives
    // the step's own map. Otherwise the step claims room for the composition in its own buffer.
    const bool identite = map.empty() || (map.size() == 1 && map[0].Identite);
    ComposeurDeRapports::Etape etape = composeur.Construis(avecMap, entreeLibre ? &texte : nullptr,
                                                           avecMap && !identite ? map.size() : 0);
    if (avecMap && identite) {
      map = std::move(etape.segments);
      CompacteSegments(map);
    } else if (avecMap) {
      // Shared, so that the segments stay here if no thread can be started.
      const auto segments = std::make_shared<std::vector<SegmentDeMap>>(std::move(etape.segments));
      const auto compose = [&map, segments] { map = ComposeMaps(map, std::move(*segments)); };
      bool aPart = segments->size() >= kSegmentsAComposerAPart;
      try {
        if (aPart) composition = std::async(std::launch::async, compose);
      } catch (const std::system_error&) {
        aPart = false;  // no thread to be had: composed here
      }
      if (!aPart) compose();
    }
    // A document not kept gives its room to the next steps (a text without its map is the fast
    // path of a command printing text alone).
    if (!externe) externe.emplace(avecDocument ? texte.RetireChaine() : ChaineN());
    texte = std::move(etape.texte);
  }
  attendsLaMap();
  if (!externe) externe.emplace(avecDocument ? texte.Chaine() : ChaineN());  // nothing changed
  return MapChaines<T>(std::move(*externe), std::move(texte), std::move(map), avecMap);
}

template class SuiteDeMapChaines<TexteAvecAttributs>;

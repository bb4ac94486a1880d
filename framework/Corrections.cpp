// AppliqueCorrections: places each correction through the map, checks the segments it covers,
// re-encodes its text with the format's backward converters, then splices the document once.
#include "framework/Corrections.h"

#include <algorithm>
#include <optional>

namespace {

using Resultat = MapChaines<TexteAvecAttributs>;

std::string Decrit(const Correction& c) {
  return "correction [" + std::to_string(c.debut) + "," + std::to_string(c.fin) + ")";
}

// Why the stretch [debut, fin) of the internal text cannot be overwritten, if it cannot: a
// segment it covers is markup with no textual equivalent, or a replacement it cuts through.
std::optional<std::string> Obstacle(const Resultat& resultat, uint64_t debut, uint64_t fin) {
  const auto& segments = resultat.Segments();
  auto it = std::partition_point(segments.begin(), segments.end(), [&](const SegmentDeMap& s) {
    return s.FinInterne < debut || (s.FinInterne == debut && s.DebutInterne < debut);
  });
  for (; it != segments.end() && it->DebutInterne <= fin; ++it) {
    const SegmentDeMap& s = *it;
    const bool vide = s.DebutInterne == s.FinInterne;
    // Deletions at either end lie outside the stretch; units outside it are not covered.
    if (vide ? (s.DebutInterne <= debut || s.DebutInterne >= fin)
             : (s.FinInterne <= debut || s.DebutInterne >= fin))
      continue;
    if (s.Identite) continue;
    const std::string ou = " at document offset " + std::to_string(s.DebutExterne);
    if (!s.Attributs.Remplacable) return "would overwrite markup" + ou;
    if (!vide && (s.DebutInterne < debut || s.FinInterne > fin))
      return "cuts through a replacement" + ou;
  }
  return std::nullopt;
}

// A text as the document writes it: each backward converter, last of the chain first, reports
// the external form of what its format cannot hold as it is.
ChaineN ReEncode(const ChaineN& texte, const std::vector<std::shared_ptr<Convertisseur>>& chaine) {
  ChaineN courant = texte;
  for (auto it = chaine.rbegin(); it != chaine.rend(); ++it) {
    if (!(*it)->ConversionInverse) continue;
    std::vector<std::pair<MapPos::Intervalle, ChaineN>> rapports;
    (*it)->ConvertisInterneAExterne(
        TexteAvecAttributs(courant),
        [&](MapPos::Intervalle i, const ChaineN& t, MapPos::Attributs) {
          rapports.emplace_back(i, t);
        },
        [](MapPos::Intervalle, uint32_t) {});
    std::ranges::stable_sort(rapports, {}, [](const auto& r) { return r.first.Debut; });
    std::u16string suivant;
    uint64_t lu = 0;
    for (const auto& [intervalle, externe] : rapports) {
      if (intervalle.Debut < lu) continue;  // overlaps what is already written
      suivant.append(courant.Vue().substr(lu, intervalle.Debut - lu));
      suivant.append(externe.Vue());
      lu = intervalle.Fin;
    }
    suivant.append(courant.Vue().substr(lu));
    courant = ChaineN(std::move(suivant));
  }
  return courant;
}

}  // namespace

ResultatCorrections AppliqueCorrections(const ChaineN& document, FiltresCorrecteur::Params& params,
                                        std::vector<Correction> corrections) {
  FiltresCorrecteur filtres(Resultat::eModeComplet);
  filtres.CreeFiltres(params);
  const Resultat resultat = filtres.Mappeur().Convertis(document);
  const uint64_t longueur = resultat.Interne().Longueur();

  ResultatCorrections sortie;
  std::ranges::stable_sort(corrections, {}, [](const Correction& c) { return c.debut; });
  uint64_t finPrecedente = 0;
  bool premiere = true;
  for (Correction& c : corrections) {
    std::optional<std::string> raison;
    if (c.debut > c.fin || c.fin > longueur)
      raison = "lies outside the internal text (" + std::to_string(longueur) + " units)";
    else if (!premiere && c.debut < finPrecedente)
      raison = "overlaps the correction before it";
    else
      raison = Obstacle(resultat, c.debut, c.fin);
    if (raison) {
      sortie.refusees.push_back({c, Decrit(c) + " " + *raison});
      continue;
    }
    const MapPos::Intervalle externe =
        resultat.InterneVersExterne({static_cast<uint32_t>(c.debut), static_cast<uint32_t>(c.fin)});
    sortie.placees.push_back(
        {externe.Debut, externe.Fin, ReEncode(c.texte, filtres.Convertisseurs())});
    finPrecedente = c.fin;
    premiere = false;
  }

  std::u16string texte;
  texte.reserve(document.Longueur());
  uint64_t lu = 0;
  for (const CorrectionPlacee& p : sortie.placees) {
    texte.append(document.Vue().substr(lu, p.debut - lu));
    texte.append(p.texte.Vue());
    lu = p.fin;
  }
  texte.append(document.Vue().substr(lu));
  sortie.document = ChaineN(std::move(texte));
  return sortie;
}

// A reference model of the chain, for tests only: it applies one converter's reports to a text
// by brute force (one input position at a time, every report looked at again), so that the
// real chain's sweeps and sorts can be checked against it on any reports.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "DecritRapports.h"

struct SortieNaive {
  std::u16string texte;
  std::vector<uint32_t> styles;              // one entry a unit
  std::vector<MapPos::Intervalle> sources;   // the input stretch each unit comes from
  std::vector<MapPos::Attributs> attributs;  // the flags of the report each unit comes from
  std::vector<bool> inchange;                // the unit is an input unit copied as it is
  std::vector<bool> insere;                  // the unit comes from an insertion
  std::vector<uint64_t> versSortie;          // for each input position 0..n, its output position
};

SortieNaive AppliqueRapportsNaif(std::u16string_view entree, const std::vector<uint32_t>& styles,
                                 const std::vector<Rapport>& rapports);

// Replays a fixed list of reports as a converter would make them.
class ConvertisseurRejoue : public Convertisseur {
 public:
  explicit ConvertisseurRejoue(std::vector<Rapport> rapports) : rapports_(std::move(rapports)) {}
  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;
  const std::vector<Rapport>& Rapports() const { return rapports_; }
  // The text of the last run.
  const std::u16string& DernierTexte() const { return dernierTexte_; }

 private:
  std::vector<Rapport> rapports_;
  std::u16string dernierTexte_;
};

// Report builders for tables.
Rapport R(uint32_t debut, uint32_t fin, std::u16string_view texte = u"",
          MapPos::Attributs attributs = {});
Rapport M(uint32_t debut, uint32_t fin, uint32_t styles);

// Segments as "=[0,4)[0,4)" (identity, internal then document side) or "[4,4)[4,9){0,1}".
std::string DecritMap(const std::vector<SegmentDeMap>& segments);
// Style bits of each unit, one digit or number a unit separated by spaces.
std::string DecritStyles(const TexteAvecAttributs& texte);

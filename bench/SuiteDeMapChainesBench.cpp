// The chain building its output text and position map: one million reports over a text of
// ten million code units, and the same at other sizes. Bytes processed count the document's
// code units (one byte each for ASCII text).
#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "ferlane/Convertisseur.h"
#include "ferlane/SuiteDeMapChaines.h"

namespace {

struct RapportEnregistre {
  MapPos::Intervalle intervalle;
  ChaineN texte;
  uint32_t styles;  // 0: a replacement
};

// Replays a fixed list of reports, as a converter would make them.
class ConvertisseurRejoue : public Convertisseur {
 public:
  explicit ConvertisseurRejoue(std::vector<RapportEnregistre> rapports)
      : rapports_(std::move(rapports)) {}
  void ConvertisExterneAInterne(const TexteAvecAttributs&, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override {
    for (const RapportEnregistre& r : rapports_) {
      if (r.styles != 0)
        marque(r.intervalle, r.styles);
      else
        remplace(r.intervalle, r.texte, {0, r.texte.EstVide() ? uint8_t{0} : uint8_t{1}});
    }
  }

 private:
  std::vector<RapportEnregistre> rapports_;
};

ChaineN TexteDeProse(uint64_t longueur) {
  static constexpr char16_t kMots[] = u"le filtre garde la prose et retire le balisage; ";
  std::u16string texte;
  texte.reserve(longueur);
  while (texte.size() < longueur) texte += kMots;
  texte.resize(longueur);
  return ChaineN(std::move(texte));
}

// Reports spread over the text: deletions, replacements and insertions (a fifth of them
// out of order), and one style span in eight.
std::vector<RapportEnregistre> RapportsAleatoires(uint64_t longueur, uint64_t nombre) {
  std::mt19937_64 alea(42);
  std::vector<RapportEnregistre> rapports;
  rapports.reserve(nombre);
  const uint64_t pas = std::max<uint64_t>(1, longueur / nombre);
  for (uint64_t k = 0; k < nombre; ++k) {
    const uint64_t base = (k % 5 == 4) ? alea() % longueur : std::min(longueur - 1, k * pas);
    const uint64_t fin = std::min(longueur, base + alea() % 6);
    const MapPos::Intervalle intervalle{uint32_t(base), uint32_t(fin)};
    switch (alea() % 8) {
      case 0:
        rapports.push_back({intervalle, ChaineN(), 1u << (alea() % 6)});
        break;
      case 1:
        rapports.push_back({{uint32_t(base), uint32_t(base)}, ChaineN(u"\n"), 0});
        break;
      case 2:
        rapports.push_back({intervalle, ChaineN(u"é"), 0});
        break;
      default:
        rapports.push_back({intervalle, ChaineN(), 0});
        break;
    }
  }
  return rapports;
}

void BM_ChaineConstruitTexteEtMap(benchmark::State& etat) {
  const uint64_t longueur = static_cast<uint64_t>(etat.range(0));
  const uint64_t nombre = static_cast<uint64_t>(etat.range(1));
  const ChaineN document = TexteDeProse(longueur);
  ConvertisseurRejoue convertisseur(RapportsAleatoires(longueur, nombre));
  SuiteDeMapChaines<TexteAvecAttributs> suite(MapChaines<TexteAvecAttributs>::Mode(etat.range(2)));
  suite.AjouteConvertisseur(&convertisseur);
  for (auto _ : etat) benchmark::DoNotOptimize(suite.Convertis(document));
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * longueur));
  etat.counters["rapports"] = static_cast<double>(nombre);
}
BENCHMARK(BM_ChaineConstruitTexteEtMap)
    ->ArgNames({"unites", "rapports", "mode"})
    ->Args({10'000'000, 1'000'000, 0})
    ->Args({10'000'000, 1'000'000, 1})
    ->Args({1'000'000, 100'000, 0})
    ->Args({10'000'000, 1'000, 0})
    ->Unit(benchmark::kMillisecond);

// Two converters: the second deletes a character in three of the first one's output, so the
// maps are composed segment by segment.
void BM_ChaineDeuxConvertisseurs(benchmark::State& etat) {
  const uint64_t longueur = static_cast<uint64_t>(etat.range(0));
  const ChaineN document = TexteDeProse(longueur);
  ConvertisseurRejoue premier(RapportsAleatoires(longueur, longueur / 10));
  std::vector<RapportEnregistre> suppressions;
  for (uint64_t p = 0; p + 1 < longueur * 8 / 10; p += 3)
    suppressions.push_back({{uint32_t(p), uint32_t(p + 1)}, ChaineN(), 0});
  ConvertisseurRejoue second(std::move(suppressions));
  SuiteDeMapChaines<TexteAvecAttributs> suite;
  suite.AjouteConvertisseur(&premier);
  suite.AjouteConvertisseur(&second);
  for (auto _ : etat) benchmark::DoNotOptimize(suite.Convertis(document));
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * longueur));
}
BENCHMARK(BM_ChaineDeuxConvertisseurs)
    ->Arg(1'000'000)
    ->Arg(10'000'000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

// The HTML converter alone and the whole HTML filter set, over the real pages of the corpus, and
// the converter over hostile texts at growing sizes: their time per unit must stay flat, since
// every search the walk may repeat remembers its answer. Bytes processed count the document's
// code units.
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "Corpus.h"
#include "framework/FiltresCorrecteur.h"
#include "html/ConvertisseurHTML.h"

namespace {

const FonctionRemplace kRemplaceMuet = [](MapPos::Intervalle, const ChaineN&, MapPos::Attributs) {};
const FonctionMarque kMarqueMuette = [](MapPos::Intervalle, uint32_t) {};

uint64_t Longueur(const std::vector<ChaineN>& documents) {
  uint64_t total = 0;
  for (const ChaineN& d : documents) total += d.Longueur();
  return total;
}

void BM_HTMLConvertisseurCorpus(benchmark::State& etat) {
  const std::vector<ChaineN> pages = LitCorpus("html");
  if (pages.empty()) return etat.SkipWithError("no html corpus");
  std::vector<TexteAvecAttributs> textes(pages.begin(), pages.end());
  ConvertisseurHTML convertisseur;
  for (auto _ : etat)
    for (const TexteAvecAttributs& texte : textes)
      convertisseur.ConvertisExterneAInterne(texte, kRemplaceMuet, kMarqueMuette);
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * Longueur(pages)));
}
BENCHMARK(BM_HTMLConvertisseurCorpus)->Unit(benchmark::kMillisecond);

// What a host pays: the filter set's chain, text and position map included.
void BM_HTMLChaineCorpus(benchmark::State& etat) {
  const std::vector<ChaineN> pages = LitCorpus("html");
  if (pages.empty()) return etat.SkipWithError("no html corpus");
  FiltresCorrecteur::Params params;
  params.Format = eFormatHTML;
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  for (auto _ : etat)
    for (const ChaineN& page : pages) benchmark::DoNotOptimize(filtres.Mappeur().Convertis(page));
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * Longueur(pages)));
}
BENCHMARK(BM_HTMLChaineCorpus)->Unit(benchmark::kMillisecond);

void BM_HTMLDetection(benchmark::State& etat) {
  const std::vector<ChaineN> pages = LitCorpus("html");
  if (pages.empty()) return etat.SkipWithError("no html corpus");
  for (auto _ : etat)
    for (const ChaineN& page : pages)
      benchmark::DoNotOptimize(ConvertisseurHTML::DetecteBalisesHTML(page));
}
BENCHMARK(BM_HTMLDetection);

void BM_HTMLReEncodage(benchmark::State& etat) {
  std::u16string texte;
  std::mt19937 alea(11);
  static constexpr char16_t kUnites[] = u"abcdefghij  é&<œ";
  while (texte.size() < (1u << 20)) texte += kUnites[alea() % (std::size(kUnites) - 1)];
  const TexteAvecAttributs correction{ChaineN(texte)};
  ConvertisseurHTML convertisseur;  // new: writes non-ASCII characters as references
  for (auto _ : etat)
    convertisseur.ConvertisInterneAExterne(correction, kRemplaceMuet, kMarqueMuette);
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * texte.size()));
}
BENCHMARK(BM_HTMLReEncodage)->Unit(benchmark::kMillisecond);

// Hostile shapes, each made by repeating a motif up to the size asked.
enum eHostile : int64_t {
  eEsperluettes,         // "&a" with no ";" anywhere, after a real tag
  eChevronsOuvrants,     // "<a" with no ">"
  eFermantesOrphelines,  // "</x" with no ">" while an element is open
  eCommentairesOuverts,  // "<!--" never closed
  eImbrication,          // "<div>" nested without end
  eNomLong,              // an element with a long name, then near-misses of its closing tag
  eHostileNombre,
};

ChaineN TexteHostile(eHostile forme, uint64_t longueur) {
  static const char16_t* const kMotifs[] = {u"&a ", u"<a ", u"</x ", u"<!-- x ", u"<div>", u"</aa"};
  std::u16string texte;
  if (forme == eEsperluettes) texte = u"<p>x</p>";
  if (forme == eFermantesOrphelines) texte = u"<p>";
  if (forme == eNomLong) {
    texte = u"<";
    for (int i = 0; i < 2000; ++i) texte += u"aa</";
    texte += u"b>";
  }
  while (texte.size() < longueur) texte += kMotifs[forme];
  return ChaineN(std::move(texte));
}

void BM_HTMLHostile(benchmark::State& etat) {
  const eHostile forme = static_cast<eHostile>(etat.range(0));
  const TexteAvecAttributs texte{TexteHostile(forme, static_cast<uint64_t>(etat.range(1)))};
  ConvertisseurHTML convertisseur;
  for (auto _ : etat) convertisseur.ConvertisExterneAInterne(texte, kRemplaceMuet, kMarqueMuette);
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * texte.Longueur()));
}
BENCHMARK(BM_HTMLHostile)
    ->ArgNames({"forme", "unites"})
    ->ArgsProduct({benchmark::CreateDenseRange(0, eHostileNombre - 1, 1),
                   {1 << 14, 1 << 18, 1 << 21}})
    ->Unit(benchmark::kMicrosecond);

}  // namespace

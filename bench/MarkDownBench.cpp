// The Markdown converter on real documents (the corpus's markdown/ folder), alone and through
// the filter set, and on hostile inputs at growing sizes, whose fitted complexity shows that
// every pass stays linear. Bytes processed count the document's code units.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "Corpus.h"
#include "framework/FiltresCorrecteur.h"
#include "markdown/ConvertisseurMarkDown.h"
#include "markdown/DetecteMarkDown.h"

namespace {

// The analyser alone: reports are counted, not kept.
uint64_t Convertis(ConvertisseurMarkDown& convertisseur, const TexteAvecAttributs& texte) {
  uint64_t rapports = 0;
  const FonctionRemplace remplace = [&](MapPos::Intervalle, const ChaineN&, MapPos::Attributs) {
    ++rapports;
  };
  const FonctionMarque marque = [&](MapPos::Intervalle, uint32_t) { ++rapports; };
  convertisseur.ConvertisExterneAInterne(texte, remplace, marque);
  return rapports;
}

const std::vector<ChaineN>& Corpus() {
  static const std::vector<ChaineN> documents = LitCorpus("markdown");
  return documents;
}

void BM_MarkDownCorpus(benchmark::State& etat) {
  if (Corpus().empty()) return etat.SkipWithError("corpus markdown/ missing");
  std::vector<TexteAvecAttributs> textes(Corpus().begin(), Corpus().end());
  uint64_t unites = 0;
  for (const ChaineN& d : Corpus()) unites += d.Longueur();
  ConvertisseurMarkDown convertisseur;
  for (auto _ : etat)
    for (const TexteAvecAttributs& t : textes)
      benchmark::DoNotOptimize(Convertis(convertisseur, t));
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * unites));
}
BENCHMARK(BM_MarkDownCorpus)->Unit(benchmark::kMillisecond);

// The whole chain of a Markdown filter set: internal text, styles and position map.
void BM_MarkDownFiltresCorpus(benchmark::State& etat) {
  if (Corpus().empty()) return etat.SkipWithError("corpus markdown/ missing");
  FiltresCorrecteur::Params params;
  params.Format = eFormatMarkDown;
  FiltresCorrecteur filtres(MapChaines<TexteAvecAttributs>::Mode(etat.range(0)));
  filtres.CreeFiltres(params);
  uint64_t unites = 0;
  for (const ChaineN& d : Corpus()) unites += d.Longueur();
  for (auto _ : etat)
    for (const ChaineN& d : Corpus()) benchmark::DoNotOptimize(filtres.Mappeur().Convertis(d));
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * unites));
}
BENCHMARK(BM_MarkDownFiltresCorpus)->ArgName("mode")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_MarkDownDetection(benchmark::State& etat) {
  if (Corpus().empty()) return etat.SkipWithError("corpus markdown/ missing");
  uint64_t unites = 0;
  for (const ChaineN& d : Corpus()) unites += std::min<uint64_t>(d.Longueur(), kFenetreDetection);
  for (auto _ : etat)
    for (const ChaineN& d : Corpus()) benchmark::DoNotOptimize(DetecteMarkDown(d));
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * unites));
}
BENCHMARK(BM_MarkDownDetection);

// Hostile inputs: thousands of unclosed or stacked constructs, on one line unless the motif
// holds its own breaks.
std::u16string Repete(std::u16string texte, std::u16string_view motif, uint64_t taille) {
  while (texte.size() < taille) texte += motif;
  return texte;
}

struct Hostile {
  const char* nom;
  std::u16string (*genere)(uint64_t taille);
};
const Hostile kHostiles[] = {
    {"backticks-doubles", [](uint64_t n) { return Repete(u"", u"``a ", n); }},
    {"etoiles", [](uint64_t n) { return Repete(u"", u"*a ", n); }},
    {"crochets-ouverts", [](uint64_t n) { return Repete(u"x ", u"[", n); }},
    {"liens-sans-fin", [](uint64_t n) { return Repete(u"x ", u"[a](", n); }},
    {"chevrons-ouverts", [](uint64_t n) { return Repete(u"x ", u"<", n); }},
    {"balises-sans-fin", [](uint64_t n) { return Repete(u"x ", u"<a ", n); }},
    {"commentaires-ouverts", [](uint64_t n) { return Repete(u"", u"<!-- a\n", n); }},
    // Every "[" of the run asks whether the same long "]: destination" makes a definition.
    {"definitions-empilees",
     [](uint64_t n) { return Repete(Repete(u"", u"[", n / 2) + u"x]: ", u"d", n); }},
    {"liste-imbriquee", [](uint64_t n) { return Repete(u"", u"- ", n) + u"x"; }},
    {"citations-imbriquees", [](uint64_t n) { return Repete(u"", u"> ", n) + u"x"; }},
    // A pipe at the start makes every paragraph line look for the next one.
    {"paragraphes-sans-barre", [](uint64_t n) { return Repete(u"|\n\n", u"a b c\nd e\n\n", n); }},
    {"lignes-de-tableau", [](uint64_t n) { return Repete(u"a | b\n--- | ---\n", u"1 | 2\n", n); }},
    {"accolades-ouvertes", [](uint64_t n) { return Repete(u"", u"[a](\n{ b\n", n); }},
    {"soulignes-intramots", [](uint64_t n) { return Repete(u"", u"a_b ", n); }},
};

void BM_MarkDownHostile(benchmark::State& etat) {
  const Hostile& h = kHostiles[etat.range(0)];
  const TexteAvecAttributs texte(ChaineN(h.genere(static_cast<uint64_t>(etat.range(1)))));
  ConvertisseurMarkDown convertisseur;
  for (auto _ : etat) benchmark::DoNotOptimize(Convertis(convertisseur, texte));
  etat.SetLabel(h.nom);
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * texte.Longueur()));
  etat.SetComplexityN(static_cast<int64_t>(texte.Longueur()));
}

void ArgumentsHostiles(benchmark::internal::Benchmark* b) {
  b->ArgNames({"cas", "unites"});
  for (int64_t cas = 0; cas < static_cast<int64_t>(std::size(kHostiles)); ++cas)
    for (int64_t taille = 1 << 12; taille <= 1 << 20; taille <<= 4) b->Args({cas, taille});
}
BENCHMARK(BM_MarkDownHostile)->Apply(ArgumentsHostiles)->Unit(benchmark::kMicrosecond);

}  // namespace

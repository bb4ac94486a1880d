// The LaTeX converters on the real documents of the corpus (converters alone, then the whole
// filter set with its position map, then the backward direction), and on hostile inputs whose
// cost must grow in proportion to their size: deep nesting, brackets never closed, formulas
// never closed, glossary references that read far. Bytes processed count the document's code
// units.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "Corpus.h"
#include "framework/FiltresCorrecteur.h"
#include "latex/ConvertisseurCommentairesLaTeX.h"
#include "latex/ConvertisseurLaTeX.h"

namespace {

// Counts the reports, so that the work cannot be optimised away.
struct Compteur {
  uint64_t rapports = 0;
  FonctionRemplace remplace = [this](MapPos::Intervalle, const ChaineN&, MapPos::Attributs) {
    ++rapports;
  };
  FonctionMarque marque = [this](MapPos::Intervalle, uint32_t) { ++rapports; };
};

uint64_t Longueur(const std::vector<ChaineN>& documents) {
  uint64_t n = 0;
  for (const ChaineN& d : documents) n += d.Longueur();
  return n;
}

void ConvertisSansChaine(benchmark::State& etat, const std::vector<TexteAvecAttributs>& textes,
                         uint64_t unites) {
  ConvertisseurCommentairesLaTeX commentaires;
  ConvertisseurLaTeX latex;
  Compteur compteur;
  for (auto _ : etat) {
    for (const TexteAvecAttributs& t : textes) {
      commentaires.ConvertisExterneAInterne(t, compteur.remplace, compteur.marque);
      latex.ConvertisExterneAInterne(t, compteur.remplace, compteur.marque);
    }
    benchmark::DoNotOptimize(compteur.rapports);
  }
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * unites));
  etat.counters["rapports/doc"] = static_cast<double>(compteur.rapports) /
                                  static_cast<double>(etat.iterations() * textes.size());
}

void BM_LaTeXCorpusConvertisseurs(benchmark::State& etat) {
  const std::vector<ChaineN> documents = LitCorpus("latex");
  if (documents.empty()) return etat.SkipWithError("no LaTeX corpus");
  const std::vector<TexteAvecAttributs> textes(documents.begin(), documents.end());
  ConvertisSansChaine(etat, textes, Longueur(documents));
}
BENCHMARK(BM_LaTeXCorpusConvertisseurs)->Unit(benchmark::kMillisecond);

void BM_LaTeXCorpusChaine(benchmark::State& etat) {
  const std::vector<ChaineN> documents = LitCorpus("latex");
  if (documents.empty()) return etat.SkipWithError("no LaTeX corpus");
  FiltresCorrecteur::Params params;
  params.Format = eFormatLaTeX;
  FiltresCorrecteur filtres(MapChaines<TexteAvecAttributs>::Mode(etat.range(0)));
  filtres.CreeFiltres(params);
  for (auto _ : etat)
    for (const ChaineN& d : documents) benchmark::DoNotOptimize(filtres.Mappeur().Convertis(d));
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * Longueur(documents)));
}
BENCHMARK(BM_LaTeXCorpusChaine)->ArgName("mode")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void BM_LaTeXCorpusInverse(benchmark::State& etat) {
  const std::vector<ChaineN> documents = LitCorpus("latex");
  if (documents.empty()) return etat.SkipWithError("no LaTeX corpus");
  ConvertisseurLaTeX latex(etat.range(0) != 0);
  Compteur compteur;
  const std::vector<TexteAvecAttributs> textes(documents.begin(), documents.end());
  for (auto _ : etat)
    for (const TexteAvecAttributs& t : textes)
      latex.ConvertisInterneAExterne(t, compteur.remplace, compteur.marque);
  benchmark::DoNotOptimize(compteur.rapports);
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * Longueur(documents)));
}
BENCHMARK(BM_LaTeXCorpusInverse)
    ->ArgName("accentsDirects")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);

// Hostile documents of about n code units.
enum eHostile { eImbrique, eNonFermees, eStylesImbriques, eFormulesOuvertes, eGlossaireLointain };

std::u16string Hostile(eHostile sorte, size_t n) {
  std::u16string texte;
  const auto repete = [&](std::u16string_view motif, size_t fois) {
    for (size_t i = 0; i < fois; ++i) texte += motif;
  };
  switch (sorte) {
    case eImbrique:
      texte.assign(n / 2, u'{');
      texte.append(n / 2, u'}');
      break;
    case eNonFermees:
      texte.assign(n, u'{');
      break;
    case eStylesImbriques:
      repete(u"\\textbf{", n / 9);
      texte.append(n / 9, u'}');
      break;
    case eFormulesOuvertes:
      repete(u"{$\\(", n / 4);
      break;
    case eGlossaireLointain:  // each reference reads up to the one closing brace at the end
      repete(u"$\\newacronym{a}{b}{c}\\acrshort$ {a", n / 34);
      texte += u"}";
      break;
  }
  return texte;
}

void BM_LaTeXHostile(benchmark::State& etat) {
  const size_t n = static_cast<size_t>(etat.range(1));
  const std::vector<TexteAvecAttributs> textes{
      TexteAvecAttributs(ChaineN(Hostile(eHostile(etat.range(0)), n)))};
  ConvertisSansChaine(etat, textes, textes[0].Longueur());
}
BENCHMARK(BM_LaTeXHostile)
    ->ArgNames({"sorte", "unites"})
    ->ArgsProduct({{eImbrique, eNonFermees, eStylesImbriques, eFormulesOuvertes,
                    eGlossaireLointain},
                   {1 << 14, 1 << 17, 1 << 20}})
    ->Unit(benchmark::kMillisecond);

}  // namespace

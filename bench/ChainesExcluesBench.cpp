// The common filters and the SRT converter over long texts. The excluded-strings search is
// measured with 100 strings over 50 million code units, on the calling thread and on the task
// runner; bytes processed count the text's code units.
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "Corpus.h"
#include "ferlane/Listes.h"
#include "ferlane/UniChaine.h"
#include "filters/ConvertisseurChainesExclues.h"
#include "filters/ConvertisseurPourCourriels.h"
#include "subtitles/ConvertisseurSRT.h"

namespace {

constexpr uint64_t kGrandTexte = 50'000'000;
constexpr int kNombreDeChaines = 100;

// Prose for when the corpus is missing: 4,000 made-up words drawn with Zipf's law (a few words
// very frequent, most rare, as in real text), in sentences and lines, with a fixed seed.
ChaineN ProseSynthetique(uint64_t longueur) {
  static constexpr std::u16string_view kSyllabes[] = {
      u"ba", u"ri", u"lo",  u"mé", u"tan", u"ser", u"qu",  u"vo", u"la",  u"ne",  u"dis", u"cor",
      u"pa", u"tu", u"gen", u"ma", u"fé",  u"ro",  u"chi", u"sa", u"tre", u"mon", u"li",  u"de"};
  std::mt19937 alea(3);
  std::vector<std::u16string> mots;
  std::vector<double> poids;
  for (int k = 0; k < 4000; ++k) {
    std::u16string mot;
    for (unsigned s = 1 + (k > 40) + (k > 600) + alea() % 2; s > 0; --s)
      mot += kSyllabes[alea() % std::size(kSyllabes)];
    mots.push_back(std::move(mot));
    poids.push_back(1.0 / (k + 1));
  }
  std::discrete_distribution<size_t> zipf(poids.begin(), poids.end());
  std::u16string texte;
  texte.reserve(longueur + 64);
  uint64_t ligne = 0;
  bool debutDePhrase = true;
  while (texte.size() < longueur) {
    std::u16string mot = mots[zipf(alea)];
    if (debutDePhrase)
      mot[0] = static_cast<char16_t>(mot[0] - 32 * (mot[0] >= u'a' && mot[0] <= u'z'));
    texte += mot;
    debutDePhrase = alea() % 14 == 0;
    if (debutDePhrase) texte += u'.';
    if (texte.size() - ligne > 70) {
      texte += u"\r\n";
      ligne = texte.size();
    } else {
      texte += u' ';
    }
  }
  texte.resize(longueur);
  return ChaineN(std::move(texte));
}

// The documents of a corpus folder one after another, repeated up to `longueur` units.
ChaineN CorpusRepete(const std::string& dossier, uint64_t longueur) {
  const std::vector<ChaineN> documents = LitCorpus(dossier);
  if (documents.empty()) return ChaineN();
  std::u16string texte;
  texte.reserve(longueur);
  for (size_t k = 0; texte.size() < longueur; ++k) texte += documents[k % documents.size()].Vue();
  texte.resize(longueur);
  return ChaineN(std::move(texte));
}

const ChaineN& GrandTexte() {
  static const ChaineN texte = [] {
    ChaineN corpus = CorpusRepete("text", kGrandTexte);
    return corpus.EstVide() ? ProseSynthetique(kGrandTexte) : corpus;
  }();
  return texte;
}

// Strings a user might exclude: four in five are stretches of the text (a word or a few,
// frequent or rare), one in five does not occur; a line break appears in some.
std::vector<ChaineN> ChainesAExclure(const ChaineN& texte) {
  std::mt19937_64 alea(17);
  std::vector<ChaineN> chaines;
  while (chaines.size() < kNombreDeChaines) {
    if (chaines.size() % 5 == 4) {
      chaines.push_back(ChaineN(u"Zyx" + std::u16string(1, char16_t(u'a' + alea() % 26)) + u"qw"));
      continue;
    }
    uint64_t debut = alea() % (texte.Longueur() - 64);
    while (debut > 0 && texte[debut - 1] != u' ') --debut;  // from a word start
    ChaineN chaine = texte.SousChaine(debut, 4 + alea() % 16);
    chaine.Texte().erase(chaine.Texte().find_last_not_of(u' ') + 1);
    if (chaine.Longueur() >= 3) chaines.push_back(std::move(chaine));
  }
  return chaines;
}

void BM_ChainesExclues(benchmark::State& etat) {
  const bool parallele = etat.range(0) != 0;
  const ChaineN& texte = GrandTexte();
  const TexteAvecAttributs document(texte);
  ListeT<UniChaine> exclues, courriel;
  for (ChaineN& c : ChainesAExclure(texte)) exclues.Ajoute(UniChaine(std::move(c)));
  ConvertisseurChainesExclues convertisseur(exclues, courriel, false, parallele);
  uint64_t masquages = 0;
  const FonctionRemplace remplace = [&](MapPos::Intervalle, const ChaineN&, MapPos::Attributs) {
    ++masquages;
  };
  for (auto _ : etat) {
    masquages = 0;
    convertisseur.ConvertisExterneAInterne(document, remplace, {});
  }
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * texte.Longueur()));
  etat.counters["chaines"] = kNombreDeChaines;
  etat.counters["masquages"] = static_cast<double>(masquages);
}
BENCHMARK(BM_ChainesExclues)
    ->ArgName("parallele")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// The same with e-mail strings, compared ignoring case and accents.
void BM_ChainesExcluesCourriel(benchmark::State& etat) {
  const ChaineN& texte = GrandTexte();
  const TexteAvecAttributs document(texte);
  ListeT<UniChaine> exclues, courriel;
  for (ChaineN& c : ChainesAExclure(texte)) courriel.Ajoute(UniChaine(std::move(c)));
  ConvertisseurChainesExclues convertisseur(exclues, courriel, true, etat.range(0) != 0);
  const FonctionRemplace remplace = [](MapPos::Intervalle, const ChaineN&, MapPos::Attributs) {};
  for (auto _ : etat) convertisseur.ConvertisExterneAInterne(document, remplace, {});
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * texte.Longueur()));
}
BENCHMARK(BM_ChainesExcluesCourriel)
    ->ArgName("parallele")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void BM_ConvertisseurSRT(benchmark::State& etat) {
  const ChaineN texte = CorpusRepete("srt", 6'000'000);
  if (texte.EstVide()) return etat.SkipWithError("no srt corpus");
  const TexteAvecAttributs document(texte);
  ConvertisseurSRT convertisseur;
  uint64_t rapports = 0;
  const FonctionRemplace remplace = [&](MapPos::Intervalle, const ChaineN&, MapPos::Attributs) {
    ++rapports;
  };
  const FonctionMarque marque = [&](MapPos::Intervalle, uint32_t) { ++rapports; };
  for (auto _ : etat) convertisseur.ConvertisExterneAInterne(document, remplace, marque);
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * texte.Longueur()));
}
BENCHMARK(BM_ConvertisseurSRT)->Unit(benchmark::kMillisecond);

void BM_ConvertisseurPourCourriels(benchmark::State& etat) {
  const ChaineN texte = CorpusRepete("email", 6'000'000);
  if (texte.EstVide()) return etat.SkipWithError("no e-mail corpus");
  const TexteAvecAttributs document(texte);
  ConvertisseurPourCourriels convertisseur(etat.range(0) != 0);
  const FonctionRemplace remplace = [](MapPos::Intervalle, const ChaineN&, MapPos::Attributs) {};
  for (auto _ : etat) convertisseur.ConvertisExterneAInterne(document, remplace, {});
  etat.SetBytesProcessed(static_cast<int64_t>(etat.iterations() * texte.Longueur()));
}
BENCHMARK(BM_ConvertisseurPourCourriels)
    ->ArgName("lignes")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace

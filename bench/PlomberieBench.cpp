// The plumbing under every format: UTF-8 decoding and encoding of the corpus's real documents,
// and the unit and pattern searches the scans are built on, against the standard library's
// searches on the same text. Bytes processed count code units (one byte each for ASCII).
#include <benchmark/benchmark.h>

#include <string>
#include <string_view>

#include "Corpus.h"
#include "ferlane/CodageUtf.h"
#include "ferlane/ProchaineOccurrence.h"

namespace {

// Every document of the corpus, end to end: prose, markup and a little non-ASCII.
const std::u16string& TexteDuCorpus() {
  static const std::u16string texte = [] {
    std::u16string tout;
    for (const char* dossier : {"latex", "markdown", "html", "srt", "email", "text"})
      for (const ChaineN& d : LitCorpus(dossier)) tout += d.Vue();
    return tout;
  }();
  return texte;
}

bool SansCorpus(benchmark::State& etat) {
  if (!TexteDuCorpus().empty()) return false;
  etat.SkipWithError("corpus missing");
  return true;
}

void BM_DecodeUtf8(benchmark::State& etat) {
  if (SansCorpus(etat)) return;
  const std::string octets = EncodeUtf8(TexteDuCorpus());
  std::u16string texte;
  for (auto _ : etat) benchmark::DoNotOptimize(DecodeUtf8Strict(octets, texte));
  etat.SetBytesProcessed(int64_t(etat.iterations()) * int64_t(octets.size()));
}
BENCHMARK(BM_DecodeUtf8);

void BM_EncodeUtf8(benchmark::State& etat) {
  if (SansCorpus(etat)) return;
  std::string octets;
  for (auto _ : etat) {
    octets.clear();
    AjouteUtf8(TexteDuCorpus(), octets);
    benchmark::DoNotOptimize(octets.data());
  }
  etat.SetBytesProcessed(int64_t(etat.iterations()) * int64_t(TexteDuCorpus().size()));
}
BENCHMARK(BM_EncodeUtf8);

// Counts every occurrence, one search from the end of the last: arg 0 the kit's search
// `kit`, arg 1 the standard library's `standard`; both answer npos when there is none.
template <class Kit, class Standard>
void ToutesLesOccurrences(benchmark::State& etat, Kit kit, Standard standard) {
  if (SansCorpus(etat)) return;
  const std::u16string_view texte = TexteDuCorpus();
  const bool avecStandard = etat.range(0) == 1;
  for (auto _ : etat) {
    uint64_t nombre = 0;
    for (uint64_t p = 0;; ++p, ++nombre) {
      p = avecStandard ? standard(texte, p) : kit(texte, p);
      if (p == std::u16string_view::npos) break;
    }
    benchmark::DoNotOptimize(nombre);
  }
  etat.SetBytesProcessed(int64_t(etat.iterations()) * int64_t(texte.size()));
}

// A unit, "<".
void BM_ToutesLesOccurrences(benchmark::State& etat) {
  ToutesLesOccurrences(
      etat, [](std::u16string_view t, uint64_t p) { return TrouveUnite(t, p, u'<'); },
      [](std::u16string_view t, uint64_t p) { return t.find(u'<', p); });
}
BENCHMARK(BM_ToutesLesOccurrences)->Arg(0)->Arg(1);

// A pattern whose first unit is common: "\n\n" over text with a line end every few dozen units.
void BM_MotifDeuxUnites(benchmark::State& etat) {
  ToutesLesOccurrences(
      etat, [](std::u16string_view t, uint64_t p) { return TrouveMotif(t, p, u"\n\n"); },
      [](std::u16string_view t, uint64_t p) { return t.find(u"\n\n", p); });
}
BENCHMARK(BM_MotifDeuxUnites)->Arg(0)->Arg(1);

}  // namespace

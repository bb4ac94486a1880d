// Every document of the corpus through the prose profile: no markup left in what it prints, and
// no part of the document lost. A part is a tenth of the document; its words are the runs of
// letters the reference filters read in it, and the profile must keep a fair share of them in
// every part that has some, so that an unclosed construct swallowing the rest of the file
// shows as parts with nothing kept.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <regex>
#include <string>

#include "Outils.h"
#include "ferlane/Convertisseur.h"
#include "framework/FiltresCorrecteur.h"
#include "framework/TexteLisible.h"

namespace {

struct Format {
  const char* dossier;
  eFormatTexte format;
  bool courriel;
  const char* balisage;  // what would be markup left in the printed text
  // The reference filters themselves lose parts of such documents: the words to keep are then
  // those written in the part, command names and comments left out.
  bool motsEcrits = false;
};

constexpr Format kFormats[] = {
    {"latex", eFormatLaTeX, false, R"(\\[A-Za-z]+|\\begin|\\end)", true},
    {"html", eFormatHTML, false, R"(<[A-Za-z/!][^>\n]*>|&[A-Za-z]+;|&#x?[0-9A-Fa-f]+;)"},
    {"markdown", eFormatMarkDown, false, R"(`|\]\(|<[A-Za-z/!][^>\n]*>|https?://)"},
    {"email", eFormatTexteBrut, true, R"(^>)"},
    {"srt", eFormatSRT, false, R"(-->|<[a-z/][^>\n]*>)"},
    {"text", eFormatTexteBrut, false, R"(https?://)"},
};

constexpr int kParts = 10;
using Compte = std::array<long, kParts>;

bool EstLettre(char16_t c) {
  return (c | 0x20) >= u'a' && (c | 0x20) <= u'z';
}

// Calls mot(debut) for every run of letters of the text at least two long.
template <class Rappel>
void PourChaqueMot(std::u16string_view texte, Rappel mot) {
  for (size_t i = 0; i < texte.size();) {
    if (!EstLettre(texte[i])) {
      ++i;
      continue;
    }
    size_t fin = i;
    while (fin < texte.size() && EstLettre(texte[fin])) ++fin;
    if (fin - i >= 2) mot(i, fin);
    i = fin;
  }
}

int Part(uint64_t position, uint64_t taille) {
  return static_cast<int>(
      std::min<uint64_t>(position * kParts / std::max<uint64_t>(taille, 1), kParts - 1));
}

MapChaines<TexteAvecAttributs> Convertis(const ChaineN& document, const Format& f, bool prose) {
  FiltresCorrecteur::Params params;
  params.Format = f.format;
  params.Courriel = f.courriel;
  if (prose) params.Prose.Active();
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  return filtres.Mappeur().Convertis(document);
}

// The prose words of a converted document, counted in the part of the document they come from.
Compte MotsParPartie(const MapChaines<TexteAvecAttributs>& resultat, uint64_t taille) {
  Compte mots{};
  const TexteAvecAttributs& interne = resultat.Interne();
  PourChaqueMot(interne.Chaine().Vue(), [&](size_t debut, size_t fin) {
    for (size_t i = debut; i < fin; ++i)
      if ((interne.Attribut(i) & eNonTexte) != 0) return;
    const MapPos::Intervalle ici{static_cast<uint32_t>(debut), static_cast<uint32_t>(fin)};
    ++mots[Part(resultat.InterneVersExterne(ici).Debut, taille)];
  });
  return mots;
}

Compte MotsEcrits(std::u16string_view document) {
  Compte mots{};
  size_t commentaire = 0;  // the end of the last comment seen
  PourChaqueMot(document, [&](size_t debut, size_t) {
    if (debut > 0 && document[debut - 1] == u'\\') return;
    if (debut < commentaire) return;
    const size_t ligne = document.rfind(u'\n', debut) + 1;  // 0 when none
    const size_t pourcent = document.substr(0, debut).find(u'%', ligne);
    if (pourcent != std::u16string_view::npos &&
        (pourcent == 0 || document[pourcent - 1] != u'\\')) {
      commentaire = std::min(document.find(u'\n', debut), document.size());
      return;
    }
    ++mots[Part(debut, document.size())];
  });
  return mots;
}

TEST(CorpusProseLent, AucunePartiePerdueNiBalisageLaisse) {
  const std::filesystem::path corpus = FILTRES_CORPUS;
  if (!std::filesystem::is_directory(corpus)) GTEST_SKIP() << "no corpus at " << corpus;
  for (const Format& f : kFormats) {
    const std::regex balisage(f.balisage, std::regex::multiline);
    for (const auto& entree : std::filesystem::directory_iterator(corpus / f.dossier)) {
      const std::string nom = std::string(f.dossier) + "/" + entree.path().filename().string();
      const ChaineN document = ChaineN::DepuisUtf8(LitFichier(entree.path().string()));
      const uint64_t taille = document.Vue().size();

      const Compte gardes = MotsParPartie(Convertis(document, f, true), taille);
      const Compte reference = f.motsEcrits ? MotsEcrits(document.Vue())
                                            : MotsParPartie(Convertis(document, f, false), taille);
      // A part where the baseline has a hundred words or more and the profile keeps less than
      // a third of them is a part lost. One part alone may be (a table of symbols, a preamble
      // of definitions, a page of code spans and badges); two in a row is the rest of a file
      // going.
      bool precedentPerdu = false;
      for (int p = 0; p < kParts; ++p) {
        const bool perdu = reference[p] >= 100 && gardes[p] * 3 < reference[p];
        EXPECT_FALSE(perdu && precedentPerdu)
            << nom << ", tenth " << p + 1 << ": " << gardes[p] << " words kept of " << reference[p];
        precedentPerdu = perdu;
      }

      const std::string prose = TexteLisible(Convertis(document, f, true).Interne()).VersUtf8();
      long mots = 0;
      for (long n : gardes) mots += n;
      const long restes = std::distance(std::sregex_iterator(prose.begin(), prose.end(), balisage),
                                        std::sregex_iterator());
      EXPECT_LE(restes * 1000, std::max<long>(mots, 1)) << nom << ": markup left " << restes;
    }
  }
}

}  // namespace

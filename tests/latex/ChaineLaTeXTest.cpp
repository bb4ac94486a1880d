// The LaTeX filter set as a whole: sample documents against their reviewed text, the position
// map back to the source, hostile nesting, and the real corpus.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "OutilsLaTeX.h"
#include "ferlane/SuiteDeMapChaines.h"
#include "latex/ConvertisseurCommentairesLaTeX.h"

namespace {

// Each phrase is in the internal text once, and the map takes it back to the same words in the
// document (the phrases hold no markup).
void VerifiePhrases(const std::u16string& document,
                    const std::vector<std::u16string_view>& phrases) {
  const MapChaines<TexteAvecAttributs> resultat = ConvertisLaTeX(document);
  const std::u16string_view interne = resultat.Interne().Chaine().Vue();
  for (const std::u16string_view phrase : phrases) {
    const size_t position = interne.find(phrase);
    ASSERT_NE(position, std::u16string_view::npos) << VersUtf8(phrase);
    const MapPos::Intervalle source = resultat.InterneVersExterne(
        {static_cast<uint32_t>(position), static_cast<uint32_t>(position + phrase.size())});
    EXPECT_EQ(
        VersUtf8(std::u16string_view(document).substr(source.Debut, source.Fin - source.Debut)),
        VersUtf8(phrase));
  }
}

// The sample documents against their reviewed internal text, and a few phrases of each mapped
// back to the same words in the document.
TEST(ChaineLaTeX, ExemplesContreLeurTexteRelu) {
  const struct {
    const char* nom;
    std::vector<std::u16string_view> phrases;
  } kDocuments[] = {
      {"article-fr",
       {u"La lisibilité d", u"de la longueur des phrases et du choix des mots",
        u"promettent de la mesurer, mais leurs résultats restent",
        u"Cette moyenne cache de grands écarts entre les genres."}},
      {"report-en", {u"opened at seven.", u"there, as planned in the r"}},
  };
  const std::string racine = FILTRES_RACINE;
  for (const auto& [nom, phrases] : kDocuments) {
    const std::u16string document = Utf16(LitFichier(racine + "/examples/" + nom + ".tex"));
    EXPECT_EQ(InterneLaTeX(document), LitFichier(racine + "/tests/latex/attendus/" + nom + ".txt"))
        << nom;
    VerifiePhrases(document, phrases);
  }
}

// Nesting costs no call stack: depth becomes memory, and the text inside survives.
void VerifieImbrication(size_t profondeur) {
  std::u16string imbrique(profondeur, u'{');
  imbrique += u"x";
  imbrique.append(profondeur, u'}');
  EXPECT_EQ(InterneLaTeX(imbrique), "x");

  std::u16string styles;
  for (size_t i = 0; i < profondeur / 8; ++i) styles += u"\\textbf{";
  styles += u"x";
  styles.append(profondeur / 8, u'}');
  EXPECT_EQ(InterneLaTeX(styles), "x");

  // Never closed: each brace takes the last character of its range for its closing one.
  EXPECT_EQ(InterneLaTeX(std::u16string(profondeur, u'{')), "");
  // Formulas nested in groups nested in formulas, none of them closed.
  std::u16string formules;
  for (size_t i = 0; i < profondeur / 4; ++i) formules += u"{$\\(";
  EXPECT_NO_THROW(InterneLaTeX(formules));
}

TEST(ChaineLaTeX, ImbricationProfonde) {
  VerifieImbrication(100'000);
}
TEST(ChaineLaTeX, ImbricationDUnMillionLent) {
  VerifieImbrication(1'000'000);
}

// Every document of the corpus goes through both directions without a reversed interval or a
// position past the text.
TEST(ChaineLaTeX, CorpusReelLent) {
  const std::filesystem::path dossier = std::filesystem::path(FILTRES_CORPUS) / "latex";
  if (!std::filesystem::is_directory(dossier)) GTEST_SKIP() << "no corpus at " << dossier;
  for (const auto& fichier : std::filesystem::directory_iterator(dossier)) {
    const std::u16string document = Utf16(LitFichier(fichier.path().string()));
    for (const bool inverse : {false, true}) {
      ConvertisseurLaTeX latex;
      ConvertisseurCommentairesLaTeX commentaires;
      for (Convertisseur* c :
           {static_cast<Convertisseur*>(&commentaires), static_cast<Convertisseur*>(&latex)}) {
        const std::vector<Rapport> rapports = CollecteRapports(*c, document, inverse);
        for (const Rapport& r : rapports) {
          ASSERT_LE(r.intervalle.Debut, r.intervalle.Fin) << fichier.path();
          ASSERT_LE(r.intervalle.Fin, document.size()) << fichier.path();
        }
      }
    }
    EXPECT_FALSE(InterneLaTeX(document).empty()) << fichier.path();
  }
}

}  // namespace

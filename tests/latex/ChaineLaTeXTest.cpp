// The LaTeX filter set as a whole: sample documents through the chain and the command, the
// position map back to the source, hostile nesting, and the real corpus.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "ModeleDeChaine.h"
#include "OutilsLaTeX.h"
#include "ferlane/SuiteDeMapChaines.h"
#include "latex/ConvertisseurCommentairesLaTeX.h"

namespace {

const std::string kExemples = std::string(FILTRES_RACINE) + "/examples/";

std::u16string LitExemple(const std::string& nom) {
  return Utf16(LitFichier(kExemples + nom));
}

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

TEST(ChaineLaTeX, ArticleEnFrancais) {
  const std::u16string document = LitExemple("article-fr.tex");
  const std::string interne = InterneLaTeX(document);
  for (const char* attendu : {
           "Mesurer la lisibilité des textes \n\nClaire Dumont",
           "\n\nIntroduction\n\n La lisibilité d’un texte dépend",
           "choix des mots\u00A0flesch48. Les outils d’intelligence artificielle (IA) promettent",
           "restent difficiles à interpréter sans un corpus de référence. Nous comparons ici trois "
           "corpus et l’IA qui",
           "un score s = a ⋅ m + b, où m est",
           "Le coefficient [TeX] est fixé à 0,8 : [TeX]\n\n Les textes — articles, romans et "
           "notices "
           "— viennent",
           "les articles de presse (environ 40\u00A0%) ; les romans du xixe siècle ;",
           "fait chuter le score. \n\n[TeX]\n\n Cette moyenne",
       })
    EXPECT_NE(interne.find(attendu), std::string::npos) << attendu << "\n---\n" << interne;
  // No markup is left: no command, no brace, no comment, no glossary definition.
  for (const char* absent : {"\\", "{", "}", "à vérifier", "ensemble de textes", "$", "amsmath"})
    EXPECT_EQ(interne.find(absent), std::string::npos) << absent;
  VerifiePhrases(document, {u"La lisibilité d", u"de la longueur des phrases et du choix des mots",
                            u"promettent de la mesurer, mais leurs résultats restent",
                            u"Cette moyenne cache de grands écarts entre les genres."});
}

TEST(ChaineLaTeX, RapportAccentsEnCommandes) {
  const std::u16string document = LitExemple("report-en.tex");
  const std::string interne = InterneLaTeX(document);
  for (const char* attendu : {
           "\n\nField notes\n\n The café on the corner of the Place Vendôme opened at seven.",
           "We met Renée and André there, as planned in the résumé of the last meeting. “It is a "
           "naïve plan,” Renée said, “but it may work.”",
           "from -3 to 12\u2009∘C over the week.",
           "see the archive and Table\u00A0tab:t. Costs rose by 5% and the budget is now $1200.",
           "\n\nand the spread is\n\n",
           "in spring, weather permitting — and budget too.",
       })
    EXPECT_NE(interne.find(attendu), std::string::npos) << attendu << "\n---\n" << interne;
  for (const char* absent : {"\\", "{", "}", "Readings taken", "https", "sigma"})
    EXPECT_EQ(interne.find(absent), std::string::npos) << absent;
  VerifiePhrases(document, {u"opened at seven.", u"there, as planned in the r"});
}

TEST(ChaineLaTeX, JeuDeFiltres) {
  FiltresCorrecteur filtres;
  FiltresCorrecteur::Params params;
  params.Format = eFormatLaTeX;
  filtres.CreeFiltres(params);
  const auto& convertisseurs = filtres.Convertisseurs();
  ASSERT_GE(convertisseurs.size(), 2u);
  EXPECT_NE(dynamic_cast<ConvertisseurCommentairesLaTeX*>(convertisseurs[0].get()), nullptr);
  const auto* latex = dynamic_cast<ConvertisseurLaTeX*>(convertisseurs[1].get());
  ASSERT_NE(latex, nullptr);
  EXPECT_FALSE(latex->accentsDirects);
  EXPECT_TRUE(latex->ConversionInverse);
  ASSERT_GE(filtres.Mappeur().Convertisseurs().size(), 2u);
  EXPECT_EQ(filtres.Mappeur().Convertisseurs()[0], convertisseurs[0].get());
  EXPECT_EQ(filtres.Mappeur().Convertisseurs()[1], convertisseurs[1].get());
  // Other formats build no LaTeX converter.
  FiltresCorrecteur texte;
  params.Format = eFormatTexteBrut;
  texte.CreeFiltres(params);
  for (const auto& c : texte.Convertisseurs()) {
    EXPECT_EQ(dynamic_cast<ConvertisseurLaTeX*>(c.get()), nullptr);
    EXPECT_EQ(dynamic_cast<ConvertisseurCommentairesLaTeX*>(c.get()), nullptr);
  }
}

TEST(ChaineLaTeX, StylesDansLaChaine) {
  const MapChaines<TexteAvecAttributs> resultat =
      ConvertisLaTeX(u"\\emph{a} \\textbf{b} x^2 \\cite{k} \\sout{s}");
  EXPECT_EQ(VersUtf8(resultat.Interne().Chaine().Vue()), "a b x2 k s");
  EXPECT_EQ(DecritStyles(resultat.Interne()), "1 0 2 0 0 4 0 16 0 32");
}

// The command line: format, reports, and a correction going back as the paper spells accents.
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

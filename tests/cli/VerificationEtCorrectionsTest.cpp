// The round trip with checkers: `check` finds words at their line and column in the document,
// `apply` writes corrections back and leaves every other byte alone, `--annotation` splits the
// document into text and markup.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "LignesJson.h"
#include "Outils.h"

namespace {

using json = nlohmann::json;

// The document's text between two UTF-16 offsets, in UTF-8.
std::string Extrait(const std::string& document, uint64_t debut, uint64_t fin) {
  return VersUtf8(Utf16(document).substr(debut, fin - debut));
}

TEST(Verification, MotPlanteALaBonneLigneEtColonne) {
  struct Cas {
    const char* nom;
    std::string options;
    std::string document;
    std::string mot;    // the misspelling in the internal text
    std::string ecrit;  // and as the document writes it
    uint64_t ligne, colonne;
  };
  const Cas kCas[] = {
      {"accent commands", "--format latex",
       "Caf\\'e na\\\"ive.\n\\textbf{Good} r\\'esum\\'e wrold.\n", "wrold", "wrold", 2, 26},
      {"references", "--format html", "<p>r&eacute;sum&eacute;</p>\n<p>&lt;a&gt; wrold</p>\n",
       "wrold", "wrold", 2, 14},
      {"astral characters", "--format text", "\xF0\x9D\x90\x80\xF0\x9D\x90\x80 wrold\n", "wrold",
       "wrold", 1, 4},
      {"CR LF line ends", "--format text", "one\r\ntwo\r\nthree wrold\r\n", "wrold", "wrold", 3, 7},
      {"a misspelling written with an accent command", "--format latex",
       "Good words, then r\\'esumx.\n", "r\xC3\xA9sumx", "r\\'esumx", 1, 18},
  };
  for (const Cas& c : kCas) {
    const FichierTemporaire fichier(c.document);
    const ResultatCommande r = LanceFiltres("check --json " + c.options + " " + fichier.Chemin());
    ASSERT_EQ(r.statut, 1) << c.nom << ": " << r.erreurs;
    // The dictionary may know no accented word: find the planted one among the findings.
    const std::vector<json> trouvailles = LignesJson(r.sortie);
    const auto it =
        std::ranges::find_if(trouvailles, [&](const json& t) { return t["word"] == c.mot; });
    ASSERT_NE(it, trouvailles.end()) << c.nom << ": " << r.sortie;
    const json& t = *it;
    EXPECT_EQ(t["line"], c.ligne) << c.nom;
    EXPECT_EQ(t["column"], c.colonne) << c.nom;
    EXPECT_EQ(Extrait(c.document, t["debut"], t["fin"]), c.ecrit) << c.nom;
    EXPECT_EQ(t["file"], fichier.Chemin());
  }
}

TEST(Verification, FormeTexteStatutsEtPlusieursFichiers) {
  const FichierTemporaire propre("Nothing wrong here.\n");
  const FichierTemporaire fautif("A tset.\n");
  const ResultatCommande ok = LanceFiltres("check " + propre.Chemin());
  EXPECT_EQ(ok.statut, 0) << ok.erreurs;
  EXPECT_EQ(ok.sortie, "");
  // Files in order; the line form editors read; code is never checked.
  const FichierTemporaire code("Run ``xyzzyq`` now, tset.\n");
  const ResultatCommande deux =
      LanceFiltres("check --format markdown " + fautif.Chemin() + " " + code.Chemin());
  EXPECT_EQ(deux.statut, 1);
  const std::string attendu = fautif.Chemin() + ":1:3: tset -> ";
  EXPECT_EQ(deux.sortie.substr(0, attendu.size()), attendu) << deux.sortie;
  EXPECT_NE(deux.sortie.find(code.Chemin() + ":1:21: tset"), std::string::npos) << deux.sortie;
  EXPECT_EQ(deux.sortie.find("xyzzyq"), std::string::npos) << deux.sortie;
  // Errors: one line, status 2.
  for (const std::string& arguments :
       {"check --lang xx_YY " + propre.Chemin(), std::string("check /no/such/file"),
        "check --dict /no/such/dict " + propre.Chemin()}) {
    const ResultatCommande r = LanceFiltres(arguments);
    EXPECT_EQ(r.statut, 2) << arguments;
    EXPECT_EQ(r.erreurs.find('\n'), r.erreurs.size() - 1) << arguments << ": " << r.erreurs;
  }
  EXPECT_NE(LanceFiltres("check --lang xx_YY " + propre.Chemin()).erreurs.find("hunspell-xx-yy"),
            std::string::npos);
}

struct CasApplication {
  const char* nom;
  std::string options;
  std::string document;
  std::string corrections;
  std::string attendu;
  int statut = 0;
};

TEST(Application, ReecritDansLaConventionDuDocument) {
  const CasApplication kCas[] = {
      {"accents as commands, specials escaped", "--format latex", "Un caf\\'e, \\textbf{mot}.\n",
       R"({"debut":9,"fin":12,"texte":"thé & 50%"})", "Un caf\\'e, \\textbf{th\\'e \\& 50\\%}.\n"},
      {"accents written directly", "--format latex", "Un café, mot.\n",
       R"({"debut":9,"fin":12,"texte":"été"})", "Un café, été.\n"},
      {"references", "--format html", "<p>caf&eacute; <b>mot</b></p>",
       R"({"debut":6,"fin":9,"texte":"thé <x>"})",
       "<p>caf&eacute; <b>th&eacute; &lt;x&gt;</b></p>"},
      {"raw characters", "--format html", "<p>café mot</p>", R"({"debut":6,"fin":9,"texte":"thé"})",
       "<p>café thé</p>"},
      // Any order; the rest of the document, CR LF and byte-order mark included, is untouched.
      {"several, CR LF and BOM", "--format text",
       "\xEF\xBB\xBF"
       "ab cd\r\nef\r\n",
       "{\"debut\":7,\"fin\":9,\"texte\":\"EF\"}\n{\"debut\":0,\"fin\":2,\"texte\":\"AB\"}",
       "\xEF\xBB\xBF"
       "AB cd\r\nEF\r\n"},
      // Half of an accent command, a tag inside the stretch, overlaps: refused; others apply.
      {"refusals", "--format html", "<p>a <b>b</b> &#x1D400; z</p>",
       "{\"debut\":0,\"fin\":2,\"texte\":\"x\"}\n{\"debut\":5,\"fin\":6,\"texte\":\"e\"}\n"
       "{\"debut\":8,\"fin\":9,\"texte\":\"Z\"}\n{\"debut\":8,\"fin\":9,\"texte\":\"Y\"}",
       "<p>a <b>b</b> &#x1D400; Z</p>", 1},
  };
  for (const CasApplication& c : kCas) {
    const FichierTemporaire document(c.document), corrections(c.corrections);
    const ResultatCommande r = LanceFiltres("apply --corrections " + corrections.Chemin() + " " +
                                            c.options + " " + document.Chemin());
    EXPECT_EQ(r.statut, c.statut) << c.nom << ": " << r.erreurs;
    EXPECT_EQ(r.sortie, c.attendu) << c.nom;
  }
}

TEST(Application, RefusNommeLaPositionSurUneLigne) {
  const FichierTemporaire document("<p>a<b>b</b></p>"),
      corrections(R"({"debut":1,"fin":3,"texte":"x"})");
  const ResultatCommande r = LanceFiltres("apply --format html --corrections " +
                                          corrections.Chemin() + " " + document.Chemin());
  EXPECT_EQ(r.statut, 1);
  EXPECT_NE(r.erreurs.find("correction [1,3) would overwrite markup at document offset 4"),
            std::string::npos)
      << r.erreurs;
  const FichierTemporaire mauvaises("{\"debut\":1}\n");
  EXPECT_EQ(
      LanceFiltres("apply --corrections " + mauvaises.Chemin() + " " + document.Chemin()).statut,
      2);
}

// On real documents: a correction applied, then a fresh run gives the corrected internal text,
// and the bytes around the corrected word are the document's own.
TEST(ApplicationLent, AllerRetourSurLeCorpus) {
  const std::string corpus = FILTRES_CORPUS;
  if (!std::filesystem::is_directory(corpus)) GTEST_SKIP() << "no corpus at " << corpus;
  for (const char* nom : {"/latex/lshort-typeset.tex", "/html/python-tutorial-classes.html",
                          "/markdown/commander-README.md", "/srt/moby-dick-generated-crlf.srt"}) {
    const std::string chemin = corpus + nom;
    const std::string original = LitFichier(chemin);
    const std::u16string texte =
        Utf16(json::parse(LanceFiltres("--json " + std::string(chemin)).sortie)["text"]
                  .get<std::string>());
    // The first " the " of the text, well inside: a word every format keeps as prose.
    const size_t mot = texte.find(u" the ", texte.size() / 2) + 1;
    ASSERT_NE(mot, std::u16string::npos + 1) << nom;
    const FichierTemporaire corrections("{\"debut\":" + std::to_string(mot) + ",\"fin\":" +
                                        std::to_string(mot + 3) + ",\"texte\":\"THE\"}");
    const ResultatCommande applique =
        LanceFiltres("apply --corrections " + corrections.Chemin() + " " + chemin);
    ASSERT_EQ(applique.statut, 0) << nom << ": " << applique.erreurs;
    const FichierTemporaire corrige(applique.sortie);
    const std::u16string apres = Utf16(
        json::parse(LanceFiltres("--json " + corrige.Chemin()).sortie)["text"].get<std::string>());
    std::u16string attendu = texte;
    attendu.replace(mot, 3, u"THE");
    EXPECT_EQ(apres == attendu, true) << nom;
    // Exactly three bytes differ, in one place.
    ASSERT_EQ(applique.sortie.size(), original.size()) << nom;
    size_t differents = 0;
    for (size_t i = 0; i < original.size(); ++i) differents += original[i] != applique.sortie[i];
    EXPECT_EQ(differents, 3u) << nom;
  }
}

TEST(Annotation, LesDeuxConcatenations) {
  const std::vector<std::pair<std::string, std::string>> kDocuments = {
      {"--format latex", "Un caf\\'e \\textbf{gras} $x$ % note\n\nfin\n"},
      {"--format html", "<p>a&amp;b <i>c</i></p><script>x</script>"},
      {"--format markdown", "# T\n\n*a* [b](c) `d`\n"},
      {"--exact --format srt", "1\r\n00:00:01,000 --> 00:00:02,000\r\n<i>Hi</i>\r\n"},
  };
  for (const auto& [options, document] : kDocuments) {
    const FichierTemporaire fichier(document);
    const ResultatCommande annote =
        LanceFiltres("--annotation " + options + " " + fichier.Chemin());
    ASSERT_EQ(annote.statut, 0) << annote.erreurs;
    std::string externe, interne;
    const json annotation = json::parse(annote.sortie);
    for (const json& element : annotation["annotation"]) {
      if (element.contains("text")) {
        externe += element["text"].get<std::string>();
        interne += element["text"].get<std::string>();
      } else {
        externe += element["markup"].get<std::string>();
        interne += element["interpretAs"].get<std::string>();
      }
    }
    EXPECT_EQ(externe, document) << options;
    const json exact =
        json::parse(LanceFiltres("--json " + options + " " + fichier.Chemin()).sortie);
    EXPECT_EQ(interne, exact["text"].get<std::string>()) << options;
  }
}

}  // namespace

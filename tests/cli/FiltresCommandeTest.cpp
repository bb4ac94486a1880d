// The `filtres` command, run as a user runs it: output, JSON, encodings and exit statuses.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "Outils.h"

namespace {

using nlohmann::json;

// The segments partition both texts, in order.
void VerifieMap(const json& resultat, const std::u16string& document) {
  const std::u16string texte = Utf16(resultat["text"].get<std::string>());
  size_t interne = 0, externe = 0;
  for (const json& s : resultat["map"]) {
    ASSERT_EQ(s["interne"][0], interne);
    ASSERT_EQ(s["externe"][0], externe);
    interne = s["interne"][1], externe = s["externe"][1];
    ASSERT_LE(s["interne"][0].get<size_t>(), interne);
    ASSERT_LE(s["externe"][0].get<size_t>(), externe);
  }
  EXPECT_EQ(interne, texte.size());
  EXPECT_EQ(externe, document.size());
}

TEST(Commande, TexteBrutAvecBalisesEnJson) {
  const ResultatCommande r =
      LanceFiltres("--exact --format text --json --tag '<<' '>>'", "a\nb <<x>> c\n");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  const json resultat = json::parse(r.sortie);
  EXPECT_EQ(resultat["format"], "text");
  EXPECT_EQ(resultat["text"], "a\nb  c\n");
  EXPECT_EQ(resultat["styles"], json::array());
  EXPECT_EQ(resultat["map"], json::parse(R"([
      {"interne":[0,4],"externe":[0,4],"remplacable":0,"special":0},
      {"interne":[4,4],"externe":[4,9],"remplacable":0,"special":0},
      {"interne":[4,7],"externe":[9,12],"remplacable":0,"special":0}])"));
  VerifieMap(resultat, u"a\nb <<x>> c\n");
}

TEST(Commande, RapportsEnLignesJson) {
  const ResultatCommande r =
      LanceFiltres("reports --exact --converter tag-pairs --tag '<' '>'", "a<b>c<d>");
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(
      r.sortie,
      "{\"op\":\"remplace\",\"debut\":1,\"fin\":4,\"texte\":\"\",\"special\":0,\"remplacable\":0}\n"
      "{\"op\":\"remplace\",\"debut\":5,\"fin\":8,\"texte\":\"\",\"special\":0,\"remplacable\":0}"
      "\n");
  EXPECT_EQ(LanceFiltres("reports --exact --converter initial", "a<b>").sortie, "");
  EXPECT_EQ(LanceFiltres("reports --exact --converter html", "<em>x</em>").sortie.substr(0, 44),
            "{\"op\":\"marque\",\"debut\":4,\"fin\":5,\"style\":1}\n");
  EXPECT_EQ(LanceFiltres("detect", "a few words").sortie, "text\n");
  const ResultatCommande inverse =
      LanceFiltres("reports --exact --converter tag-pairs --inverse --tag '<' '>'", "a<b>");
  EXPECT_EQ(inverse.statut, 0);
  EXPECT_EQ(inverse.sortie, "");  // the tag pairs have nothing to write back
  // A page read first sets the way back: raw characters stay raw after a page that has them.
  const FichierTemporaire page("<p>crème brûlée, &eacute;</p>");
  EXPECT_EQ(LanceFiltres(
                "reports --exact --converter html --inverse --after " + page.Chemin() + " -", "é&")
                .sortie,
            "{\"op\":\"remplace\",\"debut\":1,\"fin\":2,\"texte\":\"&amp;\",\"special\":0,"
            "\"remplacable\":1}\n");
}

struct CasCodage {
  const char* nom;
  std::string arguments;
  std::string octets;
  std::string texte;  // expected "text" field, UTF-8
};

TEST(Commande, CodagesDEntree) {
  const CasCodage kCas[] = {
      {"UTF-8", "", "caf\xC3\xA9", "café"},
      {"UTF-8 with a byte-order mark", "",
       "\xEF\xBB\xBF"
       "caf\xC3\xA9",
       "café"},
      {"UTF-16 little-endian", "",
       std::string("\xFF\xFE"
                   "c\0a\0f\0\xE9\0",
                   10),
       "café"},
      {"UTF-16 big-endian", "", std::string("\xFE\xFF\0c\0a\0f\0\xE9", 10), "café"},
      {"named encoding", "--encoding ISO-8859-1", "caf\xE9", "café"},
      {"supplementary character", "", "\xF0\x9D\x84\x9E", "\xF0\x9D\x84\x9E"},
  };
  for (const CasCodage& c : kCas) {
    const ResultatCommande r = LanceFiltres("--exact --json " + c.arguments, c.octets);
    ASSERT_EQ(r.statut, 0) << c.nom << ": " << r.erreurs;
    EXPECT_EQ(json::parse(r.sortie)["text"], c.texte) << c.nom;
  }
}

TEST(Commande, SurrogatSeulEchappeEnJson) {
  // UTF-16 may hold an unpaired surrogate; JSON carries it as an escape, and the map counts it.
  const ResultatCommande r =
      LanceFiltres("--exact --json --tag '<' '>'", std::string("\xFF\xFE"
                                                               "a\0\x00\xD8<\0>\0",
                                                               10));
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_NE(r.sortie.find("\"text\":\"a\\ud800\""), std::string::npos) << r.sortie;
  EXPECT_NE(r.sortie.find("\"externe\":[2,4]"), std::string::npos) << r.sortie;
}

// The text and JSON outputs are written in blocks: a long document, with a pair of surrogates
// and escapes on the block boundaries, controls and two- and three-byte characters among
// printable ASCII, comes out whole.
TEST(Commande, LongDocumentSortiEntier) {
  std::string document;
  while (document.size() < 3'000'000) {
    document.append(65535 - document.size() % 65536, 'a');  // the next character on a boundary
    document += "\xF0\x9D\x84\x9E\"\\\t\x01\x7F é€ abcdefgh";
  }
  const ResultatCommande texte = LanceFiltres("--exact --format text", document);
  ASSERT_EQ(texte.statut, 0) << texte.erreurs;
  EXPECT_TRUE(texte.sortie == document);
  const ResultatCommande r = LanceFiltres("--exact --format text --json", document);
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_TRUE(json::parse(r.sortie)["text"].get<std::string>() == document);

  // The readable text is encoded as it is made, 65,536 units at a time: a pair whose high unit
  // ends a block stays whole.
  std::string prose;
  for (size_t unites = 0; unites < 1'500'000;) {
    const size_t bourrage = 65535 - unites % 65536;
    prose.append(bourrage, 'a');
    prose += "\xF0\x9D\x84\x9E \xC3\xA9 words ";  // 𝄞, é: 2 + 1 + 1 + 1 + 7 units
    unites += bourrage + 12;
  }
  EXPECT_TRUE(LanceFiltres("--format text", prose).sortie == prose);
}

// JSON strings are written eight units at a time: a unit that needs an escape or more than one
// byte, at each place in a block and after each length of plain ASCII, comes out as it was.
TEST(Commande, ChaqueEchappementAChaquePlace) {
  std::string document;
  for (const std::string special :
       {"\"", "\\", "\t", "\x01", "\x7F", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9D\x84\x9E"})
    for (size_t avant = 0; avant < 18; ++avant)
      document += std::string(avant, 'a') + special + std::string(17 - avant, 'b') + " ";
  const ResultatCommande r = LanceFiltres("--exact --format text --json", document);
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  EXPECT_EQ(json::parse(r.sortie)["text"].get<std::string>(), document);
}

// A map of many pieces is formatted on two threads and written in order: the segments still
// partition both texts, piece after piece, and every style run is there.
TEST(Commande, GrandeMapEcriteEnParallele) {
  std::string document;
  for (int i = 0; i < 60000; ++i) document += "**mot** " + std::to_string(i) + "\n";
  const ResultatCommande r = LanceFiltres("--exact --format markdown --json", document);
  ASSERT_EQ(r.statut, 0) << r.erreurs;
  const json resultat = json::parse(r.sortie);
  EXPECT_GT(resultat["map"].size(), 100'000u);
  VerifieMap(resultat, Utf16(document));
  // Every bold word has its style run, and only those.
  const std::u16string texte = Utf16(resultat["text"].get<std::string>());
  ASSERT_EQ(resultat["styles"].size(), 60000u);
  for (const json& style : resultat["styles"]) {
    const size_t debut = style["debut"], fin = style["fin"];
    ASSERT_EQ(texte.substr(debut, fin - debut), u"mot") << style.dump();
    ASSERT_EQ(style["style"], resultat["styles"][0]["style"]);
  }
}

// A document whose size alone says it is too long for 32-bit positions is refused at once, with
// no attempt to read it (the file is sparse: it takes no room on disk).
TEST(Commande, DocumentTropLongRefuse) {
  const std::string chemin = ::testing::TempDir() + "filtres-trop-long.txt";
  {
    std::ofstream fichier(chemin, std::ios::binary);
    fichier.seekp(int64_t{4} * (int64_t{UINT32_MAX} + 1));
    fichier.put('a');
  }
  const ResultatCommande r = LanceFiltres("--exact " + chemin);
  std::remove(chemin.c_str());
  EXPECT_EQ(r.statut, 2);
  EXPECT_NE(r.erreurs.find("too long"), std::string::npos) << r.erreurs;
  EXPECT_EQ(r.sortie, "");
}

struct CasErreur {
  const char* nom;
  std::string arguments;
  std::string entree;
  std::string message;  // expected inside the one line on standard error
};

TEST(Commande, DeclarationsLaTeX) {
  const std::string document =
      "See \\myref{k:1}{there}.\n\\begin{thm}{Name} "
      "x\\end{thm}\n\\begin{code}\n{%\n\\end{code}\nEnd.";
  EXPECT_EQ(LanceFiltres("--format latex --latex-command \\\\myref:nk --latex-environment thm:k "
                         "--latex-verbatim code",
                         document)
                .sortie,
            "See there. \n\nName x\n\n \n\n\n\n End.");
  EXPECT_EQ(LanceFiltres("--format latex", document).sortie, "See . \n\n x\n\n \n\n  \n\n End.");
}

TEST(Commande, ErreursSurUneLigneEtStatut2) {
  const CasErreur kCas[] = {
      {"invalid UTF-8", "", "ab\xC3(", "<stdin>: invalid UTF-8 at byte 2"},
      {"after a byte-order mark, offsets count from the file's start", "",
       "\xEF\xBB\xBF"
       "a\xC0\xAF",
       "invalid UTF-8 at byte 4"},
      {"invalid in a named encoding", "--encoding UTF-8", "ab\xFF", "invalid UTF-8 at byte 2"},
      {"unknown encoding", "--encoding no-such-encoding", "a",
       "unknown encoding 'no-such-encoding'"},
      {"truncated UTF-16", "",
       "\xFF\xFE"
       "a",
       "truncated UTF-16"},
      {"missing file", "/no/such/file.txt", "", "/no/such/file.txt: cannot open the file"},
      {"unknown format", "--format rtf", "", "--format"},
      {"unknown option", "--no-such-option", "", "no-such-option"},
      {"unknown converter", "reports --converter rtf", "", "--converter"},
      {"reports without a converter", "reports", "", "--converter"},
      {"LaTeX declaration without letters", "--latex-command myref", "", "NAME:ARGUMENTS"},
      {"LaTeX declaration, bad letter", "--latex-command myref:kx", "", "one letter an argument"},
      {"LaTeX declaration, bad name", "--latex-environment 'a b:k'", "", "ASCII letters"},
      {"verbatim with letters", "--latex-verbatim code:k", "", "bare name"},
  };
  for (const CasErreur& c : kCas) {
    const ResultatCommande r = LanceFiltres(c.arguments, c.entree);
    EXPECT_EQ(r.statut, 2) << c.nom;
    EXPECT_EQ(r.sortie, "") << c.nom << ": nothing on standard output";
    EXPECT_NE(r.erreurs.find(c.message), std::string::npos) << c.nom << ": " << r.erreurs;
    EXPECT_EQ(r.erreurs.find('\n'), r.erreurs.size() - 1) << c.nom << ": one line";
  }
  EXPECT_EQ(LanceFiltres("--help").statut, 0);
}

}  // namespace

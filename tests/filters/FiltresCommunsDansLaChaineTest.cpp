// The common filters and the SRT converter inside the filter set and the command: a chain run
// twice, and the command's options.
#include <gtest/gtest.h>

#include "ModeleDeChaine.h"
#include "Outils.h"
#include "framework/FiltresCorrecteur.h"

namespace {

// A host that keeps its filter set runs it over document after document.
TEST(FiltresCommuns, LaMemeChaineDeuxFoisSurLeMemeTexte) {
  FiltresCorrecteur::Params params;
  params.Format = eFormatSRT;
  params.Courriel = true;
  params.ChainesExclues.Ajoute(UniChaine(u"Acme\nCorp"));
  params.ChainesExcluesCourriel.Ajoute(UniChaine(u" cordialement "));
  params.BalisesOuvrantes.Ajoute(ChaineN(u"[["));
  params.BalisesFermantes.Ajoute(ChaineN(u"]]"));
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  const ChaineN document(
      u"1\r\n00:00:01,000 --> 00:00:02,000\r\n> <i>Chez Acme\r\nCorp</i> [[x]]\r\n\r\n"
      u"2\r\n00:00:03,000 --> 00:00:04,000\r\nCORDIALEMENT, Jean\r\n");
  const auto premier = filtres.Mappeur().Convertis(document);
  EXPECT_EQ(VersUtf8(premier.Interne().Chaine().Vue()), " Chez  \r\n, Jean\r\n");
  for (int fois = 0; fois < 2; ++fois) {
    const auto encore = filtres.Mappeur().Convertis(document);
    EXPECT_EQ(encore.Interne().Chaine(), premier.Interne().Chaine());
    EXPECT_EQ(DecritMap(encore.Segments()), DecritMap(premier.Segments()));
    EXPECT_EQ(DecritStyles(encore.Interne()), DecritStyles(premier.Interne()));
  }
  EXPECT_EQ(params.ChainesExclues.Nombre(), 2u);
}

TEST(FiltresCommuns, Commande) {
  const std::string srt =
      "1\n00:00:01,000 --> 00:00:02,000\n<i>Bonjour</i> ACME\n\n"
      "2\n00:00:03,000 --> 00:00:04,000\n> Au revoir\n";
  struct Cas {
    std::string arguments;
    std::string attendu;
  } const kCas[] = {
      {"--exact --format srt", "Bonjour ACME\n> Au revoir\n"},
      {"--exact --format srt --exclude ACME --email", "Bonjour \n Au revoir\n"},
      {"--exact --format srt --email --quoted-lines --parallel", "Bonjour ACME\n\n"},
      {"--exact --format srt --email --email-exclude acme", "Bonjour \n Au revoir\n"},
  };
  for (const Cas& c : kCas) {
    const ResultatCommande resultat = LanceFiltres(c.arguments, srt);
    EXPECT_EQ(resultat.statut, 0) << c.arguments << ": " << resultat.erreurs;
    EXPECT_EQ(resultat.sortie, c.attendu) << c.arguments;
  }
}

}  // namespace

// Whole pages through the filter set: the internal text of the sample pages, and the reports and
// the text of the real pages of the corpus.
#include <gtest/gtest.h>

#include <filesystem>

#include "DecritRapports.h"
#include "ModeleDeChaine.h"
#include "Outils.h"
#include "framework/FiltresCorrecteur.h"
#include "html/ConvertisseurHTML.h"

namespace {

using Resultat = MapChaines<TexteAvecAttributs>;

Resultat FiltrePage(const ChaineN& page) {
  FiltresCorrecteur::Params params;
  params.Format = eFormatHTML;
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  return filtres.Mappeur().Convertis(page);
}

// Every unit the map calls unchanged is the same unit in the page.
void VerifieSegmentsIdentite(const Resultat& resultat) {
  const ChaineN& interne = resultat.Interne().Chaine();
  const ChaineN& externe = resultat.Externe();
  for (const SegmentDeMap& s : resultat.Segments()) {
    if (!s.Identite) continue;
    ASSERT_EQ(s.FinInterne - s.DebutInterne, s.FinExterne - s.DebutExterne);
    EXPECT_EQ(interne.SousChaine(s.DebutInterne, s.FinInterne - s.DebutInterne),
              externe.SousChaine(s.DebutExterne, s.FinExterne - s.DebutExterne));
  }
}

TEST(ExemplesHTML, PagesDExemple) {
  for (const char* nom : {"article", "recette"}) {
    const std::string racine = FILTRES_RACINE;
    const ChaineN page = ChaineN::DepuisUtf8(LitFichier(racine + "/examples/" + nom + ".html"));
    const std::string attendu = LitFichier(racine + "/tests/html/attendus/" + nom + ".txt");
    const Resultat resultat = FiltrePage(page);
    EXPECT_EQ(resultat.Interne().Chaine().VersUtf8(), attendu) << nom;
    VerifieSegmentsIdentite(resultat);

    // The chain applies the converter's reports as the brute-force model does.
    ConvertisseurHTML convertisseur;
    const std::vector<Rapport> rapports = CollecteRapports(convertisseur, page.Vue());
    EXPECT_EQ(VersUtf8(AppliqueRapportsNaif(page.Vue(), {}, rapports).texte),
              resultat.Interne().Chaine().VersUtf8())
        << nom;
  }
}

TEST(ExemplesHTML, PagesDuCorpus) {
  const std::filesystem::path dossier = std::filesystem::path(FILTRES_CORPUS) / "html";
  if (!std::filesystem::is_directory(dossier)) GTEST_SKIP() << "no corpus at " << dossier;
  for (const auto& entree : std::filesystem::directory_iterator(dossier)) {
    const ChaineN page = ChaineN::DepuisUtf8(LitFichier(entree.path().string()));
    ConvertisseurHTML convertisseur;
    const std::vector<Rapport> rapports = CollecteRapports(convertisseur, page.Vue());
    for (const Rapport& r : rapports)
      ASSERT_TRUE(r.intervalle.Debut <= r.intervalle.Fin && r.intervalle.Fin <= page.Longueur())
          << entree.path() << " " << DecritRapports({r});
    // Scripts, styles, comments and tags leave nothing behind in real pages.
    const std::string texte = FiltrePage(page).Interne().Chaine().VersUtf8();
    for (const char* reste : {"<script", "<style", "<!--", "<div", "</p>", "<span", "<td"})
      EXPECT_EQ(texte.find(reste), std::string::npos) << entree.path() << " holds " << reste;
  }
}

}  // namespace

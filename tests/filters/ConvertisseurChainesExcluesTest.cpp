// ConvertisseurChainesExclues: occurrences and merging, the e-mail strings, line ends, the edits
// of the caller's lists from one run to the next, and the parallel search.
#include "filters/ConvertisseurChainesExclues.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "DecritRapports.h"
#include "Outils.h"

namespace {

ListeT<UniChaine> Liste(std::initializer_list<std::u16string_view> chaines) {
  ListeT<UniChaine> liste;
  for (std::u16string_view c : chaines) liste.Ajoute(UniChaine(ChaineN(c)));
  return liste;
}

std::vector<std::u16string> Contenu(const ListeT<UniChaine>& liste) {
  std::vector<std::u16string> contenu;
  for (const UniChaine& c : liste) contenu.push_back(c.T().Texte());
  return contenu;
}

struct Cas {
  std::u16string_view texte;
  std::initializer_list<std::u16string_view> exclues;
  std::initializer_list<std::u16string_view> courriel;
  bool estCourriel;
  std::string_view attendu;
};

std::string Rapports(const Cas& c) {
  ListeT<UniChaine> exclues = Liste(c.exclues), courriel = Liste(c.courriel);
  ConvertisseurChainesExclues convertisseur(exclues, courriel, c.estCourriel, false);
  return DecritRapports(convertisseur, c.texte);
}

TEST(ConvertisseurChainesExclues, OccurrencesFusionnees) {
  static const Cas kCas[] = {
      {u"un ACME deux ACME", {u"ACME"}, {}, false, "R[3,7)''{0,0} R[13,17)''{0,0}"},
      {u"abcdef", {u"abc", u"cde"}, {}, false, "R[0,5)''{0,0}"},    // overlapping strings
      {u"abcdef", {u"def", u"abc"}, {}, false, "R[0,6)''{0,0}"},    // touching, either order
      {u"xababy", {u"ab"}, {}, false, "R[1,5)''{0,0}"},             // the string twice in a row
      {u"aaa", {u"aa"}, {}, false, "R[0,2)''{0,0}"},                // one string never overlaps itself
      {u"aaaa", {u"aa", u"aaa"}, {}, false, "R[0,4)''{0,0}"},
      {u"ab", {u"abc"}, {}, false, ""},                             // longer than the text
      {u"ab", {u"", u"b"}, {}, false, "R[1,2)''{0,0}"},             // an empty string masks nothing
      {u"Acme acme", {u"acme"}, {}, false, "R[5,9)''{0,0}"},        // the user's strings are exact
      {u"", {u"a"}, {u"b"}, true, ""},
      {u"a\U0001D11Eb", {u"\U0001D11E"}, {}, false, "R[1,3)''{0,0}"},  // code units, not characters
  };
  for (const Cas& c : kCas) EXPECT_EQ(Rapports(c), c.attendu) << VersUtf8(c.texte);
}

TEST(ConvertisseurChainesExclues, ChainesDuCourriel) {
  static const Cas kCas[] = {
      // Cleaned of blanks, then compared ignoring case and accents.
      {u"Voir ELAN  Vital, élan vital.", {}, {u"  élan \t vital "}, true,
       "R[18,28)''{0,0}"},
      {u"Voir élan vital, Élan Vital.", {}, {u"elan vital"}, true,
       "R[5,15)''{0,0} R[17,27)''{0,0}"},
      // Not an e-mail: the second list plays no part.
      {u"élan vital", {}, {u"elan vital"}, false, ""},
      // The main list stays exact beside it.
      {u"Foo foo BAR", {u"Foo"}, {u"bar"}, true, "R[0,3)''{0,0} R[8,11)''{0,0}"},
      // A string made of blanks cleans to nothing.
      {u"a b", {}, {u" \t "}, true, ""},
  };
  for (const Cas& c : kCas) EXPECT_EQ(Rapports(c), c.attendu) << VersUtf8(c.texte);
}

TEST(ConvertisseurChainesExclues, FinsDeLigne) {
  static const Cas kCas[] = {
      // A line feed of a string stands for the text's carriage return and line feed.
      {u"x fin\r\nde ligne", {u"fin\nde"}, {}, false, "R[2,9)''{0,0}"},
      // A text without "\r\n" leaves the strings alone.
      {u"x fin\nde\rligne", {u"fin\nde"}, {}, false, "R[2,8)''{0,0}"},
      {u"x fin\nde\r\n", {u"fin\nde"}, {}, false, ""},
      // A carriage return alone in a string is not touched.
      {u"a\rb\r\n", {u"a\rb"}, {}, false, "R[0,3)''{0,0}"},
  };
  for (const Cas& c : kCas) EXPECT_EQ(Rapports(c), c.attendu) << VersUtf8(c.texte);
}

TEST(ConvertisseurChainesExclues, EditionDesListesDeLAppelant) {
  ListeT<UniChaine> exclues = Liste({u"a\nb", u"c"}), courriel = Liste({u" x  y "});
  ConvertisseurChainesExclues convertisseur(exclues, courriel, true, false);
  EXPECT_EQ(DecritRapports(convertisseur, u"a\r\nb X Y"), "R[0,4)''{0,0} R[5,8)''{0,0}");
  EXPECT_EQ(Contenu(exclues), (std::vector<std::u16string>{u"a\r\nb", u"c", u"x y"}));
  EXPECT_EQ(Contenu(courriel), (std::vector<std::u16string>{u"x y"}));
}

TEST(ConvertisseurChainesExclues, ListeVideSansCourrielNeTouchePasLesListes) {
  ListeT<UniChaine> exclues, courriel = Liste({u" a "});
  ConvertisseurChainesExclues convertisseur(exclues, courriel, false, false);
  EXPECT_EQ(DecritRapports(convertisseur, u"a a"), "");
  EXPECT_TRUE(exclues.EstVide());
  EXPECT_EQ(Contenu(courriel), (std::vector<std::u16string>{u" a "}));
  // Nothing to report: empty callables are never touched.
  EXPECT_NO_THROW(convertisseur.ConvertisExterneAInterne(TexteAvecAttributs(ChaineN(u"a a")), {}, {}));
}

// The same chain run twice over the same text must give the same result, and the lists must not
// grow or drift from one run to the next.
TEST(ConvertisseurChainesExclues, UneSecondeExecutionDonneLeMemeResultat) {
  ListeT<UniChaine> exclues = Liste({u"un\ndeux", u"trois"}), courriel = Liste({u"Quatre"});
  ConvertisseurChainesExclues convertisseur(exclues, courriel, true, false);
  const std::u16string_view texte = u"un\r\ndeux trois QUATRE quatre";
  const std::string premier = DecritRapports(convertisseur, texte);
  EXPECT_EQ(premier, "R[0,8)''{0,0} R[9,14)''{0,0} R[15,21)''{0,0} R[22,28)''{0,0}");
  const auto listes = Contenu(exclues);
  for (int run = 0; run < 3; ++run) {
    EXPECT_EQ(DecritRapports(convertisseur, texte), premier);
    EXPECT_EQ(Contenu(exclues), listes);
  }
  // A copy shares the lists and does not append again either.
  ConvertisseurChainesExclues copie(convertisseur);
  EXPECT_EQ(DecritRapports(copie, texte), premier);
  EXPECT_EQ(Contenu(exclues), listes);
}

TEST(ConvertisseurChainesExclues, ListesChangeesEntreDeuxExecutions) {
  ListeT<UniChaine> exclues = Liste({u"a\nb"}), courriel = Liste({u"z"});
  ConvertisseurChainesExclues convertisseur(exclues, courriel, true, false);
  DecritRapports(convertisseur, u"a\r\nb z");
  // The host puts a new string where the rewritten one was, and adds an e-mail string.
  exclues[0] = UniChaine(ChaineN(u"c\nd"));
  courriel.Ajoute(UniChaine(ChaineN(u"Y")));
  EXPECT_EQ(DecritRapports(convertisseur, u"c\r\nd y z"),
            "R[0,4)''{0,0} R[5,6)''{0,0} R[7,8)''{0,0}");
  EXPECT_EQ(Contenu(exclues), (std::vector<std::u16string>{u"c\r\nd", u"z", u"z", u"Y"}));
}

TEST(ConvertisseurChainesExclues, RemplaceVideApresLaRecherche) {
  ListeT<UniChaine> exclues = Liste({u"a"}), courriel;
  ConvertisseurChainesExclues convertisseur(exclues, courriel, false, false);
  EXPECT_THROW(convertisseur.ConvertisExterneAInterne(TexteAvecAttributs(ChaineN(u"bab")), {}, {}),
               std::bad_function_call);
}

TEST(ConvertisseurChainesExclues, FusionDEnsembles) {
  using E = ConvertisseurChainesExclues::EnsembleDIntervalles;
  const E a{{0, 2}, {10, 12}, {20, 25}}, b{{2, 4}, {11, 13}, {30, 31}}, c{{5, 6}, {19, 26}}, vide;
  const E fusion = ConvertisseurChainesExclues::Fusionne({&a, &vide, &b, &c});
  EXPECT_EQ(fusion, (E{{0, 4}, {5, 6}, {10, 13}, {19, 26}, {30, 31}}));
  EXPECT_TRUE(ConvertisseurChainesExclues::Fusionne({&vide}).empty());
}

// A long text (past the parallel threshold) and many strings, some frequent, some overlapping
// one another, some absent, some compared ignoring case and accents.
struct GrandCas {
  ChaineN texte;
  std::vector<std::u16string> exclues, courriel;
};

GrandCas FabriqueGrandCas() {
  static constexpr std::u16string_view kMots[] = {
      u"le", u"filtre", u"Garde", u"la", u"prose", u"élan", u"ÉLAN", u"et", u"retire",
      u"balisage", u"\r\n", u"ab", u"aba", u"b", u"x"};
  std::mt19937 alea(7);
  std::u16string texte;
  while (texte.size() <= ConvertisseurChainesExclues::kLongueurMinimaleParallele + 5000) {
    texte += kMots[alea() % std::size(kMots)];
    texte += alea() % 3 ? u" " : u"";
  }
  GrandCas cas{ChaineN(std::move(texte)), {}, {}};
  for (int k = 0; k < 40; ++k) {
    std::u16string chaine;
    for (unsigned mots = 1 + alea() % 3; mots > 0; --mots) chaine += kMots[alea() % std::size(kMots)];
    (k % 4 == 0 ? cas.courriel : cas.exclues).push_back(chaine);
  }
  cas.exclues.push_back(u"absent de ce texte");
  cas.exclues.push_back(u"la\nprose");
  return cas;
}

std::vector<Rapport> RapportsDuGrandCas(const GrandCas& cas, bool parallele) {
  ListeT<UniChaine> exclues, courriel;
  for (const auto& c : cas.exclues) exclues.Ajoute(UniChaine(ChaineN(c)));
  for (const auto& c : cas.courriel) courriel.Ajoute(UniChaine(ChaineN(c)));
  ConvertisseurChainesExclues convertisseur(exclues, courriel, true, parallele);
  return CollecteRapports(convertisseur, cas.texte.Vue());
}

TEST(ConvertisseurChainesExclues, RechercheParalleleIdentiqueALaSequentielle) {
  const GrandCas cas = FabriqueGrandCas();
  const std::vector<Rapport> sequentiel = RapportsDuGrandCas(cas, false);
  ASSERT_GT(sequentiel.size(), 1000u);
  const std::vector<Rapport> parallele = RapportsDuGrandCas(cas, true);
  ASSERT_EQ(parallele.size(), sequentiel.size());
  EXPECT_EQ(DecritRapports(parallele), DecritRapports(sequentiel));
  // In increasing order, disjoint and never touching.
  for (size_t k = 1; k < sequentiel.size(); ++k)
    ASSERT_LT(sequentiel[k - 1].intervalle.Fin, sequentiel[k].intervalle.Debut);
}

}  // namespace

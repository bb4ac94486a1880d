// ConvertisseurChainesExclues: occurrences and merging, the e-mail strings, line ends, the edits
// of the caller's lists from one run to the next, and the parallel search.
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include "DecritRapports.h"
#include "Outils.h"
#include "filters/ConvertisseurChainesExclues.h"

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
      {u"abcdef", {u"abc", u"cde"}, {}, false, "R[0,5)''{0,0}"},  // overlapping strings
      {u"abcdef", {u"def", u"abc"}, {}, false, "R[0,6)''{0,0}"},  // touching, either order
      {u"xababy", {u"ab"}, {}, false, "R[1,5)''{0,0}"},           // the string twice in a row
      {u"aaa", {u"aa"}, {}, false, "R[0,2)''{0,0}"},  // one string never overlaps itself
      {u"aaaa", {u"aa", u"aaa"}, {}, false, "R[0,4)''{0,0}"},
      {u"ab", {u"abc"}, {}, false, ""},                       // longer than the text
      {u"ab", {u"", u"b"}, {}, false, "R[1,2)''{0,0}"},       // an empty string masks nothing
      {u"Acme acme", {u"acme"}, {}, false, "R[5,9)''{0,0}"},  // the user's strings are exact
      {u"", {u"a"}, {u"b"}, true, ""},
      {u"a\U0001D11Eb", {u"\U0001D11E"}, {}, false, "R[1,3)''{0,0}"},  // code units, not characters
  };
  for (const Cas& c : kCas) EXPECT_EQ(Rapports(c), c.attendu) << VersUtf8(c.texte);
}

TEST(ConvertisseurChainesExclues, ChainesDuCourriel) {
  static const Cas kCas[] = {
      // Cleaned of blanks, then compared ignoring case and accents.
      {u"Voir ELAN  Vital, élan vital.", {}, {u"  élan \t vital "}, true, "R[18,28)''{0,0}"},
      {u"Voir élan vital, Élan Vital.",
       {},
       {u"elan vital"},
       true,
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

// Random sets against the positions they cover, across word boundaries of the bit merge.
TEST(ConvertisseurChainesExclues, FusionContreLesPositionsCouvertes) {
  using E = ConvertisseurChainesExclues::EnsembleDIntervalles;
  std::mt19937 alea(5);
  for (int essai = 0; essai < 500; ++essai) {
    const uint64_t longueur = 1 + alea() % 300;
    std::vector<E> ensembles(1 + alea() % 5);
    std::vector<bool> couvert(longueur, false);
    for (E& e : ensembles) {
      // An ordered set of disjoint intervals that never touch, as a constructor makes.
      for (uint64_t p = alea() % 8; p < longueur; p += 1 + alea() % 70) {
        const uint64_t fin = std::min(longueur, p + 1 + alea() % 90);
        e.push_back({p, fin});
        for (uint64_t q = p; q < fin; ++q) couvert[q] = true;
        p = fin;
      }
    }
    E attendu;
    for (uint64_t p = 0; p < longueur; ++p)
      if (couvert[p] && (p == 0 || !couvert[p - 1]))
        attendu.push_back({p, p + 1});
      else if (couvert[p])
        attendu.back().fin = p + 1;
    std::vector<const E*> pointeurs;
    for (const E& e : ensembles) pointeurs.push_back(&e);
    ASSERT_EQ(ConvertisseurChainesExclues::Fusionne(pointeurs, longueur), attendu) << essai;
    ASSERT_EQ(ConvertisseurChainesExclues::Fusionne(pointeurs, uint64_t{1} << 40), attendu)
        << essai;
  }
}

// Step by step as the filter is defined: each string searched with ChaineN::Contient from the
// end of its last occurrence, the positions covered by any occurrence, and their runs.
std::string Reference(std::u16string_view texte, const std::vector<std::u16string>& exactes,
                      const std::vector<std::u16string>& courriel) {
  std::vector<bool> couvert(texte.size(), false);
  const ChaineN chaine(texte);
  const auto cherche = [&](const std::u16string& s, Malgray mode) {
    Plage trouve;
    for (uint64_t p = 0; chaine.Contient(s, trouve, p, mode); p = trouve.Fin())
      for (uint64_t q = trouve.position; q < trouve.Fin(); ++q) couvert[q] = true;
  };
  for (const auto& s : exactes) cherche(s, kMalgrayExact);
  for (const auto& s : courriel) cherche(s, kMalgraySansCasseNiAccents);
  std::vector<Rapport> rapports;
  for (uint64_t p = 0; p < texte.size(); ++p)
    if (couvert[p] && (p == 0 || !couvert[p - 1]))
      rapports.push_back({false, {uint32_t(p), uint32_t(p + 1)}, ChaineN(), {}, 0});
    else if (couvert[p])
      rapports.back().intervalle.Fin = uint32_t(p + 1);
  return DecritRapports(rapports);
}

// A long text (past the parallel threshold) and many strings, some frequent, some overlapping
// one another, some absent, some compared ignoring case and accents.
struct GrandCas {
  ChaineN texte;
  std::vector<std::u16string> exclues, courriel;
};

GrandCas FabriqueGrandCas(uint64_t longueur, int nombreDeChaines) {
  static constexpr std::u16string_view kMots[] = {
      u"le",     u"filtre",   u"Garde", u"la", u"prose", u"élan", u"ÉLAN", u"et",
      u"retire", u"balisage", u"\n",    u"ab", u"aba",   u"b",    u"x"};
  std::mt19937 alea(7);
  std::u16string texte;
  while (texte.size() < longueur) {
    texte += kMots[alea() % std::size(kMots)];
    texte += alea() % 3 ? u" " : u"";
  }
  GrandCas cas{ChaineN(std::move(texte)), {}, {}};
  for (int k = 0; k < nombreDeChaines; ++k) {
    std::u16string chaine;
    for (unsigned mots = 1 + alea() % 3; mots > 0; --mots)
      chaine += kMots[alea() % std::size(kMots)];
    // The e-mail strings are given cleaned, so that the reference can search them as they are.
    if (k % 4 == 0 && chaine.find(u'\n') == std::u16string::npos)
      cas.courriel.push_back(chaine);
    else
      cas.exclues.push_back(chaine);
  }
  cas.exclues.push_back(u"absent de ce texte");
  return cas;
}

std::vector<Rapport> RapportsDuCas(const GrandCas& cas, bool parallele) {
  ListeT<UniChaine> exclues, courriel;
  for (const auto& c : cas.exclues) exclues.Ajoute(UniChaine(ChaineN(c)));
  for (const auto& c : cas.courriel) courriel.Ajoute(UniChaine(ChaineN(c)));
  ConvertisseurChainesExclues convertisseur(exclues, courriel, true, parallele);
  return CollecteRapports(convertisseur, cas.texte.Vue());
}

// Short texts take the one-string searches, long ones the automaton: both must give what the
// step-by-step definition gives.
TEST(ConvertisseurChainesExclues, CommeLaDefinitionPasAPas) {
  for (uint64_t longueur : {300u, 5'000u, 70'000u}) {
    for (int nombre : {2, 5, 30}) {
      const GrandCas cas = FabriqueGrandCas(longueur, nombre);
      EXPECT_EQ(DecritRapports(RapportsDuCas(cas, false)),
                Reference(cas.texte.Vue(), cas.exclues, cas.courriel))
          << longueur << " units, " << nombre << " strings";
    }
  }
}

TEST(ConvertisseurChainesExclues, RechercheParalleleIdentiqueALaSequentielle) {
  // Three strings: one task a string; forty: the automaton, one task a stretch of text.
  for (int nombre : {3, 40}) {
    const GrandCas cas =
        FabriqueGrandCas(ConvertisseurChainesExclues::kLongueurMinimaleParallele + 5000, nombre);
    const std::vector<Rapport> sequentiel = RapportsDuCas(cas, false);
    ASSERT_GT(sequentiel.size(), 1000u);
    const std::vector<Rapport> parallele = RapportsDuCas(cas, true);
    ASSERT_EQ(parallele.size(), sequentiel.size());
    EXPECT_EQ(DecritRapports(parallele), DecritRapports(sequentiel));
    // In increasing order, disjoint and never touching.
    for (size_t k = 1; k < sequentiel.size(); ++k)
      ASSERT_LT(sequentiel[k - 1].intervalle.Fin, sequentiel[k].intervalle.Debut);
  }
}

}  // namespace

// Lists, UniChaine's in-place edits, the attributed string, the task runner, the name index and
// the block stack.
#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "ferlane/ChaineTemplateAvecAttributs.h"
#include "ferlane/FileOperations.h"
#include "ferlane/IndexDeNoms.h"
#include "ferlane/Listes.h"
#include "ferlane/PileParBlocs.h"
#include "ferlane/UniChaine.h"

namespace {

// Random pushes and pops, many around a block's edge, against a vector: the same elements in
// the same order, each at the address it was given, every one destroyed exactly once.
TEST(PileParBlocs, CommeUnVecteurSansDeplacer) {
  struct Compte {
    int valeur;
    int* vivants;
    Compte(int v, int* n) : valeur(v), vivants(n) { ++*vivants; }
    Compte(const Compte&) = delete;
    ~Compte() { --*vivants; }
  };
  int vivants = 0;
  {
    PileParBlocs<Compte, 4> pile;
    std::vector<std::pair<int, const Compte*>> modele;
    std::mt19937 alea(7);
    for (int i = 0; i < 5000; ++i) {
      // Up more often than down in the first half, then down: the stack spans many blocks, and
      // crosses their edges both ways.
      const bool monte = modele.empty() || alea() % 10 < (i < 2500 ? 6u : 4u);
      if (monte) {
        const Compte& c = pile.emplace_back(i, &vivants);
        modele.emplace_back(i, &c);
      } else {
        pile.pop_back();
        modele.pop_back();
      }
      ASSERT_EQ(pile.size(), modele.size());
      ASSERT_EQ(vivants, static_cast<int>(modele.size()));
      if (pile.empty()) continue;
      ASSERT_EQ(&pile.back(), modele.back().second);
      const size_t k = alea() % modele.size();
      ASSERT_EQ(&pile[k], modele[k].second);
      ASSERT_EQ(pile[k].valeur, modele[k].first);
    }
    ASSERT_EQ(&pile.front(), modele.front().second);
  }
  EXPECT_EQ(vivants, 0);  // the rest went with the stack
}

TEST(Listes, IndexHorsBorneLeveLException) {
  ListeC<ChaineN> liste{ChaineN(u"a")};
  EXPECT_EQ(liste[0], ChaineN(u"a"));
  EXPECT_THROW(liste[1], exceptions::LanceIndexHorsBorne);
  const ListeT<UniChaine> vide;
  EXPECT_THROW(vide[0], exceptions::LanceIndexHorsBorne);
  EXPECT_THROW(vide[UINT64_MAX], std::out_of_range);
}

// Every name added is found with its value, whatever the collisions and the wrap at the end of
// the slots (a full index of short names has many); prefixes, extensions and longer names are
// not; one name too many is refused.
TEST(IndexDeNoms, TrouveCeQuiEstAjouteEtRienDAutre) {
  std::vector<std::u16string> noms;
  for (char16_t a = u'a'; a <= u'p'; ++a)
    for (const std::u16string_view suite : {u"", u"x", u"xy"})
      noms.push_back(a + std::u16string(suite));
  IndexDeNoms<int> index(noms.size());
  for (size_t i = 0; i < noms.size(); ++i) index[noms[i]] = static_cast<int>(i) + 1;
  EXPECT_EQ(index[noms[0]], 1);  // a name added again keeps its value
  for (size_t i = 0; i < noms.size(); ++i) {
    const int* valeur = index.Trouve(noms[i]);
    ASSERT_NE(valeur, nullptr) << i;
    EXPECT_EQ(*valeur, static_cast<int>(i) + 1);
  }
  for (const std::u16string_view absent : {u"", u"q", u"ax_", u"xy", u"pxyz", u"aaaaaaaaaa"})
    EXPECT_EQ(index.Trouve(absent), nullptr) << std::string(absent.begin(), absent.end());
  EXPECT_THROW(index[u"zz"], std::length_error);
}

TEST(UniChaine, RemplaceToutesLesOccurrences) {
  UniChaine chaine(u"a\nb\n\nc");
  chaine.Remplace("\n", "\r\n", eCodageASCII);
  EXPECT_EQ(chaine.T(), ChaineN(u"a\r\nb\r\n\r\nc"));
  chaine.Remplace("", "x", eCodageASCII);  // an empty pattern changes nothing
  EXPECT_EQ(chaine.T(), ChaineN(u"a\r\nb\r\n\r\nc"));
}

TEST(ChaineTemplateAvecAttributs, RemplaceDecaleLesAttributs) {
  ChaineTemplateAvecAttributs<ChaineN> texte(ChaineN(u"abcd"), {1, 2, 4, 8});
  texte.Remplace(1, 2, ChaineN(u"XYZ"));
  EXPECT_EQ(texte.Chaine(), ChaineN(u"aXYZd"));
  EXPECT_EQ(texte.Attributs(), (std::vector<BitsDAttributs>{1, 0, 0, 0, 8}));
  texte.Remplace(4, 99, ChaineN());  // clipped to the end
  EXPECT_EQ(texte.Chaine(), ChaineN(u"aXYZ"));
  EXPECT_THROW(ChaineTemplateAvecAttributs<ChaineN>(ChaineN(u"ab"), {1}), std::invalid_argument);
}

TEST(ChaineTemplateAvecAttributs, EcraseSurPlace) {
  ChaineTemplateAvecAttributs<ChaineN> texte(ChaineN(u"abcdef"), {1, 2, 4, 8, 16, 32});
  texte.Ecrase(1, 2, u'-');
  EXPECT_EQ(texte.Chaine(), ChaineN(u"a--def"));
  texte.Ecrase(2, u"XY");
  EXPECT_EQ(texte.Chaine(), ChaineN(u"a-XYef"));
  EXPECT_EQ(texte.Attributs(), (std::vector<BitsDAttributs>{1, 0, 0, 0, 16, 32}));
  texte.Ecrase(5, u"PQR");  // clipped to the end: the length stays
  EXPECT_EQ(texte.Chaine(), ChaineN(u"a-XYeP"));
  EXPECT_EQ(texte.Attributs().back(), 0);
}

TEST(FileOperationsParallele, ChaqueIndexUneFois) {
  std::vector<std::atomic<int>> vus(1000);
  FileOperations::GlobaleDeDefaut().Execute(vus.size(), [&](uint64_t i) { ++vus[i]; });
  for (const auto& v : vus) EXPECT_EQ(v.load(), 1);
  FileOperations::GlobaleDeDefaut().Execute(0, [](uint64_t) { FAIL(); });
}

TEST(FileOperationsParallele, ExceptionApresLaFinDeToutes) {
  std::atomic<int> finies{0};
  FileOperations file(4);
  EXPECT_THROW(file.Execute(64,
                            [&](uint64_t i) {
                              if (i == 3) throw std::runtime_error("tâche 3");
                              ++finies;
                            }),
               std::runtime_error);
  EXPECT_EQ(finies.load(), 63);  // every other task ran to its end before the throw came back
}

}  // namespace

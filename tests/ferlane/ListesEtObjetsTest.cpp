// Lists, UniChaine's in-place edits, the attributed string, the task runner and the name index.
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <vector>

#include "ferlane/ChaineTemplateAvecAttributs.h"
#include "ferlane/FileOperations.h"
#include "ferlane/IndexDeNoms.h"
#include "ferlane/Listes.h"
#include "ferlane/UniChaine.h"

namespace {

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

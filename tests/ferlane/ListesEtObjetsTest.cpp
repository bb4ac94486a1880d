// Lists, UniChaine's in-place edits, the attributed string and the task runner.
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

#include "ferlane/ChaineTemplateAvecAttributs.h"
#include "ferlane/FileOperations.h"
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

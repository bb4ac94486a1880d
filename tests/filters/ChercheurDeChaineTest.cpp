// ChercheurDeChaine against ChaineN::Contient, the search it must match, on random texts over
// small alphabets (so that near misses and shift-table collisions are frequent).
#include <gtest/gtest.h>

#include <random>

#include "Outils.h"
#include "filters/ChercheurDeChaine.h"

namespace {

std::optional<uint64_t> Reference(std::u16string_view texte, std::u16string_view motif,
                                  uint64_t debut, Malgray mode) {
  Plage trouve;
  if (!ChaineN(texte).Contient(motif, trouve, debut, mode)) return std::nullopt;
  return trouve.position;
}

TEST(ChercheurDeChaine, CommeContientSurDesTextesAleatoires) {
  // "a" and "ā" share their low byte, as do "E" and "Ņ": the shift table must not skip over them.
  static constexpr std::u16string_view kAlphabets[] = {u"ab", u"abAB", u"aāeÉéEŅ ", u"xy\r\n"};
  std::mt19937 alea(11);
  for (Malgray mode : {kMalgrayExact, kMalgraySansCasse, kMalgraySansCasseNiAccents}) {
    for (int essai = 0; essai < 3000; ++essai) {
      const std::u16string_view alphabet = kAlphabets[essai % std::size(kAlphabets)];
      std::u16string texte, motif;
      for (unsigned n = alea() % 40; n > 0; --n) texte += alphabet[alea() % alphabet.size()];
      for (unsigned n = 1 + alea() % 5; n > 0; --n) motif += alphabet[alea() % alphabet.size()];
      const ChercheurDeChaine chercheur(motif, mode);
      for (uint64_t debut = 0; debut <= texte.size() + 1; ++debut)
        ASSERT_EQ(chercheur.Cherche(texte, debut), Reference(texte, motif, debut, mode))
            << VersUtf8(texte) << " / " << VersUtf8(motif) << " from " << debut << " mode " << mode;
    }
  }
}

TEST(ChercheurDeChaine, CasLimites) {
  EXPECT_EQ(ChercheurDeChaine(u"", 0).Cherche(u"abc", 0), std::nullopt);
  EXPECT_EQ(ChercheurDeChaine(u"abc", 0).Cherche(u"", 0), std::nullopt);
  // Bits other than 4 and 8 mean an exact comparison, as for ChaineN.
  EXPECT_EQ(ChercheurDeChaine(u"A", 2).Cherche(u"a", 0), std::nullopt);
}

}  // namespace

// The name comparison of closing tags: hashes for long names must answer exactly what a direct
// comparison (letter case ignored) answers.
#include <gtest/gtest.h>

#include <random>

#include "Outils.h"
#include "html/ComparateurDeNoms.h"

namespace {

// Texts made of few letters (in both cases) repeat themselves, so long names match often.
std::u16string TexteAleatoire(std::mt19937& alea, size_t longueur) {
  static constexpr char16_t kUnites[] = u"aAbB<É\u00E9";
  std::u16string texte;
  for (size_t i = 0; i < longueur; ++i) texte += kUnites[alea() % (std::size(kUnites) - 1)];
  return texte;
}

TEST(ComparateurDeNoms, CommeLaComparaisonDirecte) {
  std::mt19937 alea(7);
  for (int essai = 0; essai < 200; ++essai) {
    const ChaineN texte(TexteAleatoire(alea, 400));
    ComparateurDeNoms comparateur(texte);
    for (int question = 0; question < 50; ++question) {
      const uint64_t debut = alea() % texte.Longueur();
      const uint64_t longueur = 1 + alea() % 60;
      ChaineN nom = texte.SousChaine(debut, longueur);
      nom.Minusculise();
      if (alea() % 3 == 0) nom.Texte()[alea() % nom.Longueur()] = u'b';
      const uint64_t empreinte = ComparateurDeNoms::Empreinte(nom);
      const uint64_t position = alea() % 2 ? debut : alea() % (texte.Longueur() + 1);
      EXPECT_EQ(comparateur.CommencePar(position, nom, empreinte),
                texte.ContientALaPos(nom.Vue(), position, kMalgraySansCasse))
          << VersUtf8(nom.Vue()) << " at " << position;
    }
  }
}

TEST(ComparateurDeNoms, Bornes) {
  const ChaineN texte(u"</ABCDEFGHIJKLMNOPQRSTUVWXYZ>");
  ComparateurDeNoms comparateur(texte);
  const ChaineN court(u"abc");
  const ChaineN long_(u"abcdefghijklmnopqrstuvwxyz");
  ASSERT_GT(long_.Longueur(), ComparateurDeNoms::kLongueurComparaisonDirecte);
  EXPECT_TRUE(comparateur.CommencePar(2, court, ComparateurDeNoms::Empreinte(court)));
  EXPECT_TRUE(comparateur.CommencePar(2, long_, ComparateurDeNoms::Empreinte(long_)));
  EXPECT_FALSE(comparateur.CommencePar(3, long_, ComparateurDeNoms::Empreinte(long_)));
  EXPECT_FALSE(comparateur.CommencePar(texte.Longueur(), court, 0));
  EXPECT_FALSE(comparateur.CommencePar(texte.Longueur() + 5, court, 0));
  EXPECT_FALSE(comparateur.CommencePar(2, ChaineN(), 0));  // an empty name never matches
}

}  // namespace

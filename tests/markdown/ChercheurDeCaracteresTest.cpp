// ChercheurDeCaracteres against a fresh search for every question, on random texts whose members
// are overwritten between questions, asked forward and back until its map of members is made.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "markdown/ChercheurDeCaracteres.h"

namespace {

uint64_t ProchainNaif(std::u16string_view texte, std::u16string_view ensemble, uint64_t debut,
                      uint64_t limite) {
  limite = std::min<uint64_t>(limite, texte.size());
  for (uint64_t p = debut; p < limite; ++p)
    if (ensemble.find(texte[p]) != std::u16string_view::npos) return p;
  return limite;
}

TEST(ChercheurDeCaracteres, CommeUneRechercheNeuve) {
  std::mt19937 alea(5);
  for (int essai = 0; essai < 200; ++essai) {
    std::u16string texte(1 + alea() % 300, u'x');
    for (char16_t& c : texte) c = u"xxxx]\n|"[alea() % 7];
    ChaineN chaine(texte);
    ChercheurDeCaracteres chercheur(chaine, u"]\n");
    // Enough questions from the start to read the text several times over: the map is made.
    for (int question = 0; question < 400; ++question) {
      const uint64_t debut = question % 3 == 0 ? alea() % 8 : alea() % (texte.size() + 1);
      const uint64_t limite = alea() % 4 == 0 ? alea() % (texte.size() + 2) : texte.size();
      if (alea() % 6 == 0) {  // a member overwritten by a unit outside the set
        const uint64_t p = alea() % texte.size();
        if (texte[p] != u'x') {
          texte[p] = u'x';
          chaine.Texte()[p] = u'x';
        }
        continue;
      }
      ASSERT_EQ(chercheur.Prochain(debut, limite), ProchainNaif(texte, u"]\n", debut, limite))
          << essai << " " << question << " " << debut << " " << limite;
    }
  }
}

}  // namespace

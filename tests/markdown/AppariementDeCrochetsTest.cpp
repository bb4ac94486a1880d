// AppariementDeCrochets against a bracket count made afresh for every question, on random lines
// of brackets and letters, with overwrites between questions.
#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

#include "markdown/AppariementDeCrochets.h"

namespace {

// The closer of the opener at `position`, nesting counted, before `arret`.
std::optional<uint64_t> FermantNaif(std::u16string_view texte, uint64_t position, uint64_t arret) {
  int profondeur = 0;
  for (uint64_t i = position; i < arret; ++i) {
    if (texte[i] == u'[') ++profondeur;
    if (texte[i] == u']' && --profondeur == 0) return i;
  }
  return std::nullopt;
}

// Lines long enough for the block searches (sixteen units a step), questions mostly forward,
// sometimes back, and brackets overwritten (by letters) as an analyser would.
TEST(AppariementDeCrochets, CommeUnComptageNaif) {
  std::mt19937 alea(11);
  for (int essai = 0; essai < 300; ++essai) {
    std::u16string texte(1 + alea() % 120, u'x');
    for (char16_t& c : texte) c = u"[]x\n"[alea() % 4];
    ChaineN chaine(texte);
    AppariementDeCrochets crochets(u'[', u']');
    for (int question = 0; question < 40; ++question) {
      const uint64_t position = alea() % texte.size();
      if (alea() % 5 == 0) {  // an overwrite, reported
        const uint64_t fin = std::min<uint64_t>(texte.size(), position + 1 + alea() % 4);
        for (uint64_t i = position; i < fin; ++i) texte[i] = u'x';
        chaine = ChaineN(texte);
        crochets.NoteEffacement(position, fin);
        continue;
      }
      if (texte[position] != u'[') continue;
      const uint64_t fin = texte.find(u'\n', position);
      const uint64_t arret = fin == std::u16string::npos ? texte.size() : fin;
      ASSERT_EQ(crochets.Fermant(chaine, position, arret), FermantNaif(texte, position, arret))
          << essai << " " << question << " " << position;
    }
  }
}

}  // namespace

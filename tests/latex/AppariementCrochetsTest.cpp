// AppariementCrochets: matches found in one pass agree with a walk from the opening bracket.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>

#include "Outils.h"
#include "latex/AppariementCrochets.h"

namespace {

// A text of 1 to `longueurMax` units drawn from `alphabet`.
std::u16string TexteAleatoire(std::mt19937& alea, std::u16string_view alphabet,
                              size_t longueurMax) {
  std::u16string unites(1 + alea() % longueurMax, u'a');
  for (char16_t& u : unites) u = alphabet[alea() % alphabet.size()];
  return unites;
}

bool DansUneIgnoree(const std::vector<RegionVerbatim>& ignorees, uint64_t p) {
  return std::ranges::any_of(ignorees,
                             [&](const RegionVerbatim& r) { return r.debut <= p && p < r.fin; });
}

// The walk the index stands for: from the opening bracket, count brackets of its kind, skipping
// escaped ones, until the count falls to zero before `fin`.
// Positions inside the `ignorees` stretches do not count either.
std::optional<uint64_t> Marche(const ChaineN& texte, uint64_t ouvrant, uint64_t fin,
                               const std::vector<RegionVerbatim>& ignorees = {}) {
  const char16_t ouvrante = texte[ouvrant], fermante = ouvrante == u'{' ? u'}' : u']';
  uint64_t profondeur = 1;
  for (uint64_t p = ouvrant + 1; p < fin; ++p) {
    if (AppariementCrochets::EstEchappe(texte, p)) continue;
    if (std::ranges::any_of(ignorees,
                            [&](const RegionVerbatim& r) { return r.debut <= p && p < r.fin; }))
      continue;
    if (texte[p] == ouvrante)
      ++profondeur;
    else if (texte[p] == fermante && --profondeur == 0)
      return p;
  }
  return std::nullopt;
}

TEST(AppariementCrochets, Cas) {
  struct Cas {
    std::u16string_view texte;
    uint64_t ouvrant, fin;
    std::optional<uint64_t> attendu;
  };
  const Cas kCas[] = {
      {u"{a{b}c}", 0, 6, std::nullopt},  // the match lies at the range's end
      {u"{a\\\\}b}", 0, 7, 4},           // an escaped backslash escapes nothing
      {u"x\\{a}}", 2, 6, 4},             // an escaped opening one, matched by a walk
  };
  for (const Cas& c : kCas) {
    const ChaineN texte(c.texte);
    EXPECT_EQ(AppariementCrochets(texte).Fermant(c.ouvrant, c.fin), c.attendu)
        << VersUtf8(c.texte) << " @" << c.ouvrant;
  }
}

// Random texts past two search blocks, with up to three ignored stretches in order of start
// (they may overlap or touch). An opening bracket inside one, or escaped (the table has that),
// is never asked about.
TEST(AppariementCrochets, CommeLaMarcheSurDesTextesAleatoires) {
  std::mt19937 alea(7);
  const std::u16string_view alphabet = u"{}[]\\aaa";
  for (int essai = 0; essai < 600; ++essai) {
    const std::u16string unites = TexteAleatoire(alea, alphabet, 40);
    std::vector<RegionVerbatim> ignorees(alea() % 4);
    for (RegionVerbatim& r : ignorees) {
      r.debut = alea() % unites.size();
      r.fin = r.debut + alea() % 6;
    }
    std::ranges::sort(ignorees, {}, &RegionVerbatim::debut);
    const ChaineN texte(unites);
    const AppariementCrochets crochets(texte, ignorees);
    for (uint64_t p = 0; p < unites.size(); ++p) {
      if ((unites[p] != u'{' && unites[p] != u'[') || AppariementCrochets::EstEchappe(texte, p))
        continue;
      if (DansUneIgnoree(ignorees, p)) continue;
      for (uint64_t fin = p + 1; fin <= unites.size(); ++fin)
        ASSERT_EQ(crochets.Fermant(p, fin), Marche(texte, p, fin, ignorees))
            << VersUtf8(unites) << " @" << p;
    }
  }
}

// Questions in any order, far apart and back, over texts of many brackets: the answer does not
// depend on the question before.
TEST(AppariementCrochets, QuestionsDansLeDesordre) {
  std::mt19937 alea(9);
  const std::u16string_view alphabet = u"{}[]aaa";
  for (int essai = 0; essai < 50; ++essai) {
    const std::u16string unites = TexteAleatoire(alea, alphabet, 2000);
    // Ignored stretches make a lookup that missed its pair (and walked) answer wrongly.
    std::vector<RegionVerbatim> ignorees;
    for (uint64_t debut = alea() % 50; debut < unites.size(); debut += 20 + alea() % 60)
      ignorees.push_back({debut, debut, debut + 5, debut + 5, false});
    const ChaineN texte(unites);
    const AppariementCrochets crochets(texte, ignorees);
    std::vector<uint64_t> ouvrants;
    for (uint64_t p = 0; p < unites.size(); ++p)
      if ((unites[p] == u'{' || unites[p] == u'[') && !DansUneIgnoree(ignorees, p))
        ouvrants.push_back(p);
    std::ranges::shuffle(ouvrants, alea);
    for (const uint64_t p : ouvrants)
      ASSERT_EQ(crochets.Fermant(p, unites.size()), Marche(texte, p, unites.size(), ignorees)) << p;
  }
}

}  // namespace

// AutomateDeChaines: every occurrence of every string, as ChaineN::Contient finds them one by
// one, on random texts and string sets; and the same when the text is read stretch by stretch.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <tuple>

#include "Outils.h"
#include "filters/AutomateDeChaines.h"

namespace {

using Occurrences = std::vector<std::pair<uint32_t, uint64_t>>;

// Every occurrence (overlapping ones too) of each string, found by the core layer's search.
Occurrences Reference(std::u16string_view texte, const std::vector<std::u16string>& chaines,
                      Malgray mode) {
  Occurrences toutes;
  for (uint32_t k = 0; k < chaines.size(); ++k) {
    Plage trouve;
    for (uint64_t p = 0; ChaineN(texte).Contient(chaines[k], trouve, p, mode);
         p = trouve.position + 1)
      toutes.push_back({k, trouve.position});
  }
  std::sort(toutes.begin(), toutes.end());
  return toutes;
}

Occurrences Trie(const std::vector<AutomateDeChaines::Occurrence>& occurrences) {
  Occurrences toutes;
  for (const auto& o : occurrences) toutes.push_back({o.chaine, o.position});
  std::sort(toutes.begin(), toutes.end());
  return toutes;
}

TEST(AutomateDeChaines, CommeLaRechercheChaineParChaine) {
  // Strings that are prefixes, suffixes and repetitions of one another, the same string twice,
  // letters whose case or accent differs, and units outside every string.
  static constexpr std::u16string_view kAlphabets[] = {u"ab", u"abc", u"aAàÀeé", u"x\r\n"};
  std::mt19937 alea(23);
  for (Malgray mode : {kMalgrayExact, kMalgraySansCasseNiAccents}) {
    for (int essai = 0; essai < 1500; ++essai) {
      const std::u16string_view alphabet = kAlphabets[essai % std::size(kAlphabets)];
      const auto tire = [&](unsigned n) {
        std::u16string s;
        for (; n > 0; --n) s += alphabet[alea() % alphabet.size()];
        return s;
      };
      std::u16string texte = tire(alea() % 60);
      if (alea() % 4 == 0) texte += u"zzz";
      std::vector<std::u16string> chaines;
      for (unsigned n = 1 + alea() % 6; n > 0; --n) chaines.push_back(tire(1 + alea() % 4));
      if (alea() % 3 == 0) chaines.push_back(chaines.front());
      std::vector<std::u16string_view> vues(chaines.begin(), chaines.end());
      const auto automate = AutomateDeChaines::Construit(vues, mode);
      ASSERT_TRUE(automate.has_value());
      const Occurrences attendu = Reference(texte, chaines, mode);
      ASSERT_EQ(Trie(automate->Collecte(texte, 0, texte.size())), attendu)
          << VersUtf8(texte) << " mode " << mode;
      // Stretch by stretch, each keeping the occurrences that start in it.
      std::vector<AutomateDeChaines::Occurrence> parTranches;
      for (uint64_t debut = 0, pas = 1 + alea() % 7; debut < texte.size(); debut += pas) {
        const auto tranche = automate->Collecte(texte, debut, debut + pas);
        parTranches.insert(parTranches.end(), tranche.begin(), tranche.end());
      }
      ASSERT_EQ(Trie(parTranches), attendu) << VersUtf8(texte) << " mode " << mode;
    }
  }
}

TEST(AutomateDeChaines, OrdreDesFinsEtRefus) {
  const std::vector<std::u16string_view> chaines = {u"abcd", u"bc", u"c"};
  const auto automate = AutomateDeChaines::Construit(chaines, kMalgrayExact);
  ASSERT_TRUE(automate);
  EXPECT_EQ(automate->LongueurMaximale(), 4u);
  std::vector<std::pair<uint32_t, uint64_t>> vues;
  for (const auto& o : automate->Collecte(u"xabcde", 0, 6)) vues.push_back({o.chaine, o.position});
  // By end position: "bc" and "c" end at 3, "abcd" at 4.
  ASSERT_EQ(vues.size(), 3u);
  EXPECT_EQ(vues.back(), (std::pair<uint32_t, uint64_t>{0, 1}));
  EXPECT_FALSE(AutomateDeChaines::Construit({u"a", u""}, kMalgrayExact));
  // A set whose table would be too large is refused rather than built.
  std::u16string enorme;
  for (char16_t u = 0x4E00; enorme.size() < 4000; ++u) enorme += u;
  EXPECT_FALSE(AutomateDeChaines::Construit({enorme}, kMalgrayExact));
}

}  // namespace

// Markdown detection: the score (weight of the tokens per line) around its threshold.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "Outils.h"
#include "markdown/DetecteMarkDown.h"

namespace {

// `lignes` line feeds: a first line "x", then the given lines, then empty lines.
std::u16string Texte(std::initializer_list<std::u16string_view> lignes, size_t sauts,
                     std::u16string_view saut = u"\n") {
  std::u16string texte = u"x";
  size_t n = 0;
  for (const auto ligne : lignes) texte += std::u16string(saut) + std::u16string(ligne), ++n;
  for (; n < sauts; ++n) texte += saut;
  return texte;
}

struct Cas {
  const char* nom;
  std::u16string texte;
  float score;
};

TEST(DetecteMarkDown, ScoresAuxSeuils) {
  const Cas kCas[] = {
      {"no line break", u"## a ![b](c) [^d]", 0.0f},
      {"a \"##\" line counts for \"#\" too", Texte({u"## a"}, 10), 10.0f / 10},
      {"the same over twenty lines", Texte({u"## a"}, 20), 10.0f / 20},
      {"light tokens alone count nothing", Texte({u"- a", u"* b", u"1. c", u"+ d"}, 4), 0.0f},
      {"an image over 26 lines", Texte({u"see ![a](b)"}, 26), 21.0f / 26},
      {"an image over 27 lines", Texte({u"see ![a](b)"}, 27), 21.0f / 27},
      {"a table line and three light ones: exactly the threshold",
       Texte({u"| a", u"- b", u"- c", u"- d"}, 10), 8.0f / 10},
      {"the same over eleven lines", Texte({u"| a", u"- b", u"- c", u"- d"}, 11), 8.0f / 11},
      // "3." is missing: "4." is never looked at.
      {"numbering stops at the first gap", Texte({u"## a", u"1. a", u"2. a", u"4. a"}, 4),
       12.0f / 4},
      {"numbering without a gap", Texte({u"## a", u"1. a", u"2. a", u"3. a", u"4. a"}, 5),
       14.0f / 5},
      {"a footnote and a reference", Texte({u"a[^1]", u"[^1]: b", u"[c]: d"}, 30), 42.0f / 30},
      // The first line follows no line break: its tokens do not count.
      {"tokens of the first line", u"## a\n", 0.0f},
      {"CR LF: the line feed is the break", Texte({u"## a"}, 10, u"\r\n"), 10.0f / 10},
      {"CR alone", Texte({u"## a"}, 10, u"\r"), 10.0f / 10},
      {"a \"---\" line counts for \"-\" too", Texte({u"===", u"---"}, 11), 12.0f / 11},
  };
  for (const Cas& c : kCas) {
    EXPECT_EQ(ScoreMarkDown(ChaineN(c.texte)), c.score) << c.nom;
    EXPECT_EQ(DetecteMarkDown(ChaineN(c.texte)), c.score >= 0.8f) << c.nom;
  }
}

TEST(DetecteMarkDown, SeulLeDebutDuTexteCompte) {
  // An image, plain lines up to unit 9998, then a heading whose "\n#" ends at unit 10000 and
  // whose "\n##" would end one unit beyond: only the first counts.
  std::u16string texte = u"x\n![a](b)\n";
  while (texte.size() < 9998) texte += u"a\n";
  texte.resize(9998);
  texte += u"\n## heading\n";
  const float lignes = static_cast<float>(std::count(texte.begin(), texte.begin() + 10000, u'\n'));
  EXPECT_EQ(ScoreMarkDown(ChaineN(texte)), (20.0f + 1.0f + 1.0f) / lignes);
  EXPECT_EQ(ScoreMarkDown(ChaineN(texte + u"![c](d)\n## more\n")), ScoreMarkDown(ChaineN(texte)));
}

}  // namespace

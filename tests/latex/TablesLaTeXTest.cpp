// The LaTeX vocabulary: the orders that decide which entry wins, both ways.
#include <gtest/gtest.h>

#include <algorithm>
#include <span>

#include "Outils.h"
#include "latex/CommandesLaTeX.h"
#include "latex/DelimiteursLaTeX.h"
#include "latex/EquivalentsLaTeX.h"
#include "latex/SymbolesLaTeX.h"
#include "latex/VocabulaireLaTeX.h"

namespace {

// The first entry whose LaTeX form stands at the start of `texte`, as the scanner tries them.
std::u16string_view Avant(std::span<const EquivalentLaTeX> table, std::u16string_view texte) {
  for (const EquivalentLaTeX& e : table)
    if (texte.starts_with(e.latex)) return e.latex;
  return u"(none)";
}

// The first entry whose character is `c`, as the backward conversion takes them.
std::u16string_view Arriere(std::span<const EquivalentLaTeX> table, char16_t c) {
  for (const EquivalentLaTeX& e : table)
    if (e.texte.size() == 1 && e.texte[0] == c) return e.latex;
  return u"(none)";
}

TEST(TablesLaTeX, OrdreDesEquivalentsEnAvant) {
  struct Cas {
    std::span<const EquivalentLaTeX> table;
    std::u16string_view texte, attendu;
  };
  const Cas kCas[] = {
      {kCommandesPonctuation, u"\\---x", u"\\---"},
      {kCommandesPonctuation, u"\\--x", u"\\--"},
      {kCommandesPonctuation, u"\\-/x", u"\\-/"},
      {kCommandesPonctuation, u"\\-,x", u"\\-,"},
      {kCommandesPonctuation, u"\\-x", u"\\-"},
      {kCommandesPonctuation, u"\\=x", u"(none)"},
      {kCommandesPonctuation, u"\\\\x", u"\\\\"},
      {kEchappementsLaTeX, u"\\^{}", u"\\^{}"},
      {kEchappementsLaTeX, u"\\^{a}", u"(none)"},
      {kAccentsLaTeX, u"\\^{a}", u"\\^{a}"},
      {kAccentsLaTeX, u"\\^\\i", u"\\^\\i"},
      {kAccentsLaTeX, u"\\'a", u"(none)"},  // no acute on a
      {kAccentsLaTeX, u"\\~n", u"(none)"},
      {kTypographieLaTeX, u"---", u"---"},
      {kTypographieLaTeX, u"--", u"--"},
      {kTypographieLaTeX, u"``x", u"``"},
      {kTypographieLaTeX, u"''x", u"''"},
      {kTypographieLaTeX, u"`x", u"`"},
      {kTypographieLaTeX, u"-", u"(none)"},
      {kTypographieLaTeX, u"<a", u"(none)"},
      {kTypographieLaTeX, u">a", u"(none)"},
  };
  for (const Cas& c : kCas)
    EXPECT_EQ(VersUtf8(Avant(c.table, c.texte)), VersUtf8(c.attendu)) << VersUtf8(c.texte);
}

TEST(TablesLaTeX, OrdreDesEquivalentsEnArriere) {
  struct Cas {
    std::span<const EquivalentLaTeX> table;
    char16_t c;
    std::u16string_view attendu;
  };
  const Cas kCas[] = {
      {kEspacesLaTeX, u'\u2009', u"\\,"},
      {kEspacesLaTeX, u'\u202F', u"\\,"},
      {kEspacesLaTeX, u'\u00A0', u"~"},
      {kTypographieLaTeX, u'\u00A0', u"~"},
      {kAccentsLaTeX, u'î', u"\\^i"},
      {kAccentsLaTeX, u'ï', u"\\\"i"},
      {kAccentsLaTeX, u'É', u"\\'E"},
      {kAccentsLaTeX, u'á', u"(none)"},
      {kLigaturesLaTeX, u'œ', u"\\oe{}"},
      {kLigaturesLaTeX, u'Ç', u"\\c{C}"},
      {kTypographieLaTeX, u'\u2014', u"---"},
      {kTypographieLaTeX, u'\u2019', u"'"},
      {kEchappementsLaTeX, u'%', u"\\%"},
      {kEchappementsLaTeX, u'^', u"\\^{}"},
      // Punctuation commands are never written back; "\=," reads as a no-break space.
      {kCommandesPonctuation, u'\u00A0', u"\\=,"},
  };
  for (const Cas& c : kCas)
    EXPECT_EQ(VersUtf8(Arriere(c.table, c.c)), VersUtf8(c.attendu)) << int(c.c);
}

}  // namespace

// The LaTeX vocabulary: the entries a reader would not guess, and the orders that decide which
// entry wins.
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

// A few records whose options a reader would not guess, and the exact-name lookup.
TEST(TablesLaTeX, Commandes) {
  struct Cas {
    std::u16string_view nom;
    uint32_t options, style;
  };
  const Cas kCas[] = {
      {u"subsubsection", eCmdTitre, eGras},
      {u"eqref", eCmdParentheses, eNonTexte},
      {u"st", 0, eBarre},
      {u"hybridblockcquote", eCmdBloc | eCmdSautDeuxArguments, eItalique},
      {u"acrfull", eCmdGlossaire, 0},
      {u"Large", 0, 0},
  };
  for (const Cas& c : kCas) {
    const CommandeLaTeX* commande = TrouveCommandeLaTeX(c.nom);
    ASSERT_NE(commande, nullptr) << VersUtf8(c.nom);
    EXPECT_EQ(commande->options, c.options) << VersUtf8(c.nom);
    EXPECT_EQ(commande->style, c.style) << VersUtf8(c.nom);
  }
  // Exact length and case: a prefix or another case is no match.
  for (const std::u16string_view nom : {u"textb", u"textbff", u"Textbf", u"", u"begin", u"end"})
    EXPECT_EQ(TrouveCommandeLaTeX(nom), nullptr) << VersUtf8(nom);
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

TEST(TablesLaTeX, Accents) {
  // Each entry is a backslash, a mark among ` ^ ' " and a letter, braced in the second half.
  for (size_t i = 0; i < std::size(kAccentsLaTeX); ++i) {
    const EquivalentLaTeX& e = kAccentsLaTeX[i];
    ASSERT_EQ(e.latex[0], u'\\');
    EXPECT_NE(std::u16string_view(u"`^'\"").find(e.latex[1]), std::u16string_view::npos);
    EXPECT_EQ(e.texte.size(), 1u);
    EXPECT_GE(e.texte[0], 0xC0);
    if (i >= 28) {
      const EquivalentLaTeX& nu = kAccentsLaTeX[i - 28];
      EXPECT_EQ(e.texte, nu.texte);
      EXPECT_EQ(std::u16string(e.latex), std::u16string(nu.latex.substr(0, 2)) + u"{" +
                                             std::u16string(nu.latex.substr(2)) + u"}");
    }
  }
}

TEST(TablesLaTeX, Symboles) {
  struct Cas {
    std::u16string_view nom, texte;
  };
  const Cas kCas[] = {
      {u"c{c}", u"ç"},
      {u"ldots", u"..."},
      {u"epsilon", u"\u03F5"},
      {u"phi", u"\u03D5"},
      {u"setminus", u"\u2216\u2216"},
      {u"O", u"\u2205"},
      {u"og", u"\u00AB\u2009"},
      {u"iemes", u"es"},
      {u"right", u""},
  };
  for (const Cas& c : kCas) {
    const ChaineN* valeur = TrouveSymboleLaTeX(c.nom);
    ASSERT_NE(valeur, nullptr) << VersUtf8(c.nom);
    EXPECT_EQ(VersUtf8(valeur->Vue()), VersUtf8(c.texte)) << VersUtf8(c.nom);
  }
  for (const std::u16string_view nom : {u"c", u"alpha*", u"Infty", u"textbf", u"o"})
    EXPECT_EQ(TrouveSymboleLaTeX(nom), nullptr) << VersUtf8(nom);
}

}  // namespace

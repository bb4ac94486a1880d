// DetecteLaTeX: a keyword at a backslash inside the first 10,000 characters.
#include <gtest/gtest.h>

#include "Outils.h"
#include "latex/DetecteLaTeX.h"

namespace {

TEST(DetecteLaTeX, MotsCles) {
  struct Cas {
    std::u16string_view texte;
    bool latex;
  };
  const Cas kCas[] = {
      {u"\\documentclass{article}\n\\usepackage{amsmath}", true},
      {u"\\usepackage[utf8]{inputenc}", true},
      {u"\\inputenc", true},  // a prefix test
      {u"\\beginning", true},
      {u"\\chapter{Un}", true},
      {u"x \\relax", true},
      {u"\\section{a} \\textbf{b} \\Begin", false},
      {u"\\", false},
      {u"\\input", true},
      {u"\\inpu", false},
      {u"", false},
      {u"du texte sans commande", false},
  };
  for (const Cas& c : kCas) EXPECT_EQ(DetecteLaTeX(ChaineN(c.texte)), c.latex) << VersUtf8(c.texte);
}

TEST(DetecteLaTeX, Fenetre) {
  const auto avec = [](size_t position, std::u16string_view mot) {
    std::u16string texte(position, u'x');
    texte += mot;
    texte += u" suite";
    return DetecteLaTeX(ChaineN(texte));
  };
  EXPECT_TRUE(avec(9999, u"\\begin"));  // the word may run past the window
  EXPECT_FALSE(avec(10000, u"\\begin"));
  // Many backslashes before the keyword change nothing.
  std::u16string texte;
  for (int i = 0; i < 3000; ++i) texte += u"\\x ";
  texte += u"\\usepackage";
  EXPECT_TRUE(DetecteLaTeX(ChaineN(texte)));
}

}  // namespace

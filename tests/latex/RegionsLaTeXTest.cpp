// Formulas and formula environments: what stays marked as non-prose, what becomes "[TeX]",
// the paragraph rule for display formulas, intertexts, and unterminated regions; and where the
// prose profile finds code stretches.
#include <gtest/gtest.h>

#include "OutilsLaTeX.h"
#include "latex/VerbatimLaTeX.h"

namespace {

TEST(RegionsLaTeX, FormulesEnLigne) {
  VerifieRapports({
      {u"$x$", "M[1,2)16 R[0,1)''{0,0} R[2,3)''{0,0}"},
      // Symbols only, between single dollars: the inner report first, then the placeholder
      // over the whole formula, then the delimiters in every case.
      {u"$\\alpha$", "R[1,7)'α'{0,1} M[0,8)16 R[0,8)'[TeX]'{0,0} R[0,1)''{0,0} R[7,8)''{0,0}"},
      // The same content in other delimiters keeps its text.
      {u"\\(\\alpha\\)", "R[2,8)'α'{0,1} M[2,8)16 R[0,2)''{0,0} R[8,10)''{0,0}"},
      {u"\\begin{math}\\alpha\\end{math}",
       "R[12,18)'α'{0,1} M[12,18)16 R[0,12)''{0,0} R[18,28)''{0,0}"},
      // An unknown command: "[TeX]" up to the sentence's full stop, which stays.
      {u"$\\foo x.$", "R[1,6)''{0,0} M[1,7)16 R[1,7)'[TeX]'{0,0} R[0,1)''{0,0} R[8,9)''{0,0}"},
      {u"$ \\foo $", "R[2,6)''{0,0} M[2,6)16 R[2,6)'[TeX]'{0,0} R[0,2)''{0,0} R[6,8)''{0,0}"},
      // Blanks next to the delimiters go with them.
      {u"$ x $", "M[2,3)16 R[0,2)''{0,0} R[3,5)''{0,0}"},
      // Blanks only: empty content at the end of the blanks after the opening.
      {u"$ $", "M[0,3)16 R[0,3)'[TeX]'{0,0} R[0,2)''{0,0} R[2,3)''{0,0}"},
      {u"\\( \\)", "M[3,3)16 R[0,3)''{0,0} R[3,5)''{0,0}"},
      {u"$$$$", "M[2,2)16 R[0,2)''{0,0} R[2,4)''{0,0}"},
      // Escaped dollars are no delimiters.
      {u"\\$5", "R[0,2)'$'{0,1}"},
      {u"$a\\$b$", "R[2,4)'$'{0,1} M[1,5)16 R[0,1)''{0,0} R[5,6)''{0,0}"},
      // Unterminated: the formula runs to the end of its range, and its empty closing is still
      // reported.
      {u"$x", "M[1,2)16 R[0,1)''{0,0} R[2,2)''{0,0}"},
      {u"\\textbf{$x} y",
       "R[0,7)''{0,0} R[7,8)''{0,0} R[10,11)''{0,0} M[7,11)2 M[9,10)16 R[8,9)''{0,0} "
       "R[10,10)''{0,0}"},
  });
}

TEST(RegionsLaTeX, ParagrapheAutourDesFormulesAffichees) {
  VerifieRapports({
      {u"Fin.\n$$x$$\nSuite",
       "R[4,5)' '{0,1} M[7,8)16 R[5,5)'\\u000A\\u000A'{0,0} R[10,10)'\\u000A\\u000A'{0,0} "
       "R[5,7)''{0,0} R[8,10)''{0,0} R[10,11)' '{0,1}"},
      {u"Fin.\n$$x$$\nsuite",
       "R[4,5)' '{0,1} M[7,8)16 R[5,7)''{0,0} R[8,10)''{0,0} R[10,11)' '{0,1}"},
      {u"Fin,\n$$x$$\nSuite",
       "R[4,5)' '{0,1} M[7,8)16 R[5,7)''{0,0} R[8,10)''{0,0} R[10,11)' '{0,1}"},
      {u"$$x$$ Suite", "M[2,3)16 R[0,2)''{0,0} R[3,5)''{0,0}"},
      // The closing must stand before the range's end.
      {u"Fin. $$x$$", "M[7,8)16 R[5,7)''{0,0} R[8,10)''{0,0}"},
      {u"Fin! \\[x\\] Alors",
       "M[7,8)16 R[5,5)'\\u000A\\u000A'{0,0} R[10,10)'\\u000A\\u000A'{0,0} R[5,7)''{0,0} "
       "R[8,10)''{0,0}"},
  });
  EXPECT_EQ(InterneLaTeX(u"Fin.\n$$x$$\nSuite"), "Fin. \n\nx\n\n Suite");
}

TEST(RegionsLaTeX, EnvironnementsAffiches) {
  VerifieRapports({
      // After a word: a space, then the placeholder; the closing becomes a paragraph break.
      {u"mot\\begin{equation}x=1\\end{equation}",
       "R[3,19)''{0,0} R[19,19)' '{0,1} R[19,22)'[TeX]'{0,0} M[19,22)16 "
       "R[22,36)'\\u000A\\u000A'{0,0}"},
      {u"mot \\begin{align*}x\\end{align*}",
       "R[4,18)''{0,0} R[18,19)'[TeX]'{0,0} M[18,19)16 R[19,31)'\\u000A\\u000A'{0,0}"},
      // An intertext's words stay, unscanned, between paragraph breaks.
      {u"\\begin{align}a\\intertext{des mots}b\\end{align}",
       "R[0,13)''{0,0} R[13,25)'\\u000A\\u000A'{0,0} R[33,35)''{0,0} "
       "R[35,46)'\\u000A\\u000A'{0,0}"},
      // An intertext whose brace closes only outside the environment is part of the formula.
      {u"\\begin{align}a\\intertext{b\\end{align}}",
       "R[0,13)''{0,0} R[13,26)'[TeX]'{0,0} M[13,26)16 R[26,37)'\\u000A\\u000A'{0,0}"},
      // Unterminated: the closing paragraph break is inserted at the range's end.
      {u"\\begin{equation}x",
       "R[0,16)''{0,0} R[16,17)'[TeX]'{0,0} M[16,17)16 R[17,17)'\\u000A\\u000A'{0,0}"},
      {u"\\begin{equation}\\end{equation}", "R[0,16)''{0,0} R[16,30)'\\u000A\\u000A'{0,0}"},
      // Not spelt exactly: an environment word, its argument dropped.
      {u"\\begin {equation}", "R[0,7)'\\u000A\\u000A'{0,0} R[7,17)''{0,0}"},
  });
  EXPECT_EQ(
      InterneLaTeX(u"\\begin{align}a\\intertext{des mots}b\\shortintertext {et}c\\end{align}"),
      "\n\ndes mots\n\net\n\n");
  EXPECT_EQ(InterneLaTeX(u"Soit\\begin{equation}x\\end{equation}donc"), "Soit [TeX]\n\ndonc");
}

// Code stretches found at every place in the search's blocks, with units beyond ASCII around them
// whose low byte is one the search stops at ("\\" + 0x100 before "begin", "%" + 0x100...): those
// units change nothing, where one that narrowed to its low byte would.
TEST(RegionsLaTeX, CodeTrouveALaMemePlaceParmiDesUnitesLointaines) {
  constexpr std::u16string_view kCode =
      u"\\verb|a%b| \\lstinline{c} % d\n\\begin{verbatim}e\\end{verbatim}";
  constexpr char16_t kLointaines[] = {u'\u015C', u'\u0125', u'\u0162', u'\uFF5C', u'\u016C'};
  const OptionsProseLaTeX prose;
  for (size_t decalage = 0; decalage < 40; ++decalage) {
    std::u16string simple(decalage, u'x'), lointain;
    for (size_t k = 0; k < decalage; ++k) lointain += kLointaines[k % std::size(kLointaines)];
    // A far unit right before "begin" too, where the near "x" makes no command.
    const std::u16string suite = u"begin{verbatim}q\\end{verbatim} x% e\n";
    simple += kCode;
    simple += u'x' + suite;
    lointain += kCode;
    lointain += kLointaines[0] + suite;
    const std::vector<RegionVerbatim> attendues = TrouveVerbatims(ChaineN(simple), prose);
    ASSERT_EQ(attendues.size(), 3u) << decalage;
    EXPECT_EQ(TrouveVerbatims(ChaineN(lointain), prose), attendues) << decalage;
  }
}

}  // namespace

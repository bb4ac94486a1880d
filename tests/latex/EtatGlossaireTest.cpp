// Glossaries and acronyms: definitions vanish, references give their text (or "[TeX]"), and
// definitions serve only the range they stand in.
#include <gtest/gtest.h>

#include <stdexcept>

#include "OutilsLaTeX.h"
#include "latex/EtatGlossaire.h"

namespace {

TEST(EtatGlossaire, Acronymes) {
  EXPECT_EQ(RapportsLaTeX(u"\\newacronym{cd}{CD}{compact disc}\\acrshort{cd}"),
            "R[0,33)''{0,0} R[33,46)'CD'{0,0}");
  EXPECT_EQ(InterneLaTeX(u"\\newacronym{cd}{CD}{compact disc}Un \\acrfull{cd}, \\acrshort{cd} et "
                         u"\\acrlong{cd}."),
            "Un compact disc (CD), CD et compact disc.");
  // A second definition replaces the first.
  EXPECT_EQ(InterneLaTeX(u"\\newacronym{a}{A}{x}\\newacronym{a}{B}{y}\\acrshort{a}"), "B");
}

TEST(EtatGlossaire, Entrees) {
  EXPECT_EQ(InterneLaTeX(u"\\newglossaryentry{chat}{name=chat, description={un animal}}"
                         u"\\gls{chat} \\Gls{chat} \\glspl{chat} \\Glspl{chat} \\gls{chat}"),
            "chat Chat chats Chats chat");
  EXPECT_EQ(InterneLaTeX(u"\\newglossaryentry{b}{name=bus, description={x}}\\glspl{b}"), "bus");
  // The body ends at the second closing brace: the definition's own last brace stays, and the
  // name keeps its braces (a capital still goes to its first letter).
  EXPECT_EQ(InterneLaTeX(u"\\newglossaryentry{x}{name={chat},description={d}}\\gls{x} \\Gls{x}"),
            "}{chat} {Chat}");
  // No "name=", or no comma after it: the name is empty, and so is its plural.
  EXPECT_EQ(InterneLaTeX(u"\\newglossaryentry{e}{name=,x}}a\\glspl{e}b\\Gls{e}c"), "abc");
  EXPECT_EQ(InterneLaTeX(u"\\newglossaryentry{e}{name=chat}}a\\gls{e}b"), "ab");
}

TEST(EtatGlossaire, ReferencesNonResolues) {
  EXPECT_EQ(RapportsLaTeX(u"\\gls{inconnu}"), "R[0,13)'[TeX]'{0,0} M[0,13)16");
  // With no argument of its own, a reference reads the next group wherever it is.
  EXPECT_EQ(RapportsLaTeX(u"\\gls et {x} fin"), "R[0,11)'[TeX]'{0,0} M[0,11)16");
  // A "{" that nothing closes: the value is empty and reading goes on after that brace.
  EXPECT_EQ(RapportsLaTeX(u"\\gls{abc"), "R[0,5)'[TeX]'{0,0} M[0,5)16");
  EXPECT_EQ(RapportsLaTeX(u"\\acrshort"), "R[0,9)'[TeX]'{0,0} M[0,9)16");
  // A definition outside a range is not seen inside it, and the other way round.
  EXPECT_EQ(InterneLaTeX(u"\\newacronym{a}{A}{Aa}\\textbf{\\acrshort{a}}"), "[TeX]");
  EXPECT_EQ(InterneLaTeX(u"{\\newacronym{a}{A}{Aa}}\\acrshort{a}"), "[TeX]");
  // Nor in a sibling range at the same depth, nor in one nested deeper.
  EXPECT_EQ(InterneLaTeX(u"{\\newacronym{a}{A}{Aa}}{\\acrshort{a}}"), "[TeX]");
  EXPECT_EQ(InterneLaTeX(u"{\\newacronym{a}{A}{Aa}\\acrshort{a}{\\acrshort{a}}}"), "A[TeX]");
}

TEST(EtatGlossaire, LectureDesArguments) {
  const ChaineN texte(u"{a}{b}c}d {e");
  const IndexGlossaire index(texte);
  EtatGlossaire etat(texte, index);
  EXPECT_EQ(etat.LisArgument(false), u"a");
  EXPECT_EQ(etat.position, 3u);
  EXPECT_EQ(etat.LisArgument(true), u"b}c");  // nested: up to the second closing brace
  EXPECT_EQ(etat.position, 8u);
  EXPECT_EQ(etat.LisArgument(false), u"");  // "{" with no "}" after it
  EXPECT_EQ(etat.position, 11u);
  EXPECT_EQ(etat.LisArgument(false), u"");  // no "{" left: the position stays
  EXPECT_EQ(etat.position, 11u);

  // Bodies are stretches of the document: "name=" and the comma must both lie inside.
  const ChaineN corps(u"name=chat, x|description=y, name={Mot},|name=chat|nom=chat,|name=a,");
  const IndexGlossaire indexCorps(corps);
  const EtatGlossaire lecteur(corps, indexCorps);
  EXPECT_EQ(lecteur.LisEntree(0, 12), u"chat");
  EXPECT_EQ(lecteur.LisEntree(13, 39), u"{Mot}");
  EXPECT_EQ(lecteur.LisEntree(40, 49), u"");
  EXPECT_EQ(lecteur.LisEntree(50, 59), u"");
  EXPECT_EQ(lecteur.LisEntree(60, 66), u"");  // the comma lies just past the body
}

TEST(EtatGlossaire, CommandeNonPriseEnCharge) {
  const ChaineN texte(u"{x}");
  const IndexGlossaire index(texte);
  EtatGlossaire etat(texte, index);
  try {
    etat.Resous(u"glossaryentry");
    FAIL() << "no exception";
  } catch (const std::invalid_argument& e) {
    EXPECT_STREQ(e.what(), "Cette commande n'est pas prise en charge.");
  }
}

}  // namespace

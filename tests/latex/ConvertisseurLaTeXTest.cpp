// ConvertisseurLaTeX: commands by kind, arguments and brackets, symbols and accents, blanks,
// "^" and "_", the backward passes, the accent habit kept between runs, and exceptions.
#include <gtest/gtest.h>

#include <functional>

#include "OutilsLaTeX.h"
#include "latex/ConvertisseurLaTeX.h"

namespace {

TEST(ConvertisseurLaTeX, CommandesParGroupe) {
  VerifieRapports({
      // Style: the command goes, the braces go, the argument carries the style, braces included.
      {u"\\textbf{chat}", "R[0,7)''{0,0} R[7,8)''{0,0} R[12,13)''{0,0} M[7,13)2"},
      // Sectioning, starred: a paragraph break before the title and after its argument.
      {u"\\section*{Titre} Suite",
       "R[0,9)'\\u000A\\u000A'{0,0} R[9,10)''{0,0} R[15,16)''{0,0} M[9,16)2 "
       "R[16,16)'\\u000A\\u000A'{0,0}"},
      {u"\\section[court]{Long}",
       "R[0,8)'\\u000A\\u000A'{0,0} R[8,15)''{0,0} R[15,16)''{0,0} R[20,21)''{0,0} M[15,21)2 "
       "R[21,21)'\\u000A\\u000A'{0,0}"},
      // Block: a paragraph break, the argument kept.
      {u"\\author{Moi}", "R[0,7)'\\u000A\\u000A'{0,0} R[7,8)''{0,0} R[11,12)''{0,0}"},
      // A key: optional argument dropped, the key kept as non-prose.
      {u"\\cite[p. 3]{clef}",
       "R[0,5)''{0,0} R[5,11)''{0,0} R[11,12)''{0,0} R[16,17)''{0,0} M[11,17)16"},
      // Parentheses are inserted inside the deleted braces.
      {u"\\eqref{e1}",
       "R[0,6)''{0,0} R[6,7)''{0,0} R[9,10)''{0,0} M[6,10)16 R[7,7)'('{0,0} R[9,9)')'{0,0}"},
      {u"\\textcolor{red}{mot}", "R[0,10)''{0,0} R[10,15)''{0,0} R[15,16)''{0,0} R[19,20)''{0,0}"},
      {u"\\fcolorbox{a}{b}{c}",
       "R[0,10)''{0,0} R[10,13)''{0,0} R[13,16)''{0,0} R[16,17)''{0,0} R[18,19)''{0,0}"},
      {u"\\foreignblockquote{french}{Oui}",
       "R[0,18)'\\u000A\\u000A'{0,0} R[18,26)''{0,0} R[26,27)''{0,0} R[30,31)''{0,0} M[26,31)1"},
      // Unknown: the name and its space go, the argument goes whole, the text after stays.
      {u"\\foo {x} y", "R[0,5)''{0,0} R[5,8)''{0,0}"},
      // A switch styles the rest of its range: here the group, whose range ends before "}".
      {u"{\\bf gras} fin", "R[0,1)''{0,0} R[9,10)''{0,0} R[1,5)''{0,0} M[5,9)2"},
      {u"\\em mot", "R[0,4)''{0,0} M[4,7)1"},
      // An optional argument is no brace argument: the switch still applies from after the name.
      {u"\\bf[x] y", "R[0,3)''{0,0} R[3,6)''{0,0} M[3,8)2"},
      // The name stops at the first character that is not an ASCII letter.
      {u"\\textbf2", "R[0,7)''{0,0} M[7,8)2"},
      {u"\\item   x", "R[0,8)''{0,0}"},
      // Environment words: a paragraph break, arguments dropped. Starred, "begin" is unknown.
      {u"\\end{document}", "R[0,4)'\\u000A\\u000A'{0,0} R[4,14)''{0,0}"},
      {u"\\begin*{x}", "R[0,7)''{0,0} R[7,10)''{0,0}"},
  });
  EXPECT_EQ(InterneLaTeX(u"\\begin{itemize}\\item Un\n\\item Deux\\end{itemize}"),
            "\n\nUn Deux\n\n");
}

TEST(ConvertisseurLaTeX, ArgumentsEtCrochets) {
  VerifieRapports({
      // No match: the range's last character is taken for the closing brace.
      {u"{a", "R[0,1)''{0,0} R[1,2)''{0,0}"},
      {u"\\textbf{a", "R[0,7)''{0,0} R[7,8)''{0,0} R[8,9)''{0,0} M[7,9)2"},
      // An escaped brace does not count; an escaped backslash does not escape.
      {u"\\textbf{a\\}b}", "R[0,7)''{0,0} R[7,8)''{0,0} R[12,13)''{0,0} M[7,13)2 R[9,11)'}'{0,1}"},
      {u"\\textbf{a\\\\}b}",
       "R[0,7)''{0,0} R[7,8)''{0,0} R[11,12)''{0,0} M[7,12)2 R[9,11)'\\u000A'{0,1}"},
      // Braces and brackets are counted apart.
      {u"\\foo[a{b]c}", "R[0,4)''{0,0} R[4,9)''{0,0}"},
      // Nested kept arguments report depth first.
      {u"\\emph{a \\textbf{b}}",
       "R[0,5)''{0,0} R[5,6)''{0,0} R[18,19)''{0,0} M[5,19)1 R[8,15)''{0,0} R[15,16)''{0,0} "
       "R[17,18)''{0,0} M[15,18)2"},
      // A match beyond the range is no match: the inner brace takes the range's last character.
      {u"{\\textbf{a}",
       "R[0,1)''{0,0} R[10,11)''{0,0} R[1,8)''{0,0} R[8,9)''{0,0} R[9,10)''{0,0} M[8,10)2"},
      // A closing brace no argument consumed is ordinary.
      {u"a}", ""},
      {u"\\textbf{x} {y}",
       "R[0,7)''{0,0} R[7,8)''{0,0} R[9,10)''{0,0} M[7,10)2 R[11,12)''{0,0} R[13,14)''{0,0}"},
  });
}

TEST(ConvertisseurLaTeX, SymbolesEtAccents) {
  VerifieRapports({
      {u"\\alpha", "R[0,6)'α'{0,1}"},
      {u"\\LaTeX{}", "R[0,6)'LaTeX'{0,1} R[6,7)''{0,0} R[7,8)''{0,0}"},
      {u"\\c{c}a", "R[0,5)'ç'{0,1}"},
      // Fewer than 4 characters from the c: looked up as "c", an unknown command.
      {u"x\\c", "R[1,3)''{0,0}"},
      {u"\\c{s}", "R[0,2)''{0,0} R[2,5)''{0,0}"},
      // The star belongs to the key: no symbol.
      {u"\\alpha*", "R[0,7)''{0,0}"},
      {u"\\left( x \\right)", "R[0,5)''{0,1} R[9,15)''{0,1}"},
      {u"\\'e", "R[0,3)'é'{0,1}"},
      {u"\\'a", "R[0,2)''{0,0}"},
      {u"\\^{\\i}", "R[0,6)'î'{0,1}"},
      {u"\\%", "R[0,2)'%'{0,1}"},
      {u"\\^{}", "R[0,4)'^'{0,1}"},
      {u"\\\\", "R[0,2)'\\u000A'{0,1}"},
      {u"\\=x", "R[0,2)''{0,0}"},
      {u"a\\-b", "R[1,3)''{0,1}"},
      // The longest punctuation command and typography mark win.
      {u"a\\---b\\-/c\\-,d`e", "R[1,5)'—'{0,1} R[6,9)'-'{0,1} R[10,13)' '{0,1} R[14,15)'‘'{0,1}"},
      {u"a\\,b", "R[1,3)'\u2009'{0,1}"},
      // After a backslash, no table entry matches: "\%" just after "\\" is deleted whole.
      {u"\\\\\\%", "R[0,2)'\\u000A'{0,1} R[2,4)''{0,0}"},
      // A character outside the basic plane goes whole with its backslash.
      {u"\\\U0001F600x", "R[0,3)''{0,0}"},
      {u"\\", ""},
      {u"l'eau", "R[1,2)'’'{0,1}"},
      {u"``mot''", "R[0,2)'“'{0,1} R[5,7)'”'{0,1}"},
      {u"a--b---c", "R[1,3)'–'{0,1} R[4,7)'—'{0,1}"},
      {u"a~b", "R[1,2)'\u00A0'{0,1}"},
      {u"<<x>>", "R[0,2)'«'{0,1} R[3,5)'»'{0,1}"},
      {u"a-b <c> d", ""},
  });
}

TEST(ConvertisseurLaTeX, Blancs) {
  VerifieRapports({
      {u"a b", ""},
      {u"a  b", "R[1,2)''{0,1}"},
      {u"a\nb", "R[1,2)' '{0,1}"},
      {u"a\t\tb", "R[1,3)' '{0,1}"},
      {u"a \tb", "R[2,3)''{0,1}"},
      {u"a\t b", "R[1,2)''{0,1}"},
      {u"a\r\nb", "R[1,3)' '{0,1}"},
      // A blank line stays, and the blanks before it keep one space.
      {u"a \n\nb", ""},
      {u"a  \n\nb", "R[1,2)''{0,1}"},
      {u"a\r\n\r\nb", ""},
      {u"a\n\n\n\nb", ""},
      // A line of spaces is no paragraph break.
      {u"a \n \n b", "R[1,5)''{0,1}"},
      // A control space is part of the run.
      {u"a \\ b", "R[1,3)''{0,1}"},
      {u"a \\", ""},
      {u"a\u00A0b", ""},
  });
}

TEST(ConvertisseurLaTeX, ExposantsEtIndices) {
  VerifieRapports({
      {u"x^2", "R[1,2)''{0,0} M[2,3)4"},
      {u"x_{ab}", "R[1,2)''{0,0} R[2,3)''{0,0} R[5,6)''{0,0} M[2,6)8"},
      {u"x^\\alpha", "R[1,2)''{0,0} R[2,8)'α'{0,1} M[2,8)4"},
      // Only a symbol takes the sign's style; a command keeps its own.
      {u"x^\\textbf{y}", "R[1,2)''{0,0} R[2,9)''{0,0} R[9,10)''{0,0} R[11,12)''{0,0} M[9,12)2"},
      {u"x^\U0001F600", "R[1,2)''{0,0} M[2,4)4"},
      // The last character of a range stays.
      {u"x^", ""},
      {u"{x^}", "R[0,1)''{0,0} R[3,4)''{0,0}"},
  });
}

TEST(ConvertisseurLaTeX, PassesInverses) {
  struct CasInverse {
    bool accentsDirects;
    std::u16string_view entree;
    std::string_view attendu;
  };
  const CasInverse kCas[] = {
      {false, u"é%", "R[1,2)'\\u005C%'{1,1} R[0,1)'\\u005C\\u0027e'{1,1}"},
      {true, u"é%", "R[1,2)'\\u005C%'{1,1}"},
      {false, u"œ«", "R[0,1)'\\u005Coe{}'{1,1} R[1,2)'<<'{1,1}"},
      // The no-break space is written back in each pass.
      {false, u"a\u00A0b", "R[1,2)'~'{1,1} R[1,2)'~'{1,1}"},
      {true, u"a\u00A0b", "R[1,2)'~'{1,1}"},
      {false, u"\u202F\u2009", "R[0,1)'\\u005C,'{1,1} R[1,2)'\\u005C,'{1,1}"},
      {false, u"%&", "R[0,1)'\\u005C%'{1,1} R[1,2)'\\u005C&'{1,1}"},
      {false, u"^~", "R[0,1)'\\u005C^{}'{1,1} R[1,2)'\\u005C~{}'{1,1}"},
      {false, u"î—’", "R[0,1)'\\u005C^i'{1,1} R[1,2)'---'{1,1} R[2,3)'\\u0027'{1,1}"},
      {false, u"Ça", "R[0,1)'\\u005Cc{C}'{1,1}"},
      {false, u"ïÉ", "R[0,1)'\\u005C\"i'{1,1} R[1,2)'\\u005C\\u0027E'{1,1}"},
      {false, u"abc á", ""},
  };
  for (const CasInverse& c : kCas) {
    ConvertisseurLaTeX convertisseur(c.accentsDirects);
    EXPECT_EQ(DecritRapports(convertisseur, c.entree, true), c.attendu) << VersUtf8(c.entree);
  }
}

TEST(ConvertisseurLaTeX, AccentsDirects) {
  struct CasAccents {
    std::u16string_view document;
    bool accentsDirects;
  };
  const CasAccents kCas[] = {
      {u"", true},
      {u"\\'e", false},
      {u"é", true},
      {u"\\'e é", true},
      {u"\\textbf{\\'e}", false},  // a nested range adds its counts to its parent's
      {u"$\\'e$ et \\'a", false},  // an accent the table lacks is no accent command
      {u"\\'e\\`a \\^o ô", false},
  };
  for (const CasAccents& c : kCas) {
    ConvertisseurLaTeX convertisseur(!c.accentsDirects);
    CollecteRapports(convertisseur, c.document);
    EXPECT_EQ(convertisseur.accentsDirects, c.accentsDirects) << VersUtf8(c.document);
  }

  // The backward direction follows the habit of the document read last.
  ConvertisseurLaTeX convertisseur;
  CollecteRapports(convertisseur, u"caf\\'e");
  EXPECT_EQ(DecritRapports(convertisseur, u"é", true), "R[0,1)'\\u005C\\u0027e'{1,1}");
  CollecteRapports(convertisseur, u"café");
  EXPECT_EQ(DecritRapports(convertisseur, u"é", true), "");
  ConvertisseurLaTeX copie(convertisseur);
  EXPECT_TRUE(copie.accentsDirects);
}

TEST(ConvertisseurLaTeX, ExceptionsArretentSansSortir) {
  // An empty marque: the replacements before it stand and the call returns normally.
  std::vector<Rapport> rapports;
  const FonctionRemplace remplace = [&](MapPos::Intervalle i, const ChaineN& t,
                                        MapPos::Attributs a) {
    rapports.push_back({false, i, t, a, 0});
  };
  const FonctionMarque vide;
  ConvertisseurLaTeX convertisseur;
  const TexteAvecAttributs texte{ChaineN(u"\\textbf{x} \\'e")};
  EXPECT_NO_THROW(convertisseur.ConvertisExterneAInterne(texte, remplace, vide));
  EXPECT_EQ(DecritRapports(rapports), "R[0,7)''{0,0} R[7,8)''{0,0} R[9,10)''{0,0}");
  EXPECT_TRUE(convertisseur.accentsDirects);  // the accent after the stop was never counted
}

}  // namespace

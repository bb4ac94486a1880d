// The Markdown converter, pass by pass and block by block: each table row is a document and
// the reports it must give, in report order (U+000E, U+0011 and U+0007 are dumped as \uXXXX).
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "DecritRapports.h"
#include "Outils.h"
#include "markdown/ConvertisseurMarkDown.h"

namespace {

struct Cas {
  std::u16string_view document;
  std::string_view attendu;
};

void Verifie(const Cas* debut, const Cas* fin) {
  ConvertisseurMarkDown convertisseur;
  for (const Cas* c = debut; c != fin; ++c)
    EXPECT_EQ(DecritRapports(convertisseur, c->document), c->attendu) << DecritTexte(c->document);
}
template <size_t N>
void Verifie(const Cas (&cas)[N]) {
  Verifie(cas, cas + N);
}

TEST(ConvertisseurMarkDown, SansBalisage) {
  Verifie({
      {u"", ""},
      {u"Plain prose, nothing more.", ""},
      {u"line one\nline two", "R[8,9)' '{0,0}"},
      {u"a `b` c", ""},  // a single backtick is no delimiter
  });
  ConvertisseurMarkDown convertisseur;
  EXPECT_EQ(DecritRapports(convertisseur, u"**a** [b](c)", true), "");
}

TEST(ConvertisseurMarkDown, PortionsDelimitees) {
  Verifie({
      {u"a ```b``` c", "R[2,9)''{0,0}"},
      {u"a ``b`` c", "R[2,4)''{0,0} R[5,7)''{0,0} M[4,5)16"},
      {u"``a`` ``b``",
       "R[0,2)''{0,0} R[3,5)''{0,0} M[2,3)16 R[6,8)''{0,0} R[9,11)''{0,0} M[8,9)16"},
      {u"```a``b```", "R[0,10)''{0,0}"},
      {u"````", "R[0,2)''{0,0} R[2,4)''{0,0}"},  // no content: no style
      {u"``a", ""},
      // The escaped opening is skipped; the next one finds no closing delimiter.
      {u"\\``a``", ""},
      // Fenced code goes whole, info string and all, before the blocks are looked at; its
      // line ends go with it, so the lines around it make one paragraph.
      {u"x\n```js\n# no\n```\ny", "R[2,16)''{0,0} R[1,2)' '{0,0} R[16,17)' '{0,0}"},
  });
}

TEST(ConvertisseurMarkDown, BlocDEnTete) {
  Verifie({
      {u"---\ntitle: x\n---\nBody\n", "R[0,17)''{0,0}"},
      // With CR LF line ends there is no header block; the "---" lines are thematic breaks.
      {u"---\r\ntitle: x\r\n---\r\nBody\r\n", "R[0,3)''{0,0} R[15,18)''{0,0}"},
      {u"---\nno end", "R[0,3)''{0,0}"},
  });
}

TEST(ConvertisseurMarkDown, EchappementsEtEntites) {
  Verifie({
      {u"\\*a\\*", "R[0,1)''{0,0} R[3,4)''{0,0}"},
      {u"a*b", "R[1,2)''{0,0}"},
      {u"\\\\", "R[0,1)''{0,0}"},
      {u"\\\\\\", "R[0,1)''{0,0} R[1,2)''{0,0}"},
      // One pass per character, in the groups' order: "-" before "[" before "]".
      {u"\\]\\-\\[", "R[2,3)''{0,0} R[4,5)''{0,0} R[0,1)''{0,0}"},
      // A backslash removed for the star escapes nothing more.
      {u"\\\\*", "R[1,2)''{0,0}"},
      {u"a\\b", ""},
      {u"&amp;lt;", "R[0,5)'&'{0,0}"},
      {u"&gt;&lt;&copy;", "R[8,14)'©'{0,0} R[4,8)'<'{0,0} R[0,4)'>'{0,0}"},
      {u"\\&copy;", ""},
      {u"&nbsp;", ""},
  });
}

TEST(ConvertisseurMarkDown, Titres) {
  Verifie({
      {u"## Title ##", "R[0,2)''{0,0} R[9,10)''{0,0} R[10,11)''{0,0}"},
      {u"####### x", "R[0,6)''{0,0} R[6,7)''{0,0}"},
      {u"#tag", "R[0,1)''{0,0}"},
      {u"#", "R[0,1)''{0,0}"},
      {u"# #", "R[0,1)''{0,0} R[2,3)''{0,0}"},
      // The spans of the title come before the removal of its "#" run.
      {u"# *a*", "M[2,4)1 R[2,3)''{0,0} R[4,5)''{0,0} R[0,1)''{0,0}"},
      {u"# Title {#id}", "R[8,13)''{0,0} R[0,1)''{0,0}"},
      {u"# Title [x]", "R[8,11)''{0,0} R[0,1)''{0,0}"},
      {u"# See [x](y)", "R[6,7)''{0,0} R[8,9)''{0,0} R[9,12)''{0,0} R[0,1)''{0,0}"},
      // Setext: the underline goes while the paragraph looks at its next line...
      {u"Title\n===", "R[6,9)''{0,0}"},
      {u"Title\n-", "R[6,7)''{0,0}"},
      // ...or on its own after a blank line.
      {u"Title\n\n===", "R[7,10)''{0,0}"},
  });
}

TEST(ConvertisseurMarkDown, LignesHorizontales) {
  Verifie({
      {u"***", "R[0,3)''{0,0}"},
      {u"* * *", "R[0,5)''{0,0}"},
      {u"  ___  \nx", "R[2,7)''{0,0}"},
      {u"--", "R[0,2)''{0,0}"},  // too short for a break: a setext underline
      // After a one-line paragraph the break stops it before its only line: the paragraph
      // consumes nothing, and its first unit is passed by.
      {u"a\n***", "R[2,5)''{0,0}"},
  });
}

TEST(ConvertisseurMarkDown, Listes) {
  Verifie({
      {u"- item", "R[0,1)'•'{0,0}"},
      {u"3. item", "R[0,1)'•'{0,0} R[1,2)''{0,0}"},
      {u"12. item", "R[0,1)'•'{0,0} R[1,2)''{0,0} R[2,3)''{0,0}"},
      {u"1) item", ""},
      {u"  - item", "R[0,1)'•'{0,0}"},  // the first space becomes the bullet; "-" stays
      {u"- a\n- b", "R[0,1)'•'{0,0} R[4,5)'•'{0,0}"},
      {u"- a\nb", "R[0,1)'•'{0,0} R[3,4)' '{0,0}"},  // a lazy continuation
      {u"- a\n\npara", "R[0,1)'•'{0,0}"},            // the list ends before the paragraph
      {u"- a\n\n    more", "R[0,1)'•'{0,0} R[3,4)' '{0,0} R[4,5)' '{0,0}"},
      // Nested items report before the bullet of the item that holds them.
      {u"- a\n  - b\n- c", "R[6,7)'•'{0,0} R[0,1)'•'{0,0} R[10,11)'•'{0,0}"},
      {u"- a\n\t- b", "R[5,6)'•'{0,0} R[0,1)'•'{0,0}"},
      // A tab after spaces is no indentation: the line continues the item.
      {u"- a\n  \t- b", "R[0,1)'•'{0,0} R[3,4)' '{0,0}"},
      // A thematic break among the item's lines is removed while the item looks at it.
      {u"- a\n- - -", "R[4,9)''{0,0} R[0,1)'•'{0,0} R[3,4)' '{0,0}"},
      {u"- a *b\n* c", "R[0,1)'•'{0,0} R[7,8)'•'{0,0} R[4,5)''{0,0}"},
      // A bullet list keeps the digits of a numbered item that joins it.
      {u"- a\n2. b", "R[0,1)'•'{0,0} R[4,5)'•'{0,0}"},
  });
}

TEST(ConvertisseurMarkDown, Citations) {
  Verifie({
      {u"> quote", "R[0,1)''{0,0}"},
      {u">> deep", "R[0,2)''{0,0}"},
      {u"   > x", "R[3,4)''{0,0}"},
      {u"> a\nb\n\n> c\n\nd", "R[0,1)''{0,0} R[7,8)''{0,0}"},
      // Quote lines keep their line breaks; emphasis inside is analysed line by line.
      {u"> *a*\n> b", "R[0,1)''{0,0} M[2,4)1 R[2,3)''{0,0} R[4,5)''{0,0} R[6,7)''{0,0}"},
  });
}

TEST(ConvertisseurMarkDown, CodeIndente) {
  Verifie({
      {u"    code\nmore", "R[0,9)''{0,0}"},
      {u"    a\n\n    b\n\nc", "R[0,14)''{0,0}"},
      {u"\tcode", "R[0,5)''{0,0}"},
      {u"   x", ""},
  });
}

TEST(ConvertisseurMarkDown, Tableaux) {
  Verifie({
      {u"a | b\n--- | ---\n1 | 2",
       "R[2,3)'\\u000E'{0,0} R[6,7)''{0,0} R[7,8)''{0,0} R[8,9)''{0,0} R[12,13)''{0,0} "
       "R[13,14)''{0,0} R[14,15)''{0,0} R[18,19)'\\u000E'{0,0} R[10,11)''{0,0}"},
      {u"|a|\n|:-|\n",
       "R[0,1)'\\u000E'{0,0} R[2,3)'\\u000E'{0,0} R[5,6)''{0,0} R[6,7)''{0,0} "
       "R[4,5)''{0,0} R[7,8)''{0,0}"},
      // After a CR LF header the delimiter row starts after the LF, and the body would start
      // at the LF that ends it: the table ends after its delimiter row.
      {u"a|b\r\n-|-\r\n1|2\r\n",
       "R[1,2)'\\u000E'{0,0} R[5,6)''{0,0} R[7,8)''{0,0} R[11,12)'\\u000E'{0,0} R[6,7)''{0,0}"},
      // A last line with a pipe is a table of one row.
      {u"a | b", "R[2,3)'\\u000E'{0,0}"},
      // No delimiter row: the header's pipe is replaced and the "-" met before the walk
      // stopped is gone; the table consumes nothing, and what follows its first unit is read
      // as a paragraph.
      {u"a | b\n-x", "R[2,3)'\\u000E'{0,0} R[6,7)''{0,0} R[5,6)' '{0,0}"},
      {u"a \\| b", "R[2,3)''{0,0}"},
  });
}

TEST(ConvertisseurMarkDown, LiensEtNotes) {
  Verifie({
      {u"[text](dest 'T')",
       "R[0,1)''{0,0} R[5,6)'\\u0011'{0,0} R[6,12)''{0,0} R[12,13)'\\u0011'{0,0} R[14,16)''{0,0}"},
      {u"a ![alt](x.png)", "R[2,4)''{0,0} R[7,8)''{0,0} R[8,15)''{0,0}"},
      // At a paragraph's start the "!" goes first; the link is then no image.
      {u"![alt](x.png)", "R[0,1)''{0,0} R[1,2)''{0,0} R[5,6)''{0,0} R[6,13)''{0,0}"},
      {u"[text][ref]", "R[0,1)''{0,0} R[5,6)''{0,0} R[6,11)''{0,0}"},
      {u"[a](b(c)d)", "R[0,1)''{0,0} R[2,3)''{0,0} R[3,10)''{0,0}"},
      {u"[a](b){.c}", "R[6,10)''{0,0} R[0,1)''{0,0} R[2,3)''{0,0} R[3,6)''{0,0}"},
      {u"[text] more", ""},
      {u"[a](b", ""},
      // The paragraph's line break is replaced first, so no destination follows the line.
      {u"[a]\n(b)", "R[3,4)' '{0,0}"},
      {u"a[^1] b", "R[1,2)'\\u0007'{0,0} R[2,5)''{0,0}"},
      {u"a[^x-y] b", ""},
      {u"a\n[^1]: note", "R[2,3)'\\u000E'{0,0} R[3,6)''{0,0} R[6,7)''{0,0}"},
      {u"[^1]: note", "R[0,1)'\\u0007'{0,0} R[1,4)''{0,0} R[4,5)''{0,0}"},
      // A link definition stays as it is.
      {u"[a]: http://x", ""},
      {u"*[HTML]: Hypertext", "R[0,8)''{0,0}"},
  });
}

TEST(ConvertisseurMarkDown, BalisesEtLiensAutomatiques) {
  Verifie({
      {u"a <b>bold</b> c", "R[2,5)''{0,0} R[9,13)''{0,0}"},
      {u"a < b\nc > d", "R[5,6)' '{0,0} R[2,9)''{0,0}"},
      {u"x<br/>y<br />z<br>w<BR/>v",
       "R[1,6)'\\u000E'{0,0} R[7,13)'\\u000E'{0,0} R[14,18)''{0,0} R[19,24)''{0,0}"},
      {u"see <https://x.org> now", "R[4,5)''{0,0} R[18,19)''{0,0}"},
      {u"<HTTP://X> <me@x.org>", "R[0,1)''{0,0} R[9,10)''{0,0} R[11,12)''{0,0} R[20,21)''{0,0}"},
      {u"<!-- note -->\n",
       "R[0,4)''{0,0} R[4,5)'\\u0011'{0,0} R[9,10)'\\u0011'{0,0} R[10,13)''{0,0}"},
      {u"<!-- a -->  ", "R[0,4)''{0,0} R[4,5)'\\u0011'{0,0} R[6,7)'\\u0011'{0,0} R[7,10)''{0,0}"},
      {u"<!-- note -->", ""},           // closes at the very end of the range
      {u"<!-- a --> b\n", ""},          // not alone on its line
      {u"<!-- never closed\n- a", ""},  // runs to the end: no block after it
  });
}

TEST(ConvertisseurMarkDown, Emphase) {
  Verifie({
      {u"*a* and _b_",
       "M[0,2)1 R[0,1)''{0,0} R[2,3)''{0,0} M[8,10)1 R[8,9)''{0,0} R[10,11)''{0,0}"},
      {u"**bold**", "M[2,6)2 R[0,2)''{0,0} R[6,8)''{0,0}"},
      {u"~~x~~", "M[2,3)32 R[0,2)''{0,0} R[3,5)''{0,0}"},
      {u"x~2~", "M[1,3)8 R[1,2)''{0,0} R[3,4)''{0,0}"},
      {u"x^2^", "M[1,3)4 R[1,2)''{0,0} R[3,4)''{0,0}"},
      {u"snake_case_name", "R[5,6)''{0,0} R[10,11)''{0,0}"},
      {u"_a_b", "R[0,1)''{0,0} R[2,3)''{0,0}"},
      {u"***x***",
       "R[0,1)''{0,0} R[1,2)''{0,0} R[2,3)''{0,0} R[4,5)''{0,0} R[5,6)''{0,0} R[6,7)''{0,0}"},
      {u"**", "R[0,1)''{0,0} R[1,2)''{0,0}"},
      {u"**a *b* c**", "M[4,6)1 R[4,5)''{0,0} R[6,7)''{0,0} M[2,9)2 R[0,2)''{0,0} R[9,11)''{0,0}"},
      {u"a ~b", ""},  // an unclosed tilde stays
  });
}

TEST(ConvertisseurMarkDown, Paragraphes) {
  Verifie({
      {u"!Hello", "R[0,1)''{0,0}"},
      {u"!!x\n!y", "R[0,2)''{0,0} R[4,5)''{0,0} R[3,4)' '{0,0}"},
      // Before a "#" line after its second line, the paragraph stops at that second line,
      // which the next paragraph takes with the "#" line.
      {u"a\nb\n# c", "R[3,4)' '{0,0} R[4,5)''{0,0}"},
      {u"a\n[x]: y", ""},
      {u"a\n> b", "R[2,3)''{0,0}"},
  });
}

}  // namespace

// The prose profile: code spans of any length and link reference definitions are not prose,
// and nothing inside them is read as Markdown. The reference reading of each row is above.
TEST(ConvertisseurMarkDown, ProfilProse) {
  OptionsProseMarkDown prose;
  prose.Actif = true;
  ConvertisseurMarkDown convertisseur(prose);
  static constexpr Cas kCas[] = {
      {u"a `b` c", "R[2,3)''{0,0} R[4,5)''{0,0} M[3,4)16"},
      // Emphasis and escapes inside code are code's.
      {u"`a*b*` \\*", "R[0,1)''{0,0} R[5,6)''{0,0} M[1,5)16 R[7,8)''{0,0}"},
      {u"``x_y``", "R[0,2)''{0,0} R[5,7)''{0,0} M[2,5)16"},
      // A paragraph break ends the search for the closing backtick; an escaped one opens none.
      {u"`a\n\nb` c", ""},
      {u"`a\n\r\nb` c", ""},
      {u"`a\nb\n` c\n\nd", "R[0,1)''{0,0} R[5,6)''{0,0} M[1,5)16"},
      {u"\\`a` b`", "R[3,4)''{0,0} R[6,7)''{0,0} M[4,6)16"},
      // A definition, its destination on the next line, then prose again.
      {u"[x]: https://e.org \"T\"\ntext", "M[0,22)16"},
      {u"[y]:\n  <http://z.org>\nz", "M[0,21)16"},
  };
  for (const auto& [document, attendu] : kCas)
    EXPECT_EQ(DecritRapports(convertisseur, document), attendu) << DecritTexte(document);
}

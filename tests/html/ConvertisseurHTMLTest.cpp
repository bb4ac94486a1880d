// The HTML converter: its reports on small pages, grouped by behaviour, the count that decides
// how text is written back, the re-encoding, and what an empty callable does.
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "DecritRapports.h"
#include "Outils.h"
#include "html/ConvertisseurHTML.h"

namespace {

struct Cas {
  std::u16string_view entree;
  std::string_view attendu;  // reports in the order they are made
};

void VerifieCas(std::initializer_list<Cas> cas) {
  for (const Cas& c : cas) {
    ConvertisseurHTML convertisseur;
    EXPECT_EQ(DecritRapports(convertisseur, c.entree), c.attendu) << VersUtf8(c.entree);
  }
}

TEST(ConvertisseurHTML, BlancsEtEspaces) {
  VerifieCas({
      {u"a b", ""},
      {u"a\tb", ""},
      {u"a  b", "R[1,3)' '{0,1}"},
      {u"a\nb", "R[1,2)' '{0,1}"},
      // Blanks right after a reported blank or line feed go, with {0, 1}.
      {u"<p>a</p>\n  b", "R[0,3)'\\u000A'{0,0} R[4,8)'\\u000A'{0,0} R[8,11)''{0,1}"},
      {u"a <br> b", "R[2,6)''{0,0} R[6,6)''{0,0} R[6,7)''{0,1}"},
      // Nothing was reported before the first blanks after a leading tag: they go as well.
      {u"<br>  x", "R[0,4)''{0,0} R[4,4)''{0,0} R[4,6)''{0,1}"},
      {u"  <!DOCTYPE html>\n<p>x</p>",
       "R[0,17)''{0,0} R[17,18)''{0,1} R[18,21)'\\u000A'{0,0} R[22,26)'\\u000A'{0,0}"},
      {u"<!doctype html", "R[0,14)''{0,0}"},
      {u"a/*x*/b", "R[1,6)''{0,0} R[6,6)' '{0,1}"},
      {u"/*/", "R[0,3)''{0,0}"},
      // An unclosed '/*' skips to the last unit, which is read next, after a word: a space.
      {u"ab/*cd", "R[5,5)' '{0,1}"},
  });
}

TEST(ConvertisseurHTML, EspaceEntreMotsAutourDuBalisage) {
  VerifieCas({
      {u"a<br>b", "R[1,5)''{0,0} R[5,5)''{0,0} R[5,5)' '{0,1}"},
      {u"wo<b>rd</b>", "R[5,5)' '{0,1} R[2,5)''{0,0} R[7,11)''{0,0}"},
      {u"r&eacute;sum&eacute;", "R[1,9)'é'{0,1} R[9,9)' '{0,1} R[12,20)'é'{0,1}"},
      // Not after punctuation, and not when a blank follows.
      {u"a&amp;b", "R[1,6)'&'{0,1}"},
      {u"x<i> y</i>", "M[4,6)1 R[1,4)''{0,0} R[6,10)''{0,0}"},
      // "<" itself is no reason for a space: the space goes before the word after the tags.
      {u"a<i><b>c</b></i>",
       "R[7,7)' '{0,1} M[7,8)1 R[4,7)''{0,0} R[8,12)''{0,0} M[4,12)1 R[1,4)''{0,0} "
       "R[12,16)''{0,0}"},
  });
}

TEST(ConvertisseurHTML, References) {
  VerifieCas({
      {u"&quot;x", "R[0,6)'\"'{0,1}"},
      {u"&nbsp;&frasl;", "R[0,6)'\u202F'{0,1} R[6,13)'/'{0,1}"},
      {u"&Eacute;&EACUTE;", "R[0,8)'É'{0,1} R[8,16)'[HTML]'{0,0} M[8,16)16"},
      {u"&#233;&#xE9;&#XE9;", "R[0,6)'é'{0,1} R[6,12)'é'{0,1} R[12,18)'é'{0,1}"},
      {u"&#65;b", "R[0,5)'A'{0,1} R[5,5)' '{0,1}"},
      {u"&#x1F600;", "R[0,9)'😀'{0,1}"},
      {u"&#1114111;", "R[0,10)'\U0010FFFF'{0,1}"},
      {u"&#1114112;", "R[0,10)'[HTML]'{0,0} M[0,10)16"},
      {u"&#4294967296;", "R[0,13)'[HTML]'{0,0} M[0,13)16"},
      {u"&#x10000000000000001;", "R[0,21)'[HTML]'{0,0} M[0,21)16"},
      {u"&#;&#x;", "R[0,3)'\\u0000'{0,1} R[3,7)'\\u0000'{0,1}"},
      {u"&#12", ""},
      // Left as text, its last unit is read next, still after the word before the "&".
      {u"a&#12", "R[4,4)' '{0,1}"},
      {u"a&#", ""},
      {u"&#12;", "R[0,5)'\\u000C'{0,1}"},
      // A non-digit leaves the reference as text and counts as a word before what follows.
      {u"&#x12G4;", "R[5,5)' '{0,1}"},
      // The blank after it goes: the reference's units were skipped, not read as a word.
      {u"a &#12 b", "R[6,7)''{0,1}"},
      {u"&unknown;x", "R[0,9)'[HTML]'{0,0} M[0,9)16 R[9,9)' '{0,1}"},
      // With no ";" anywhere after it, the rest of the text is not read (no tag is removed).
      {u"AT&T <b>x</b>", ""},
      {u"a & b <br>", "R[6,10)''{0,0} R[10,10)''{0,0}"},
      {u"x&", ""},
      // A "&" in prose followed somewhere by ";" makes one placeholder of all between.
      {u"R&D <b>x</b>;", "R[1,13)'[HTML]'{0,0} M[1,13)16"},
  });
}

TEST(ConvertisseurHTML, FermeturesImplicites) {
  VerifieCas({
      {u"<p>a<p>b</p>",
       "R[0,3)'\\u000A'{0,0} R[4,4)'\\u000A'{0,0} R[7,7)' '{0,1} R[4,7)'\\u000A'{0,0} "
       "R[8,12)'\\u000A'{0,0}"},
      {u"<ul><li>a<li>b</ul>",
       "R[4,8)'\\u000E'{0,0} R[9,9)''{0,0} R[13,13)' '{0,1} R[9,13)'\\u000E'{0,0} R[0,4)''{0,0} "
       "R[14,19)''{0,0}"},
      {u"<colgroup><col><col><tr>",
       "R[10,15)''{0,0} R[15,15)''{0,0} R[15,20)''{0,0} R[20,20)''{0,0} R[0,10)''{0,0} "
       "R[20,20)''{0,0} R[20,24)'\\u000E'{0,0}"},
      // "th" gets no tab, but "td" and "th" close each other.
      {u"<tr><th>a<td>b",
       "R[4,8)''{0,0} R[9,9)''{0,0} R[13,13)' '{0,1} R[9,13)'\\u0009'{0,0} R[0,4)'\\u000E'{0,0}"},
      {u"<dl><dt>a<dd>b</dl>",
       "R[4,8)'\\u000A'{0,0} R[9,9)''{0,0} R[13,13)' '{0,1} R[9,13)'\\u000A'{0,0} R[0,4)''{0,0} "
       "R[14,19)''{0,0}"},
      {u"<thead><tbody>", "R[0,7)''{0,0} R[7,7)''{0,0} R[7,14)''{0,0}"},
      {u"<tfoot><tbody>", "R[7,14)''{0,0} R[0,7)''{0,0}"},
      // Only the parent is closed: a "div" does not reach a "p" two levels down.
      {u"<p><span><div>", "R[9,14)'\\u000A'{0,0} R[3,9)''{0,0} R[0,3)'\\u000A'{0,0}"},
      {u"<P>a<DIV>", "R[0,3)'\\u000A'{0,0} R[4,4)'\\u000A'{0,0} R[4,9)'\\u000A'{0,0}"},
      // The closed element's line feed does not count as a reported blank.
      {u"<p>a<p> b", "R[0,3)'\\u000A'{0,0} R[4,4)'\\u000A'{0,0} R[4,7)'\\u000A'{0,0}"},
  });
}

TEST(ConvertisseurHTML, BalisesFermantes) {
  VerifieCas({
      {u"</p>x", "R[0,4)''{0,0}"},
      // Nothing open and no ">": only "<" and the blanks after it go.
      {u"< /p x", "R[0,2)''{0,0}"},
      {u"<p>x</b>y</p>",
       "R[4,8)'\\u000A'{0,0} R[8,8)' '{0,1} R[0,3)'\\u000A'{0,0} R[9,13)'\\u000A'{0,0}"},
      {u"<i>x</ i >", "M[3,4)1 R[0,3)''{0,0} R[4,10)''{0,0}"},
      {u"<P>x</p>", "R[0,3)'\\u000A'{0,0} R[4,8)'\\u000A'{0,0}"},
      // "p" begins "pre": recognised, but no ">" follows the name, so the rest is text.
      {u"<p>x</pre>", "R[7,7)' '{0,1} R[0,3)'\\u000A'{0,0}"},
      {u"<i>a</b", "R[6,6)' '{0,1} R[0,3)''{0,0}"},
      {u"<i>a</b x", "R[6,6)' '{0,1} R[0,3)''{0,0}"},
      // Naming the parent ends the child without a closing tag; the child's bit stays open.
      {u"<div><em>a</div>b<p>c</p>",
       "R[5,9)''{0,0} M[5,10)1 R[0,5)'\\u000A'{0,0} R[10,16)'\\u000A'{0,0} R[16,16)' '{0,1} "
       "R[20,20)' '{0,1} M[20,21)1 R[17,20)'\\u000A'{0,0} R[21,25)'\\u000A'{0,0}"},
      // Two levels up: a stray tag for the child, which stays open.
      {u"<table><tr><td>a</table>",
       "R[16,24)''{0,0} R[11,15)'\\u0009'{0,0} R[7,11)'\\u000E'{0,0} R[0,7)''{0,0}"},
  });
}

TEST(ConvertisseurHTML, ContenuBrutEtCommentaires) {
  VerifieCas({
      {u"<SCRIPT>a</b></SCRIPT>", "R[0,22)''{0,0}"},
      {u"<code>x</code>word", "R[0,14)'[HTML]'{0,0} M[0,14)16 R[14,14)' '{0,1}"},
      {u"a<svg><p>&eacute;</p></svg>b", "R[1,27)''{0,0} R[27,27)' '{0,1}"},
      {u"<style type=\"a>b\">x</style>", "R[0,27)''{0,0}"},
      // Never closed: deleted from its "<" to the end, content included.
      {u"<script>never closed", "R[0,20)''{0,0}"},
      {u"a <style>b</style >c", "R[2,20)''{0,0}"},
      // Raw content inside a styled element: the element gets the style span, not the code.
      {u"<em><code>x</code></em>",
       "R[4,18)'[HTML]'{0,0} M[4,18)16 M[4,18)1 R[0,4)''{0,0} R[18,23)''{0,0}"},
      {u"a<!-- c -->b", "R[1,11)''{0,0} R[11,11)' '{0,1}"},
      {u"<!-- x", "R[4,5)''{0,1} R[0,4)''{0,0}"},
      {u"<!---->", "R[0,7)''{0,0}"},
      {u"<!-->x", "R[0,4)''{0,0}"},
  });
}

TEST(ConvertisseurHTML, Styles) {
  VerifieCas({
      {u"<h1>T</h1>", "M[4,5)2 R[0,4)'\\u000A'{0,0} R[5,10)'\\u000A'{0,0}"},
      {u"<b>x</b>", "R[0,3)''{0,0} R[4,8)''{0,0}"},
      {u"<sub>i</sub>", "M[5,6)8 R[0,5)''{0,0} R[6,12)''{0,0}"},
      {u"<em><i>x</i> y</em>",
       "M[7,8)1 R[4,7)''{0,0} R[8,12)''{0,0} R[0,4)''{0,0} R[14,19)''{0,0}"},
      {u"<strong>a <span>b</span></strong>",
       "M[16,17)2 R[10,16)''{0,0} R[17,24)''{0,0} M[8,24)2 R[0,8)''{0,0} R[24,33)''{0,0}"},
      {u"<em><sup>x</sup></em>",
       "M[9,10)5 R[4,9)''{0,0} R[10,16)''{0,0} M[4,16)1 R[0,4)''{0,0} R[16,21)''{0,0}"},
      // An empty content still gets its span.
      {u"<del></del>", "M[5,5)32 R[0,5)''{0,0} R[5,11)''{0,0}"},
      {u"<em>a<br>b</em>",
       "M[9,9)1 R[5,9)''{0,0} R[9,9)''{0,0} R[9,9)' '{0,1} M[4,10)1 R[0,4)''{0,0} R[10,15)''{0,0}"},
  });
}

TEST(ConvertisseurHTML, ElementsOuvertsALaFin) {
  VerifieCas({
      {u"<div><ul><li>x", "R[9,13)'\\u000E'{0,0} R[5,9)''{0,0} R[0,5)'\\u000A'{0,0}"},
      // An unfinished opening tag is left out: the text after its "<" stays.
      {u"<p>a<b class=x", "R[0,3)'\\u000A'{0,0}"},
      {u"<p>a<img alt='x>", "R[0,3)'\\u000A'{0,0}"},
      {u"<td>a<", "R[0,4)'\\u0009'{0,0}"},
      // A "<" that starts no real tag opens an element named by the next word.
      {u"a < b and c > d", "R[13,14)''{0,1} R[2,13)''{0,0}"},
      {u"<>x", "R[0,2)''{0,0}"},
  });
}

TEST(ConvertisseurHTML, ConvertirNonASCII) {
  struct CasCompte {
    std::u16string_view entree;
    bool attendu;
  };
  const CasCompte kCas[] = {
      {u"", false},
      {u"&eacute;&eacute;&eacute;éé", true},
      {u"&eacute;&eacute;éé", false},
      {u"&amp;&lt;&gt;&#38;&#60;&#62;", false},
      {u"&quot;", true},
      {u"&#x1F600;", true},
      // A run of non-ASCII blanks counts once...
      {u"a\u2003\u2003b&eacute;&eacute;", true},
      // ...and not at all when it follows a tag right after a word.
      {u"a<b>\u2003x</b>&eacute;", true},
      // Units are counted, not characters: a character beyond U+FFFF counts twice.
      {u"😀&eacute;&eacute;", false},
      // Raw content is not read, so not counted.
      {u"<script>éééé</script>&eacute;", true},
  };
  for (const CasCompte& c : kCas) {
    ConvertisseurHTML convertisseur;
    CollecteRapports(convertisseur, c.entree);
    EXPECT_EQ(convertisseur.ConvertirNonASCII, c.attendu) << VersUtf8(c.entree);
  }
}

TEST(ConvertisseurHTML, ReEncodage) {
  ConvertisseurHTML neuf;
  EXPECT_TRUE(neuf.ConversionInverse);
  EXPECT_EQ(DecritRapports(neuf, u"a < b & c", true), "R[2,3)'&lt;'{0,1} R[6,7)'&amp;'{0,1}");
  EXPECT_EQ(DecritRapports(neuf, u"é œ \u202F \u00A0 >", true),
            "R[0,1)'&eacute;'{0,1} R[2,3)'&#x153;'{0,1} R[4,5)'&nbsp;'{0,1} R[6,7)'&#xa0;'{0,1} "
            "R[8,9)'&gt;'{0,1}");
  EXPECT_EQ(DecritRapports(neuf, u"😀\u2019", true),
            "R[0,1)'&#xd83d;'{0,1} R[1,2)'&#xde00;'{0,1} R[2,3)'&#x2019;'{0,1}");
  EXPECT_EQ(DecritRapports(neuf, u"\"a/b\" ''", true), "");
  EXPECT_EQ(DecritRapports(neuf, u"", true), "");

  // A page with more raw characters than references gets them written back raw.
  ConvertisseurHTML apresPageBrute;
  CollecteRapports(apresPageBrute, u"<p>été</p>");
  EXPECT_EQ(DecritRapports(apresPageBrute, u"é&", true), "R[1,2)'&amp;'{0,1}");
  // The same converter follows the last page it read.
  CollecteRapports(apresPageBrute, u"<p>&eacute;t&eacute;</p>");
  EXPECT_EQ(DecritRapports(apresPageBrute, u"é&", true),
            "R[0,1)'&eacute;'{0,1} R[1,2)'&amp;'{0,1}");
}

// A run cut short by an empty callable changes nothing of the converter's state.
TEST(ConvertisseurHTML, UneConversionInterrompueNeChangeRien) {
  ConvertisseurHTML convertisseur;
  CollecteRapports(convertisseur, u"é");
  ASSERT_FALSE(convertisseur.ConvertirNonASCII);
  const FonctionMarque marque = [](MapPos::Intervalle, uint32_t) {};
  const TexteAvecAttributs page{ChaineN(u"<em>x</em>&eacute;&eacute;")};
  EXPECT_THROW(convertisseur.ConvertisExterneAInterne(page, nullptr, marque),
               std::bad_function_call);
  EXPECT_FALSE(convertisseur.ConvertirNonASCII);
  // Back to the page: a character to escape reports, a plain text does not.
  EXPECT_NO_THROW(
      convertisseur.ConvertisInterneAExterne(TexteAvecAttributs(ChaineN(u"ab")), nullptr, nullptr));
  EXPECT_THROW(
      convertisseur.ConvertisInterneAExterne(TexteAvecAttributs(ChaineN(u"a&b")), nullptr, marque),
      std::bad_function_call);
}

}  // namespace

// The prose profile against the reference filters, construct by construct: each row is a
// document, the internal text the reference filters give, and the text the prose profile
// prints (TexteLisible of its internal text). The reference column must never change.
#include <gtest/gtest.h>

#include "DecritRapports.h"
#include "framework/FiltresCorrecteur.h"
#include "framework/TexteLisible.h"

namespace {

struct Cas {
  eFormatTexte format;
  std::u16string_view document;
  std::u16string_view exact;  // the reference filters' internal text
  std::u16string_view prose;  // what the prose profile prints
};

std::u16string Lit(eFormatTexte format, std::u16string_view document, bool prose,
                   const OptionsProseLaTeX& latex = {}) {
  FiltresCorrecteur::Params params;
  params.Format = format;
  if (prose) {
    params.Prose.LaTeX = latex;
    params.Prose.Active();
  }
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  const auto resultat = filtres.Mappeur().Convertis(ChaineN(document));
  return std::u16string(prose ? TexteLisible(resultat.Interne()).Vue()
                              : resultat.Interne().Chaine().Vue());
}

void Verifie(std::initializer_list<Cas> cas) {
  for (const Cas& c : cas) {
    EXPECT_EQ(DecritTexte(Lit(c.format, c.document, false)), DecritTexte(c.exact))
        << "exact: " << DecritTexte(c.document);
    EXPECT_EQ(DecritTexte(Lit(c.format, c.document, true)), DecritTexte(c.prose))
        << "prose: " << DecritTexte(c.document);
  }
}

TEST(ProfilProse, HTML) {
  constexpr eFormatTexte H = eFormatHTML;
  Verifie({
      // Inline markup and references inside a word keep it whole; blocks and breaks do not.
      {H, u"r&eacute;sum&eacute; wo<b>rd</b>", u"ré sumé wo rd", u"résumé word"},
      {H, u"<p>a</p><p>b<br>c</p>", u"\na\n\n b c\n", u"\na\n\n b c\n"},
      // The full table of references; an unterminated one costs nothing but itself.
      {H, u"it&rsquo;s&hellip; &mdash;", u"it[HTML] s[HTML] [HTML]", u"it’s… —"},
      {H, u"AT&T <b>x</b> &nbsp y", u"AT&T <b>x</b> &nbsp y", u"AT&T x &nbsp y"},
      // "/*" is a path outside scripts and styles.
      {H, u"<p>dir/* and x</p>", u"\ndir/* and x</p >", u"\ndir/* and x\n"},
      // An unclosed comment costs its own line.
      {H, u"a <!-- never closed\nb", u"a never closed b", u"a b"},
      // Code and computer input or output are not prose.
      {H, u"a <code>x&lt;y</code> b", u"a [HTML] b", u"a b"},
      {H, u"<pre>p\nq</pre><p>k <kbd>C-x</kbd> s <samp>o</samp> <var>n</var> <tt>t</tt></p>",
       u"p q\n k C-x s o n t\n", u"\n k s \n"},
  });
}

TEST(ProfilProse, LaTeX) {
  constexpr eFormatTexte L = eFormatLaTeX;
  Verifie({
      // Code, inline or in an environment, opens neither a brace nor a comment.
      {L, u"Use \\verb\"\\begin{document}\" and \\verb|{| here. Still text.",
       u"Use \"\n\n\" and || here. Still text", u"Use and here. Still text."},
      {L, u"a \\verb*+%x+ b % comment\nc", u"a + c", u"a b c"},
      // A backslash escaped by the one before it opens nothing; one after a delimiter does.
      {L, u"a \\\\begin{verbatim} b % c\nd \\\\\\begin{verbatim} e % f\n\\end{verbatim} g.",
       u"a \nbeginverbatim b d \n\n\n e \n\n g.", u"a \nbeginverbatim b d \n\n\n\n\n g."},
      {L, u"x \\verb\\y\\\\lstinline|%z| w \\\\\\verb|%| v.", u"x \nlstinline|", u"x w \n v."},
      {L, u"x\n\\begin{verbatim}\n\\bib{key}{Type}{ % no comment\n\\end{verbatim}\nafter the code.",
       u"x \n\n ", u"x \n\n\n\n after the code."},
      {L,
       u"S \\begin{lstlisting}[language=C]\nint f() { return 0; }\n\\end{lstlisting} e. "
       u"\\begin{minted}[a]{python}\nx = {\n\\end{minted}\nT.",
       u"S [TeX]\n\n e. \n\n x =  \n\n T", u"S \n\n\n\n e. \n\n\n\n T."},
      // Definitions vanish; uses keep what the definition shows as prose.
      {L,
       u"\\newcommand{\\pkg}[1]{\\textsf{#1}}\\newcommand\\note[1]{}\\newcommand{\\proj}{Fer"
       u" tool}\nUse \\pkg{amsmath} with \\proj now.\\note{hidden} Ok \\mref{sec:a}.",
       u" Use  with now. Ok .", u" Use amsmath with Fer tool now. Ok ."},
      {L, u"\\def\\foo#1#2{\\ref{#1}#2}\\DeclareMathOperator{\\sgn}{sgn}\nA \\foo{x}{word} b.",
       u"#1#2#1#2 A  b.", u" A word b."},
      {L,
       u"\\newenvironment{boxed}[1]{\\begin{center}#1}{\\end{center}}\n"
       u"\\begin{boxed}{Title}Body\\end{boxed}",
       u" \n\nBody\n\n", u" \n\nTitleBody\n\n"},
      // An unclosed brace, formula or environment costs its paragraph, not the rest.
      {L, u"An \\unknown{never closed\ngoes on.\n\nNext stays.", u"An ", u"An \n\nNext stays."},
      {L, u"Costs $5 here.\n\nLater $x$ text.", u"Costs 5 here.\n\nLaterxtext.",
       u"Costs \n\nLater text."},
      {L, u"A \\begin{equation} x = 1\n\nNext.", u"A [TeX]\n\n", u"A \n\n\n\nNext."},
  });
}

TEST(ProfilProse, MarkDownEtFiltresCommuns) {
  constexpr eFormatTexte M = eFormatMarkDown;
  Verifie({
      {M, u"Run `make` now.", u"Run `make` now.", u"Run now."},
      {M, u"See [x].\n\n[x]: https://e.org \"T\"\n", u"See [x].\n\n[x]: https://e.org \"T\"\n",
       u"See [x].\n\n\n"},
      {M, u"Go to <https://e.org> or a@b.org.", u"Go to https://e.org or a@b.org.", u"Go to or ."},
      // HTML inside Markdown: every reference, comments gone, code elements not prose.
      {M, u"it&rsquo;s &#8217; &#x1F600; &amp;hellip; &bogus;",
       u"it&rsquo;s &8217; &x1F600; &hellip; &bogus;", u"it’s ’ 😀 &hellip; &bogus;"},
      {M, u"a <!-- gone --> b <kbd>C-x</kbd> c\n\n<!-- never\nd",
       u"a <!-- gone --> b C-x c\n\n<!-- never\nd", u"a b c\n\n\nd"},
      // Technical tokens in any format: paths, identifiers, versions, dotted names.
      {eFormatTexteBrut, u"Edit ~/.npmrc, set a_b to v1.2 in package.json; and/or e.g. done.",
       u"Edit ~/.npmrc, set a_b to v1.2 in package.json; and/or e.g. done.",
       u"Edit , set to in ; and/or e.g. done."},
  });
}

}  // namespace

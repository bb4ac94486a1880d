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

std::u16string Lit(eFormatTexte format, std::u16string_view document, bool prose) {
  FiltresCorrecteur::Params params;
  params.Format = format;
  if (prose) params.Prose.Active();
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

TEST(ProfilProse, MarkDownEtFiltresCommuns) {
  constexpr eFormatTexte M = eFormatMarkDown;
  Verifie({
      {M, u"Run `make` now.", u"Run `make` now.", u"Run now."},
      {M, u"See [x].\n\n[x]: https://e.org \"T\"\n", u"See [x].\n\n[x]: https://e.org \"T\"\n",
       u"See [x].\n\n\n"},
      {M, u"Go to <https://e.org> or a@b.org.", u"Go to https://e.org or a@b.org.", u"Go to or ."},
      // Technical tokens in any format: paths, identifiers, versions, dotted names.
      {eFormatTexteBrut, u"Edit ~/.npmrc, set a_b to v1.2 in package.json; and/or e.g. done.",
       u"Edit ~/.npmrc, set a_b to v1.2 in package.json; and/or e.g. done.",
       u"Edit , set to in ; and/or e.g. done."},
  });
}

}  // namespace

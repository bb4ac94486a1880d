// HTML detection: a document type first thing, or enough familiar tags in the first 10000 units.
#include <gtest/gtest.h>

#include <string>

#include "Outils.h"
#include "html/ConvertisseurHTML.h"

namespace {

std::u16string Repete(std::u16string_view motif, int fois) {
  std::u16string texte;
  for (int i = 0; i < fois; ++i) texte += motif;
  return texte;
}

struct Cas {
  const char* nom;
  std::u16string texte;
  bool attendu;
};

TEST(DetectionHTML, DetecteBalisesHTML) {
  const Cas kCas[] = {
      {"empty", u"", false},
      {"blanks only", u" \n\t ", false},
      {"doctype after blanks, any case", u"  <!DOCTYPE html>", true},
      {"doctype not first", u"x <!doctype html>", false},
      {"ten opening tags", Repete(u"<p>", 10), false},
      {"eleven opening tags", Repete(u"<p>", 11), true},
      // The 11th tag recognised is the sixth opening one; only five closings counted by then.
      {"six paragraphs", Repete(u"<p>x</p>", 6), true},
      {"five paragraphs", Repete(u"<p>x</p>", 5), false},
      // The first closing tag wraps the counter and does not count; the next six do.
      {"seven closing tags alone", Repete(u"</p>", 7), true},
      {"six closing tags alone", Repete(u"</p>", 6), false},
      {"name followed by a tab", Repete(u"<p\tx>", 11), false},
      {"name followed by an attribute", Repete(u"<p class=x>", 11), true},
      {"link, after li fails", Repete(u"<link rel=x>", 11), true},
      {"pre is no name of the list", Repete(u"<pre>", 11), false},
      {"a href", Repete(u"<a href=x>", 11), true},
      {"a alone", Repete(u"<a>", 11), false},
      {"spaced comments", Repete(u"<!-- c -->", 11), true},
      {"tight comments", Repete(u"<!--c-->", 11), false},
      {"letter case ignored", Repete(u"<DIV>", 11), true},
      {"tags beyond the window", std::u16string(9990, u'x') + Repete(u"<p>", 11), false},
      {"tags just inside the window", std::u16string(9960, u'x') + Repete(u"<p>", 11), true},
      // The name must end inside the window: the last tag's ">" is unit 10000.
      {"last name ends at the window's edge", std::u16string(9968, u'x') + Repete(u"<p>", 11),
       false},
  };
  for (const Cas& c : kCas)
    EXPECT_EQ(ConvertisseurHTML::DetecteBalisesHTML(ChaineN(c.texte)), c.attendu) << c.nom;
}

}  // namespace

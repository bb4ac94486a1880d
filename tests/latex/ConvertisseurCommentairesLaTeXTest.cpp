// ConvertisseurCommentairesLaTeX: which percent signs open a comment and where it ends.
#include <gtest/gtest.h>

#include "OutilsLaTeX.h"
#include "latex/ConvertisseurCommentairesLaTeX.h"

namespace {

TEST(ConvertisseurCommentairesLaTeX, Commentaires) {
  struct Cas {
    std::u16string_view entree;
    std::string_view attendu;
  };
  const Cas kCas[] = {
      {u"x %mot\ny", "R[2,6)''{0,0}"},
      {u"a%c", "R[1,3)''{0,0}"},     // last line: to the end of the text
      {u"%%a\nb", "R[0,3)''{0,0}"},  // the second "%" is inside the first comment
      {u"%a\n%b\n", "R[0,2)''{0,0} R[3,5)''{0,0}"},
      {u"x%a\r\ny", "R[1,4)''{0,0}"},    // the carriage return goes, the line feed stays
      {u"%a\\\nb\nc", "R[0,5)''{0,0}"},  // an escaped line feed does not end a comment
      {u"a\\%b", ""},
      {u"\\\\%x\ny", ""},  // only the one character before "%" is looked at
      {u"%", "R[0,1)''{0,0}"},
      {u"", ""},
      {u"sans commentaire", ""},
  };
  for (const Cas& c : kCas) {
    ConvertisseurCommentairesLaTeX convertisseur;
    EXPECT_EQ(DecritRapports(convertisseur, c.entree), c.attendu) << VersUtf8(c.entree);
  }
  ConvertisseurCommentairesLaTeX convertisseur;
  EXPECT_FALSE(convertisseur.ConversionInverse);
  EXPECT_EQ(DecritRapports(convertisseur, u"a%b", true), "");
}

TEST(ConvertisseurCommentairesLaTeX, ExceptionsArretentSansSortir) {
  int appels = 0;
  const FonctionRemplace remplace = [&](MapPos::Intervalle, const ChaineN&, MapPos::Attributs) {
    if (++appels == 2) throw std::runtime_error("arrêt");
  };
  ConvertisseurCommentairesLaTeX convertisseur;
  EXPECT_NO_THROW(convertisseur.ConvertisExterneAInterne(TexteAvecAttributs{ChaineN(u"%a\n%b\n%c")},
                                                         remplace, {}));
  EXPECT_EQ(appels, 2);
}

}  // namespace

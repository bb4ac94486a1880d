// The HTML vocabulary: the readings that differ from what one would guess, and the two entity
// maps agreeing with each other.
#include <gtest/gtest.h>

#include "Outils.h"
#include "html/TablesHTML.h"

namespace {

using namespace TablesHTML;

TEST(TablesHTML, EntitesDansLesDeuxSens) {
  for (const Entite& entite : kEntitesHTML) {
    EXPECT_EQ(CaractereDEntite(entite.nom), entite.caractere) << VersUtf8(entite.nom);
    EXPECT_EQ(EntiteDeCaractere(entite.caractere), entite.nom) << VersUtf8(entite.nom);
  }
  EXPECT_EQ(CaractereDEntite(u"nbsp;"), u'\u202F');
  EXPECT_EQ(CaractereDEntite(u"frasl;"), u'/');
  EXPECT_EQ(CaractereDEntite(u"Eacute;"), u'\u00C9');
  EXPECT_EQ(CaractereDEntite(u"eacute;"), u'\u00E9');
  EXPECT_EQ(CaractereDEntite(u"EACUTE;"), std::nullopt);
  EXPECT_EQ(CaractereDEntite(u"amp"), std::nullopt);  // the ";" belongs to the name
  EXPECT_EQ(CaractereDEntite(u"&amp;"), std::nullopt);
  EXPECT_EQ(EntiteDeCaractere(u'\u00A0'), std::nullopt);
  EXPECT_EQ(EntiteDeCaractere(u'\u2019'), std::nullopt);
}

TEST(TablesHTML, ClassesDeBalises) {
  EXPECT_TRUE(ClasseDe(u"td").marqueCellule);
  EXPECT_FALSE(ClasseDe(u"th").marqueCellule);
  EXPECT_TRUE(ClasseDe(u"dt").sautOuvrante && ClasseDe(u"dd").sautOuvrante);
  EXPECT_FALSE(ClasseDe(u"dt").sautFermante || ClasseDe(u"dd").sautFermante);
  EXPECT_EQ(ClasseDe(u"b").styles, 0u);
  EXPECT_EQ(ClasseDe(u"h6").styles, uint32_t{eGras});
  EXPECT_FALSE(ClasseDe(u"br/").vide);
  EXPECT_FALSE(ClasseDe(u"BR").vide);  // names are asked lower case
  // A name longer than any entry is answered without a lookup, and answered right.
  EXPECT_EQ(ClasseDe(std::u16string(100000, u'p')).fermetures, nullptr);

  EXPECT_TRUE(FermeImplicitement(u"p", u"p"));
  EXPECT_TRUE(FermeImplicitement(u"th", u"td"));
  EXPECT_TRUE(FermeImplicitement(u"option", u"optgroup"));
  EXPECT_FALSE(FermeImplicitement(u"optgroup", u"option"));
  EXPECT_FALSE(FermeImplicitement(u"p", u"span"));
  EXPECT_FALSE(FermeImplicitement(u"tfoot", u"tbody"));
  EXPECT_FALSE(FermeImplicitement(u"colgroup", u"p"));  // colgroup's rule is the reader's
}

}  // namespace

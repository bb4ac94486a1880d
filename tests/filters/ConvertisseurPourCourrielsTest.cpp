// ConvertisseurPourCourriels: quoted lines in both modes, line starts and line ends.
#include <gtest/gtest.h>

#include <functional>

#include "DecritRapports.h"
#include "Outils.h"
#include "filters/ConvertisseurPourCourriels.h"

namespace {

struct Cas {
  std::u16string_view texte;
  std::string_view marqueurs;  // MasqueLignesCitees false
  std::string_view lignes;     // MasqueLignesCitees true
};

TEST(ConvertisseurPourCourriels, LignesCitees) {
  static const Cas kCas[] = {
      {u"", "", ""},
      {u"> word", "R[0,1)''{0,0}", "R[0,6)''{0,0}"},
      // Blanks between markers go with them; the blank after the last one stays.
      {u"> > word\nnext", "R[0,3)''{0,0}", "R[0,8)''{0,0}"},
      {u">\t|>  x", "R[0,4)''{0,0}", "R[0,7)''{0,0}"},
      {u"|bar", "R[0,1)''{0,0}", "R[0,4)''{0,0}"},
      // Only at a line start: not in mid-sentence, not after a blank.
      {u"a > b\n > c\n\t>d", "", ""},
      // A line of markers only; an empty quoted line; the line end itself always stays.
      {u">>\n>\n\n> z", "R[0,2)''{0,0} R[3,4)''{0,0} R[6,7)''{0,0}",
       "R[0,2)''{0,0} R[3,4)''{0,0} R[6,9)''{0,0}"},
      // "\r\n": the unit after the pair starts the next line.
      {u"a\r\n> b\r\n>c", "R[3,4)''{0,0} R[8,9)''{0,0}", "R[3,6)''{0,0} R[8,10)''{0,0}"},
      // Any line end starts a line: U+2028, form feed, a lone carriage return.
      {u"a\u2028>b\f>c\r>d", "R[2,3)''{0,0} R[5,6)''{0,0} R[8,9)''{0,0}",
       "R[2,4)''{0,0} R[5,7)''{0,0} R[8,10)''{0,0}"},
      // A no-break space is not transparent: the run of markers stops before it.
      {u">\u00A0> x", "R[0,1)''{0,0}", "R[0,5)''{0,0}"},
      // A line end ends the run even when markers follow on the next line.
      {u">\n>", "R[0,1)''{0,0} R[2,3)''{0,0}", "R[0,1)''{0,0} R[2,3)''{0,0}"},
  };
  for (const Cas& c : kCas) {
    ConvertisseurPourCourriels marqueurs(false), lignes(true);
    EXPECT_EQ(DecritRapports(marqueurs, c.texte), c.marqueurs) << VersUtf8(c.texte);
    EXPECT_EQ(DecritRapports(lignes, c.texte), c.lignes) << VersUtf8(c.texte);
  }
}

TEST(ConvertisseurPourCourriels, CorpusDeCourriels) {
  const std::string dossier = std::string(FILTRES_CORPUS) + "/email";
  std::u16string texte;
  try {
    texte = Utf16(LitFichier(dossier + "/generated-threads.mbox"));
  } catch (const std::exception&) {
    GTEST_SKIP() << "no corpus at " << dossier;
  }
  // Whole quoted lines: every line that starts with a marker is empty afterwards, and the
  // reports are ordered and never cross a line end.
  ConvertisseurPourCourriels lignes(true);
  const std::vector<Rapport> rapports = CollecteRapports(lignes, texte);
  ASSERT_FALSE(rapports.empty());
  uint64_t precedent = 0;
  for (const Rapport& r : rapports) {
    ASSERT_LE(precedent, r.intervalle.Debut);
    ASSERT_TRUE(r.intervalle.Debut == 0 || texte[r.intervalle.Debut - 1] == u'\n');
    ASSERT_TRUE(r.intervalle.Fin == texte.size() || texte[r.intervalle.Fin] == u'\n');
    ASSERT_EQ(texte.find(u'\n', r.intervalle.Debut), r.intervalle.Fin);
    precedent = r.intervalle.Fin;
  }
}

}  // namespace

// Every converter of the table handed empty callables: with nothing to report it never calls
// them; with something to report it raises std::bad_function_call at its first report of that
// kind (the two LaTeX converters end their run quietly instead), and the reports it made before
// stand.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "DecritRapports.h"
#include "framework/RegistreConvertisseurs.h"

namespace {

TEST(RappelsVides, ChaqueConvertisseur) {
  struct Cas {
    std::string_view nom;
    std::u16string_view texte;  // something to report, a style among it
    bool sort;                  // the exception leaves the run
    // The replacements made before an empty marque stops the run.
    std::string avantLeStyle;
  };
  const Cas kCas[] = {
      {"tag-pairs", u"a<b>c", true, "R[1,4)''{0,0}"},
      {"excluded-strings", u"bzzb", true, "R[1,3)''{0,0}"},
      {"email", u"a\n> b", true, "R[2,3)''{0,0}"},
      {"technical-tokens", u"see /usr/bin", true, ""},
      {"email-headers", u"From: a@b.c\nSubject: x\n\nbody", true, ""},
      {"srt", u"1\nt\nx <i>y</i>", true, "R[0,4)''{0,0} R[6,9)''{0,0} R[10,14)''{0,0}"},
      {"html", u"<p>a</p><em>x</em>", true,
       "R[0,3)'\\u000A'{0,0} R[4,8)'\\u000A'{0,0} R[12,12)' '{0,1}"},
      {"latex-comments", u"a % b\nc", false, "R[2,5)''{0,0}"},
      {"latex", u"a \\emph{b} c", false, "R[2,7)''{0,0} R[7,8)''{0,0} R[9,10)''{0,0}"},
      {"markdown", u"a ``b`` c", true, "R[2,4)''{0,0} R[5,7)''{0,0}"},
  };
  // Every converter has a row but the common filters' base, which reports nothing of its own.
  ASSERT_EQ(std::size(kCas) + 1, ConvertisseursNommes().size());
  for (const Cas& c : kCas) {
    SCOPED_TRACE(std::string(c.nom));
    FiltresCorrecteur::Params params;
    params.BalisesOuvrantes.Ajoute(ChaineN(u"<"));
    params.BalisesFermantes.Ajoute(ChaineN(u">"));
    params.ChainesExclues.Ajoute(UniChaine(ChaineN(u"zz")));
    params.Prose.Active();
    const std::unique_ptr<Convertisseur> convertisseur = CreeConvertisseur(c.nom, params);
    EXPECT_NO_THROW(convertisseur->ConvertisExterneAInterne(
        TexteAvecAttributs(ChaineN(u"plain words here")), nullptr, nullptr));
    const TexteAvecAttributs texte{ChaineN(c.texte)};
    if (c.sort)
      EXPECT_THROW(convertisseur->ConvertisExterneAInterne(texte, nullptr, nullptr),
                   std::bad_function_call);
    else
      EXPECT_NO_THROW(convertisseur->ConvertisExterneAInterne(texte, nullptr, nullptr));
    std::vector<Rapport> rapports;
    const FonctionRemplace remplace = [&](MapPos::Intervalle i, const ChaineN& t,
                                          MapPos::Attributs a) {
      rapports.push_back({false, i, t, a, 0});
    };
    try {
      convertisseur->ConvertisExterneAInterne(texte, remplace, nullptr);
    } catch (const std::bad_function_call&) {
    }
    EXPECT_EQ(DecritRapports(rapports), c.avantLeStyle);
  }
}

}  // namespace

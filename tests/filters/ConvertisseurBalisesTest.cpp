// Tag pairs: which regions are masked, and the reporting helpers of the common filters' base.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "DecritRapports.h"
#include "Outils.h"
#include "filters/ConvertisseurBalises.h"

namespace {

struct CasBalises {
  const char* nom;
  std::vector<std::u16string_view> ouvrantes, fermantes;
  std::u16string_view texte;
  std::string_view attendu;
};

TEST(ConvertisseurBalises, Regions) {
  const CasBalises kCas[] = {
      {"two regions", {u"<<"}, {u">>"}, u"ab<<c>>defg<<h>>", "R[2,7)''{0,0} R[11,16)''{0,0}"},
      {"no closing string after an opening one", {u"<<"}, {u">>"}, u"a>>b<<c", ""},
      {"nested in itself: the first closing ends it",
       {u"[["},
       {u"]]"},
       u"[[a[[b]]c]]",
       "R[0,8)''{0,0}"},
      {"the first pair that opens wins", {u"<", u"<<"}, {u">", u">>"}, u"<<a>b>>", "R[0,4)''{0,0}"},
      {"its closing missing, the second pair is not tried there",
       {u"<", u"<"},
       {u"}", u">"},
       u"x<a>",
       ""},
      {"regions never overlap", {u"(", u"["}, {u")", u"]"}, u"(a[b)c]", "R[0,5)''{0,0}"},
      {"a pair with an empty string takes no part", {u"", u"{"}, {u"}", u""}, u"a{b}c", ""},
      {"opening list empty", {}, {u">>"}, u"a>>b", ""},
      {"extra strings of the longer list have no partner",
       {u"<", u"{"},
       {u">"},
       u"{a}<b>",
       "R[3,6)''{0,0}"},
      {"empty text", {u"<"}, {u">"}, u"", ""},
      {"a region up to the very end", {u"%%"}, {u"\n"}, u"a %% b\n", "R[2,7)''{0,0}"},
  };
  for (const CasBalises& c : kCas) {
    ListeC<ChaineN> ouvrantes, fermantes;
    for (auto s : c.ouvrantes) ouvrantes.Ajoute(ChaineN(s));
    for (auto s : c.fermantes) fermantes.Ajoute(ChaineN(s));
    ConvertisseurBalises convertisseur(ouvrantes, fermantes);
    EXPECT_EQ(DecritRapports(convertisseur, c.texte), c.attendu) << c.nom;
  }
}

TEST(ConvertisseurBalises, ListesLuesAChaqueExecution) {
  ListeC<ChaineN> ouvrantes{ChaineN(u"<")}, fermantes{ChaineN(u">")};
  ConvertisseurBalises convertisseur(ouvrantes, fermantes);
  const ConvertisseurBalises copie(convertisseur);  // refers to the same lists
  ouvrantes[0] = ChaineN(u"{");
  fermantes[0] = ChaineN(u"}");
  EXPECT_EQ(DecritRapports(convertisseur, u"<a>{b}"), "R[3,6)''{0,0}");
  EXPECT_EQ(ouvrantes.Nombre(), 1u);
}

// The base's helpers, reached through a subclass.
class Initiaux : public ConvertisseurFiltresInitiaux {
 public:
  using ConvertisseurFiltresInitiaux::MasqueIntervalle;
  using ConvertisseurFiltresInitiaux::RemplaceIntervalle;
};

TEST(ConvertisseurFiltresInitiaux, AttributsEtTexte) {
  std::vector<Rapport> rapports;
  const FonctionRemplace remplace = [&](MapPos::Intervalle i, const ChaineN& t,
                                        MapPos::Attributs a) {
    rapports.push_back({false, i, t, a, 0});
  };
  Initiaux::MasqueIntervalle(3, 7, eRemplacableOui, remplace);
  Initiaux::MasqueIntervalle(3, 7, eRemplacableNon, remplace);
  Initiaux::RemplaceIntervalle(1, 2, ChaineN(u"é"), static_cast<eRemplacable>(7), remplace);
  EXPECT_EQ(DecritRapports(rapports), "R[3,7)''{0,1} R[3,7)''{0,0} R[1,2)'é'{0,0}");
  EXPECT_THROW(Initiaux::MasqueIntervalle(0, 1, eRemplacableNon, nullptr), std::bad_function_call);
}

}  // namespace

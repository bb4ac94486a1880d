// The generic analyser: guarded reports, escape-aware searches, replacement of occurrences.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "DecritRapports.h"
#include "markdown/AnalyseurGenerique.h"

namespace {

// An analyser that analyses nothing: the tests call the base's operations themselves.
class AnalyseurEssai : public AnalyseurGenerique {
 public:
  using AnalyseurGenerique::AnalyseurGenerique;
  void Analyse() override {}
  void BorneAnalyse(uint64_t fin) { finAnalyse_ = fin; }
};

// An analyser whose RemplacePlage notes what reaches it.
class AnalyseurQuiNote : public AnalyseurEssai {
 public:
  using AnalyseurEssai::AnalyseurEssai;
  void RemplacePlage(uint64_t debut, uint64_t fin, const ChaineN& remplacement) override {
    vus.push_back(std::to_string(debut) + "-" + std::to_string(fin));
    AnalyseurEssai::RemplacePlage(debut, fin, remplacement);
  }
  std::vector<std::string> vus;
};

struct Banc {
  std::vector<Rapport> rapports;
  FonctionRemplace remplace = [this](MapPos::Intervalle i, const ChaineN& t, MapPos::Attributs a) {
    rapports.push_back({false, i, t, a, 0});
  };
  FonctionMarque marque = [this](MapPos::Intervalle i, uint32_t s) {
    rapports.push_back({true, i, {}, {}, s});
  };
  std::string Dump() const { return DecritRapports(rapports); }
};

TEST(AnalyseurGenerique, LesRapportsVidesInversesOuHorsDuTexteSontTus) {
  Banc banc;
  const TexteAvecAttributs texte(ChaineN(u"abcdef"));
  AnalyseurEssai a(texte, banc.remplace, banc.marque);
  a.RemplacePlage(2, 2, ChaineN(u"x"));
  a.RemplacePlage(3, 2, ChaineN(u"x"));
  a.RemplacePlage(0, 7, ChaineN(u"x"));
  a.MarquePlage(4, 4, eGras);
  a.MarquePlage(5, 9, eGras);
  EXPECT_EQ(banc.Dump(), "");
  a.RemplacePlage(0, 6, ChaineN(u"x"));
  a.SupprimePlage(1, 2);
  a.MarquePlage(5, 6, eGras);
  EXPECT_EQ(banc.Dump(), "R[0,6)'x'{0,0} R[1,2)''{0,0} M[5,6)2");
}

TEST(AnalyseurGenerique, UneSuppressionPasseParLeRemplacementDerive) {
  Banc banc;
  const TexteAvecAttributs texte(ChaineN(u"abc"));
  AnalyseurQuiNote a(texte, banc.remplace, banc.marque);
  a.SupprimePlage(0, 2);
  EXPECT_EQ(a.vus, std::vector<std::string>{"0-2"});
  EXPECT_EQ(banc.Dump(), "R[0,2)''{0,0}");
}

TEST(AnalyseurGenerique, RecherchesQuiSautentLesEchappements) {
  Banc banc;
  const TexteAvecAttributs texte(ChaineN(u"a\\*b*"));
  AnalyseurEssai a(texte, banc.remplace, banc.marque);
  Plage trouve;
  ASSERT_TRUE(a.TrouveSuivant(ChaineN(u"*"), trouve, 0));
  EXPECT_EQ(trouve, (Plage{4, 1}));
  EXPECT_FALSE(a.TrouveALaPos(ChaineN(u"*"), trouve, 2));
  EXPECT_TRUE(a.TrouveALaPos(ChaineN(u"*"), trouve, 4));
  EXPECT_FALSE(a.TrouveSuivant(ChaineN(u"*"), trouve, 5));
  // A match at position 0 is never escaped; one that ends past the analysed range is no match.
  const TexteAvecAttributs debut(ChaineN(u"*x**"));
  AnalyseurEssai b(debut, banc.remplace, banc.marque);
  EXPECT_TRUE(b.TrouveALaPos(ChaineN(u"*"), trouve, 0));
  b.BorneAnalyse(3);
  EXPECT_FALSE(b.TrouveSuivant(ChaineN(u"**"), trouve, 1));
  EXPECT_EQ(banc.Dump(), "");
}

TEST(AnalyseurGenerique, RemplaceOccurrences) {
  const std::pair<ChaineN, ChaineN> amp{ChaineN(u"&amp;"), ChaineN(u"&")};
  struct Cas {
    std::u16string_view texte;
    std::string attendu;
  };
  const Cas kCas[] = {
      {u"&amp;&amp;", "R[0,5)'&'{0,0} R[5,10)'&'{0,0}"},
      {u"\\&amp;", ""},
      {u"&amp;amp;", "R[0,5)'&'{0,0}"},
      {u"x&amp", ""},
  };
  for (const Cas& c : kCas) {
    Banc banc;
    const TexteAvecAttributs texte{ChaineN(c.texte)};
    AnalyseurEssai a(texte, banc.remplace, banc.marque);
    a.RemplaceOccurrences(amp);
    EXPECT_EQ(banc.Dump(), c.attendu) << DecritTexte(c.texte);
  }
}

TEST(AnalyseurGenerique, UnAppelableVideLeveEtLesRapportsFaitsRestent) {
  Banc banc;
  const FonctionMarque vide;
  const TexteAvecAttributs texte(ChaineN(u"abc"));
  AnalyseurEssai a(texte, banc.remplace, vide);
  a.SupprimePlage(0, 1);
  EXPECT_THROW(a.MarquePlage(1, 2, eItalique), std::bad_function_call);
  EXPECT_EQ(banc.Dump(), "R[0,1)''{0,0}");
}

}  // namespace

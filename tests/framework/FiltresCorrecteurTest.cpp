// The filter set: which converters CreeFiltres builds, in which order, and who deletes them.
#include "framework/FiltresCorrecteur.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "Outils.h"
#include "filters/ConvertisseurBalises.h"

namespace {

// The chain's converters by class, e.g. "ConvertisseurBalises".
std::vector<std::string> Classes(FiltresCorrecteur& filtres) {
  std::vector<std::string> classes;
  for (Convertisseur* c : filtres.Mappeur().Convertisseurs()) {
    if (dynamic_cast<ConvertisseurBalises*>(c)) classes.push_back("ConvertisseurBalises");
    else classes.push_back(typeid(*c).name());
  }
  return classes;
}

TEST(FiltresCorrecteur, LaChaineEtLaListeSuiventLeMemeOrdre) {
  FiltresCorrecteur::Params params;
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  const auto& chaine = filtres.Mappeur().Convertisseurs();
  ASSERT_EQ(chaine.size(), filtres.Convertisseurs().size());
  for (size_t i = 0; i < chaine.size(); ++i) EXPECT_EQ(chaine[i], filtres.Convertisseurs()[i].get());
}

TEST(FiltresCorrecteur, UnFormatSansConvertisseurDonneLesFiltresCommunsSeuls) {
  for (const auto format : {eFormatIndefini, eFormatTexteBrut, static_cast<eFormatTexte>(6)}) {
    FiltresCorrecteur::Params params;
    params.Format = format;
    FiltresCorrecteur filtres;
    filtres.CreeFiltres(params);
    EXPECT_EQ(Classes(filtres).back(), "ConvertisseurBalises") << format;
    for (const std::string& classe : Classes(filtres)) EXPECT_EQ(classe.find("HTML"), std::string::npos);
  }
}

TEST(FiltresCorrecteur, UnSecondCreeFiltresDoubleLaChaine) {
  FiltresCorrecteur::Params params;
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  const size_t une = filtres.Convertisseurs().size();
  filtres.CreeFiltres(params);
  EXPECT_EQ(filtres.Convertisseurs().size(), 2 * une);
  EXPECT_EQ(filtres.Mappeur().Convertisseurs().size(), 2 * une);
}

TEST(FiltresCorrecteur, LesParametresSontLusAChaqueExecution) {
  FiltresCorrecteur::Params params;
  params.BalisesOuvrantes.Ajoute(ChaineN(u"<<"));
  params.BalisesFermantes.Ajoute(ChaineN(u">>"));
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  const auto resultat = filtres.Mappeur().Convertis(ChaineN(u"a\nb <<x>> c\n"));
  EXPECT_EQ(VersUtf8(resultat.Interne().Chaine().Vue()), "a\nb  c\n");
  params.BalisesOuvrantes[0] = ChaineN(u"a");
  params.BalisesFermantes[0] = ChaineN(u"b");
  EXPECT_EQ(VersUtf8(filtres.Mappeur().Convertis(ChaineN(u"xaxbx")).Interne().Chaine().Vue()), "xx");
}

// Counts its own deletions in a journal shared by the test.
class Temoin : public Convertisseur {
 public:
  Temoin(int numero, std::vector<int>& journal) : numero_(numero), journal_(journal) {}
  ~Temoin() override { journal_.push_back(numero_); }

 private:
  int numero_;
  std::vector<int>& journal_;
};

class FiltresDeTest : public FiltresCorrecteur {
 public:
  using FiltresCorrecteur::AjouteConvertisseur;
};

TEST(FiltresCorrecteur, CopiesPartageesEtDetruitesUneSeuleFois) {
  std::vector<int> journal;
  {
    FiltresDeTest original;
    original.AjouteConvertisseur(new Temoin(1, journal));
    original.AjouteConvertisseur(new Temoin(2, journal));
    auto copie = std::make_unique<FiltresCorrecteur>(original);
    EXPECT_EQ(copie->Mappeur().Convertisseurs(), original.Mappeur().Convertisseurs());
    {
      FiltresCorrecteur autre(original);
      FiltresCorrecteur vide;
      vide = autre;  // assignment shares too
    }
    EXPECT_TRUE(journal.empty());
    copie.reset();
    EXPECT_TRUE(journal.empty()) << "the original still holds them";
    // The original's chain still runs on live converters (the sanitizers would tell).
    EXPECT_EQ(VersUtf8(original.Mappeur().Convertis(ChaineN(u"abc")).Interne().Chaine().Vue()), "abc");
  }
  EXPECT_EQ(journal, (std::vector<int>{1, 2})) << "deleted once each, in the order added";
}

TEST(FiltresCorrecteur, UneAffectationLibereCeQuElleRemplace) {
  std::vector<int> journal;
  FiltresDeTest premier, second;
  premier.AjouteConvertisseur(new Temoin(1, journal));
  second.AjouteConvertisseur(new Temoin(2, journal));
  premier = second;
  EXPECT_EQ(journal, (std::vector<int>{1}));
  EXPECT_EQ(premier.Mappeur().Convertisseurs().size(), 1u);
  FiltresCorrecteur& memeObjet = premier;
  memeObjet = premier;  // assigning a filter set to itself keeps its converters
  EXPECT_EQ(journal, (std::vector<int>{1}));
}

TEST(FiltresCorrecteur, DetecteFormatNeRepondJamaisIndefiniNiSRT) {
  for (const char16_t* texte : {u"", u"plain words\n", u"1\n00:00:01,000 --> 00:00:02,000\nHi\n"}) {
    const eFormatTexte format = FiltresCorrecteur::DetecteFormat(ChaineN(texte));
    EXPECT_NE(format, eFormatIndefini);
    EXPECT_NE(format, eFormatSRT);
  }
  EXPECT_EQ(FiltresCorrecteur::DetecteFormat(ChaineN(u"Just a few plain words.")), eFormatTexteBrut);
}

}  // namespace

// The filter set: which converters CreeFiltres builds, in which order, and who deletes them.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "DecritRapports.h"
#include "Outils.h"
#include "framework/FiltresCorrecteur.h"
#include "framework/RegistreConvertisseurs.h"
#include "latex/DetecteLaTeX.h"
#include "markdown/DetecteMarkDown.h"

namespace {

// The name the command gives a converter: that of the registered one of the same type.
std::string NomDe(const Convertisseur& c) {
  FiltresCorrecteur::Params params;
  for (const ConvertisseurNomme& n : ConvertisseursNommes()) {
    const std::unique_ptr<Convertisseur> modele = n.fabrique(params);
    const Convertisseur& exemple = *modele;  // dereferenced apart: typeid of it has no effect
    if (typeid(exemple) == typeid(c)) return std::string(n.nom);
  }
  return typeid(c).name();
}

// The chain's converters by name, "(differs)" when the chain and the owned list part ways.
std::string Chaine(FiltresCorrecteur& filtres) {
  const auto& chaine = filtres.Mappeur().Convertisseurs();
  std::string noms;
  for (size_t i = 0; i < chaine.size(); ++i) {
    if (i >= filtres.Convertisseurs().size() || chaine[i] != filtres.Convertisseurs()[i].get())
      return "(differs)";
    noms += (noms.empty() ? "" : " ") + NomDe(*chaine[i]);
  }
  return chaine.size() == filtres.Convertisseurs().size() ? noms : "(differs)";
}

TEST(FiltresCorrecteur, OrdreDesConvertisseursSelonLeFormat) {
  struct Cas {
    uint32_t format;
    bool courriel;
    std::string_view chaine;
    bool prose = false;
  };
  static constexpr Cas kCas[] = {
      {eFormatIndefini, false, "excluded-strings tag-pairs"},
      {eFormatTexteBrut, false, "excluded-strings tag-pairs"},
      {6, false, "excluded-strings tag-pairs"},
      {eFormatLaTeX, false, "latex-comments latex excluded-strings tag-pairs"},
      {eFormatMarkDown, false, "markdown excluded-strings tag-pairs"},
      {eFormatSRT, false, "srt excluded-strings tag-pairs"},
      {eFormatSRT, true, "srt excluded-strings tag-pairs email"},
      {eFormatHTML, false, "html excluded-strings tag-pairs"},
      {eFormatHTML, true, "html excluded-strings tag-pairs email"},
      {eFormatTexteBrut, true, "excluded-strings tag-pairs email"},
      // The prose profile's filters only mark, after every other converter.
      {eFormatMarkDown, false, "markdown excluded-strings tag-pairs technical-tokens", true},
      {eFormatTexteBrut, true, "excluded-strings tag-pairs email technical-tokens email-headers",
       true},
  };
  for (const Cas& c : kCas) {
    FiltresCorrecteur::Params params;
    params.Format = static_cast<eFormatTexte>(c.format);
    params.Courriel = c.courriel;
    if (c.prose) params.Prose.Active();
    FiltresCorrecteur filtres;
    filtres.CreeFiltres(params);
    EXPECT_EQ(Chaine(filtres), c.chaine) << c.format << " " << c.courriel << " " << c.prose;
  }
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
  EXPECT_EQ(VersUtf8(filtres.Mappeur().Convertis(ChaineN(u"xaxbx")).Interne().Chaine().Vue()),
            "xx");
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
    EXPECT_EQ(VersUtf8(original.Mappeur().Convertis(ChaineN(u"abc")).Interne().Chaine().Vue()),
              "abc");
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

TEST(FiltresCorrecteur, DetecteFormatInterrogeHTMLPuisLaTeXPuisMarkDown) {
  const std::string markdown = LitFichier(FILTRES_RACINE "/examples/notes-de-version.md");
  const std::string latex = LitFichier(FILTRES_RACINE "/examples/report-en.tex");
  struct Cas {
    const char* nom;
    std::string texte;
    eFormatTexte attendu;
  };
  const Cas kCas[] = {
      {"nothing recognised", "Just a few plain words.\nAnd a second line.\n", eFormatTexteBrut},
      {"empty", "", eFormatTexteBrut},
      {"subtitles are never detected", "1\n00:00:01,000 --> 00:00:02,000\nHi\n", eFormatTexteBrut},
      {"a doctype", "  <!DOCTYPE html><title>x</title>", eFormatHTML},
      {"a LaTeX document", latex, eFormatLaTeX},
      {"a Markdown document", markdown, eFormatMarkDown},
      {"LaTeX and Markdown: LaTeX", "\\begin{document}\n" + markdown, eFormatLaTeX},
      {"LaTeX holding an HTML doctype: HTML", "<!doctype html>\n" + latex, eFormatHTML},
  };
  for (const Cas& c : kCas)
    EXPECT_EQ(FiltresCorrecteur::DetecteFormat(ChaineN::DepuisUtf8(c.texte)), c.attendu) << c.nom;
  // The order matters only because each of these texts satisfies the later detector too.
  EXPECT_TRUE(DetecteMarkDown(ChaineN::DepuisUtf8("\\begin{document}\n" + markdown)));
  EXPECT_TRUE(DetecteLaTeX(ChaineN::DepuisUtf8("<!doctype html>\n" + latex)));
}

}  // namespace

namespace {

// The prose profile looks again at what the detectors call plain text; off, it does not.
TEST(FiltresCorrecteur, DetectionDuProfilDeProse) {
  const std::u16string xhtml =
      u"\uFEFF<?xml version=\"1.0\"?>\n<!DOCTYPE html PUBLIC \"-//W3C//DTD XHTML 1.1//EN\">\n"
      u"<html><body><p>x</p></body></html>";
  struct Cas {
    std::u16string_view texte;
    eFormatTexte exact, prose;
  } const kCas[] = {
      {xhtml, eFormatTexteBrut, eFormatHTML},
      {u"<?xml version=\"1.0\"?>\n<note>x</note>", eFormatTexteBrut, eFormatTexteBrut},
      {u"1\r\n00:00:43,445 --> 00:00:45,978\r\nHello\r\n", eFormatTexteBrut, eFormatSRT},
      {u"\n12\n00:01:02.000 --> 00:01:03.500\nHi\n", eFormatTexteBrut, eFormatSRT},
      {u"1\nnot a timing line\n", eFormatTexteBrut, eFormatTexteBrut},
      {u"2024\n", eFormatTexteBrut, eFormatTexteBrut},
      {u"\\begin{document}x\\end{document}", eFormatLaTeX, eFormatLaTeX},
  };
  ProfilProse prose;
  prose.Active();
  for (const Cas& c : kCas) {
    const ChaineN texte{std::u16string(c.texte)};
    EXPECT_EQ(FiltresCorrecteur::DetecteFormat(texte), c.exact) << DecritTexte(c.texte);
    EXPECT_EQ(FiltresCorrecteur::DetecteFormat(texte, ProfilProse{}), c.exact);
    EXPECT_EQ(FiltresCorrecteur::DetecteFormat(texte, prose), c.prose) << DecritTexte(c.texte);
  }
}

}  // namespace

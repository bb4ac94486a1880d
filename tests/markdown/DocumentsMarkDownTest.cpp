// Whole documents through a Markdown filter set: the sample documents against their reviewed
// internal text, and sample, generated and real documents against the invariants every run
// keeps (intervals forward and inside the document; text, styles and map as the reference
// model of the chain derives them from the converter's reports).
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "DecritRapports.h"
#include "ModeleDeChaine.h"
#include "Outils.h"
#include "framework/FiltresCorrecteur.h"
#include "markdown/ConvertisseurMarkDown.h"

namespace {

using Resultat = MapChaines<TexteAvecAttributs>;

Resultat Filtre(const std::u16string& document) {
  FiltresCorrecteur::Params params;
  params.Format = eFormatMarkDown;
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  return filtres.Mappeur().Convertis(ChaineN(document));
}

// The internal text with its line breaks as they are and its other control characters as
// \uXXXX, as the expected files hold it.
std::string Lisible(std::u16string_view texte) {
  std::string sortie;
  for (const char16_t c : texte) {
    if (c < 0x20 && c != u'\n') {
      char echappe[8];
      std::snprintf(echappe, sizeof echappe, "\\u%04X", static_cast<unsigned>(c));
      sortie += echappe;
    } else {
      sortie += VersUtf8(std::u16string_view(&c, 1));
    }
  }
  return sortie;
}

// Reports inside the document, and the chain's result equal to the reference model's.
void VerifieContreLeModele(const std::u16string& document, const std::string& nom) {
  ConvertisseurMarkDown convertisseur;
  const std::vector<Rapport> rapports = CollecteRapports(convertisseur, document);
  for (const Rapport& r : rapports) {
    ASSERT_LE(r.intervalle.Debut, r.intervalle.Fin) << nom;
    ASSERT_LE(r.intervalle.Fin, document.size()) << nom;
    if (!r.estMarque) {
      ASSERT_LT(r.intervalle.Debut, r.intervalle.Fin) << nom;  // no insertion
    }
  }
  const SortieNaive modele = AppliqueRapportsNaif(document, {}, rapports);
  const Resultat resultat = Filtre(document);
  ASSERT_EQ(VersUtf8(resultat.Interne().Chaine().Vue()), VersUtf8(modele.texte)) << nom;
  for (uint32_t u = 0; u < modele.texte.size(); ++u) {
    ASSERT_EQ(resultat.Interne().Attribut(u), modele.styles.empty() ? 0 : modele.styles[u])
        << nom << " " << u;
    ASSERT_EQ(resultat.InterneVersExterne({u, u + 1}), modele.sources[u]) << nom << " " << u;
  }
}

// Over the text itself (no working copy), the converter makes the same reports, and leaves
// every unit that no replacement covers as it was, in both profiles.
void VerifieSurPlace(const std::u16string& document, const std::string& nom) {
  for (const bool actif : {false, true}) {
    OptionsProseMarkDown prose;
    prose.Actif = prose.HTML.Actif = actif;
    ConvertisseurMarkDown convertisseur(prose);
    const std::vector<Rapport> attendus = CollecteRapports(convertisseur, document);
    TexteAvecAttributs texte{ChaineN(document)};
    const std::vector<Rapport> obtenus = CollecteRapportsSurPlace(convertisseur, texte);
    ASSERT_EQ(DecritRapports(obtenus), DecritRapports(attendus)) << nom << " prose " << actif;
    std::vector<bool> couvert(document.size(), false);
    for (const Rapport& r : obtenus)
      if (!r.estMarque)
        for (uint64_t u = r.intervalle.Debut; u < r.intervalle.Fin; ++u) couvert[u] = true;
    for (size_t u = 0; u < document.size(); ++u) {
      if (couvert[u]) continue;
      ASSERT_EQ(texte.Chaine()[u], document[u]) << nom << " unit " << u;
    }
  }
}

const char* const kExemples[] = {"guide-installation.md", "billet-de-blog.md",
                                 "notes-de-version.md"};

TEST(DocumentsMarkDown, ExemplesContreLeurTexteRelu) {
  for (const char* nom : kExemples) {
    const std::string racine = FILTRES_RACINE;
    const std::u16string document = Utf16(LitFichier(racine + "/examples/" + nom));
    const std::string attendu = LitFichier(racine + "/tests/markdown/attendus/" + nom + ".txt");
    EXPECT_EQ(Lisible(Filtre(document).Interne().Chaine().Vue()), attendu) << nom;
    VerifieContreLeModele(document, nom);
    VerifieSurPlace(document, nom);
  }
}

// Documents made of random Markdown pieces: unclosed, nested and clashing markup included.
TEST(DocumentsMarkDown, DocumentsAleatoiresContreLeModele) {
  static constexpr std::u16string_view kMorceaux[] = {
      u"word ",  u"\n",         u"\n\n",  u"\r\n", u"# ",     u"## ",         u"- ",    u"  - ",
      u"\t* ",   u"1. ",        u"12. ",  u"> ",   u">> ",    u"    ",        u"|",     u" | ",
      u"---",    u"***",        u"===",   u"*",    u"**",     u"_",           u"__",    u"~",
      u"~~",     u"^",          u"`",     u"``",   u"```",    u"[",           u"]",     u"(",
      u")",      u"![",         u"](",    u"[^1]", u"[^1]: ", u"]: ",         u"{#id}", u"<b>",
      u"</b>",   u"<br/>",      u"<!-- ", u" -->", u"<a@b>",  u"<https://x>", u"&amp;", u"&lt;",
      u"&copy;", u"\\",         u"\\*",   u"'",    u"\"",     u":",           u"!",     u"*[A]: ",
      u"é",      u"\U0001D11E",
  };
  std::mt19937 alea(2024);
  for (int essai = 0; essai < 400; ++essai) {
    std::u16string document;
    const int morceaux = 1 + static_cast<int>(alea() % 40);
    for (int k = 0; k < morceaux; ++k) document += kMorceaux[alea() % std::size(kMorceaux)];
    const std::string nom = "essai " + std::to_string(essai) + " " + VersUtf8(document);
    VerifieContreLeModele(document, nom);
    VerifieSurPlace(document, nom);
    if (HasFatalFailure()) return;
  }
}

// A list nested ten thousand levels deep, and other deep or long inputs, run to their end.
TEST(DocumentsMarkDown, ImbricationsProfondes) {
  std::u16string liste, citation, crochets, imbriquee;
  for (int k = 0; k < 10000; ++k) {
    liste += u"- ";
    citation += u"> ";
    crochets += u"[";
  }
  for (int k = 0; k < 300; ++k) imbriquee += std::u16string(2 * k, u' ') + u"- item\n";
  for (const std::u16string& document :
       {liste + u"x", citation + u"x", crochets + u"x]: y", imbriquee}) {
    const Resultat resultat = Filtre(document);
    EXPECT_LE(resultat.Interne().Longueur(), document.size());
  }
  EXPECT_EQ(Filtre(liste + u"x").Interne().Chaine().Vue().substr(0, 4), u"\u2022 - ");
  // Beyond four columns a line no longer opens an item: it continues the first item, whose
  // text then runs to the end with its line breaks replaced.
  EXPECT_EQ(Filtre(imbriquee).Interne().Chaine().Vue().substr(0, 16),
            u"\u2022 item   \u2022 item ");
}

// The real documents of the corpus: every run ends, with its reports inside the document.
TEST(DocumentsMarkDown, CorpusLent) {
  const std::filesystem::path dossier = std::filesystem::path(FILTRES_CORPUS) / "markdown";
  if (!std::filesystem::is_directory(dossier)) GTEST_SKIP() << dossier << " missing";
  for (const auto& entree : std::filesystem::directory_iterator(dossier)) {
    const std::u16string document = Utf16(LitFichier(entree.path()));
    ConvertisseurMarkDown convertisseur;
    for (const Rapport& r : CollecteRapports(convertisseur, document)) {
      ASSERT_LE(r.intervalle.Debut, r.intervalle.Fin) << entree.path();
      ASSERT_LE(r.intervalle.Fin, document.size()) << entree.path();
    }
    const Resultat resultat = Filtre(document);
    EXPECT_LT(resultat.Interne().Longueur(), document.size()) << entree.path();
    VerifieSurPlace(document, entree.path().string());
  }
}

}  // namespace

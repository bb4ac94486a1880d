// The chain: how reports are resolved into internal text, styles and position map, checked on
// tables and against the brute-force model on random reports.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <stdexcept>

#include "ModeleDeChaine.h"
#include "Outils.h"
#include "ferlane/SuiteDeMapChaines.h"

namespace {

using Suite = SuiteDeMapChaines<TexteAvecAttributs>;
using Resultat = MapChaines<TexteAvecAttributs>;

// Runs one chain whose converters replay the given report lists, in order.
Resultat Execute(std::u16string_view document, const std::vector<std::vector<Rapport>>& etapes,
                 Suite::Mode mode = Resultat::eModeComplet) {
  std::vector<std::unique_ptr<ConvertisseurRejoue>> convertisseurs;
  Suite suite(mode);
  for (const auto& rapports : etapes) {
    convertisseurs.push_back(std::make_unique<ConvertisseurRejoue>(rapports));
    suite.AjouteConvertisseur(convertisseurs.back().get());
  }
  return suite.Convertis(ChaineN(document));
}

TEST(SuiteDeMapChaines, RequetesDansLesDeuxSens) {
  // "x&amp;<b>y": a decoded reference, then masked markup.
  const Resultat r = Execute(u"x&amp;<b>y", {{R(1, 6, u"&", {0, 1}), R(6, 9)}});
  ASSERT_EQ(VersUtf8(r.Interne().Chaine().Vue()), "x&y");
  const std::pair<MapPos::Intervalle, MapPos::Intervalle> kVersExterne[] = {
      {{0, 1}, {0, 1}},   {{1, 2}, {1, 6}}, {{2, 3}, {9, 10}}, {{0, 3}, {0, 10}},
      {{1, 1}, {1, 1}},   {{2, 2}, {6, 6}},  // before the deletion that sits there
      {{3, 3}, {10, 10}}, {{0, 0}, {0, 0}},
  };
  for (const auto& [interne, externe] : kVersExterne)
    EXPECT_EQ(r.InterneVersExterne(interne), externe) << interne.Debut << "," << interne.Fin;
  const uint64_t kVersInterne[] = {0, 1, 1, 1, 1, 1, 2, 2, 2, 2, 3};
  for (uint64_t p = 0; p < std::size(kVersInterne); ++p)
    EXPECT_EQ(r.ExterneVersInterne(p), kVersInterne[p]) << p;
  EXPECT_EQ(r.AttributsInternes(1), (MapPos::Attributs{0, 1}));
  EXPECT_EQ(r.AttributsInternes(0), (MapPos::Attributs{0, 0}));
  EXPECT_THROW(r.InterneVersExterne({2, 4}), std::out_of_range);
  EXPECT_THROW(r.ExterneVersInterne(11), std::out_of_range);
}

TEST(SuiteDeMapChaines, CompositionEntreConvertisseurs) {
  struct Cas {
    const char* nom;
    std::u16string_view document;
    std::vector<std::vector<Rapport>> etapes;
    std::u16string_view texte;
    std::string_view map;
  };
  const Cas kCas[] = {
      {"a later converter deletes part of a placeholder",
       u"ab$x$cd",
       {{R(2, 5, u"[TeX]")}, {R(3, 6)}},
       u"ab[]cd",
       "=[0,2)[0,2) [2,4)[2,5){0,0} =[4,6)[5,7)"},
      {"a later replacement over an earlier deletion is glued to it",
       u"a<b>c",
       {{R(1, 4)}, {R(0, 2, u"Z", {0, 1})}},
       u"Z",
       "[0,1)[0,5){0,0}"},
      {"a later replacement beside an earlier deletion stays apart",
       u"a<b>c",
       {{R(1, 4)}, {R(0, 1, u"Z", {0, 1})}},
       u"Zc",
       "[0,1)[0,1){0,1} [1,1)[1,4){0,0} =[1,2)[4,5)"},
      {"an insertion inside an earlier replacement joins it",
       u"ab$x$cd",
       {{R(2, 5, u"[TeX]", {0, 1})}, {R(4, 4, u"-", {0, 1})}},
       u"ab[T-eX]cd",
       "=[0,2)[0,2) [2,8)[2,5){0,1} =[8,10)[5,7)"},
      {"an earlier insertion deleted later leaves nothing",
       u"ab",
       {{R(1, 1, u"XY")}, {R(1, 3)}},
       u"ab",
       "=[0,2)[0,2)"},
      {"deletion before insertion at one position",
       u"a<b>c",
       {{R(1, 4)}, {R(1, 1, u"\n")}},
       u"a\nc",
       "=[0,1)[0,1) [1,1)[1,4){0,0} [1,2)[4,4){0,0} =[2,3)[4,5)"},
      {"three steps",
       u"<p>x &amp; y</p>",
       {{R(0, 3), R(12, 16)}, {R(2, 7, u"&", {0, 1})}, {R(0, 1)}},
       u" & y",
       "[0,0)[0,4){0,0} =[0,1)[4,5) [1,2)[5,10){0,1} =[2,4)[10,12) [4,4)[12,16){0,0}"},
  };
  for (const Cas& c : kCas) {
    const Resultat resultat = Execute(c.document, c.etapes);
    EXPECT_EQ(VersUtf8(resultat.Interne().Chaine().Vue()), VersUtf8(c.texte)) << c.nom;
    EXPECT_EQ(DecritMap(resultat.Segments()), c.map) << c.nom;
  }
}

TEST(SuiteDeMapChaines, ModeTexteSeul) {
  const Resultat r = Execute(u"a<b>c", {{R(1, 4), M(0, 5, 1)}}, Resultat::eModeTexteSeul);
  EXPECT_EQ(VersUtf8(r.Interne().Chaine().Vue()), "ac");
  EXPECT_EQ(DecritStyles(r.Interne()), "1 1");
  EXPECT_FALSE(r.AMap());
  EXPECT_TRUE(r.Externe().EstVide());  // not kept without a map
  EXPECT_THROW(r.ExterneVersInterne(0), std::logic_error);
}

// A replacement text keeps its length whatever it is: around 65,535 units, where the composer
// stops holding the length in the report itself, as a replacement and as an insertion.
TEST(SuiteDeMapChaines, TextesDeRemplacementLongs) {
  for (const size_t longueur : {size_t{65534}, size_t{65535}, size_t{65536}, size_t{200000}}) {
    const std::u16string long_(longueur, u'L');
    const Resultat r = Execute(u"a<b>c", {{R(1, 4, long_), R(5, 5, long_ + u"!"), R(0, 0, u"Z")}});
    const std::u16string attendu = u"Za" + long_ + u"c" + long_ + u"!";
    ASSERT_TRUE(r.Interne().Chaine().Texte() == attendu) << longueur;
    EXPECT_EQ(r.InterneVersExterne({2, 3}), (MapPos::Intervalle{1, 4})) << longueur;
    EXPECT_EQ(r.ExterneVersInterne(4), 2 + longueur) << longueur;
  }
}

// Two steps that delete many units: the second's map is large enough to be composed on a
// helper thread while the third step (styles alone) runs. Every unit left maps back to the one
// it was in the document.
TEST(SuiteDeMapChaines, GrandeCompositionAPartParallele) {
  std::u16string document;
  for (uint32_t k = 0; k < 600000; ++k) document += static_cast<char16_t>(u'a' + k % 26);
  std::vector<uint32_t> origines(document.size());
  for (uint32_t k = 0; k < origines.size(); ++k) origines[k] = k;
  std::vector<std::vector<Rapport>> etapes;
  for (const uint32_t pas : {7u, 3u}) {  // each step deletes every pas-th unit of its input
    std::vector<Rapport> rapports;
    std::vector<uint32_t> restes;
    for (uint32_t u = 0; u < origines.size(); ++u) {
      if (u % pas == 0)
        rapports.push_back(R(u, u + 1));
      else
        restes.push_back(origines[u]);
    }
    etapes.push_back(std::move(rapports));
    origines = std::move(restes);
  }
  etapes.push_back({M(0, 10, 1)});
  const Resultat r = Execute(document, etapes);
  ASSERT_EQ(r.Interne().Longueur(), origines.size());
  ASSERT_GT(r.Segments().size(), size_t{1} << 17);
  for (uint32_t u = 0; u < origines.size(); ++u) {
    ASSERT_EQ(r.Interne().Chaine()[u], document[origines[u]]) << u;
    ASSERT_EQ(r.InterneVersExterne({u, u + 1}), (MapPos::Intervalle{origines[u], origines[u] + 1}))
        << u;
  }
}

TEST(SuiteDeMapChaines, ChaqueConvertisseurLitLeTexteDuPrecedent) {
  ConvertisseurRejoue premier({R(0, 1)}), second({R(0, 1, u"Z")});
  Suite suite;
  suite.AjouteConvertisseur(&premier);
  suite.AjouteConvertisseur(&second);
  const Resultat r = suite.Convertis(ChaineN(u"abc"));
  EXPECT_EQ(premier.DernierTexte(), u"abc");
  EXPECT_EQ(second.DernierTexte(), u"bc");
  EXPECT_EQ(VersUtf8(r.Interne().Chaine().Vue()), "Zc");
  EXPECT_EQ(Suite(suite).Convertisseurs().size(), 2u);  // a copy refers to the same converters
}

TEST(SuiteDeMapChaines, UneExceptionDUnConvertisseurSortDeLExecution) {
  class Lanceur : public Convertisseur {
    void ConvertisExterneAInterne(const TexteAvecAttributs&, const FonctionRemplace&,
                                  const FonctionMarque&) override {
      throw std::runtime_error("échec");
    }
  } lanceur;
  Suite suite;
  suite.AjouteConvertisseur(&lanceur);
  EXPECT_THROW(suite.Convertis(ChaineN(u"abc")), std::runtime_error);
}

// ---- Random reports against the reference model ----

struct SuiviNaif {
  std::u16string texte;
  std::vector<uint32_t> styles;
  std::vector<MapPos::Intervalle> sources;  // document stretch of each unit
  std::vector<bool> inchange;               // unchanged by every step
  std::vector<bool> connu;                  // the model knows the source (not an insertion)
};

std::vector<Rapport> RapportsAleatoires(std::mt19937& alea, uint64_t n) {
  std::vector<Rapport> rapports(alea() % 10);
  const auto position = [&] { return static_cast<uint32_t>(alea() % (n + 3)); };
  for (Rapport& r : rapports) {
    uint32_t debut = position(), fin = position();
    if (alea() % 6 != 0 && debut > fin) std::swap(debut, fin);  // a few stay reversed
    if (alea() % 4 == 0) fin = debut;
    if (alea() % 4 == 0) {
      r = M(debut, fin, 1u << (alea() % 3));
    } else {
      std::u16string texte(alea() % 3, u'X');
      for (char16_t& c : texte) c = u"XYZ"[alea() % 3];
      r = R(debut, fin, texte, {0, static_cast<uint8_t>(alea() % 2)});
    }
  }
  return rapports;
}

void VerifiePartition(const Resultat& r) {
  const auto& segments = r.Segments();
  uint32_t interne = 0, externe = 0;
  for (const SegmentDeMap& s : segments) {
    ASSERT_EQ(s.DebutInterne, interne);
    ASSERT_EQ(s.DebutExterne, externe);
    ASSERT_LE(s.DebutInterne, s.FinInterne);
    ASSERT_LE(s.DebutExterne, s.FinExterne);
    ASSERT_TRUE(s.FinInterne > s.DebutInterne || s.FinExterne > s.DebutExterne)
        << "an empty segment";
    if (s.Identite) {
      ASSERT_EQ(s.FinInterne - s.DebutInterne, s.FinExterne - s.DebutExterne);
      ASSERT_EQ(r.Interne().Chaine().Vue().substr(s.DebutInterne, s.FinInterne - s.DebutInterne),
                r.Externe().Vue().substr(s.DebutExterne, s.FinExterne - s.DebutExterne));
    }
    interne = s.FinInterne, externe = s.FinExterne;
  }
  ASSERT_EQ(interne, r.Interne().Longueur());
  ASSERT_EQ(externe, r.Externe().Longueur());
}

void AvanceModele(SuiviNaif& suivi, const SortieNaive& sortie) {
  SuiviNaif suivant{sortie.texte, sortie.styles, {}, {}, {}};
  for (size_t u = 0; u < sortie.texte.size(); ++u) {
    const MapPos::Intervalle source = sortie.sources[u];
    if (sortie.insere[u]) {
      suivant.sources.push_back({});
      suivant.inchange.push_back(false);
      suivant.connu.push_back(false);
      continue;
    }
    MapPos::Intervalle document{UINT32_MAX, 0};
    bool connu = true;
    for (uint32_t p = source.Debut; p < source.Fin; ++p) {
      document.Debut = std::min(document.Debut, suivi.sources[p].Debut);
      document.Fin = std::max(document.Fin, suivi.sources[p].Fin);
      connu = connu && suivi.connu[p];
    }
    suivant.sources.push_back(document);
    suivant.inchange.push_back(sortie.inchange[u] && suivi.inchange[source.Debut]);
    suivant.connu.push_back(connu);
  }
  suivi = std::move(suivant);
}

TEST(SuiteDeMapChaines, RapportsAleatoiresContreLeModele) {
  std::mt19937 alea(20261123);
  for (int essai = 0; essai < 4000; ++essai) {
    const uint64_t longueur = alea() % 24;
    std::u16string document;
    for (uint64_t k = 0; k < longueur; ++k) document += u"ab<>\n"[alea() % 5];
    std::vector<std::vector<Rapport>> etapes(1 + alea() % 3);

    SuiviNaif suivi{
        document, {}, {}, std::vector<bool>(longueur, true), std::vector<bool>(longueur, true)};
    for (uint32_t p = 0; p < longueur; ++p) suivi.sources.push_back({p, p + 1});
    SortieNaive premiere;
    for (size_t e = 0; e < etapes.size(); ++e) {
      etapes[e] = RapportsAleatoires(alea, suivi.texte.size());
      const SortieNaive sortie = AppliqueRapportsNaif(suivi.texte, suivi.styles, etapes[e]);
      if (e == 0) premiere = sortie;
      AvanceModele(suivi, sortie);
    }

    const Resultat r = Execute(document, etapes);
    const std::string contexte = "essai " + std::to_string(essai) + " : " + VersUtf8(document);
    ASSERT_EQ(r.Interne().Chaine().Texte(), suivi.texte) << contexte;
    std::vector<uint32_t> styles(suivi.texte.size(), 0);
    for (size_t u = 0; u < styles.size(); ++u) styles[u] = r.Interne().Attribut(u);
    ASSERT_EQ(styles,
              suivi.styles.empty() ? std::vector<uint32_t>(suivi.texte.size(), 0) : suivi.styles)
        << contexte;
    // Without the document, or without a map, every step may write over its input: the same
    // text and bits, and the same map when one is built.
    const Resultat seul = Execute(document, etapes, Resultat::eModeTexteSeul);
    ASSERT_EQ(seul.Interne().Chaine().Texte(), suivi.texte) << contexte;
    ASSERT_EQ(seul.Interne().Attributs(), r.Interne().Attributs()) << contexte;
    const Resultat sansDocument = Execute(document, etapes, Resultat::eModeSansDocument);
    ASSERT_EQ(sansDocument.Interne().Chaine().Texte(), suivi.texte) << contexte;
    ASSERT_EQ(DecritMap(sansDocument.Segments()), DecritMap(r.Segments())) << contexte;
    ASSERT_TRUE(sansDocument.Externe().EstVide()) << contexte;
    ASSERT_EQ(sansDocument.ExterneVersInterne(longueur), r.ExterneVersInterne(longueur));
    ASSERT_THROW(sansDocument.ExterneVersInterne(longueur + 1), std::out_of_range);
    VerifiePartition(r);
    if (HasFatalFailure()) FAIL() << contexte;
    for (uint32_t u = 0; u < suivi.texte.size(); ++u) {
      const MapPos::Intervalle obtenu = r.InterneVersExterne({u, u + 1});
      if (etapes.size() == 1) {
        ASSERT_EQ(obtenu, premiere.sources[u]) << contexte << " unité " << u;
        ASSERT_EQ(r.AttributsInternes(u), premiere.attributs[u]) << contexte << " unité " << u;
      } else if (suivi.inchange[u]) {
        ASSERT_EQ(obtenu, suivi.sources[u]) << contexte << " unité " << u;
      } else if (suivi.connu[u]) {
        ASSERT_LE(obtenu.Debut, suivi.sources[u].Debut) << contexte << " unité " << u;
        ASSERT_GE(obtenu.Fin, suivi.sources[u].Fin) << contexte << " unité " << u;
      }
      if (suivi.inchange[u]) {
        ASSERT_EQ(r.ExterneVersInterne(suivi.sources[u].Debut), u) << contexte;
      }
    }
    uint64_t precedent = 0;
    for (uint64_t p = 0; p <= longueur; ++p) {
      const uint64_t interne = r.ExterneVersInterne(p);
      ASSERT_GE(interne, precedent) << contexte;
      if (etapes.size() == 1) {
        ASSERT_EQ(interne, premiere.versSortie[p]) << contexte << " position " << p;
      }
      precedent = interne;
    }
  }
}

}  // namespace

namespace {

// Many reports, in a few runs each in order (the common case, merged run by run), in many short
// runs (an HTML page's order, sorted whole), or in order but a third of them late (set aside in
// thousands and sorted apart): the text and the styles are the model's. Rivals for one stretch
// tell whether the longer is kept, and of two alike the first reported, whatever the sort.
TEST(SuiteDeMapChaines, BeaucoupDeRapportsEnSuites) {
  std::mt19937 alea(7);
  std::u16string document;
  for (int k = 0; k < 60000; ++k) document += u"ab<>\n"[alea() % 5];
  std::vector<Rapport> rapports;
  for (size_t debut = 0; debut + 4 <= document.size(); debut += 4) {
    const auto d = static_cast<uint32_t>(debut);
    switch (alea() % 6) {
      case 0:
        rapports.push_back(M(d, d + 3, 1u << (alea() % 3)));
        break;
      case 1:
        rapports.push_back(R(d + 1, d + 3, u"X")), rapports.push_back(R(d + 1, d + 3, u"Z"));
        break;
      case 2:
        rapports.push_back(R(d + 1, d + 2, u"Y")), rapports.push_back(R(d + 1, d + 3, u"X"));
        break;
      case 3:
        rapports.push_back(R(d, d, u"I")), rapports.push_back(R(d, d, u"J"));
        break;
      default:
        rapports.push_back(R(d + 1, d + 3, u"X"));
    }
  }
  std::vector<std::vector<Rapport>> arrangements;
  for (const size_t longueurDeSuite : {size_t{90}, size_t{5}}) {
    // Runs in order, the runs themselves in reverse order.
    std::vector<Rapport>& enSuites = arrangements.emplace_back();
    for (size_t fin = rapports.size(); fin > 0;) {
      const size_t debut = fin > longueurDeSuite ? fin - longueurDeSuite : 0;
      enSuites.insert(enSuites.end(), rapports.begin() + debut, rapports.begin() + fin);
      fin = debut;
    }
  }
  std::vector<Rapport>& tardifs = arrangements.emplace_back(rapports);
  for (size_t k = 0; k + 64 < tardifs.size(); k += 3)
    std::rotate(tardifs.begin() + k, tardifs.begin() + k + 1, tardifs.begin() + k + 64);
  for (const std::vector<Rapport>& arrangement : arrangements) {
    const SortieNaive attendu = AppliqueRapportsNaif(document, {}, arrangement);
    const Resultat r = Execute(document, {arrangement});
    ASSERT_EQ(r.Interne().Chaine().Texte(), attendu.texte) << &arrangement - &arrangements[0];
    for (size_t u = 0; u < attendu.texte.size(); ++u)
      ASSERT_EQ(r.Interne().Attribut(u), attendu.styles.empty() ? 0 : attendu.styles[u]) << u;
  }
}

}  // namespace

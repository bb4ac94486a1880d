// Fuzz target of the common filters and the SRT converter: any input, any options. Every
// reported interval must be forward and inside the text; the chain must take the reports; and
// the many-string search must find what the one-string searches find.
//
// Input: byte 0 picks the converter (bits 0-1: excluded strings, e-mail, SRT, the whole filter
// set) and options (bit 2: e-mail, bit 3: whole quoted lines, bit 4: parallel search, bit 5: the
// rest is raw UTF-16, lone surrogates and all, rather than UTF-8); byte 1 the number of
// excluded strings (0 to 7), which come first, each ended by a zero byte; the text follows.
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "OutilsFuzz.h"
#include "filters/AutomateDeChaines.h"
#include "filters/ChercheurDeChaine.h"
#include "filters/ConvertisseurChainesExclues.h"
#include "filters/ConvertisseurPourCourriels.h"
#include "framework/FiltresCorrecteur.h"
#include "subtitles/ConvertisseurSRT.h"

namespace {

// The intervals reported, in order (styles and replacements alike).
std::vector<MapPos::Intervalle> Convertis(Convertisseur& convertisseur, const ChaineN& texte) {
  const uint64_t n = texte.Longueur();
  std::vector<MapPos::Intervalle> intervalles;
  convertisseur.ConvertisExterneAInterne(
      TexteAvecAttributs(texte),
      [&](MapPos::Intervalle i, const ChaineN&, MapPos::Attributs) {
        VerifieIntervalleFuzz(i, n);
        intervalles.push_back(i);
      },
      [&](MapPos::Intervalle i, uint32_t) {
        VerifieIntervalleFuzz(i, n);
        intervalles.push_back(i);
      });
  return intervalles;
}

// Every occurrence, one string at a time, against the automaton's single pass.
void CompareRecherches(const std::vector<ChaineN>& chaines, const ChaineN& texte, Malgray mode) {
  std::vector<std::u16string_view> vues;
  for (const ChaineN& c : chaines)
    if (!c.EstVide()) vues.push_back(c.Vue());
  if (vues.empty()) return;
  const auto automate = AutomateDeChaines::Construit(vues, mode);
  if (!automate) return;
  std::vector<std::vector<uint64_t>> parAutomate(vues.size());
  for (const auto& o : automate->Collecte(texte.Vue(), 0, texte.Longueur()))
    parAutomate[o.chaine].push_back(o.position);
  for (size_t k = 0; k < vues.size(); ++k) {
    const ChercheurDeChaine chercheur(vues[k], mode);
    size_t j = 0;
    for (auto p = chercheur.Cherche(texte.Vue(), 0); p; p = chercheur.Cherche(texte.Vue(), *p + 1))
      if (j >= parAutomate[k].size() || parAutomate[k][j++] != *p) __builtin_trap();
    if (j != parAutomate[k].size()) __builtin_trap();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
  if (taille < 2 || taille > kTailleMaxFuzz) return 0;
  const uint8_t choix = donnees[0];
  const bool utf16 = choix & 32;
  std::string_view reste(reinterpret_cast<const char*>(donnees) + 2, taille - 2);
  FiltresCorrecteur::Params params;
  std::vector<ChaineN> chaines;
  for (unsigned k = 0; k < donnees[1] % 8; ++k) {
    const size_t fin = reste.find('\0');
    if (fin == std::string_view::npos) break;
    chaines.push_back(TexteFuzz(reste.substr(0, fin), utf16));
    reste.remove_prefix(fin + 1);
    if (k % 2)
      params.ChainesExcluesCourriel.Ajoute(UniChaine(chaines.back()));
    else
      params.ChainesExclues.Ajoute(UniChaine(chaines.back()));
  }
  const ChaineN texte = TexteFuzz(reste, utf16);
  params.Courriel = choix & 4;
  params.MasqueLignesCitees = choix & 8;
  params.RechercheParallele = choix & 16;

  switch (choix & 3) {
    case 0: {
      ConvertisseurChainesExclues exclues(params.ChainesExclues, params.ChainesExcluesCourriel,
                                          params.Courriel, params.RechercheParallele);
      // A second run over the lists the first one edited gives the same reports.
      if (Convertis(exclues, texte) != Convertis(exclues, texte)) __builtin_trap();
      CompareRecherches(chaines, texte, choix & 8 ? kMalgraySansCasseNiAccents : kMalgrayExact);
      break;
    }
    case 1: {
      ConvertisseurPourCourriels courriels(params.MasqueLignesCitees);
      Convertis(courriels, texte);
      break;
    }
    case 2: {
      ConvertisseurSRT srt;
      Convertis(srt, texte);
      break;
    }
    default: {
      params.Format = eFormatSRT;
      FiltresCorrecteur filtres;
      filtres.CreeFiltres(params);
      const auto resultat = filtres.Mappeur().Convertis(texte);
      if (resultat.Interne().Longueur() > texte.Longueur()) __builtin_trap();  // all masks
      break;
    }
  }
  return 0;
}

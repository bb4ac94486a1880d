// AnalyseurLaTeX, regions: comments, inline and display formulas and formula environments. A
// comment goes; a formula stays marked as non-prose or gives way to "[TeX]"; a display
// environment becomes a placeholder paragraph but for the prose of its intertext commands.
#include <algorithm>

#include "ferlane/CodageUtf.h"
#include "ferlane/UniCaractere.h"
#include "latex/AnalyseurLaTeX.h"
#include "latex/VocabulaireLaTeX.h"

namespace {

bool EstPonctuationFinale(char16_t c) {
  return c == u'.' || c == u',' || c == u'!' || c == u'?';
}
bool EstFinDePhrase(char16_t c) {
  return c == u'.' || c == u'!' || c == u'?';
}

}  // namespace

std::optional<uint64_t> AnalyseurLaTeX::ProchainFermant(std::u16string_view fermant,
                                                        uint64_t debut) {
  auto chercheur = std::find_if(chercheurs_.begin(), chercheurs_.end(),
                                [&](const ChercheurDeFermant& c) { return c.fermant == fermant; });
  if (chercheur == chercheurs_.end()) {
    const auto nonEchappe = [](std::u16string_view texte, uint64_t position) {
      return position == 0 || texte[position - 1] != u'\\';
    };
    chercheurs_.push_back({fermant, ProchaineOccurrence(texte_.Vue(), fermant, nonEchappe)});
    chercheur = chercheurs_.end() - 1;
  }
  return chercheur->occurrence.Apres(debut);
}

bool AnalyseurLaTeX::TraiteRegion(ContexteLaTeX& contexte, const DelimiteurLaTeX& d) {
  const uint64_t p = contexte.position;
  const uint64_t finOuvrant = p + d.ouvrant.size();
  if (finOuvrant > contexte.fin || !texte_.ContientALaPos(d.ouvrant, p)) return false;
  if (p > 0 && texte_[p - 1] == u'\\') return false;

  // With no closing string inside the range, the region runs to the range's end.
  uint64_t c = contexte.fin;
  uint64_t longueurFermant = 0;
  const std::optional<uint64_t> fermant = ProchainFermant(d.fermant, finOuvrant);
  if (fermant && *fermant + d.fermant.size() <= contexte.fin) {
    c = *fermant;
    longueurFermant = d.fermant.size();
  }
  if (prose_.Actif && !(d.options & eRegionGardeFermant)) {
    // An unclosed formula or environment costs its paragraph; a formula, which no paragraph
    // break can cut in a document that compiles, ends at one even when closed further on.
    const uint64_t paragraphe = FinDeParagrapheProse(finOuvrant, contexte.fin);
    if (longueurFermant == 0 || ((d.options & eRegionFormule) && paragraphe < c)) {
      c = paragraphe;
      longueurFermant = 0;
    }
  }
  const uint64_t finFermant = c + longueurFermant;
  contexte.position = finFermant;

  if ((d.options & eRegionBrute) && (d.options & eRegionGardeFermant))
    Masque(p, c);
  else if ((d.options & eRegionBrute) && (d.options & eRegionBloc))
    TraiteEnvironnementFormule(contexte, p, finOuvrant, c, finFermant);
  else if (d.options & eRegionFormule)
    TraiteFormule(contexte, d, p, c, finFermant);
  return true;
}

// The content, without the blanks next to its delimiters, is scanned as a nested range; the rest
// of the treatment waits for that scan (TermineFormule).
void AnalyseurLaTeX::TraiteFormule(ContexteLaTeX& contexte, const DelimiteurLaTeX& d, uint64_t p,
                                   uint64_t c, uint64_t finFermant) {
  const uint64_t finOuvrant = p + d.ouvrant.size();
  uint64_t debutContenu = finOuvrant;
  while (debutContenu < contexte.fin && UniCaractere::EstBlanc(texte_[debutContenu]))
    ++debutContenu;
  // No opening string ends with a blank, so the walk back stops at the opening at the latest.
  uint64_t finContenu = c;
  while (finContenu > finOuvrant && UniCaractere::EstBlanc(texte_[finContenu - 1])) --finContenu;
  // Blanks only: the two walks cross, and the content is the empty stretch at the end of the
  // blanks that follow the opening.
  finContenu = std::max(finContenu, debutContenu);
  OuvreContexte(debutContenu, finContenu, SuiteFormule{&d, p, debutContenu, finFermant});
}

void AnalyseurLaTeX::TermineFormule(ContexteLaTeX& contexte, const ContexteLaTeX& formule,
                                    const SuiteFormule& suite) {
  const uint64_t p = suite.ouvrant;
  const uint64_t finFermant = suite.finFermant;
  const uint64_t debutContenu = suite.debutContenu;
  const uint64_t finContenu = formule.fin;
  if (!formule.commandeInconnue) {
    // A "$" formula with no ordinary character (symbols only) is no prose at all.
    if (nbCaracteres_ == formule.caracteresAvant && suite.region == &kFormuleSimple) {
      Marque(p, finFermant, eNonTexte);
      Remplace(p, finFermant, kMarqueTeX, kAttributsMasque);
    } else {
      Marque(debutContenu, finContenu, eNonTexte);
    }
  } else {
    // The sentence's punctuation stays outside the placeholder.
    uint64_t fin = finContenu;
    uint64_t k = finContenu;
    while (k > debutContenu && UniCaractere::EstBlanc(texte_[k - 1])) --k;
    if (k > debutContenu && EstPonctuationFinale(texte_[k - 1])) fin = k - 1;
    Marque(debutContenu, fin, eNonTexte);
    Remplace(debutContenu, fin, kMarqueTeX, kAttributsMasque);
  }
  if ((suite.region->options & eRegionParagraphe) && p > 0)
    AppliqueRegleParagraphe(contexte, p, finFermant);
  // The delimiters and the blanks next to them go, also under a placeholder.
  Masque(p, debutContenu);
  Masque(finContenu, finFermant);
}

// A display formula between the end of one sentence and the start of another stands as a
// paragraph of its own.
void AnalyseurLaTeX::AppliqueRegleParagraphe(const ContexteLaTeX& contexte, uint64_t p,
                                             uint64_t finFermant) {
  uint64_t avant = p - 1;
  while (avant > 0 && UniCaractere::EstBlanc(texte_[avant])) --avant;
  if (!EstFinDePhrase(texte_[avant]) || finFermant >= contexte.fin) return;
  uint64_t apres = finFermant;
  while (apres < contexte.fin && UniCaractere::EstBlanc(texte_[apres])) ++apres;
  if (apres >= contexte.fin) return;
  size_t lu = apres;
  const char32_t suivant =
      LitCodePoint(texte_.Vue().substr(0, std::min<uint64_t>(contexte.fin, texte_.Longueur())), lu);
  if (!UniCaractere::EstMajuscule(suivant)) return;
  Remplace(p, p, kParagraphe, kAttributsMasque);
  Remplace(finFermant, finFermant, kParagraphe, kAttributsMasque);
}

// The opening goes and the closing becomes a paragraph break. The content becomes "[TeX]", or,
// when it holds intertext commands whose brace really closes inside the environment, paragraph
// breaks around the intertexts' own words, which stay unscanned.
void AnalyseurLaTeX::TraiteEnvironnementFormule(ContexteLaTeX& contexte, uint64_t p,
                                                uint64_t finOuvrant, uint64_t c,
                                                uint64_t finFermant) {
  Masque(p, finOuvrant);
  const uint64_t debutContenu = finOuvrant;
  uint64_t g = debutContenu;  // start of the stretch not yet reported
  uint64_t i = debutContenu;
  while (i + 1 < c) {
    const CommandeLaTeX* intertexte = nullptr;
    if (texte_[i] == u'\\') {
      for (const CommandeLaTeX& commande : kCommandesIntertexte) {
        if (i + 1 + commande.nom.size() <= contexte.fin &&
            texte_.ContientALaPos(commande.nom, i + 1)) {
          intertexte = &commande;
          break;
        }
      }
    }
    if (intertexte == nullptr) {
      ++i;
      continue;
    }
    i += 1 + intertexte->nom.size();
    while (i < c && texte_[i] == u' ') ++i;
    if (i + 1 < c && texte_[i] == u'{') {
      const std::optional<uint64_t> e = TrouveFermant(contexte, i);
      if (e && *e < c) {
        Remplace(g, i + 1, kParagraphe, kAttributsMasque);
        g = *e;
        i = *e + 1;
      }
    }
  }
  if (g < c) {
    if (g > debutContenu) {
      Masque(g, c);  // after the last intertext, its closing brace included
    } else {
      if (p > 0 && !UniCaractere::EstBlanc(texte_[p - 1]))
        Remplace(g, g, kEspace, kAttributsEquivalent);
      Remplace(g, c, kMarqueTeX, kAttributsMasque);
      Marque(g, c, eNonTexte);
    }
  }
  Remplace(c, finFermant, kParagraphe, kAttributsMasque);
}

// AnalyseurLaTeX: the scan of a range, commands and their arguments, symbols, table equivalents,
// blanks and glossary commands. Regions and formulas are in RegionsLaTeX.cpp.
#include "latex/AnalyseurLaTeX.h"

#include <algorithm>
#include <array>

#include "ferlane/CodageUtf.h"
#include "ferlane/ProchaineOccurrence.h"
#include "ferlane/UniCaractere.h"
#include "latex/SymbolesLaTeX.h"
#include "latex/VocabulaireLaTeX.h"

namespace {

bool EstLettreAscii(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

// What the walk does with an ASCII character: most are ordinary and go by in runs. Above ASCII
// a character is ordinary unless it is a blank.
enum eClasseAscii : uint8_t { eOrdinaire = 0, eDeclencheur = 1, eBlancAscii = 2 };
const std::array<uint8_t, 128> kClassesAscii = [] {
  std::array<uint8_t, 128> classes{};
  for (char16_t c = 0; c < 128; ++c) {
    if (UniCaractere::EstBlanc(c))
      classes[c] = eBlancAscii;
    else if (std::u16string_view(u"\\{$^_").find(c) != std::u16string_view::npos ||
             kDeclencheursTypographie.find(c) != std::u16string_view::npos)
      classes[c] = eDeclencheur;
  }
  return classes;
}();

bool EstBlanc(char16_t c) {
  return c < 128 ? kClassesAscii[c] == eBlancAscii : UniCaractere::EstBlanc(c);
}

}  // namespace

AnalyseurLaTeX::AnalyseurLaTeX(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                               const FonctionMarque& marque, const OptionsProseLaTeX& prose)
    : texte_(texte.Chaine()), remplace_(remplace), marque_(marque), prose_(prose) {
  pile_.emplace_back().fin = texte_.Longueur();
  if (!prose_.Actif) return;
  verbatims_ = TrouveVerbatims(texte_, prose_);
  for (const OptionsProseLaTeX::CommandeDeclaree& c : prose_.Commandes)
    commandesDeclarees_[c.nom] = {c.arguments, std::nullopt, true};
  // An environment's first argument is its name's group after \begin.
  for (const OptionsProseLaTeX::CommandeDeclaree& e : prose_.Environnements)
    environnementsDeclares_[e.nom] = {u"d" + e.arguments, std::nullopt, true};
}

void AnalyseurLaTeX::Remplace(uint64_t debut, uint64_t fin, const ChaineN& texte,
                              MapPos::Attributs attributs) {
  remplace_(Rapporteur::Intervalle(debut, fin), texte, attributs);
}

void AnalyseurLaTeX::Marque(uint64_t debut, uint64_t fin, uint32_t style) {
  marque_(Rapporteur::Intervalle(debut, fin), style);
}

uint64_t AnalyseurLaTeX::LongueurCaractere(uint64_t position, uint64_t fin) const {
  return position + 1 < fin && EstHautSubstitut(texte_[position]) &&
                 EstBasSubstitut(texte_[position + 1])
             ? 2
             : 1;
}

// ---------------------------------------------------------------------------------------------
// The walk

void AnalyseurLaTeX::AnalyseIntervalle() {
  for (;;) {
    ContexteLaTeX& contexte = pile_.back();
    if (contexte.position < contexte.fin)
      TraiteCaractere(contexte);
    else if (pile_.size() > 1)
      TermineContexte();
    else
      return;
  }
}

// A nested range [debut, fin) inside the one on top of the stack.
void AnalyseurLaTeX::OuvreContexte(uint64_t debut, uint64_t fin, Suite suite) {
  if (pile_.size() == 1) racineAvant_ = {nbNonAscii_, nbAccentsCommandes_};
  ContexteLaTeX& contexte = pile_.emplace_back();
  contexte.position = debut;
  contexte.fin = std::max(debut, fin);
  contexte.caracteresAvant = nbCaracteres_;
  if (!std::holds_alternative<SuiteGroupe>(suite)) AttendLaFin(suite);
}

// What the treatment that opened the range on top of the stack does at its end.
void AnalyseurLaTeX::AttendLaFin(Suite suite) {
  ContexteLaTeX& contexte = pile_.back();
  if (contexte.attendUneSuite) {
    suites_.back() = suite;
    return;
  }
  suites_.push_back(suite);
  contexte.attendUneSuite = true;
}

// The scan of the range on top of the stack is done: the treatment that opened it goes on.
void AnalyseurLaTeX::TermineContexte() {
  const ContexteLaTeX fini = pile_.back();
  Suite suite = SuiteGroupe{};
  if (fini.attendUneSuite) {
    suite = suites_.back();
    suites_.pop_back();
  }
  if (!glossaires_.empty() && glossaires_.back().profondeur == pile_.size()) glossaires_.pop_back();
  pile_.pop_back();
  ContexteLaTeX& parent = pile_.back();
  if (const auto* formule = std::get_if<SuiteFormule>(&suite))
    TermineFormule(parent, fini, *formule);
  // Further arguments may open ranges of their own, so they come once this one is off the stack.
  if (const auto* commande = std::get_if<SuiteCommande>(&suite))
    PoursuisArguments(parent, *commande);
}

void AnalyseurLaTeX::TraiteCaractere(ContexteLaTeX& contexte) {
  const uint64_t p = contexte.position;
  const char16_t c = texte_[p];
  switch (c) {
    case u'\\':
      TraiteCommande(contexte, 0);
      return;
    case u'{': {
      uint32_t nbAccolades = 0;
      TraiteArgument(contexte, &kGroupe, nbAccolades);
      return;
    }
    case u'$': {
      const bool double_ = p + 1 < contexte.fin && texte_[p + 1] == u'$';
      if (!TraiteRegion(contexte, double_ ? kFormuleDouble : kFormuleSimple))
        contexte.position = p + 1;
      return;
    }
    case u'^':
      TraiteIndice(contexte, kExposant);
      return;
    case u'_':
      TraiteIndice(contexte, kIndice);
      return;
    default:
      break;
  }
  if (EstBlanc(c)) {
    NormaliseBlancs(contexte);
    return;
  }
  // The other triggers were dispatched above: what is left of the class are the typographic ones.
  if (c < 128 && kClassesAscii[c] == eDeclencheur) {
    for (const EquivalentLaTeX& e : kTypographieLaTeX)
      if (TraiteEquivalent(contexte, e)) return;
    ++nbCaracteres_;  // a trigger that begins no sequence is ordinary
    contexte.position = p + 1;
    return;
  }
  ParcoursOrdinaires(contexte);
}

// A run of ordinary characters, counted in one go.
void AnalyseurLaTeX::ParcoursOrdinaires(ContexteLaTeX& contexte) {
  const std::u16string_view texte = texte_.Vue().substr(0, contexte.fin);
  uint64_t p = contexte.position;
  uint32_t nbCaracteres = 0, nbNonAscii = 0;
  for (; p < contexte.fin; ++p, ++nbCaracteres) {
    // Plain words and the single spaces between them, eight units at a time.
    uint64_t espaces = 0;
    const uint64_t finMots = FinDeMotsAscii(texte, p, espaces);
    nbCaracteres += static_cast<uint32_t>(finMots - p - espaces);
    p = finMots;
    if (p >= contexte.fin) break;
    const char16_t c = texte[p];
    if (c < 128) {
      if (kClassesAscii[c] != eOrdinaire) {
        // One space between two words goes by with nothing to report, as NormaliseBlancs
        // lets it: it is not counted, and the run goes on.
        if (c != u' ' ||
            (p + 1 < contexte.fin && (EstBlanc(texte[p + 1]) || texte[p + 1] == u'\\')))
          break;
        --nbCaracteres;
        continue;
      }
    } else {
      if (UniCaractere::EstBlanc(c)) break;
      ++nbNonAscii;
    }
  }
  nbCaracteres_ += nbCaracteres;
  nbNonAscii_ += nbNonAscii;
  contexte.position = p;
}

// "^" or "_": the sign goes, and what follows carries the style.
void AnalyseurLaTeX::TraiteIndice(ContexteLaTeX& contexte, const CommandeLaTeX& signe) {
  const uint64_t p = contexte.position;
  contexte.position = p + 1;
  if (p + 1 >= contexte.fin) return;  // the last character of the range stays
  Masque(p, p + 1);
  const char16_t suivant = texte_[p + 1];
  if (suivant == u'{') {
    uint32_t nbAccolades = 0;
    TraiteArgument(contexte, &signe, nbAccolades);
  } else if (suivant == u'\\') {
    TraiteCommande(contexte, signe.style);
  } else {
    // Not counted as ordinary: a lone exponent is no word.
    const uint64_t fin = p + 1 + LongueurCaractere(p + 1, contexte.fin);
    Marque(p + 1, fin, signe.style);
    contexte.position = fin;
  }
}

// ---------------------------------------------------------------------------------------------
// Commands

void AnalyseurLaTeX::TraiteCommande(ContexteLaTeX& contexte, uint32_t style) {
  const uint64_t p = contexte.position;
  const uint64_t q = p + 1;
  if (q >= contexte.fin) {  // a final backslash stays
    contexte.position = q;
    return;
  }
  if (!EstLettreAscii(texte_[q])) {
    TraiteCommandeNonLettre(contexte);
    return;
  }
  uint64_t r = q;
  while (r < contexte.fin && EstLettreAscii(texte_[r])) ++r;
  const std::u16string_view nom = texte_.Vue().substr(q, r - q);
  const CommandeLaTeX* commande = TrouveCommandeLaTeX(nom);
  if (r < contexte.fin && texte_[r] == u'*') ++r;  // a starred command takes its unstarred record
  if (prose_.Actif) {
    if (TraiteVerbatim(contexte) || TraiteDefinition(contexte, nom, p, r)) return;
    if (const DeclarationLaTeX* declaree = CommandeDeclaree(nom, commande)) {
      TraiteCommandeDeclaree(contexte, *declaree, p, r);
      return;
    }
  }

  // "begin" and "end" are environment words; a starred one is not (the star counts in r - q).
  bool motEnvironnement = false;
  if (r - q == kMotBegin.size() && texte_.ContientALaPos(kMotBegin, q)) {
    motEnvironnement = true;
    // Every opening there is "\begin{" and a name: one whose name starts with another letter
    // cannot match, and is not tried.
    const uint64_t lettre = p + kDebutEnvironnement.size();
    const char16_t initiale = lettre < contexte.fin ? texte_[lettre] : u'\0';
    for (const DelimiteurLaTeX& d : kEnvironnementsFormules)
      if (d.ouvrant[kDebutEnvironnement.size()] == initiale && TraiteRegion(contexte, d)) return;
  } else if (r - q == kMotEnd.size() && texte_.ContientALaPos(kMotEnd, q)) {
    motEnvironnement = true;
  }
  if (commande == nullptr && TraiteSymbole(contexte, p, q, r, style)) return;

  uint64_t s = r;
  while (s < contexte.fin && texte_[s] == u' ') ++s;
  if (motEnvironnement || (commande && (commande->options & (eCmdBloc | eCmdTitre)))) {
    Remplace(p, s, kParagraphe, kAttributsMasque);
  } else if (commande && (commande->options & eCmdGlossaire)) {
    TraiteGlossaire(contexte, *commande, p, s);
    return;
  } else {
    Masque(p, s);
  }
  if (commande == nullptr && !motEnvironnement) contexte.commandeInconnue = true;
  contexte.position = s;
  const DeclarationLaTeX* environnement = prose_.Actif && motEnvironnement && texte_[q] == u'b'
                                              ? EnvironnementDeclare(contexte, s)
                                              : nullptr;
  PoursuisArguments(contexte, {commande, 0, s, environnement});
}

// A backslash and a character that is not a letter: a formula, an escape, a punctuation
// command, an accent, or nothing at all.
void AnalyseurLaTeX::TraiteCommandeNonLettre(ContexteLaTeX& contexte) {
  for (const DelimiteurLaTeX& d : kFormulesCommandes)
    if (TraiteRegion(contexte, d)) return;
  for (const EquivalentLaTeX& e : kEchappementsLaTeX)
    if (TraiteEquivalent(contexte, e)) return;
  for (const EquivalentLaTeX& e : kCommandesPonctuation)
    if (TraiteEquivalent(contexte, e)) return;
  for (const EquivalentLaTeX& e : kAccentsLaTeX) {
    if (TraiteEquivalent(contexte, e)) {
      ++nbAccentsCommandes_;
      ++nbCaracteres_;
      return;
    }
  }
  // Both characters go; a character outside the basic plane goes whole.
  const uint64_t p = contexte.position;
  const uint64_t fin = p + 1 + LongueurCaractere(p + 1, contexte.fin);
  Masque(p, fin);
  contexte.position = fin;
}

// The arguments that follow a command, from the context's position: brace and bracket arguments
// with no blank between them. A kept argument is scanned as a nested range, after which the
// walk comes back here through SuiteCommande.
void AnalyseurLaTeX::PoursuisArguments(ContexteLaTeX& contexte, SuiteCommande suite) {
  while (contexte.position < contexte.fin &&
         (texte_[contexte.position] == u'{' || texte_[contexte.position] == u'[')) {
    if (suite.declaree != nullptr) {
      // A declared command takes as many brace arguments as it has letters, no more.
      if (suite.nbAccolades >= suite.declaree->arguments.size()) break;
      if (TraiteArgumentDeclare(contexte, *suite.declaree, suite.nbAccolades)) {
        AttendLaFin(suite);
        return;
      }
      continue;
    }
    if (TraiteArgument(contexte, suite.commande, suite.nbAccolades)) {
      AttendLaFin(suite);
      return;
    }
  }
  TermineCommande(contexte, suite);
}

void AnalyseurLaTeX::TermineCommande(ContexteLaTeX& contexte, const SuiteCommande& suite) {
  const CommandeLaTeX* commande = suite.commande;
  if (commande == nullptr) return;
  // A style switch with no argument applies to the rest of the range.
  if (suite.nbAccolades == 0 && commande->style != 0)
    Marque(suite.apresNom, contexte.fin, commande->style);
  if (commande->options & eCmdTitre)
    Remplace(contexte.position, contexte.position, kParagraphe, kAttributsMasque);
}

// The argument or group whose bracket stands at the context's position. Returns true when it is
// kept and its content was pushed for scanning; the position is past its closing bracket either
// way.
bool AnalyseurLaTeX::TraiteArgument(ContexteLaTeX& contexte, const CommandeLaTeX* commande,
                                    uint32_t& nbAccolades) {
  const uint64_t s = contexte.position;
  const bool accolade = texte_[s] == u'{';
  const Fermeture f = FermetureArgument(contexte, s);
  if (accolade) ++nbAccolades;
  contexte.position = f.fin;
  if (!ArgumentGardeLaTeX(commande, accolade, nbAccolades)) {
    Masque(s, f.fin);
    return false;
  }
  Masque(s, s + 1);
  if (f.fin > f.contenu) Masque(f.contenu, f.fin);
  if (commande->style != 0) Marque(s, f.fin, commande->style);
  if (commande->options & eCmdParentheses) {
    Remplace(s + 1, s + 1, kParentheseOuvrante, kAttributsMasque);
    Remplace(f.contenu, f.contenu, kParentheseFermante, kAttributsMasque);
  }
  OuvreContexte(s + 1, f.contenu, SuiteGroupe{});
  return true;
}

AnalyseurLaTeX::Fermeture AnalyseurLaTeX::FermetureArgument(const ContexteLaTeX& contexte,
                                                            uint64_t ouvrant) {
  std::optional<uint64_t> fermant = TrouveFermant(contexte, ouvrant);
  if (prose_.Actif) {
    // An unmatched bracket costs its paragraph, not the rest of the range; a bracket argument
    // never runs across a paragraph break (a brace one may: a footnote of two paragraphs).
    const uint64_t paragraphe = FinDeParagrapheProse(ouvrant, contexte.fin);
    if (fermant && texte_[ouvrant] == u'[' && *fermant > paragraphe) fermant.reset();
    if (!fermant) return {paragraphe, paragraphe};
  }
  // With no match the last character of the range is taken for the closing bracket.
  const uint64_t e = fermant.value_or(contexte.fin - 1);
  return {e, e + 1};
}

std::optional<uint64_t> AnalyseurLaTeX::TrouveFermant(const ContexteLaTeX& contexte,
                                                      uint64_t ouvrant) {
  if (ouvrant + 1 >= contexte.fin) return std::nullopt;
  return Crochets().Fermant(ouvrant, contexte.fin);
}

const AppariementCrochets& AnalyseurLaTeX::Crochets() {
  if (!crochets_) crochets_.emplace(texte_, verbatims_);
  return *crochets_;
}

bool AnalyseurLaTeX::TraiteSymbole(ContexteLaTeX& contexte, uint64_t p, uint64_t q, uint64_t r,
                                   uint32_t style) {
  // The cedilla is spelt with its letter in braces: "\c{c}" is looked up as "c{c}".
  uint64_t finCle = r;
  if (r - q == 1 && texte_[q] == u'c' && q + 4 <= contexte.fin) finCle = q + 4;
  const ChaineN* valeur = TrouveSymboleLaTeX(texte_.Vue().substr(q, finCle - q));
  if (valeur == nullptr) return false;
  contexte.position = finCle;
  Remplace(p, finCle, *valeur, kAttributsEquivalent);
  if (style != 0) Marque(p, finCle, style);
  return true;
}

bool AnalyseurLaTeX::TraiteEquivalent(ContexteLaTeX& contexte, const EquivalentLaTeX& e) {
  const uint64_t p = contexte.position;
  if (p + e.latex.size() > contexte.fin) return false;
  // The tables are tried entry by entry at a backslash or a trigger, which every entry of one
  // table shares: the unit after it tells most entries apart, and is compared first.
  const size_t k = e.latex.size() > 1 ? 1 : 0;
  if (texte_[p + k] != e.latex[k] || texte_.Vue().substr(p, e.latex.size()) != e.latex)
    return false;
  if (p > 0 && texte_[p - 1] == u'\\') return false;
  contexte.position = p + e.latex.size();
  Remplace(p, contexte.position, ChaineN(e.texte), kAttributsEquivalent);
  return true;
}

// ---------------------------------------------------------------------------------------------
// Blanks

bool AnalyseurLaTeX::SautDeParagraphe(const ContexteLaTeX& contexte, uint64_t position) const {
  // Asked at every blank of a run: the first unit turns most away.
  const char16_t c = texte_[position];
  if (c != u'\n' && c != u'\r') return false;
  const std::u16string_view reste = texte_.Vue().substr(position, contexte.fin - position);
  return reste.starts_with(u"\n\n") || reste.starts_with(u"\r\n\r\n");
}

// A run of blanks keeps one space (its last, or its first when it ends with another blank), or
// becomes one; a paragraph break ends the run and stays as it is.
void AnalyseurLaTeX::NormaliseBlancs(ContexteLaTeX& contexte) {
  const uint64_t s = contexte.position;
  // The common case, one space between two words, has nothing to report.
  if (texte_[s] == u' ' &&
      (s + 1 >= contexte.fin || (!EstBlanc(texte_[s + 1]) && texte_[s + 1] != u'\\'))) {
    contexte.position = s + 1;
    return;
  }
  uint64_t i = s;
  for (;;) {
    if (SautDeParagraphe(contexte, i)) break;
    if (++i >= contexte.fin) break;
    const char16_t c = texte_[i];
    if (EstBlanc(c)) continue;
    if (c == u'\\' && i + 1 < contexte.fin && texte_[i + 1] == u' ') continue;  // control space
    break;
  }
  const uint64_t longueur = i - s;
  if (longueur == 1) {
    if (texte_[s] != u' ') Remplace(s, i, kEspace, kAttributsEquivalent);
  } else if (longueur > 1) {
    if (texte_[i - 1] == u' ')
      Remplace(s, i - 1, kChaineNNulle, kAttributsEquivalent);
    else if (texte_[s] != u' ')
      Remplace(s, i, kEspace, kAttributsEquivalent);
    else
      Remplace(s + 1, i, kChaineNNulle, kAttributsEquivalent);
  }
  uint64_t j = i;
  while (j < contexte.fin && UniCaractere::EstReturn(texte_[j])) ++j;
  contexte.position = j == s ? s + 1 : j;
}

// ---------------------------------------------------------------------------------------------
// Glossaries

void AnalyseurLaTeX::TraiteGlossaire(ContexteLaTeX& contexte, const CommandeLaTeX& commande,
                                     uint64_t p, uint64_t s) {
  if (!indexGlossaire_) indexGlossaire_ = std::make_unique<IndexGlossaire>(texte_);
  EtatGlossaire& glossaire = GlossaireDuSommet();
  glossaire.position = s;
  glossaire.Resous(commande.nom);
  // Arguments are read over the whole document, so the replacement may run past the range.
  Remplace(p, glossaire.position, glossaire.resultat, kAttributsMasque);
  if (glossaire.resultat == kMarqueTeX) Marque(p, glossaire.position, eNonTexte);
  contexte.position = glossaire.position;
}

// The glossary state of the range on top of the stack, made at its first glossary command.
EtatGlossaire& AnalyseurLaTeX::GlossaireDuSommet() {
  if (glossaires_.empty() || glossaires_.back().profondeur != pile_.size())
    glossaires_.push_back(
        {pile_.size(), std::make_unique<EtatGlossaire>(texte_, *indexGlossaire_)});
  return *glossaires_.back().etat;
}

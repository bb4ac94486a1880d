// AnalyseurLaTeX, the prose profile's own treatments: code stretches, definitions, declared
// commands and environments, and the paragraph that bounds what an unclosed construct costs.
#include <algorithm>

#include "latex/AnalyseurLaTeX.h"
#include "latex/VocabulaireLaTeX.h"

using eArgument = OptionsProseLaTeX::eArgument;

// A code stretch starting at the position: its delimiters go (an environment's give way to
// paragraph breaks), its content stays, marked as not prose, and is not scanned.
bool AnalyseurLaTeX::TraiteVerbatim(ContexteLaTeX& contexte) {
  const uint64_t p = contexte.position;
  // Commands are met in increasing position but for a few: from the stretch found for the last
  // one, a step or two finds this one's; one before it is searched for from the start.
  size_t& i = curseurVerbatims_;
  if (i > 0 && verbatims_[i - 1].debut >= p)
    i = static_cast<size_t>(
        std::lower_bound(verbatims_.begin(), verbatims_.end(), p,
                         [](const RegionVerbatim& r, uint64_t x) { return r.debut < x; }) -
        verbatims_.begin());
  while (i < verbatims_.size() && verbatims_[i].debut < p) ++i;
  if (i == verbatims_.size() || verbatims_[i].debut != p) return false;
  const auto v = verbatims_.begin() + static_cast<std::ptrdiff_t>(i);
  const uint64_t fin = std::min(v->fin, contexte.fin);
  const uint64_t debutContenu = std::min(v->debutContenu, fin);
  const uint64_t finContenu = std::clamp(v->finContenu, debutContenu, fin);
  if (v->bloc) {
    Remplace(p, debutContenu, kParagraphe, kAttributsMasque);
    Remplace(finContenu, fin, kParagraphe, kAttributsMasque);
  } else {
    Masque(p, debutContenu);
    if (fin > finContenu) Masque(finContenu, fin);
  }
  if (finContenu > debutContenu) Marque(debutContenu, finContenu, eNonTexte);
  contexte.position = fin;
  return true;
}

// A definition goes whole, and what it defines is remembered for the rest of the document. The
// user's declaration of the same name stands.
bool AnalyseurLaTeX::TraiteDefinition(ContexteLaTeX& contexte, std::u16string_view nom, uint64_t p,
                                      uint64_t r) {
  if (!EstDefinisseurLaTeX(nom)) return false;
  std::optional<DefinitionLaTeX> d = LitDefinitionLaTeX(texte_, Crochets(), nom, r, contexte.fin);
  if (!d) return false;
  DeclarationsLaTeX& table = d->environnement ? environnementsDeclares_ : commandesDeclarees_;
  const auto [it, nouvelle] = table.try_emplace(d->nom);
  if (nouvelle || !it->second.utilisateur) it->second = std::move(d->declaration);
  Masque(p, d->fin);
  contexte.position = d->fin;
  return true;
}

// A command the document defines stands in for nothing the table knows better; one the user
// declares wins over the table.
const DeclarationLaTeX* AnalyseurLaTeX::CommandeDeclaree(std::u16string_view nom,
                                                         const CommandeLaTeX* commande) const {
  const auto it = commandesDeclarees_.find(nom);
  if (it == commandesDeclarees_.end()) return nullptr;
  return commande == nullptr || it->second.utilisateur ? &it->second : nullptr;
}

// The declared environment whose name's group stands at `s`, after \begin.
const DeclarationLaTeX* AnalyseurLaTeX::EnvironnementDeclare(const ContexteLaTeX& contexte,
                                                             uint64_t s) {
  if (environnementsDeclares_.empty() || s >= contexte.fin || texte_[s] != u'{') return nullptr;
  const std::optional<uint64_t> fermant = TrouveFermant(contexte, s);
  if (!fermant) return nullptr;
  const auto it = environnementsDeclares_.find(texte_.Vue().substr(s + 1, *fermant - s - 1));
  return it == environnementsDeclares_.end() ? nullptr : &it->second;
}

// A command known to stand for words gives way to them (the blanks after its name stay, so the
// words do not run into the next ones); any other loses its name, and its arguments go by
// their letters.
void AnalyseurLaTeX::TraiteCommandeDeclaree(ContexteLaTeX& contexte, const DeclarationLaTeX& d,
                                            uint64_t p, uint64_t r) {
  if (d.texte && d.arguments.empty()) {
    Remplace(p, r, *d.texte, kAttributsEquivalent);
    ++nbCaracteres_;
    contexte.position = r;
    return;
  }
  uint64_t s = r;
  while (s < contexte.fin && texte_[s] == u' ') ++s;
  Masque(p, s);
  contexte.position = s;
  PoursuisArguments(contexte, {nullptr, 0, s, &d});
}

// One argument of a declared command: a bracket one goes; a brace one is kept and scanned,
// dropped, or kept as it is written and marked as not prose. Returns true when its content was
// pushed for scanning.
bool AnalyseurLaTeX::TraiteArgumentDeclare(ContexteLaTeX& contexte, const DeclarationLaTeX& d,
                                           uint32_t& nbAccolades) {
  const uint64_t s = contexte.position;
  const Fermeture f = FermetureArgument(contexte, s);
  contexte.position = f.fin;
  const char16_t role =
      texte_[s] == u'{' ? d.arguments[nbAccolades++] : static_cast<char16_t>(eArgument::eSupprime);
  if (role != eArgument::eGarde && role != eArgument::eNonProse) {
    Masque(s, f.fin);
    return false;
  }
  // Two arguments shown one after the other are two words, "{k:1}{there}" no one token.
  const bool apresUnAutre =
      nbAccolades >= 2 && d.arguments[nbAccolades - 2] != eArgument::eSupprime;
  if (apresUnAutre)
    Remplace(s, s + 1, kEspace, kAttributsMasque);
  else
    Masque(s, s + 1);
  if (f.fin > f.contenu) Masque(f.contenu, f.fin);
  if (role == eArgument::eNonProse) {
    if (f.contenu > s + 1) Marque(s + 1, f.contenu, eNonTexte);
    return false;
  }
  OuvreContexte(s + 1, f.contenu, SuiteGroupe{});
  return true;
}

// Remembered: the scan asks from positions that mostly grow, and the answer holds for every
// position up to it.
uint64_t AnalyseurLaTeX::FinDeParagrapheProse(uint64_t debut, uint64_t fin) {
  if (debut < paragrapheDepuis_ || paragrapheTrouve_ < debut) {
    paragrapheTrouve_ = FinDeParagraphe(texte_.Vue(), debut, texte_.Longueur());
    paragrapheDepuis_ = debut;
  }
  return std::min(paragrapheTrouve_, fin);
}

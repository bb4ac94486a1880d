// AnalyseurLaTeX: one scan of a LaTeX document, reporting what the corrector must not see
// (commands, braces, formula delimiters), what stands for other characters (symbols, accents,
// escapes, typographic sequences, blanks) and what carries a style. It lives for one conversion.
//
// The scan walks a range character by character and dispatches: a backslash starts a command,
// "{" a group, "$" a formula, "^" and "_" a superscript or subscript, a blank a run of blanks to
// normalise, one of "-`'<>~" a possible typographic sequence. Everything else is an ordinary
// character and is counted.
//
// A kept argument, a group or a formula is scanned as a nested range. Nesting is kept on an
// explicit stack of contexts, never on the call stack, so a million nested braces cost 24 bytes
// each and nothing more; bracket matches and closing strings are found through indexes
// built once (AppariementCrochets, ChercheurDeFermant), so no stretch of text is walked again
// for each level of nesting. Reports come in the order a depth-first walk makes them: a
// formula's inner reports come before the placeholder that covers them.
//
// Every match at a position (a command's letters and star, the spaces after its name, a table
// entry, a delimiter, a control space in a run of blanks) lies wholly inside the current range.
//
// The positions of a command have one letter each, the same in every function:
//   \textbf*  {bold}     p the backslash, q its first letter, r past the name (and star),
//   pq       r s    e    s past the spaces after it, e an argument's closing bracket;
// and for a region, c is where its closing string starts.
//
// The prose profile (OptionsProseLaTeX::Actif) adds, each next to the rule it changes: code
// stretches (VerbatimLaTeX) are stepped over and marked as not prose, and open no bracket;
// definitions vanish and the commands and environments they define (or the user declares)
// treat each argument as declared; an unmatched brace or bracket, and an unclosed formula or
// environment, end with their paragraph instead of running to the end of the range, and no
// formula runs across a paragraph break.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include "ferlane/Convertisseur.h"
#include "ferlane/PileParBlocs.h"
#include "ferlane/ProchaineOccurrence.h"
#include "latex/AppariementCrochets.h"
#include "latex/CommandesLaTeX.h"
#include "latex/ContexteLaTeX.h"
#include "latex/DefinitionsLaTeX.h"
#include "latex/DelimiteursLaTeX.h"
#include "latex/EquivalentsLaTeX.h"
#include "latex/EtatGlossaire.h"
#include "latex/OptionsProseLaTeX.h"
#include "latex/VerbatimLaTeX.h"

class AnalyseurLaTeX {
 public:
  AnalyseurLaTeX(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                 const FonctionMarque& marque, const OptionsProseLaTeX& prose = kSansProse);
  AnalyseurLaTeX(const AnalyseurLaTeX&) = delete;
  AnalyseurLaTeX& operator=(const AnalyseurLaTeX&) = delete;

  // The context of the whole text.
  ContexteLaTeX& Racine() { return pile_.front(); }

  // Characters beyond ASCII, and accent commands turned into characters, counted in the whole
  // text's own scan and in every range whose scan ended: a scan cut short leaves out the ranges
  // it left open.
  uint32_t NbNonAscii() const { return pile_.size() > 1 ? racineAvant_.nbNonAscii : nbNonAscii_; }
  uint32_t NbAccentsCommandes() const {
    return pile_.size() > 1 ? racineAvant_.nbAccentsCommandes : nbAccentsCommandes_;
  }

  // Scans the whole text and every range nested in it.
  void AnalyseIntervalle();

  // The region that `d` describes, if its opening stands at the context's position with no
  // backslash just before it: reports its treatment, moves the position past its closing string
  // and returns true. Otherwise returns false and leaves the position alone. A formula's content
  // is scanned as a nested range when the stack's walk reaches it.
  bool TraiteRegion(ContexteLaTeX& contexte, const DelimiteurLaTeX& d);

 private:
  // What the enclosing context still has to do once a nested range is scanned.
  struct SuiteGroupe {};  // a group, or what follows "^" or "_": nothing
  struct SuiteCommande {  // the command's further arguments
    const CommandeLaTeX* commande;
    uint32_t nbAccolades;  // brace arguments seen so far
    uint64_t apresNom;     // after the command's name and the spaces that follow it
    const DeclarationLaTeX* declaree = nullptr;  // prose: declared, its arguments by their letters
  };
  struct SuiteFormule {  // the formula's placeholder and delimiters
    const DelimiteurLaTeX* region;
    uint64_t ouvrant;
    uint64_t debutContenu;
    uint64_t finFermant;
  };
  using Suite = std::variant<SuiteGroupe, SuiteCommande, SuiteFormule>;
  // A glossary state, made at the first glossary command standing directly in a range and
  // released with it: definitions serve only the references of the same range.
  struct GlossaireDeContexte {
    size_t profondeur;  // the size of the stack when its range was on top
    std::unique_ptr<EtatGlossaire> etat;
  };

  // The next closing string at or after a position that has no backslash just before it, one
  // remembered search a closing string (the scan asks at positions that only grow).
  struct ChercheurDeFermant {
    std::u16string_view fermant;
    ProchaineOccurrence occurrence;
  };

  void TraiteCaractere(ContexteLaTeX& contexte);
  void ParcoursOrdinaires(ContexteLaTeX& contexte);
  void OuvreContexte(uint64_t debut, uint64_t fin, Suite suite);
  void AttendLaFin(Suite suite);
  void TermineContexte();

  void TraiteCommande(ContexteLaTeX& contexte, uint32_t style);
  void TraiteCommandeNonLettre(ContexteLaTeX& contexte);
  void PoursuisArguments(ContexteLaTeX& contexte, SuiteCommande suite);
  void TermineCommande(ContexteLaTeX& contexte, const SuiteCommande& suite);
  bool TraiteArgument(ContexteLaTeX& contexte, const CommandeLaTeX* commande,
                      uint32_t& nbAccolades);
  void TraiteIndice(ContexteLaTeX& contexte, const CommandeLaTeX& signe);
  bool TraiteSymbole(ContexteLaTeX& contexte, uint64_t p, uint64_t q, uint64_t r, uint32_t style);
  bool TraiteEquivalent(ContexteLaTeX& contexte, const EquivalentLaTeX& e);
  void NormaliseBlancs(ContexteLaTeX& contexte);
  void TraiteGlossaire(ContexteLaTeX& contexte, const CommandeLaTeX& commande, uint64_t p,
                       uint64_t s);
  std::optional<uint64_t> TrouveFermant(const ContexteLaTeX& contexte, uint64_t ouvrant);
  // Where an argument's content ends and where the argument ends: at its closing bracket, or,
  // with none, at the range's last character (at its paragraph's end in the prose profile).
  struct Fermeture {
    uint64_t contenu;
    uint64_t fin;
  };
  Fermeture FermetureArgument(const ContexteLaTeX& contexte, uint64_t ouvrant);

  // The prose profile's own treatments.
  bool TraiteVerbatim(ContexteLaTeX& contexte);
  bool TraiteDefinition(ContexteLaTeX& contexte, std::u16string_view nom, uint64_t p, uint64_t r);
  const DeclarationLaTeX* CommandeDeclaree(std::u16string_view nom,
                                           const CommandeLaTeX* commande) const;
  const DeclarationLaTeX* EnvironnementDeclare(const ContexteLaTeX& contexte, uint64_t s);
  void TraiteCommandeDeclaree(ContexteLaTeX& contexte, const DeclarationLaTeX& d, uint64_t p,
                              uint64_t r);
  bool TraiteArgumentDeclare(ContexteLaTeX& contexte, const DeclarationLaTeX& d,
                             uint32_t& nbAccolades);
  uint64_t FinDeParagrapheProse(uint64_t debut, uint64_t fin);
  const AppariementCrochets& Crochets();

  void TraiteFormule(ContexteLaTeX& contexte, const DelimiteurLaTeX& d, uint64_t p, uint64_t c,
                     uint64_t finFermant);
  void TermineFormule(ContexteLaTeX& contexte, const ContexteLaTeX& formule,
                      const SuiteFormule& suite);
  EtatGlossaire& GlossaireDuSommet();
  void AppliqueRegleParagraphe(const ContexteLaTeX& contexte, uint64_t p, uint64_t finFermant);
  void TraiteEnvironnementFormule(ContexteLaTeX& contexte, uint64_t p, uint64_t finOuvrant,
                                  uint64_t c, uint64_t finFermant);
  std::optional<uint64_t> ProchainFermant(std::u16string_view fermant, uint64_t debut);

  bool SautDeParagraphe(const ContexteLaTeX& contexte, uint64_t position) const;
  // Units of the character at `position`: 2 for a surrogate pair wholly before `fin`, else 1.
  uint64_t LongueurCaractere(uint64_t position, uint64_t fin) const;

  void Remplace(uint64_t debut, uint64_t fin, const ChaineN& texte, MapPos::Attributs attributs);
  void Masque(uint64_t debut, uint64_t fin) {
    Remplace(debut, fin, kChaineNNulle, kAttributsMasque);
  }
  void Marque(uint64_t debut, uint64_t fin, uint32_t style);

  const ChaineN& texte_;
  const FonctionRemplace& remplace_;
  const FonctionMarque& marque_;
  // The whole text's context first, then one a nested range being scanned. Contexts keep their
  // address while others are pushed, and growing the stack never copies them.
  PileParBlocs<ContexteLaTeX> pile_;
  PileParBlocs<Suite> suites_;  // one a context that waits for one, in the stack's order
  std::vector<GlossaireDeContexte> glossaires_;  // in the stack's order
  // Counted over the whole run. A range's counts belong to the whole text once its scan ends,
  // so the whole text's are the run's, save those counted in the range still open above it.
  uint32_t nbCaracteres_ = 0;  // ordinary characters, plus one a converted accent command
  uint32_t nbNonAscii_ = 0;    // ordinary characters whose code is 128 or more
  uint32_t nbAccentsCommandes_ = 0;
  struct {
    uint32_t nbNonAscii = 0;
    uint32_t nbAccentsCommandes = 0;
  } racineAvant_;  // the two counts when the range above the whole text opened
  std::optional<AppariementCrochets> crochets_;     // built at the first bracket to match
  std::unique_ptr<IndexGlossaire> indexGlossaire_;  // built at the first glossary command
  std::vector<ChercheurDeFermant> chercheurs_;

  static inline const OptionsProseLaTeX kSansProse{};
  const OptionsProseLaTeX& prose_;
  std::vector<RegionVerbatim> verbatims_;  // prose: the code stretches, in order
  size_t curseurVerbatims_ = 0;            // the first stretch not before the last command met
  DeclarationsLaTeX commandesDeclarees_;   // prose: by the user, then learned from definitions
  DeclarationsLaTeX environnementsDeclares_;
  uint64_t paragrapheDepuis_ = UINT64_MAX;  // prose: the last paragraph end found, and from where
  uint64_t paragrapheTrouve_ = 0;
};

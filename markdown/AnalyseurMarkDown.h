// AnalyseurMarkDown: the analyser of Markdown text, for one conversion. It reports which
// stretches of the document are markup to remove, which stand for other characters (bullets,
// cell separators, entities, note and title marks) and which carry a style.
//
// It is no full parser but a fixed sequence of passes of local, line-oriented tests over a
// working copy of the text: fenced spans, code spans, the leading header block, the blocks
// (each block's text going through the inline analysis), then the escapes and the entities.
// Every stretch reported through SupprimePlage or RemplacePlage is overwritten in the working
// copy with U+0007 right away, so later tests no longer see it: a removed closing delimiter is
// not found again as an opening one, a removed backslash escapes nothing, a replaced pipe is no
// longer a pipe. Style reports leave the copy alone. Reports come pass by pass, each pass from
// the text's start; within a block they are not ordered by position.
//
// Cost: each pass is linear in the text. Repeated scans of one stretch (thousands of "[" or
// "<" on a line, a pipe looked for after every line) go through searchers that remember what
// they found. The block loop is re-entered for a nested list item, on that one line only, so
// it never goes deeper than one level whatever the nesting of the list.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "ferlane/ProchaineOccurrence.h"
#include "markdown/AnalyseurGenerique.h"
#include "markdown/AppariementDeCrochets.h"
#include "markdown/ChercheurDeCaracteres.h"
#include "markdown/OptionsProseMarkDown.h"
#include "markdown/TablesMarkDown.h"

// A stretch of the document a recogniser found: [debut, fin).
struct Etendue {
  uint64_t debut = 0;
  uint64_t fin = 0;
};

class AnalyseurMarkDown : public AnalyseurGenerique {
 public:
  // Over a copy of a constant text, or over a text it may change (AnalyseurGenerique).
  template <class Texte>
  AnalyseurMarkDown(Texte& texte, const FonctionRemplace& remplace, const FonctionMarque& marque,
                    const OptionsProseMarkDown& prose = {});

  void Analyse() override;
  // Both report, then overwrite the stretch in the working copy (whether or not it was
  // reported: an overwrite never changes the copy's length).
  void SupprimePlage(uint64_t debut, uint64_t fin) override;
  void RemplacePlage(uint64_t debut, uint64_t fin, const ChaineN& remplacement) override;

  // The passes around the block analysis.
  void TraiteDelimites(const DelimiteurMarkDown& delimiteur);
  void TraiteSpansDeCode();
  void SauteEnTete();
  void TraiteEchappements();
  void DecodeEntites();

  // Blocks: positions are absolute, lengths count from the given position.
  void AnalyseBlocs(uint64_t debut, uint64_t longueur);
  bool EstDefinitionLien(uint64_t position, uint64_t fin, uint64_t& indentation);
  uint64_t TraiteTitreATX(uint64_t position, uint64_t longueur);
  // Recognisers: where the construct at a position lies, if there is one; they report nothing.
  std::optional<Etendue> LigneHorizontale(uint64_t position, uint64_t longueur) const;
  std::optional<Etendue> SoulignementTitre(uint64_t position, uint64_t longueur) const;
  std::optional<uint64_t> PremiereBarre(uint64_t position, uint64_t longueur);
  // A thematic break's marks removed, a table line's pipes replaced, when the line is one.
  bool SupprimeLigneHorizontale(uint64_t position, uint64_t longueur);
  bool RemplaceBarresTableau(uint64_t position, uint64_t longueur);
  uint64_t MarqueurCitation(uint64_t position, uint64_t longueur) const;
  uint64_t MarqueurCodeIndente(uint64_t position, uint64_t longueur) const;
  uint64_t MarqueurPuce(uint64_t position, uint64_t longueur) const;
  uint64_t MarqueurNumero(uint64_t position, uint64_t longueur) const;
  uint64_t TraiteCitation(uint64_t position, uint64_t longueur);
  uint64_t TraiteElementListe(uint64_t position, uint64_t longueur, uint32_t& drapeaux);
  uint64_t TraiteTableau(uint64_t position, uint64_t longueur);
  uint64_t TraiteLigneTableau(uint64_t position, uint64_t longueur);
  uint64_t TraiteParagraphe(uint64_t position, uint64_t longueur);

  // Inline spans.
  void TraiteEnLigne(uint64_t position, uint64_t longueur, bool remplaceRetours);
  uint64_t TraiteLien(uint64_t position, uint64_t longueur);
  uint64_t TraiteBalises(uint64_t position, uint64_t longueur);
  void RetireAttributs(bool crochetsAussi, uint64_t position, uint64_t longueur);
  void TraiteEmphaseSimple(uint64_t position, uint64_t longueur, char16_t delimiteur,
                           uint32_t styles);
  void TraiteEmphaseDouble(uint64_t position, uint64_t longueur, char16_t delimiteur,
                           uint32_t styles);

 private:
  void EffacePlage(uint64_t debut, uint64_t fin);
  // In the prose profile: the stretch stays in the text, marked as not prose, and no later
  // pass reads it (its markup is code's, not Markdown's).
  void MetAPartNonProse(uint64_t debut, uint64_t fin);
  uint64_t TraiteDefinitionNonProse(uint64_t position, uint64_t fin);

  // The unit at a position, or 0 past the end: tests may look one unit beyond their range.
  char16_t Car(uint64_t position) const {
    return position < texte_.Longueur() ? texte_.Chaine()[position] : u'\0';
  }
  static bool EstBlanc(char16_t c) { return c == u' ' || c == u'\t'; }
  static bool EstFinDeLigne(char16_t c) { return c == u'\r' || c == u'\n'; }
  // The first line end character at or after `position`, or `fin`.
  uint64_t FinDeLigne(uint64_t position, uint64_t fin) {
    return finsDeLigne_.Prochain(position, fin);
  }
  // The start of the line after the one ending at `finLigne` (a line end, or the range's end).
  static uint64_t LigneSuivante(uint64_t finLigne, uint64_t fin) {
    return finLigne < fin ? finLigne + 1 : fin;
  }
  uint64_t SauteBlancs(uint64_t position, uint64_t fin) const;
  // Leading spaces, at most `maximum`, inside [position, fin).
  uint64_t CompteEspaces(uint64_t position, uint64_t fin, uint64_t maximum) const;
  bool EstLigneBlanche(uint64_t position, uint64_t fin) const;
  std::optional<uint64_t> ChercheCar(char16_t unite, uint64_t debut, uint64_t fin) const;

  void TraiteCodeIndente(uint64_t& position, uint64_t fin);
  void TraiteListe(uint64_t& position, uint64_t fin, uint32_t drapeaux);
  bool TraiteAbreviation(uint64_t& position, uint64_t fin);
  void RetireAttributsSoulignement(uint64_t position, uint64_t pas);
  uint64_t TraiteCommentaire(uint64_t position, uint64_t fin);
  bool EstLienAutomatique(uint64_t chevronOuvrant, uint64_t chevronFermant) const;
  bool EstBaliseDeRetour(uint64_t chevronOuvrant, uint64_t chevronFermant) const;
  uint64_t TraiteNoteDeBasDePage(uint64_t debut, uint64_t position, uint64_t crochet, uint64_t fin);
  void RemplaceRetours(char16_t retour, uint64_t debut, uint64_t fin);
  bool SuiteDeDefinition(uint64_t crochet, uint64_t fin);

  // What TraiteLien works out after a "]": kept while nothing is overwritten, since every "["
  // of a run that shares one "]" asks the same question.
  struct SuiteDeLien {
    uint64_t crochet = UINT64_MAX;  // the "]"
    uint64_t fin = 0;
    uint64_t effacements = 0;
    uint64_t destination = 0;  // u: where the destination's bracket would stand
    bool aDestination = false;
    std::optional<uint64_t> fermant;  // c
    uint64_t arret = 0;               // where the scan for c stopped
  };
  const SuiteDeLien& AnalyseSuiteDeLien(uint64_t crochet, uint64_t fin);

  // The prose profile's HTML (HTMLDansMarkDown.cpp).
  void DecodeReferencesHTML();
  uint64_t SupprimeCommentaireProse(uint64_t pos, uint64_t fin);
  void MarqueElementNonProse(uint64_t chevronOuvrant, uint64_t chevronFermant);
  std::optional<uint64_t> Prochain(std::optional<ProchaineOccurrence>& recherche,
                                   std::u16string_view motif, uint64_t debut);
  std::optional<ProchaineOccurrence> fermetureCommentaire_;
  std::optional<ProchaineOccurrence> paragraphes_;
  std::array<std::optional<ProchaineOccurrence>, std::size(kElementsNonProseHTML)> fermeturesHTML_;
  std::array<std::u16string, std::size(kElementsNonProseHTML)> fermantsHTML_;

  const OptionsProseMarkDown prose_;
  uint64_t effacements_ = 0;  // overwrites so far: tells whether a remembered answer still holds
  ChercheurDeCaracteres finsDeLigne_;
  ChercheurDeCaracteres crochetsFermants_;    // "]" or a line end
  ChercheurDeCaracteres accoladesFermantes_;  // "}" or a line end
  ChercheurDeCaracteres barres_;
  AppariementDeCrochets parentheses_{u'(', u')'};
  AppariementDeCrochets crochets_{u'[', u']'};
  SuiteDeLien suiteDeLien_;
  struct SuiteDeDefinitionConnue {
    uint64_t crochet = UINT64_MAX;
    uint64_t fin = 0;
    uint64_t effacements = 0;
    bool resultat = false;
  } suiteDeDefinition_;
};

// LecteurHTML: one conversion of an HTML page to internal text, from the first unit to the last.
// Built at the start of ConvertisseurHTML::ConvertisExterneAInterne and dropped at its end;
// nothing of it survives but the answer of Parcourt.
//
// The walk reads text runs, blanks, character references and script-style comments, and hands
// over at each "<" to the element handling: opening and closing tags, comments, raw content,
// implicit closes and the reports of finished elements. Open elements live on an explicit
// stack, so nesting depth costs no call depth. Every search whose answer may be asked again from
// a nearby position (the next ">", the next "-->") remembers its last answer, and long tag
// names are compared by hash (ComparateurDeNoms), so the walk stays linear on any input.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "ferlane/ChaineN.h"
#include "ferlane/Convertisseur.h"
#include "ferlane/PileParBlocs.h"
#include "ferlane/ProchaineOccurrence.h"
#include "html/ComparateurDeNoms.h"
#include "html/ConvertisseurHTML.h"
#include "html/TablesHTML.h"

class LecteurHTML {
 public:
  using ElementHTML = ConvertisseurHTML::ElementHTML;

  // The callables are referred to, not copied; they must outlive the reader.
  LecteurHTML(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
              const FonctionMarque& marque, const OptionsProseHTML& prose = {});

  // Walks the whole text, reporting as it goes, then unwinds the elements still open. Answers
  // whether non-ASCII characters are to be written back as references: the page decoded more
  // references (other than "&", "<" and ">") than it held raw characters from U+0080 up.
  bool Parcourt();

 private:
  // What ReconnaitFermante makes of a closing tag.
  enum class Reconnaissance {
    eNon,     // not the open element's: handled (or left as text) already
    eOui,     // names the open element
    eParent,  // names its parent: the open element has ended without one, ask again
  };

  // Text outside tags.
  void SauteDoctype();
  void LitTexte();
  void TraiteBlancs();
  void LitEntiteNommee(uint64_t debutReference);
  void LitEntiteNommeeProse(uint64_t debutReference);
  void LitCommentaireNonFerme();
  void LitReferenceNumerique(uint64_t debutReference);
  void SauteCommentaireScript();
  void LitCaractere(char16_t c);

  // Tags and elements.
  void LitBaliseOuvrante(uint64_t debutBalise);
  void LitBaliseFermante(uint64_t debutBalise);
  TablesHTML::ClasseDeBalise LitNomBalise();
  void LitAttributs(bool elementVide);
  void LitCommentaire();
  void SauteContenuBrut();
  Reconnaissance ReconnaitFermante();
  void FermeElementPrecedent();
  // How an element's content was read: as text, skipped raw ("script"), or skipped raw and
  // standing as "[HTML]" ("code" in the reference filters).
  enum class Contenu { eLu, eBrut, eCode };
  void TermineElement(ElementHTML& element, bool& sautReporte, Contenu contenu = Contenu::eLu);
  void RemplaceBaliseOuvrante(const ElementHTML& element);
  void RemplaceBaliseFermante(const ElementHTML& element, bool& sautReporte);
  bool CommenceParNom(const ElementHTML& element);

  // Reports.
  void Remplace(uint64_t debut, uint64_t fin, const ChaineN& texte, MapPos::Attributs attributs);
  void Marque(uint64_t debut, uint64_t fin, uint32_t styles);

  void SauteBlancs();

  const ChaineN& texte_;
  const FonctionRemplace& remplace_;
  const FonctionMarque& marque_;
  const uint64_t longueur_;
  uint64_t position_ = 0;

  // Open elements by value, the innermost at the back: a page of a million unclosed tags grows
  // the stack without copying them. The current element is pile_.back(), or avant_ before any
  // tag; once the current one is taken off, courant_ is not read until the next tag sets it.
  PileParBlocs<ElementHTML> pile_;
  ElementHTML avant_;
  ElementHTML* courant_ = &avant_;

  uint64_t nonASCIIBruts_ = 0;       // raw characters from U+0080 up
  uint64_t referencesDecodees_ = 0;  // references decoded to anything but "&", "<" and ">"
  uint32_t stylesOuverts_ = 0;       // union of the eStyle bits of the open styled elements
  // In the prose profile: what was read since the last word breaks words apart (a block or
  // line-break tag, a placeholder); inline tags and references do not.
  bool coupure_ = false;
  bool apresMot_ = false;   // the last thing read ended with a word character
  bool apresBlanc_ = true;  // what was last reported ends with a blank

  ::ProchaineOccurrence chevrons_;           // ">"
  ::ProchaineOccurrence finsDeCommentaire_;  // "-->"
  ComparateurDeNoms noms_;
  const OptionsProseHTML prose_;
};

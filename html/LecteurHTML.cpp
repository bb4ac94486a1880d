// LecteurHTML: the walk over an HTML page and the handling of its elements.
#include "html/LecteurHTML.h"

#include <algorithm>
#include <array>

#include "ferlane/UniCaractere.h"
#include "html/ReferencesHTML5.h"
#include "html/TablesHTML.h"

namespace {

const ChaineN kMarqueHTML(u"[HTML]");  // stands in for what is not prose
const ChaineN kSautDeLigne(u"\n");
const ChaineN kMarqueItem(u"\u000E");
const ChaineN kTabulation(u"\t");
const ChaineN kEspace(u" ");

constexpr MapPos::Attributs kMasque{0, 0};
constexpr MapPos::Attributs kEquivalent{0, 1};

constexpr uint32_t kCodePointMax = 0x10FFFF;

bool EstElementNonProse(const ChaineN& nom) {
  return std::ranges::find(kElementsNonProseHTML, nom.Vue()) != std::end(kElementsNonProseHTML);
}

// A word character: neither blank nor punctuation nor an intron.
bool EstMotUnicode(char16_t c) {
  return !UniCaractere::EstPonctuationOuBlanc(c) && !UniCaractere::EstIntron(c);
}

// The classes of the ASCII units, taken once from UniCaractere: the walk asks them for every
// unit of the page, and a table read is far cheaper than a call.
enum : uint8_t {
  kBlanc = 1,
  kMot = 2,
  kOrdinaire = 4,  // needs nothing but its classes: not blank, not "<", "&" or "/"
};

const std::array<uint8_t, 128> kClassesASCII = [] {
  std::array<uint8_t, 128> classes{};
  for (char16_t c = 0; c < 128; ++c) {
    const bool blanc = UniCaractere::EstBlanc(c);
    classes[c] = (blanc ? kBlanc : 0) | (EstMotUnicode(c) ? kMot : 0) |
                 (!blanc && c != u'<' && c != u'&' && c != u'/' ? kOrdinaire : 0);
  }
  return classes;
}();

bool EstBlanc(char16_t c) {
  return c < 0x80 ? (kClassesASCII[c] & kBlanc) != 0 : UniCaractere::EstBlanc(c);
}

bool EstMot(char16_t c) {
  return c < 0x80 ? (kClassesASCII[c] & kMot) != 0 : EstMotUnicode(c);
}

bool EstChiffreHex(char16_t c) {
  return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

}  // namespace

uint64_t LecteurHTML::ProchaineOccurrence::Depuis(uint64_t debut) {
  const bool dejaSu =
      connu_ && debut >= depuis_ && (trouve_ == std::u16string_view::npos || trouve_ >= debut);
  if (!dejaSu) {
    trouve_ = debut >= texte_.size() ? std::u16string_view::npos : texte_.find(motif_, debut);
    depuis_ = debut;
    connu_ = true;
  }
  return trouve_;
}

LecteurHTML::LecteurHTML(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                         const FonctionMarque& marque, const OptionsProseHTML& prose)
    : texte_(texte.Chaine()),
      remplace_(remplace),
      marque_(marque),
      longueur_(texte.Longueur()),
      courant_(std::make_shared<ElementHTML>()),
      // Neither marker holds a letter, so an exact search finds what a search ignoring case would.
      chevrons_(texte_.Vue(), u">"),
      finsDeCommentaire_(texte_.Vue(), u"-->"),
      noms_(texte_),
      prose_(prose) {}

bool LecteurHTML::Parcourt() {
  SauteDoctype();
  while (position_ < longueur_) {
    LitTexte();
    // Two words that markup, a reference or a placeholder brings together stay apart.
    if (apresMot_ && position_ < longueur_) {
      const char16_t c = texte_[position_];
      if (EstBlanc(c)) {
        TraiteBlancs();
      } else if (c != u'<' && EstMot(c) && (!prose_.Actif || coupure_)) {
        // In the prose profile, inline markup inside a word ("wo<b>rd</b>", "r&eacute;sum")
        // keeps it whole; only what breaks the line breaks the word.
        Remplace(position_, position_, kEspace, kEquivalent);
        apresBlanc_ = true;
      }
    }
    // apresMot survives only across a run of consecutive tags.
    if (position_ < longueur_ && texte_[position_] != u'<') apresMot_ = false;
  }
  // Elements left open lose their opening tag, innermost first; nothing else is reported.
  while (!pile_.empty()) {
    const std::shared_ptr<ElementHTML> element = pile_.back();
    pile_.pop_back();
    RemplaceBaliseOuvrante(*element);
  }
  return nonASCIIBruts_ < referencesDecodees_;
}

// ---------------------------------------------------------------------------------------------
// Text outside tags

void LecteurHTML::SauteDoctype() {
  SauteBlancs();
  if (!texte_.ContientALaPos(u"<!doctype", position_, kMalgraySansCasse)) return;
  const uint64_t chevron = chevrons_.Depuis(position_);
  position_ = chevron == std::u16string_view::npos ? longueur_ : chevron + 1;
  Remplace(0, position_, kChaineNNulle, kMasque);  // the blanks before it go too
  courant_->debutOuvrante = 0;
  courant_->finOuvrante = position_;
}

// One stretch of text and at most one piece of markup (a tag, a reference, a comment).
void LecteurHTML::LitTexte() {
  const char16_t* const unites = texte_.Texte().data();
  while (position_ < longueur_) {
    const char16_t c = unites[position_];
    if (c < 0x80 && (kClassesASCII[c] & kOrdinaire)) {  // the common case, kept short
      apresBlanc_ = false;
      coupure_ = false;
      apresMot_ = (kClassesASCII[c] & kMot) != 0;
      ++position_;
      continue;
    }
    if (c == u'<') break;
    if (c == u'&') {
      coupure_ = false;  // a reference, or a "&" left as text, sits inside the line
      const uint64_t debut = position_++;
      if (position_ >= longueur_) return;
      const char16_t suivant = texte_[position_];
      if (suivant == u'#') {
        LitReferenceNumerique(debut);
      } else if (UniCaractere::EstAlphaNumerique(suivant)) {
        if (prose_.Actif)
          LitEntiteNommeeProse(debut);
        else
          LitEntiteNommee(debut);
      } else {
        apresMot_ = true;  // the "&" stays as it is
        apresBlanc_ = false;
      }
      return;
    }
    // Outside scripts and styles, which are never read, "/*" opens nothing in the prose profile:
    // "refs/heads/*" and "dir/*" are prose and paths.
    if (c == u'/' && !prose_.Actif && position_ + 1 < longueur_ && texte_[position_ + 1] == u'*') {
      SauteCommentaireScript();
      return;
    }
    LitCaractere(c);
  }
  if (position_ >= longueur_) return;

  const uint64_t debutBalise = position_++;
  SauteBlancs();
  if (position_ >= longueur_) return;  // a "<" at the end stays
  if (texte_[position_] == u'/')
    LitBaliseFermante(debutBalise);
  else
    LitBaliseOuvrante(debutBalise);
}

void LecteurHTML::LitCaractere(char16_t c) {
  if (c >= 0x80) ++nonASCIIBruts_;
  if (EstBlanc(c)) {
    TraiteBlancs();  // so of a run of blanks only the first is counted
    return;
  }
  apresBlanc_ = false;
  coupure_ = false;
  apresMot_ = EstMot(c);
  ++position_;
}

// '/*' to the first '*/'; the search starts at the "/" itself, so '/*/' is a whole comment.
void LecteurHTML::SauteCommentaireScript() {
  const uint64_t debut = position_;
  const uint64_t fin = texte_.Vue().find(u"*/", debut);
  if (fin == std::u16string_view::npos) {
    position_ = longueur_ - 1;  // unread; the last unit is read as text by the next call
    return;
  }
  Remplace(debut, fin + 2, kChaineNNulle, kMasque);
  position_ = fin + 2;
}

void LecteurHTML::TraiteBlancs() {
  const uint64_t debut = position_;
  SauteBlancs();
  if (apresBlanc_) {
    // A blank or a line feed was reported just before: the whole run goes.
    Remplace(debut, position_, kChaineNNulle, kEquivalent);
  } else if (position_ - debut > 1 || texte_[debut] == u'\n') {
    Remplace(debut, position_, kEspace, kEquivalent);
  }  // else a single blank other than a line feed stays as it is
  apresMot_ = false;
  apresBlanc_ = true;
}

// The position is just after the "&". A "&" in prose followed somewhere by a ";" turns
// everything between into one placeholder; with no ";" at all, the rest of the text is left
// unread.
void LecteurHTML::LitEntiteNommee(uint64_t debutReference) {
  const uint64_t debutNom = position_;
  const uint64_t pointVirgule = texte_.Vue().find(u';', debutNom);
  if (pointVirgule == std::u16string_view::npos) {
    position_ = longueur_;
    return;
  }
  position_ = pointVirgule + 1;
  const std::optional<char16_t> caractere =
      TablesHTML::CaractereDEntite(texte_.Vue().substr(debutNom, position_ - debutNom));
  if (!caractere) {
    Remplace(debutReference, position_, kMarqueHTML, kMasque);
    Marque(debutReference, position_, eNonTexte);
    apresMot_ = true;
    apresBlanc_ = false;
    return;
  }
  Remplace(debutReference, position_, ChaineN(*caractere), kEquivalent);
  if (!ConvertisseurHTML::DoitConvertir(*caractere)) ++referencesDecodees_;
  apresMot_ = EstMot(*caractere);
  apresBlanc_ = EstBlanc(*caractere);
}

// In the prose profile, the full table of HTML5 references. A reference is a name of at most
// the longest one's length and a ";": anything else ("&" in "AT&T", an unterminated "&nbsp")
// leaves the "&" as text and reading goes on right after it, so it costs nothing beyond itself.
void LecteurHTML::LitEntiteNommeeProse(uint64_t debutReference) {
  const uint64_t debutNom = position_;
  uint64_t fin = debutNom;
  while (fin < longueur_ && fin - debutNom <= kLongueurMaxReferenceHTML5 &&
         UniCaractere::EstAlphaNumerique(texte_[fin]))
    ++fin;
  const std::optional<std::u16string_view> texte =
      fin < longueur_ && texte_[fin] == u';'
          ? TrouveReferenceHTML5(texte_.Vue().substr(debutNom, fin - debutNom))
          : std::nullopt;
  if (!texte) {
    apresMot_ = true;  // the "&" stays as it is
    apresBlanc_ = false;
    coupure_ = false;
    return;
  }
  position_ = fin + 1;
  Remplace(debutReference, position_, ChaineN(*texte), kEquivalent);
  const char16_t premier = texte->front();
  if (!ConvertisseurHTML::DoitConvertir(premier)) ++referencesDecodees_;
  apresMot_ = EstMot(premier) || (premier >= 0xD800 && premier <= 0xDBFF);
  apresBlanc_ = EstBlanc(premier);
  coupure_ = false;
}

// The position is at the "#". Anything but digits up to the ";" leaves the reference as text.
void LecteurHTML::LitReferenceNumerique(uint64_t debutReference) {
  if (++position_ >= longueur_) return;
  const bool hexadecimal = texte_[position_] == u'x' || texte_[position_] == u'X';
  if (hexadecimal && ++position_ >= longueur_) return;
  const uint64_t debutChiffres = position_;
  while (position_ + 1 < longueur_ && texte_[position_] != u';') {
    const char16_t c = texte_[position_];
    if (hexadecimal ? !EstChiffreHex(c) : !UniCaractere::EstChiffre(c)) {
      apresMot_ = true;  // nothing reported; reading goes on at c
      return;
    }
    ++position_;
  }
  if (texte_[position_] != u';') return;  // the last unit is read as text next

  const ChaineN chiffres = texte_.SousChaine(debutChiffres, position_ - debutChiffres);
  // No digits at all gives 0; a value of 2^32 or more saturates and gives the placeholder.
  const uint64_t lu = hexadecimal ? chiffres.DonneEntierHex() : chiffres.DonneEntier();
  const uint32_t valeur = lu > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(lu);
  ++position_;

  if (valeur > kCodePointMax) {
    Remplace(debutReference, position_, kMarqueHTML, kMasque);
    Marque(debutReference, position_, eNonTexte);
    apresMot_ = true;
    apresBlanc_ = false;
  } else if (valeur > 0xFFFF) {
    Remplace(debutReference, position_, ChaineN::DepuisCodePointUTF16(valeur), kEquivalent);
    ++referencesDecodees_;
    apresMot_ = true;
    apresBlanc_ = false;
  } else {
    const char16_t caractere = static_cast<char16_t>(valeur);
    Remplace(debutReference, position_, ChaineN(caractere), kEquivalent);
    if (!ConvertisseurHTML::DoitConvertir(caractere)) ++referencesDecodees_;
    apresMot_ = EstMot(caractere);
    apresBlanc_ = EstBlanc(caractere);
  }
}

// ---------------------------------------------------------------------------------------------
// Tags and elements

// The position is at the first non-blank unit after the "<", which is not "/".
void LecteurHTML::LitBaliseOuvrante(uint64_t debutBalise) {
  courant_ = std::make_shared<ElementHTML>();
  pile_.push_back(courant_);
  courant_->debutOuvrante = debutBalise;
  if (position_ + 2 < longueur_ && texte_.ContientALaPos(u"!--", position_, kMalgraySansCasse)) {
    LitCommentaire();
    return;
  }
  const TablesHTML::ClasseDeBalise classe = LitNomBalise();

  // Only the parent is closed implicitly, never an element further down.
  if (pile_.size() >= 2) {
    const ChaineN& parent = pile_[pile_.size() - 2]->nom;
    const ChaineN& nom = courant_->nom;
    if (parent.Egal(u"colgroup", kMalgraySansCasse)) {
      if (!nom.Egal(u"col", kMalgraySansCasse)) FermeElementPrecedent();
    } else if (TablesHTML::FermeImplicitement(parent.Vue(), nom.Vue())) {
      FermeElementPrecedent();
    }
  }

  // In the prose profile code is read like any element, its content then marked as not prose.
  const bool codeLu = prose_.Actif && courant_->nom == ChaineN(u"code");
  if (classe.contenuBrut && !codeLu) {
    SauteContenuBrut();  // its attributes are never read, its styles never looked up
    return;
  }
  courant_->styles = classe.styles;
  stylesOuverts_ |= classe.styles;
  // A block, an item, a cell or a void element such as "br" or "img" breaks words; "wbr" only
  // allows a break.
  if (classe.sautOuvrante || classe.marqueItem || classe.marqueCellule ||
      (classe.vide && courant_->nom != ChaineN(u"wbr")))
    coupure_ = true;
  LitAttributs(classe.vide);
}

// "/" does not end a name: "<br/>" is named "br/", which is no void element.
TablesHTML::ClasseDeBalise LecteurHTML::LitNomBalise() {
  const uint64_t debut = position_;
  while (position_ < longueur_ && texte_[position_] != u'>' && !EstBlanc(texte_[position_]))
    ++position_;
  ElementHTML& element = *courant_;
  element.nom = texte_.SousChaine(debut, position_ - debut);
  element.nom.Minusculise();
  const TablesHTML::ClasseDeBalise classe = TablesHTML::ClasseDe(element.nom.Vue());
  element.sautOuvrante = classe.sautOuvrante;
  element.sautFermante = classe.sautFermante;
  element.marqueItem = classe.marqueItem;
  element.marqueCellule = classe.marqueCellule;
  element.empreinteNom = ComparateurDeNoms::Empreinte(element.nom);
  return classe;
}

// Attributes are neither kept nor reported on their own: they go with the tag.
void LecteurHTML::LitAttributs(bool elementVide) {
  while (position_ < longueur_) {
    const uint64_t debut = position_;
    SauteBlancs();
    while (position_ < longueur_) {
      const char16_t c = texte_[position_];
      if (EstBlanc(c) || c == u'/' || c == u'>' || c == u'=') break;
      ++position_;
    }
    if (position_ >= longueur_) break;
    const char16_t c = texte_[position_];
    if (c == u'>' || (c == u'/' && position_ + 1 < longueur_ && texte_[position_ + 1] == u'>'))
      break;
    if (c == u'=') {
      ++position_;
      SauteBlancs();
      if (position_ >= longueur_) break;
      const char16_t guillemet = texte_[position_];
      if (guillemet == u'"' || guillemet == u'\'') {
        const uint64_t fin = texte_.Vue().find(guillemet, position_ + 1);
        position_ = fin == std::u16string_view::npos ? longueur_ : fin + 1;
      } else {
        while (position_ < longueur_ && texte_[position_] != u'>' && !EstBlanc(texte_[position_]))
          ++position_;
      }
    }
    if (position_ == debut) ++position_;
  }

  const uint64_t chevron = chevrons_.Depuis(position_);
  // With no ">" before the end the element stays open with its opening tag unfinished.
  if (chevron == std::u16string_view::npos) return;
  position_ = chevron + 1;
  ElementHTML& element = *courant_;
  element.finOuvrante = position_;
  if (!elementVide) return;
  element.debutFermante = element.finFermante = position_;
  TermineElement(element, apresBlanc_, false, false);
  pile_.pop_back();
}

// The position is at "!--". A comment never closed stays open: the text after it is read as
// ordinary text, and only its '<!--' is deleted at the end of the run.
void LecteurHTML::LitCommentaire() {
  ElementHTML& element = *courant_;
  position_ += 3;
  element.nom = ChaineN(u"!--");
  element.finOuvrante = position_;
  const uint64_t fin = finsDeCommentaire_.Depuis(position_);
  if (fin == std::u16string_view::npos) {
    if (prose_.Actif) LitCommentaireNonFerme();
    return;
  }
  element.debutFermante = fin;
  position_ = element.finFermante = fin + 3;
  Remplace(element.debutOuvrante, element.finFermante, kChaineNNulle, kMasque);
  pile_.pop_back();
}

// In the prose profile, a comment never closed costs its own line only: "<!--" to the line's end
// goes, and reading goes on at the next line.
void LecteurHTML::LitCommentaireNonFerme() {
  const uint64_t finLigne = std::min<uint64_t>(texte_.Vue().find(u'\n', position_), longueur_);
  Remplace(courant_->debutOuvrante, finLigne, kChaineNNulle, kMasque);
  position_ = finLigne;
  pile_.pop_back();
}

// Nothing between the tags is read: no reference, tag or comment, nothing counted. The search
// for "</" starts right after the name, so the rest of the opening tag is searched too.
void LecteurHTML::SauteContenuBrut() {
  courant_ = pile_.back();
  ElementHTML& element = *courant_;
  const uint64_t longueurNom = element.nom.Longueur();
  for (;;) {
    const uint64_t debutFermante = texte_.Vue().find(u"</", position_);
    if (debutFermante == std::u16string_view::npos) {
      // Never closed: its content is not prose either, so its opening tag is taken to run to
      // the end of the text, and the unwinding deletes it all.
      position_ = longueur_;
      element.finOuvrante = longueur_;
      return;
    }
    position_ = debutFermante + 2;
    SauteBlancs();
    if (texte_.ContientALaPos(element.nom.Vue(), position_, kMalgraySansCasse) &&
        position_ + longueurNom < longueur_ && texte_[position_ + longueurNom] == u'>') {
      element.debutFermante = debutFermante;
      position_ += longueurNom + 1;
      element.finFermante = position_;
      TermineElement(element, apresBlanc_, true, element.nom == ChaineN(u"code"));
      apresMot_ = true;
      pile_.pop_back();
      return;
    }
  }
}

// The position is at the "/". A closing tag that names the parent of the open element ends
// that element without a closing tag of its own and is then handled for the parent, which may
// in its turn end its own unclosed child the same way: a loop, not a recursion.
void LecteurHTML::LitBaliseFermante(uint64_t debutBalise) {
  for (;;) {
    if (pile_.empty()) {
      // A closing tag with nothing open goes; with no ">" after it, only its "<" and the blanks
      // after it go, and the rest is read as text.
      const uint64_t chevron = chevrons_.Depuis(position_);
      if (chevron != std::u16string_view::npos) position_ = chevron + 1;
      Remplace(debutBalise, position_, kChaineNNulle, kMasque);
      return;
    }
    courant_ = pile_.back();
    courant_->debutFermante = debutBalise;
    ++position_;
    SauteBlancs();
    switch (ReconnaitFermante()) {
      case Reconnaissance::eParent:
        continue;
      case Reconnaissance::eNon:
        return;
      case Reconnaissance::eOui:
        break;
    }
    position_ += courant_->nom.Longueur();
    SauteBlancs();
    // Not ">": nothing is reported and the rest of the tag is read as text ('</pre>' while a
    // "p" is open is such a case: "p" begins "pre").
    if (position_ >= longueur_ || texte_[position_] != u'>') return;
    ++position_;
    courant_->finFermante = position_;
    TermineElement(*courant_, apresBlanc_, false, false);
    pile_.pop_back();
    return;
  }
}

// The position is at the closing tag's name.
LecteurHTML::Reconnaissance LecteurHTML::ReconnaitFermante() {
  ElementHTML& element = *courant_;
  if (position_ + element.nom.Longueur() >= longueur_) return Reconnaissance::eNon;
  if (CommenceParNom(element)) return Reconnaissance::eOui;

  if (pile_.size() >= 2 && CommenceParNom(*pile_[pile_.size() - 2])) {
    // The element ends with no closing tag: only its opening tag is reported, and its style bits
    // stay among the open ones.
    RemplaceBaliseOuvrante(element);
    pile_.pop_back();
    courant_ = pile_.back();
    --position_;  // LitBaliseFermante moves past the "/" (or a blank) and over blanks again
    return Reconnaissance::eParent;
  }

  // A stray closing tag: it goes (or becomes a line feed); the open element stays open.
  const uint64_t chevron = chevrons_.Depuis(position_);
  if (chevron == std::u16string_view::npos) return Reconnaissance::eNon;  // read as text
  position_ = chevron + 1;
  element.finFermante = position_;
  RemplaceBaliseFermante(element, apresBlanc_);
  element.debutFermante = element.finFermante = 0;
  return Reconnaissance::eNon;
}

bool LecteurHTML::CommenceParNom(const ElementHTML& element) {
  return noms_.CommencePar(position_, element.nom, element.empreinteNom);
}

// The new element N is on top of the stack, the element P it closes just below.
void LecteurHTML::FermeElementPrecedent() {
  const std::shared_ptr<ElementHTML> nouveau = pile_.back();
  pile_.pop_back();
  const std::shared_ptr<ElementHTML> precedent = pile_.back();
  pile_.pop_back();
  pile_.push_back(nouveau);
  precedent->debutFermante = precedent->finFermante = nouveau->debutOuvrante;
  bool brouillon = false;  // a line feed for P's closing does not count as a reported blank
  TermineElement(*precedent, brouillon, false, false);
}

// An element's reports come when it ends: first the span of its content, then its opening tag,
// then its closing tag.
void LecteurHTML::TermineElement(ElementHTML& element, bool& sautReporte, bool elementBrut,
                                 bool elementCode) {
  if (elementCode) {
    Remplace(element.debutOuvrante, element.finFermante, kMarqueHTML, kMasque);
    Marque(element.debutOuvrante, element.finFermante, eNonTexte);
    sautReporte = false;
    coupure_ = true;
    return;
  }
  if (prose_.Actif && EstElementNonProse(element.nom) &&
      element.finOuvrante < element.debutFermante)
    Marque(element.finOuvrante, element.debutFermante, eNonTexte);
  if (element.sautFermante) coupure_ = true;
  if (elementBrut) {
    Remplace(element.debutOuvrante, element.finFermante, kChaineNNulle, kMasque);
    return;
  }
  // The content carries the styles of every element open around it, its own included. The bits
  // are a set, not counts: when one of two nested elements of the same style ends, the style is
  // withdrawn for the rest of the outer one.
  if (stylesOuverts_ != 0) Marque(element.finOuvrante, element.debutFermante, stylesOuverts_);
  stylesOuverts_ &= ~element.styles;
  RemplaceBaliseOuvrante(element);
  RemplaceBaliseFermante(element, sautReporte);
}

void LecteurHTML::RemplaceBaliseOuvrante(const ElementHTML& element) {
  // An opening tag with no ">" before the end is never reported: the text after its "<" stays
  // for the corrector rather than vanish to the end of the page.
  if (element.finOuvrante == 0) return;
  const ChaineN& texte = element.sautOuvrante    ? kSautDeLigne
                         : element.marqueItem    ? kMarqueItem
                         : element.marqueCellule ? kTabulation
                                                 : kChaineNNulle;
  Remplace(element.debutOuvrante, element.finOuvrante, texte, kMasque);
}

void LecteurHTML::RemplaceBaliseFermante(const ElementHTML& element, bool& sautReporte) {
  if (element.sautFermante) {
    Remplace(element.debutFermante, element.finFermante, kSautDeLigne, kMasque);
    sautReporte = true;
  } else {
    Remplace(element.debutFermante, element.finFermante, kChaineNNulle, kMasque);
  }
}

// ---------------------------------------------------------------------------------------------
// Reports and small helpers

void LecteurHTML::Remplace(uint64_t debut, uint64_t fin, const ChaineN& texte,
                           MapPos::Attributs attributs) {
  remplace_({static_cast<uint32_t>(debut), static_cast<uint32_t>(fin)}, texte, attributs);
}

void LecteurHTML::Marque(uint64_t debut, uint64_t fin, uint32_t styles) {
  marque_({static_cast<uint32_t>(debut), static_cast<uint32_t>(fin)}, styles);
}

void LecteurHTML::SauteBlancs() {
  while (position_ < longueur_ && EstBlanc(texte_[position_])) ++position_;
}

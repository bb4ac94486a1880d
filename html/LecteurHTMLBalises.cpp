// LecteurHTML, tags and elements: opening and closing tags, attributes, comments, raw content,
// and what an element reports when it ends.
#include <algorithm>

#include "ferlane/ProchaineOccurrence.h"
#include "html/LecteurHTML.h"
#include "html/TablesHTML.h"
#include "html/VocabulaireHTML.h"

using namespace vocabulaire_html;

namespace {

bool EstElementNonProse(const ChaineN& nom) {
  return std::ranges::find(kElementsNonProseHTML, nom.Vue()) != std::end(kElementsNonProseHTML);
}

}  // namespace

// ---------------------------------------------------------------------------------------------
// Tags and elements

// The position is at the first non-blank unit after the "<", which is not "/".
void LecteurHTML::LitBaliseOuvrante(uint64_t debutBalise) {
  courant_ = &pile_.emplace_back();
  courant_->debutOuvrante = debutBalise;
  if (position_ + 2 < longueur_ && texte_.ContientALaPos(u"!--", position_, kMalgraySansCasse)) {
    LitCommentaire();
    return;
  }
  const TablesHTML::ClasseDeBalise classe = LitNomBalise();

  // Only the parent is closed implicitly, never an element further down.
  if (pile_.size() >= 2) {
    const ElementHTML& parentOuvert = pile_[pile_.size() - 2];
    const ChaineN& parent = parentOuvert.nom;
    const ChaineN& nom = courant_->nom;
    const auto sauf = std::ranges::find_if(TablesHTML::kFermeturesSauf, [&](const auto& f) {
      return parent.Egal(f.ouvert, kMalgraySansCasse);
    });
    if (sauf != std::end(TablesHTML::kFermeturesSauf)) {
      if (!nom.Egal(sauf->saufPour, kMalgraySansCasse)) FermeElementPrecedent();
    } else if (TablesHTML::FermeImplicitement(parentOuvert.fermetures, nom.Vue())) {
      FermeElementPrecedent();
    }
  }

  // In the prose profile code is read like any element, its content then marked as not prose.
  const bool codeLu = prose_.Actif && classe.marqueHTML;
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
  element.fermetures = classe.fermetures;
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
        const uint64_t fin = TrouveUnite(texte_.Vue(), position_ + 1, guillemet);
        position_ = fin == std::u16string_view::npos ? longueur_ : fin + 1;
      } else {
        while (position_ < longueur_ && texte_[position_] != u'>' && !EstBlanc(texte_[position_]))
          ++position_;
      }
    }
    if (position_ == debut) ++position_;
  }

  const uint64_t chevron = chevrons_.PositionApres(position_);
  // With no ">" before the end the element stays open with its opening tag unfinished.
  if (chevron == std::u16string_view::npos) return;
  position_ = chevron + 1;
  ElementHTML& element = *courant_;
  element.finOuvrante = position_;
  if (!elementVide) return;
  element.debutFermante = element.finFermante = position_;
  TermineElement(element, apresBlanc_);
  pile_.pop_back();
}

// The position is at "!--". A comment never closed stays open: the text after it is read as
// ordinary text, and only its '<!--' is deleted at the end of the run.
void LecteurHTML::LitCommentaire() {
  ElementHTML& element = *courant_;
  position_ += 3;
  element.nom = ChaineN(u"!--");
  element.finOuvrante = position_;
  const uint64_t fin = finsDeCommentaire_.PositionApres(position_);
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
  courant_ = &pile_.back();
  ElementHTML& element = *courant_;
  const uint64_t longueurNom = element.nom.Longueur();
  for (;;) {
    const uint64_t debutFermante = TrouveMotif(texte_.Vue(), position_, u"</");
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
      TermineElement(
          element, apresBlanc_,
          TablesHTML::ClasseDe(element.nom.Vue()).marqueHTML ? Contenu::eCode : Contenu::eBrut);
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
      const uint64_t chevron = chevrons_.PositionApres(position_);
      if (chevron != std::u16string_view::npos) position_ = chevron + 1;
      Remplace(debutBalise, position_, kChaineNNulle, kMasque);
      return;
    }
    courant_ = &pile_.back();
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
    TermineElement(*courant_, apresBlanc_);
    pile_.pop_back();
    return;
  }
}

// The position is at the closing tag's name.
LecteurHTML::Reconnaissance LecteurHTML::ReconnaitFermante() {
  ElementHTML& element = *courant_;
  if (position_ + element.nom.Longueur() >= longueur_) return Reconnaissance::eNon;
  if (CommenceParNom(element)) return Reconnaissance::eOui;

  if (pile_.size() >= 2 && CommenceParNom(pile_[pile_.size() - 2])) {
    // The element ends with no closing tag: only its opening tag is reported, and its style bits
    // stay among the open ones.
    RemplaceBaliseOuvrante(element);
    pile_.pop_back();
    courant_ = &pile_.back();
    --position_;  // LitBaliseFermante moves past the "/" (or a blank) and over blanks again
    return Reconnaissance::eParent;
  }

  // A stray closing tag: it goes (or becomes a line feed); the open element stays open.
  const uint64_t chevron = chevrons_.PositionApres(position_);
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
  ElementHTML precedent = std::move(pile_[pile_.size() - 2]);
  pile_[pile_.size() - 2] = std::move(pile_.back());
  pile_.pop_back();
  courant_ = &pile_.back();
  precedent.debutFermante = precedent.finFermante = courant_->debutOuvrante;
  bool brouillon = false;  // a line feed for P's closing does not count as a reported blank
  TermineElement(precedent, brouillon);
}

// An element's reports come when it ends: first the span of its content, then its opening tag,
// then its closing tag.
void LecteurHTML::TermineElement(ElementHTML& element, bool& sautReporte, Contenu contenu) {
  if (contenu == Contenu::eCode) {
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
  if (contenu == Contenu::eBrut) {
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

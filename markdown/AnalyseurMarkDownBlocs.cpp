// AnalyseurMarkDown, the blocks: a walk over a range of the working copy, line by line, that
// recognises the construct starting at each line start (link definition, heading, abbreviation,
// blank line, tag, thematic break, quote, indented code, list, table, setext underline,
// paragraph), reports its markers and hands the block's text to the inline analysis.
//
// A line end is a carriage return or a line feed; a CR LF pair therefore leaves a line made of
// the line feed alone, which the walk sees as blank. A blank is a space or a tab. Every scan
// stops at the end of its range. Several tests report when they answer yes (thematic break,
// setext underline, table pipes), also when they are only asked where a block ends.
#include <algorithm>

#include "ferlane/UniCaractere.h"
#include "markdown/AnalyseurMarkDown.h"

void AnalyseurMarkDown::AnalyseBlocs(uint64_t debut, uint64_t longueur) {
  const uint64_t fin = debut + longueur;
  // The table test is only made when a pipe stands somewhere in the range.
  const uint64_t borneBarre = std::min(fin + 1, texte_.Longueur());
  const bool barre = barres_.Prochain(debut, borneBarre) < borneBarre;
  uint64_t pos = debut, precedent = debut, pas = 0;
  while (pos < fin) {
    const uint64_t reste = fin - pos;
    uint64_t indentation = 0;
    if (EstDefinitionLien(pos, fin, indentation)) {
      if (prose_.Actif)
        pos = TraiteDefinitionNonProse(pos, fin);
      else
        pos += TraiteLien(pos + indentation, fin - pos - indentation);
    } else if (Car(pos) == u'#') {
      pos += TraiteTitreATX(pos, reste);
    } else if (TraiteAbreviation(pos, fin)) {
      // pos is now at the definition's line end
    } else if (const uint64_t premier = SauteBlancs(pos, fin);
               premier >= fin || EstFinDeLigne(Car(premier))) {
      pos = premier + 1;  // a blank line
    } else {
      // The tests look at the line from its start, indentation included.
      uint64_t consomme = 0;
      if (Car(pos) == u'<' && (consomme = TraiteBalises(pos, reste)) > 0) {
        pos += consomme;
      } else if (SupprimeLigneHorizontale(pos, reste)) {
        pos = LigneSuivante(FinDeLigne(pos, fin), fin);
      } else if (MarqueurCitation(pos, reste) > 0) {
        pos += TraiteCitation(pos, reste);
      } else if (MarqueurCodeIndente(pos, reste) > 0) {
        TraiteCodeIndente(pos, fin);
      } else if (MarqueurPuce(pos, reste) > 0) {
        TraiteListe(pos, fin, 0);
      } else if (MarqueurNumero(pos, reste) > 0) {
        TraiteListe(pos, fin, eListeNumerotee);
      } else if (barre && RemplaceBarresTableau(pos, reste)) {
        pos += TraiteTableau(pos, reste);
      } else if (const std::optional<Etendue> soulignement = SoulignementTitre(pos, reste)) {
        SupprimePlage(soulignement->debut, soulignement->fin);
        if (pas > 0) RetireAttributsSoulignement(pos, pas);
        pos = soulignement->fin;
      } else {
        pos += TraiteParagraphe(pos, reste);
      }
    }
    // A case that consumed nothing moves the walk on by one unit, which the next turn takes
    // for a line start.
    if (pos <= precedent) pos = precedent + 1;
    pas = pos - precedent;
    precedent = pos;
  }
}

bool AnalyseurMarkDown::TraiteAbreviation(uint64_t& pos, uint64_t fin) {
  const uint64_t reste = fin - pos;
  if (reste < 4) return false;
  uint64_t n = 0;
  for (uint64_t k = 0; k < kIndentationMaxBloc; ++k) n += Car(pos + k) == u' ';
  if (Car(pos + 3) == u' ' || n + 2 >= reste || Car(pos + n) != u'*' || Car(pos + n + 1) != u'[')
    return false;
  const uint64_t crochet = crochetsFermants_.Prochain(pos + n, fin);
  if (crochet + 1 >= fin || Car(crochet) != u']' || Car(crochet + 1) != u':') return false;
  // The definition's text stays as it is, with no inline analysis.
  SupprimePlage(pos + n, crochet + 2);
  pos = FinDeLigne(crochet + 2, fin);
  return true;
}

void AnalyseurMarkDown::RetireAttributsSoulignement(uint64_t pos, uint64_t pas) {
  // The heading line is the last line of what the previous turn consumed.
  uint64_t debutTitre = pos - pas;
  while (pos >= 2) {
    const std::optional<uint64_t> saut = ChercheCar(u'\n', debutTitre, pos - 1);
    if (!saut) break;
    debutTitre = *saut + 1;
  }
  RetireAttributs(false, debutTitre, pos - debutTitre);
}

void AnalyseurMarkDown::TraiteCodeIndente(uint64_t& pos, uint64_t fin) {
  uint64_t ligne = pos;
  while (ligne < fin &&
         (MarqueurCodeIndente(ligne, fin - ligne) > 0 || EstLigneBlanche(ligne, fin)))
    ligne = LigneSuivante(FinDeLigne(ligne, fin), fin);
  SupprimePlage(pos, ligne);  // trailing blank lines included
  pos = ligne;
}

void AnalyseurMarkDown::TraiteListe(uint64_t& pos, uint64_t fin, uint32_t drapeaux) {
  uint64_t consomme = 0;
  do {
    consomme = TraiteElementListe(pos, fin - pos, drapeaux);
    pos += consomme;
  } while (consomme != 0 && !(drapeaux & eListeTerminee) && pos < fin);
}

bool AnalyseurMarkDown::EstDefinitionLien(uint64_t pos, uint64_t fin, uint64_t& indentation) {
  if (pos + 3 >= fin) return false;
  const uint64_t n = CompteEspaces(pos, fin, kIndentationMaxBloc);
  if (Car(pos + n) != u'[') return false;
  const uint64_t crochet = crochetsFermants_.Prochain(pos + n + 1, fin);
  if (crochet + 1 >= fin || Car(crochet) != u']' || Car(crochet + 1) != u':') return false;
  if (!SuiteDeDefinition(crochet, fin)) return false;
  indentation = n;
  return true;
}

// A link reference definition is no prose: label, destination and title stay in the text,
// marked as not prose, up to the end of the line that holds the destination (and the title
// after it). Answers where the block walk goes on.
uint64_t AnalyseurMarkDown::TraiteDefinitionNonProse(uint64_t pos, uint64_t fin) {
  const uint64_t crochet = crochetsFermants_.Prochain(pos, fin);
  uint64_t destination = SauteBlancs(crochet + 2, fin);
  if (destination < fin && EstFinDeLigne(Car(destination))) {
    destination = LigneSuivante(FinDeLigne(destination, fin), fin);
    if (destination < fin && Car(destination) == u'\n') ++destination;  // after a CR LF
  }
  const uint64_t finLigne = FinDeLigne(destination, fin);
  MetAPartNonProse(pos + CompteEspaces(pos, fin, kIndentationMaxBloc), finLigne);
  return LigneSuivante(finLigne, fin);
}

bool AnalyseurMarkDown::SuiteDeDefinition(uint64_t crochet, uint64_t fin) {
  // Every "[" of a run like "[[[[x]: y" asks about the same "]:": the answer is kept until
  // something is overwritten.
  SuiteDeDefinitionConnue& connue = suiteDeDefinition_;
  if (connue.crochet == crochet && connue.fin == fin && connue.effacements == effacements_)
    return connue.resultat;
  connue = {crochet, fin, effacements_, false};

  // Blanks and at most one line break (two line ends in a row count as one), blanks again.
  uint64_t p = SauteBlancs(crochet + 2, fin);
  if (p < fin && EstFinDeLigne(Car(p))) {
    ++p;
    if (p < fin && EstFinDeLigne(Car(p))) ++p;
    p = SauteBlancs(p, fin);
  }
  if (p >= fin || EstFinDeLigne(Car(p))) return false;  // no destination
  if (Car(p) == u'<') ++p;
  while (p < fin && !EstBlanc(Car(p)) && !EstFinDeLigne(Car(p))) ++p;
  p = SauteBlancs(p, fin);
  if (p >= fin || EstFinDeLigne(Car(p))) return connue.resultat = true;
  // Else a title: it opens with a quote or a parenthesis, and its line ends with one.
  const char16_t ouvre = Car(p);
  if (ouvre != u'"' && ouvre != u'\'' && ouvre != u'(') return false;
  uint64_t dernier = FinDeLigne(p, fin);
  while (dernier > p && EstBlanc(Car(dernier - 1))) --dernier;
  const char16_t ferme = Car(dernier - 1);
  return connue.resultat = ferme == u'"' || ferme == u'\'' || ferme == u')';
}

uint64_t AnalyseurMarkDown::TraiteTitreATX(uint64_t pos, uint64_t longueur) {
  const uint64_t fin = pos + longueur;
  uint64_t diese = 0;
  while (diese < kNiveauxDeTitre && pos + diese < fin && Car(pos + diese) == u'#') ++diese;
  const uint64_t debutTexte = SauteBlancs(pos + diese, fin);
  const uint64_t finLigne = FinDeLigne(pos, fin);
  // A closing run of "#" is left out of the text, then the blanks before it; it goes in the
  // escape pass.
  uint64_t finTexte = finLigne;
  while (finTexte > debutTexte && Car(finTexte - 1) == u'#') --finTexte;
  while (finTexte > debutTexte && EstBlanc(Car(finTexte - 1))) --finTexte;
  if (finTexte <= debutTexte) return TraiteParagraphe(pos, longueur);  // "#" alone, or "# #"
  RetireAttributs(true, debutTexte, finTexte - debutTexte);
  TraiteEnLigne(debutTexte, finTexte - debutTexte, false);
  SupprimePlage(pos, pos + diese);
  return finLigne - pos;
}

std::optional<Etendue> AnalyseurMarkDown::LigneHorizontale(uint64_t pos, uint64_t longueur) const {
  const uint64_t fin = pos + longueur;
  if (longueur < kMarquesLigneHorizontale) return std::nullopt;
  const uint64_t debut = pos + CompteEspaces(pos, fin, kIndentationMaxBloc);
  const char16_t c = Car(debut);
  if (debut >= fin || (c != u'*' && c != u'-' && c != u'_') ||
      fin - debut < kMarquesLigneHorizontale)
    return std::nullopt;
  uint64_t nombre = 0, p = debut;
  for (; p < fin && !EstFinDeLigne(Car(p)); ++p) {
    if (Car(p) == c)
      ++nombre;
    else if (!EstBlanc(Car(p)))
      return std::nullopt;
  }
  if (nombre < kMarquesLigneHorizontale) return std::nullopt;
  return Etendue{debut, p};
}

bool AnalyseurMarkDown::SupprimeLigneHorizontale(uint64_t pos, uint64_t longueur) {
  const std::optional<Etendue> ligne = LigneHorizontale(pos, longueur);
  if (ligne) SupprimePlage(ligne->debut, ligne->fin);
  return ligne.has_value();
}

uint64_t AnalyseurMarkDown::MarqueurCitation(uint64_t pos, uint64_t longueur) const {
  const uint64_t fin = pos + longueur;
  const uint64_t chevron = pos + CompteEspaces(pos, fin, kIndentationMaxBloc);
  if (chevron >= fin || Car(chevron) != u'>') return 0;
  const uint64_t apres = chevron + 1;
  return apres - pos + (apres < fin && EstBlanc(Car(apres)) ? 1 : 0);
}

uint64_t AnalyseurMarkDown::MarqueurCodeIndente(uint64_t pos, uint64_t longueur) const {
  if (longueur >= 1 && Car(pos) == u'\t') return 1;
  if (longueur >= kIndentationCode &&
      CompteEspaces(pos, pos + longueur, kIndentationCode) == kIndentationCode)
    return kIndentationCode;
  return 0;
}

uint64_t AnalyseurMarkDown::MarqueurPuce(uint64_t pos, uint64_t longueur) const {
  const uint64_t fin = pos + longueur;
  const uint64_t puce = pos + CompteEspaces(pos, fin, kIndentationMaxBloc);
  const char16_t c = Car(puce);
  if (puce + 1 >= fin || (c != u'*' && c != u'+' && c != u'-') || !EstBlanc(Car(puce + 1)))
    return 0;
  return SauteBlancs(puce + 2, fin) - pos;
}

uint64_t AnalyseurMarkDown::MarqueurNumero(uint64_t pos, uint64_t longueur) const {
  const uint64_t fin = pos + longueur;
  const uint64_t chiffres = pos + CompteEspaces(pos, fin, kIndentationMaxBloc);
  uint64_t point = chiffres;
  while (point < fin && UniCaractere::EstChiffre(Car(point))) ++point;
  // ")" is no list delimiter.
  if (point == chiffres || point + 1 >= fin || Car(point) != u'.' || !EstBlanc(Car(point + 1)))
    return 0;
  return SauteBlancs(point + 2, fin) - pos;
}

uint64_t AnalyseurMarkDown::TraiteCitation(uint64_t pos, uint64_t longueur) {
  const uint64_t fin = pos + longueur;
  uint64_t ligne = pos;
  while (ligne < fin) {
    const uint64_t suivante = LigneSuivante(FinDeLigne(ligne, fin), fin);
    if (MarqueurCitation(ligne, fin - ligne) > 0) {
      const uint64_t chevrons = ligne + CompteEspaces(ligne, fin, kIndentationMaxBloc);
      uint64_t texteLigne = chevrons;
      while (texteLigne < fin && Car(texteLigne) == u'>') ++texteLigne;  // nested quotes
      SupprimePlage(chevrons, texteLigne);  // the blank after the run stays
      TraiteEnLigne(texteLigne, suivante - texteLigne, false);
      ligne = suivante;
    } else if (!EstLigneBlanche(ligne, fin)) {
      ligne = suivante;  // a lazy line belongs to the quote as it is
    } else if (suivante >= fin) {
      break;
    } else if (MarqueurCitation(suivante, fin - suivante) > 0 || EstLigneBlanche(suivante, fin)) {
      ligne = suivante;
    } else {
      ligne = suivante;  // the quote ends after the blank line
      break;
    }
  }
  return std::min(ligne, fin) - pos;
}

uint64_t AnalyseurMarkDown::TraiteElementListe(uint64_t pos, uint64_t longueur,
                                               uint32_t& drapeaux) {
  const uint64_t fin = pos + longueur;
  const uint64_t indentation = CompteEspaces(pos, fin, kIndentationMaxBloc);
  uint64_t marqueur = MarqueurPuce(pos, longueur);
  if (marqueur == 0) marqueur = MarqueurNumero(pos, longueur);
  if (marqueur == 0) return 0;
  const uint64_t contenu = pos + marqueur;
  uint64_t ligne = LigneSuivante(FinDeLigne(contenu, fin), fin);
  uint64_t finTexte = ligne;  // the item's inline text ends with its last continuation line
  bool apresBlanche = false;
  while (ligne < fin) {
    const uint64_t finLigne = FinDeLigne(ligne, fin);
    const uint64_t suivante = LigneSuivante(finLigne, fin);
    if (EstLigneBlanche(ligne, fin)) {
      apresBlanche = true;
      ligne = suivante;
      continue;
    }
    // The indentation is the leading spaces (at most four) or one leading tab, eight wide; a
    // tab after spaces is no part of it.
    const uint64_t espaces = CompteEspaces(ligne, fin, kIndentationCode);
    const bool tabulation = espaces == 0 && Car(ligne) == u'\t';
    const uint64_t largeur = tabulation ? kLargeurTabulation : espaces;
    const uint64_t x = ligne + (tabulation ? 1 : espaces);
    const bool element = MarqueurNumero(x, fin - x) > 0 ||
                         (MarqueurPuce(x, fin - x) > 0 && !SupprimeLigneHorizontale(x, fin - x));
    if (!element) {
      if (apresBlanche && espaces < kIndentationCode && !tabulation) {
        drapeaux |= eListeTerminee;
        break;
      }
      finTexte = suivante;  // a lazy or indented continuation
    } else if (largeur == indentation) {
      break;  // the next item
    } else {
      // A nested item: the block loop runs again on this one line, its end character left
      // out (the line is all it is given), so it never nests deeper.
      AnalyseBlocs(x, finLigne - x);
    }
    apresBlanche = false;
    ligne = suivante;
  }
  // The item's first unit becomes the bullet; nested items have reported already.
  RemplacePlage(pos, pos + 1, kMarquePuce);
  if ((drapeaux & eListeNumerotee) && pos + 1 < contenu) {
    uint64_t point = pos + 1;
    while (point < contenu && UniCaractere::EstChiffre(Car(point))) ++point;
    if (point > pos + 1) SupprimePlage(pos + 1, point);
    if (point < contenu && Car(point) == u'.') SupprimePlage(point, point + 1);
  }
  if (finTexte > contenu) TraiteEnLigne(contenu, finTexte - contenu, true);
  return ligne - pos;
}

std::optional<uint64_t> AnalyseurMarkDown::PremiereBarre(uint64_t pos, uint64_t longueur) {
  const uint64_t finLigne = FinDeLigne(pos, pos + longueur);
  for (uint64_t depuis = SauteBlancs(pos, finLigne); depuis < finLigne;) {
    const std::optional<uint64_t> barre = ChercheCar(u'|', depuis, finLigne);
    if (!barre) break;
    if (!EstEchappe(*barre)) return barre;
    depuis = *barre + 1;
  }
  return std::nullopt;
}

bool AnalyseurMarkDown::RemplaceBarresTableau(uint64_t pos, uint64_t longueur) {
  std::optional<uint64_t> barre = PremiereBarre(pos, longueur);
  if (!barre) return false;
  const uint64_t finLigne = FinDeLigne(pos, pos + longueur);
  for (; barre; barre = PremiereBarre(*barre + 1, finLigne - *barre - 1))
    RemplacePlage(*barre, *barre + 1, kMarqueSeparation);
  return true;
}

uint64_t AnalyseurMarkDown::TraiteTableau(uint64_t pos, uint64_t longueur) {
  const uint64_t fin = pos + longueur;
  const uint64_t finEnTete = FinDeLigne(pos, fin);
  if (finEnTete >= fin) {
    TraiteLigneTableau(pos, longueur);
    return longueur;
  }
  // The delimiter row; after a CR LF header line it starts after the LF.
  uint64_t p = finEnTete + 1;
  if (Car(finEnTete) == u'\r' && p < fin && Car(p) == u'\n') ++p;
  for (; p < fin; ++p) {
    const char16_t c = Car(p);
    if (c == u'-' || c == u':')
      SupprimePlage(p, p + 1);  // its pipes go in the escape pass
    else if (!EstBlanc(c) && c != u'|')
      break;
  }
  uint64_t ligne = pos;
  if (p < fin && EstFinDeLigne(Car(p))) {
    TraiteLigneTableau(pos, longueur);
    ligne = p + 1;
  }
  // Without a valid delimiter row the header's pipes are already replaced, so this normally
  // takes no row and the table consumes nothing.
  while (ligne < fin && RemplaceBarresTableau(ligne, fin - ligne))
    ligne += TraiteLigneTableau(ligne, fin - ligne);
  return ligne - pos;
}

uint64_t AnalyseurMarkDown::TraiteLigneTableau(uint64_t pos, uint64_t longueur) {
  const uint64_t fin = pos + longueur;
  uint64_t p = SauteBlancs(pos, fin);
  if (p >= fin) return longueur;
  if (Car(p) == u'|') ++p;
  while (true) {
    if (p < fin && Car(p) == u':') ++p;
    const uint64_t debutCellule = SauteBlancs(p, fin);
    uint64_t q = debutCellule;
    bool barre = false;
    for (; q < fin && !EstFinDeLigne(Car(q)); ++q) {
      if (Car(q) == u'|' && !EstEchappe(q)) {
        RemplacePlage(q, q + 1, kMarqueSeparation);
        barre = true;
        break;
      }
    }
    uint64_t finCellule = q;
    if (finCellule > debutCellule && Car(finCellule - 1) == u':') --finCellule;
    while (finCellule > debutCellule && EstBlanc(Car(finCellule - 1))) --finCellule;
    if (barre || finCellule > debutCellule)
      TraiteEnLigne(debutCellule, finCellule - debutCellule, true);
    if (!barre) return q >= fin ? longueur : q + 1 - pos;
    p = q + 1;
  }
}

std::optional<Etendue> AnalyseurMarkDown::SoulignementTitre(uint64_t pos, uint64_t longueur) const {
  const uint64_t fin = pos + longueur;
  const char16_t c = Car(pos);
  if (longueur == 0 || (c != u'=' && c != u'-')) return std::nullopt;
  uint64_t p = pos;
  while (p < fin && Car(p) == c) ++p;
  p = SauteBlancs(p, fin);
  if (p < fin && !EstFinDeLigne(Car(p))) return std::nullopt;
  return Etendue{pos, p};
}

uint64_t AnalyseurMarkDown::TraiteParagraphe(uint64_t pos, uint64_t longueur) {
  const uint64_t fin = pos + longueur;
  const uint64_t borneBarre = std::min(fin + 1, texte_.Longueur());
  uint64_t ligne = pos, finParagraphe = fin;
  for (bool premiere = true;; premiere = false) {
    if (ligne < fin && Car(ligne) == u'!')
      SupprimePlage(ligne, ligne + (ligne + 1 < fin && Car(ligne + 1) == u'!' ? 2 : 1));
    const uint64_t suivante = LigneSuivante(FinDeLigne(ligne, fin), fin);
    if (suivante >= fin) break;
    uint64_t indentation = 0;
    if (EstLigneBlanche(suivante, fin)) {
      finParagraphe = suivante;
      break;
    }
    // An underline ends the paragraph before it; it is removed here, so the block loop that
    // reads its line again finds it gone.
    if (const std::optional<Etendue> soulignement = SoulignementTitre(suivante, fin - suivante)) {
      SupprimePlage(soulignement->debut, soulignement->fin);
      finParagraphe = suivante;
      break;
    }
    // Before a "#" line (not after the paragraph's first line) or a thematic break (removed
    // here), the paragraph stops at the start of its current line, which the block loop reads
    // again.
    if ((!premiere && Car(suivante) == u'#') ||
        SupprimeLigneHorizontale(suivante, fin - suivante)) {
      finParagraphe = ligne;
      break;
    }
    if (EstDefinitionLien(suivante, fin, indentation) || Car(suivante) == u'>' ||
        Car(suivante) == u'<' || MarqueurPuce(suivante, fin - suivante) > 0 ||
        MarqueurNumero(suivante, fin - suivante) > 0 ||
        (barres_.Prochain(suivante, borneBarre) < borneBarre &&
         RemplaceBarresTableau(suivante, fin - suivante))) {
      finParagraphe = suivante;
      break;
    }
    ligne = suivante;
  }
  TraiteEnLigne(pos, finParagraphe - pos, true);
  return finParagraphe - pos;
}

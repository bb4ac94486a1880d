// AnalyseurMarkDown: the run as a whole, the working copy, and the passes around the blocks
// (delimited spans, the leading header block, escapes, entities). The blocks are in
// AnalyseurMarkDownBlocs.cpp, the inline spans in AnalyseurMarkDownEnLigne.cpp.
#include "markdown/AnalyseurMarkDown.h"

#include <string>

namespace {

// The characters of the escape pass, one walk each, in this order.
// Group 1: a backslash before them is removed, the character stays.
constexpr std::u16string_view kEchappablesGardes = u"-{}[]()+.!";
// Group 2: a backslash before them is removed; unescaped, they are removed themselves
// (emphasis, heading and table characters that no earlier pass consumed).
constexpr std::u16string_view kEchappablesRetires = u"*_#|";
// Group 3: as group 1. The backslash comes last, so that a backslash removed while handling
// another character escapes nothing more.
constexpr std::u16string_view kEchappablesDerniers = u":\\";

const ChaineN kEnTete(u"---\n");

}  // namespace

AnalyseurMarkDown::AnalyseurMarkDown(const TexteAvecAttributs& source, const FonctionRemplace& r,
                                     const FonctionMarque& m)
    : AnalyseurGenerique(source, r, m),
      finsDeLigne_(texte.Chaine(), u"\r\n"),
      crochetsFermants_(texte.Chaine(), u"]\r\n"),
      accoladesFermantes_(texte.Chaine(), u"}\r\n"),
      barres_(texte.Chaine(), u"|") {}

void AnalyseurMarkDown::Analyse() {
  for (const DelimiteurMarkDown& delimiteur : kDelimiteursMarkDown) TraiteDelimites(delimiteur);
  SauteEnTete();
  AnalyseBlocs(debutAnalyse, finAnalyse - debutAnalyse);
  TraiteEchappements();
  for (const auto& [entite, caractere] : kEntitesMarkDown)
    RemplaceOccurrences({ChaineN(entite), ChaineN(caractere)});
}

void AnalyseurMarkDown::RemplacePlage(uint64_t debut, uint64_t fin, const ChaineN& remplacement) {
  AnalyseurGenerique::RemplacePlage(debut, fin, remplacement);
  EffacePlage(debut, fin);
}

void AnalyseurMarkDown::SupprimePlage(uint64_t debut, uint64_t fin) {
  AnalyseurGenerique::SupprimePlage(debut, fin);  // reaches RemplacePlage above
  EffacePlage(debut, fin);
}

void AnalyseurMarkDown::EffacePlage(uint64_t debut, uint64_t fin) {
  if (fin > texte.Longueur()) fin = texte.Longueur();
  if (fin <= debut) return;
  texte.Remplace(debut, fin - debut, ChaineN(std::u16string(fin - debut, kUniteEffacee)));
  ++effacements_;
  parentheses_.NoteEffacement(debut, fin);
  crochets_.NoteEffacement(debut, fin);
}

void AnalyseurMarkDown::TraiteDelimites(const DelimiteurMarkDown& delimiteur) {
  const ChaineN ouvrant(delimiteur.ouvrant), fermant(delimiteur.fermant);
  Plage occurrence;
  if (!TrouveSuivant(ouvrant, occurrence, 0)) return;
  do {
    uint64_t depart = occurrence.Fin();
    Plage ouverture, fermeture;
    if (TrouveALaPos(ouvrant, ouverture, occurrence.position) &&
        TrouveSuivant(fermant, fermeture, ouverture.Fin())) {
      if (delimiteur.options & eDelimEntier) {
        SupprimePlage(ouverture.position, fermeture.Fin());
        depart = fermeture.Fin();
      } else {
        SupprimePlage(ouverture.position, ouverture.Fin());
        SupprimePlage(fermeture.position, fermeture.Fin());
        if ((delimiteur.options & eDelimNonTexte) && ouverture.Fin() < fermeture.position)
          MarquePlage(ouverture.Fin(), fermeture.position, eNonTexte);
        // The closing delimiter is overwritten: the search goes on inside the content.
        depart = ouverture.Fin();
      }
    }
    // With no closing delimiter after this one, none comes after a later opening either: the
    // next search finds nothing and the pass ends, so unclosed spans cost one scan.
    if (!TrouveSuivant(ouvrant, occurrence, depart)) return;
  } while (true);
}

void AnalyseurMarkDown::SauteEnTete() {
  if (!texte.Chaine().ContientALaPos(kEnTete.Vue(), debutAnalyse)) return;
  Plage fermeture;
  if (!texte.Chaine().Contient(kEnTete.Vue(), fermeture, debutAnalyse + kEnTete.Longueur())) return;
  SupprimePlage(debutAnalyse, fermeture.Fin());
  debutAnalyse = fermeture.Fin();
}

void AnalyseurMarkDown::TraiteEchappements() {
  const auto passe = [this](char16_t caractere, bool retireNonEchappe) {
    uint64_t p = 0;
    for (uint64_t depuis = debutAnalyse;
         depuis < finAnalyse && texte.Chaine().Contient(caractere, p, depuis); depuis = p + 1) {
      if (EstEchappe(p)) SupprimePlage(p - 1, p);
      else if (retireNonEchappe) SupprimePlage(p, p + 1);
    }
  };
  for (const char16_t c : kEchappablesGardes) passe(c, false);
  for (const char16_t c : kEchappablesRetires) passe(c, true);
  for (const char16_t c : kEchappablesDerniers) passe(c, false);
}

uint64_t AnalyseurMarkDown::SauteBlancs(uint64_t position, uint64_t fin) const {
  while (position < fin && EstBlanc(Car(position))) ++position;
  return position;
}

uint64_t AnalyseurMarkDown::CompteEspaces(uint64_t position, uint64_t fin, uint64_t maximum) const {
  uint64_t n = 0;
  while (n < maximum && position + n < fin && Car(position + n) == u' ') ++n;
  return n;
}

bool AnalyseurMarkDown::EstLigneBlanche(uint64_t position, uint64_t fin) const {
  const uint64_t p = SauteBlancs(position, fin);
  return p >= fin || EstFinDeLigne(Car(p));
}

std::optional<uint64_t> AnalyseurMarkDown::ChercheCar(char16_t unite, uint64_t debut, uint64_t fin) const {
  uint64_t p = 0;
  if (debut >= fin || !texte.Chaine().Contient(unite, p, debut, kMalgrayExact, fin - debut))
    return std::nullopt;
  return p;
}

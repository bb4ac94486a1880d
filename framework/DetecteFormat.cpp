// FiltresCorrecteur::DetecteFormat: asks the detectors in a fixed order (HTML, then LaTeX,
// then Markdown) and falls back to plain text. A later detector runs only when the earlier
// ones said no: an HTML page that also looks like Markdown is HTML.
#include "framework/FiltresCorrecteur.h"
#include "html/ConvertisseurHTML.h"
#include "latex/DetecteLaTeX.h"
#include "markdown/DetecteMarkDown.h"

eFormatTexte FiltresCorrecteur::DetecteFormat(const ChaineN& texte) {
  if (ConvertisseurHTML::DetecteBalisesHTML(texte)) return eFormatHTML;
  if (DetecteLaTeX(texte)) return eFormatLaTeX;
  return DetecteMarkDown(texte) ? eFormatMarkDown : eFormatTexteBrut;
}

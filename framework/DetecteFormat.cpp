// FiltresCorrecteur::DetecteFormat: asks the detectors in a fixed order (HTML, then LaTeX,
// then Markdown) and falls back to plain text. A later detector runs only when the earlier
// ones said no: an HTML page that also looks like Markdown is HTML.
#include "ferlane/UniCaractere.h"
#include "framework/FiltresCorrecteur.h"
#include "html/ConvertisseurHTML.h"
#include "latex/DetecteLaTeX.h"
#include "markdown/DetecteMarkDown.h"

eFormatTexte FiltresCorrecteur::DetecteFormat(const ChaineN& texte) {
  if (ConvertisseurHTML::DetecteBalisesHTML(texte)) return eFormatHTML;
  if (DetecteLaTeX(texte)) return eFormatLaTeX;
  return DetecteMarkDown(texte) ? eFormatMarkDown : eFormatTexteBrut;
}

namespace {

uint64_t SauteBlancs(std::u16string_view t, uint64_t p) {
  while (p < t.size() && (UniCaractere::EstBlanc(t[p]) || t[p] == u'\uFEFF')) ++p;
  return p;
}

// Where the text goes on after a leading "<?xml ...?>" declaration; 0 without one.
uint64_t ApresDeclarationXml(std::u16string_view t) {
  const uint64_t debut = SauteBlancs(t, 0);
  if (t.substr(debut, 5) != u"<?xml") return 0;
  const size_t fin = t.substr(0, kFenetreDetection).find(u"?>", debut);
  return fin == std::u16string_view::npos ? 0 : fin + 2;
}

bool EstChiffre(char16_t c) {
  return c >= u'0' && c <= u'9';
}

// "00:00:43,445 --> 00:00:45,978" (a period for the comma too) at the start of `ligne`.
bool EstLigneDeTemps(std::u16string_view ligne) {
  constexpr std::u16string_view kModele = u"00:00:00,000 --> 00:00:00,000";
  if (ligne.size() < kModele.size()) return false;
  for (size_t i = 0; i < kModele.size(); ++i) {
    const char16_t m = kModele[i], c = ligne[i];
    if (m == u'0' ? !EstChiffre(c) : m == u',' ? c != u',' && c != u'.' : c != m) return false;
  }
  return true;
}

// A first line of digits alone, then a timing line.
bool EstSousTitres(std::u16string_view t) {
  uint64_t p = SauteBlancs(t, 0);
  const uint64_t debutNumero = p;
  while (p < t.size() && EstChiffre(t[p])) ++p;
  if (p == debutNumero) return false;
  if (p < t.size() && t[p] == u'\r') ++p;
  if (p >= t.size() || t[p] != u'\n') return false;
  return EstLigneDeTemps(t.substr(p + 1));
}

}  // namespace

eFormatTexte FiltresCorrecteur::DetecteFormat(const ChaineN& texte, const ProfilProse& prose) {
  const eFormatTexte format = DetecteFormat(texte);
  if (!prose.EstActif() || format != eFormatTexteBrut) return format;
  const std::u16string_view vue = texte.Vue();
  if (const uint64_t apres = ApresDeclarationXml(vue);
      apres > 0 &&
      ConvertisseurHTML::DetecteBalisesHTML(texte.SousChaine(apres, kFenetreDetection)))
    return eFormatHTML;
  return EstSousTitres(vue) ? eFormatSRT : format;
}

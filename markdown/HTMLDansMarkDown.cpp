// AnalyseurMarkDown, the HTML of a Markdown document under the prose profile: every HTML5
// reference decoded (named and numeric) instead of the four the reference converter knows,
// comments gone wherever they stand (an unclosed one costs its line), and the content of the
// elements that hold code (kElementsNonProseHTML) marked as not prose.
#include <algorithm>

#include "ferlane/CodageUtf.h"
#include "ferlane/ProchaineOccurrence.h"
#include "html/ReferencesHTML5.h"
#include "markdown/AnalyseurMarkDown.h"

namespace {

constexpr uint32_t kCodePointMax = 0x10FFFF;

bool EstAlphaNumeriqueAscii(char16_t c) {
  return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

// The characters "&#NNN;" or "&#xHH;" stands for (`chiffres` between "#" and ";"), if valid.
std::optional<ChaineN> CaractereNumerique(std::u16string_view chiffres) {
  const bool hexa = !chiffres.empty() && (chiffres[0] == u'x' || chiffres[0] == u'X');
  if (hexa) chiffres.remove_prefix(1);
  if (chiffres.empty() || chiffres.size() > 7) return std::nullopt;
  uint32_t code = 0;
  for (const char16_t c : chiffres) {
    uint32_t v;
    if (c >= u'0' && c <= u'9')
      v = c - u'0';
    else if (hexa && (c | 0x20) >= u'a' && (c | 0x20) <= u'f')
      v = (c | 0x20) - u'a' + 10;
    else
      return std::nullopt;
    code = code * (hexa ? 16 : 10) + v;
  }
  if (code == 0 || code > kCodePointMax || EstSubstitut(code)) return std::nullopt;
  std::u16string unites;
  AjouteCodePoint(unites, code);
  return ChaineN(std::move(unites));
}

}  // namespace

void AnalyseurMarkDown::DecodeReferencesHTML() {
  const std::u16string_view vue = texte_.Chaine().Vue();
  for (uint64_t p = 0; (p = TrouveUnite(vue, p, u'&')) != kPasTrouve;) {
    uint64_t q = p + 1;
    const bool numerique = q < vue.size() && vue[q] == u'#';
    if (numerique) ++q;
    const uint64_t borne = std::min<uint64_t>(vue.size(), q + kLongueurMaxReferenceHTML5 + 1);
    uint64_t f = q;
    while (f < borne && EstAlphaNumeriqueAscii(vue[f])) ++f;
    if (f >= vue.size() || f == q || vue[f] != u';') {
      ++p;
      continue;
    }
    const std::u16string_view nom = vue.substr(q, f - q);
    std::optional<ChaineN> caracteres;
    if (numerique)
      caracteres = CaractereNumerique(nom);
    else if (const auto reference = TrouveReferenceHTML5(nom))
      caracteres = ChaineN(*reference);
    if (caracteres) RemplacePlage(p, f + 1, *caracteres);
    p = f + 1;
  }
}

// A comment at `pos` (its "<!--" checked), in a range ending at `fin`: gone up to its "-->", or
// up to its line's end when none closes it in the range. Returns the units consumed.
uint64_t AnalyseurMarkDown::SupprimeCommentaireProse(uint64_t pos, uint64_t fin) {
  const std::optional<uint64_t> fermeture = Prochain(fermetureCommentaire_, u"-->", pos + 4);
  uint64_t apres = fermeture && *fermeture + 3 <= fin ? *fermeture + 3 : FinDeLigne(pos, fin);
  // "a <!-- x --> b" reads "a b": one of the blanks around it goes with it.
  if (pos > 0 && EstBlanc(Car(pos - 1)) && apres < fin && EstBlanc(Car(apres))) ++apres;
  SupprimePlage(pos, apres);
  return apres - pos;
}

// The content of an element that holds code, from the end of its opening tag to its closing
// tag, in the same paragraph (an HTML block ends at a blank line); no closing, no mark.
void AnalyseurMarkDown::MarqueElementNonProse(uint64_t chevronOuvrant, uint64_t chevronFermant) {
  uint64_t n = chevronOuvrant + 1;
  while (n < chevronFermant && EstAlphaNumeriqueAscii(Car(n))) ++n;
  const std::u16string_view nom =
      texte_.Chaine().Vue().substr(chevronOuvrant + 1, n - chevronOuvrant - 1);
  const auto element = std::ranges::find(kElementsNonProseHTML, nom);
  if (nom.empty() || element == std::end(kElementsNonProseHTML)) return;
  const size_t i = element - std::begin(kElementsNonProseHTML);
  if (fermantsHTML_[i].empty()) fermantsHTML_[i] = u"</" + std::u16string(*element) + u">";
  const std::optional<uint64_t> fermant =
      Prochain(fermeturesHTML_[i], fermantsHTML_[i], chevronFermant + 1);
  const std::optional<uint64_t> paragraphe = Prochain(paragraphes_, u"\n\n", chevronFermant + 1);
  if (!fermant || *fermant == chevronFermant + 1 || (paragraphe && *paragraphe < *fermant)) return;
  MarquePlage(chevronFermant + 1, *fermant, eNonTexte);
}

// The next occurrence of `motif` in the working copy, remembered in `recherche`; an answer the
// copy no longer holds (overwritten since) is searched again.
std::optional<uint64_t> AnalyseurMarkDown::Prochain(std::optional<ProchaineOccurrence>& recherche,
                                                    std::u16string_view motif, uint64_t debut) {
  if (!recherche) recherche.emplace(texte_.Chaine().Vue(), motif);
  std::optional<uint64_t> trouve = recherche->Apres(debut);
  while (trouve && !texte_.Chaine().ContientALaPos(motif, *trouve)) {
    recherche.emplace(texte_.Chaine().Vue(), motif);
    trouve = recherche->Apres(*trouve + 1);
  }
  return trouve;
}

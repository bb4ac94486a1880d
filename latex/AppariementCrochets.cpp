// AppariementCrochets: one pass with a stack a kind of bracket, then lookups by binary search.
#include "latex/AppariementCrochets.h"

#include <algorithm>

#include "ferlane/ProchaineOccurrence.h"

bool AppariementCrochets::EstEchappe(const ChaineN& texte, uint64_t position) {
  return position >= 1 && texte[position - 1] == u'\\' &&
         (position < 2 || texte[position - 2] != u'\\');
}

AppariementCrochets::AppariementCrochets(const ChaineN& texte,
                                         const std::vector<RegionVerbatim>& ignorees)
    : texte_(texte) {
  std::vector<size_t> ouvertesAccolades, ouvertesCrochets;  // indexes of pairs still open
  const std::u16string_view unites = texte.Vue();
  constexpr std::u16string_view kCrochets = u"{}[]";
  auto ignoree = ignorees.begin();  // the stretches come in order of start
  PourChaqueUniteParmi(unites, 0, kCrochets, [&](uint64_t position) -> uint64_t {
    while (ignoree != ignorees.end() && ignoree->fin <= position) ++ignoree;
    if (ignoree != ignorees.end() && ignoree->debut <= position)
      return ignoree->fin;  // inside a stretch: on after it
    if (EstEchappe(texte, position)) return position + 1;
    const char16_t c = unites[position];
    const bool accolade = c == u'{' || c == u'}';
    std::vector<Paire>& paires = accolade ? accolades_ : crochets_;
    std::vector<size_t>& ouvertes = accolade ? ouvertesAccolades : ouvertesCrochets;
    if (c == u'{' || c == u'[') {
      ouvertes.push_back(paires.size());
      paires.push_back({static_cast<uint32_t>(position), kSansFermant});
    } else if (!ouvertes.empty()) {
      paires[ouvertes.back()].fermant = static_cast<uint32_t>(position);
      ouvertes.pop_back();
    }
    return position + 1;
  });
}

// The first pair opening at or after `ouvrant`. The scanner asks in increasing order but for
// nested arguments: from the last answer, steps that double find it in a few reads where a
// search of the whole array would read a dozen lines of memory far apart.
std::vector<AppariementCrochets::Paire>::const_iterator AppariementCrochets::PaireDe(
    const std::vector<Paire>& paires, size_t& curseur, uint64_t ouvrant) {
  const auto avant = [ouvrant](const Paire& p, uint64_t) { return p.ouvrant < ouvrant; };
  size_t bas = curseur < paires.size() && paires[curseur].ouvrant <= ouvrant ? curseur : 0;
  size_t pas = 1;
  while (bas + pas < paires.size() && paires[bas + pas].ouvrant < ouvrant) {
    bas += pas;
    pas *= 2;
  }
  const auto debut = paires.begin() + static_cast<std::ptrdiff_t>(bas);
  // The pair sought is past `bas` and at `bas + pas` at the latest, which a search stopping
  // short of it gives anyway.
  const auto fin = paires.begin() + static_cast<std::ptrdiff_t>(std::min(paires.size(), bas + pas));
  const auto it = std::lower_bound(debut, fin, ouvrant, avant);
  curseur = static_cast<size_t>(it - paires.begin());
  return it;
}

std::optional<uint64_t> AppariementCrochets::Fermant(uint64_t ouvrant, uint64_t fin) const {
  const bool accolade = texte_[ouvrant] == u'{';
  const std::vector<Paire>& paires = accolade ? accolades_ : crochets_;
  const auto it = PaireDe(paires, accolade ? curseurAccolades_ : curseurCrochets_, ouvrant);
  if (it == paires.end() || it->ouvrant != ouvrant) return ParcoursDepuis(ouvrant, fin);
  if (it->fermant == kSansFermant || it->fermant >= fin) return std::nullopt;
  return it->fermant;
}

std::optional<uint64_t> AppariementCrochets::ParcoursDepuis(uint64_t ouvrant, uint64_t fin) const {
  const char16_t ouvrante = texte_[ouvrant];
  const char16_t fermante = ouvrante == u'{' ? u'}' : u']';
  const char16_t paire[] = {ouvrante, fermante};
  uint64_t profondeur = 1;
  uint64_t position = 0;
  for (uint64_t debut = ouvrant + 1;
       debut < fin && texte_.ContientUnCarDe({paire, 2}, position, debut, fin - debut);
       debut = position + 1) {
    if (EstEchappe(texte_, position)) continue;
    if (texte_[position] == ouvrante)
      ++profondeur;
    else if (--profondeur == 0)
      return position;
  }
  return std::nullopt;
}

// ChercheurDeChaine: the shift table and the search.
#include "filters/ChercheurDeChaine.h"

#include <algorithm>
#include <limits>

namespace {

// The mode as ChaineN reads it: mode 8 wins over mode 4, any other bit means nothing.
Malgray ModeEffectif(Malgray mode) {
  if (mode & kMalgraySansCasseNiAccents) return kMalgraySansCasseNiAccents;
  if (mode & kMalgraySansCasse) return kMalgraySansCasse;
  return kMalgrayExact;
}

}  // namespace

ChercheurDeChaine::ChercheurDeChaine(std::u16string_view chaine, Malgray mode)
    : chaine_(chaine), mode_(ModeEffectif(mode)) {
  // Folding one unit at a time is what UnitesEgales compares, so the folded string against the
  // folded text finds the same occurrences as ChaineN::Contient.
  for (char16_t& c : chaine_) c = PlieUnite(c, mode_);
  const uint64_t m = chaine_.size();
  const auto saut =
      static_cast<uint32_t>(std::min<uint64_t>(m, std::numeric_limits<uint32_t>::max()));
  sauts_.fill(std::max<uint32_t>(saut, 1));
  for (uint64_t k = 0; k + 1 < m; ++k) {
    uint32_t& s = sauts_[chaine_[k] & 0xFF];
    s = static_cast<uint32_t>(std::min<uint64_t>(s, m - 1 - k));
  }
}

std::optional<uint64_t> ChercheurDeChaine::Cherche(std::u16string_view texte,
                                                   uint64_t debut) const {
  const uint64_t m = chaine_.size();
  if (m == 0 || debut >= texte.size() || m > texte.size() - debut) return std::nullopt;
  if (mode_ == kMalgrayExact) {
    if (m == 1) {  // one unit: the library's scan does it well
      const size_t trouve = texte.find(chaine_[0], debut);
      if (trouve == std::u16string_view::npos) return std::nullopt;
      return trouve;
    }
    return ChercheAvecSauts<false>(texte, debut);
  }
  return ChercheAvecSauts<true>(texte, debut);
}

template <bool kPlie>
std::optional<uint64_t> ChercheurDeChaine::ChercheAvecSauts(std::u16string_view texte,
                                                            uint64_t debut) const {
  const char16_t* const t = texte.data();
  const char16_t* const c = chaine_.data();
  const uint64_t m = chaine_.size();
  const uint64_t dernierePosition = texte.size() - m;
  const char16_t dernier = c[m - 1];
  const auto plie = [this](char16_t u) { return kPlie ? PlieUnite(u, mode_) : u; };
  for (uint64_t i = debut; i <= dernierePosition;) {
    const char16_t u = plie(t[i + m - 1]);
    if (u == dernier) {
      uint64_t k = 0;
      while (k + 1 < m && plie(t[i + k]) == c[k]) ++k;
      if (k + 1 == m) return i;
    }
    i += sauts_[u & 0xFF];
  }
  return std::nullopt;
}

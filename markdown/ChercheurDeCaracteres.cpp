// ChercheurDeCaracteres: searches that remember the stretch they found free, and a map of the
// members once the searches have read the text over.
#include "markdown/ChercheurDeCaracteres.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

#include "ferlane/ProchaineOccurrence.h"
#include "ferlane/UnitesSSE2.h"

ChercheurDeCaracteres::ChercheurDeCaracteres(const ChaineN& texte, std::u16string_view ensemble)
    : texte_(texte), ensemble_(ensemble) {
  if (ensemble.empty() || ensemble.size() > 4)
    throw std::invalid_argument("ChercheurDeCaracteres: one to four units");
  for (const char16_t c : ensemble) {
    if (c >= 128) throw std::invalid_argument("ChercheurDeCaracteres: ASCII units only");
    membres_[c >> 6] |= uint64_t{1} << (c & 63);
  }
}

uint64_t ChercheurDeCaracteres::Cherche(uint64_t debut, uint64_t limite) {
  if (debut >= limite) return limite;
  if (carte_.empty()) {
    // Searched afresh until the searches have read as much as the text holds (nested blocks
    // read their lines again), then from a map of the members made in one pass.
    lues_ += limite - debut;
    if (lues_ <= texte_.Longueur()) {
      const uint64_t p = TrouveUneDe(texte_.Vue().substr(0, limite), debut, ensemble_);
      if (p != kPasTrouve) lues_ -= limite - p;  // what lay beyond was not read
      return p == kPasTrouve ? limite : p;
    }
    DresseCarte();
  }
  return ChercheSurCarte(debut, limite);
}

// One bit a unit, set where the unit was a member when the map was made; sixteen units a step.
void ChercheurDeCaracteres::DresseCarte() {
  const std::u16string_view unites = texte_.Vue();
  carte_.assign(unites.size() / 64 + 1, 0);
  size_t p = 0;
#if defined(__SSE2__)
  const UnitesParmi parmi(ensemble_);
  const auto membres = [&](const char16_t* d) {
    return parmi(_mm_loadu_si128(reinterpret_cast<const __m128i*>(d)));
  };
  for (; p + 16 <= unites.size(); p += 16) {
    const __m128i octets =
        _mm_packs_epi16(membres(unites.data() + p), membres(unites.data() + p + 8));
    carte_[p / 64] |= uint64_t{static_cast<uint16_t>(_mm_movemask_epi8(octets))} << (p % 64);
  }
#endif
  for (; p < unites.size(); ++p)
    if (EstMembre(unites[p])) carte_[p / 64] |= uint64_t{1} << (p % 64);
}

// Members only leave the text, never come into it: a bit whose unit is no longer a member is
// cleared as it is met, and every member still there has its bit.
uint64_t ChercheurDeCaracteres::ChercheSurCarte(uint64_t debut, uint64_t limite) {
  for (uint64_t mot = debut / 64; mot * 64 < limite; ++mot) {
    uint64_t bits = carte_[mot];
    if (mot == debut / 64) bits &= ~uint64_t{0} << (debut % 64);
    for (; bits != 0; bits &= bits - 1) {
      const uint64_t p = mot * 64 + static_cast<uint64_t>(std::countr_zero(bits));
      if (p >= limite) return limite;
      if (EstMembre(texte_[p])) return p;
      carte_[mot] &= ~(uint64_t{1} << (p % 64));
    }
  }
  return limite;
}

uint64_t ChercheurDeCaracteres::Prochain(uint64_t debut, uint64_t limite) {
  limite = std::min(limite, texte_.Longueur());
  if (debut >= limite) return limite;
  if (debut > libreFin_) {
    libreFin_ = Cherche(debut, limite);
    libreDebut_ = debut;
    trouve_ = libreFin_ < limite;
    return libreFin_;
  }
  if (debut < libreDebut_) {
    // A walk that went back: search the gap only, then carry on with what is known.
    const uint64_t borne = std::min(limite, libreDebut_);
    const uint64_t trouve = Cherche(debut, borne);
    if (trouve < borne || borne == limite) {
      if (trouve < borne) libreDebut_ = debut, libreFin_ = trouve, trouve_ = true;
      return trouve;
    }
    libreDebut_ = debut;
  }
  if (libreFin_ >= limite) return limite;
  if (trouve_ && EstMembre(texte_[libreFin_])) return libreFin_;
  libreFin_ = Cherche(libreFin_, limite);
  trouve_ = libreFin_ < limite;
  return libreFin_;
}

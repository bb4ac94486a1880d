// The scans' searches: the first position of a code unit (or of one of a few) from a position,
// sixteen units a step, and ProchaineOccurrence, the next occurrence of a pattern remembered
// between calls.
//
// Why remember: a scan that asks, at each opening it meets, where the next closing string is
// would read the rest of the text once an opening when no closing follows. Keeping the last
// answer, and searching again only once the scan has passed it, reads the text once a closing
// string found. Searches are exact (code unit for code unit); folded searches stay in ChaineN.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <optional>
#include <string_view>

#include "ferlane/UnitesSSE2.h"

inline constexpr uint64_t kPasTrouve = UINT64_MAX;
static_assert(kPasTrouve == std::u16string_view::npos, "a position not found reads as npos too");

// The first position p >= debut where texte[p] == unite, or kPasTrouve.
uint64_t TrouveUnite(std::u16string_view texte, uint64_t debut, char16_t unite);
// The first position p >= debut where texte[p] is `a` or `b`, or kPasTrouve.
uint64_t TrouveUneDeDeux(std::u16string_view texte, uint64_t debut, char16_t a, char16_t b);
// The first position p >= debut where texte[p] is one of `unites` (one to four units), or
// kPasTrouve.
uint64_t TrouveUneDe(std::u16string_view texte, uint64_t debut, std::u16string_view unites);
// Where the run of words that starts at `debut` ends: ASCII letters and digits, and single spaces
// each followed by one of them. `espaces` is increased by the spaces the run holds. What a scan
// of prose goes past without anything to report.
uint64_t FinDeMotsAscii(std::u16string_view texte, uint64_t debut, uint64_t& espaces);
// The first position p >= debut where `motif` (not empty) starts, or kPasTrouve.
uint64_t TrouveMotif(std::u16string_view texte, uint64_t debut, std::u16string_view motif);

// Calls `visite(p)` for each position p >= debut whose unit is one of `unites` (one to four), in
// order; `visite` returns where the walk goes on: p + 1, or further to pass over a stretch.
// Sixteen units a step, the mask of a block read bit by bit: where the units are dense (the braces
// of a LaTeX source) no search starts again for each of them.
template <class Visite>
void PourChaqueUniteParmi(std::u16string_view texte, uint64_t debut, std::u16string_view unites,
                          Visite visite) {
  const char16_t u[4] = {unites[0], unites[unites.size() > 1 ? 1 : 0],
                         unites[unites.size() > 2 ? 2 : 0], unites[unites.size() > 3 ? 3 : 0]};
#if defined(__SSE2__)
  const UnitesParmi parmi(unites);
#endif
  for (uint64_t p = debut; p < texte.size();) {
    const uint64_t taille = std::min<uint64_t>(16, texte.size() - p);
    uint32_t masque = 0;  // bit k: the unit at p + k is one of them
#if defined(__SSE2__)
    if (taille == 16) {
      const auto* bloc = reinterpret_cast<const __m128i*>(texte.data() + p);
      masque = static_cast<uint32_t>(_mm_movemask_epi8(
          _mm_packs_epi16(parmi(_mm_loadu_si128(bloc)), parmi(_mm_loadu_si128(bloc + 1)))));
    } else
#endif
      for (uint64_t k = 0; k < taille; ++k) {
        const char16_t c = texte[p + k];
        if (c == u[0] || c == u[1] || c == u[2] || c == u[3]) masque |= 1u << k;
      }
    uint64_t suite = p + taille;
    while (masque != 0) {
      const uint64_t reprise = visite(p + static_cast<uint64_t>(std::countr_zero(masque)));
      if (reprise >= p + taille) {
        suite = reprise;
        break;
      }
      masque &= ~0u << (reprise - p);  // what lies before `reprise` is passed over
    }
    p = suite;
  }
}

class ProchaineOccurrence {
 public:
  // Which occurrences count, from the text and an occurrence's position alone (never from where
  // the search began, or a remembered answer would be wrong): an unescaped closing string, say.
  using Accepte = bool (*)(std::u16string_view texte, uint64_t position);

  // Both views must outlive the object; `motif` must not be empty. Without `accepte`, every
  // occurrence counts.
  ProchaineOccurrence(std::u16string_view texte, std::u16string_view motif,
                      Accepte accepte = nullptr)
      : texte_(texte), motif_(motif), accepte_(accepte) {}

  // The first occurrence starting at or after `debut`. Asked with positions that only grow (the
  // way a scan asks), the text is read once in all.
  std::optional<uint64_t> Apres(uint64_t debut) {
    // The last answer stands when no position before it and at or after `debut` was left
    // unread: the last search began at or before `debut`.
    if (!connu_ || debut < depuis_ || (trouve_ != kPasTrouve && trouve_ < debut)) {
      trouve_ = TrouveMotif(texte_, debut, motif_);
      while (accepte_ && trouve_ != kPasTrouve && !accepte_(texte_, trouve_))
        trouve_ = TrouveMotif(texte_, trouve_ + 1, motif_);
      depuis_ = debut;
      connu_ = true;
    }
    return trouve_ == kPasTrouve ? std::nullopt : std::optional<uint64_t>(trouve_);
  }

  // The same, as a position: kPasTrouve (std::u16string_view::npos) when there is none.
  uint64_t PositionApres(uint64_t debut) { return Apres(debut).value_or(kPasTrouve); }

  std::u16string_view Motif() const { return motif_; }

 private:
  std::u16string_view texte_;
  std::u16string_view motif_;
  Accepte accepte_;
  bool connu_ = false;
  uint64_t depuis_ = 0;
  uint64_t trouve_ = kPasTrouve;
};

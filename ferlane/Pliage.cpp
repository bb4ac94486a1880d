// Folding of code units for the comparison modes 4 and 8: two tables of 65,536 units, built
// once from ICU on first use and read-only afterwards.
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <memory>

#include "ferlane/ChaineN.h"

namespace {

struct TablesDePliage {
  std::unique_ptr<char16_t[]> sansCasse{new char16_t[0x10000]};
  std::unique_ptr<char16_t[]> sansCasseNiAccents{new char16_t[0x10000]};

  TablesDePliage() {
    UErrorCode erreur = U_ZERO_ERROR;
    const icu::Normalizer2* nfd = icu::Normalizer2::getNFDInstance(erreur);
    for (uint32_t c = 0; c < 0x10000; ++c) {
      const char16_t minuscule = Minuscule(c);
      sansCasse[c] = minuscule;
      sansCasseNiAccents[c] = U_SUCCESS(erreur) ? Minuscule(LettreDeBase(*nfd, c)) : minuscule;
    }
  }

  static char16_t Minuscule(uint32_t c) {
    if (c >= 0xD800 && c <= 0xDFFF) return static_cast<char16_t>(c);
    const UChar32 minuscule = u_tolower(static_cast<UChar32>(c));
    return minuscule <= 0xFFFF ? static_cast<char16_t>(minuscule) : static_cast<char16_t>(c);
  }

  // "é" → "e", "Ǖ" → "U": the first code point of the canonical decomposition, when everything
  // after it is a combining mark.
  static uint32_t LettreDeBase(const icu::Normalizer2& nfd, uint32_t c) {
    if (c < 0xC0 || (c >= 0xD800 && c <= 0xDFFF)) return c;
    icu::UnicodeString decomposition;
    if (!nfd.getDecomposition(static_cast<UChar32>(c), decomposition)) return c;
    const UChar32 base = decomposition.char32At(0);
    if (base > 0xFFFF) return c;
    for (int32_t i = U16_LENGTH(base); i < decomposition.length();
         i += U16_LENGTH(decomposition.char32At(i)))
      if (u_charType(decomposition.char32At(i)) != U_NON_SPACING_MARK) return c;
    return static_cast<uint32_t>(base);
  }
};

const TablesDePliage& Tables() {
  static const TablesDePliage tables;
  return tables;
}

}  // namespace

char16_t PlieUnite(char16_t unite, Malgray mode) {
  if (mode & kMalgraySansCasseNiAccents) return Tables().sansCasseNiAccents[unite];
  if (mode & kMalgraySansCasse) {
    if (unite < 0x80) return (unite >= u'A' && unite <= u'Z') ? unite + 32 : unite;
    return Tables().sansCasse[unite];
  }
  return unite;
}

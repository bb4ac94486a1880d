// The vocabulary both halves of LecteurHTML share: what they write, the attributes of their
// reports, and the classes of the ASCII units (taken once from UniCaractere: the walk asks them
// for every unit of the page, and a table read is far cheaper than a call). Internal.
#pragma once

#include <array>
#include <cstdint>

#include "ferlane/ChaineN.h"
#include "ferlane/MapPos.h"
#include "ferlane/UniCaractere.h"

namespace vocabulaire_html {

inline const ChaineN kMarqueHTML(u"[HTML]");  // stands in for what is not prose
inline const ChaineN kSautDeLigne(u"\n");
inline const ChaineN kMarqueItem(u"\u000E");
inline const ChaineN kTabulation(u"\t");
inline const ChaineN kEspace(u" ");

inline constexpr MapPos::Attributs kMasque{0, 0};
inline constexpr MapPos::Attributs kEquivalent{0, 1};

// A word character: neither blank nor punctuation nor an intron.
inline bool EstMotUnicode(char16_t c) {
  return !UniCaractere::EstPonctuationOuBlanc(c) && !UniCaractere::EstIntron(c);
}

enum : uint8_t {
  kBlanc = 1,
  kMot = 2,
  kOrdinaire = 4,  // needs nothing but its classes: not blank, not "<", "&" or "/"
};

inline const std::array<uint8_t, 128> kClassesASCII = [] {
  std::array<uint8_t, 128> classes{};
  for (char16_t c = 0; c < 128; ++c) {
    const bool blanc = UniCaractere::EstBlanc(c);
    classes[c] = (blanc ? kBlanc : 0) | (EstMotUnicode(c) ? kMot : 0) |
                 (!blanc && c != u'<' && c != u'&' && c != u'/' ? kOrdinaire : 0);
  }
  return classes;
}();

inline bool EstBlanc(char16_t c) {
  return c < 0x80 ? (kClassesASCII[c] & kBlanc) != 0 : UniCaractere::EstBlanc(c);
}

inline bool EstMot(char16_t c) {
  return c < 0x80 ? (kClassesASCII[c] & kMot) != 0 : EstMotUnicode(c);
}

}  // namespace vocabulaire_html

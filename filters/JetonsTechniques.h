// JetonsTechniques: recognisers of the tokens of running text that no dictionary holds, for the
// prose profile: web and mail addresses, file paths, identifiers, version numbers. A token is
// a maximal run of units that are neither blank nor control characters; the punctuation that
// opens or closes a sentence around it is not part of it.
//
// Prose stays prose: "and/or", "e.g.", "don't", "well-known", "U.S." are never technical.
#pragma once

#include <array>
#include <string_view>

#include "ferlane/UniCaractere.h"

// The token [debut, fin) of `texte` less the punctuation around it; empty when nothing is left.
struct BornesJeton {
  size_t debut = 0;
  size_t fin = 0;
};
BornesJeton RogneJeton(std::u16string_view texte, size_t debut, size_t fin);
// Whether `c` closes a sentence around a token: RogneJeton takes it off the token's end.
bool EstFermantDeJeton(char16_t c);

// Whether a trimmed token is technical rather than a word of prose.
bool EstJetonTechnique(std::u16string_view jeton);

// The units without which no rule can call a token technical: a token with none of them is a
// word, whatever its length, and a scan can tell so while it finds the token's end.
inline constexpr std::array<bool, 128> kUnitesTechniquesASCII = [] {
  std::array<bool, 128> table{};
  for (char16_t c : std::u16string_view(u"_\\=:<>()[]{}/@.0123456789")) table[c] = true;
  return table;
}();
// Digits are the ASCII ones (UniCaractere::EstChiffre), so every such unit is ASCII.
inline bool PeutRendreTechnique(char16_t c) {
  return c < 0x80 && kUnitesTechniquesASCII[c];
}

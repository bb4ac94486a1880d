// What the fuzz targets share: how their bytes become a text, the size beyond which an input
// teaches nothing new (every scan is linear), and the check every reported interval must pass.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ferlane/ChaineN.h"
#include "ferlane/MapPos.h"

inline constexpr size_t kTailleMaxFuzz = 4096;

// UTF-8 (invalid sequences become U+FFFD), or UTF-16 units two bytes at a time, little-endian,
// which reaches lone surrogates; an odd last byte is dropped.
inline ChaineN TexteFuzz(std::string_view octets, bool utf16) {
  if (!utf16) return ChaineN::DepuisUtf8(octets);
  std::u16string unites(octets.size() / 2, u'\0');
  for (size_t i = 0; i < unites.size(); ++i)
    unites[i] = static_cast<char16_t>(uint8_t(octets[2 * i]) | uint8_t(octets[2 * i + 1]) << 8);
  return ChaineN(std::move(unites));
}

inline ChaineN TexteFuzz(const uint8_t* donnees, size_t taille, bool utf16) {
  return TexteFuzz(std::string_view(reinterpret_cast<const char*>(donnees), taille), utf16);
}

// Stops the run (a crash the fuzzer keeps) unless the condition holds.
inline void ExigeFuzz(bool condition) {
  if (!condition) __builtin_trap();
}

// A reported interval runs forward and lies inside the text it was reported on.
inline void VerifieIntervalleFuzz(MapPos::Intervalle i, uint64_t longueur) {
  ExigeFuzz(i.Debut <= i.Fin && i.Fin <= longueur);
}

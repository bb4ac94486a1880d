// MapPos: the interval and the attribute flags that converters report to the chain.
#pragma once

#include <cstdint>

namespace MapPos {

// [Debut, Fin) in UTF-16 code units of the text the converter was given; Debut == Fin is an
// insertion point (for remplace) or an empty span (for marque).
struct Intervalle {
  uint32_t Debut = 0;
  uint32_t Fin = 0;
  bool operator==(const Intervalle&) const = default;
};

// CaractereSpecial: one internal character written back in its external (escaped) form.
// Remplacable: the replacement is the textual equivalent of what it replaces (a decoded
// character, a symbol, a normalised run of blanks), so a correction may overwrite it.
struct Attributs {
  uint8_t CaractereSpecial = 0;
  uint8_t Remplacable = 0;
  bool operator==(const Attributs&) const = default;
};

}  // namespace MapPos

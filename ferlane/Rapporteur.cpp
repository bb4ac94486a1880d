// Rapporteur: the narrowing of positions and the refusal of texts too long for the map.
#include "ferlane/Rapporteur.h"

#include <stdexcept>
#include <string>

MapPos::Intervalle Rapporteur::Intervalle(uint64_t debut, uint64_t fin) {
  if (debut > kLongueurMaximale || fin > kLongueurMaximale)
    throw std::length_error("a reported position (" + std::to_string(debut > fin ? debut : fin) +
                            ") is beyond the 2^32 code units a map can address");
  return MapPos::Intervalle{static_cast<uint32_t>(debut), static_cast<uint32_t>(fin)};
}

void VerifieLongueurMappable(uint64_t longueur) {
  if (longueur > kLongueurMaximale)
    throw std::length_error("the text has " + std::to_string(longueur) +
                            " UTF-16 code units; at most " + std::to_string(kLongueurMaximale) +
                            " (2^32 - 1) can be mapped");
}

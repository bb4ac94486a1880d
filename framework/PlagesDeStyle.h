// PlagesDeStyle: the internal text's style bits as runs, each a stretch of units that carry the
// same non-zero bits, in order. What the JSON output, the C interface and the Python module give
// their hosts rather than one word a unit.
#pragma once

#include <cstdint>
#include <vector>

#include "ferlane/MapChaines.h"

struct PlageDeStyle {
  uint32_t debut = 0;
  uint32_t fin = 0;
  uint32_t styles = 0;
  bool operator==(const PlageDeStyle&) const = default;
};

std::vector<PlageDeStyle> PlagesDeStyle(const TexteAvecAttributs& interne);

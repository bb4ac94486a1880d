// PlagesDeStyle: one walk over the attribute array, when there is one.
#include "framework/PlagesDeStyle.h"

std::vector<PlageDeStyle> PlagesDeStyle(const TexteAvecAttributs& interne) {
  std::vector<PlageDeStyle> plages;
  if (!interne.AAttributs()) return plages;
  const auto& attributs = interne.Attributs();
  for (size_t debut = 0; debut < attributs.size();) {
    size_t fin = debut + 1;
    while (fin < attributs.size() && attributs[fin] == attributs[debut]) ++fin;
    if (attributs[debut] != 0)
      plages.push_back(
          {static_cast<uint32_t>(debut), static_cast<uint32_t>(fin), attributs[debut]});
    debut = fin;
  }
  return plages;
}

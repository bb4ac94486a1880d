// IndexDeNoms: a vocabulary's lookup by name, built once from constant tables. Open addressing
// over a flat array of slots, at least four times as many as names, so a name is found in one
// or two probes of adjacent slots with no node to chase; a name longer than any in the index
// is answered without hashing. The names are views: what they look at must outlive the index
// (constant tables do).
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <vector>

template <class Valeur>
class IndexDeNoms {
 public:
  // Room for `nombreMax` names.
  explicit IndexDeNoms(size_t nombreMax)
      : cases_(std::bit_ceil(std::max<size_t>(4 * nombreMax, 8))),
        masque_(cases_.size() - 1),
        nombreMax_(nombreMax) {}

  // The value of `nom`, a default one added when the name is new.
  Valeur& operator[](std::u16string_view nom) {
    for (size_t i = Hache(nom);; i = (i + 1) & masque_) {
      Case& c = cases_[i];
      if (c.occupee && c.nom == nom) return c.valeur;
      if (c.occupee) continue;
      if (nombre_ == nombreMax_) throw std::length_error("IndexDeNoms: more names than room");
      ++nombre_;
      c = {nom, Valeur{}, true};
      longueurMax_ = std::max(longueurMax_, nom.size());
      return c.valeur;
    }
  }

  // The value of `nom`, or null when the index does not hold it.
  const Valeur* Trouve(std::u16string_view nom) const {
    if (nom.size() > longueurMax_) return nullptr;
    for (size_t i = Hache(nom);; i = (i + 1) & masque_) {
      const Case& c = cases_[i];
      if (!c.occupee) return nullptr;
      if (c.nom == nom) return &c.valeur;
    }
  }

 private:
  struct Case {
    std::u16string_view nom;
    Valeur valeur{};
    bool occupee = false;
  };
  // FNV-1a over the units: names are a few units long.
  size_t Hache(std::u16string_view nom) const {
    uint32_t h = 2166136261u;
    for (const char16_t c : nom) h = (h ^ c) * 16777619u;
    return h & masque_;
  }

  std::vector<Case> cases_;
  size_t masque_;
  size_t nombreMax_;
  size_t nombre_ = 0;
  size_t longueurMax_ = 0;
};

// ChaineTemplateAvecAttributs: a string whose every code unit carries eight attribute bits (the
// chain stores there the style bits of each internal unit: the six of eStyle and two spare). A
// byte a unit rather than a word keeps a styled text of a hundred megabytes a hundred
// megabytes lighter. A string with no attribute set keeps no attribute array at all.
#pragma once

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

#include "ferlane/ChaineN.h"

// The attribute bits a unit carries; a style bit above them is not kept.
using BitsDAttributs = uint8_t;
inline constexpr uint32_t kBitsDAttributsGardes = 0xFF;

template <class S>
class ChaineTemplateAvecAttributs {
 public:
  ChaineTemplateAvecAttributs() = default;
  ChaineTemplateAvecAttributs(S texte) : texte_(std::move(texte)) {}
  // `attributs` is empty (no unit has any) or holds one entry a unit.
  ChaineTemplateAvecAttributs(S texte, std::vector<BitsDAttributs> attributs)
      : texte_(std::move(texte)), attributs_(std::move(attributs)) {
    if (!attributs_.empty() && attributs_.size() != texte_.Longueur())
      throw std::invalid_argument("ChaineTemplateAvecAttributs: one attribute a unit");
  }

  const S& Chaine() const { return texte_; }
  uint64_t Longueur() const { return texte_.Longueur(); }
  auto operator[](uint64_t position) const { return texte_[position]; }

  bool AAttributs() const { return !attributs_.empty(); }
  uint32_t Attribut(uint64_t position) const {
    return attributs_.empty() ? 0 : attributs_[position];
  }
  const std::vector<BitsDAttributs>& Attributs() const { return attributs_; }
  // The attributes to write into, one a unit (made, all zero, if the string had none).
  std::vector<BitsDAttributs>& AttributsModifiables() {
    if (attributs_.empty()) attributs_.assign(texte_.Longueur(), BitsDAttributs{0});
    return attributs_;
  }

  // Moves the string out (the chain keeps a step's input as the document once the step is
  // built); this object is left empty.
  S RetireChaine() {
    attributs_.clear();
    return std::move(texte_);
  }

  // Replaces `longueur` units from `debut` (clipped to the end) by `remplacement`, whose units
  // carry no attribute.
  void Remplace(uint64_t debut, uint64_t longueur, const S& remplacement) {
    debut = std::min(debut, texte_.Longueur());
    longueur = std::min(longueur, texte_.Longueur() - debut);
    auto& unites = texte_.Texte();
    unites.replace(debut, longueur, remplacement.Texte());
    if (!attributs_.empty()) {
      attributs_.erase(attributs_.begin() + debut, attributs_.begin() + debut + longueur);
      attributs_.insert(attributs_.begin() + debut, remplacement.Longueur(), BitsDAttributs{0});
    }
  }
  // Sets `longueur` units from `debut` (clipped to the end) to `unite`, with no attribute: a
  // replacement of the same length, made in place.
  void Ecrase(uint64_t debut, uint64_t longueur, char16_t unite) {
    debut = std::min(debut, texte_.Longueur());
    longueur = std::min(longueur, texte_.Longueur() - debut);
    std::fill_n(texte_.Texte().begin() + static_cast<std::ptrdiff_t>(debut), longueur, unite);
    if (!attributs_.empty())
      std::fill_n(attributs_.begin() + static_cast<std::ptrdiff_t>(debut), longueur,
                  BitsDAttributs{0});
  }
  // Writes `unites` over as many units from `debut` (clipped to the end), with no attribute: a
  // replacement of the same length, made in place.
  void Ecrase(uint64_t debut, std::u16string_view unites) {
    debut = std::min(debut, texte_.Longueur());
    const uint64_t longueur = std::min<uint64_t>(unites.size(), texte_.Longueur() - debut);
    std::copy_n(unites.begin(), longueur,
                texte_.Texte().begin() + static_cast<std::ptrdiff_t>(debut));
    if (!attributs_.empty())
      std::fill_n(attributs_.begin() + static_cast<std::ptrdiff_t>(debut), longueur,
                  BitsDAttributs{0});
  }

 private:
  S texte_;
  std::vector<BitsDAttributs> attributs_;
};

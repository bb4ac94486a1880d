// AppariementDeCrochets: one stack pass answers every opener of a line.
#include "markdown/AppariementDeCrochets.h"

#include <algorithm>

void AppariementDeCrochets::Apparie(const ChaineN& texte, uint64_t debut, uint64_t arret) {
  paires_.clear();
  pile_.clear();
  for (uint64_t i = debut; i < arret; ++i) {
    const char16_t c = texte[i];
    if (c == ouvrant_) {
      pile_.push_back(paires_.size());
      paires_.emplace_back(i, kSansFermant);
    } else if (c == fermant_ && !pile_.empty()) {
      paires_[pile_.back()].second = i;
      pile_.pop_back();
    }
  }
  valide_ = true;
  debut_ = debut;
  arret_ = arret;
  effaceJusqua_ = 0;
  curseur_ = 0;
}

std::optional<uint64_t> AppariementDeCrochets::Fermant(const ChaineN& texte, uint64_t position,
                                                       uint64_t arret) {
  // The match of an opener depends only on what follows it, up to the stop.
  const bool connu = valide_ && arret == arret_ && position >= debut_ && position < arret_ &&
                     effaceJusqua_ <= position;
  if (!connu) Apparie(texte, position, arret);
  // Questions mostly come in increasing order: the cursor then moves forward only.
  if (curseur_ >= paires_.size() || paires_[curseur_].first > position) curseur_ = 0;
  if (curseur_ + 8 < paires_.size() && paires_[curseur_ + 8].first <= position)
    curseur_ = static_cast<size_t>(std::lower_bound(paires_.begin() + curseur_, paires_.end(),
                                                    std::pair<uint64_t, uint64_t>(position, 0)) -
                                   paires_.begin());
  while (curseur_ < paires_.size() && paires_[curseur_].first < position) ++curseur_;
  if (curseur_ >= paires_.size() || paires_[curseur_].first != position) return std::nullopt;
  const uint64_t fermant = paires_[curseur_].second;
  if (fermant == kSansFermant) return std::nullopt;
  return fermant;
}

void AppariementDeCrochets::NoteEffacement(uint64_t debut, uint64_t fin) {
  if (valide_ && debut < arret_) effaceJusqua_ = std::max(effaceJusqua_, fin);
}

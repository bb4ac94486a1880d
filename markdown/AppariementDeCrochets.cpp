// AppariementDeCrochets: one stack pass answers every opener of a line.
#include "markdown/AppariementDeCrochets.h"

#include <algorithm>

#include "ferlane/ProchaineOccurrence.h"

void AppariementDeCrochets::Apparie(const ChaineN& texte, uint64_t debut, uint64_t arret) {
  // From bracket to bracket, sixteen units a step; the vectors keep their room from line to line.
  const std::u16string_view ligne = texte.Vue().substr(0, arret);
  ouvrants_.clear(), fermants_.clear(), pile_.clear();
  for (uint64_t i = debut; (i = TrouveUneDeDeux(ligne, i, ouvrant_, fermant_)) != kPasTrouve; ++i) {
    if (ligne[i] == ouvrant_) {
      pile_.push_back(static_cast<uint32_t>(ouvrants_.size()));
      ouvrants_.push_back(static_cast<uint32_t>(i));
      fermants_.push_back(kSansFermant);
    } else if (!pile_.empty()) {
      fermants_[pile_.back()] = static_cast<uint32_t>(i);
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
  if (curseur_ >= ouvrants_.size() || ouvrants_[curseur_] > position) curseur_ = 0;
  if (curseur_ + 8 < ouvrants_.size() && ouvrants_[curseur_ + 8] <= position)
    curseur_ = static_cast<size_t>(
        std::lower_bound(ouvrants_.begin() + static_cast<std::ptrdiff_t>(curseur_), ouvrants_.end(),
                         position) -
        ouvrants_.begin());
  while (curseur_ < ouvrants_.size() && ouvrants_[curseur_] < position) ++curseur_;
  if (curseur_ >= ouvrants_.size() || ouvrants_[curseur_] != position) return std::nullopt;
  if (fermants_[curseur_] == kSansFermant) return std::nullopt;
  return fermants_[curseur_];
}

void AppariementDeCrochets::NoteEffacement(uint64_t debut, uint64_t fin) {
  if (valide_ && debut < arret_) effaceJusqua_ = std::max(effaceJusqua_, fin);
}

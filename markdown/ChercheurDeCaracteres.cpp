// ChercheurDeCaracteres: searches that remember the stretch they found free.
#include "markdown/ChercheurDeCaracteres.h"

#include <algorithm>
#include <stdexcept>

#include "ferlane/ProchaineOccurrence.h"

ChercheurDeCaracteres::ChercheurDeCaracteres(const ChaineN& texte, std::u16string_view ensemble)
    : texte_(texte), ensemble_(ensemble) {
  if (ensemble.empty() || ensemble.size() > 4)
    throw std::invalid_argument("ChercheurDeCaracteres: one to four units");
  for (const char16_t c : ensemble) {
    if (c >= 128) throw std::invalid_argument("ChercheurDeCaracteres: ASCII units only");
    membres_[c >> 6] |= uint64_t{1} << (c & 63);
  }
}

uint64_t ChercheurDeCaracteres::Cherche(uint64_t debut, uint64_t limite) const {
  if (debut >= limite) return limite;
  const uint64_t p = TrouveUneDe(texte_.Vue().substr(0, limite), debut, ensemble_);
  return p == kPasTrouve ? limite : p;
}

uint64_t ChercheurDeCaracteres::Prochain(uint64_t debut, uint64_t limite) {
  limite = std::min(limite, texte_.Longueur());
  if (debut >= limite) return limite;
  if (debut > libreFin_) {
    libreFin_ = Cherche(debut, limite);
    libreDebut_ = debut;
    trouve_ = libreFin_ < limite;
    return libreFin_;
  }
  if (debut < libreDebut_) {
    // A walk that went back: search the gap only, then carry on with what is known.
    const uint64_t borne = std::min(limite, libreDebut_);
    const uint64_t trouve = Cherche(debut, borne);
    if (trouve < borne || borne == limite) {
      if (trouve < borne) libreDebut_ = debut, libreFin_ = trouve, trouve_ = true;
      return trouve;
    }
    libreDebut_ = debut;
  }
  if (libreFin_ >= limite) return limite;
  if (trouve_ && EstMembre(texte_[libreFin_])) return libreFin_;
  libreFin_ = Cherche(libreFin_, limite);
  trouve_ = libreFin_ < limite;
  return libreFin_;
}

// LignesColonnes: one forward walk over the document.
#include "cli/LignesColonnes.h"

#include <stdexcept>

#include "ferlane/CodageUtf.h"

// The low half of a surrogate pair is the same character as the high half before it.
bool LignesColonnes::EstSecondeMoitie(uint64_t position) const {
  const char16_t c = texte_[position];
  return EstBasSubstitut(c) && position > 0 && EstHautSubstitut(texte_[position - 1]);
}

LignesColonnes::Position LignesColonnes::Depuis(uint64_t position) {
  if (position < position_) throw std::logic_error("LignesColonnes: positions go forward only");
  for (; position_ < position && position_ < texte_.size(); ++position_) {
    const char16_t c = texte_[position_];
    const bool finDeLigne =
        c == u'\n' || c == u'\u2028' || c == u'\u2029' ||
        (c == u'\r' && (position_ + 1 >= texte_.size() || texte_[position_ + 1] != u'\n'));
    if (finDeLigne) {
      ++courante_.ligne;
      courante_.colonne = 1;
    } else if (!EstSecondeMoitie(position_)) {
      ++courante_.colonne;
    }
  }
  return courante_;
}

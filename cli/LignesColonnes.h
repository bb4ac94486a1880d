// LignesColonnes: document positions (UTF-16 units) as the 1-based line and column editors
// show. A line ends at a line feed, at a carriage return not followed by one, and at U+2028 and
// U+2029; a CR LF pair is one line end. Columns count characters (code points), so an astral
// character is one column. Positions must be asked in increasing order: the walk resumes where
// the last answer left it, so a whole document costs one pass.
#pragma once

#include <cstdint>
#include <string_view>

class LignesColonnes {
 public:
  explicit LignesColonnes(std::u16string_view texte) : texte_(texte) {}

  struct Position {
    uint64_t ligne = 1;
    uint64_t colonne = 1;
  };
  Position Depuis(uint64_t position);

 private:
  bool EstSecondeMoitie(uint64_t position) const;

  std::u16string_view texte_;
  uint64_t position_ = 0;
  Position courante_;
};

// The LaTeX symbol commands: a command name (without its backslash) and the text that replaces
// the command. The map is built once when the library is loaded and is read-only afterwards, so
// any thread may look names up at any time.
#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "ferlane/ChaineN.h"

// Looks names up by view, so that a lookup allocates nothing.
struct HachageNomSymbole {
  using is_transparent = void;
  size_t operator()(std::u16string_view nom) const { return std::hash<std::u16string_view>{}(nom); }
  size_t operator()(const ChaineN& nom) const { return nom.hash(); }
};
struct EgaliteNomSymbole {
  using is_transparent = void;
  bool operator()(std::u16string_view a, std::u16string_view b) const { return a == b; }
};

using TableDeSymboles = std::unordered_map<ChaineN, ChaineN, HachageNomSymbole, EgaliteNomSymbole>;

// 262 entries. The keys "c{c}" and "c{C}" hold braces: they are reached through the cedilla rule
// of the scanner, never as a plain name.
extern const TableDeSymboles kSymbolesLaTeX;

// The replacement of a symbol name, or null when the name is no symbol.
const ChaineN* TrouveSymboleLaTeX(std::u16string_view nom);

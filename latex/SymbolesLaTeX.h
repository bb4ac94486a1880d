// The LaTeX symbol commands: a command name (without its backslash) and the text that replaces
// the command. The index is built once when the library is loaded and is read-only afterwards,
// so any thread may look names up at any time.
#pragma once

#include <string_view>

#include "ferlane/ChaineN.h"

// The replacement of a symbol name, or null when the name is no symbol. The keys "c{c}" and
// "c{C}" hold braces: they are reached through the cedilla rule of the scanner, never as a plain
// name.
const ChaineN* TrouveSymboleLaTeX(std::u16string_view nom);

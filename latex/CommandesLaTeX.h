// The LaTeX command table: every command the converter knows by name, with what it does to its
// arguments (option bits) and the style it gives them. Symbols and accents are elsewhere
// (SymbolesLaTeX.h, EquivalentsLaTeX.h); a name found in neither is an unknown command.
//
// The tables are constant data, ready before any code runs, and read-only: any thread may read
// them at any time.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "ferlane/Convertisseur.h"

// Option bits of a command.
enum eOptionsCommande : uint32_t {
  eCmdBloc = 1,               // the command starts a block: its name gives way to a paragraph break
  eCmdSautUnArgument = 2,     // the first brace argument is dropped, the later ones stay
  eCmdSautDeuxArguments = 4,  // the first two brace arguments are dropped, the later ones stay
  eCmdParentheses = 8,        // a kept argument is put between "(" and ")"
  eCmdTitre = 16,             // sectioning command: paragraph break before and after
  eCmdGlossaire = 32,         // glossary or acronym command
};

struct CommandeLaTeX {
  std::u16string_view nom;  // without the backslash
  uint32_t options;         // eOptionsCommande bits
  uint32_t style;           // eStyle bits
};

// Searched in order; the first record whose name is exactly the command's letters wins.
extern const std::span<const CommandeLaTeX> kCommandesLaTeX;

// The commands that hold prose inside a display environment; only their names are used.
inline constexpr CommandeLaTeX kCommandesIntertexte[] = {
    {u"intertext", eCmdBloc, 0},
    {u"shortintertext", eCmdBloc, 0},
};

// Records with no name, for the arguments the scanner meets outside a command: a bare brace
// group, and what follows "^" or "_".
inline constexpr CommandeLaTeX kGroupe{u"", 0, 0};
inline constexpr CommandeLaTeX kExposant{u"", 0, eExposant};
inline constexpr CommandeLaTeX kIndice{u"", 0, eIndice};

// The record of a command name, or null when kCommandesLaTeX has none.
const CommandeLaTeX* TrouveCommandeLaTeX(std::u16string_view nom);

// Is a brace argument of `commande`, the `nbAccolades`-th one, kept? Bracket arguments and the
// arguments of an unknown command (null) never are.
inline bool ArgumentGardeLaTeX(const CommandeLaTeX* commande, bool accolade, uint32_t nbAccolades) {
  if (commande == nullptr || !accolade) return false;
  if (commande->options & eCmdSautUnArgument) return nbAccolades >= 2;
  if (commande->options & eCmdSautDeuxArguments) return nbAccolades >= 3;
  return true;
}

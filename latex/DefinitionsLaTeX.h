// DefinitionsLaTeX: the commands and environments a document defines for itself, read for the
// prose profile so that a definition vanishes and each use treats its arguments by what the
// definition does with them.
//
// Read: \newcommand, \renewcommand, \providecommand, \DeclareRobustCommand (starred or not),
// \def, \gdef, \edef, \xdef, \DeclareMathOperator, \newenvironment, \renewenvironment, and the
// document-command forms (\NewDocumentCommand and kin, \NewDocumentEnvironment and kin).
//
// A parameter #k is kept as prose when the body shows it where the scan would keep prose (in
// plain text, a bare group, or an argument the command table keeps), not prose when it shows
// it in a formula or a key argument (\ref, \cite), and dropped otherwise (not shown, or in a
// dropped argument). A command with no parameter defined as plain words stands for them.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "ferlane/ChaineN.h"
#include "latex/AppariementCrochets.h"

struct DeclarationLaTeX {
  // One letter of OptionsProseLaTeX::eArgument a brace argument, in order. An environment's
  // letters start with the one of its name's group after \begin.
  std::u16string arguments;
  std::optional<ChaineN> texte;  // what a command with no argument stands for, when known
  bool utilisateur = false;      // declared by the user: wins over the built-in table
};
// By name without the backslash; an environment's by its bare name. Looked up at every command
// of a document that defines some: hashed, by a view of the name as it stands in the text.
struct HachageDeNom {
  using is_transparent = void;
  size_t operator()(std::u16string_view nom) const { return std::hash<std::u16string_view>{}(nom); }
};
using DeclarationsLaTeX =
    std::unordered_map<std::u16string, DeclarationLaTeX, HachageDeNom, std::equal_to<>>;

struct DefinitionLaTeX {
  bool environnement = false;
  std::u16string nom;
  DeclarationLaTeX declaration;
  uint64_t fin = 0;  // after the whole definition
};

// Is `nom` (a command's letters, without a star) one that defines a command or an environment?
bool EstDefinisseurLaTeX(std::u16string_view nom);

// The definition made by the defining command `definisseur` whose name (and star) ends at
// `apres`, read up to `fin` at most; nothing when it is malformed or runs past `fin`.
std::optional<DefinitionLaTeX> LitDefinitionLaTeX(const ChaineN& texte,
                                                  const AppariementCrochets& crochets,
                                                  std::u16string_view definisseur, uint64_t apres,
                                                  uint64_t fin);

// The letter of each parameter #1..#nb by where `corps` shows it.
std::u16string RolesDesParametres(std::u16string_view corps, uint32_t nb);

// OptionsProseLaTeX: what the prose profile changes in the LaTeX converters. Every default is
// the reference behaviour, so a converter built with a default record reads as it always did.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct OptionsProseLaTeX {
  // What a user-declared command or environment does with each of its arguments.
  enum eArgument : char {
    eGarde = 'k',     // kept as prose
    eSupprime = 'd',  // dropped
    eNonProse = 'n',  // kept in the text, marked as not prose
  };
  struct CommandeDeclaree {
    std::u16string nom;        // without the backslash: "myref"; an environment's bare name
    std::u16string arguments;  // one eArgument letter per brace argument, in order: "dk"
  };

  bool Actif = false;                            // off: the reference converters, bit for bit
  std::vector<CommandeDeclaree> Commandes;       // user-declared commands
  std::vector<CommandeDeclaree> Environnements;  // user-declared environments (their arguments)
  std::vector<std::u16string> EnvironnementsVerbatim;  // user-named verbatim-like environments
};

// "NAME:LETTERS" (the command-line form, UTF-8) as a declaration: "myref:nk", "\\myref:nk",
// "note:k", "figure*:" (an environment's name may end with a star). Throws
// std::invalid_argument with a message naming what is wrong.
OptionsProseLaTeX::CommandeDeclaree LitDeclarationLaTeX(std::string_view declaration,
                                                        bool environnement);

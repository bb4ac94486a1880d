// OptionsProseLaTeX: reading a declaration from its command-line form.
#include "latex/OptionsProseLaTeX.h"

#include <stdexcept>

OptionsProseLaTeX::CommandeDeclaree LitDeclarationLaTeX(std::string_view declaration,
                                                        bool environnement) {
  const std::string texte(declaration);
  const size_t deuxPoints = declaration.rfind(':');
  if (deuxPoints == std::string_view::npos)
    throw std::invalid_argument("\"" + texte + "\": expected NAME:ARGUMENTS, as in \"myref:nk\"");
  std::string_view nom = declaration.substr(0, deuxPoints);
  const std::string_view lettres = declaration.substr(deuxPoints + 1);
  if (!environnement && nom.starts_with('\\')) nom.remove_prefix(1);
  std::string_view lettresDuNom = nom;
  if (environnement && lettresDuNom.ends_with('*')) lettresDuNom.remove_suffix(1);
  if (lettresDuNom.empty() ||
      lettresDuNom.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ") !=
          std::string_view::npos)
    throw std::invalid_argument("\"" + texte + "\": a name is ASCII letters" +
                                (environnement ? " (and a final star)" : ""));
  if (lettres.find_first_not_of("kdn") != std::string_view::npos)
    throw std::invalid_argument("\"" + texte +
                                "\": one letter an argument: k (kept), d (dropped), n (not prose)");
  OptionsProseLaTeX::CommandeDeclaree d;
  d.nom.assign(nom.begin(), nom.end());
  d.arguments.assign(lettres.begin(), lettres.end());
  return d;
}

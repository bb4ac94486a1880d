// Small helpers shared by the tests: UTF-8 ↔ UTF-16, reading files, running the command.
#pragma once

#include <string>
#include <string_view>

#include "ferlane/ChaineN.h"

std::string VersUtf8(std::u16string_view texte);
std::u16string Utf16(std::string_view utf8);
std::string LitFichier(const std::string& chemin);

struct ResultatCommande {
  int statut = -1;
  std::string sortie;   // standard output
  std::string erreurs;  // standard error
};
// Runs the `filtres` executable with `arguments` (shell-quoted by the caller), feeding `entree`
// on standard input.
ResultatCommande LanceFiltres(const std::string& arguments, const std::string& entree = "");

// A file in /tmp holding `contenu`, removed when the object goes.
class FichierTemporaire {
 public:
  explicit FichierTemporaire(const std::string& contenu);
  ~FichierTemporaire();
  FichierTemporaire(const FichierTemporaire&) = delete;
  FichierTemporaire& operator=(const FichierTemporaire&) = delete;
  const std::string& Chemin() const { return chemin_; }

 private:
  std::string chemin_;
};

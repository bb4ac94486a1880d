// `filtres apply`: writes corrections of the internal text back into a document.
//
// The corrections are JSON lines {"debut": D, "fin": F, "texte": T} in internal positions. The
// corrected document goes to standard output, to -o FILE, or back over the document with
// --in-place, through a temporary file renamed over it once all is written, so a failure
// leaves the document intact. Each refused correction prints one line on standard error.
#pragma once

#include <string>

#include "framework/FiltresCorrecteur.h"

struct OptionsApplication {
  std::string corrections;  // the JSON lines' file ("-": standard input)
  std::string format = "auto";
  std::string codage;
  std::string document;
  std::string sortie;  // -o
  bool surPlace = false;
};

// Answers the exit status: 0 when every correction applied, 1 when some were refused. Throws
// ErreurUtilisateur for unreadable input.
int AppliqueDocument(const OptionsApplication& options, FiltresCorrecteur::Params& params);

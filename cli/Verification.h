// `filtres check`: spell-checks documents in process with Hunspell's library and prints each
// unknown word at its line and column in the document, with Hunspell's suggestions.
//
// Words are cut from the chain's internal text by ICU's word break iterator; a word is checked
// only when it holds letters and none of its units is marked as not prose. Each answer is
// asked once per distinct word, so a long document costs one dictionary look-up per word and
// one suggestion search per distinct unknown word.
#pragma once

#include <string>
#include <vector>

#include "framework/FiltresCorrecteur.h"

struct OptionsVerification {
  std::string langue = "en_US";
  std::string dictionnaire;  // a .dic/.aff pair's path without extension; overrides langue
  bool json = false;
  std::string format = "auto";
  std::string codage;
  std::vector<std::string> fichiers;
};

// Prints the findings on standard output; answers the exit status: 0 when no word is
// unknown, 1 when some are. Throws ErreurUtilisateur for a missing dictionary or file.
int VerifieDocuments(const OptionsVerification& options, FiltresCorrecteur::Params& params);

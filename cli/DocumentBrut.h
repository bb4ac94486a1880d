// DocumentBrut: a document as its bytes and its decoded text, for the subcommands that write it
// back. Corrections re-encode only the stretches they change: every other byte, line ends,
// byte-order mark and encoding included, comes out as it went in.
#pragma once

#include <string>
#include <vector>

#include "ferlane/ChaineN.h"
#include "framework/Corrections.h"

struct DocumentBrut {
  std::string octets;
  ChaineN texte;
  std::string codage;  // the encoding named by --encoding, "" for UTF-8 or UTF-16 with a BOM
};

// Throws ErreurUtilisateur as LitDocument does.
DocumentBrut LitDocumentBrut(const std::string& chemin, const std::string& codage);

// The document's bytes with the placed corrections (document positions, in order) written in.
std::string EcritCorrections(const DocumentBrut& document,
                             const std::vector<CorrectionPlacee>& placees);

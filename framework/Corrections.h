// AppliqueCorrections: writes corrections of the internal text back into the document. Each
// correction names a stretch of the chain's internal text (UTF-16 units, as the JSON output and
// the checkers give them) and its new text; the stretch goes back through the map to the
// document, and the new text is re-encoded in the document's own convention by the converters
// that read it (an accent command in a LaTeX file that writes its accents so, a reference in an
// HTML page that writes its characters so; "&", "<", "%", "$"... escaped as the format needs).
//
// A correction is refused, with a one-line reason naming the document offset, when it lies
// outside the text, overlaps one already taken, cuts through a replacement (half of an accent
// command) or covers markup that is no textual equivalent (a tag, a command, a placeholder);
// the others still apply. The document outside the corrected stretches is left as it was.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ferlane/ChaineN.h"
#include "framework/FiltresCorrecteur.h"

struct Correction {
  uint64_t debut = 0;  // internal positions, end exclusive
  uint64_t fin = 0;
  ChaineN texte;
};

struct CorrectionRefusee {
  Correction correction;
  std::string raison;  // one line
};

// One correction taken: where it goes in the document, and what it writes there.
struct CorrectionPlacee {
  uint64_t debut = 0;  // document positions, end exclusive
  uint64_t fin = 0;
  ChaineN texte;  // re-encoded for the document
};

struct ResultatCorrections {
  ChaineN document;
  std::vector<CorrectionRefusee> refusees;
  std::vector<CorrectionPlacee> placees;  // in document order
};

// Runs the filter set of `params` over `document`, then writes back every correction it can.
ResultatCorrections AppliqueCorrections(const ChaineN& document, FiltresCorrecteur::Params& params,
                                        std::vector<Correction> corrections);

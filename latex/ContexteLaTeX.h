// ContexteLaTeX: one range of a LaTeX document under scan. The whole text has one; each kept
// argument, brace group and formula gets a nested one, which starts with zero counters and no
// glossary, and adds its counters to its parent's when its scan ends. What every context of one
// run shares (the text, the two callables) is held once by the run (AnalyseurLaTeX).
#pragma once

#include <cstdint>
#include <memory>

#include "latex/EtatGlossaire.h"

struct ContexteLaTeX {
  ContexteLaTeX* parent = nullptr;  // null for the whole text
  uint32_t nbNonAscii = 0;          // ordinary characters whose code is 128 or more
  uint32_t nbAccentsCommandes = 0;  // accent commands converted
  uint32_t nbCaracteres = 0;        // ordinary characters, plus one a converted accent command
  uint64_t debut = 0;               // the range [debut, fin)
  uint64_t fin = 0;
  uint64_t position = 0;  // where the scan stands
  // A command known neither as a command nor as a symbol (nor "begin" or "end") stood directly
  // in this range; never passed up.
  bool commandeInconnue = false;
  // Made at the first glossary command standing directly in this range, released with it:
  // definitions serve only the references of the same range.
  std::unique_ptr<EtatGlossaire> glossaire;
};

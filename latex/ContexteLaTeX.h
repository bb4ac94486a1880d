// ContexteLaTeX: one range of a LaTeX document under scan. The whole text has one; each kept
// argument, brace group and formula gets a nested one. A million nested braces make a million
// contexts, so one holds only what its own scan reads: where it ends, where the scan stands, and
// two facts a formula's end asks about its content. What every context of one run shares (the
// text, the callables, the counts, the glossaries and the treatments waiting for a range's end)
// is held once by the run (AnalyseurLaTeX).
#pragma once

#include <cstdint>

struct ContexteLaTeX {
  uint64_t fin = 0;       // the range ends here
  uint64_t position = 0;  // where the scan stands
  // The run's count of ordinary characters when the range opened: a formula's own count is what
  // the run counted since.
  uint32_t caracteresAvant = 0;
  // A command known neither as a command nor as a symbol (nor "begin" or "end") stood directly
  // in this range; never passed up.
  bool commandeInconnue = false;
  // A treatment waits for this range's end on the run's stack of them. Most ranges are brace
  // groups, which leave nothing to do.
  bool attendUneSuite = false;
};
static_assert(sizeof(ContexteLaTeX) == 24, "one context a nested brace: kept small");

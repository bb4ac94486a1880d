// `filtres batch`: converts many documents in one run, on several threads, for streaming
// engines (a pipe of JSON lines in, JSON lines out).
//
// Each input line is {"id": ..., "path": FILE} or {"id": ..., "text": TEXT, "format": F}
// ("format" optional: detected). Each gives one output line, in input order:
// {"id": ..., "format": ..., "text": ..., "styles": [...], "map": [...]}, or {"id": ..., "error":
// "..."} for that line alone: a bad line never stops the batch. Lines are read in chunks, each
// chunk converted on the threads and written before the next is read, so memory stays bounded
// on an endless stream.
#pragma once

#include "framework/FiltresCorrecteur.h"

struct OptionsLot {
  unsigned taches = 0;   // threads; 0: the machine's cores
  bool progres = false;  // a progress line on standard error
};

// Reads standard input to its end; answers 0 (per-line errors are in the output).
int TraiteLot(const OptionsLot& options, const FiltresCorrecteur::Params& modele,
              const std::string& codage);

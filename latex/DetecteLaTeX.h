// DetecteLaTeX: whether a text is LaTeX, from its first 10,000 characters only.
#pragma once

#include <cstdint>

#include "ferlane/ChaineN.h"
#include "ferlane/Convertisseur.h"

// Only the start of a text is looked at, so that detection costs the same on any document.

// True when a backslash inside the window begins one of kMotsClesLaTeX ("\usepackage",
// "\input", "\begin", "\chapter", "\relax"). The test is a prefix test ("\inputenc" counts) and
// the word may run past the window. No side effect; safe from any thread.
bool DetecteLaTeX(const ChaineN& texte);

// DetecteMarkDown: whether a text looks like Markdown, from its first 10000 units. Markdown
// tokens found near line starts are weighed against the number of lines; light tokens (list
// markers, a single "#", "---", "](", "]:") only count once a heavy one (an image, a footnote
// mark, an "===" underline, a "##" heading, a table line) is present. The format detection asks
// it after the HTML and LaTeX detectors. No state; safe on any number of threads.
#pragma once

#include <cstdint>

#include "ferlane/ChaineN.h"
#include "ferlane/Convertisseur.h"

inline constexpr float kSeuilMarkDown = 0.8f;  // score per line to be Markdown

// The score of a text: the tokens' weight per line (single precision), or 0 without any line
// break in the window.
float ScoreMarkDown(const ChaineN& texte);
bool DetecteMarkDown(const ChaineN& texte);

// TexteLisible: the internal text as a checker that reads plain text should see it. Spans
// marked as not prose (formulas, code, keys, addresses) are left out, and the marker characters
// become what keeps sentences and lines apart:
//   U+000E (a list item, a table row or cell, a line-break tag) → a line feed;
//   U+0007, U+0011 (a note reference, a link title's bounds) → nothing;
// a left-out span or marker between two letters or digits leaves one space, so no two words
// are glued. The exact text, with its styles and map, stays what the chain produced: this
// view is for printing, its positions are not the map's.
#pragma once

#include <functional>
#include <string_view>

#include "ferlane/ChaineN.h"
#include "ferlane/MapChaines.h"

ChaineN TexteLisible(const TexteAvecAttributs& interne);

// The same text handed over in pieces as they come (a run of the internal text, a line feed, a
// space), so that a writer encodes it as it goes without a copy of the whole. A piece may end
// between the two units of a surrogate pair.
void ParcoursTexteLisible(const TexteAvecAttributs& interne,
                          const std::function<void(std::u16string_view)>& morceau);

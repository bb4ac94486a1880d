// Output of the command: the JSON result, the reports, and the plain text in UTF-8. Each
// writes to its stream in large blocks.
//
// JSON: Texts are UTF-16 and may hold unpaired surrogates, which UTF-8
// cannot carry: they are written as \uXXXX escapes, so every text round-trips exactly.
#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "ferlane/ChaineN.h"
#include "ferlane/MapChaines.h"

// A JSON string literal, quotes included.
std::string ChaineJson(std::u16string_view texte);

// {"format": ..., "text": ..., "styles": [...], "map": [...]} on one line.
void EcritResultatJson(std::ostream& sortie, std::string_view format,
                       const MapChaines<TexteAvecAttributs>& resultat);

// The text in UTF-8 (an unpaired surrogate as U+FFFD), encoded a block at a time.
void EcritUtf8(std::ostream& sortie, std::u16string_view texte);
// The readable text of `interne` (TexteLisible) in UTF-8, written as it is made.
void EcritTexteLisibleUtf8(std::ostream& sortie, const TexteAvecAttributs& interne);

// One report a line, in report order.
void EcritRemplaceJson(std::ostream& sortie, MapPos::Intervalle intervalle, const ChaineN& texte,
                       MapPos::Attributs attributs);
void EcritMarqueJson(std::ostream& sortie, MapPos::Intervalle intervalle, uint32_t styles);

// The document as annotated text, {"annotation":[{"text":...},{"markup":...,"interpretAs":...}]}:
// identity stretches as text, every other segment of the map as markup interpreted as its
// internal text. Every "text" and "markup" together give the document; every "text" and
// "interpretAs" the internal text.
void EcritAnnotationJson(std::ostream& sortie, const MapChaines<TexteAvecAttributs>& resultat);

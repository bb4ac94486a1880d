// The Markdown analyser's vocabulary: the delimited spans its first passes take, the entities
// its last pass decodes, the list flags of its block loop, and the marker characters it writes
// into the internal text. Built once at load, read-only after.
#pragma once

#include <cstdint>
#include <string_view>
#include <utility>

#include "ferlane/ChaineN.h"

// Options of a delimited span.
enum eOptionDelimiteur : uint32_t {
  eDelimEntier = 2,    // the whole span, delimiters and content, is removed
  eDelimNonTexte = 4,  // the delimiters are removed and the content is reported as not prose
};

struct DelimiteurMarkDown {
  std::u16string_view ouvrant;
  std::u16string_view fermant;
  uint32_t options;  // eOptionDelimiteur bits
};

// In the order of use: fenced code first, so that its fences are gone before the code spans
// are looked for. A single backtick is no delimiter: it stays in the text.
inline constexpr DelimiteurMarkDown kDelimiteursMarkDown[] = {
    {u"```", u"```", eDelimEntier},
    {u"``", u"``", eDelimNonTexte},
};

// Decoded in this order, one pass each; no other entity is decoded.
inline constexpr std::pair<std::u16string_view, std::u16string_view> kEntitesMarkDown[] = {
    {u"&copy;", u"\u00A9"},
    {u"&amp;", u"&"},
    {u"&lt;", u"<"},
    {u"&gt;", u">"},
};

// The structural widths of the block rules.
inline constexpr uint64_t kIndentationMaxBloc = 3;       // spaces before a block marker
inline constexpr uint64_t kIndentationCode = 4;          // spaces that make a line code
inline constexpr uint64_t kLargeurTabulation = 8;        // a leading tab, in a list item
inline constexpr uint64_t kMarquesLigneHorizontale = 3;  // "***", "---", "___" at least
inline constexpr uint64_t kNiveauxDeTitre = 6;           // "#" to "######"

// Flags shared by the block loop and the items of one list.
enum eDrapeauListe : uint32_t {
  eListeNumerotee = 1,  // the list is ordered
  eListeTerminee = 8,   // the list has ended
};

// What the analyser writes into the internal text.
inline const ChaineN kMarqueAppelDeNote(u'\u0007');  // a footnote reference
inline const ChaineN kMarqueSeparation(u'\u000E');   // table cell, line-break tag, note definition
inline const ChaineN kMarqueTitre(u'\u0011');        // link title boundary, comment ends
inline const ChaineN kMarquePuce(u'\u2022');         // a list item's marker
inline const ChaineN kMarqueEspace(u' ');            // a line break inside a block

// The unit a reported stretch is overwritten with in the working copy: no blank, no line end,
// no marker, so that later passes no longer see what was reported.
inline constexpr char16_t kUniteEffacee = u'\u0007';

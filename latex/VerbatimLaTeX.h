// VerbatimLaTeX: the stretches of a LaTeX document that are read as they are written (code), for
// the prose profile. Inside them a brace opens nothing and a "%" starts no comment, so both the
// comment converter and the LaTeX scan find them first and step over them.
//
// Inline: \verb and \verb* with any delimiter on the same line, \lstinline with a delimiter or
// braces, \mintinline{lang} likewise. Blocks: the environments of kEnvironnementsVerbatim and the
// ones the user names. A comment is stepped over while searching, so "% \begin{verbatim}" opens
// nothing. An inline one whose delimiter does not come back on its line runs to the line's end;
// an environment never closed runs to the end of its paragraph.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "ferlane/ChaineN.h"
#include "latex/OptionsProseLaTeX.h"

struct RegionVerbatim {
  uint64_t debut = 0;         // the backslash of \verb or \begin
  uint64_t debutContenu = 0;  // after the opening delimiter, or after \begin{name} and its options
  uint64_t finContenu = 0;    // the closing delimiter, or the backslash of \end{name}
  uint64_t fin = 0;           // after the closing delimiter or \end{name}
  bool bloc = false;          // an environment: stands as a paragraph of its own
  bool operator==(const RegionVerbatim&) const = default;
};

// Verbatim-like environments known by name. `options`: what may follow \begin{name} before
// the content: "o" a bracket argument, "om" a bracket argument then a brace one.
struct EnvironnementVerbatim {
  std::u16string_view nom;
  std::u16string_view options;
};
inline constexpr EnvironnementVerbatim kEnvironnementsVerbatim[] = {
    {u"verbatim", u""},   {u"verbatim*", u""},  {u"Verbatim", u"o"},     {u"Verbatim*", u"o"},
    {u"BVerbatim", u"o"}, {u"LVerbatim", u"o"}, {u"lstlisting", u"o"},   {u"minted", u"om"},
    {u"comment", u""},    {u"spverbatim", u""}, {u"filecontents", u"o"}, {u"filecontents*", u"o"},
};

// Every verbatim stretch of `texte`, in order, none overlapping.
std::vector<RegionVerbatim> TrouveVerbatims(const ChaineN& texte, const OptionsProseLaTeX& prose);

// The first position at or after `debut` where a paragraph break (a line with nothing but
// blanks) begins, or `fin`.
uint64_t FinDeParagraphe(std::u16string_view texte, uint64_t debut, uint64_t fin);

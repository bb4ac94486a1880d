// The LaTeX regions: comments, formulas and formula environments, each known by its opening and
// closing strings and the treatment its option bits select (see AnalyseurLaTeX.h, regions).
// Constant data, read-only, safe to read from any thread.
#pragma once

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "ferlane/ClesUniques.h"

// Option bits of a region. Only four combinations occur:
//   eRegionBrute + eRegionGardeFermant   deleted up to its closing string (comments);
//   eRegionBloc + eRegionBrute           display environment;
//   eRegionFormule                       formula;
//   eRegionParagraphe + eRegionFormule   formula that may stand as a paragraph of its own.
enum eOptionsRegion : uint32_t {
  eRegionBloc = 1,
  eRegionBrute = 2,         // the content is not scanned
  eRegionFormule = 4,       // the content is scanned as a formula
  eRegionGardeFermant = 8,  // the closing string stays in the text
  eRegionParagraphe = 16,
};

struct DelimiteurLaTeX {
  std::u16string_view ouvrant;
  std::u16string_view fermant;
  uint32_t options;  // eOptionsRegion bits
};

inline constexpr DelimiteurLaTeX kCommentaire{u"%", u"\n", eRegionBrute | eRegionGardeFermant};
inline constexpr DelimiteurLaTeX kFormuleDouble{u"$$", u"$$", eRegionParagraphe | eRegionFormule};
inline constexpr DelimiteurLaTeX kFormuleSimple{u"$", u"$", eRegionFormule};
// Tried in this order at a backslash followed by a character that is not a letter.
inline constexpr DelimiteurLaTeX kFormulesCommandes[] = {
    {u"\\[", u"\\]", eRegionParagraphe | eRegionFormule},
    {u"\\(", u"\\)", eRegionFormule},
};

inline constexpr uint32_t kEnvironnementAffiche = eRegionBloc | eRegionBrute;

// Tried in this order at "\begin". Spelt exactly so: "\begin {equation}" is no formula.
inline constexpr DelimiteurLaTeX kEnvironnementsFormules[] = {
    {u"\\begin{equation}", u"\\end{equation}", kEnvironnementAffiche},
    {u"\\begin{equation*}", u"\\end{equation*}", kEnvironnementAffiche},
    {u"\\begin{align}", u"\\end{align}", kEnvironnementAffiche},
    {u"\\begin{align*}", u"\\end{align*}", kEnvironnementAffiche},
    {u"\\begin{alignat}", u"\\end{alignat}", kEnvironnementAffiche},
    {u"\\begin{alignat*}", u"\\end{alignat*}", kEnvironnementAffiche},
    {u"\\begin{gather}", u"\\end{gather}", kEnvironnementAffiche},
    {u"\\begin{gather*}", u"\\end{gather*}", kEnvironnementAffiche},
    {u"\\begin{eqnarray}", u"\\end{eqnarray}", kEnvironnementAffiche},
    {u"\\begin{eqnarray*}", u"\\end{eqnarray*}", kEnvironnementAffiche},
    {u"\\begin{multline}", u"\\end{multline}", kEnvironnementAffiche},
    {u"\\begin{multline*}", u"\\end{multline*}", kEnvironnementAffiche},
    {u"\\begin{flalign}", u"\\end{flalign}", kEnvironnementAffiche},
    {u"\\begin{flalign*}", u"\\end{flalign*}", kEnvironnementAffiche},
    {u"\\begin{cases}", u"\\end{cases}", kEnvironnementAffiche},
    {u"\\begin{cases*}", u"\\end{cases*}", kEnvironnementAffiche},
    {u"\\begin{dcases}", u"\\end{dcases}", kEnvironnementAffiche},
    {u"\\begin{dcases*}", u"\\end{dcases*}", kEnvironnementAffiche},
    {u"\\begin{program}", u"\\end{program}", kEnvironnementAffiche},
    {u"\\begin{lstlisting}", u"\\end{lstlisting}", kEnvironnementAffiche},
    {u"\\begin{picture}", u"\\end{picture}", kEnvironnementAffiche},
    {u"\\begin{tikzpicture}", u"\\end{tikzpicture}", kEnvironnementAffiche},
    {u"\\begin{displaymath}", u"\\end{displaymath}", kEnvironnementAffiche},
    {u"\\begin{math}", u"\\end{math}", eRegionFormule},
};
// Every opening above starts so and has a name after it (the scan compares the name's first
// letter before the whole).
inline constexpr std::u16string_view kDebutEnvironnement = u"\\begin{";
static_assert(std::ranges::all_of(kEnvironnementsFormules, [](const DelimiteurLaTeX& d) {
  return d.ouvrant.starts_with(kDebutEnvironnement) &&
         d.ouvrant.size() > kDebutEnvironnement.size();
}));
// Tried in order, the first match wins: no opening may appear twice.
static_assert(ClesUniques(kEnvironnementsFormules,
                          [](const DelimiteurLaTeX& d) { return d.ouvrant; }),
              "an environment appears twice in kEnvironnementsFormules");

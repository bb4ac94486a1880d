// kJetonsMarkDown: the tokens whose occurrences near line starts make a text look like
// Markdown, with their weights. Examined in this order (the numbered markers stop the walk at
// the first one that does not occur). Built once at load, read-only after.
#pragma once

#include <iterator>
#include <string_view>

#include "ferlane/ClesUniques.h"

struct JetonMarkDown {
  std::u16string_view jeton;
  float poids;          // added for each occurrence; above 1: a heavy token
  bool enDebutDeLigne;  // counts only right after a line break
  bool arretSiAbsent;   // without an occurrence of this row, the rows after it are not examined
};

inline constexpr JetonMarkDown kJetonsMarkDown[] = {
    {u"![", 20.0f, false, false}, {u"](", 1.0f, false, false},  {u"]:", 1.0f, false, false},
    {u"[^", 20.0f, false, false}, {u"===", 10.0f, true, false}, {u"---", 1.0f, true, false},
    {u"#", 1.0f, true, false},    {u"##", 9.0f, true, false},   {u"|", 5.0f, true, false},
    {u"*", 1.0f, true, false},    {u"+", 1.0f, true, false},    {u"-", 1.0f, true, false},
    {u"1.", 1.0f, true, false},   {u"2.", 1.0f, true, true},    {u"3.", 1.0f, true, true},
    {u"4.", 1.0f, true, true},    {u"5.", 1.0f, true, true},    {u"6.", 1.0f, true, true},
    {u"7.", 1.0f, true, true},    {u"8.", 1.0f, true, true},    {u"9.", 1.0f, true, true},
};
static_assert(ClesUniques(kJetonsMarkDown, [](const JetonMarkDown& j) { return j.jeton; }),
              "a token appears twice in kJetonsMarkDown");

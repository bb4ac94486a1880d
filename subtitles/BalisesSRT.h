// The tags of SRT subtitle text: the two delimiter pairs that enclose any tag, and the style
// tags that give a style span. Constant data, read by ConvertisseurSRT from any thread.
#pragma once

#include <cstdint>
#include <string_view>

#include "ferlane/Convertisseur.h"

struct BaliseSRT {
  std::u16string_view ouvrante;
  std::u16string_view fermante;
  uint32_t styles;  // eStyle bits; 0 for a delimiter
};

// Whatever lies between these is a tag and is masked, known or not ("<font color=red>",
// "{\an8}"). Tried in this order at each position.
inline constexpr BaliseSRT kDelimiteursSRT[] = {
    {u"<", u">", 0},
    {u"{", u"}", 0},
};

// The style tags, compared exactly (letter case included); the first equal opening tag wins.
inline constexpr BaliseSRT kBalisesDeStyleSRT[] = {
    {u"<b>", u"</b>", eGras},     {u"<bold>", u"</bold>", eGras},
    {u"<i>", u"</i>", eItalique}, {u"<italic>", u"</italic>", eItalique},
    {u"{b}", u"{/b}", eGras},     {u"{bold}", u"{/bold}", eGras},
    {u"{i}", u"{/i}", eItalique}, {u"{italic}", u"{/italic}", eItalique},
};

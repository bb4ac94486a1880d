// eFormatTexte: the formats a document may be in; the filter set builds its converters from it.
#pragma once

#include <cstdint>

enum eFormatTexte : uint32_t {
  eFormatIndefini = 0,  // no format given: common filters only
  eFormatLaTeX = 1,
  eFormatMarkDown = 2,
  eFormatTexteBrut = 3,  // what DetecteFormat answers when no detector recognises the text
  eFormatSRT = 4,        // never detected: the host chooses it
  eFormatHTML = 5,
};

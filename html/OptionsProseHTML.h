// OptionsProseHTML: what the prose profile changes in the HTML converter. Every default is the
// reference behaviour, so a converter built with a default record reads as it always did.
#pragma once

#include <string_view>

// In the prose profile, these hold code or computer input and output: their content stays in
// the text, marked as not prose (in an HTML page and in the HTML of a Markdown document).
inline constexpr std::u16string_view kElementsNonProseHTML[] = {u"code", u"kbd", u"pre",
                                                                u"samp", u"tt",  u"var"};

struct OptionsProseHTML {
  bool Actif = false;  // off: the reference converter, bit for bit
};

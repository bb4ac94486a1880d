// OptionsProseMarkDown: what the prose profile changes in the Markdown converter. Every default
// is the reference behaviour, so a converter built with a default record reads as it always did.
#pragma once

#include "html/OptionsProseHTML.h"

struct OptionsProseMarkDown {
  bool Actif = false;     // off: the reference converter, bit for bit
  OptionsProseHTML HTML;  // HTML inside a Markdown document reads by the HTML rules
};

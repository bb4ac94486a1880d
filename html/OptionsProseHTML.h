// OptionsProseHTML: what the prose profile changes in the HTML converter. Every default is the
// reference behaviour, so a converter built with a default record reads as it always did.
#pragma once

struct OptionsProseHTML {
  bool Actif = false;  // off: the reference converter, bit for bit
};

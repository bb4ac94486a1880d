// ProfilProse: the prose profile, what a spell or grammar checker should see, as one record of
// every format's options. A default record is the reference filters; Active() turns the profile
// on for every format at once, which is what the command does unless asked for --exact.
#pragma once

#include "html/OptionsProseHTML.h"
#include "latex/OptionsProseLaTeX.h"
#include "markdown/OptionsProseMarkDown.h"

struct ProfilProse {
  OptionsProseLaTeX LaTeX;
  OptionsProseHTML HTML;
  OptionsProseMarkDown MarkDown;
  bool Communs = false;  // the common filters' additions (addresses and links as not prose)

  void Active() {
    LaTeX.Actif = HTML.Actif = MarkDown.Actif = MarkDown.HTML.Actif = Communs = true;
  }
  bool EstActif() const { return LaTeX.Actif || HTML.Actif || MarkDown.Actif || Communs; }
};

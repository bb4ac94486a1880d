// ConvertisseurLaTeX: turns a LaTeX document into the prose a reader sees, and writes corrected
// text back as LaTeX.
//
// Forward, commands go or give way to the characters they stand for, arguments stay or go as the
// command table says, formulas are marked as non-prose or replaced by "[TeX]", glossary
// references give way to their text and blanks are normalised (AnalyseurLaTeX.h has the walk).
// The percent sign means nothing here: ConvertisseurCommentairesLaTeX removes comments first.
//
// Backward, special characters become their escapes ("%" gives "\%") and the non-breaking and
// thin spaces "~" and "\,"; accented letters, ligatures and typographic characters are written
// as commands only when the document last read forward spelt its accents so (more accent
// commands than non-ASCII characters): that is `accentsDirects`, the one thing kept between runs.
//
// Both directions end quietly on any exception (an empty callable, an unsupported glossary
// command, a lack of memory): what was reported stays reported.
#pragma once

#include <utility>

#include "ferlane/Convertisseur.h"
#include "latex/OptionsProseLaTeX.h"

class ConvertisseurLaTeX : public Convertisseur {
 public:
  explicit ConvertisseurLaTeX(bool accents = false, OptionsProseLaTeX prose = {})
      : accentsDirects(accents), prose_(std::move(prose)) {
    ConversionInverse = true;
  }
  ConvertisseurLaTeX(const ConvertisseurLaTeX&) = default;
  ConvertisseurLaTeX& operator=(const ConvertisseurLaTeX&) = default;
  ~ConvertisseurLaTeX() override = default;

  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;
  void ConvertisInterneAExterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;

  // True when the last document read forward had at least as many non-ASCII characters as
  // accent commands: corrections then go back with their accented letters as they are.
  bool accentsDirects;

 private:
  OptionsProseLaTeX prose_;
};

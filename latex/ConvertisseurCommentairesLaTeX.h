// ConvertisseurCommentairesLaTeX: removes LaTeX comments, the first converter of the LaTeX
// chain, so that neither the LaTeX converter nor the corrector ever sees them.
//
// A comment runs from a "%" that has no backslash just before it to the next line feed that has
// no backslash just before it (or to the end of the text); the line feed stays. Only the one
// character before the "%" is looked at, so "\\%" opens no comment either. One report a comment,
// in increasing order; comments never overlap. It never reports styles and writes nothing back.
// Any exception (an empty callable, a lack of memory) ends the scan quietly. In the prose
// profile, a "%" inside code (\verb|%|, a verbatim environment) is no comment.
#pragma once

#include <utility>

#include "ferlane/Convertisseur.h"
#include "latex/OptionsProseLaTeX.h"

class ConvertisseurCommentairesLaTeX : public Convertisseur {
 public:
  explicit ConvertisseurCommentairesLaTeX(OptionsProseLaTeX prose = {})
      : prose_(std::move(prose)) {}
  ConvertisseurCommentairesLaTeX(const ConvertisseurCommentairesLaTeX&) = default;
  ConvertisseurCommentairesLaTeX& operator=(const ConvertisseurCommentairesLaTeX&) = default;
  ~ConvertisseurCommentairesLaTeX() override = default;

  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;

 private:
  OptionsProseLaTeX prose_;
};

// ConvertisseurMarkDown: the converter of Markdown documents. Each conversion builds a Markdown
// analyser over the document and the two callables, runs it and drops it; the converter keeps
// nothing between runs. Internal text is never written back as Markdown, so
// ConvertisInterneAExterne keeps the base's empty body.
//
// What the caller receives (every replacement with attributes {0, 0}):
//   removed      fenced spans whole; code-span delimiters; a leading "---" header block;
//                heading runs, setext underlines, thematic breaks, quote markers, indented
//                code, ordered-list digits and periods, table delimiter rows, abbreviation
//                markers; link and image brackets and destinations; note labels; tags, comment
//                delimiters, autolink brackets, emphasis delimiters, "{...}" attribute blocks;
//                escaping backslashes and stray "*", "_", "#", "|"
//   replaced     an item's first unit by U+2022; table pipes and line-break tags by U+000E;
//                a note definition's "[" by U+000E, a note reference by U+0007; a link title's
//                bounds and a comment's ends by U+0011; line breaks inside a block by a space;
//                "&copy;", "&amp;", "&lt;", "&gt;" by their characters
//   styled       "*x*", "_x_" italic; "**x**", "__x__" bold; "^x^" superscript; "~x~"
//                subscript; "~~x~~" strikethrough; a double-backtick span's content not prose
#pragma once

#include "ferlane/Convertisseur.h"
#include "markdown/OptionsProseMarkDown.h"

class ConvertisseurMarkDown : public Convertisseur {
 public:
  explicit ConvertisseurMarkDown(OptionsProseMarkDown prose = {}) : prose_(prose) {}

  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;
  // Over the text itself, with no working copy, when the text carries no style bits.
  void ConvertisSurPlace(TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                         const FonctionMarque& marque) override;

 private:
  OptionsProseMarkDown prose_;
};

// ConvertisseurSRT: prepares an SRT subtitle file for correction. A file is a series of blocks
// separated by blank lines, each a number line, a timing line and lines of subtitle text. The
// number and timing lines go, the blank lines after a block but its first line end go, every
// tag of the subtitle text goes (BalisesSRT.h), and the bold and italic tags give style spans.
//
// Line ends are "\r\n" when the text holds that pair anywhere, else "\n"; a blank line is the
// line end twice. The subtitle text of a block runs from the line after its timing line to the
// next blank line: a block whose text is empty therefore takes in the next block as its text.
//
// A style span runs from the last unit of its opening tag (masked itself) to its closing tag,
// stopping at the end of the block's text. The closing tag is masked when the opening tag is
// met, wherever it lies, and once more when the scan reaches it. A style tag whose closing tag
// never occurs styles the rest of the block's text and masks nothing more. Reports are not in
// increasing order.
#pragma once

#include <cstdint>

#include "ferlane/Convertisseur.h"

class ConvertisseurSRT : public Convertisseur {
 public:
  ConvertisseurSRT() = default;
  ConvertisseurSRT(const ConvertisseurSRT&) = default;
  ConvertisseurSRT& operator=(const ConvertisseurSRT&) = default;

  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;

 protected:
  // Masks the tags of one block's subtitle text [debut, fin) and reports its style spans.
  void MasqueBalises(const ChaineN& texte, uint64_t debut, uint64_t fin,
                     const FonctionRemplace& remplace, const FonctionMarque& marque) const;
  // Masks [debut, fin) when it is not empty.
  static void MasqueIntervalle(uint64_t debut, uint64_t fin, const FonctionRemplace& remplace);

 private:
  class Fermetures;
  void MasqueBalises(const ChaineN& texte, uint64_t debut, uint64_t fin,
                     const FonctionRemplace& remplace, const FonctionMarque& marque,
                     Fermetures& fermetures) const;
};

// ConvertisseurHTML: the format converter for HTML documents. Reading a page, it removes tags,
// turns block tags into line feeds, list items and rows into U+000E and data cells into tabs,
// decodes character references, shrinks runs of blanks, removes scripts, styles and drawings,
// stands "[HTML]" in for code, and reports the emphasis of open elements as style spans.
// Writing back, it turns "&", "<", ">" (and, for a page that writes its special characters as
// references, everything from U+0080 up) into character references.
//
// What differs from the common contract:
// - Reports are not in position order: an element's opening tag is reported when the element
//   ends, after its content; tags of elements still open at the end come last, innermost first.
// - Empty intervals are reported: an inserted space between two words that markup separates, a
//   line feed for the missing closing tag of an element that a later tag closes, the empty
//   closing tag of a void element, and style spans of empty contents.
// - A run of blanks deleted as redundant carries {0, 1}; markup deletions and placeholders {0, 0}.
// - The one state kept between runs is ConvertirNonASCII, written by each conversion to
//   internal text and read by the next conversion back; so one object must not run two
//   conversions at once. The walk is linear in the text's length, whatever the markup.
#pragma once

#include <cstdint>

#include "ferlane/ChaineN.h"
#include "ferlane/Convertisseur.h"
#include "html/OptionsProseHTML.h"

namespace TablesHTML {
struct FermetureImplicite;
}

class ConvertisseurHTML : public Convertisseur {
 public:
  // One element met in the text. Elements hold no links to one another: nesting exists only as
  // the order of the reader's stack, the element just below the top being the parent of the top.
  struct ElementHTML {
    ChaineN nom;                 // lower-cased as read; "!--" for a comment
    uint64_t debutOuvrante = 0;  // the "<" of the opening tag
    uint64_t finOuvrante = 0;    // just past its ">" (past "!--" for a comment); 0 until known
    uint64_t debutFermante = 0;  // the "<" of the closing tag, or of the tag that closed it
    uint64_t finFermante = 0;    // just past the closing tag; debutFermante when it has none
    uint32_t styles = 0;         // eStyle bits of the element's name
    bool sautOuvrante = false;   // opening tag → line feed
    bool sautFermante = false;   // closing tag → line feed
    bool marqueItem = false;     // opening tag → U+000E
    bool marqueCellule = false;  // opening tag → tab
    uint64_t empreinteNom = 0;   // hash of a long name, for the reader's closing-tag checks
    // The opening tags that close it implicitly, null for none: looked up once with its name.
    const TablesHTML::FermetureImplicite* fermetures = nullptr;
  };

  explicit ConvertisseurHTML(OptionsProseHTML prose = {}) : prose_(prose) {
    ConversionInverse = true;
  }
  ConvertisseurHTML(const ConvertisseurHTML&) = default;
  ConvertisseurHTML& operator=(const ConvertisseurHTML&) = default;
  ~ConvertisseurHTML() override = default;

  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;
  // Reports, in increasing position, the reference of each unit to write back: the entity name
  // when there is one, "&#x" and lower-case hexadecimal otherwise. The text is taken unit by
  // unit: a character beyond U+FFFF is two surrogates, each written as a reference of its own.
  void ConvertisInterneAExterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;

  // Does the text look like HTML? A document type declaration first thing, or enough familiar
  // tags within its first 10000 units. Reads nothing beyond them.
  static bool DetecteBalisesHTML(const ChaineN& texte);

  // Whether ConvertisInterneAExterne writes units from U+0080 up as references: true before any
  // run; afterwards, whether the last page read held more decoded references than raw
  // non-ASCII characters.
  bool ConvertirNonASCII = true;

 private:
  friend class LecteurHTML;
  OptionsProseHTML prose_;
  // "&", "<" and ">" are always written back as references.
  static bool DoitConvertir(char16_t c) { return c == u'&' || c == u'<' || c == u'>'; }
  static bool NEstPasASCII(char16_t c) { return c >= 0x80; }
};

// ConvertisseurHTML::DetecteBalisesHTML: a quick look at the beginning of a text for a document
// type declaration or enough familiar tags. It never reads past the first 10000 units.
#include <array>
#include <string_view>

#include "ferlane/UniCaractere.h"
#include "html/ConvertisseurHTML.h"

namespace {

// Detection looks at a prefix only, so its cost does not grow with the document.

// Tried in this order; the first that matches is taken ("li" before "link": '<link ' fails "li",
// since "n" follows it, and is then taken by "link").
constexpr std::u16string_view kBalisesReconnues[] = {
    u"!--",  u"a href", u"body", u"div",  u"h1", u"h2",     u"h3", u"head",
    u"html", u"li",     u"link", u"meta", u"p",  u"script", u"ul",
};

// The tag is taken beyond these counts, whichever comes first.
constexpr uint64_t kReconnuesSuffisantes = 10;
constexpr uint64_t kFermeesSuffisantes = 5;

bool TermineNom(char16_t c) {
  return c == u' ' || c == u'>' || c == u'=';
}

}  // namespace

bool ConvertisseurHTML::DetecteBalisesHTML(const ChaineN& texte) {
  const ChaineN vue = texte.SousChaine(0, kFenetreDetection);
  const uint64_t n = vue.Longueur();

  uint64_t i = 0;
  while (i < n && UniCaractere::EstBlanc(vue[i])) ++i;
  if (i == n) return false;
  if (vue.ContientALaPos(u"<!doctype", i, kMalgraySansCasse)) return true;

  // One counter a name, decremented without a floor: a closing tag with no opening one before it
  // makes it wrap, and the next closing tag of that name then counts as closing an open one.
  std::array<uint64_t, std::size(kBalisesReconnues)> ouvertes{};
  uint64_t reconnues = 0;
  uint64_t fermees = 0;
  for (;;) {
    uint64_t chevron;
    if (!vue.Contient(u'<', chevron, i)) return false;
    uint64_t j = chevron + 1;
    if (j >= n) return false;
    const bool fermante = vue[j] == u'/';
    if (fermante && ++j >= n) return false;

    for (size_t k = 0; k < std::size(kBalisesReconnues); ++k) {
      const std::u16string_view nom = kBalisesReconnues[k];
      if (!vue.ContientALaPos(nom, j, kMalgraySansCasse) || j + nom.size() >= n ||
          !TermineNom(vue[j + nom.size()]))
        continue;
      if (fermante) {
        if (ouvertes[k]-- != 0 && ++fermees > kFermeesSuffisantes) return true;
      } else {
        ++ouvertes[k];
      }
      if (++reconnues > kReconnuesSuffisantes) return true;
      j += nom.size();
      break;
    }
    i = j + 1;  // the unit after the name (or after "<" or "</") is passed over
    if (i >= n) return false;
  }
}

// TexteLisible: one pass over the internal text. Runs of prose are copied as blocks; only the
// units left out or changed are looked at one by one.
#include "framework/TexteLisible.h"

#include <algorithm>

#include "ferlane/CodageUtf.h"
#include "ferlane/Convertisseur.h"
#include "ferlane/UniCaractere.h"

namespace {

constexpr char16_t kMarqueItem = u'\x0E';
constexpr char16_t kMarqueNote = u'\x07';
constexpr char16_t kMarqueTitre = u'\x11';

bool EstDeMot(char16_t c) {
  return c < 0x80 ? (c >= u'0' && c <= u'9') || ((c | 0x20) >= u'a' && (c | 0x20) <= u'z')
                  : EstSubstitut(c) || UniCaractere::EstAlphaNumerique(c);
}

bool EstMarqueur(char16_t c) {
  return c == kMarqueItem || c == kMarqueNote || c == kMarqueTitre;
}

// Where the run of units that are copied as they are ends: a marker, or a unit not prose.
size_t FinDeProse(std::u16string_view texte, const TexteAvecAttributs& interne, size_t debut) {
  size_t fin = debut;
  if (interne.AAttributs()) {
    while (fin < texte.size() && (interne.Attribut(fin) & eNonTexte) == 0 &&
           !EstMarqueur(texte[fin]))
      ++fin;
  } else {
    fin = std::find_if(texte.begin() + debut, texte.end(), EstMarqueur) - texte.begin();
  }
  return fin;
}

}  // namespace

ChaineN TexteLisible(const TexteAvecAttributs& interne) {
  const std::u16string_view texte = interne.Chaine().Vue();
  std::u16string lisible;
  lisible.reserve(texte.size());
  bool omis = false;  // something was left out since the last unit copied
  for (size_t i = 0; i < texte.size();) {
    const char16_t c = texte[i];
    if ((interne.Attribut(i) & eNonTexte) != 0 || c == kMarqueNote || c == kMarqueTitre) {
      omis = true;
      ++i;
      continue;
    }
    if (omis && !lisible.empty()) {
      if (EstDeMot(lisible.back()) && EstDeMot(c)) lisible += u' ';
      // "see `x` here" reads "see here": the blanks before the span stand for those after.
      if (lisible.back() == u' ' && c == u' ') {
        ++i;
        continue;
      }
    }
    omis = false;
    if (c == kMarqueItem) {
      lisible += u'\n';
      ++i;
      continue;
    }
    const size_t fin = FinDeProse(texte, interne, i);
    lisible.append(texte.substr(i, fin - i));
    i = fin;
  }
  return ChaineN(std::move(lisible));
}

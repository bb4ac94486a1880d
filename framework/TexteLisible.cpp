// TexteLisible: one pass over the internal text, copying the prose and leaving out the rest.
#include "framework/TexteLisible.h"

#include "ferlane/Convertisseur.h"
#include "ferlane/UniCaractere.h"

namespace {

constexpr char16_t kMarqueItem = u'\x0E';
constexpr char16_t kMarqueNote = u'\x07';
constexpr char16_t kMarqueTitre = u'\x11';

bool EstDeMot(char16_t c) {
  return c < 0x80 ? (c >= u'0' && c <= u'9') || ((c | 0x20) >= u'a' && (c | 0x20) <= u'z')
                  : (c >= 0xD800 && c <= 0xDFFF) || UniCaractere::EstAlphaNumerique(c);
}

}  // namespace

ChaineN TexteLisible(const TexteAvecAttributs& interne) {
  const std::u16string& texte = interne.Chaine().Texte();
  std::u16string lisible;
  lisible.reserve(texte.size());
  bool omis = false;  // something was left out since the last unit copied
  for (size_t i = 0; i < texte.size(); ++i) {
    const char16_t c = texte[i];
    if ((interne.Attribut(i) & eNonTexte) != 0 || c == kMarqueNote || c == kMarqueTitre) {
      omis = true;
      continue;
    }
    if (omis && !lisible.empty() && EstDeMot(lisible.back()) && EstDeMot(c)) lisible += u' ';
    omis = false;
    lisible += c == kMarqueItem ? u'\n' : c;
  }
  return ChaineN(std::move(lisible));
}

// UniChaine's in-place edits.
#include "ferlane/UniChaine.h"

#include <cstring>

#include "ferlane/UniCaractere.h"

void UniChaine::NettoieBlancs() {
  std::u16string propre;
  bool blancEnAttente = false;
  for (char16_t c : texte_.Vue()) {
    if (UniCaractere::EstBlanc(c)) {
      blancEnAttente = !propre.empty();
      continue;
    }
    if (blancEnAttente) propre += u' ';
    blancEnAttente = false;
    propre += c;
  }
  texte_ = ChaineN(std::move(propre));
}

void UniChaine::Remplace(const char* ancien, const char* nouveau, Codage codage) {
  const ChaineN motif(ancien, std::strlen(ancien), codage);
  const ChaineN remplacement(nouveau, std::strlen(nouveau), codage);
  if (motif.EstVide()) return;
  std::u16string resultat;
  const std::u16string_view texte = texte_.Vue();
  size_t debut = 0;
  for (size_t trouve; (trouve = texte.find(motif.Vue(), debut)) != std::u16string_view::npos;
       debut = trouve + motif.Longueur()) {
    resultat.append(texte.substr(debut, trouve - debut));
    resultat.append(remplacement.Vue());
  }
  resultat.append(texte.substr(debut));
  texte_ = ChaineN(std::move(resultat));
}

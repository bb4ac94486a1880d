// Fuzz target for the HTML converter: the page read to internal text, then the same bytes
// written back as references, and the detector. Every reported interval must be forward and
// inside the text it was given. The first byte picks how the bytes become text (UTF-8, or
// UTF-16 units taken two bytes at a time, which reaches lone surrogates); input is capped so
// that a run stays short.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "html/ConvertisseurHTML.h"

namespace {

constexpr size_t kTailleMax = 4096;

ChaineN Texte(const uint8_t* donnees, size_t taille, bool utf16) {
  if (!utf16)
    return ChaineN::DepuisUtf8(std::string_view(reinterpret_cast<const char*>(donnees), taille));
  std::u16string unites;
  for (size_t i = 0; i + 1 < taille; i += 2)
    unites += static_cast<char16_t>(donnees[i] | (donnees[i + 1] << 8));
  return ChaineN(std::move(unites));
}

void Verifie(MapPos::Intervalle intervalle, uint64_t longueur) {
  if (intervalle.Debut > intervalle.Fin || intervalle.Fin > longueur) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
  if (taille == 0 || taille > kTailleMax) return 0;
  const TexteAvecAttributs texte{Texte(donnees + 1, taille - 1, donnees[0] & 1)};
  const uint64_t longueur = texte.Longueur();
  const FonctionRemplace remplace = [&](MapPos::Intervalle i, const ChaineN&, MapPos::Attributs) {
    Verifie(i, longueur);
  };
  const FonctionMarque marque = [&](MapPos::Intervalle i, uint32_t) { Verifie(i, longueur); };

  ConvertisseurHTML convertisseur;
  convertisseur.ConvertisExterneAInterne(texte, remplace, marque);
  // Written back with whatever the page decided, and once more with every non-ASCII unit.
  convertisseur.ConvertisInterneAExterne(texte, remplace, marque);
  convertisseur.ConvertirNonASCII = true;
  convertisseur.ConvertisInterneAExterne(texte, remplace, marque);
  ConvertisseurHTML::DetecteBalisesHTML(texte.Chaine());
  return 0;
}

// ComparateurDeNoms: direct comparison of short names, hashes modulo 2^61 - 1 for long ones.
#include "html/ComparateurDeNoms.h"

namespace {

constexpr uint64_t kModule = (uint64_t{1} << 61) - 1;  // a Mersenne prime: cheap reduction
constexpr uint64_t kBase = 1'000'003;

__extension__ typedef unsigned __int128 Entier128;  // the one non-standard type: a 64×64 product

uint64_t MultiplieModule(uint64_t a, uint64_t b) {
  const Entier128 produit = static_cast<Entier128>(a) * b;
  const uint64_t somme =
      static_cast<uint64_t>(produit & kModule) + static_cast<uint64_t>(produit >> 61);
  return somme >= kModule ? somme - kModule : somme;
}

uint64_t AjouteModule(uint64_t a, uint64_t b) {
  const uint64_t somme = a + b;
  return somme >= kModule ? somme - kModule : somme;
}

uint64_t PuissanceModule(uint64_t base, uint64_t exposant) {
  uint64_t resultat = 1;
  for (; exposant != 0; exposant >>= 1) {
    if (exposant & 1) resultat = MultiplieModule(resultat, base);
    base = MultiplieModule(base, base);
  }
  return resultat;
}

// Units enter the hash folded, so that equal hashes mean "equal letter case ignored".
uint64_t Unite(char16_t c) {
  return uint64_t{PlieUnite(c, kMalgraySansCasse)} + 1;
}

}  // namespace

uint64_t ComparateurDeNoms::Empreinte(const ChaineN& nom) {
  if (nom.Longueur() <= kLongueurComparaisonDirecte) return 0;
  uint64_t empreinte = 0;
  for (char16_t c : nom.Vue())
    empreinte = AjouteModule(MultiplieModule(empreinte, kBase), Unite(c));
  return empreinte;
}

uint64_t ComparateurDeNoms::EmpreinteDuTexte(uint64_t debut, uint64_t longueur) const {
  const uint64_t retire = MultiplieModule(prefixes_[debut], PuissanceModule(kBase, longueur));
  return AjouteModule(prefixes_[debut + longueur], kModule - retire);
}

bool ComparateurDeNoms::CommencePar(uint64_t position, const ChaineN& nom, uint64_t empreinte) {
  const uint64_t longueur = nom.Longueur();
  if (longueur == 0 || position > texte_.Longueur() || longueur > texte_.Longueur() - position)
    return false;
  if (longueur <= kLongueurComparaisonDirecte)
    return texte_.ContientALaPos(nom.Vue(), position, kMalgraySansCasse);
  if (prefixes_.empty()) {
    prefixes_.resize(texte_.Longueur() + 1);
    for (uint64_t i = 0; i < texte_.Longueur(); ++i)
      prefixes_[i + 1] = AjouteModule(MultiplieModule(prefixes_[i], kBase), Unite(texte_[i]));
  }
  return EmpreinteDuTexte(position, longueur) == empreinte &&
         texte_.ContientALaPos(nom.Vue(), position, kMalgraySansCasse);
}

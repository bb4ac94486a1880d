// Fuzz target for the chain: the input is cut into a document and up to three converters'
// reports (any intervals, reversed, repeated or past the end), and the result must keep its
// invariants: the map's segments partition both texts in order, an identity segment has the
// same characters on both sides, every query answers inside the texts.
#include "ferlane/SuiteDeMapChaines.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "ferlane/Convertisseur.h"

namespace {

constexpr size_t kTailleMaximale = 4096;  // longer inputs find nothing new, only slower

struct Lecteur {
  const uint8_t* donnees;
  size_t taille, position = 0;
  uint8_t Octet() { return position < taille ? donnees[position++] : 0; }
  bool Fini() const { return position >= taille; }
};

struct RapportFuzz {
  bool marque;
  MapPos::Intervalle intervalle;
  ChaineN texte;
  uint8_t attribut;
};

class Rejoue : public Convertisseur {
 public:
  std::vector<RapportFuzz> rapports;
  void ConvertisExterneAInterne(const TexteAvecAttributs&, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override {
    for (const RapportFuzz& r : rapports) {
      if (r.marque)
        marque(r.intervalle, r.attribut);
      else
        remplace(r.intervalle, r.texte, {0, static_cast<uint8_t>(r.attribut & 1)});
    }
  }
};

void Verifie(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
  if (taille > kTailleMaximale) return 0;
  Lecteur lecteur{donnees, taille};
  const size_t longueur = lecteur.Octet() % 64;
  std::u16string document;
  for (size_t k = 0; k < longueur; ++k)
    document += static_cast<char16_t>(u'a' + lecteur.Octet() % 4);
  const int etapes = 1 + lecteur.Octet() % 3;
  std::vector<std::unique_ptr<Rejoue>> convertisseurs;
  SuiteDeMapChaines<TexteAvecAttributs> suite(
      static_cast<MapChaines<TexteAvecAttributs>::Mode>(lecteur.Octet() % 2));
  for (int e = 0; e < etapes; ++e) {
    auto convertisseur = std::make_unique<Rejoue>();
    const int nombre = lecteur.Octet() % 16;
    for (int k = 0; k < nombre && !lecteur.Fini(); ++k) {
      const uint8_t genre = lecteur.Octet();
      const MapPos::Intervalle intervalle{lecteur.Octet() % 72u, lecteur.Octet() % 72u};
      convertisseur->rapports.push_back({(genre & 3) == 0, intervalle,
                                         ChaineN(std::u16string(genre >> 5, u'X')),
                                         lecteur.Octet()});
    }
    suite.AjouteConvertisseur(convertisseur.get());
    convertisseurs.push_back(std::move(convertisseur));
  }
  const MapChaines<TexteAvecAttributs> resultat = suite.Convertis(ChaineN(document));
  if (!resultat.AMap()) return 0;
  uint32_t interne = 0, externe = 0;
  for (const SegmentDeMap& s : resultat.Segments()) {
    Verifie(s.DebutInterne == interne && s.DebutExterne == externe);
    Verifie(s.DebutInterne <= s.FinInterne && s.DebutExterne <= s.FinExterne);
    if (s.Identite) {
      Verifie(s.FinInterne - s.DebutInterne == s.FinExterne - s.DebutExterne);
      for (uint32_t k = 0; k < s.FinInterne - s.DebutInterne; ++k)
        Verifie(resultat.Interne()[s.DebutInterne + k] == document[s.DebutExterne + k]);
    }
    interne = s.FinInterne, externe = s.FinExterne;
  }
  Verifie(interne == resultat.Interne().Longueur() && externe == document.size());
  for (uint32_t u = 0; u < interne; ++u) {
    const MapPos::Intervalle source = resultat.InterneVersExterne({u, u + 1});
    Verifie(source.Debut <= source.Fin && source.Fin <= document.size());
  }
  for (uint64_t p = 0; p <= document.size(); ++p)
    Verifie(resultat.ExterneVersInterne(p) <= interne);
  return 0;
}

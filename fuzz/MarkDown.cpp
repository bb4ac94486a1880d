// Fuzz target for the Markdown converter: the input becomes a document (UTF-8, or raw UTF-16
// units when the first byte is odd, so that lone surrogates and any control unit occur), and
// every report must be forward and inside the document, replacements never empty. The document
// then goes through a Markdown filter set, and through the detector.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "framework/FiltresCorrecteur.h"
#include "markdown/ConvertisseurMarkDown.h"
#include "markdown/DetecteMarkDown.h"

namespace {

constexpr size_t kTailleMaximale = 4096;  // the passes are linear: longer inputs find nothing new

void Verifie(bool condition) {
  if (!condition) std::abort();
}

ChaineN Document(const uint8_t* donnees, size_t taille) {
  if (taille == 0 || (donnees[0] & 1) == 0)
    return ChaineN::DepuisUtf8(std::string_view(reinterpret_cast<const char*>(donnees), taille));
  std::u16string unites;
  for (size_t i = 1; i + 1 < taille; i += 2)
    unites += static_cast<char16_t>(donnees[i] | (donnees[i + 1] << 8));
  return ChaineN(std::move(unites));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille) {
  if (taille > kTailleMaximale) return 0;
  const ChaineN document = Document(donnees, taille);
  const uint64_t longueur = document.Longueur();

  const FonctionRemplace remplace = [&](MapPos::Intervalle i, const ChaineN&, MapPos::Attributs a) {
    Verifie(i.Debut < i.Fin && i.Fin <= longueur);
    Verifie(a.CaractereSpecial == 0 && a.Remplacable == 0);
  };
  const FonctionMarque marque = [&](MapPos::Intervalle i, uint32_t styles) {
    Verifie(i.Debut < i.Fin && i.Fin <= longueur);
    Verifie(styles != 0 && (styles & ~uint32_t{eItalique | eGras | eExposant | eIndice | eNonTexte | eBarre}) == 0);
  };
  ConvertisseurMarkDown convertisseur;
  convertisseur.ConvertisExterneAInterne(TexteAvecAttributs(document), remplace, marque);

  FiltresCorrecteur::Params params;
  params.Format = eFormatMarkDown;
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  const MapChaines<TexteAvecAttributs> resultat = filtres.Mappeur().Convertis(document);
  Verifie(resultat.Interne().Longueur() <= longueur);  // every replacement text is one unit
  (void)DetecteMarkDown(document);
  return 0;
}

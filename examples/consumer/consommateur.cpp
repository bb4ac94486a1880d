// A host program built against an installed filtres: reads a document, prints its internal text
// in the prose profile and where its first word comes from in the document.
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "framework/FiltresCorrecteur.h"
#include "framework/RegistreConvertisseurs.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: consommateur DOCUMENT\n";
    return 2;
  }
  std::ifstream fichier(argv[1], std::ios::binary);
  const std::string octets{std::istreambuf_iterator<char>(fichier), {}};
  const ChaineN document = ChaineN::DepuisUtf8(octets);

  FiltresCorrecteur::Params params;  // must outlive every run of the chain
  params.Format = FiltresCorrecteur::DetecteFormat(document);
  params.Prose.Active();
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  const auto resultat = filtres.Mappeur().Convertis(document);
  const std::u16string_view texte = resultat.Interne().Chaine().Vue();
  const size_t debut = texte.find_first_not_of(u" \n");
  const size_t fin = texte.find_first_of(u" \n", debut);
  const MapPos::Intervalle externe =
      resultat.InterneVersExterne({static_cast<uint32_t>(debut), static_cast<uint32_t>(fin)});
  std::cout << NomDeFormat(params.Format) << ": " << resultat.Interne().Chaine().VersUtf8()
            << "first word at [" << externe.Debut << "," << externe.Fin << ")\n";
  return 0;
}

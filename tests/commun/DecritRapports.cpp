// The report dump of the table tests.
#include "DecritRapports.h"

#include <cstdio>

#include "ferlane/CodageUtf.h"

namespace {

// Runs `conversion` with callables that collect its reports.
template <class Conversion>
std::vector<Rapport> Collecte(const Conversion& conversion) {
  std::vector<Rapport> rapports;
  const FonctionRemplace remplace = [&](MapPos::Intervalle i, const ChaineN& t,
                                        MapPos::Attributs a) {
    rapports.push_back({false, i, t, a, 0});
  };
  const FonctionMarque marque = [&](MapPos::Intervalle i, uint32_t s) {
    rapports.push_back({true, i, ChaineN(), {}, s});
  };
  conversion(remplace, marque);
  return rapports;
}

}  // namespace

std::vector<Rapport> CollecteRapports(Convertisseur& convertisseur, std::u16string_view entree,
                                      bool inverse) {
  const TexteAvecAttributs texte{ChaineN(entree)};
  return Collecte([&](const FonctionRemplace& remplace, const FonctionMarque& marque) {
    if (inverse)
      convertisseur.ConvertisInterneAExterne(texte, remplace, marque);
    else
      convertisseur.ConvertisExterneAInterne(texte, remplace, marque);
  });
}

std::vector<Rapport> CollecteRapportsSurPlace(Convertisseur& convertisseur,
                                              TexteAvecAttributs& texte) {
  return Collecte([&](const FonctionRemplace& remplace, const FonctionMarque& marque) {
    convertisseur.ConvertisSurPlace(texte, remplace, marque);
  });
}

std::string DecritTexte(std::u16string_view texte) {
  std::string sortie;
  for (size_t i = 0; i < texte.size();) {
    const char16_t c = texte[i];
    size_t suivant = i;
    const char32_t codePoint = LitCodePoint(texte, suivant);
    const bool surrogatSeul = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (c < 0x20 || c == 0x7F || c == u'\'' || c == u'\\' || surrogatSeul) {
      char echappe[8];
      std::snprintf(echappe, sizeof echappe, "\\u%04X", static_cast<unsigned>(c));
      sortie += echappe;
    } else {
      sortie += EncodeUtf8(texte.substr(i, suivant - i));
    }
    i = suivant;
  }
  return sortie;
}

std::string DecritRapports(const std::vector<Rapport>& rapports) {
  std::string sortie;
  for (const Rapport& r : rapports) {
    if (!sortie.empty()) sortie += ' ';
    sortie += (r.estMarque ? "M[" : "R[") + std::to_string(r.intervalle.Debut) + "," +
              std::to_string(r.intervalle.Fin) + ")";
    if (r.estMarque) {
      sortie += std::to_string(r.styles);
    } else {
      sortie += "'" + DecritTexte(r.texte.Vue()) + "'{" +
                std::to_string(r.attributs.CaractereSpecial) + "," +
                std::to_string(r.attributs.Remplacable) + "}";
    }
  }
  return sortie;
}

std::string DecritRapports(Convertisseur& convertisseur, std::u16string_view entree, bool inverse) {
  return DecritRapports(CollecteRapports(convertisseur, entree, inverse));
}

// The lookup indexes of the HTML vocabulary, built from the tables of TablesHTML.h when the
// library loads and never changed afterwards.
#include "html/TablesHTML.h"

#include <algorithm>
#include <unordered_map>

#include "ferlane/IndexDeNoms.h"

namespace TablesHTML {

namespace {

using IndexDesBalises = IndexDeNoms<ClasseDeBalise>;

// Each table adds its entries to the one index, in the tables' order.
IndexDesBalises ConstruitIndexDesBalises() {
  // Room for every entry of every table, names shared between tables counted twice.
  IndexDesBalises index(std::size(kBalisesContenuBrut) + std::size(kBalisesVides) +
                        std::size(kBalisesSautOuvrante) + std::size(kBalisesSautFermante) +
                        std::size(kBalisesMarqueItem) + std::size(kBalisesMarqueCellule) +
                        std::size(kBalisesMarqueHTML) + std::size(kStylesDesBalises) +
                        std::size(kFermeturesImplicites));
  const auto marque = [&](std::span<const std::u16string_view> noms,
                          bool ClasseDeBalise::*drapeau) {
    for (std::u16string_view nom : noms) index[nom].*drapeau = true;
  };
  marque(kBalisesContenuBrut, &ClasseDeBalise::contenuBrut);
  marque(kBalisesVides, &ClasseDeBalise::vide);
  marque(kBalisesSautOuvrante, &ClasseDeBalise::sautOuvrante);
  marque(kBalisesSautFermante, &ClasseDeBalise::sautFermante);
  marque(kBalisesMarqueItem, &ClasseDeBalise::marqueItem);
  marque(kBalisesMarqueCellule, &ClasseDeBalise::marqueCellule);
  marque(kBalisesMarqueHTML, &ClasseDeBalise::marqueHTML);
  for (const StyleDeBalise& style : kStylesDesBalises) index[style.balise].styles = style.styles;
  for (const FermetureImplicite& fermeture : kFermeturesImplicites)
    index[fermeture.ouvert].fermetures = &fermeture;
  return index;
}

struct IndexDesEntites {
  std::unordered_map<std::u16string_view, char16_t> caractereDEntite;
  std::unordered_map<char16_t, std::u16string_view> entiteDeCaractere;
  size_t longueurMax = 0;
};

// Walks kEntitesHTML in order and stores each pair in both maps.
IndexDesEntites ConstruitIndexDesEntites() {
  IndexDesEntites index;
  for (const Entite& entite : kEntitesHTML) {
    index.caractereDEntite[entite.nom] = entite.caractere;
    index.entiteDeCaractere[entite.caractere] = entite.nom;
    index.longueurMax = std::max(index.longueurMax, entite.nom.size());
  }
  return index;
}

const IndexDesBalises kIndexDesBalises = ConstruitIndexDesBalises();
const IndexDesEntites kIndexDesEntites = ConstruitIndexDesEntites();

}  // namespace

ClasseDeBalise ClasseDe(std::u16string_view nom) {
  const ClasseDeBalise* classe = kIndexDesBalises.Trouve(nom);
  return classe == nullptr ? ClasseDeBalise{} : *classe;
}

bool FermeImplicitement(const FermetureImplicite* fermetures, std::u16string_view nouveau) {
  return fermetures != nullptr &&
         std::ranges::find(fermetures->fermantes, nouveau) != std::end(fermetures->fermantes);
}

std::optional<char16_t> CaractereDEntite(std::u16string_view nom) {
  if (nom.size() > kIndexDesEntites.longueurMax) return std::nullopt;
  const auto it = kIndexDesEntites.caractereDEntite.find(nom);
  if (it == kIndexDesEntites.caractereDEntite.end()) return std::nullopt;
  return it->second;
}

std::optional<std::u16string_view> EntiteDeCaractere(char16_t caractere) {
  const auto it = kIndexDesEntites.entiteDeCaractere.find(caractere);
  if (it == kIndexDesEntites.entiteDeCaractere.end()) return std::nullopt;
  return it->second;
}

}  // namespace TablesHTML

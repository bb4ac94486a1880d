// The lookup indexes of the HTML vocabulary, built from the tables of TablesHTML.h when the
// library loads and never changed afterwards.
#include "html/TablesHTML.h"

#include <algorithm>
#include <unordered_map>

namespace TablesHTML {

namespace {

struct IndexDesBalises {
  std::unordered_map<std::u16string_view, ClasseDeBalise> classes;
  size_t longueurMax = 0;  // a longer name is in no table: it is answered without hashing
};

// Each table adds its entries to the one index, in the tables' order.
IndexDesBalises ConstruitIndexDesBalises() {
  IndexDesBalises index;
  const auto marque = [&](std::span<const std::u16string_view> noms,
                          bool ClasseDeBalise::*drapeau) {
    for (std::u16string_view nom : noms) index.classes[nom].*drapeau = true;
  };
  marque(kBalisesContenuBrut, &ClasseDeBalise::contenuBrut);
  marque(kBalisesVides, &ClasseDeBalise::vide);
  marque(kBalisesSautOuvrante, &ClasseDeBalise::sautOuvrante);
  marque(kBalisesSautFermante, &ClasseDeBalise::sautFermante);
  marque(kBalisesMarqueItem, &ClasseDeBalise::marqueItem);
  marque(kBalisesMarqueCellule, &ClasseDeBalise::marqueCellule);
  marque(kBalisesMarqueHTML, &ClasseDeBalise::marqueHTML);
  for (const StyleDeBalise& style : kStylesDesBalises)
    index.classes[style.balise].styles = style.styles;
  for (const FermetureImplicite& fermeture : kFermeturesImplicites)
    index.classes[fermeture.ouvert].fermetures = &fermeture;
  for (const auto& [nom, classe] : index.classes)
    index.longueurMax = std::max(index.longueurMax, nom.size());
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
  if (nom.size() > kIndexDesBalises.longueurMax) return {};
  const auto it = kIndexDesBalises.classes.find(nom);
  return it == kIndexDesBalises.classes.end() ? ClasseDeBalise{} : it->second;
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

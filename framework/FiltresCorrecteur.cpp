// FiltresCorrecteur: building the chain of converters for a format and options.
#include "framework/FiltresCorrecteur.h"

#include <algorithm>

#include "framework/RegistreConvertisseurs.h"

FiltresCorrecteur::FiltresCorrecteur(Mode mode) : suite_(mode) {}

FiltresCorrecteur& FiltresCorrecteur::operator=(const FiltresCorrecteur& autre) {
  if (this == &autre) return *this;
  suite_ = autre.suite_;
  Convertisseurs_ = autre.Convertisseurs_;  // releases the converters this one held
  return *this;
}

FiltresCorrecteur::~FiltresCorrecteur() {
  // Converters go in the order they were added (those another filter set still holds stay).
  for (auto& convertisseur : Convertisseurs_) convertisseur.reset();
}

void FiltresCorrecteur::AjouteConvertisseur(Convertisseur* convertisseur) {
  // Everything that may fail comes before the chain refers to the converter, so a failure
  // neither leaks it nor leaves the chain with a converter that the filter set does not hold.
  std::shared_ptr<Convertisseur> garde(convertisseur);
  if (Convertisseurs_.size() == Convertisseurs_.capacity())
    Convertisseurs_.reserve(2 * Convertisseurs_.size() + 4);
  suite_.AjouteConvertisseur(convertisseur);
  Convertisseurs_.push_back(std::move(garde));
}

void FiltresCorrecteur::CreeFiltres(Params& params) {
  const auto format = std::ranges::find(FormatsNommes(), params.Format, &FormatNomme::format);
  if (format != FormatsNommes().end())
    for (std::string_view nom : format->convertisseurs)
      if (!nom.empty()) AjouteConvertisseur(CreeConvertisseur(nom, params).release());
  AjouteConvertisseur(CreeConvertisseur("excluded-strings", params).release());
  AjouteConvertisseur(CreeConvertisseur("tag-pairs", params).release());
  if (params.Courriel) AjouteConvertisseur(CreeConvertisseur("email", params).release());
  // The prose profile's common filters only mark what is not prose; they come last, so that
  // they read the text every other converter left.
  if (params.Prose.Communs) {
    AjouteConvertisseur(CreeConvertisseur("technical-tokens", params).release());
    if (params.Courriel) AjouteConvertisseur(CreeConvertisseur("email-headers", params).release());
  }
}

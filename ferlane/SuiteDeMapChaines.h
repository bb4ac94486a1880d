// SuiteDeMapChaines: the chain of converters. It runs them in the order added, each over the
// internal text the previous one produced (the first over the document), resolves each run's
// reports (ComposeurDeRapports.h states the rule) and composes the steps' maps into one map
// from the internal text back to the document (CompositionDeMaps.h).
//
// The chain refers to its converters and does not own them; copies share them. A run calls the
// converters on the caller's thread; an exception from a converter leaves the run. A large map
// (tens of thousands of segments) is composed on a helper thread while the next converters run;
// the run waits for it before it uses the map or returns, an exception included.
#pragma once

#include <vector>

#include "ferlane/MapChaines.h"

template <class T>
class SuiteDeMapChaines {
 public:
  using Convertisseur = typename MapChaines<T>::Convertisseur;
  using Mode = typename MapChaines<T>::Mode;

  explicit SuiteDeMapChaines(Mode mode = MapChaines<T>::eModeComplet) : mode_(mode) {}

  void AjouteConvertisseur(Convertisseur* convertisseur) {
    convertisseurs_.push_back(convertisseur);
  }
  const std::vector<Convertisseur*>& Convertisseurs() const { return convertisseurs_; }

  // Runs every converter over `document`. A document longer than the map can address
  // (kLongueurMaximale units) is refused with std::length_error before any converter runs; so
  // is a step whose output grows past it. The second form takes the document over rather than
  // copying it: while no converter has changed anything, the text and the document are one.
  MapChaines<T> Convertis(const ChaineN& document) const;
  MapChaines<T> Convertis(ChaineN&& document) const;

 private:
  Mode mode_;
  std::vector<Convertisseur*> convertisseurs_;
};

extern template class SuiteDeMapChaines<TexteAvecAttributs>;

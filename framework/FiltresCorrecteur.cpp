// FiltresCorrecteur: building the chain of converters for a format and options.
#include "framework/FiltresCorrecteur.h"

#include "filters/ConvertisseurBalises.h"
#include "filters/ConvertisseurChainesExclues.h"
#include "filters/ConvertisseurPourCourriels.h"
#include "html/ConvertisseurHTML.h"
#include "latex/ConvertisseurCommentairesLaTeX.h"
#include "latex/ConvertisseurLaTeX.h"
#include "markdown/ConvertisseurMarkDown.h"
#include "subtitles/ConvertisseurSRT.h"

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
  switch (params.Format) {
    case eFormatLaTeX:
      AjouteConvertisseur(new ConvertisseurCommentairesLaTeX());
      AjouteConvertisseur(new ConvertisseurLaTeX(false));
      break;
    case eFormatMarkDown:
      AjouteConvertisseur(new ConvertisseurMarkDown());
      break;
    case eFormatSRT:
      AjouteConvertisseur(new ConvertisseurSRT());
      break;
    case eFormatHTML:
      AjouteConvertisseur(new ConvertisseurHTML());
      break;
    default:
      break;
  }
  AjouteConvertisseur(new ConvertisseurChainesExclues(params.ChainesExclues,
                                                      params.ChainesExcluesCourriel,
                                                      params.Courriel, params.RechercheParallele));
  AjouteConvertisseur(new ConvertisseurBalises(params.BalisesOuvrantes, params.BalisesFermantes));
  if (params.Courriel)
    AjouteConvertisseur(new ConvertisseurPourCourriels(params.MasqueLignesCitees));
}

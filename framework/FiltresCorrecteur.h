// FiltresCorrecteur: the filter set a host builds for one kind of document. CreeFiltres creates
// the converters its parameters call for, in a fixed order, and adds each to the chain the host
// runs through Mappeur():
//   1. the format's converters, as the table of formats lists them (framework/
//      RegistreConvertisseurs.h): LaTeX comments then LaTeX (1); Markdown (2); SRT (4); HTML
//      (5); none for any other value;
//   2. excluded strings; 3. tag pairs; 4. the e-mail converter, when Courriel is set;
//   5. in the prose profile (Prose.Communs), the technical tokens, then, for an e-mail, its
//      header blocks, both marked as not prose.
//
// Ownership: the filter set owns its converters. A copy (or an assignment) shares them with the
// filter set it came from: the last filter set to hold a converter deletes it, so none is ever
// deleted twice; an assignment releases the converters it replaces. Filter sets that share
// converters must not run their chains at the same time. The parameter record passed to
// CreeFiltres must outlive every run: the excluded-strings and tag-pair converters read its
// lists (and the first edits them) at each run.
#pragma once

#include <memory>
#include <vector>

#include "ferlane/Convertisseur.h"
#include "ferlane/Listes.h"
#include "ferlane/SuiteDeMapChaines.h"
#include "ferlane/UniChaine.h"
#include "framework/FormatTexte.h"
#include "framework/ProfilProse.h"

class FiltresCorrecteur {
 public:
  using Suite = SuiteDeMapChaines<TexteAvecAttributs>;
  using Mode = MapChaines<TexteAvecAttributs>::Mode;

  struct Params {
    ListeT<UniChaine> ChainesExclues;          // masked wherever they occur
    ListeT<UniChaine> ChainesExcluesCourriel;  // masked too when the text is an e-mail
    ListeC<ChaineN> BalisesOuvrantes;          // paired by index with BalisesFermantes
    ListeC<ChaineN> BalisesFermantes;
    eFormatTexte Format = eFormatIndefini;
    bool Courriel = false;
    bool MasqueLignesCitees = false;  // in an e-mail, whole quoted lines rather than markers
    bool RechercheParallele = false;  // long texts may be searched on several threads
    ProfilProse Prose;                // off by default: the reference filters
  };

  explicit FiltresCorrecteur(Mode mode = MapChaines<TexteAvecAttributs>::eModeComplet);
  FiltresCorrecteur(const FiltresCorrecteur& autre) = default;
  FiltresCorrecteur& operator=(const FiltresCorrecteur& autre);
  ~FiltresCorrecteur();

  void CreeFiltres(Params& params);
  Suite& Mappeur() { return suite_; }
  const std::vector<std::shared_ptr<Convertisseur>>& Convertisseurs() const {
    return Convertisseurs_;
  }

  static eFormatTexte DetecteFormat(const ChaineN& texte);
  // With the prose profile on, what the detectors above call plain text is looked at once
  // more: an XHTML page whose XML declaration stands before its document type, and subtitles
  // whose first cue is a number then a timing line. Off, the same as above.
  static eFormatTexte DetecteFormat(const ChaineN& texte, const ProfilProse& prose);

 protected:
  // Adds to the chain, then to Convertisseurs; the filter set takes ownership.
  void AjouteConvertisseur(Convertisseur* convertisseur);

 private:
  Suite suite_;
  std::vector<std::shared_ptr<Convertisseur>> Convertisseurs_;
};

// AnalyseurGenerique: the base of the text analysers. An analyser is built over one text and
// the two callables of one conversion, analyses the text once (Analyse) and reports what it
// finds. The base holds the working text, guards every report against intervals that are empty
// or reach past the text, and offers the searches that skip a match escaped by a backslash. It
// knows no format: the Markdown analyser is built on it.
//
// The working text is a copy of a constant text. Given a text it may change (and with no style
// bits, which an overwrite would clear), the analyser works over that text itself: what it
// overwrites under a report stays overwritten, what it overwrites without one
// (GardeAvantEffacement) is put back when the analyser goes.
//
// An analyser lives for one conversion, on one thread. The callables are only referred to and
// must outlive it; what they raise passes through, and the reports already made stand.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "ferlane/ChaineN.h"
#include "ferlane/Convertisseur.h"

class AnalyseurGenerique {
 public:
  AnalyseurGenerique(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                     const FonctionMarque& marque);
  AnalyseurGenerique(TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                     const FonctionMarque& marque);
  AnalyseurGenerique(const AnalyseurGenerique&) = delete;
  AnalyseurGenerique& operator=(const AnalyseurGenerique&) = delete;
  virtual ~AnalyseurGenerique();

  virtual void Analyse() = 0;

  // Removes [debut, fin) from the internal text, through RemplacePlage (so that a derived
  // class that overrides RemplacePlage sees deletions too).
  virtual void SupprimePlage(uint64_t debut, uint64_t fin);
  // Replaces [debut, fin) by `remplacement`, attributes {0, 0}. Reports nothing when the
  // interval is empty, reversed or reaches past the working copy.
  virtual void RemplacePlage(uint64_t debut, uint64_t fin, const ChaineN& remplacement);
  // The style bits of [debut, fin), with the same guard. Not virtual: style reports never
  // reach a derived class, which therefore never rewrites its copy after them.
  void MarquePlage(uint64_t debut, uint64_t fin, uint32_t styles);

  // The first unescaped occurrence of `motif` at or after `debut` that ends within the analysed
  // range. A match is escaped when a backslash stands just before it in the working copy.
  bool TrouveSuivant(const ChaineN& motif, Plage& trouve, uint64_t debut) const;
  // `motif`, unescaped, exactly at `position`.
  bool TrouveALaPos(const ChaineN& motif, Plage& trouve, uint64_t position) const;

 protected:
  bool EstEchappe(uint64_t position) const {
    return position > 0 && texte_.Chaine()[position - 1] == u'\\';
  }

  // Before [debut, fin) of the working text is overwritten with no report covering it: over
  // the caller's text, its units are kept to be put back.
  void GardeAvantEffacement(uint64_t debut, uint64_t fin);

  TexteAvecAttributs copie_;
  TexteAvecAttributs& texte_;  // the working text: a derived class may overwrite, never resize
  const FonctionRemplace& remplace_;
  const FonctionMarque& marque_;
  uint64_t debutAnalyse_ = 0;  // first position still to analyse; only moves forward
  uint64_t finAnalyse_ = 0;    // end of the analysed range: the text's length

 private:
  // Units overwritten with no report, over the caller's text: where and how many, in order; the
  // units themselves one after the other.
  std::vector<std::pair<uint64_t, uint64_t>> gardees_;
  std::u16string unitesGardees_;
};

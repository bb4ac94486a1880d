// ConvertisseurChainesExclues: masks every occurrence of the strings the user wants left alone
// and, in an e-mail, of the strings of a second list. The one converter that may spread its
// work over several threads.
//
// A run, over the caller's lists (which it edits):
//   1. in an e-mail, each string of the e-mail list is cleaned of its blanks in place and a
//      copy is appended to the main list; the copies are searched ignoring case and accents
//      (Malgray 8), the user's own strings exactly;
//   2. when the text holds a carriage return followed by a line feed, every line feed of the
//      main list's strings gets a carriage return put before it, so "a\nb" matches "a\r\nb";
//   3. each non-empty string is searched from the text's start: an occurrence is taken, the
//      search goes on after it, so occurrences of one string never overlap;
//   4. the occurrences of all strings are merged (overlapping or touching ones become one) and
//      masked in increasing order.
// How the strings are searched changes nothing in the reports, only in the time they take:
//   - on a short text, or with few strings, each string is searched on its own (Horspool's
//     search, ChercheurDeChaine);
//   - on a long text with many strings, the strings of one comparison mode are searched all at
//     once, in one pass of an automaton (AutomateDeChaines), which hands each string's
//     occurrences, in order, to that string's ConstructeurDIntervallesAExclure.
// Texts of more than kLongueurMinimaleParallele units with at least two strings are searched on
// the core layer's task runner when RechercheParallele is set: one task a string for the
// one-string searches, one task a stretch of text for the automaton (each stretch collects the
// occurrences that start in it; the constructors take them afterwards, stretch by stretch, in
// text order). Merging and reporting stay on the calling thread, and the reports are those of
// the sequential search.
//
// Running twice over the same lists gives the same reports as the first run:
//   - the cleaned e-mail strings are appended only when the main list does not already end
//     with them, so the copies of a previous run are not appended again. (Were those strings
//     the user's own, searching them ignoring case and accents masks exactly what appending
//     copies would have: an exact match is also a match that ignores case and accents.)
//   - a line feed gets its carriage return once: the converter remembers what it wrote at each
//     index of the main list and leaves alone a string that still holds it. A string the host
//     put there since is rewritten as in a first run.
// The converter must not run on two threads at once; its copies share the caller's lists.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "ferlane/Listes.h"
#include "ferlane/UniChaine.h"
#include "filters/ConvertisseurFiltresInitiaux.h"

class ConvertisseurChainesExclues : public ConvertisseurFiltresInitiaux {
 public:
  // Longer texts may be searched in parallel; shorter ones gain nothing from more threads.
  static constexpr uint64_t kLongueurMinimaleParallele = 1'000'000;

  // [debut, fin) in code units.
  struct Intervalle {
    uint64_t debut = 0;
    uint64_t fin = 0;
    bool operator==(const Intervalle&) const = default;
  };
  // Ordered, disjoint and never touching: [2, 5) and [5, 9) are kept as [2, 9).
  using EnsembleDIntervalles = std::vector<Intervalle>;

  // The occurrences of one string in one text, for one run.
  class ConstructeurDIntervallesAExclure {
   public:
    ConstructeurDIntervallesAExclure(const ChaineN& texte, ChaineN chaine, bool modeCourriel);

    // Fills Occurrences() by searching the string; touches nothing but this object.
    void Cherche();
    // Takes an occurrence found by another search. Occurrences must come in increasing order;
    // one that overlaps the last one taken is dropped, as Cherche would never find it.
    void AjouteOccurrence(uint64_t position);
    const ChaineN& Chaine() const { return chaine_; }
    bool ModeCourriel() const { return modeCourriel_; }
    const EnsembleDIntervalles& Occurrences() const { return occurrences_; }

   private:
    const ChaineN& texte_;
    ChaineN chaine_;
    uint64_t longueurTexte_;
    uint64_t longueurChaine_;
    EnsembleDIntervalles occurrences_;
    bool modeCourriel_;      // Malgray 8 rather than exact
    uint64_t suivante_ = 0;  // where the next occurrence may start
  };

  ConvertisseurChainesExclues(ListeT<UniChaine>& chainesExclues,
                              ListeT<UniChaine>& chainesExcluesCourriel, bool courriel,
                              bool rechercheParallele)
      : chainesExclues_(chainesExclues),
        chainesExcluesCourriel_(chainesExcluesCourriel),
        Courriel_(courriel),
        RechercheParallele_(rechercheParallele) {}
  ConvertisseurChainesExclues(const ConvertisseurChainesExclues&) = default;
  ConvertisseurChainesExclues& operator=(const ConvertisseurChainesExclues&) = delete;

  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;

  // Merges several sets of intervals of a text of `longueurTexte` units into one.
  static EnsembleDIntervalles Fusionne(const std::vector<const EnsembleDIntervalles*>& ensembles,
                                       uint64_t longueurTexte);

 private:
  // Step 1; returns the number of the user's own strings (those searched exactly).
  uint64_t AjouteChainesCourriel();
  // Step 2.
  void AjouteRetoursChariot();
  using Constructeurs = std::vector<std::shared_ptr<ConstructeurDIntervallesAExclure>>;
  // Step 3: fills every constructor's occurrences.
  void Cherche(const Constructeurs& constructeurs, const ChaineN& texte) const;

  ListeT<UniChaine>& chainesExclues_;
  ListeT<UniChaine>& chainesExcluesCourriel_;
  bool Courriel_;
  bool RechercheParallele_;
  // The main list's strings as the last carriage-return rewriting left them, index by index.
  std::vector<ChaineN> reecrites_;
};

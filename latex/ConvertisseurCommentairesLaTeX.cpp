// ConvertisseurCommentairesLaTeX: finds each comment's "%" and hands it to the region treatment.
#include "latex/ConvertisseurCommentairesLaTeX.h"

#include "latex/AnalyseurLaTeX.h"
#include "latex/DelimiteursLaTeX.h"
#include "latex/VerbatimLaTeX.h"

void ConvertisseurCommentairesLaTeX::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                              const FonctionRemplace& remplace,
                                                              const FonctionMarque& marque) {
  try {
    const ChaineN& chaine = texte.Chaine();
    AnalyseurLaTeX analyseur(texte, remplace, marque);
    ContexteLaTeX& racine = analyseur.Racine();
    // Prose: a "%" inside code (\verb|%|, a verbatim environment) is code.
    const std::vector<RegionVerbatim> verbatims =
        prose_.Actif ? TrouveVerbatims(chaine, prose_) : std::vector<RegionVerbatim>();
    auto verbatim = verbatims.begin();
    uint64_t p = 0;
    for (uint64_t recherche = 0; chaine.Contient(u'%', p, recherche);) {
      while (verbatim != verbatims.end() && verbatim->fin <= p) ++verbatim;
      if (verbatim != verbatims.end() && verbatim->debut <= p) {
        recherche = verbatim->fin;
        continue;
      }
      racine.position = p;
      // An escaped "%" is no comment; the LaTeX converter turns "\%" into "%".
      recherche = analyseur.TraiteRegion(racine, kCommentaire) ? racine.position : p + 1;
    }
  } catch (...) {
    // The comments reported so far stand.
  }
}

// ConvertisseurMarkDown: one analyser per conversion.
#include "markdown/ConvertisseurMarkDown.h"

#include "markdown/AnalyseurMarkDown.h"

void ConvertisseurMarkDown::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                     const FonctionRemplace& remplace,
                                                     const FonctionMarque& marque) {
  AnalyseurMarkDown analyseur(texte, remplace, marque, prose_);
  analyseur.Analyse();
}

void ConvertisseurMarkDown::ConvertisSurPlace(TexteAvecAttributs& texte,
                                              const FonctionRemplace& remplace,
                                              const FonctionMarque& marque) {
  AnalyseurMarkDown analyseur(texte, remplace, marque, prose_);
  analyseur.Analyse();
}

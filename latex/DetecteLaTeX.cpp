// DetecteLaTeX: a walk from backslash to backslash through the detection window.
#include "latex/DetecteLaTeX.h"

#include "latex/VocabulaireLaTeX.h"

bool DetecteLaTeX(const ChaineN& texte) {
  uint64_t p = 0;
  for (uint64_t debut = 0;
       debut < kFenetreDetection &&
       texte.Contient(u'\\', p, debut, kMalgrayExact, kFenetreDetection - debut);
       debut = p + 1) {
    for (const std::u16string_view mot : kMotsClesLaTeX)
      if (texte.ContientALaPos(mot, p)) return true;
  }
  return false;
}

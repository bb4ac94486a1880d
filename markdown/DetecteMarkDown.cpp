// DetecteMarkDown: token counts near line starts, in single precision.
#include "markdown/DetecteMarkDown.h"

#include <algorithm>

#include "markdown/JetonsMarkDown.h"

namespace {

// Occurrences inside the window, each search one past the previous match (they may overlap).
uint64_t CompteOccurrences(const ChaineN& texte, std::u16string_view motif) {
  uint64_t nombre = 0;
  Plage plage;
  for (uint64_t s = 0; s < kFenetreDetection &&
                       texte.Contient(motif, plage, s, kMalgrayExact, kFenetreDetection - s);
       s = plage.position + 1)
    ++nombre;
  return nombre;
}

}  // namespace

float ScoreMarkDown(const ChaineN& texte) {
  const uint64_t sautsDeLigne = CompteOccurrences(texte, u"\n");
  const uint64_t retours = CompteOccurrences(texte, u"\r");
  const char16_t saut = sautsDeLigne < retours ? u'\r' : u'\n';
  const uint64_t lignes = std::max(sautsDeLigne, retours);
  if (lignes < 1) return 0.0f;

  float total = 0.0f, leger = 0.0f;
  bool lourd = false, precedentAbsent = false, precedentArrete = false;
  ChaineN motif;
  for (const JetonMarkDown& jeton : kJetonsMarkDown) {
    if (precedentArrete && precedentAbsent) break;
    motif = jeton.enDebutDeLigne ? ChaineN(saut) + ChaineN(jeton.jeton) : ChaineN(jeton.jeton);
    const uint64_t nombre = CompteOccurrences(texte, motif.Vue());
    for (uint64_t k = 0; k < nombre; ++k) {
      total += jeton.poids;
      if (jeton.poids > 1.0f)
        lourd = true;
      else
        leger += jeton.poids;
    }
    precedentAbsent = nombre == 0;
    precedentArrete = jeton.arretSiAbsent;
  }
  const float score = lourd ? total : total - leger;
  return score / static_cast<float>(lignes);
}

bool DetecteMarkDown(const ChaineN& texte) {
  return ScoreMarkDown(texte) >= kSeuilMarkDown;
}

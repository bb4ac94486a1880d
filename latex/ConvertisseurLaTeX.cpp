// ConvertisseurLaTeX: both directions. The forward walk is AnalyseurLaTeX's; the backward one is
// two passes over the internal text, one character at a time.
#include "latex/ConvertisseurLaTeX.h"

#include <array>
#include <span>

#include "latex/AnalyseurLaTeX.h"
#include "latex/EquivalentsLaTeX.h"

namespace {

// The LaTeX form of the character at `p` by the first entry of `table` that stands for it.
bool ConvertisCaractere(std::span<const EquivalentLaTeX> table, const ChaineN& texte, uint64_t p,
                        const FonctionRemplace& remplace) {
  for (const EquivalentLaTeX& e : table) {
    if (e.texte.size() == 1 && e.texte[0] == texte[p]) {
      remplace(Rapporteur::Intervalle(p, p + 1), ChaineN(e.latex), kAttributsSpecial);
      return true;
    }
  }
  return false;
}

// The ASCII characters the first backward pass writes back; every other ASCII character is left
// at once.
const std::array<bool, 128> kEchappesAscii = [] {
  std::array<bool, 128> echappes{};
  for (const std::span<const EquivalentLaTeX> table :
       {std::span<const EquivalentLaTeX>(kEchappementsLaTeX),
        std::span<const EquivalentLaTeX>(kEspacesLaTeX)})
    for (const EquivalentLaTeX& e : table)
      if (e.texte.size() == 1 && e.texte[0] < 128) echappes[e.texte[0]] = true;
  return echappes;
}();

}  // namespace

void ConvertisseurLaTeX::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                  const FonctionRemplace& remplace,
                                                  const FonctionMarque& marque) {
  uint32_t nbNonAscii = 0;
  uint32_t nbAccentsCommandes = 0;
  try {
    AnalyseurLaTeX analyseur(texte, remplace, marque, prose_);
    try {
      analyseur.AnalyseIntervalle();
    } catch (...) {
      // The scan ends here; its reports stand, and what was counted still decides below.
    }
    nbNonAscii = analyseur.NbNonAscii();
    nbAccentsCommandes = analyseur.NbAccentsCommandes();
  } catch (...) {
    // Not even the scan could start (no memory).
  }
  accentsDirects = nbNonAscii >= nbAccentsCommandes;
}

void ConvertisseurLaTeX::ConvertisInterneAExterne(const TexteAvecAttributs& texte,
                                                  const FonctionRemplace& remplace,
                                                  const FonctionMarque&) {
  try {
    const ChaineN& chaine = texte.Chaine();
    const uint64_t n = chaine.Longueur();
    for (uint64_t p = 0; p < n; ++p) {
      if (chaine[p] < 128 && !kEchappesAscii[chaine[p]]) continue;
      if (!ConvertisCaractere(kEchappementsLaTeX, chaine, p, remplace))
        ConvertisCaractere(kEspacesLaTeX, chaine, p, remplace);
    }
    if (accentsDirects) return;
    for (uint64_t p = 0; p < n; ++p) {
      if (chaine[p] < 128) continue;  // accents, ligatures and typography are all beyond ASCII
      if (!ConvertisCaractere(kAccentsLaTeX, chaine, p, remplace) &&
          !ConvertisCaractere(kLigaturesLaTeX, chaine, p, remplace))
        ConvertisCaractere(kTypographieLaTeX, chaine, p, remplace);
    }
  } catch (...) {
    // Ends quietly, as the forward direction does.
  }
}

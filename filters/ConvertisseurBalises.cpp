// ConvertisseurBalises: the scan for tag-pair regions.
#include "filters/ConvertisseurBalises.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "ferlane/ProchaineOccurrence.h"

void ConvertisseurBalises::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                    const FonctionRemplace& remplace,
                                                    const FonctionMarque&) {
  const ChaineN& chaine = texte.Chaine();
  const uint64_t n = chaine.Longueur();
  if (ouvrantes_.EstVide() || n == 0) return;

  struct Paire {
    const ChaineN* ouvrante;
    const ChaineN* fermante;
    // The next closing string, remembered: a text full of opening strings with no closing
    // string is read once a pair, not once an opening.
    ProchaineOccurrence fermeture;
  };
  std::vector<Paire> paires;
  const uint64_t nombre = std::min(ouvrantes_.Nombre(), fermantes_.Nombre());
  for (uint64_t i = 0; i < nombre; ++i) {
    const ChaineN& ouvrante = ouvrantes_[i];
    const ChaineN& fermante = fermantes_[i];
    if (!ouvrante.EstVide() && !fermante.EstVide())
      paires.push_back({&ouvrante, &fermante, ProchaineOccurrence(chaine.Vue(), fermante.Vue())});
  }
  if (paires.empty()) return;

  for (uint64_t position = 0; position < n;) {
    const auto paire = std::find_if(paires.begin(), paires.end(), [&](const Paire& p) {
      return chaine[position] == (*p.ouvrante)[0] &&
             chaine.ContientALaPos(p.ouvrante->Vue(), position);
    });
    if (paire == paires.end()) {
      ++position;
      continue;
    }
    const std::optional<uint64_t> fermante =
        paire->fermeture.Apres(position + paire->ouvrante->Longueur());
    if (!fermante) {
      ++position;
      continue;
    }
    const uint64_t fin = *fermante + paire->fermante->Longueur();
    MasqueIntervalle(position, fin, eRemplacableNon, remplace);
    position = fin;
  }
}

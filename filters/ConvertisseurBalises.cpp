// ConvertisseurBalises: the scan for tag-pair regions.
#include "filters/ConvertisseurBalises.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {

// The next occurrence of a closing string at or after a position. The last answer is kept, so
// a text full of opening strings with no closing string is scanned once a pair, not once an
// opening.
class ChercheurDeFermante {
 public:
  ChercheurDeFermante(const ChaineN& texte, const ChaineN& fermante)
      : texte_(texte), fermante_(fermante) {}

  std::optional<uint64_t> Apres(uint64_t debut) {
    if (connu_ && debut >= depuis_ && (!trouve_ || *trouve_ >= debut)) return trouve_;
    Plage plage;
    trouve_ = texte_.Contient(fermante_.Vue(), plage, debut) ? std::optional(plage.position)
                                                             : std::nullopt;
    depuis_ = debut, connu_ = true;
    return trouve_;
  }

 private:
  const ChaineN& texte_;
  const ChaineN& fermante_;
  bool connu_ = false;
  uint64_t depuis_ = 0;
  std::optional<uint64_t> trouve_;
};

}  // namespace

void ConvertisseurBalises::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                    const FonctionRemplace& remplace,
                                                    const FonctionMarque&) {
  const ChaineN& chaine = texte.Chaine();
  const uint64_t n = chaine.Longueur();
  if (ouvrantes_.EstVide() || n == 0) return;

  struct Paire {
    const ChaineN* ouvrante;
    const ChaineN* fermante;
    ChercheurDeFermante chercheur;
  };
  std::vector<Paire> paires;
  const uint64_t nombre = std::min(ouvrantes_.Nombre(), fermantes_.Nombre());
  for (uint64_t i = 0; i < nombre; ++i) {
    const ChaineN& ouvrante = ouvrantes_[i];
    const ChaineN& fermante = fermantes_[i];
    if (!ouvrante.EstVide() && !fermante.EstVide())
      paires.push_back({&ouvrante, &fermante, ChercheurDeFermante(chaine, fermante)});
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
        paire->chercheur.Apres(position + paire->ouvrante->Longueur());
    if (!fermante) {
      ++position;
      continue;
    }
    const uint64_t fin = *fermante + paire->fermante->Longueur();
    MasqueIntervalle(position, fin, eRemplacableNon, remplace);
    position = fin;
  }
}

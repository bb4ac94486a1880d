// ConvertisseurEntetesCourriel: a walk from line to line, in or out of a header block.
#include "filters/ConvertisseurEntetesCourriel.h"

#include <string_view>

#include "ferlane/ProchaineOccurrence.h"

namespace {

using Vue = std::u16string_view;

size_t FinDeLigne(Vue texte, size_t debut) {
  const uint64_t fin = TrouveUnite(texte, debut, u'\n');
  return fin == kPasTrouve ? texte.size() : fin;
}

// "Name:" then a blank or the line's end; a name is printable ASCII without a colon or blank.
size_t FinDuNomDeChamp(Vue ligne) {
  size_t i = 0;
  while (i < ligne.size() && ligne[i] > u' ' && ligne[i] < 0x7F && ligne[i] != u':') ++i;
  if (i == 0 || i >= ligne.size() || ligne[i] != u':') return 0;
  if (i + 1 < ligne.size() && ligne[i + 1] != u' ' && ligne[i + 1] != u'\t' &&
      ligne[i + 1] != u'\r')
    return 0;
  return i + 1;
}

bool EstVide(Vue ligne) {
  return ligne.empty() || ligne == u"\r";
}

bool EstSujet(Vue ligne) {
  return ligne.size() >= 8 &&
         (ligne.substr(0, 8) == u"Subject:" || ligne.substr(0, 8) == u"subject:");
}

}  // namespace

void ConvertisseurEntetesCourriel::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                            const FonctionRemplace& remplace,
                                                            const FonctionMarque& marque) {
  const Rapporteur rapporteur(remplace, marque);
  const auto marqueNonProse = [&](size_t debut, size_t fin) {
    rapporteur.Marque(debut, fin, eNonTexte);
  };
  const Vue unites = texte.Chaine().Texte();
  bool peutOuvrir = true;  // a block may start on this line
  bool dansBloc = false;
  bool dansSujet = false;
  for (size_t debut = 0; debut < unites.size();) {
    const size_t fin = FinDeLigne(unites, debut);
    const Vue ligne = unites.substr(debut, fin - debut);
    if (ligne.starts_with(u"From ")) {  // a mailbox's message separator
      marqueNonProse(debut, fin);
      peutOuvrir = true;
      dansBloc = false;
    } else if (dansBloc && EstVide(ligne)) {
      dansBloc = false;
    } else if (dansBloc && (ligne.starts_with(u" ") || ligne.starts_with(u"\t"))) {
      if (!dansSujet) marqueNonProse(debut, fin);
    } else if ((dansBloc || peutOuvrir) && FinDuNomDeChamp(ligne) > 0) {
      dansBloc = true;
      dansSujet = EstSujet(ligne);
      marqueNonProse(debut, dansSujet ? debut + FinDuNomDeChamp(ligne) : fin);
    } else {
      dansBloc = false;
    }
    if (!EstVide(ligne) && !ligne.starts_with(u"From ")) peutOuvrir = false;
    debut = fin + 1;
  }
}

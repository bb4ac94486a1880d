// EtatGlossaire: definitions, references and the reading of their arguments.
#include "latex/EtatGlossaire.h"

#include <algorithm>
#include <stdexcept>

#include "latex/VocabulaireLaTeX.h"

IndexAccolades::IndexAccolades(const ChaineN& texte) {
  uint64_t position = 0;
  for (uint64_t debut = 0; texte.ContientUnCarDe(u"{}", position, debut); debut = position + 1)
    (texte[position] == u'{' ? ouvrantes_ : fermantes_).push_back(position);
}

std::optional<uint64_t> IndexAccolades::Depuis(const std::vector<uint64_t>& positions,
                                               uint64_t position) {
  const auto it = std::lower_bound(positions.begin(), positions.end(), position);
  return it == positions.end() ? std::nullopt : std::optional(*it);
}

std::u16string_view EtatGlossaire::LisArgument(bool imbrique) {
  const std::optional<uint64_t> ouvrante = accolades.OuvranteDepuis(position);
  if (!ouvrante) return {};
  position = *ouvrante + 1;
  std::optional<uint64_t> fermante = accolades.FermanteDepuis(position);
  if (fermante && imbrique) fermante = accolades.FermanteDepuis(*fermante + 1);
  // A "{" that nothing closes gives an empty value; reading goes on after it, so the command
  // still swallows that brace rather than leaving half an argument behind.
  if (!fermante) return {};
  const std::u16string_view valeur = texte.Vue().substr(position, *fermante - position);
  position = *fermante + 1;
  return valeur;
}

std::u16string_view EtatGlossaire::LisEntree(std::u16string_view corps) {
  constexpr std::u16string_view kNom = u"name=";
  const size_t nom = corps.find(kNom);
  if (nom == std::u16string_view::npos) return {};
  const size_t debut = nom + kNom.size();
  const size_t virgule = corps.find(u',', debut);
  if (virgule == std::u16string_view::npos) return {};
  return corps.substr(debut, virgule - debut);
}

void EtatGlossaire::Resous(std::u16string_view nom) {
  if (nom == u"newglossaryentry") {
    const ChaineN label(LisArgument(false));
    const std::u16string_view corps = LisArgument(true);
    entrees[label] = ChaineN(LisEntree(corps));
    resultat = ChaineN();
  } else if (nom == u"newacronym") {
    const ChaineN label(LisArgument(false));
    const ChaineN court(LisArgument(false));
    const ChaineN long_(LisArgument(false));
    acronymes[label] = {court, long_};
    resultat = ChaineN();
  } else if (nom.starts_with(u"acr")) {
    resultat = kMarqueTeX;
    const auto it = acronymes.find(ChaineN(LisArgument(false)));
    if (it == acronymes.end()) return;
    const auto& [court, long_] = it->second;
    if (nom == u"acrshort") resultat = court;
    else if (nom == u"acrlong") resultat = long_;
    else if (nom == u"acrfull") resultat = long_ + ChaineN(u" (") + court + ChaineN(u")");
  } else if (ChaineN(nom).Minusculise().CommencePar(u"gls")) {
    resultat = kMarqueTeX;
    const auto it = entrees.find(ChaineN(LisArgument(false)));
    if (it == entrees.end()) return;
    ChaineN n = it->second;  // the stored entry never changes
    if (nom.size() == 3) {
      if (nom == u"gls") resultat = n;
      else if (nom == u"Gls") resultat = n.MajusculisePremiereLettre();
      return;
    }
    // The plural of an empty name stays empty: an "s" alone would be no word of the document.
    if (!n.EstVide() && n[n.Longueur() - 1] != u's') n += u's';
    if (nom == u"glspl") resultat = n;
    else if (nom == u"Glspl") resultat = n.MajusculisePremiereLettre();
  } else {
    throw std::invalid_argument("Cette commande n'est pas prise en charge.");
  }
}

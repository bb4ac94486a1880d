// EtatGlossaire: definitions, references and the reading of their arguments.
#include "latex/EtatGlossaire.h"

#include <algorithm>
#include <stdexcept>

#include "latex/VocabulaireLaTeX.h"

namespace {

constexpr std::u16string_view kNom = u"name=";

void Ajoute(std::vector<uint64_t>& positions, const ChaineN& texte, std::u16string_view motif) {
  Plage plage;
  for (uint64_t debut = 0; texte.Contient(motif, plage, debut); debut = plage.position + 1)
    positions.push_back(plage.position);
}

}  // namespace

IndexGlossaire::IndexGlossaire(const ChaineN& texte) {
  Ajoute(ouvrantes_, texte, u"{");
  Ajoute(fermantes_, texte, u"}");
  Ajoute(noms_, texte, kNom);
  Ajoute(virgules_, texte, u",");
}

std::optional<uint64_t> IndexGlossaire::Depuis(const std::vector<uint64_t>& positions,
                                               uint64_t debut) {
  const auto it = std::lower_bound(positions.begin(), positions.end(), debut);
  return it == positions.end() ? std::nullopt : std::optional(*it);
}

size_t HachageLibelle::operator()(std::u16string_view libelle) const {
  constexpr size_t kBord = 32;
  const std::hash<std::u16string_view> hache;
  if (libelle.size() <= 2 * kBord) return hache(libelle);
  return hache(libelle.substr(0, kBord)) ^ (hache(libelle.substr(libelle.size() - kBord)) * 31) ^
         libelle.size();
}

EtatGlossaire::Vue EtatGlossaire::LisArgument(bool imbrique) {
  const std::optional<uint64_t> ouvrante = index.Ouvrante(position);
  if (!ouvrante) return {};
  position = *ouvrante + 1;
  std::optional<uint64_t> fermante = index.Fermante(position);
  if (fermante && imbrique) fermante = index.Fermante(*fermante + 1);
  // A "{" that nothing closes gives an empty value; reading goes on after it, so the command
  // still swallows that brace rather than leaving half an argument behind.
  if (!fermante) return {};
  const Vue valeur = texte.Vue().substr(position, *fermante - position);
  position = *fermante + 1;
  return valeur;
}

EtatGlossaire::Vue EtatGlossaire::LisEntree(uint64_t debut, uint64_t fin) const {
  const std::optional<uint64_t> nom = index.Nom(debut);
  if (!nom || *nom + kNom.size() > fin) return {};
  const uint64_t debutNom = *nom + kNom.size();
  const std::optional<uint64_t> virgule = index.Virgule(debutNom);
  if (!virgule || *virgule >= fin) return {};
  return texte.Vue().substr(debutNom, *virgule - debutNom);
}

void EtatGlossaire::Resous(Vue nom) {
  if (nom == u"newglossaryentry") {
    const Vue libelle = LisArgument(false);
    const Vue corps = LisArgument(true);  // a stretch of the document, so it has a position
    const uint64_t debutCorps =
        corps.empty() ? 0 : static_cast<uint64_t>(corps.data() - texte.Vue().data());
    entrees[libelle] = corps.empty() ? Vue() : LisEntree(debutCorps, debutCorps + corps.size());
    resultat = ChaineN();
  } else if (nom == u"newacronym") {
    const Vue libelle = LisArgument(false);
    const Vue court = LisArgument(false);
    const Vue long_ = LisArgument(false);
    acronymes[libelle] = {court, long_};
    resultat = ChaineN();
  } else if (nom.starts_with(u"acr")) {
    resultat = kMarqueTeX;
    const Vue libelle = LisArgument(false);
    const auto it = acronymes.find(libelle);
    if (it == acronymes.end()) return;
    const ChaineN court(it->second.first), long_(it->second.second);
    if (nom == u"acrshort")
      resultat = court;
    else if (nom == u"acrlong")
      resultat = long_;
    else if (nom == u"acrfull")
      resultat = long_ + ChaineN(u" (") + court + ChaineN(u")");
  } else if (ChaineN(nom).Minusculise().CommencePar(u"gls")) {
    resultat = kMarqueTeX;
    const Vue libelle = LisArgument(false);
    const auto it = entrees.find(libelle);
    if (it == entrees.end()) return;
    ChaineN n(it->second);  // a copy: the stored entry never changes
    if (nom.size() == 3) {
      if (nom == u"gls")
        resultat = n;
      else if (nom == u"Gls")
        resultat = n.MajusculisePremiereLettre();
      return;
    }
    // The plural of an empty name stays empty: an "s" alone would be no word of the document.
    if (!n.EstVide() && n[n.Longueur() - 1] != u's') n += u's';
    if (nom == u"glspl")
      resultat = n;
    else if (nom == u"Glspl")
      resultat = n.MajusculisePremiereLettre();
  } else {
    throw std::invalid_argument("Cette commande n'est pas prise en charge.");
  }
}

// ConvertisseurSRT: the walk over blocks and the tags of each block's text.
#include "subtitles/ConvertisseurSRT.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

#include "ferlane/ProchaineOccurrence.h"
#include "subtitles/BalisesSRT.h"

namespace {

constexpr size_t kNombreDeDelimiteurs = std::size(kDelimiteursSRT);
constexpr size_t kNombreDeStyles = std::size(kBalisesDeStyleSRT);

std::optional<uint64_t> Cherche(const ChaineN& texte, std::u16string_view motif, uint64_t debut) {
  const uint64_t trouve = TrouveMotif(texte.Vue(), debut, motif);
  return trouve == kPasTrouve ? std::nullopt : std::optional<uint64_t>(trouve);
}

// The style tag whose opening tag is exactly `balise`, if any.
std::optional<size_t> TrouveStyle(std::u16string_view balise) {
  for (size_t s = 0; s < kNombreDeStyles; ++s)
    if (kBalisesDeStyleSRT[s].ouvrante == balise) return s;
  return std::nullopt;
}

}  // namespace

// The searches of closing strings over the whole text during one run, each remembering its
// last answer: a file with many "<" and no ">" after them (or many "<i>" and no "</i>") is then
// read once a closing string, not once a tag.
class ConvertisseurSRT::Fermetures {
 public:
  explicit Fermetures(const ChaineN& texte)
      : fermetures_(Construis(texte.Vue(), std::make_index_sequence<kNombreDeDelimiteurs>(),
                              std::make_index_sequence<kNombreDeStyles>())) {}

  std::optional<uint64_t> DuDelimiteur(size_t d, uint64_t debut) {
    return fermetures_[d].Apres(debut);
  }
  std::optional<uint64_t> DuStyle(size_t s, uint64_t debut) {
    return fermetures_[kNombreDeDelimiteurs + s].Apres(debut);
  }

 private:
  using Tableau = std::array<ProchaineOccurrence, kNombreDeDelimiteurs + kNombreDeStyles>;
  template <size_t... D, size_t... S>
  static Tableau Construis(std::u16string_view texte, std::index_sequence<D...>,
                           std::index_sequence<S...>) {
    return {ProchaineOccurrence(texte, kDelimiteursSRT[D].fermante)...,
            ProchaineOccurrence(texte, kBalisesDeStyleSRT[S].fermante)...};
  }

  Tableau fermetures_;
};

void ConvertisseurSRT::MasqueIntervalle(uint64_t debut, uint64_t fin,
                                        const FonctionRemplace& remplace) {
  Rapporteur(remplace, nullptr).Masque(debut, fin);
}

void ConvertisseurSRT::MasqueBalises(const ChaineN& texte, uint64_t debut, uint64_t fin,
                                     const FonctionRemplace& remplace,
                                     const FonctionMarque& marque) const {
  Fermetures fermetures(texte);
  MasqueBalises(texte, debut, fin, remplace, marque, fermetures);
}

void ConvertisseurSRT::MasqueBalises(const ChaineN& texte, uint64_t debut, uint64_t fin,
                                     const FonctionRemplace& remplace, const FonctionMarque& marque,
                                     Fermetures& fermetures) const {
  fin = std::min(fin, texte.Longueur());
  const std::u16string_view bloc = texte.Vue().substr(0, fin);
  for (uint64_t position = debut; position < fin; ++position) {
    position = TrouveUneDeDeux(bloc, position, u'<', u'{');  // the openings of kDelimiteursSRT
    if (position == kPasTrouve) return;
    for (size_t d = 0; d < kNombreDeDelimiteurs; ++d) {
      const BaliseSRT& delimiteur = kDelimiteursSRT[d];
      if (!texte.ContientALaPos(delimiteur.ouvrante, position)) continue;
      // The tag runs to its closing delimiter, or to the end of the block's text.
      const std::optional<uint64_t> fermante = fermetures.DuDelimiteur(d, position);
      const uint64_t finBalise =
          fermante ? std::min(*fermante + delimiteur.fermante.size(), fin) : fin;
      MasqueIntervalle(position, finBalise, remplace);
      const std::optional<size_t> s =
          TrouveStyle(texte.Vue().substr(position, finBalise - position));
      if (!s || !fermante) continue;
      const BaliseSRT& style = kBalisesDeStyleSRT[*s];
      const std::optional<uint64_t> fermeture = fermetures.DuStyle(*s, *fermante);
      if (fermeture) MasqueIntervalle(*fermeture, *fermeture + style.fermante.size(), remplace);
      const uint64_t finStyle = fermeture ? std::min(*fermeture, fin) : fin;
      marque(Rapporteur::Intervalle(*fermante, finStyle), style.styles);
    }
  }
}

void ConvertisseurSRT::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                const FonctionRemplace& remplace,
                                                const FonctionMarque& marque) {
  const ChaineN& chaine = texte.Chaine();
  const uint64_t n = chaine.Longueur();
  const std::u16string_view finDeLigne = Cherche(chaine, u"\r\n", 0) ? u"\r\n" : u"\n";
  const std::u16string ligneVide = std::u16string(finDeLigne) + std::u16string(finDeLigne);
  const uint64_t lf = finDeLigne.size();
  Fermetures fermetures(chaine);

  uint64_t finPrecedente = 0;
  // Each turn starts on the line end of a block's number line.
  for (std::optional<uint64_t> numero = Cherche(chaine, finDeLigne, 0); numero;) {
    const std::optional<uint64_t> minutage = Cherche(chaine, finDeLigne, *numero + lf);
    if (!minutage) return;
    const uint64_t debutTexte = *minutage + lf;
    uint64_t finTexte = n, finBloc = n;
    if (const std::optional<uint64_t> vide = Cherche(chaine, ligneVide, debutTexte)) {
      finTexte = *vide;
      finBloc = *vide + ligneVide.size();
      while (chaine.ContientALaPos(finDeLigne, finBloc)) finBloc += lf;
    }
    MasqueIntervalle(finPrecedente, debutTexte, remplace);
    MasqueBalises(chaine, debutTexte, finTexte, remplace, marque, fermetures);
    MasqueIntervalle(finTexte + lf, finBloc, remplace);  // the first line end after the text stays
    finPrecedente = finBloc;
    numero = Cherche(chaine, finDeLigne, finBloc);
  }
}

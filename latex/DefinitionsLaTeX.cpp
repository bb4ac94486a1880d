// DefinitionsLaTeX: a small reader a family of defining commands, and a walk of a body that
// keeps its groups on an explicit stack.
#include "latex/DefinitionsLaTeX.h"

#include <algorithm>
#include <array>
#include <vector>

#include "latex/CommandesLaTeX.h"
#include "latex/OptionsProseLaTeX.h"

namespace {

using eArgument = OptionsProseLaTeX::eArgument;

enum eFamille {
  eNouvelleCommande,
  eDef,
  eOperateur,
  eNouvelEnvironnement,
  eCommandeDocument,
  eEnvironnementDocument
};

struct Definisseur {
  std::u16string_view nom;
  eFamille famille;
};
constexpr Definisseur kDefinisseurs[] = {
    {u"newcommand", eNouvelleCommande},
    {u"renewcommand", eNouvelleCommande},
    {u"providecommand", eNouvelleCommande},
    {u"DeclareRobustCommand", eNouvelleCommande},
    {u"def", eDef},
    {u"gdef", eDef},
    {u"edef", eDef},
    {u"xdef", eDef},
    {u"DeclareMathOperator", eOperateur},
    {u"newenvironment", eNouvelEnvironnement},
    {u"renewenvironment", eNouvelEnvironnement},
    {u"NewDocumentCommand", eCommandeDocument},
    {u"RenewDocumentCommand", eCommandeDocument},
    {u"ProvideDocumentCommand", eCommandeDocument},
    {u"DeclareDocumentCommand", eCommandeDocument},
    {u"NewDocumentEnvironment", eEnvironnementDocument},
    {u"RenewDocumentEnvironment", eEnvironnementDocument},
    {u"DeclareDocumentEnvironment", eEnvironnementDocument},
};

// The lengths and first letters of the defining commands' names: the scan asks about every
// command, and these two tests turn nearly all away before the names are compared.
constexpr uint64_t kLongueursDefinisseurs = [] {
  uint64_t bits = 0;
  for (const Definisseur& d : kDefinisseurs) bits |= uint64_t{1} << d.nom.size();
  return bits;
}();
constexpr std::array<bool, 128> kInitialesDefinisseurs = [] {
  std::array<bool, 128> initiales{};
  for (const Definisseur& d : kDefinisseurs) initiales[d.nom[0]] = true;
  return initiales;
}();
static_assert(std::ranges::all_of(kDefinisseurs, [](const Definisseur& d) {
  return !d.nom.empty() && d.nom.size() < 64 && d.nom[0] < 128;
}));

const Definisseur* TrouveDefinisseur(std::u16string_view nom) {
  if (nom.empty() || nom.size() >= 64 || !(kLongueursDefinisseurs >> nom.size() & 1) ||
      nom[0] >= 128 || !kInitialesDefinisseurs[nom[0]])
    return nullptr;
  for (const Definisseur& d : kDefinisseurs)
    if (d.nom == nom) return &d;
  return nullptr;
}

bool EstLettre(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}
bool EstBlanc(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

// What a plain-words body may hold: no command, group, parameter or special character.
bool EstTexteSimple(std::u16string_view corps) {
  return !corps.empty() && corps.find_first_of(u"\\{}$#%&~^_\n") == std::u16string_view::npos &&
         std::any_of(corps.begin(), corps.end(), [](char16_t c) { return !EstBlanc(c); });
}

// Letters of a role, ranked: a parameter shown kept anywhere is kept.
int Rang(char16_t role) {
  return role == eArgument::eGarde ? 2 : role == eArgument::eNonProse;
}

// Reads one definition, position by position, up to `fin`.
class LecteurDefinition {
 public:
  LecteurDefinition(const ChaineN& texte, const AppariementCrochets& crochets, uint64_t p,
                    uint64_t fin)
      : vue_(texte.Vue()), crochets_(crochets), p_(p), fin_(fin) {}

  std::optional<DefinitionLaTeX> Lis(eFamille famille) {
    DefinitionLaTeX d;
    d.environnement = famille == eNouvelEnvironnement || famille == eEnvironnementDocument;
    if (!(d.environnement ? LisNomEnvironnement(d.nom) : LisNomCommande(d.nom))) return {};
    std::u16string arguments;
    switch (famille) {
      case eNouvelleCommande:
      case eNouvelEnvironnement: {
        const uint32_t nb = LisNombre();
        const bool optionnel = Groupe(u'[').has_value();
        const auto corps = Groupe(u'{');
        if (!corps) return {};
        arguments = RolesDesParametres(*corps, nb);
        if (optionnel && !arguments.empty()) arguments.erase(0, 1);  // #1 is the bracket one
        if (nb == 0 && famille == eNouvelleCommande && EstTexteSimple(*corps))
          d.declaration.texte = ChaineN(std::u16string(*corps));
        break;
      }
      case eDef: {
        uint32_t nb = 0;
        for (Blancs(); p_ < fin_ && vue_[p_] != u'{' && vue_[p_] != u'}'; ++p_)
          if (vue_[p_] == u'#') ++nb;
        const auto corps = Groupe(u'{');
        if (!corps) return {};
        arguments = RolesDesParametres(*corps, std::min(nb, 9u));
        break;
      }
      case eOperateur:
        if (!Groupe(u'{')) return {};
        break;
      case eCommandeDocument:
      case eEnvironnementDocument: {
        const auto signature = Groupe(u'{');
        const auto corps = signature ? Groupe(u'{') : std::nullopt;
        if (!corps) return {};
        arguments = ArgumentsDeSignature(*signature, *corps);
        break;
      }
    }
    if (d.environnement) {
      if (!Groupe(u'{')) return {};                               // the end code
      arguments.insert(arguments.begin(), eArgument::eSupprime);  // the name after \begin
    }
    d.declaration.arguments = std::move(arguments);
    d.fin = p_;
    return d;
  }

 private:
  void Blancs() {
    while (p_ < fin_ && EstBlanc(vue_[p_])) ++p_;
  }

  // The content of a "{...}" or "[...]" at the position (after blanks), and the position past it.
  std::optional<std::u16string_view> Groupe(char16_t ouvrant) {
    const uint64_t debut = p_;
    Blancs();
    if (p_ >= fin_ || vue_[p_] != ouvrant) {
      p_ = debut;
      return {};
    }
    const std::optional<uint64_t> fermant = crochets_.Fermant(p_, fin_);
    if (!fermant) {
      p_ = debut;
      return {};
    }
    const std::u16string_view contenu = vue_.substr(p_ + 1, *fermant - p_ - 1);
    p_ = *fermant + 1;
    return contenu;
  }

  // "\name", or "{\name}"; a one-character name ("\@") is refused: it is no word a writer uses.
  bool LisNomCommande(std::u16string& nom) {
    if (const auto groupe = Groupe(u'{')) {
      size_t i = 0;
      while (i < groupe->size() && EstBlanc((*groupe)[i])) ++i;
      if (i >= groupe->size() || (*groupe)[i] != u'\\') return false;
      size_t j = ++i;
      while (j < groupe->size() && EstLettre((*groupe)[j])) ++j;
      nom = groupe->substr(i, j - i);
      return j > i;
    }
    Blancs();
    if (p_ >= fin_ || vue_[p_] != u'\\') return false;
    uint64_t j = ++p_;
    while (j < fin_ && EstLettre(vue_[j])) ++j;
    nom = vue_.substr(p_, j - p_);
    p_ = j;
    return !nom.empty();
  }

  bool LisNomEnvironnement(std::u16string& nom) {
    const auto groupe = Groupe(u'{');
    if (!groupe || groupe->empty() || groupe->find_first_of(u"\\{}") != std::u16string_view::npos)
      return false;
    nom = *groupe;
    return true;
  }

  // "[n]": the number of parameters, 0 without one.
  uint32_t LisNombre() {
    const uint64_t debut = p_;
    const auto groupe = Groupe(u'[');
    if (groupe && groupe->size() == 1 && (*groupe)[0] >= u'0' && (*groupe)[0] <= u'9')
      return (*groupe)[0] - u'0';
    p_ = debut;
    return 0;
  }

  // Argument signature of the document-command forms: "m" is a brace argument; "o", "s",
  // "O{default}", "d()", "D(){default}", "t+", "e{^_}", "r()", "v" are not.
  std::u16string ArgumentsDeSignature(std::u16string_view signature, std::u16string_view corps) {
    std::vector<uint32_t> accolades;  // parameter numbers of the brace arguments
    uint32_t numero = 0;
    for (size_t i = 0; i < signature.size(); ++i) {
      const char16_t c = signature[i];
      if (EstBlanc(c) || c == u'+' || c == u'!') continue;
      ++numero;
      if (c == u'm') accolades.push_back(numero);
      if (c == u't') ++i;
      if (c == u'd' || c == u'r' || c == u'D' || c == u'R') i += 2;
      if ((c == u'O' || c == u'D' || c == u'R' || c == u'e' || c == u'E') &&
          i + 1 < signature.size() && signature[i + 1] == u'{') {
        int profondeur = 0;
        for (++i; i < signature.size(); ++i) {
          if (signature[i] == u'{') ++profondeur;
          if (signature[i] == u'}' && --profondeur == 0) break;
        }
      }
    }
    const std::u16string roles = RolesDesParametres(corps, std::min(numero, 9u));
    std::u16string arguments;
    for (const uint32_t n : accolades) arguments += n <= roles.size() ? roles[n - 1] : u'd';
    return arguments;
  }

  std::u16string_view vue_;
  const AppariementCrochets& crochets_;
  uint64_t p_;
  uint64_t fin_;
};

}  // namespace

bool EstDefinisseurLaTeX(std::u16string_view nom) {
  return TrouveDefinisseur(nom) != nullptr;
}

std::optional<DefinitionLaTeX> LitDefinitionLaTeX(const ChaineN& texte,
                                                  const AppariementCrochets& crochets,
                                                  std::u16string_view definisseur, uint64_t apres,
                                                  uint64_t fin) {
  const Definisseur* d = TrouveDefinisseur(definisseur);
  if (d == nullptr) return {};
  return LecteurDefinition(texte, crochets, apres, fin).Lis(d->famille);
}

std::u16string RolesDesParametres(std::u16string_view corps, uint32_t nb) {
  std::u16string roles(nb, eArgument::eSupprime);
  // A group of the body: its role, and the command whose arguments go on after it closes.
  struct Groupe {
    char16_t role;
    char16_t fermant;
    const CommandeLaTeX* commande;
    bool inconnue;
    uint32_t nbAccolades;
  };
  std::vector<Groupe> pile{{eArgument::eGarde, 0, nullptr, false, 0}};
  const CommandeLaTeX* commande = nullptr;  // whose arguments may follow, if any
  bool arguments = false;
  bool inconnue = false;
  uint32_t nbAccolades = 0;
  bool formule = false;
  for (size_t i = 0; i < corps.size(); ++i) {
    const char16_t c = corps[i];
    if (c == u'\\') {
      size_t j = i + 1;
      while (j < corps.size() && EstLettre(corps[j])) ++j;
      arguments = j > i + 1;
      if (arguments) {
        commande = TrouveCommandeLaTeX(corps.substr(i + 1, j - i - 1));
        inconnue = commande == nullptr;
        nbAccolades = 0;
        i = j - 1;
      } else {
        ++i;  // an escaped character
      }
    } else if ((c == u'{' || c == u'[') && (c == u'{' || arguments)) {
      char16_t role = eArgument::eGarde;
      if (arguments && c == u'{') {
        ++nbAccolades;
        if (inconnue || !ArgumentGardeLaTeX(commande, true, nbAccolades))
          role = eArgument::eSupprime;
        else if (commande->style & eNonTexte)
          role = eArgument::eNonProse;
      } else if (c == u'[') {
        role = eArgument::eSupprime;
      }
      if (Rang(pile.back().role) < Rang(role)) role = pile.back().role;
      pile.push_back({role, c == u'{' ? u'}' : u']', arguments ? commande : nullptr,
                      arguments && inconnue, nbAccolades});
      arguments = false;
    } else if ((c == u'}' || c == u']') && pile.size() > 1 && pile.back().fermant == c) {
      const Groupe ferme = pile.back();
      pile.pop_back();
      // Another argument of the same command may follow.
      arguments = ferme.commande != nullptr || ferme.inconnue;
      commande = ferme.commande;
      inconnue = ferme.inconnue;
      nbAccolades = ferme.nbAccolades;
    } else if (c == u'$') {
      formule = !formule;
      arguments = false;
    } else if (c == u'#' && i + 1 < corps.size() && corps[i + 1] >= u'1' && corps[i + 1] <= u'9') {
      const uint32_t k = corps[++i] - u'1';
      char16_t role = pile.back().role;
      if (formule && role == eArgument::eGarde) role = eArgument::eNonProse;
      if (k < nb && Rang(roles[k]) < Rang(role)) roles[k] = role;
      arguments = false;
    } else if (!EstBlanc(c)) {
      arguments = false;
    }
  }
  return roles;
}

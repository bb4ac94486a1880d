// The tables of converters and formats, one row each.
#include "framework/RegistreConvertisseurs.h"

#include <algorithm>
#include <stdexcept>
#include <string>

#include "filters/ConvertisseurBalises.h"
#include "filters/ConvertisseurChainesExclues.h"
#include "filters/ConvertisseurEntetesCourriel.h"
#include "filters/ConvertisseurFiltresInitiaux.h"
#include "filters/ConvertisseurJetonsTechniques.h"
#include "filters/ConvertisseurPourCourriels.h"
#include "html/ConvertisseurHTML.h"
#include "latex/ConvertisseurCommentairesLaTeX.h"
#include "latex/ConvertisseurLaTeX.h"
#include "markdown/ConvertisseurMarkDown.h"
#include "subtitles/ConvertisseurSRT.h"

namespace {

using Params = FiltresCorrecteur::Params;

template <class C, class... A>
std::unique_ptr<Convertisseur> Cree(A&&... arguments) {
  return std::make_unique<C>(std::forward<A>(arguments)...);
}

// In the order the command's help lists them. The lists of the excluded-strings and tag-pair
// converters are the parameter record's own, which they read (and the first edits) at each run.
const ConvertisseurNomme kConvertisseurs[] = {
    {"initial", [](Params&) { return Cree<ConvertisseurFiltresInitiaux>(); }},
    {"tag-pairs",
     [](Params& p) { return Cree<ConvertisseurBalises>(p.BalisesOuvrantes, p.BalisesFermantes); }},
    {"excluded-strings",
     [](Params& p) {
       return Cree<ConvertisseurChainesExclues>(p.ChainesExclues, p.ChainesExcluesCourriel,
                                                p.Courriel, p.RechercheParallele);
     }},
    {"email", [](Params& p) { return Cree<ConvertisseurPourCourriels>(p.MasqueLignesCitees); }},
    {"technical-tokens", [](Params&) { return Cree<ConvertisseurJetonsTechniques>(); }},
    {"email-headers", [](Params&) { return Cree<ConvertisseurEntetesCourriel>(); }},
    {"srt", [](Params&) { return Cree<ConvertisseurSRT>(); }},
    {"html", [](Params& p) { return Cree<ConvertisseurHTML>(p.Prose.HTML); }},
    {"latex-comments",
     [](Params& p) { return Cree<ConvertisseurCommentairesLaTeX>(p.Prose.LaTeX); }},
    {"latex", [](Params& p) { return Cree<ConvertisseurLaTeX>(false, p.Prose.LaTeX); }},
    {"markdown", [](Params& p) { return Cree<ConvertisseurMarkDown>(p.Prose.MarkDown); }},
};

const FormatNomme kFormats[] = {
    {"none", eFormatIndefini, {}},
    {"latex", eFormatLaTeX, {"latex-comments", "latex"}},
    {"markdown", eFormatMarkDown, {"markdown"}},
    {"text", eFormatTexteBrut, {}},
    {"srt", eFormatSRT, {"srt"}},
    {"html", eFormatHTML, {"html"}},
};

}  // namespace

std::span<const ConvertisseurNomme> ConvertisseursNommes() {
  return kConvertisseurs;
}
std::span<const FormatNomme> FormatsNommes() {
  return kFormats;
}

const ConvertisseurNomme* TrouveConvertisseur(std::string_view nom) {
  const auto it = std::ranges::find(kConvertisseurs, nom, &ConvertisseurNomme::nom);
  return it == std::end(kConvertisseurs) ? nullptr : &*it;
}

const FormatNomme* TrouveFormat(std::string_view nom) {
  const auto it = std::ranges::find(kFormats, nom, &FormatNomme::nom);
  return it == std::end(kFormats) ? nullptr : &*it;
}

std::string_view NomDeFormat(eFormatTexte format) {
  const auto it = std::ranges::find(kFormats, format, &FormatNomme::format);
  return it == std::end(kFormats) ? "none" : it->nom;
}

std::unique_ptr<Convertisseur> CreeConvertisseur(std::string_view nom, Params& params) {
  const ConvertisseurNomme* nomme = TrouveConvertisseur(nom);
  if (nomme == nullptr) throw std::invalid_argument("unknown converter '" + std::string(nom) + "'");
  return nomme->fabrique(params);
}

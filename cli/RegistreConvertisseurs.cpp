// The command's tables of converters and formats, one row each.
#include "cli/RegistreConvertisseurs.h"

#include <algorithm>

#include "filters/ConvertisseurBalises.h"
#include "filters/ConvertisseurChainesExclues.h"
#include "filters/ConvertisseurFiltresInitiaux.h"
#include "filters/ConvertisseurPourCourriels.h"
#include "html/ConvertisseurHTML.h"
#include "latex/ConvertisseurCommentairesLaTeX.h"
#include "latex/ConvertisseurLaTeX.h"
#include "markdown/ConvertisseurMarkDown.h"
#include "subtitles/ConvertisseurSRT.h"

namespace {

template <class C, class... A>
std::unique_ptr<Convertisseur> Cree(A&&... arguments) {
  return std::make_unique<C>(std::forward<A>(arguments)...);
}

// In the order the command's help lists them.
const ConvertisseurNomme kConvertisseurs[] = {
    {"initial", [](FiltresCorrecteur::Params&) { return Cree<ConvertisseurFiltresInitiaux>(); }},
    {"tag-pairs",
     [](FiltresCorrecteur::Params& p) {
       return Cree<ConvertisseurBalises>(p.BalisesOuvrantes, p.BalisesFermantes);
     }},
    {"excluded-strings",
     [](FiltresCorrecteur::Params& p) {
       return Cree<ConvertisseurChainesExclues>(p.ChainesExclues, p.ChainesExcluesCourriel,
                                                p.Courriel, p.RechercheParallele);
     }},
    {"email",
     [](FiltresCorrecteur::Params& p) {
       return Cree<ConvertisseurPourCourriels>(p.MasqueLignesCitees);
     }},
    {"srt", [](FiltresCorrecteur::Params&) { return Cree<ConvertisseurSRT>(); }},
    {"html", [](FiltresCorrecteur::Params&) { return Cree<ConvertisseurHTML>(); }},
    {"latex-comments",
     [](FiltresCorrecteur::Params&) { return Cree<ConvertisseurCommentairesLaTeX>(); }},
    {"latex", [](FiltresCorrecteur::Params&) { return Cree<ConvertisseurLaTeX>(false); }},
    {"markdown", [](FiltresCorrecteur::Params&) { return Cree<ConvertisseurMarkDown>(); }},
};

const FormatNomme kFormats[] = {
    {"none", eFormatIndefini, ""},
    {"latex", eFormatLaTeX, "latex"},
    {"markdown", eFormatMarkDown, "markdown"},
    {"text", eFormatTexteBrut, ""},
    {"srt", eFormatSRT, "srt"},
    {"html", eFormatHTML, "html"},
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

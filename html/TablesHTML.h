// The HTML vocabulary: which elements hold raw content, which are void, which tags become a line
// feed, a list-item mark or a tab, which carry style bits, which open elements a new tag closes
// implicitly, and the named character references the converter knows.
//
// The tables are written below as data, in the order in which they are built; the lookup
// indexes behind the functions are built from them when the library loads and are read-only
// afterwards, so any number of threads may query them. Tag names are lower case and compared
// exactly (the converter lower-cases a name before asking); entity names keep their case and
// their final ";" and leave out the leading "&".
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "ferlane/ClesUniques.h"
#include "ferlane/Convertisseur.h"

namespace TablesHTML {

// Skipped whole, from the opening tag to the matching closing tag; searched in this order.
inline constexpr std::u16string_view kBalisesContenuBrut[] = {u"code", u"script", u"style", u"svg"};
// Of those, the ones whose whole element becomes "[HTML]", marked as not prose (the prose
// profile reads them instead, their content marked as not prose).
inline constexpr std::u16string_view kBalisesMarqueHTML[] = {u"code"};

// An open element that any opening tag but one closes implicitly; names compared ignoring case.
struct FermetureSauf {
  std::u16string_view ouvert;
  std::u16string_view saufPour;
};
inline constexpr FermetureSauf kFermeturesSauf[] = {{u"colgroup", u"col"}};

// The element ends with its opening tag.
inline constexpr std::u16string_view kBalisesVides[] = {
    u"area",  u"base",    u"basefont", u"br",   u"col",  u"embed", u"frame",  u"hr",    u"img",
    u"input", u"isindex", u"keygen",   u"link", u"meta", u"param", u"source", u"track", u"wbr",
};

// The opening tag becomes a line feed.
inline constexpr std::u16string_view kBalisesSautOuvrante[] = {
    u"p", u"div", u"h1", u"h2", u"h3", u"h4", u"h5", u"h6", u"dt", u"dd",
};

// The closing tag becomes a line feed (not "dt" and "dd": theirs disappear).
inline constexpr std::u16string_view kBalisesSautFermante[] = {
    u"p", u"div", u"h1", u"h2", u"h3", u"h4", u"h5", u"h6",
};

// The opening tag becomes U+000E.
inline constexpr std::u16string_view kBalisesMarqueItem[] = {u"li", u"tr"};

// The opening tag becomes a tab; "th" is deliberately absent.
inline constexpr std::u16string_view kBalisesMarqueCellule[] = {u"td"};

struct StyleDeBalise {
  std::u16string_view balise;
  uint32_t styles;  // eStyle bits; no tag carries eNonTexte
};

// The bold tag "b" is deliberately absent: it carries no style.
inline constexpr StyleDeBalise kStylesDesBalises[] = {
    {u"em", eItalique}, {u"i", eItalique},   {u"strong", eGras}, {u"h1", eGras},
    {u"h2", eGras},     {u"h3", eGras},      {u"h4", eGras},     {u"h5", eGras},
    {u"h6", eGras},     {u"sup", eExposant}, {u"sub", eIndice},  {u"del", eBarre},
};

struct FermetureImplicite {
  std::u16string_view ouvert;                      // the open element
  std::span<const std::u16string_view> fermantes;  // opening tags that close it
};

namespace detail {
inline constexpr std::u16string_view kFermeDdDt[] = {u"dd", u"dt"};
inline constexpr std::u16string_view kFermeHead[] = {u"body"};
inline constexpr std::u16string_view kFermeLi[] = {u"li"};
inline constexpr std::u16string_view kFermeOptgroup[] = {u"optgroup"};
inline constexpr std::u16string_view kFermeOption[] = {u"option", u"optgroup"};
inline constexpr std::u16string_view kFermeP[] = {
    u"address", u"article", u"aside", u"blockquote", u"div", u"dl", u"fieldset",
    u"footer",  u"form",    u"h1",    u"h2",         u"h3",  u"h4", u"h5",
    u"h6",      u"header",  u"hr",    u"menu",       u"nav", u"ol", u"pre",
    u"section", u"table",   u"ul",    u"p",
};
inline constexpr std::u16string_view kFermeTbody[] = {u"tbody", u"tfoot"};
inline constexpr std::u16string_view kFermeCellule[] = {u"th", u"td"};
inline constexpr std::u16string_view kFermeTr[] = {u"tr"};
}  // namespace detail

// The optional end tags. "tfoot" is a key with no closer: nothing closes it implicitly. An open
// "colgroup" follows a fixed rule of the reader instead (any opening tag but "col" closes it).
inline constexpr FermetureImplicite kFermeturesImplicites[] = {
    {u"dd", detail::kFermeDdDt},
    {u"dt", detail::kFermeDdDt},
    {u"head", detail::kFermeHead},
    {u"li", detail::kFermeLi},
    {u"optgroup", detail::kFermeOptgroup},
    {u"option", detail::kFermeOption},
    {u"p", detail::kFermeP},
    {u"tbody", detail::kFermeTbody},
    {u"td", detail::kFermeCellule},
    {u"tfoot", {}},
    {u"th", detail::kFermeCellule},
    {u"thead", detail::kFermeTbody},
    {u"tr", detail::kFermeTr},
};

struct Entite {
  std::u16string_view nom;  // with its ";", without the "&"
  char16_t caractere;
};

// The named references. Two differ on purpose from the usual characters: "nbsp;" stands for the
// narrow no-break space U+202F and "frasl;" for "/". No name and no character appears twice.
// clang-format off
inline constexpr Entite kEntitesHTML[] = {
    {u"amp;", u'\u0026'},
    {u"frasl;", u'\u002F'},
    {u"lt;", u'\u003C'},
    {u"gt;", u'\u003E'},
    {u"dagger;", u'\u2020'},
    {u"Dagger;", u'\u2021'},
    {u"permil;", u'\u2030'},
    {u"trade;", u'\u2122'},
    {u"cent;", u'\u00A2'},
    {u"pound;", u'\u00A3'},
    {u"sect;", u'\u00A7'},
    {u"copy;", u'\u00A9'},
    {u"not;", u'\u00AC'},
    {u"reg;", u'\u00AE'},
    {u"deg;", u'\u00B0'},
    {u"micro;", u'\u00B5'},
    {u"para;", u'\u00B6'},
    {u"frac14;", u'\u00BC'},
    {u"frac12;", u'\u00BD'},
    {u"frac34;", u'\u00BE'},
    {u"Agrave;", u'\u00C0'},
    {u"Aacute;", u'\u00C1'},
    {u"Acirc;", u'\u00C2'},
    {u"Atilde;", u'\u00C3'},
    {u"Auml;", u'\u00C4'},
    {u"Aring;", u'\u00C5'},
    {u"AElig;", u'\u00C6'},
    {u"Ccedil;", u'\u00C7'},
    {u"Egrave;", u'\u00C8'},
    {u"Eacute;", u'\u00C9'},
    {u"Ecirc;", u'\u00CA'},
    {u"Euml;", u'\u00CB'},
    {u"Igrave;", u'\u00CC'},
    {u"Iacute;", u'\u00CD'},
    {u"Icirc;", u'\u00CE'},
    {u"Iuml;", u'\u00CF'},
    {u"Ntilde;", u'\u00D1'},
    {u"Ograve;", u'\u00D2'},
    {u"Oacute;", u'\u00D3'},
    {u"Ocirc;", u'\u00D4'},
    {u"Otilde;", u'\u00D5'},
    {u"Ouml;", u'\u00D6'},
    {u"Oslash;", u'\u00D8'},
    {u"Ugrave;", u'\u00D9'},
    {u"Uacute;", u'\u00DA'},
    {u"Ucirc;", u'\u00DB'},
    {u"Uuml;", u'\u00DC'},
    {u"agrave;", u'\u00E0'},
    {u"aacute;", u'\u00E1'},
    {u"acirc;", u'\u00E2'},
    {u"atilde;", u'\u00E3'},
    {u"auml;", u'\u00E4'},
    {u"aring;", u'\u00E5'},
    {u"aelig;", u'\u00E6'},
    {u"ccedil;", u'\u00E7'},
    {u"egrave;", u'\u00E8'},
    {u"eacute;", u'\u00E9'},
    {u"ecirc;", u'\u00EA'},
    {u"euml;", u'\u00EB'},
    {u"igrave;", u'\u00EC'},
    {u"iacute;", u'\u00ED'},
    {u"icirc;", u'\u00EE'},
    {u"iuml;", u'\u00EF'},
    {u"ntilde;", u'\u00F1'},
    {u"ograve;", u'\u00F2'},
    {u"oacute;", u'\u00F3'},
    {u"ocirc;", u'\u00F4'},
    {u"otilde;", u'\u00F5'},
    {u"ouml;", u'\u00F6'},
    {u"oslash;", u'\u00F8'},
    {u"ugrave;", u'\u00F9'},
    {u"uacute;", u'\u00FA'},
    {u"ucirc;", u'\u00FB'},
    {u"uuml;", u'\u00FC'},
    {u"nbsp;", u'\u202F'},
    {u"quot;", u'\u0022'},
    {u"check;", u'\u2713'},
};
// clang-format on
namespace detail {
constexpr auto kNom = [](std::u16string_view nom) { return nom; };
}  // namespace detail
static_assert(ClesUniques(kEntitesHTML, [](const Entite& e) { return e.nom; }) &&
                  ClesUniques(kEntitesHTML, [](const Entite& e) { return e.caractere; }),
              "one character a reference name and one name a character, both ways");
static_assert(ClesUniques(kBalisesContenuBrut, detail::kNom) &&
                  ClesUniques(kBalisesVides, detail::kNom) &&
                  ClesUniques(kBalisesSautOuvrante, detail::kNom) &&
                  ClesUniques(kBalisesSautFermante, detail::kNom) &&
                  ClesUniques(kStylesDesBalises, [](const StyleDeBalise& s) { return s.balise; }) &&
                  ClesUniques(kFermeturesImplicites,
                              [](const FermetureImplicite& f) { return f.ouvert; }),
              "a tag appears once in each table");

// Everything the tables say about one tag name, gathered by a single lookup.
struct ClasseDeBalise {
  bool contenuBrut = false;
  bool vide = false;
  bool sautOuvrante = false;
  bool sautFermante = false;
  bool marqueItem = false;
  bool marqueCellule = false;
  bool marqueHTML = false;
  uint32_t styles = 0;
  const FermetureImplicite* fermetures = nullptr;  // null when the name is no key of the map
};

// All lookups cost O(1) whatever the length of the name asked about.
ClasseDeBalise ClasseDe(std::u16string_view nom);
// Does an opening tag named `nouveau` close an open element implicitly, the element's
// `fermetures` (from its class) being given?
bool FermeImplicitement(const FermetureImplicite* fermetures, std::u16string_view nouveau);

// CaractereDEntite: the character of an entity name (with its ";"), exactly, case included.
std::optional<char16_t> CaractereDEntite(std::u16string_view nom);
// EntiteDeCaractere: the entity name (with its ";") of a character.
std::optional<std::u16string_view> EntiteDeCaractere(char16_t caractere);

}  // namespace TablesHTML

// The LaTeX command table, written as data, one record a line, grouped by what the commands do.
#include "latex/CommandesLaTeX.h"

#include "ferlane/ClesUniques.h"
#include "ferlane/IndexDeNoms.h"

namespace {

constexpr uint32_t kSautUnBloc = eCmdBloc | eCmdSautUnArgument;
constexpr uint32_t kSautDeuxBloc = eCmdBloc | eCmdSautDeuxArguments;

// 174 records. The order is that of the groups below; a name appears once, so the first match is
// also the only one.
constexpr CommandeLaTeX kTable[] = {
    // Sectioning: a paragraph break on each side, the title in bold.
    {u"part", eCmdTitre, eGras},
    {u"chapter", eCmdTitre, eGras},
    {u"section", eCmdTitre, eGras},
    {u"subsection", eCmdTitre, eGras},
    {u"subsubsection", eCmdTitre, eGras},
    // Blocks.
    {u"paragraph", eCmdBloc, 0},
    {u"subparagraph", eCmdBloc, 0},
    {u"marginnote", eCmdBloc, 0},
    {u"footnotetext", eCmdBloc, 0},
    {u"title", eCmdBloc, 0},
    {u"shorttitle", eCmdBloc, 0},
    {u"author", eCmdBloc, 0},
    {u"shortauthor", eCmdBloc, 0},
    {u"date", eCmdBloc, 0},
    {u"thanks", eCmdBloc, 0},
    // Citation and reference keys: kept, but not prose.
    {u"cite", 0, eNonTexte},
    {u"citet", 0, eNonTexte},
    {u"citep", 0, eNonTexte},
    {u"citeauthor", 0, eNonTexte},
    {u"citeyear", 0, eNonTexte},
    {u"citeapos", 0, eNonTexte},
    {u"ref", 0, eNonTexte},
    {u"vref", 0, eNonTexte},
    {u"autoref", 0, eNonTexte},
    {u"nameref", 0, eNonTexte},
    {u"cref", 0, eNonTexte},
    {u"labelcref", 0, eNonTexte},
    {u"eqref", eCmdParentheses, eNonTexte},
    // Italic, slanted and quotations.
    {u"emph", 0, eItalique},
    {u"textit", 0, eItalique},
    {u"textsl", 0, eItalique},
    {u"it", 0, eItalique},
    {u"em", 0, eItalique},
    {u"sl", 0, eItalique},
    {u"itshape", 0, eItalique},
    {u"slshape", 0, eItalique},
    {u"enquote", 0, eItalique},
    {u"textquote", 0, eItalique},
    // Bold.
    {u"textbf", 0, eGras},
    {u"bf", 0, eGras},
    {u"bfseries", 0, eGras},
    {u"bm", 0, eGras},
    {u"hm", 0, eGras},
    {u"boldsymbol", 0, eGras},
    {u"heavysymbol", 0, eGras},
    // Strike-out.
    {u"sout", 0, eBarre},
    {u"st", 0, eBarre},
    // A colour, a target or an address first, then the text.
    {u"textcolor", eCmdSautUnArgument, 0},
    {u"color", eCmdSautUnArgument, 0},
    {u"colorbox", eCmdSautUnArgument, 0},
    {u"hyperlink", eCmdSautUnArgument, 0},
    {u"hypertarget", eCmdSautUnArgument, 0},
    {u"href", eCmdSautUnArgument, 0},
    {u"fcolorbox", eCmdSautDeuxArguments, 0},
    // Quotations in another language: the language (and the source) go, the words stay.
    {u"foreignquote", eCmdSautUnArgument, eItalique},
    {u"hyphenquote", eCmdSautUnArgument, eItalique},
    {u"foreigntextquote", eCmdSautUnArgument, eItalique},
    {u"hyphentextquote", eCmdSautUnArgument, eItalique},
    {u"textcquote", eCmdSautUnArgument, eItalique},
    {u"blockquote", eCmdBloc, eItalique},
    {u"foreignblockquote", kSautUnBloc, eItalique},
    {u"hyphenblockquote", kSautUnBloc, eItalique},
    {u"hybridblockquote", kSautUnBloc, eItalique},
    {u"blockcquote", kSautUnBloc, eItalique},
    {u"foreigntextcquote", eCmdSautDeuxArguments, eItalique},
    {u"hyphentextcquote", eCmdSautDeuxArguments, eItalique},
    {u"foreignblockcquote", kSautDeuxBloc, eItalique},
    {u"hyphenblockcquote", kSautDeuxBloc, eItalique},
    {u"hybridblockcquote", kSautDeuxBloc, eItalique},
    // Glossaries and acronyms.
    {u"newglossaryentry", eCmdGlossaire, 0},
    {u"Gls", eCmdGlossaire, 0},
    {u"gls", eCmdGlossaire, 0},
    {u"glspl", eCmdGlossaire, 0},
    {u"Glspl", eCmdGlossaire, 0},
    {u"newacronym", eCmdGlossaire, 0},
    {u"acrlong", eCmdGlossaire, 0},
    {u"acrshort", eCmdGlossaire, 0},
    {u"acrfull", eCmdGlossaire, 0},
    // The command goes, its brace arguments stay as text.
    {u"item", 0, 0},
    {u"itemize", 0, 0},
    {u"text", 0, 0},
    {u"textnormal", 0, 0},
    {u"textup", 0, 0},
    {u"textsc", 0, 0},
    {u"textmd", 0, 0},
    {u"textrm", 0, 0},
    {u"textsf", 0, 0},
    {u"texttt", 0, 0},
    {u"textlf", 0, 0},
    {u"uppercase", 0, 0},
    {u"tt", 0, 0},
    {u"normalfont", 0, 0},
    {u"rmfamily", 0, 0},
    {u"sffamily", 0, 0},
    {u"ttfamily", 0, 0},
    {u"upshape", 0, 0},
    {u"scshape", 0, 0},
    {u"mdseries", 0, 0},
    {u"lfseries", 0, 0},
    {u"tiny", 0, 0},
    {u"small", 0, 0},
    {u"normalsize", 0, 0},
    {u"large", 0, 0},
    {u"Large", 0, 0},
    {u"LARGE", 0, 0},
    {u"huge", 0, 0},
    {u"Huge", 0, 0},
    {u"scriptsize", 0, 0},
    {u"footnotesize", 0, 0},
    {u"mathnormal", 0, 0},
    {u"mathrm", 0, 0},
    {u"mathit", 0, 0},
    {u"mathbf", 0, 0},
    {u"mathsf", 0, 0},
    {u"mathtt", 0, 0},
    {u"mathfrak", 0, 0},
    {u"mathcal", 0, 0},
    {u"mathbb", 0, 0},
    {u"mathscr", 0, 0},
    {u"textsuperscript", 0, 0},
    {u"textsubscript", 0, 0},
    {u"caption", 0, 0},
    {u"url", 0, 0},
    {u"comment", 0, 0},
    {u"rcomment", 0, 0},
    {u"ubcomment", 0, 0},
    {u"ubcommentinline", 0, 0},
    {u"ubcommentmultiline", 0, 0},
    {u"mbox", 0, 0},
    {u"quote", 0, 0},
    {u"bsc", 0, 0},
    {u"shortstack", 0, 0},
    {u"species", 0, 0},
    {u"lettrine", 0, 0},
    {u"opening", 0, 0},
    {u"closing", 0, 0},
    {u"encl", 0, 0},
    {u"address", 0, 0},
    {u"ps", 0, 0},
    {u"frametitle", 0, 0},
    {u"framesubtitle", 0, 0},
    {u"subtitle", 0, 0},
    {u"subject", 0, 0},
    {u"institute", 0, 0},
    {u"firstname", 0, 0},
    {u"familyname", 0, 0},
    {u"mobile", 0, 0},
    {u"phone", 0, 0},
    {u"fax", 0, 0},
    {u"email", 0, 0},
    {u"homepage", 0, 0},
    {u"extrainfo", 0, 0},
    {u"ecvfootnote", 0, 0},
    {u"ecvname", 0, 0},
    {u"ecvaddress", 0, 0},
    {u"ecvtelephone", 0, 0},
    {u"ecvfax", 0, 0},
    {u"ecvemail", 0, 0},
    {u"ecvnationality", 0, 0},
    {u"ecvdateofbirth", 0, 0},
    {u"ecvgender", 0, 0},
    {u"ecvitem", 0, 0},
    {u"ecvsection", 0, 0},
    {u"ecvmothertongue", 0, 0},
    {u"ecvlanguageheader", 0, 0},
    {u"ecvlanguage", 0, 0},
    {u"ecvlastlanguage", 0, 0},
    {u"shadowbox", 0, 0},
    {u"doublebox", 0, 0},
    {u"ovalbox", 0, 0},
    {u"Ovalbox", 0, 0},
    {u"singlespacing", 0, 0},
    {u"onehalfspacing", 0, 0},
    {u"doublespacing", 0, 0},
};
static_assert(ClesUniques(kTable, [](const CommandeLaTeX& c) { return c.nom; }),
              "a command name appears twice in kCommandesLaTeX");

}  // namespace

const std::span<const CommandeLaTeX> kCommandesLaTeX{kTable};

namespace {

// Names are unique, so the first record of a name is its only one and a hashed index answers
// as the linear search in table order would, without walking the records a command.
const IndexDeNoms<const CommandeLaTeX*> kIndex = [] {
  IndexDeNoms<const CommandeLaTeX*> index(std::size(kTable));
  for (const CommandeLaTeX& c : kTable) index[c.nom] = &c;
  return index;
}();

}  // namespace

const CommandeLaTeX* TrouveCommandeLaTeX(std::u16string_view nom) {
  const CommandeLaTeX* const* commande = kIndex.Trouve(nom);
  return commande == nullptr ? nullptr : *commande;
}

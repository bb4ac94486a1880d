// The constant strings the LaTeX converters write or look for, beside the tables: the paragraph
// break and the formula placeholder they insert, and the keywords that make a text LaTeX.
#pragma once

#include <string_view>

#include "ferlane/ChaineN.h"

inline const ChaineN kParagraphe{u"\n\n"};
// Stands for a formula or a glossary reference that cannot be read as prose.
inline const ChaineN kMarqueTeX{u"[TeX]"};
inline const ChaineN kEspace{u" "};
inline const ChaineN kParentheseOuvrante{u"("};
inline const ChaineN kParentheseFermante{u")"};

inline constexpr std::u16string_view kMotBegin = u"begin";
inline constexpr std::u16string_view kMotEnd = u"end";

// A text is LaTeX when one of these begins at a backslash near its start; tried in this order.
inline constexpr std::u16string_view kMotsClesLaTeX[] = {
    u"\\usepackage", u"\\input", u"\\begin", u"\\chapter", u"\\relax",
};

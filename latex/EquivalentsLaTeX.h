// The LaTeX spellings of characters: escapes, punctuation commands, accents, spaces, ligatures
// and typographic ASCII sequences, each with the character it stands for in the internal text.
// Forward, a table is tried in order at a position and the first entry whose LaTeX form stands
// there wins, so longer forms come before their prefixes. Backward, the first entry whose
// character is the one at a position gives its LaTeX form.
// Constant data, read-only, safe to read from any thread.
#pragma once

#include <string_view>

struct EquivalentLaTeX {
  std::u16string_view latex;
  std::u16string_view texte;
};

inline constexpr EquivalentLaTeX kEchappementsLaTeX[] = {
    {u"\\^{}", u"^"}, {u"\\~{}", u"~"}, {u"\\#", u"#"}, {u"\\$", u"$"}, {u"\\%", u"%"},
    {u"\\&", u"&"},   {u"\\_", u"_"},   {u"\\{", u"{"}, {u"\\}", u"}"},
};

inline constexpr EquivalentLaTeX kCommandesPonctuation[] = {
    {u"\\---", u"\u2014"}, {u"\\--", u"\u2013"}, {u"\\-/", u"-"},     {u"\\-,", u" "},
    {u"\\===", u"\u2014"}, {u"\\==", u"\u2013"}, {u"\\=/", u"-"},     {u"\\=,", u"\u00A0"},
    {u"\\-", u""},         {u"\\@", u""},        {u"\\/", u""},       {u"\\,", u"\u2009"},
    {u"\\!", u""},         {u"\\:", u"\u2009"},  {u"\\>", u"\u2009"}, {u"\\;", u"\u2009"},
    {u"\\ ", u" "},        {u"\\\\", u"\n"},
};

// Grave "`", circumflex "^", acute "'" and diaeresis '"' on the letters French needs; the
// braced forms repeat the unbraced ones in the same order, so a backward lookup gives the
// unbraced form.
inline constexpr EquivalentLaTeX kAccentsLaTeX[] = {
    {u"\\`a", u"à"},    {u"\\^a", u"â"},    {u"\\`e", u"è"},     {u"\\^e", u"ê"},
    {u"\\'e", u"é"},    {u"\\\"e", u"ë"},   {u"\\^i", u"î"},     {u"\\\"i", u"ï"},
    {u"\\^o", u"ô"},    {u"\\\"o", u"ö"},   {u"\\`u", u"ù"},     {u"\\^u", u"û"},
    {u"\\\"u", u"ü"},   {u"\\`A", u"À"},    {u"\\^A", u"Â"},     {u"\\`E", u"È"},
    {u"\\^E", u"Ê"},    {u"\\'E", u"É"},    {u"\\\"E", u"Ë"},    {u"\\^I", u"Î"},
    {u"\\\"I", u"Ï"},   {u"\\^O", u"Ô"},    {u"\\\"O", u"Ö"},    {u"\\`U", u"Ù"},
    {u"\\^U", u"Û"},    {u"\\\"U", u"Ü"},   {u"\\^\\i", u"î"},   {u"\\\"\\i", u"ï"},
    {u"\\`{a}", u"à"},  {u"\\^{a}", u"â"},  {u"\\`{e}", u"è"},   {u"\\^{e}", u"ê"},
    {u"\\'{e}", u"é"},  {u"\\\"{e}", u"ë"}, {u"\\^{i}", u"î"},   {u"\\\"{i}", u"ï"},
    {u"\\^{o}", u"ô"},  {u"\\\"{o}", u"ö"}, {u"\\`{u}", u"ù"},   {u"\\^{u}", u"û"},
    {u"\\\"{u}", u"ü"}, {u"\\`{A}", u"À"},  {u"\\^{A}", u"Â"},   {u"\\`{E}", u"È"},
    {u"\\^{E}", u"Ê"},  {u"\\'{E}", u"É"},  {u"\\\"{E}", u"Ë"},  {u"\\^{I}", u"Î"},
    {u"\\\"{I}", u"Ï"}, {u"\\^{O}", u"Ô"},  {u"\\\"{O}", u"Ö"},  {u"\\`{U}", u"Ù"},
    {u"\\^{U}", u"Û"},  {u"\\\"{U}", u"Ü"}, {u"\\^{\\i}", u"î"}, {u"\\\"{\\i}", u"ï"},
};

// Backward, both thin spaces become "\,".
inline constexpr EquivalentLaTeX kEspacesLaTeX[] = {
    {u"~", u"\u00A0"},
    {u"\\,", u"\u2009"},
    {u"\\,", u"\u202F"},
};

inline constexpr EquivalentLaTeX kLigaturesLaTeX[] = {
    {u"\\c{c}", u"ç"}, {u"\\c{C}", u"Ç"}, {u"\\oe{}", u"œ"},
    {u"\\ae{}", u"æ"}, {u"\\OE{}", u"Œ"}, {u"\\AE{}", u"Æ"},
};

// Tried only at one of kDeclencheursTypographie.
inline constexpr EquivalentLaTeX kTypographieLaTeX[] = {
    {u"---", u"\u2014"}, {u"--", u"\u2013"}, {u"``", u"\u201C"},
    {u"''", u"\u201D"},  {u"`", u"\u2018"},  {u"'", u"\u2019"},
    {u"<<", u"\u00AB"},  {u">>", u"\u00BB"}, {u"~", u"\u00A0"},
};

// The characters at which kTypographieLaTeX is tried, in this order.
inline constexpr std::u16string_view kDeclencheursTypographie = u"-`'<>~";

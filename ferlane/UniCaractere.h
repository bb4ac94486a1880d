// UniCaractere: the character classes the filters test, one code point (or one UTF-16 unit) at
// a time. ASCII is answered from a table; everything above U+007F asks ICU.
//
// Product decisions, where Unicode offers more than one reading:
//   EstBlanc               Unicode White_Space, except the no-break spaces U+00A0, U+2007 and
//                          U+202F: they carry typography that the corrector checks.
//   EstReturn              LF, CR, VT, FF, U+0085, U+2028, U+2029.
//   EstChiffre             the ASCII digits only.
//   EstAlphaNumerique      letters (L*) and decimal digits (Nd).
//   EstMajuscule           Lu and Lt.
//   EstPonctuationOuBlanc  punctuation (P*) or EstBlanc; symbols such as "<", "+" and "=" are
//                          not punctuation.
//   EstIntron              format characters (Cf), plus U+00AD, U+200B to U+200D, U+2060, U+FEFF.
//   EstTransparent         a blank that is not a line end.
// A lone surrogate unit belongs to no class. All functions are thread-safe.
#pragma once

#include <cstdint>

class UniCaractere {
 public:
  static bool EstBlanc(char32_t c);
  static bool EstReturn(char32_t c);
  static bool EstChiffre(char32_t c) { return c >= U'0' && c <= U'9'; }
  static bool EstAlphaNumerique(char32_t c);
  static bool EstMajuscule(char32_t c);
  static bool EstPonctuationOuBlanc(char32_t c);
  static bool EstIntron(char32_t c);
  static bool EstTransparent(char32_t c) { return EstBlanc(c) && !EstReturn(c); }
  // Simple (one to one) case mappings; a code point without one is returned unchanged.
  static char32_t Minuscule(char32_t c);
  static char32_t Majuscule(char32_t c);
  static bool EstLettre(char32_t c);
};

// Character classes: a 128-entry grid for ASCII, ICU above it.
#include "ferlane/UniCaractere.h"

#include <unicode/uchar.h>

#include <array>

namespace {

enum : uint8_t {
  kBlanc = 1,
  kReturn = 2,
  kLettre = 4,
  kChiffre = 8,
  kMajuscule = 16,
  kPonctuation = 32,
};

constexpr std::array<uint8_t, 128> ConstruitGrille() {
  std::array<uint8_t, 128> grille{};
  for (char c : {'\t', '\n', '\v', '\f', '\r', ' '}) grille[c] |= kBlanc;
  for (char c : {'\n', '\v', '\f', '\r'}) grille[c] |= kReturn;
  for (int c = 'a'; c <= 'z'; ++c) grille[c] |= kLettre;
  for (int c = 'A'; c <= 'Z'; ++c) grille[c] |= kLettre | kMajuscule;
  for (int c = '0'; c <= '9'; ++c) grille[c] |= kChiffre;
  // ASCII punctuation (P*) as Unicode classes it; $ + < = > ^ ` | ~ are symbols (S*).
  for (char c : {'!', '"', '#', '%', '&', '\'', '(',  ')', '*', ',', '-', '.',
                 '/', ':', ';', '?', '@', '[',  '\\', ']', '_', '{', '}'})
    grille[c] |= kPonctuation;
  return grille;
}

constexpr std::array<uint8_t, 128> kGrilleASCII = ConstruitGrille();

bool AClasse(char32_t c, uint8_t classe) {
  return (kGrilleASCII[c] & classe) != 0;
}

bool EstNoBreak(char32_t c) {
  return c == 0x00A0 || c == 0x2007 || c == 0x202F;
}

bool EstPonctuationICU(int8_t type) {
  switch (type) {
    case U_CONNECTOR_PUNCTUATION:
    case U_DASH_PUNCTUATION:
    case U_START_PUNCTUATION:
    case U_END_PUNCTUATION:
    case U_INITIAL_PUNCTUATION:
    case U_FINAL_PUNCTUATION:
    case U_OTHER_PUNCTUATION:
      return true;
    default:
      return false;
  }
}

bool EstLettreICU(int8_t type) {
  switch (type) {
    case U_UPPERCASE_LETTER:
    case U_LOWERCASE_LETTER:
    case U_TITLECASE_LETTER:
    case U_MODIFIER_LETTER:
    case U_OTHER_LETTER:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool UniCaractere::EstBlanc(char32_t c) {
  if (c < 0x80) return AClasse(c, kBlanc);
  return !EstNoBreak(c) && u_hasBinaryProperty(static_cast<UChar32>(c), UCHAR_WHITE_SPACE);
}

bool UniCaractere::EstReturn(char32_t c) {
  if (c < 0x80) return AClasse(c, kReturn);
  return c == 0x0085 || c == 0x2028 || c == 0x2029;
}

bool UniCaractere::EstLettre(char32_t c) {
  if (c < 0x80) return AClasse(c, kLettre);
  return EstLettreICU(u_charType(static_cast<UChar32>(c)));
}

bool UniCaractere::EstAlphaNumerique(char32_t c) {
  if (c < 0x80) return AClasse(c, kLettre | kChiffre);
  const int8_t type = u_charType(static_cast<UChar32>(c));
  return EstLettreICU(type) || type == U_DECIMAL_DIGIT_NUMBER;
}

bool UniCaractere::EstMajuscule(char32_t c) {
  if (c < 0x80) return AClasse(c, kMajuscule);
  const int8_t type = u_charType(static_cast<UChar32>(c));
  return type == U_UPPERCASE_LETTER || type == U_TITLECASE_LETTER;
}

bool UniCaractere::EstPonctuationOuBlanc(char32_t c) {
  if (c < 0x80) return AClasse(c, kPonctuation | kBlanc);
  return EstPonctuationICU(u_charType(static_cast<UChar32>(c))) || EstBlanc(c);
}

bool UniCaractere::EstIntron(char32_t c) {
  if (c < 0x80) return false;
  if (c == 0x00AD || (c >= 0x200B && c <= 0x200D) || c == 0x2060 || c == 0xFEFF) return true;
  return u_charType(static_cast<UChar32>(c)) == U_FORMAT_CHAR;
}

char32_t UniCaractere::Minuscule(char32_t c) {
  if (c < 0x80) return AClasse(c, kMajuscule) ? c + 32 : c;
  return static_cast<char32_t>(u_tolower(static_cast<UChar32>(c)));
}

char32_t UniCaractere::Majuscule(char32_t c) {
  if (c < 0x80) return (c >= U'a' && c <= U'z') ? c - 32 : c;
  return static_cast<char32_t>(u_toupper(static_cast<UChar32>(c)));
}

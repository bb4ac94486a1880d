// Every character class against ICU, over every code point, in one loop.
#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include "ferlane/UniCaractere.h"

namespace {

bool EstPonctuation(int8_t type) {
  return type == U_CONNECTOR_PUNCTUATION || type == U_DASH_PUNCTUATION ||
         type == U_START_PUNCTUATION || type == U_END_PUNCTUATION ||
         type == U_INITIAL_PUNCTUATION || type == U_FINAL_PUNCTUATION ||
         type == U_OTHER_PUNCTUATION;
}

bool EstLettre(int8_t type) {
  return type == U_UPPERCASE_LETTER || type == U_LOWERCASE_LETTER || type == U_TITLECASE_LETTER ||
         type == U_MODIFIER_LETTER || type == U_OTHER_LETTER;
}

TEST(UniCaractere, ChaqueClasseSuitICUSurTousLesCodePoints) {
  int ecarts = 0;
  for (UChar32 c = 0; c <= 0x10FFFF && ecarts < 10; ++c) {
    const int8_t type = u_charType(c);
    const bool noBreak = c == 0xA0 || c == 0x2007 || c == 0x202F;
    const bool blanc = u_hasBinaryProperty(c, UCHAR_WHITE_SPACE) && !noBreak;
    const bool retour =
        c == 0x0A || c == 0x0B || c == 0x0C || c == 0x0D || c == 0x85 || c == 0x2028 || c == 0x2029;
    const bool intron = type == U_FORMAT_CHAR || c == 0xAD || (c >= 0x200B && c <= 0x200D) ||
                        c == 0x2060 || c == 0xFEFF;
    const char32_t u = static_cast<char32_t>(c);
    const bool attendus[] = {
        blanc,
        retour,
        c >= '0' && c <= '9',
        EstLettre(type) || type == U_DECIMAL_DIGIT_NUMBER,
        type == U_UPPERCASE_LETTER || type == U_TITLECASE_LETTER,
        EstPonctuation(type) || blanc,
        intron,
        blanc && !retour,
    };
    const bool obtenus[] = {
        UniCaractere::EstBlanc(u),     UniCaractere::EstReturn(u),
        UniCaractere::EstChiffre(u),   UniCaractere::EstAlphaNumerique(u),
        UniCaractere::EstMajuscule(u), UniCaractere::EstPonctuationOuBlanc(u),
        UniCaractere::EstIntron(u),    UniCaractere::EstTransparent(u),
    };
    for (size_t k = 0; k < std::size(attendus); ++k) {
      if (attendus[k] != obtenus[k]) {
        ADD_FAILURE() << "class " << k << " differs for U+" << std::hex << c;
        ++ecarts;
      }
    }
  }
}

}  // namespace

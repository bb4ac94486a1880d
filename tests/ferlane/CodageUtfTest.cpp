// UTF-8 decoding and encoding on texts built to put every kind of sequence at every offset of the
// 8- and 16-unit blocks the fast paths work in: round trips, and where an invalid byte is found.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "ferlane/CodageUtf.h"

namespace {

// A random text of ASCII runs of any length and one-, two-, three- and four-byte characters.
std::u16string TexteAleatoire(std::mt19937& alea, size_t longueur) {
  static constexpr char32_t kAutres[] = {U'é',      U'\u07FF',     U'\u0800',     U'€',
                                         U'\uFFFD', U'\U00010000', U'\U0001D11E', U'\U0010FFFF'};
  std::u16string texte;
  while (texte.size() < longueur) {
    if (alea() % 3 != 0) {
      texte.append(alea() % 40, static_cast<char16_t>(u'a' + alea() % 26));
    } else {
      AjouteCodePoint(texte, kAutres[alea() % std::size(kAutres)]);
    }
  }
  return texte;
}

TEST(CodageUtf, AllerRetourSurTousLesDecalages) {
  std::mt19937 alea(3);
  for (int essai = 0; essai < 500; ++essai) {
    const std::u16string texte = TexteAleatoire(alea, alea() % 300);
    const std::string octets = EncodeUtf8(texte);
    std::u16string decode;
    ASSERT_EQ(DecodeUtf8Strict(octets, decode), std::nullopt);
    ASSERT_EQ(decode, texte);
    ASSERT_EQ(DecodeUtf8(octets), texte);
    // Appending in pieces gives the whole, when no piece splits a pair.
    std::string parPieces = "x";
    for (size_t i = 0; i < texte.size();) {
      size_t fin = std::min(texte.size(), i + 1 + alea() % 20);
      if (fin < texte.size() && texte[fin - 1] >= 0xD800 && texte[fin - 1] <= 0xDBFF) ++fin;
      AjouteUtf8(std::u16string_view(texte).substr(i, fin - i), parPieces);
      i = fin;
    }
    ASSERT_EQ(parPieces, "x" + octets);
  }
}

// A byte that never starts nor continues a sequence, put between two characters: the strict
// decoder names its offset, the lenient one puts one U+FFFD there.
TEST(CodageUtf, OctetInvalideTrouveAuBonEndroit) {
  std::mt19937 alea(5);
  for (int essai = 0; essai < 500; ++essai) {
    const std::string avant = EncodeUtf8(TexteAleatoire(alea, alea() % 100));
    const std::string apres = EncodeUtf8(TexteAleatoire(alea, alea() % 100));
    const std::string octets = avant + "\xFF" + apres;
    std::u16string decode;
    ASSERT_EQ(DecodeUtf8Strict(octets, decode), avant.size());
    ASSERT_EQ(TrouveErreurUtf8(octets), avant.size());
    ASSERT_EQ(DecodeUtf8(octets), DecodeUtf8(avant) + u"\uFFFD" + DecodeUtf8(apres));
  }
}

// Every scalar value, one after another in one text: decoded back exactly, and read one by one.
TEST(CodageUtf, ToutPointDeCodeFaitLAllerRetour) {
  std::u16string texte;
  for (char32_t c = 1; c <= 0x10FFFF; ++c)
    if (!EstSubstitut(c)) AjouteCodePoint(texte, c);
  const std::string octets = EncodeUtf8(texte);
  EXPECT_EQ(octets.size(), 0x7F + 2 * 0x780 + 3 * (0x10000 - 0x800 - 0x800) + 4 * 0x100000);
  std::u16string decode;
  ASSERT_EQ(DecodeUtf8Strict(octets, decode), std::nullopt);
  ASSERT_EQ(decode, texte);
  size_t position = 0;
  for (char32_t c = 1; c <= 0x10FFFF; ++c) {
    if (EstSubstitut(c)) continue;
    ASSERT_EQ(LitCodePoint(texte, position), c);
  }
}

// Invalid sequences after a valid prefix: where the strict decoder stops.
TEST(CodageUtf, SequencesInvalides) {
  struct Cas {
    const char* nom;
    std::string octets;
    size_t erreur;
  } const kCas[] = {
      {"lone continuation", "ab\x80", 2},
      {"overlong two bytes", "ab\xC0\xAF", 2},
      {"overlong three bytes", "ab\xE0\x80\xAF", 2},
      {"overlong four bytes", "ab\xF0\x80\x80\xAF", 2},
      {"surrogate encoded", "ab\xED\xA0\x80", 2},
      {"beyond U+10FFFF", "ab\xF4\x90\x80\x80", 2},
      {"F5 never starts", "ab\xF5\x80\x80\x80", 2},
      {"truncated at the end", "ab\xE2\x82", 2},
      {"truncated before ASCII", "ab\xE2\x82z", 2},
      {"FE never starts", "abcdefghijklmnop\xFE", 16},
  };
  for (const Cas& c : kCas) {
    std::u16string decode;
    EXPECT_EQ(DecodeUtf8Strict(c.octets, decode), c.erreur) << c.nom;
    EXPECT_EQ(TrouveErreurUtf8(c.octets), c.erreur) << c.nom;
  }
}

TEST(CodageUtf, SurrogatSeulEnUtf8) {
  // An unpaired surrogate inside or at the end of an ASCII block becomes U+FFFD.
  EXPECT_EQ(EncodeUtf8(u"abcdefg\xD800hij"), "abcdefg\xEF\xBF\xBDhij");
  EXPECT_EQ(EncodeUtf8(u"abcdefgh\xDC00"), "abcdefgh\xEF\xBF\xBD");
}

}  // namespace

// TexteLisible: what the command prints in the prose profile, from an internal text and its
// style bits.
#include <gtest/gtest.h>

#include "DecritRapports.h"
#include "ferlane/Convertisseur.h"
#include "framework/TexteLisible.h"

namespace {

TEST(TexteLisible, NonProseEtMarqueurs) {
  struct Cas {
    std::u16string_view texte;
    std::string_view nonProse;  // 'n' under each unit marked as not prose
    std::string_view attendu;
  };
  static constexpr Cas kCas[] = {
      {u"plain", "", "plain"},
      // Left out between two words: one space keeps them apart; beside punctuation, nothing.
      {u"see code here", "    nnnn     ", "see here"},
      {u"see  code  here", "     nnnn      ", "see  here"},  // blanks of its own stay
      {u"a[TeX]b", " nnnnn ", "a b"},
      {u"(x).", " n  ", "()."},
      // Markers: U+000E becomes a line feed, U+0007 and U+0011 go, without gluing words.
      {u"a\u000Eb", "", "a\nb"},
      {u"word\u0007.", "", "word."},
      {u"text\u0011title\u0011", "", "text title"},
      // Astral letters count as word characters on either side.
      {u"\U0001D400x\U0001D400", "  n  ", "\U0001D400 \U0001D400"},
  };
  for (const auto& [texte, nonProse, attendu] : kCas) {
    std::vector<BitsDAttributs> styles(texte.size(), 0);
    for (size_t i = 0; i < nonProse.size(); ++i)
      if (nonProse[i] == 'n') styles[i] = eNonTexte | eGras;
    const TexteAvecAttributs interne(
        ChaineN(texte), nonProse.empty() ? std::vector<BitsDAttributs>{} : std::move(styles));
    EXPECT_EQ(TexteLisible(interne).VersUtf8(), attendu) << DecritTexte(texte);
  }
}

}  // namespace

// TexteLisible: what the command prints in the prose profile, from an internal text and its
// style bits.
#include <gtest/gtest.h>

#include <tuple>

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
      {u"end some_identifier_long_enough", "    nnnnnnnnnnnnnnnnnnnnnnnnnnn", "end "},
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

// The fast walk copies runs of prose sixteen units at a time: a few rows above, after every
// offset of a block, among blocks with and without styled units that stay prose, read the same.
TEST(TexteLisible, AToutDecalage) {
  const std::u16string_view kRempli = u"filler words ok.";  // 16 units, prose
  for (const auto& [texte, nonProse, attendu] :
       std::initializer_list<std::tuple<std::u16string_view, std::string_view, std::string_view>>{
           {u"see code here", "    nnnn     ", "see here"},
           // A run not prose over two blocks and more, left out in steps of sixteen.
           {u"see an_identifier_of_forty_units_or_so_x here",
            "    nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn     ", "see here"},
           {u"a\u000Eb", "", "a\nb"},
           {u"text\u0011title\u0011 x", "", "text title x"},
           {u"\U0001D400x\U0001D400", "  n  ", "\U0001D400 \U0001D400"}}) {
    for (size_t decalage = 0; decalage < 20; ++decalage) {
      const std::u16string avant = std::u16string(kRempli) + std::u16string(decalage, u'x') + u" ";
      const std::u16string tout = avant + std::u16string(texte) + u" " + std::u16string(kRempli);
      std::vector<BitsDAttributs> styles(tout.size(), 0);
      for (size_t i = 0; i < tout.size(); i += 23)
        styles[i] = eItalique;  // blocks with and without
      for (size_t i = 0; i < nonProse.size(); ++i)
        if (nonProse[i] == 'n') styles[avant.size() + i] |= eNonTexte;
      const TexteAvecAttributs interne(ChaineN(tout), std::move(styles));
      EXPECT_EQ(TexteLisible(interne).VersUtf8(), ChaineN(avant).VersUtf8() + std::string(attendu) +
                                                      " " + ChaineN(kRempli).VersUtf8())
          << decalage << " " << DecritTexte(texte);
    }
  }
}

}  // namespace

// The prose profile's common filters: technical tokens and e-mail header blocks.
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "DecritRapports.h"
#include "ferlane/UniCaractere.h"
#include "filters/ConvertisseurEntetesCourriel.h"
#include "filters/ConvertisseurJetonsTechniques.h"
#include "filters/JetonsTechniques.h"

namespace {

TEST(JetonsTechniques, ProseOuTechnique) {
  struct Cas {
    std::u16string_view jeton;
    bool technique;
  };
  static constexpr Cas kCas[] = {
      // Prose, including what looks a little like code.
      {u"word", false},
      {u"and/or", false},
      {u"e.g", false},
      {u"U.S", false},
      {u"don't", false},
      {u"well-known", false},
      {u"1990", false},
      {u"caf\u00E9", false},
      // Addresses.
      {u"https://example.org/a", true},
      {u"www.example.org", true},
      {u"mailto:x", true},
      {u"user@example.org", true},
      {u"@scope/name", true},
      {u"a@b", false},  // no dot after the at sign: not an address
      // Paths, identifiers, versions, dotted names.
      {u"refs/heads/*", true},
      {u"/usr", true},
      {u"~/.npmrc", true},
      {u"snake_case", true},
      {u"\\command", true},
      {u"a=b", true},
      {u"std::string", true},
      {u"<branch>", true},
      {u"f()", true},
      {u"UTF-8", true},
      {u"v1.2.3", true},
      {u"IPv4", true},
      {u"package.json", true},
      {u"os.path", true},
  };
  for (const auto& [jeton, technique] : kCas)
    EXPECT_EQ(EstJetonTechnique(jeton), technique) << DecritTexte(jeton);
}

TEST(ConvertisseurJetonsTechniques, MarqueSansLaPonctuationAutour) {
  struct Cas {
    std::u16string_view texte;
    std::string_view attendu;
  };
  static constexpr Cas kCas[] = {
      {u"", ""},
      {u"plain words only.", ""},
      // The sentence's punctuation stays prose; the token itself does not.
      {u"See (https://x.org/a).", "M[5,20)16"},
      {u"Edit ~/.npmrc, then \"a_b\"", "M[5,13)16 M[21,24)16"},
      // Markers and tabs end a token.
      {u"a\u000Ev2\tx.y", "M[2,4)16"},
      // Closing punctuation alone after a word leaves it a word; anything after it is read.
      {u"end). (see: x.). x}y", "M[17,20)16"},
  };
  for (const auto& [texte, attendu] : kCas) {
    ConvertisseurJetonsTechniques convertisseur;
    EXPECT_EQ(DecritRapports(convertisseur, texte), attendu) << DecritTexte(texte);
  }
}

// The walk jumps eight units at a time to the next unit a rule needs: a token is found wherever
// it stands in a block, whatever unit made it a candidate, and the units that only look like
// candidates ("?", "^", "|", a non-ASCII letter or blank) mark nothing.
TEST(ConvertisseurJetonsTechniques, ToutDecalageDansLesBlocs) {
  const std::u16string_view kJetons[] = {
      u"a_b", u"x.py", u"v2", u"a::b", u"a@b.c", u"\u00e9t\u00e9_x", u"\u00e91"};
  for (const std::u16string_view jeton : kJetons) {
    for (size_t decalage = 0; decalage < 20; ++decalage) {
      const std::u16string avant =
          std::u16string(decalage, u'w') + u" why? a^b a|b \u00e9t\u00e9\u2003";
      const std::u16string texte = avant + std::u16string(jeton) + u" end words here ok";
      ConvertisseurJetonsTechniques convertisseur;
      const std::string attendu = "M[" + std::to_string(avant.size()) + "," +
                                  std::to_string(avant.size() + jeton.size()) + ")16";
      EXPECT_EQ(DecritRapports(convertisseur, texte), attendu) << DecritTexte(texte);
    }
  }
}

// Random texts of short tokens made of the units the rules and the walk's shortcuts look at:
// the walk marks what trimming and judging every token in turn marks, and nothing else.
TEST(ConvertisseurJetonsTechniques, CommeChaqueJetonJugeSeul) {
  std::mt19937 alea(5);
  // Units beyond ASCII too: "é" is part of a token, a no-break or em space ends one. Tokens run
  // up to 24 units, so that the walks go a block at a time.
  constexpr std::u16string_view kUnites = u"a1(9)[].,-:/@_{}'\"*;!?=w\u00E9";
  const auto separe = [](char16_t c) {
    return c <= u' ' || (c >= 0x80 && UniCaractere::EstBlanc(c));
  };
  for (int essai = 0; essai < 5000; ++essai) {
    std::u16string texte;
    for (size_t jetons = alea() % 6; jetons > 0; --jetons) {
      for (size_t n = 1 + alea() % (essai % 2 ? 24 : 7); n > 0; --n)
        texte += alea() % 3 == 0 ? u"19"[alea() % 2] : kUnites[alea() % kUnites.size()];
      texte += u" \t\n\u000E\u00A0\u2003"[alea() % 6];
    }
    std::string attendu;
    for (size_t debut = 0; debut < texte.size();) {
      size_t fin = debut;
      while (fin < texte.size() && !separe(texte[fin])) ++fin;
      const BornesJeton jeton = RogneJeton(texte, debut, fin);
      if (EstJetonTechnique(
              std::u16string_view(texte).substr(jeton.debut, jeton.fin - jeton.debut)))
        attendu += (attendu.empty() ? "" : " ") + std::string("M[") + std::to_string(jeton.debut) +
                   "," + std::to_string(jeton.fin) + ")16";
      debut = fin + 1;
    }
    ConvertisseurJetonsTechniques convertisseur;
    ASSERT_EQ(DecritRapports(convertisseur, texte), attendu) << DecritTexte(texte);
  }
}

TEST(ConvertisseurEntetesCourriel, BlocsDEnTete) {
  struct Cas {
    std::u16string_view texte;
    std::string_view attendu;
  };
  static constexpr Cas kCas[] = {
      {u"Hello\nFrom: a\n", ""},  // a field after prose opens no block
      // Fields and their continuation lines up to the blank line; the subject stays prose.
      {u"From: a\nSubject: Hi there\n b\n\nBody: x", "M[0,7)16 M[8,16)16"},
      {u"To: a\n\tb\r\n\r\nText", "M[0,5)16 M[6,9)16"},
      // A mailbox: each "From " line opens a message and a block.
      {u"From x\nDate: d\n\nText\nFrom y\nTo: z\n\nMore",
       "M[0,6)16 M[7,14)16 M[21,27)16 M[28,33)16"},
      // "Name:" must be followed by a blank: a time is no field.
      {u"12:30 today", ""},
  };
  for (const auto& [texte, attendu] : kCas) {
    ConvertisseurEntetesCourriel convertisseur;
    EXPECT_EQ(DecritRapports(convertisseur, texte), attendu) << DecritTexte(texte);
  }
}

}  // namespace

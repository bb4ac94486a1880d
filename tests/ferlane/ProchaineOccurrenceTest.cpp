// The unit and pattern searches against a plain scan, across the 16-unit blocks and their
// tails, and the remembered search against fresh searches in every order of asking.
#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>
#include <vector>

#include "ferlane/ProchaineOccurrence.h"

namespace {

uint64_t Naif(std::u16string_view texte, uint64_t debut, std::u16string_view motif) {
  const size_t p = debut > texte.size() ? std::u16string_view::npos : texte.find(motif, debut);
  return p == std::u16string_view::npos ? kPasTrouve : p;
}

// Texts of every length up to three blocks, the sought unit at every place, searched from every
// start: what a block search gets wrong (the tail, the unit's place inside a block, a mask
// read as bytes) shows here. 0x3C3C and 0x013C share a byte with '<' and must not match it.
TEST(TrouveUnite, CommeUneLectureUnAUn) {
  for (size_t n = 0; n <= 49; ++n) {
    for (size_t place = 0; place <= n; ++place) {
      std::u16string texte(n, u'\x3C3C');
      for (size_t i = 0; i < n; i += 3) texte[i] = u'\x013C';
      if (place < n) texte[place] = u'<';
      for (size_t debut = 0; debut <= n + 1; ++debut) {
        const uint64_t attendu = Naif(texte, debut, u"<");
        ASSERT_EQ(TrouveUnite(texte, debut, u'<'), attendu) << n << " " << place << " " << debut;
        ASSERT_EQ(TrouveUneDeDeux(texte, debut, u'{', u'<'), attendu);
        ASSERT_EQ(TrouveUneDeDeux(texte, debut, u'<', u'{'), attendu);
        for (std::u16string_view unites : {u"<", u"{}<", u"[]{<", u"<{"})
          ASSERT_EQ(TrouveUneDe(texte, debut, unites), attendu) << n << " " << place;
      }
    }
  }
  EXPECT_THROW(TrouveUneDe(u"a", 0, u""), std::invalid_argument);
  EXPECT_THROW(TrouveUneDe(u"a", 0, u"{}[]<"), std::invalid_argument);
}

// Every visit of a random text of braces and their neighbours, across blocks and the tail, with
// a skip now and then (past the block's end or within it): the positions a plain walk visits.
TEST(PourChaqueUniteParmi, CommeUneLectureUnAUn) {
  std::mt19937 alea(11);
  for (int essai = 0; essai < 2000; ++essai) {
    std::u16string texte(alea() % 70, u'a');
    for (char16_t& c : texte) c = u"{}[]ab\x7B7B\x017B"[alea() % 8];
    const uint64_t debut = alea() % (texte.size() + 2);
    std::vector<uint64_t> sauts(texte.size() + 1);  // where a visit at p goes on
    for (size_t p = 0; p < texte.size(); ++p)
      sauts[p] = p + 1 + (alea() % 5 == 0 ? alea() % 40 : 0);
    std::vector<uint64_t> attendues, vues;
    for (uint64_t p = debut; p < texte.size();)
      if (std::u16string_view(u"{}[").find(texte[p]) != std::u16string_view::npos) {
        attendues.push_back(p);
        p = sauts[p];
      } else {
        ++p;
      }
    PourChaqueUniteParmi(texte, debut, u"{}[", [&](uint64_t p) {
      vues.push_back(p);
      return sauts[p];
    });
    ASSERT_EQ(vues, attendues) << essai;
  }
}

// Words and single spaces from every start, with a unit at the edge of a class (around the
// digits, the letters of both cases, the space, and units sharing a low byte with them) at every
// place of three blocks and a second space at every other: against the definition, spaces
// counted.
TEST(FinDeMotsAscii, CommeLaDefinition) {
  const std::u16string_view bords = u"/09:@AZ[`az{ \\!\x7F\x80\x0141\x0161\xFF3A";
  const auto mot = [](char16_t c) {
    return c < 0x80 && std::isalnum(static_cast<unsigned char>(c));
  };
  for (const char16_t c : bords) {
    for (size_t place = 0; place < 49; ++place) {
      std::u16string texte(49, u'k');
      for (size_t i = 3; i < texte.size(); i += 4) texte[i] = u' ';
      texte[place] = c;
      texte[(place * 7) % texte.size()] = u' ';
      for (size_t debut = 0; debut <= texte.size(); ++debut) {
        uint64_t fin = debut, espacesAttendus = 0;
        for (; fin < texte.size(); ++fin) {
          if (mot(texte[fin])) continue;
          if (texte[fin] != u' ' || fin + 1 == texte.size() || !mot(texte[fin + 1])) break;
          ++espacesAttendus;
        }
        uint64_t espaces = 0;
        ASSERT_EQ(FinDeMotsAscii(texte, debut, espaces), fin) << int(c) << " @" << place;
        ASSERT_EQ(espaces, espacesAttendus) << int(c) << " @" << place << " from " << debut;
      }
    }
  }
}

TEST(TrouveMotif, TableEtAleatoire) {
  struct Cas {
    std::u16string_view texte, motif;
    uint64_t debut, attendu;
  };
  const Cas kCas[] = {
      {u"abc", u"abc", 0, 0},
      {u"abc", u"abcd", 0, kPasTrouve},  // longer than the text
      {u"ab-->x-->", u"-->", 3, 6},      // an occurrence starting before debut is not seen
      {u"aab", u"ab", 0, 1},             // a false start on the first unit
      {u"\r\n\r\n", u"\r\n\r\n", 1, kPasTrouve},
      {u"xx\r\n\r\n", u"\r\n\r\n", 0, 2},
      {u"abc", u"c", 9, kPasTrouve},  // a start past the end
  };
  for (const Cas& c : kCas) EXPECT_EQ(TrouveMotif(c.texte, c.debut, c.motif), c.attendu);

  std::mt19937 alea(7);
  for (int essai = 0; essai < 6000; ++essai) {
    std::u16string texte(alea() % 90, u'a');
    for (char16_t& c : texte) c = u"ab\n"[alea() % 3];
    std::u16string motif(1 + alea() % 4, u'a');
    for (char16_t& c : motif) c = u"ab\n"[alea() % 3];
    const uint64_t debut = alea() % (texte.size() + 2);
    ASSERT_EQ(TrouveMotif(texte, debut, motif), Naif(texte, debut, motif));
  }
}

// Whatever order positions come in, the remembered answer is the one a fresh search gives.
TEST(ProchaineOccurrence, RepondCommeUneRechercheNeuve) {
  const std::u16string texte = u"<i>a</i> <i>b <b>c</b> </i>d</i>";
  std::mt19937 alea(11);
  for (std::u16string_view motif : {u"</i>", u"</b>", u"<u>"}) {
    ProchaineOccurrence suivante(texte, motif);
    std::vector<uint64_t> positions;
    for (uint64_t p = 0; p <= texte.size() + 1; ++p) positions.push_back(p);         // growing
    for (int k = 0; k < 200; ++k) positions.push_back(alea() % (texte.size() + 2));  // any order
    for (uint64_t p : positions) {
      const uint64_t attendu = Naif(texte, p, motif);
      const std::optional<uint64_t> trouve = suivante.Apres(p);
      ASSERT_EQ(trouve.value_or(kPasTrouve), attendu) << p;
    }
  }
}

// Only the occurrences the filter accepts count: "}" not preceded by a backslash here.
TEST(ProchaineOccurrence, SeulementLesOccurrencesAcceptees) {
  const std::u16string texte = u"a\\}b}c\\}\\}d}";
  const auto nonEchappee = [](std::u16string_view t, uint64_t p) {
    return p == 0 || t[p - 1] != u'\\';
  };
  ProchaineOccurrence suivante(texte, u"}", nonEchappee);
  std::vector<uint64_t> attendus;
  for (uint64_t p = 0; p <= texte.size(); ++p) {
    uint64_t q = p;
    while (q < texte.size() && (texte[q] != u'}' || (q > 0 && texte[q - 1] == u'\\'))) ++q;
    attendus.push_back(q < texte.size() ? q : kPasTrouve);
  }
  for (uint64_t p = 0; p <= texte.size(); ++p)
    EXPECT_EQ(suivante.Apres(p).value_or(kPasTrouve), attendus[p]) << p;
  for (uint64_t p = texte.size() + 1; p-- > 0;)  // backwards: every answer searched again
    EXPECT_EQ(suivante.Apres(p).value_or(kPasTrouve), attendus[p]) << p;
}

}  // namespace

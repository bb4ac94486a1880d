// ChaineN: searches under each comparison mode and limit, and the conversions.
#include <gtest/gtest.h>

#include <optional>

#include "Outils.h"
#include "ferlane/ChaineN.h"

namespace {

struct CasRecherche {
  std::u16string_view texte, motif;
  uint64_t debut;
  Malgray mode;
  uint64_t limite;
  std::optional<uint64_t> attendu;
};

TEST(ChaineN, RechercheDeChaine) {
  static const CasRecherche kCas[] = {
      {u"abcabc", u"bc", 0, 0, kSansLimite, 1},
      {u"abcabc", u"bc", 2, 0, kSansLimite, 4},
      {u"abcabc", u"BC", 0, 0, kSansLimite, std::nullopt},
      {u"abcABC", u"BC", 0, 4, kSansLimite, 1},
      {u"<!DOCTYPE html>", u"<!doctype", 0, 4, kSansLimite, 0},
      {u"Été", u"ete", 0, 4, kSansLimite, std::nullopt},  // mode 4 keeps accents
      {u"Été", u"ete", 0, 8, kSansLimite, 0},
      {u"x ÇA y", u"ca", 0, 8, kSansLimite, 2},
      {u"cœur", u"coe", 0, 8, kSansLimite, std::nullopt},  // unit for unit: œ is not "oe"
      // A limit counts the units examined from the start; a match must lie wholly inside.
      {u"aaaXbc", u"Xb", 0, 0, 5, 3},
      {u"aaaXbc", u"Xb", 0, 0, 4, std::nullopt},
      {u"aaaXbc", u"Xb", 2, 0, 3, 3},
      {u"aaaXbc", u"Xb", 2, 8, 2, std::nullopt},
      {u"abc", u"", 0, 0, kSansLimite, std::nullopt},
      {u"abc", u"abcd", 0, 0, kSansLimite, std::nullopt},
      {u"abc", u"c", 3, 0, kSansLimite, std::nullopt},
      {u"abc", u"c", 99, 0, kSansLimite, std::nullopt},
      {u"abc", u"c", 1, 0, 0, std::nullopt},
  };
  for (const CasRecherche& c : kCas) {
    Plage trouve{99, 99};
    const bool resultat = ChaineN(c.texte).Contient(c.motif, trouve, c.debut, c.mode, c.limite);
    ASSERT_EQ(resultat, c.attendu.has_value()) << VersUtf8(c.texte) << " / " << VersUtf8(c.motif);
    if (resultat) {
      EXPECT_EQ(trouve, (Plage{*c.attendu, c.motif.size()})) << VersUtf8(c.texte);
    }
  }
}

TEST(ChaineN, RechercheDUnCaractere) {
  const ChaineN texte(u"ab\nCd\n");
  uint64_t p = 99;
  EXPECT_TRUE(texte.Contient(u'\n', p));
  EXPECT_EQ(p, 2u);
  EXPECT_TRUE(texte.Contient(u'\n', p, 3));
  EXPECT_EQ(p, 5u);
  EXPECT_FALSE(texte.Contient(u'\n', p, 3, 0, 2));
  EXPECT_FALSE(texte.Contient(u'c', p));
  EXPECT_TRUE(texte.Contient(u'c', p, 0, 4));
  EXPECT_EQ(p, 3u);
  EXPECT_TRUE(texte.ContientUnCarDe(u"dC", p, 0));
  EXPECT_EQ(p, 3u);
  EXPECT_FALSE(texte.ContientUnCarDe(u"xyz", p, 0));
  EXPECT_FALSE(texte.ContientUnCarDe(u"d", p, 0, 4));
}

TEST(ChaineN, ComparaisonsALaPosition) {
  const ChaineN texte(u"\\begin{Equation}");
  EXPECT_TRUE(texte.ContientALaPos(u"begin", 1));
  EXPECT_FALSE(texte.ContientALaPos(u"begin", 0));
  EXPECT_FALSE(texte.ContientALaPos(u"equation}", 7));
  EXPECT_TRUE(texte.ContientALaPos(u"equation}", 7, 4));
  EXPECT_FALSE(texte.ContientALaPos(u"}x", 15));  // would run past the end
  EXPECT_FALSE(texte.ContientALaPos(u"x", 17));
  Plage trouve;
  EXPECT_TRUE(texte.ContientALaPos(u"EQ", 7, 4, trouve));
  EXPECT_EQ(trouve, (Plage{7, 2}));
  EXPECT_TRUE(texte.CommencePar(u"\\beg"));
  EXPECT_TRUE(ChaineN(u"Gls").Egal(u"gls", 4));
  EXPECT_FALSE(ChaineN(u"Gls").Egal(u"gls"));
  EXPECT_FALSE(ChaineN(u"gls").Egal(u"glsp"));
}

TEST(ChaineN, CasseEtNombres) {
  EXPECT_EQ(ChaineN(u"DIV Été").Minusculise(), ChaineN(u"div été"));
  EXPECT_EQ(ChaineN(u"{chat}").MajusculisePremiereLettre(), ChaineN(u"{Chat}"));
  EXPECT_EQ(ChaineN(u"12 élan").MajusculisePremiereLettre(), ChaineN(u"12 Élan"));
  EXPECT_EQ(ChaineN(u"").MajusculisePremiereLettre(), ChaineN(u""));
  EXPECT_EQ(ChaineN(u"233;").DonneEntier(), 233u);
  EXPECT_EQ(ChaineN(u"").DonneEntier(), 0u);
  EXPECT_EQ(ChaineN(u"1F600").DonneEntierHex(), 0x1F600u);
  EXPECT_EQ(ChaineN(u"fFfFfFfFfFfFfFfFf").DonneEntierHex(), UINT64_MAX);  // saturates
  EXPECT_EQ(ChaineN(u"99999999999999999999999").DonneEntier(), UINT64_MAX);
  EXPECT_EQ(ChaineN::DepuisCodePointUTF16(0xE9), ChaineN(u"é"));
  EXPECT_EQ(ChaineN::DepuisCodePointUTF16(0x1D11E), ChaineN(u"\U0001D11E"));
  EXPECT_EQ(ChaineN::DepuisCodePointUTF16(0x110000), ChaineN(u"\uFFFD"));
}

TEST(ChaineN, ConstructeurDeFormat) {
  const ChaineN nom(u"eacute;");
  EXPECT_EQ(ChaineN(eCodageFormat, "&%s", {nom}), ChaineN(u"&eacute;"));
  EXPECT_EQ(ChaineN(eCodageFormat, "&#x%x;", {char16_t{0x153}}), ChaineN(u"&#x153;"));
  EXPECT_EQ(ChaineN(eCodageFormat, "%d%%", {-5}), ChaineN(u"-5%"));
  EXPECT_EQ(ChaineN(eCodageFormat, "%s|%u", {u"a", 0u}), ChaineN(u"a|0"));
}

TEST(ChaineN, Conversions) {
  EXPECT_EQ(ChaineN::DepuisUtf8("é\xF0\x9D\x84\x9E"), ChaineN(u"é\U0001D11E"));
  EXPECT_EQ(ChaineN::DepuisUtf8("a\xFF"
                                "b"),
            ChaineN(u"a\uFFFDb"));
  EXPECT_EQ(ChaineN("caf\xE9", 4, eCodageLatin1), ChaineN(u"café"));
  EXPECT_EQ(ChaineN(u"x\xD800y").VersUtf8(), "x\xEF\xBF\xBDy");
  EXPECT_EQ(ChaineN(u"abcdef").SousChaine(2, 3), ChaineN(u"cde"));
  EXPECT_EQ(ChaineN(u"abc").SousChaine(5), ChaineN());
  EXPECT_EQ(ChaineN(u"ab") + ChaineN(u"c"), ChaineN(u"abc"));
  EXPECT_LT(ChaineN(u"ab"), ChaineN(u"b"));
  EXPECT_EQ(ChaineN(u"ab").hash(), ChaineN(u"ab").hash());
  EXPECT_TRUE(kChaineNNulle.EstVide());
}

}  // namespace

// The checked reporter: what reaches the callables, and the refusal of positions and texts the
// 32-bit map cannot hold.
#include <gtest/gtest.h>

#include <stdexcept>

#include "DecritRapports.h"
#include "ferlane/Rapporteur.h"

namespace {

// A converter that reports through the reporter what the test asks for.
class ConvertisseurParRapporteur : public Convertisseur {
 public:
  explicit ConvertisseurParRapporteur(std::function<void(const Rapporteur&)> rapports)
      : rapports_(std::move(rapports)) {}
  void ConvertisExterneAInterne(const TexteAvecAttributs&, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override {
    rapports_(Rapporteur(remplace, marque));
  }

 private:
  std::function<void(const Rapporteur&)> rapports_;
};

TEST(Rapporteur, TransmetEtOmetLesIntervallesVides) {
  ConvertisseurParRapporteur convertisseur([](const Rapporteur& r) {
    r.Masque(2, 2);  // empty: nothing
    r.Masque(1, 3);
    r.Masque(3, 4, kAttributsEquivalent);
    r.Remplace(4, 6, ChaineN(u"é"), kAttributsSpecial);
    r.Insere(6, ChaineN(u"x"), kAttributsEquivalent);
    r.Marque(5, 5, eGras);  // empty: nothing
    r.Marque(0, 6, eItalique | eNonTexte);
  });
  EXPECT_EQ(DecritRapports(convertisseur, u"abcdefg"),
            "R[1,3)''{0,0} R[3,4)''{0,1} R[4,6)'é'{1,1} R[6,6)'x'{0,1} M[0,6)17");
}

TEST(Rapporteur, RefuseUnePositionHorsDes32Bits) {
  const uint64_t kTrop = uint64_t{UINT32_MAX} + 1;
  EXPECT_EQ(Rapporteur::Intervalle(0, UINT32_MAX), (MapPos::Intervalle{0, UINT32_MAX}));
  EXPECT_THROW(Rapporteur::Intervalle(0, kTrop), std::length_error);
  EXPECT_THROW(Rapporteur::Intervalle(kTrop, kTrop + 5), std::length_error);
  // A wrapped narrowing would give [0, 5): the reporter stops instead.
  ConvertisseurParRapporteur convertisseur(
      [&](const Rapporteur& r) { r.Masque(kTrop, kTrop + 5); });
  EXPECT_THROW(DecritRapports(convertisseur, u"abcdef"), std::length_error);
  EXPECT_NO_THROW(VerifieLongueurMappable(UINT32_MAX));
  EXPECT_THROW(VerifieLongueurMappable(kTrop), std::length_error);
}

}  // namespace

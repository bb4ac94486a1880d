// ChaineN: conversions, searches under the comparison modes, case mapping and number reading.
#include "ferlane/ChaineN.h"

#include <algorithm>

#include "ferlane/CodageUtf.h"
#include "ferlane/ProchaineOccurrence.h"
#include "ferlane/UniCaractere.h"

namespace {

uint64_t FinDeRecherche(uint64_t debut, uint64_t limite, uint64_t longueur) {
  if (limite == kSansLimite || limite > longueur - std::min(debut, longueur)) return longueur;
  return debut + limite;
}

// Search of a pattern in [debut, fin) under a mode that folds units: the first unit is found
// by its folded value, then the rest is compared unit for unit.
uint64_t ChercheAvecPliage(std::u16string_view texte, std::u16string_view motif, uint64_t debut,
                           uint64_t fin, Malgray mode) {
  const char16_t premier = PlieUnite(motif[0], mode);
  for (uint64_t i = debut; i + motif.size() <= fin; ++i) {
    if (PlieUnite(texte[i], mode) != premier) continue;
    uint64_t k = 1;
    while (k < motif.size() && UnitesEgales(texte[i + k], motif[k], mode)) ++k;
    if (k == motif.size()) return i;
  }
  return std::u16string_view::npos;
}

void AjouteNombre(std::u16string& sortie, uint64_t valeur, unsigned base) {
  char16_t chiffres[24];
  int n = 0;
  do {
    const unsigned chiffre = static_cast<unsigned>(valeur % base);
    chiffres[n++] = static_cast<char16_t>(chiffre < 10 ? u'0' + chiffre : u'a' + chiffre - 10);
    valeur /= base;
  } while (valeur != 0);
  while (n > 0) sortie += chiffres[--n];
}

uint64_t LitNombre(std::u16string_view texte, unsigned base) {
  uint64_t valeur = 0;
  for (char16_t c : texte) {
    unsigned chiffre;
    if (c >= u'0' && c <= u'9')
      chiffre = c - u'0';
    else if (base == 16 && c >= u'a' && c <= u'f')
      chiffre = c - u'a' + 10;
    else if (base == 16 && c >= u'A' && c <= u'F')
      chiffre = c - u'A' + 10;
    else
      break;
    if (valeur > (UINT64_MAX - chiffre) / base) return UINT64_MAX;
    valeur = valeur * base + chiffre;
  }
  return valeur;
}

}  // namespace

ChaineN::ChaineN(const char* octets, size_t longueur, Codage codage) {
  const std::string_view vue(octets ? octets : "", octets ? longueur : 0);
  switch (codage) {
    case eCodageUTF8:
      texte_ = DecodeUtf8(vue);
      break;
    case eCodageASCII:
      texte_.reserve(vue.size());
      for (unsigned char c : vue) texte_ += c < 0x80 ? char16_t{c} : u'\uFFFD';
      break;
    default:  // Latin-1, and any byte string taken unit for byte
      texte_.reserve(vue.size());
      for (unsigned char c : vue) texte_ += char16_t{c};
      break;
  }
}

ChaineN::ChaineN(Codage, const char* format, std::initializer_list<ArgumentDeFormat> valeurs) {
  auto valeur = valeurs.begin();
  for (const char* p = format; *p != '\0'; ++p) {
    if (*p != '%' || p[1] == '\0') {
      texte_ += static_cast<char16_t>(static_cast<unsigned char>(*p));
      continue;
    }
    const char conversion = *++p;
    if (conversion == '%') {
      texte_ += u'%';
      continue;
    }
    if (valeur == valeurs.end()) continue;  // more conversions than values: nothing written
    const ArgumentDeFormat& argument = *valeur++;
    if (argument.EstTexte()) {
      texte_ += argument.Texte();
    } else if (conversion == 'x') {
      AjouteNombre(texte_, argument.Nombre(), 16);
    } else if (conversion == 'd' && argument.EstNegatif()) {
      texte_ += u'-';
      AjouteNombre(texte_, 0 - argument.Nombre(), 10);
    } else {
      AjouteNombre(texte_, argument.Nombre(), 10);
    }
  }
}

ChaineN ChaineN::DepuisCodePointUTF16(uint32_t codePoint) {
  std::u16string texte;
  AjouteCodePoint(texte, codePoint <= 0x10FFFF ? codePoint : 0xFFFD);
  return ChaineN(std::move(texte));
}

std::string ChaineN::VersUtf8() const {
  return EncodeUtf8(texte_);
}

ChaineN ChaineN::SousChaine(uint64_t debut, uint64_t longueur) const {
  if (debut >= texte_.size()) return ChaineN();
  return ChaineN(std::u16string_view(texte_).substr(debut, longueur));
}

ChaineN ChaineN::operator+(const ChaineN& autre) const {
  ChaineN somme(*this);
  somme += autre;
  return somme;
}

ChaineN& ChaineN::operator+=(const ChaineN& autre) {
  texte_ += autre.texte_;
  return *this;
}

ChaineN& ChaineN::operator+=(char16_t unite) {
  texte_ += unite;
  return *this;
}

bool ChaineN::Contient(char16_t unite, uint64_t& position, uint64_t debut, Malgray mode,
                       uint64_t limite) const {
  const uint64_t fin = FinDeRecherche(debut, limite, texte_.size());
  if (debut >= fin) return false;
  const std::u16string_view vue(texte_.data(), fin);
  size_t trouve;
  if (mode == kMalgrayExact) {
    const uint64_t p = TrouveUnite(vue, debut, unite);
    trouve = p == kPasTrouve ? std::u16string_view::npos : p;
  } else {
    const char16_t motif = unite;
    trouve = ChercheAvecPliage(vue, std::u16string_view(&motif, 1), debut, fin, mode);
  }
  if (trouve == std::u16string_view::npos) return false;
  position = trouve;
  return true;
}

bool ChaineN::Contient(std::u16string_view motif, Plage& trouve, uint64_t debut, Malgray mode,
                       uint64_t limite) const {
  const uint64_t fin = FinDeRecherche(debut, limite, texte_.size());
  if (motif.empty() || debut >= fin || motif.size() > fin - debut) return false;
  const std::u16string_view vue(texte_.data(), fin);
  size_t position;
  if (mode == kMalgrayExact) {
    const uint64_t p = TrouveMotif(vue, debut, motif);
    position = p == kPasTrouve ? std::u16string_view::npos : p;
  } else {
    position = ChercheAvecPliage(vue, motif, debut, fin, mode);
  }
  if (position == std::u16string_view::npos) return false;
  trouve = Plage{position, motif.size()};
  return true;
}

bool ChaineN::ContientALaPos(std::u16string_view motif, uint64_t position, Malgray mode) const {
  if (motif.empty() || position > texte_.size() || motif.size() > texte_.size() - position)
    return false;
  for (size_t k = 0; k < motif.size(); ++k)
    if (!UnitesEgales(texte_[position + k], motif[k], mode)) return false;
  return true;
}

bool ChaineN::ContientALaPos(std::u16string_view motif, uint64_t position, Malgray mode,
                             Plage& trouve) const {
  if (!ContientALaPos(motif, position, mode)) return false;
  trouve = Plage{position, motif.size()};
  return true;
}

bool ChaineN::CommencePar(std::u16string_view prefixe, Malgray mode) const {
  return prefixe.empty() || ContientALaPos(prefixe, 0, mode);
}

bool ChaineN::Egal(std::u16string_view autre, Malgray mode) const {
  return autre.size() == texte_.size() && CommencePar(autre, mode);
}

bool ChaineN::ContientUnCarDe(std::u16string_view ensemble, uint64_t& position, uint64_t debut,
                              uint64_t limite) const {
  const uint64_t fin = FinDeRecherche(debut, limite, texte_.size());
  if (debut >= fin) return false;
  const std::u16string_view vue(texte_.data(), fin);
  // Sets of one or two units, the common case, go through the block searches.
  uint64_t trouve;
  if (ensemble.size() == 1)
    trouve = TrouveUnite(vue, debut, ensemble[0]);
  else if (ensemble.size() == 2)
    trouve = TrouveUneDeDeux(vue, debut, ensemble[0], ensemble[1]);
  else
    trouve = vue.find_first_of(ensemble, debut);
  if (trouve == kPasTrouve || trouve == std::u16string_view::npos) return false;
  position = trouve;
  return true;
}

ChaineN& ChaineN::Minusculise() {
  for (char16_t& c : texte_) c = PlieUnite(c, kMalgraySansCasse);
  return *this;
}

ChaineN& ChaineN::MajusculisePremiereLettre() {
  for (size_t i = 0; i < texte_.size();) {
    const size_t debut = i;
    const char32_t c = LitCodePoint(texte_, i);
    if (!UniCaractere::EstLettre(c)) continue;
    const char32_t majuscule = UniCaractere::Majuscule(c);
    if ((majuscule > 0xFFFF) == (c > 0xFFFF)) {  // only when the length in units stays the same
      std::u16string unites;
      AjouteCodePoint(unites, majuscule);
      std::copy(unites.begin(), unites.end(), texte_.begin() + debut);
    }
    break;
  }
  return *this;
}

uint64_t ChaineN::DonneEntier() const {
  return LitNombre(texte_, 10);
}
uint64_t ChaineN::DonneEntierHex() const {
  return LitNombre(texte_, 16);
}

// ChaineN: the core layer's string of UTF-16 code units, with the searches, comparisons and
// conversions the filters use. Positions and lengths are unsigned 64-bit counts of code units.
//
// Searches take a comparison mode (`Malgray`) and, for the forward searches, a limit on the
// number of code units they may examine from their start (kSansLimite for none). A match must
// lie wholly inside the units examined. Every mode compares code unit for code unit, so a match
// is always exactly as long as its pattern:
//   0  exact;
//   4  letter case ignored (simple lower-case mapping of each unit);
//   8  letter case and accents ignored (each unit is reduced to the lower case of its canonical
//      base letter: "É" and "e" compare equal, "œ" and "oe" do not).
// Other values: bit 8 selects mode 8, else bit 4 selects mode 4, else the comparison is exact.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

using Malgray = uint32_t;
inline constexpr Malgray kMalgrayExact = 0;
inline constexpr Malgray kMalgraySansCasse = 4;
inline constexpr Malgray kMalgraySansCasseNiAccents = 8;

inline constexpr uint64_t kSansLimite = UINT64_MAX;  // "-1": a search with no limit

// A stretch found by a search: its position and its length in code units.
struct Plage {
  uint64_t position = 0;
  uint64_t longueur = 0;
  uint64_t Fin() const { return position + longueur; }
  bool operator==(const Plage&) const = default;
};

// Encodings of byte strings. eCodageFormat is the formatting constructor's: an ASCII format in
// which "%s" takes a ChaineN (or any UTF-16 view), "%x" a lower-case hexadecimal number, "%d"
// and "%u" a decimal one, "%%" a percent sign.
enum Codage : uint32_t {
  eCodageLatin1 = 1,
  eCodageUTF8 = 2,
  eCodageASCII = 3,
  eCodageFormat = 4,
};

class ChaineN;

// One value for the formatting constructor: a text or a number.
class ArgumentDeFormat {
 public:
  ArgumentDeFormat(const ChaineN& texte);
  ArgumentDeFormat(std::u16string_view texte) : texte_(texte), estTexte_(true) {}
  ArgumentDeFormat(const char16_t* texte) : texte_(texte), estTexte_(true) {}
  template <std::integral T>
  ArgumentDeFormat(T valeur) : nombre_(static_cast<uint64_t>(valeur)), negatif_(valeur < T{}) {}

  bool EstTexte() const { return estTexte_; }
  std::u16string_view Texte() const { return texte_; }
  uint64_t Nombre() const { return nombre_; }
  bool EstNegatif() const { return negatif_; }

 private:
  std::u16string_view texte_;
  uint64_t nombre_ = 0;
  bool estTexte_ = false;
  bool negatif_ = false;
};

class ChaineN {
 public:
  ChaineN() = default;
  ChaineN(const char16_t* texte) : texte_(texte ? texte : u"") {}
  ChaineN(std::u16string_view texte) : texte_(texte) {}
  ChaineN(std::u16string texte) : texte_(std::move(texte)) {}
  explicit ChaineN(char16_t unite) : texte_(1, unite) {}
  // Bytes in an encoding. Invalid UTF-8 sequences become U+FFFD.
  ChaineN(const char* octets, size_t longueur, Codage codage);
  ChaineN(std::string_view octets, Codage codage) : ChaineN(octets.data(), octets.size(), codage) {}
  // The formatting constructor (codage must be eCodageFormat).
  ChaineN(Codage codage, const char* format, std::initializer_list<ArgumentDeFormat> valeurs);

  static ChaineN DepuisUtf8(std::string_view octets) { return ChaineN(octets, eCodageUTF8); }
  // A code point as text: one unit up to U+FFFF, a surrogate pair up to U+10FFFF, else U+FFFD.
  static ChaineN DepuisCodePointUTF16(uint32_t codePoint);

  uint64_t Longueur() const { return texte_.size(); }
  bool EstVide() const { return texte_.empty(); }
  char16_t operator[](uint64_t position) const { return texte_[position]; }
  std::u16string_view Vue() const { return texte_; }
  const std::u16string& Texte() const { return texte_; }
  std::u16string& Texte() { return texte_; }
  operator std::u16string_view() const { return texte_; }
  // UTF-8; an unpaired surrogate becomes U+FFFD.
  std::string VersUtf8() const;

  // A copy of `longueur` units from `debut` (clipped to the string's end).
  ChaineN SousChaine(uint64_t debut, uint64_t longueur = kSansLimite) const;

  ChaineN operator+(const ChaineN& autre) const;
  ChaineN& operator+=(const ChaineN& autre);
  ChaineN& operator+=(char16_t unite);
  bool operator==(const ChaineN& autre) const = default;
  std::strong_ordering operator<=>(const ChaineN& autre) const { return texte_ <=> autre.texte_; }
  size_t hash() const { return std::hash<std::u16string>{}(texte_); }

  // First occurrence at or after `debut`. Return false when there is none within the limit.
  bool Contient(char16_t unite, uint64_t& position, uint64_t debut = 0,
                Malgray mode = kMalgrayExact, uint64_t limite = kSansLimite) const;
  bool Contient(std::u16string_view motif, Plage& trouve, uint64_t debut = 0,
                Malgray mode = kMalgrayExact, uint64_t limite = kSansLimite) const;
  // Does `motif` stand exactly at `position`? The Plage form also gives the matched stretch.
  bool ContientALaPos(std::u16string_view motif, uint64_t position,
                      Malgray mode = kMalgrayExact) const;
  bool ContientALaPos(std::u16string_view motif, uint64_t position, Malgray mode,
                      Plage& trouve) const;
  bool CommencePar(std::u16string_view prefixe, Malgray mode = kMalgrayExact) const;
  bool Egal(std::u16string_view autre, Malgray mode = kMalgrayExact) const;
  // First unit at or after `debut` that belongs to `ensemble`.
  bool ContientUnCarDe(std::u16string_view ensemble, uint64_t& position, uint64_t debut = 0,
                       uint64_t limite = kSansLimite) const;

  // In place, code unit by code unit, with the simple case mappings.
  ChaineN& Minusculise();
  // Upper-cases the first letter of the text, wherever it stands.
  ChaineN& MajusculisePremiereLettre();
  // Value of the leading decimal (or hexadecimal) digits; 0 when there are none. A value too
  // large for 64 bits saturates to UINT64_MAX.
  uint64_t DonneEntier() const;
  uint64_t DonneEntierHex() const;

 private:
  std::u16string texte_;
};

inline const ChaineN kChaineNNulle;

inline ArgumentDeFormat::ArgumentDeFormat(const ChaineN& texte)
    : texte_(texte.Vue()), estTexte_(true) {}

template <>
struct std::hash<ChaineN> {
  size_t operator()(const ChaineN& chaine) const { return chaine.hash(); }
};

// Comparison of two units under a mode (see the top of this file).
char16_t PlieUnite(char16_t unite, Malgray mode);
inline bool UnitesEgales(char16_t a, char16_t b, Malgray mode) {
  return a == b || (mode != kMalgrayExact && PlieUnite(a, mode) == PlieUnite(b, mode));
}

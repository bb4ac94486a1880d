// JetonsTechniques: each rule looks at a token alone, in one pass or a few substring searches.
#include "filters/JetonsTechniques.h"

#include <algorithm>
#include <array>

#include "ferlane/UniCaractere.h"

namespace {

// Units that open or close a sentence around a token and are not part of it.
constexpr std::u16string_view kOuvrants = u"([{\"'*\u00AB\u201C\u2018\u00BF\u00A1";
constexpr std::u16string_view kFermants = u")]}\"'*.,;:!?\u00BB\u201D\u2019";

constexpr std::array<bool, 128> TableASCII(std::u16string_view unites) {
  std::array<bool, 128> table{};
  for (char16_t c : unites)
    if (c < 0x80) table[c] = true;
  return table;
}
constexpr auto kOuvrantsASCII = TableASCII(kOuvrants);
constexpr auto kFermantsASCII = TableASCII(kFermants);

// Whether `c` is one of `unites`, whose ASCII members `ascii` holds.
bool EstDans(const std::array<bool, 128>& ascii, std::u16string_view unites, char16_t c) {
  return c < 0x80 ? ascii[c] : unites.find(c) != std::u16string_view::npos;
}

// Anywhere in a token, these make it code: identifiers, escapes, assignments, scopes, calls,
// placeholders ("<file>", "-X<option>").
constexpr std::array<std::u16string_view, 10> kMarquesDeCode = {u"_", u"\\", u"=",  u"::", u"<",
                                                                u">", u"()", u"[]", u"{",  u"}"};

bool EstLettre(char16_t c) {
  return c < 0x80 ? ((c | 0x20) >= u'a' && (c | 0x20) <= u'z') : UniCaractere::EstLettre(c);
}

bool CommencePar(std::u16string_view jeton, std::u16string_view debut) {
  if (jeton.size() < debut.size()) return false;
  for (size_t i = 0; i < debut.size(); ++i)
    if (UniCaractere::Minuscule(jeton[i]) != debut[i]) return false;
  return true;
}

bool EstAdresse(std::u16string_view jeton) {
  if (jeton.find(u"://") != std::u16string_view::npos) return true;
  if (CommencePar(jeton, u"www.") || CommencePar(jeton, u"mailto:")) return true;
  const size_t arobase = jeton.find(u'@');
  if (arobase == std::u16string_view::npos) return false;
  // "@scope/name", "@param", "user@example.org"
  if (arobase == 0) return jeton.size() > 1 && EstLettre(jeton[1]);
  return jeton.find(u'.', arobase) != std::u16string_view::npos;
}

bool EstChemin(std::u16string_view jeton) {
  if (jeton.starts_with(u"/") || jeton.starts_with(u"./") || jeton.starts_with(u"../") ||
      jeton.starts_with(u"~/"))
    return jeton.size() > 1;
  return std::ranges::count(jeton, u'/') >= 2;  // one slash is prose: "and/or", "he/she"
}

// "file.txt", "os.path", "example.com": a dot between letters where a side is longer than one
// letter ("e.g", "U.S" are abbreviations).
bool EstNomPointe(std::u16string_view jeton) {
  for (size_t point = jeton.find(u'.'); point != std::u16string_view::npos;
       point = jeton.find(u'.', point + 1)) {
    if (point == 0 || point + 1 >= jeton.size()) continue;
    if (!EstLettre(jeton[point - 1]) || !EstLettre(jeton[point + 1])) continue;
    const bool avantLong = point >= 2 && EstLettre(jeton[point - 2]);
    const bool apresLong = point + 2 < jeton.size() && EstLettre(jeton[point + 2]);
    if (avantLong || apresLong) return true;
  }
  return false;
}

// Which of the units the rules look for a token holds, one bit each.
constexpr std::u16string_view kUnitesIndicees = u"_\\=<>{}:([@./";
constexpr uint32_t Indice(char16_t c) {
  const size_t i = kUnitesIndicees.find(c);
  return i == std::u16string_view::npos ? 0 : 1u << i;
}
// Two more bits than the units: an ASCII letter, an ASCII digit.
constexpr uint32_t kLettre = 1u << 30;
constexpr uint32_t kChiffre = 1u << 31;
static_assert(kUnitesIndicees.size() < 30, "the letter and digit bits stay clear of the units'");
// What one ASCII unit tells, in one look: the unit's own bit, or that it is a letter or a digit.
constexpr auto kIndicesASCII = [] {
  std::array<uint32_t, 128> table{};
  for (char16_t c : kUnitesIndicees) table[c] = Indice(c);
  for (char16_t c = u'a'; c <= u'z'; ++c) table[c] = table[c - 0x20] = kLettre;
  for (char16_t c = u'0'; c <= u'9'; ++c) table[c] = kChiffre;
  return table;
}();
// The one-unit marks of code: any of them alone makes a token code.
constexpr uint32_t kMarqueSeule = Indice(u'_') | Indice(u'\\') | Indice(u'=') | Indice(u'<') |
                                  Indice(u'>') | Indice(u'{') | Indice(u'}');
static_assert(std::ranges::all_of(kMarquesDeCode,
                                  [](std::u16string_view m) {
                                    return m.size() == 2 || (kMarqueSeule & Indice(m[0])) != 0;
                                  }),
              "every one-unit mark of code is in kMarqueSeule");

}  // namespace

BornesJeton RogneJeton(std::u16string_view texte, size_t debut, size_t fin) {
  while (debut < fin && EstDans(kOuvrantsASCII, kOuvrants, texte[debut])) ++debut;
  while (fin > debut && EstFermantDeJeton(texte[fin - 1])) --fin;
  return {debut, fin};
}

bool EstFermantDeJeton(char16_t c) {
  return EstDans(kFermantsASCII, kFermants, c);
}

bool EstJetonTechnique(std::u16string_view jeton) {
  // One look at each unit notes which of the units the rules need are there; a rule whose
  // units are missing is not tried, and most tokens are ruled out with no search at all.
  uint32_t presents = 0;
  for (const char16_t c : jeton) {
    if (c < 0x80)
      presents |= kIndicesASCII[c];
    else
      presents |=
          (UniCaractere::EstLettre(c) ? kLettre : 0) | (UniCaractere::EstChiffre(c) ? kChiffre : 0);
  }
  const bool lettre = (presents & kLettre) != 0, chiffre = (presents & kChiffre) != 0;
  presents &= ~(kLettre | kChiffre);
  if (presents == 0 && !chiffre) return false;
  if (presents & kMarqueSeule) return true;  // "_", "\\", "=", "<", ">", "{", "}"
  for (std::u16string_view marque : kMarquesDeCode)
    if (marque.size() == 2 && (presents & Indice(marque[0])) &&
        jeton.find(marque) != std::u16string_view::npos)
      return true;  // "::", "()", "[]"
  return ((presents & (Indice(u':') | Indice(u'@') | Indice(u'.'))) && EstAdresse(jeton)) ||
         ((presents & Indice(u'/')) && EstChemin(jeton)) || (lettre && chiffre) ||
         ((presents & Indice(u'.')) && EstNomPointe(jeton));
}

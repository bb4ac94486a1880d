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

bool MeleLettresEtChiffres(std::u16string_view jeton) {
  bool lettre = false, chiffre = false;
  for (char16_t c : jeton) {
    lettre = lettre || EstLettre(c);
    chiffre = chiffre || UniCaractere::EstChiffre(c);
  }
  return lettre && chiffre;
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

}  // namespace

BornesJeton RogneJeton(std::u16string_view texte, size_t debut, size_t fin) {
  while (debut < fin && EstDans(kOuvrantsASCII, kOuvrants, texte[debut])) ++debut;
  while (fin > debut && EstDans(kFermantsASCII, kFermants, texte[fin - 1])) --fin;
  return {debut, fin};
}

bool EstJetonTechnique(std::u16string_view jeton) {
  // Most tokens are plain words: one look at each unit rules them out before any search.
  if (std::ranges::none_of(jeton, PeutRendreTechnique)) return false;
  for (std::u16string_view marque : kMarquesDeCode)
    if (jeton.find(marque) != std::u16string_view::npos) return true;
  return EstAdresse(jeton) || EstChemin(jeton) || MeleLettresEtChiffres(jeton) ||
         EstNomPointe(jeton);
}

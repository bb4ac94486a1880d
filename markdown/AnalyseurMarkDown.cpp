// AnalyseurMarkDown: the run as a whole, the working copy, and the passes around the blocks
// (delimited spans, the leading header block, escapes, entities). The blocks are in
// AnalyseurMarkDownBlocs.cpp, the inline spans in AnalyseurMarkDownEnLigne.cpp.
#include "markdown/AnalyseurMarkDown.h"

#include <array>
#include <string>
#include <vector>

#include "ferlane/ProchaineOccurrence.h"
#include "ferlane/UnitesSSE2.h"

namespace {

// The characters of the escape pass, one walk each, in this order.
// Group 1: a backslash before them is removed, the character stays.
constexpr std::u16string_view kEchappablesGardes = u"-{}[]()+.!";
// Group 2: a backslash before them is removed; unescaped, they are removed themselves
// (emphasis, heading and table characters that no earlier pass consumed).
constexpr std::u16string_view kEchappablesRetires = u"*_#|";
// Group 3: as group 1. The backslash comes last, so that a backslash removed while handling
// another character escapes nothing more.
constexpr std::u16string_view kEchappablesDerniers = u":\\";
// The three groups in pass order, and each ASCII unit's rank in it (-1: none).
constexpr std::u16string_view kEchappables = u"-{}[]()+.!*_#|:\\";
constexpr std::array<int8_t, 128> kRangEchappable = [] {
  std::array<int8_t, 128> rangs{};
  rangs.fill(-1);
  for (size_t i = 0; i < kEchappables.size(); ++i) rangs[kEchappables[i]] = static_cast<int8_t>(i);
  return rangs;
}();
static_assert(kEchappables.size() ==
              kEchappablesGardes.size() + kEchappablesRetires.size() + kEchappablesDerniers.size());

// The first position in [debut, fin) whose unit is a backslash or one of group 2, or `fin`:
// only there, or just after a backslash, can the escape pass act. Eight units a step with SSE2.
uint64_t ProchainDeclencheur(std::u16string_view unites, uint64_t debut, uint64_t fin) {
  static_assert(kEchappablesRetires == u"*_#|");
  uint64_t p = debut;
#if defined(__SSE2__)
  for (; p + 8 <= fin; p += 8) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(unites.data() + p));
    const auto egal = [&v](char16_t c) {
      return _mm_cmpeq_epi16(v, _mm_set1_epi16(static_cast<short>(c)));
    };
    const __m128i trouves = _mm_or_si128(
        _mm_or_si128(_mm_or_si128(egal(u'*'), egal(u'_')), _mm_or_si128(egal(u'#'), egal(u'|'))),
        egal(u'\\'));
    const auto masque = static_cast<unsigned>(_mm_movemask_epi8(trouves));
    if (masque != 0) return p + static_cast<uint64_t>(__builtin_ctz(masque)) / 2;
  }
#endif
  for (; p < fin; ++p)
    if (unites[p] == u'\\' || kEchappablesRetires.find(unites[p]) != std::u16string_view::npos)
      return p;
  return fin;
}

const ChaineN kEnTete(u"---\n");

}  // namespace

template <class Texte>
AnalyseurMarkDown::AnalyseurMarkDown(Texte& source, const FonctionRemplace& r,
                                     const FonctionMarque& m, const OptionsProseMarkDown& prose)
    : AnalyseurGenerique(source, r, m),
      prose_(prose),
      finsDeLigne_(texte_.Chaine(), u"\r\n"),
      crochetsFermants_(texte_.Chaine(), u"]\r\n"),
      accoladesFermantes_(texte_.Chaine(), u"}\r\n"),
      barres_(texte_.Chaine(), u"|") {}
template AnalyseurMarkDown::AnalyseurMarkDown(const TexteAvecAttributs&, const FonctionRemplace&,
                                              const FonctionMarque&, const OptionsProseMarkDown&);
template AnalyseurMarkDown::AnalyseurMarkDown(TexteAvecAttributs&, const FonctionRemplace&,
                                              const FonctionMarque&, const OptionsProseMarkDown&);

void AnalyseurMarkDown::Analyse() {
  for (const DelimiteurMarkDown& delimiteur : kDelimiteursMarkDown) TraiteDelimites(delimiteur);
  if (prose_.Actif) TraiteSpansDeCode();
  SauteEnTete();
  AnalyseBlocs(debutAnalyse_, finAnalyse_ - debutAnalyse_);
  TraiteEchappements();
  if (prose_.HTML.Actif) {
    DecodeReferencesHTML();
    return;
  }
  DecodeEntites();
}

// Each entity is "&", a name, ";" with no other "&" or ";": two occurrences never overlap, and
// a replacement erases only its own units. So one walk from "&" to "&" finds what a pass for each
// entity in turn would, and the replacements are then reported entity by entity, as those
// passes would report them.
static_assert(std::ranges::all_of(kEntitesMarkDown, [](const auto& paire) {
  const std::u16string_view entite = paire.first;
  return entite.size() >= 3 && entite.front() == u'&' && entite.back() == u';' &&
         entite.substr(1, entite.size() - 2).find_first_of(u"&;") == std::u16string_view::npos;
}));

void AnalyseurMarkDown::DecodeEntites() {
  const ChaineN& chaine = texte_.Chaine();
  std::array<std::vector<uint64_t>, std::size(kEntitesMarkDown)> positions;
  for (uint64_t p = 0; (p = TrouveUnite(chaine.Vue(), p, u'&')) != kPasTrouve;) {
    uint64_t suivant = p + 1;
    for (size_t k = 0; k < std::size(kEntitesMarkDown); ++k) {
      const std::u16string_view entite = kEntitesMarkDown[k].first;
      if (!chaine.ContientALaPos(entite, p)) continue;
      suivant = p + entite.size();
      if (suivant <= finAnalyse_ && !EstEchappe(p)) positions[k].push_back(p);
      break;
    }
    p = suivant;
  }
  for (size_t k = 0; k < std::size(kEntitesMarkDown); ++k) {
    const auto& [entite, caractere] = kEntitesMarkDown[k];
    const ChaineN remplacement(caractere);
    for (const uint64_t p : positions[k]) RemplacePlage(p, p + entite.size(), remplacement);
  }
}

void AnalyseurMarkDown::RemplacePlage(uint64_t debut, uint64_t fin, const ChaineN& remplacement) {
  if (fin > texte_.Longueur()) GardeAvantEffacement(debut, fin);  // the base reports nothing
  AnalyseurGenerique::RemplacePlage(debut, fin, remplacement);
  EffacePlage(debut, fin);
}

void AnalyseurMarkDown::SupprimePlage(uint64_t debut, uint64_t fin) {
  // The base reports through RemplacePlage above, which overwrites the stretch: overwriting it
  // once more here would change nothing.
  AnalyseurGenerique::SupprimePlage(debut, fin);
}

void AnalyseurMarkDown::EffacePlage(uint64_t debut, uint64_t fin) {
  if (fin > texte_.Longueur()) fin = texte_.Longueur();
  if (fin <= debut) return;
  texte_.Ecrase(debut, fin - debut, kUniteEffacee);
  ++effacements_;
  parentheses_.NoteEffacement(debut, fin);
  crochets_.NoteEffacement(debut, fin);
}

void AnalyseurMarkDown::TraiteDelimites(const DelimiteurMarkDown& delimiteur) {
  const ChaineN ouvrant(delimiteur.ouvrant), fermant(delimiteur.fermant);
  Plage occurrence;
  if (!TrouveSuivant(ouvrant, occurrence, 0)) return;
  do {
    uint64_t depart = occurrence.Fin();
    Plage ouverture, fermeture;
    if (TrouveALaPos(ouvrant, ouverture, occurrence.position) &&
        TrouveSuivant(fermant, fermeture, ouverture.Fin())) {
      if (delimiteur.options & eDelimEntier) {
        SupprimePlage(ouverture.position, fermeture.Fin());
        depart = fermeture.Fin();
      } else {
        SupprimePlage(ouverture.position, ouverture.Fin());
        SupprimePlage(fermeture.position, fermeture.Fin());
        if ((delimiteur.options & eDelimNonTexte) && ouverture.Fin() < fermeture.position) {
          if (prose_.Actif)
            MetAPartNonProse(ouverture.Fin(), fermeture.position);
          else
            MarquePlage(ouverture.Fin(), fermeture.position, eNonTexte);
        }
        // The closing delimiter is overwritten: the search goes on inside the content.
        depart = ouverture.Fin();
      }
    }
    // With no closing delimiter after this one, none comes after a later opening either: the
    // next search finds nothing and the pass ends, so unclosed spans cost one scan.
    if (!TrouveSuivant(ouvrant, occurrence, depart)) return;
  } while (true);
}

void AnalyseurMarkDown::MetAPartNonProse(uint64_t debut, uint64_t fin) {
  if (fin <= debut) return;
  MarquePlage(debut, fin, eNonTexte);
  GardeAvantEffacement(debut, fin);  // no report: the units stay in the text
  EffacePlage(debut, fin);
}

// Code spans of one backtick, in the prose profile: "`" to the next "`" of the same paragraph.
// The double-backtick pass has overwritten its spans already, so every "`" left opens or
// closes a single-backtick span; a paragraph break ends the search for a closing one. Each
// backtick is looked at once, and each line end by the paragraph test once.
namespace {

// Whether [debut, fin) holds a paragraph break: "\n\n" or "\n\r\n" wholly inside it.
bool CoupeUnParagraphe(std::u16string_view texte, uint64_t debut, uint64_t fin) {
  const std::u16string_view dedans = texte.substr(0, fin);
  for (uint64_t p = debut; (p = TrouveUnite(dedans, p, u'\n')) != kPasTrouve; ++p) {
    if (p + 1 < fin && dedans[p + 1] == u'\n') return true;
    if (p + 2 < fin && dedans[p + 1] == u'\r' && dedans[p + 2] == u'\n') return true;
  }
  return false;
}

}  // namespace

void AnalyseurMarkDown::TraiteSpansDeCode() {
  const std::u16string_view vue = texte_.Chaine().Vue();
  uint64_t ouvrant = TrouveUnite(vue, debutAnalyse_, u'`');
  while (ouvrant != kPasTrouve) {
    if (EstEchappe(ouvrant)) {
      ouvrant = TrouveUnite(vue, ouvrant + 1, u'`');
      continue;
    }
    const uint64_t fermant = TrouveUnite(vue, ouvrant + 1, u'`');
    if (fermant == kPasTrouve) return;
    if (CoupeUnParagraphe(vue, ouvrant, fermant)) {  // this one opens nothing; the closing
      ouvrant = fermant;                             // candidate may open
      continue;
    }
    SupprimePlage(ouvrant, ouvrant + 1);
    SupprimePlage(fermant, fermant + 1);
    MetAPartNonProse(ouvrant + 1, fermant);
    ouvrant = TrouveUnite(vue, fermant + 1, u'`');
  }
}

void AnalyseurMarkDown::SauteEnTete() {
  if (!texte_.Chaine().ContientALaPos(kEnTete.Vue(), debutAnalyse_)) return;
  Plage fermeture;
  if (!texte_.Chaine().Contient(kEnTete.Vue(), fermeture, debutAnalyse_ + kEnTete.Longueur()))
    return;
  SupprimePlage(debutAnalyse_, fermeture.Fin());
  debutAnalyse_ = fermeture.Fin();
}

void AnalyseurMarkDown::TraiteEchappements() {
  // One walk notes, for each character of the three groups, where its pass will act; then the
  // passes run in their order, each in increasing position, over those positions only. That is
  // one search per character, at the cost of one: a pass overwrites only its own character or
  // the backslash just before it, which no pass but the backslash's own reads again, and that
  // one comes last and tests the working copy as it then is.
  std::array<std::vector<uint64_t>, kEchappables.size()> positions;
  const ChaineN& chaine = texte_.Chaine();
  const std::u16string_view unites = chaine.Vue();
  const auto note = [&](uint64_t p) {
    if (p < debutAnalyse_) return;
    const char16_t c = unites[p];
    if (c >= kRangEchappable.size() || kRangEchappable[c] < 0) return;
    const size_t rang = static_cast<size_t>(kRangEchappable[c]);
    // Prose: the "#" of a numeric reference ("&#8217;") is no stray one.
    if (prose_.HTML.Actif && c == u'#' && p > 0 && chaine[p - 1] == u'&') return;
    // Only group 2 acts on an unescaped character.
    if (EstEchappe(p) || kEchappablesRetires.find(c) != std::u16string_view::npos)
      positions[rang].push_back(p);
  };
  // A pass acts on a unit of group 2 or on the unit after a backslash: the walk goes from one
  // backslash or group 2 unit to the next, looking at each position once, in order (from the
  // unit before the range: it may escape the first).
  for (uint64_t p = debutAnalyse_ > 0 ? debutAnalyse_ - 1 : 0;
       (p = ProchainDeclencheur(unites, p, finAnalyse_)) < finAnalyse_; ++p) {
    note(p);
    const uint64_t suivant = p + 1;
    if (unites[p] == u'\\' && suivant < finAnalyse_ && unites[suivant] != u'\\' &&
        kEchappablesRetires.find(unites[suivant]) == std::u16string_view::npos)
      note(suivant);  // a unit the walk would not stop at
  }
  for (size_t rang = 0; rang < kEchappables.size(); ++rang) {
    const char16_t c = kEchappables[rang];
    const bool retire = kEchappablesRetires.find(c) != std::u16string_view::npos;
    for (const uint64_t p : positions[rang]) {
      if (chaine[p] != c) continue;  // a backslash removed while handling its successor
      if (EstEchappe(p))
        SupprimePlage(p - 1, p);
      else if (retire)
        SupprimePlage(p, p + 1);
    }
  }
}

uint64_t AnalyseurMarkDown::SauteBlancs(uint64_t position, uint64_t fin) const {
  while (position < fin && EstBlanc(Car(position))) ++position;
  return position;
}

uint64_t AnalyseurMarkDown::CompteEspaces(uint64_t position, uint64_t fin, uint64_t maximum) const {
  uint64_t n = 0;
  while (n < maximum && position + n < fin && Car(position + n) == u' ') ++n;
  return n;
}

bool AnalyseurMarkDown::EstLigneBlanche(uint64_t position, uint64_t fin) const {
  const uint64_t p = SauteBlancs(position, fin);
  return p >= fin || EstFinDeLigne(Car(p));
}

std::optional<uint64_t> AnalyseurMarkDown::ChercheCar(char16_t unite, uint64_t debut,
                                                      uint64_t fin) const {
  uint64_t p = 0;
  if (debut >= fin || !texte_.Chaine().Contient(unite, p, debut, kMalgrayExact, fin - debut))
    return std::nullopt;
  return p;
}

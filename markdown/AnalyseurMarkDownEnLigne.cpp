// AnalyseurMarkDown, the inline spans of a block's text: line breaks, links and images,
// footnote marks, comments, tags and autolinks, then emphasis, each walk over the whole
// stretch before the next. Positions are absolute in the working copy.
#include <algorithm>
#include <array>

#include "ferlane/UniCaractere.h"
#include "ferlane/UnitesSSE2.h"
#include "markdown/AnalyseurMarkDown.h"

namespace {

bool EstAlphaNumeriqueAscii(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

bool EstGuillemet(char16_t c) {
  return c == u'\'' || c == u'"';
}

// The units an inline walk starts from, one bit each: a stretch is read once to learn which
// occur, and the walks over absent ones are skipped (they would find nothing).
constexpr std::u16string_view kDepartsEnLigne = u"\n\r[<*_~^";
constexpr std::array<uint8_t, 128> kBitDepart = [] {
  std::array<uint8_t, 128> bits{};
  for (size_t i = 0; i < kDepartsEnLigne.size(); ++i)
    bits[kDepartsEnLigne[i]] = static_cast<uint8_t>(1u << i);
  return bits;
}();
constexpr uint32_t Bit(char16_t c) {
  return kBitDepart[c];
}

// The bits of kBitDepart for the units `unites` holds. Eight units a step with SSE2 (every x86-64
// has it), each departure unit compared with all eight and the matches gathered apart.
uint32_t Departs(std::u16string_view unites) {
  uint32_t presents = 0;
  size_t i = 0;
#if defined(__SSE2__)
  __m128i cibles[kDepartsEnLigne.size()], trouves[kDepartsEnLigne.size()];
  for (size_t k = 0; k < kDepartsEnLigne.size(); ++k) {
    cibles[k] = _mm_set1_epi16(static_cast<short>(kDepartsEnLigne[k]));
    trouves[k] = _mm_setzero_si128();
  }
  for (; i + 8 <= unites.size(); i += 8) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(unites.data() + i));
    for (size_t k = 0; k < kDepartsEnLigne.size(); ++k)
      trouves[k] = _mm_or_si128(trouves[k], _mm_cmpeq_epi16(v, cibles[k]));
  }
  for (size_t k = 0; k < kDepartsEnLigne.size(); ++k)
    if (_mm_movemask_epi8(trouves[k]) != 0) presents |= 1u << k;
#endif
  for (; i < unites.size(); ++i)
    if (unites[i] < kBitDepart.size()) presents |= kBitDepart[unites[i]];
  return presents;
}

}  // namespace

void AnalyseurMarkDown::TraiteEnLigne(uint64_t pos, uint64_t longueur, bool remplaceRetours) {
  const uint64_t fin = pos + longueur;
  if (longueur == 0) return;
  const uint32_t presents = Departs(texte_.Chaine().Vue().substr(pos, longueur));
  if (remplaceRetours) {
    // A line end in the stretch's last unit stays: it ends the block.
    if (presents & Bit(u'\n')) RemplaceRetours(u'\n', pos, fin - 1);
    if (presents & Bit(u'\r')) RemplaceRetours(u'\r', pos, fin - 1);
  }
  for (uint64_t depuis = pos; (presents & Bit(u'[')) && depuis < fin;) {
    const std::optional<uint64_t> crochet = ChercheCar(u'[', depuis, fin);
    if (!crochet) break;
    const uint64_t consomme = TraiteLien(*crochet, fin - *crochet);
    depuis = *crochet + std::max<uint64_t>(consomme, 1);
  }
  for (uint64_t depuis = pos; (presents & Bit(u'<')) && depuis < fin;) {
    const std::optional<uint64_t> chevron = ChercheCar(u'<', depuis, fin);
    if (!chevron) break;
    const uint64_t consomme = TraiteBalises(*chevron, fin - *chevron);
    depuis = *chevron + std::max<uint64_t>(consomme, 1);
  }
  // Removals by the walks above never bring a delimiter in.
  if (presents & Bit(u'*')) TraiteEmphaseSimple(pos, longueur, u'*', eItalique);
  if (presents & Bit(u'_')) TraiteEmphaseSimple(pos, longueur, u'_', eItalique);
  if (presents & Bit(u'~')) TraiteEmphaseSimple(pos, longueur, u'~', eIndice);
  if (presents & Bit(u'^')) TraiteEmphaseSimple(pos, longueur, u'^', eExposant);
  if (presents & Bit(u'*')) TraiteEmphaseDouble(pos, longueur, u'*', eGras);
  if (presents & Bit(u'_')) TraiteEmphaseDouble(pos, longueur, u'_', eGras);
  if (presents & Bit(u'~')) TraiteEmphaseDouble(pos, longueur, u'~', eBarre);
}

void AnalyseurMarkDown::RemplaceRetours(char16_t retour, uint64_t debut, uint64_t fin) {
  for (std::optional<uint64_t> p = ChercheCar(retour, debut, fin); p;
       p = ChercheCar(retour, *p + 1, fin))
    RemplacePlage(*p, *p + 1, kMarqueEspace);
}

uint64_t AnalyseurMarkDown::TraiteLien(uint64_t pos, uint64_t longueur) {
  const uint64_t fin = pos + longueur;
  if (longueur == 0 || Car(pos) != u'[') return 0;
  const bool image = pos > 0 && Car(pos - 1) == u'!';
  const uint64_t debut = image ? pos - 1 : pos;
  const uint64_t crochet = crochetsFermants_.Prochain(pos + 1, fin);
  if (crochet >= fin || Car(crochet) != u']') return 0;  // a line end or the range's end first

  if (!image && Car(pos + 1) == u'^' && crochet > pos + 2 &&
      std::all_of(texte_.Chaine().Vue().begin() + pos + 2, texte_.Chaine().Vue().begin() + crochet,
                  [](char16_t c) { return UniCaractere::EstAlphaNumerique(c); }))
    return TraiteNoteDeBasDePage(debut, pos, crochet, fin);

  const SuiteDeLien suite = AnalyseSuiteDeLien(crochet, fin);
  if (!suite.aDestination) return 0;
  if (suite.arret + 1 < fin && Car(suite.arret + 1) == u'{')
    RetireAttributs(false, suite.arret + 1, fin - (suite.arret + 1));
  if (!suite.fermant) return 0;  // a bare "[text]" keeps its brackets

  const uint64_t destination = suite.destination, fermant = *suite.fermant;
  uint64_t premierGuillemet = fermant, dernierGuillemet = fermant;
  for (uint64_t p = destination + 1; p < fermant; ++p) {
    if (!EstGuillemet(Car(p))) continue;
    if (premierGuillemet == fermant) premierGuillemet = p;
    dernierGuillemet = p;
  }
  SupprimePlage(debut, pos + 1);
  if (premierGuillemet == fermant || dernierGuillemet <= premierGuillemet) {
    SupprimePlage(crochet, crochet + 1);
    SupprimePlage(destination, fermant + 1);
  } else {
    // The title stays, between two title marks.
    RemplacePlage(crochet, crochet + 1, kMarqueTitre);
    SupprimePlage(destination, premierGuillemet);
    RemplacePlage(premierGuillemet, premierGuillemet + 1, kMarqueTitre);
    SupprimePlage(dernierGuillemet, fermant + 1);
  }
  return fermant + 1 - pos;
}

const AnalyseurMarkDown::SuiteDeLien& AnalyseurMarkDown::AnalyseSuiteDeLien(uint64_t crochet,
                                                                            uint64_t fin) {
  SuiteDeLien& suite = suiteDeLien_;
  if (suite.crochet == crochet && suite.fin == fin && suite.effacements == effacements_)
    return suite;
  suite = SuiteDeLien{};
  suite.crochet = crochet, suite.fin = fin, suite.effacements = effacements_;
  // Blanks, at most one line break, blanks: where the destination's bracket would stand.
  uint64_t u = SauteBlancs(crochet + 1, fin);
  if (u < fin && EstFinDeLigne(Car(u))) u = SauteBlancs(u + 1, fin);
  suite.destination = u;
  suite.aDestination = u + 1 < fin && (Car(u) == u'(' || Car(u) == u'[');
  if (!suite.aDestination) return suite;
  suite.arret = FinDeLigne(u + 1, fin);
  suite.fermant =
      (Car(u) == u'(' ? parentheses_ : crochets_).Fermant(texte_.Chaine(), u, suite.arret);
  if (suite.fermant) suite.arret = *suite.fermant;
  return suite;
}

uint64_t AnalyseurMarkDown::TraiteNoteDeBasDePage(uint64_t debut, uint64_t pos, uint64_t crochet,
                                                  uint64_t fin) {
  // After a line end the mark is a note's definition; elsewhere a reference inside a line.
  const bool definition = debut > 0 && EstFinDeLigne(Car(debut - 1));
  RemplacePlage(debut, debut + 1, definition ? kMarqueSeparation : kMarqueAppelDeNote);
  SupprimePlage(debut + 1, crochet + 1);
  if (!definition && debut != 0) return crochet - pos;
  if (crochet + 1 <= fin && Car(crochet + 1) == u':') {
    SupprimePlage(crochet + 1, crochet + 2);
    return crochet + 1 - pos;
  }
  return crochet - pos;
}

void AnalyseurMarkDown::RetireAttributs(bool crochetsAussi, uint64_t pos, uint64_t longueur) {
  const uint64_t fin = pos + longueur;
  const uint64_t borne = std::min(fin + 1, texte_.Longueur());  // a "{" or "[" may stand at fin
  if (const std::optional<uint64_t> accolade = ChercheCar(u'{', pos, borne)) {
    // The scan may stop at fin itself, whose unit then decides.
    const uint64_t arret = accoladesFermantes_.Prochain(*accolade, fin);
    if (Car(arret) == u'}') SupprimePlage(*accolade, arret + 1);
  }
  if (!crochetsAussi) return;
  if (const std::optional<uint64_t> crochet = ChercheCar(u'[', pos, borne)) {
    const uint64_t arret = crochetsFermants_.Prochain(*crochet, fin);
    // A bracketed tail goes, but not the text of a link.
    if (arret < fin && Car(arret) == u']' && (arret + 1 == fin || Car(arret + 1) != u'('))
      SupprimePlage(*crochet, arret + 1);
  }
}

uint64_t AnalyseurMarkDown::TraiteBalises(uint64_t pos, uint64_t longueur) {
  const uint64_t fin = pos + longueur;
  if (longueur < 2 || Car(pos) != u'<') return 0;
  if (longueur > 5 && texte_.Chaine().ContientALaPos(u"!--", pos + 1))
    return prose_.HTML.Actif ? SupprimeCommentaireProse(pos, fin) : TraiteCommentaire(pos, fin);
  for (uint64_t t = pos;;) {
    uint64_t p = t + 1;
    const bool fermante = p < fin && Car(p) == u'/';
    if (fermante) ++p;
    while (p < fin && EstAlphaNumeriqueAscii(Car(p))) ++p;
    bool espace = false;
    for (; p < fin && Car(p) != u'>' && Car(p) != u'<'; ++p)
      espace |= Car(p) == u' ' || Car(p) == u'\n';
    if (p >= fin || Car(p) == u'<') return t - pos;
    const uint64_t chevron = p;
    if (!espace && !fermante && EstLienAutomatique(t, chevron)) {
      SupprimePlage(t, t + 1);  // the address stays
      SupprimePlage(chevron, chevron + 1);
    } else if (EstBaliseDeRetour(t, chevron)) {
      RemplacePlage(t, chevron + 1, kMarqueSeparation);
    } else {
      if (prose_.HTML.Actif && !fermante) MarqueElementNonProse(t, chevron);
      SupprimePlage(t, chevron + 1);
    }
    // The text between the tags of one line is not looked at here.
    for (p = chevron + 1; p < fin && Car(p) != u'<' && !EstFinDeLigne(Car(p));) ++p;
    if (p >= fin || Car(p) != u'<') return p - pos;
    t = p;
  }
}

bool AnalyseurMarkDown::EstLienAutomatique(uint64_t chevronOuvrant, uint64_t chevronFermant) const {
  const ChaineN& chaine = texte_.Chaine();
  const uint64_t debut = chevronOuvrant + 1, longueur = chevronFermant - debut;
  Plage plage;
  uint64_t position = 0;
  return (longueur > 0 && chaine.Contient(u"http://", plage, debut, kMalgraySansCasse, longueur)) ||
         chaine.ContientALaPos(u"https://", debut, kMalgraySansCasse) ||
         (longueur > 0 && chaine.Contient(u'@', position, debut, kMalgrayExact, longueur));
}

bool AnalyseurMarkDown::EstBaliseDeRetour(uint64_t chevronOuvrant, uint64_t chevronFermant) const {
  const ChaineN& chaine = texte_.Chaine();
  if (chevronFermant == chevronOuvrant + 4) return chaine.ContientALaPos(u"<br/>", chevronOuvrant);
  return chevronFermant >= chevronOuvrant + 5 && chaine.ContientALaPos(u"<br ", chevronOuvrant) &&
         Car(chevronFermant - 1) == u'/';
}

uint64_t AnalyseurMarkDown::TraiteCommentaire(uint64_t pos, uint64_t fin) {
  // The comment's "-->" has its ">" at g >= pos + 5. Only a close whose ">" stands before the
  // range's last unit matters: a later one, or none, consumes the range all the same. So the
  // search stops there, and text full of unclosed comments is not searched to its end again
  // and again.
  const uint64_t debutRecherche = pos + 3;
  uint64_t apres = fin + 1;  // a: one past the comment
  Plage fermeture;
  if (fin > debutRecherche + 1 && texte_.Chaine().Contient(u"-->", fermeture, debutRecherche,
                                                           kMalgrayExact, fin - 1 - debutRecherche))
    apres = fermeture.Fin();
  if (apres >= fin) return apres - pos;
  // Only a comment alone on its line (blanks up to the line end or the range's end) is taken.
  const uint64_t finBlancs = SauteBlancs(apres, fin);
  if (finBlancs < fin && !EstFinDeLigne(Car(finBlancs))) return apres - pos;
  const uint64_t blancs = finBlancs - apres + (finBlancs < fin ? 1 : 0);
  const uint64_t g = apres - 1;
  SupprimePlage(pos, pos + 4);
  RemplacePlage(pos + 4, pos + 5, kMarqueTitre);
  RemplacePlage(g - 3, g - 2, kMarqueTitre);
  SupprimePlage(g - 2, g + 1);
  return apres + blancs - pos;
}

void AnalyseurMarkDown::TraiteEmphaseSimple(uint64_t pos, uint64_t longueur, char16_t x,
                                            uint32_t styles) {
  const uint64_t fin = pos + longueur;
  std::optional<uint64_t> ouvrant;
  // An underscore after a letter or digit opens nothing (intraword underscores).
  const auto regleSouligne = [&](uint64_t p) {
    if (!(p > pos && UniCaractere::EstAlphaNumerique(Car(p - 1)))) ouvrant = p;
  };
  for (std::optional<uint64_t> p = ChercheCar(x, pos, fin); p; p = ChercheCar(x, *p + 1, fin)) {
    const char16_t avant = *p > 0 ? Car(*p - 1) : u'\0';
    // Runs of two or more are left to the doubled pass.
    if (avant == u'\\' || avant == x || (*p + 1 < fin && Car(*p + 1) == x)) continue;
    if (!ouvrant) {
      if (x == u'_')
        regleSouligne(*p);
      else
        ouvrant = *p;
    } else if (x == u'_' && *p + 1 < fin && UniCaractere::EstAlphaNumerique(Car(*p + 1))) {
      regleSouligne(*p);
    } else {
      // The span starts on the opening delimiter itself.
      MarquePlage(*ouvrant, *p, styles);
      SupprimePlage(*ouvrant, *ouvrant + 1);
      SupprimePlage(*p, *p + 1);
      ouvrant.reset();
    }
  }
  // An opening never closed is left to the escape pass.
}

void AnalyseurMarkDown::TraiteEmphaseDouble(uint64_t pos, uint64_t longueur, char16_t x,
                                            uint32_t styles) {
  const uint64_t fin = pos + longueur;
  const char16_t double_[2] = {x, x};
  const std::u16string_view motif(double_, 2);
  std::optional<uint64_t> ouvrant;
  Plage plage;
  for (uint64_t depuis = pos;
       depuis < fin && texte_.Chaine().Contient(motif, plage, depuis, kMalgrayExact, fin - depuis);
       depuis = plage.position + 1) {
    const uint64_t p = plage.position;
    const char16_t avant = p > 0 ? Car(p - 1) : u'\0';
    if (avant == u'\\' || avant == x || (p + 2 < fin && Car(p + 2) == x)) continue;
    if (!ouvrant) {
      ouvrant = p;
    } else {
      MarquePlage(*ouvrant + 2, p, styles);
      SupprimePlage(*ouvrant, *ouvrant + 2);
      SupprimePlage(p, p + 2);
      ouvrant.reset();
    }
  }
}

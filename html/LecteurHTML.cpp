// LecteurHTML: the walk over an HTML page, its text and its character references. The tags and
// elements are in LecteurHTMLBalises.cpp.
#include "html/LecteurHTML.h"

#include <algorithm>
#include <bit>

#include "ferlane/CodageUtf.h"
#include "ferlane/UniCaractere.h"
#include "ferlane/UnitesSSE2.h"
#include "html/ReferencesHTML5.h"
#include "html/TablesHTML.h"
#include "html/VocabulaireHTML.h"

using namespace vocabulaire_html;

namespace {

constexpr uint32_t kCodePointMax = 0x10FFFF;

bool EstChiffreHex(char16_t c) {
  return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

bool EstOrdinaire(char16_t c) {
  return c < 0x80 && (kClassesASCII[c] & kOrdinaire) != 0;
}

// The end of the run from `debut` of ordinary ASCII units and of single spaces between two of
// them (a space there is left as it is and reports nothing: after it only the last unit's class
// counts). Eight units a step with SSE2; a lane that is neither, or a space before one that is
// not ordinary, ends the steps, and the unit-by-unit walk finishes the run from that lane.
uint64_t FinDesOrdinaires(std::u16string_view unites, uint64_t debut) {
  uint64_t p = debut;
#if defined(__SSE2__)
  for (; p + 9 <= unites.size(); p += 8) {
    // Nine units: the ninth tells whether a space in the eighth lane has an ordinary one after.
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(unites.data() + p));
    const __m128i w = _mm_loadu_si128(reinterpret_cast<const __m128i*>(unites.data() + p + 1));
    const auto ordinaires = [](__m128i x) {
      const auto egal = [&x](char16_t c) {
        return _mm_cmpeq_epi16(x, _mm_set1_epi16(static_cast<short>(c)));
      };
      const __m128i autres =
          _mm_or_si128(_mm_or_si128(UnitesDans(x, 0x80, 0xFFFF), UnitesDans(x, 0, 0x20)),
                       _mm_or_si128(_mm_or_si128(egal(u'<'), egal(u'&')), egal(u'/')));
      return _mm_andnot_si128(autres, _mm_set1_epi16(-1));
    };
    const __m128i espaces = _mm_cmpeq_epi16(v, _mm_set1_epi16(u' '));
    const __m128i pris = _mm_or_si128(ordinaires(v), _mm_and_si128(espaces, ordinaires(w)));
    const auto masque = static_cast<uint32_t>(_mm_movemask_epi8(pris));
    if (masque != 0xFFFF) {
      p += static_cast<uint64_t>(std::countr_one(masque)) / 2;  // the lanes taken go by at once
      break;
    }
  }
#endif
  for (; p < unites.size(); ++p) {
    if (EstOrdinaire(unites[p])) continue;
    if (unites[p] != u' ' || p + 1 >= unites.size() || !EstOrdinaire(unites[p + 1])) break;
  }
  return p;
}

}  // namespace
LecteurHTML::LecteurHTML(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                         const FonctionMarque& marque, const OptionsProseHTML& prose)
    : texte_(texte.Chaine()),
      remplace_(remplace),
      marque_(marque),
      longueur_(texte.Longueur()),
      // Neither marker holds a letter, so an exact search finds what a search ignoring case would.
      chevrons_(texte_.Vue(), u">"),
      finsDeCommentaire_(texte_.Vue(), u"-->"),
      noms_(texte_),
      prose_(prose) {}

bool LecteurHTML::Parcourt() {
  SauteDoctype();
  while (position_ < longueur_) {
    LitTexte();
    // Two words that markup, a reference or a placeholder brings together stay apart.
    if (apresMot_ && position_ < longueur_) {
      const char16_t c = texte_[position_];
      if (EstBlanc(c)) {
        TraiteBlancs();
      } else if (c != u'<' && EstMot(c) && (!prose_.Actif || coupure_)) {
        // In the prose profile, inline markup inside a word ("wo<b>rd</b>", "r&eacute;sum")
        // keeps it whole; only what breaks the line breaks the word.
        Remplace(position_, position_, kEspace, kEquivalent);
        apresBlanc_ = true;
      }
    }
    // apresMot survives only across a run of consecutive tags.
    if (position_ < longueur_ && texte_[position_] != u'<') apresMot_ = false;
  }
  // Elements left open lose their opening tag, innermost first; nothing else is reported.
  while (!pile_.empty()) {
    RemplaceBaliseOuvrante(pile_.back());
    pile_.pop_back();
  }
  return nonASCIIBruts_ < referencesDecodees_;
}

// ---------------------------------------------------------------------------------------------
// Text outside tags

void LecteurHTML::SauteDoctype() {
  SauteBlancs();
  if (!texte_.ContientALaPos(u"<!doctype", position_, kMalgraySansCasse)) return;
  const uint64_t chevron = chevrons_.PositionApres(position_);
  position_ = chevron == std::u16string_view::npos ? longueur_ : chevron + 1;
  Remplace(0, position_, kChaineNNulle, kMasque);  // the blanks before it go too
  courant_->debutOuvrante = 0;
  courant_->finOuvrante = position_;
}

// One stretch of text and at most one piece of markup (a tag, a reference, a comment).
void LecteurHTML::LitTexte() {
  const std::u16string_view unites = texte_.Vue().substr(0, longueur_);
  while (position_ < longueur_) {
    const char16_t c = unites[position_];
    if (EstOrdinaire(c)) {  // the common case: a run needs nothing but its last unit's class
      position_ = FinDesOrdinaires(unites, position_ + 1);
      apresBlanc_ = false;
      coupure_ = false;
      apresMot_ = (kClassesASCII[unites[position_ - 1]] & kMot) != 0;
      continue;
    }
    if (c == u'<') break;
    if (c == u'&') {
      coupure_ = false;  // a reference, or a "&" left as text, sits inside the line
      const uint64_t debut = position_++;
      if (position_ >= longueur_) return;
      const char16_t suivant = texte_[position_];
      if (suivant == u'#') {
        LitReferenceNumerique(debut);
      } else if (UniCaractere::EstAlphaNumerique(suivant)) {
        if (prose_.Actif)
          LitEntiteNommeeProse(debut);
        else
          LitEntiteNommee(debut);
      } else {
        apresMot_ = true;  // the "&" stays as it is
        apresBlanc_ = false;
      }
      return;
    }
    // Outside scripts and styles, which are never read, "/*" opens nothing in the prose profile:
    // "refs/heads/*" and "dir/*" are prose and paths.
    if (c == u'/' && !prose_.Actif && position_ + 1 < longueur_ && texte_[position_ + 1] == u'*') {
      SauteCommentaireScript();
      return;
    }
    LitCaractere(c);
  }
  if (position_ >= longueur_) return;

  const uint64_t debutBalise = position_++;
  SauteBlancs();
  if (position_ >= longueur_) return;  // a "<" at the end stays
  if (texte_[position_] == u'/')
    LitBaliseFermante(debutBalise);
  else
    LitBaliseOuvrante(debutBalise);
}

void LecteurHTML::LitCaractere(char16_t c) {
  if (c >= 0x80) ++nonASCIIBruts_;
  if (EstBlanc(c)) {
    TraiteBlancs();  // so of a run of blanks only the first is counted
    return;
  }
  apresBlanc_ = false;
  coupure_ = false;
  apresMot_ = EstMot(c);
  ++position_;
}

// '/*' to the first '*/'; the search starts at the "/" itself, so '/*/' is a whole comment.
void LecteurHTML::SauteCommentaireScript() {
  const uint64_t debut = position_;
  const uint64_t fin = texte_.Vue().find(u"*/", debut);
  if (fin == std::u16string_view::npos) {
    position_ = longueur_ - 1;  // unread; the last unit is read as text by the next call
    return;
  }
  Remplace(debut, fin + 2, kChaineNNulle, kMasque);
  position_ = fin + 2;
}

void LecteurHTML::TraiteBlancs() {
  const uint64_t debut = position_;
  SauteBlancs();
  if (apresBlanc_) {
    // A blank or a line feed was reported just before: the whole run goes.
    Remplace(debut, position_, kChaineNNulle, kEquivalent);
  } else if (position_ - debut > 1 || texte_[debut] == u'\n') {
    Remplace(debut, position_, kEspace, kEquivalent);
  }  // else a single blank other than a line feed stays as it is
  apresMot_ = false;
  apresBlanc_ = true;
}

// The position is just after the "&". A "&" in prose followed somewhere by a ";" turns
// everything between into one placeholder; with no ";" at all, the rest of the text is left
// unread.
void LecteurHTML::LitEntiteNommee(uint64_t debutReference) {
  const uint64_t debutNom = position_;
  const uint64_t pointVirgule = TrouveUnite(texte_.Vue(), debutNom, u';');
  if (pointVirgule == std::u16string_view::npos) {
    position_ = longueur_;
    return;
  }
  position_ = pointVirgule + 1;
  const std::optional<char16_t> caractere =
      TablesHTML::CaractereDEntite(texte_.Vue().substr(debutNom, position_ - debutNom));
  if (!caractere) {
    Remplace(debutReference, position_, kMarqueHTML, kMasque);
    Marque(debutReference, position_, eNonTexte);
    apresMot_ = true;
    apresBlanc_ = false;
    return;
  }
  Remplace(debutReference, position_, ChaineN(*caractere), kEquivalent);
  if (!ConvertisseurHTML::DoitConvertir(*caractere)) ++referencesDecodees_;
  apresMot_ = EstMot(*caractere);
  apresBlanc_ = EstBlanc(*caractere);
}

// In the prose profile, the full table of HTML5 references. A reference is a name of at most
// the longest one's length and a ";": anything else ("&" in "AT&T", an unterminated "&nbsp")
// leaves the "&" as text and reading goes on right after it, so it costs nothing beyond itself.
void LecteurHTML::LitEntiteNommeeProse(uint64_t debutReference) {
  const uint64_t debutNom = position_;
  uint64_t fin = debutNom;
  while (fin < longueur_ && fin - debutNom <= kLongueurMaxReferenceHTML5 &&
         UniCaractere::EstAlphaNumerique(texte_[fin]))
    ++fin;
  const std::optional<std::u16string_view> texte =
      fin < longueur_ && texte_[fin] == u';'
          ? TrouveReferenceHTML5(texte_.Vue().substr(debutNom, fin - debutNom))
          : std::nullopt;
  if (!texte) {
    apresMot_ = true;  // the "&" stays as it is
    apresBlanc_ = false;
    coupure_ = false;
    return;
  }
  position_ = fin + 1;
  Remplace(debutReference, position_, ChaineN(*texte), kEquivalent);
  const char16_t premier = texte->front();
  if (!ConvertisseurHTML::DoitConvertir(premier)) ++referencesDecodees_;
  apresMot_ = EstMot(premier) || EstHautSubstitut(premier);
  apresBlanc_ = EstBlanc(premier);
  coupure_ = false;
}

// The position is at the "#". Anything but digits up to the ";" leaves the reference as text.
void LecteurHTML::LitReferenceNumerique(uint64_t debutReference) {
  if (++position_ >= longueur_) return;
  const bool hexadecimal = texte_[position_] == u'x' || texte_[position_] == u'X';
  if (hexadecimal && ++position_ >= longueur_) return;
  const uint64_t debutChiffres = position_;
  while (position_ + 1 < longueur_ && texte_[position_] != u';') {
    const char16_t c = texte_[position_];
    if (hexadecimal ? !EstChiffreHex(c) : !UniCaractere::EstChiffre(c)) {
      apresMot_ = true;  // nothing reported; reading goes on at c
      return;
    }
    ++position_;
  }
  if (texte_[position_] != u';') return;  // the last unit is read as text next

  const ChaineN chiffres = texte_.SousChaine(debutChiffres, position_ - debutChiffres);
  // No digits at all gives 0; a value of 2^32 or more saturates and gives the placeholder.
  const uint64_t lu = hexadecimal ? chiffres.DonneEntierHex() : chiffres.DonneEntier();
  const uint32_t valeur = lu > UINT32_MAX ? UINT32_MAX : static_cast<uint32_t>(lu);
  ++position_;

  if (valeur > kCodePointMax) {
    Remplace(debutReference, position_, kMarqueHTML, kMasque);
    Marque(debutReference, position_, eNonTexte);
    apresMot_ = true;
    apresBlanc_ = false;
  } else if (valeur > 0xFFFF) {
    Remplace(debutReference, position_, ChaineN::DepuisCodePointUTF16(valeur), kEquivalent);
    ++referencesDecodees_;
    apresMot_ = true;
    apresBlanc_ = false;
  } else {
    const char16_t caractere = static_cast<char16_t>(valeur);
    Remplace(debutReference, position_, ChaineN(caractere), kEquivalent);
    if (!ConvertisseurHTML::DoitConvertir(caractere)) ++referencesDecodees_;
    apresMot_ = EstMot(caractere);
    apresBlanc_ = EstBlanc(caractere);
  }
}

// ---------------------------------------------------------------------------------------------
// Reports and small helpers

void LecteurHTML::Remplace(uint64_t debut, uint64_t fin, const ChaineN& texte,
                           MapPos::Attributs attributs) {
  remplace_(Rapporteur::Intervalle(debut, fin), texte, attributs);
}

void LecteurHTML::Marque(uint64_t debut, uint64_t fin, uint32_t styles) {
  marque_(Rapporteur::Intervalle(debut, fin), styles);
}

void LecteurHTML::SauteBlancs() {
  while (position_ < longueur_ && EstBlanc(texte_[position_])) ++position_;
}

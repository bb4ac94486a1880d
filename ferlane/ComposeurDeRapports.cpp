// ComposeurDeRapports: resolution of one run's reports into output text, styles and step map.
#include "ferlane/ComposeurDeRapports.h"

#include <algorithm>
#include <array>
#include <bit>
#include <stdexcept>
#include <utility>

#include "ferlane/Rapporteur.h"

namespace {

// Sorts `v` stably by the 32-bit `cle`: least significant digit first, through a buffer of the
// same size. The digits split the bits the largest key uses into as few passes as 12-bit
// counters allow (two for a text of up to 16 million units), and one read of `v` counts every
// digit; a pass where every element has the same digit moves nothing and is skipped.
template <class V, class Cle>
void TrieParBase(V& v, Cle cle) {
  using T = typename V::value_type;
  if (v.size() < 2) return;
  constexpr int kBitsMaximum = 12;
  constexpr int kPassesMaximum = (32 + kBitsMaximum - 1) / kBitsMaximum;
  uint32_t plusGrande = 0;
  for (const T& x : v) plusGrande = std::max(plusGrande, cle(x));
  const int bits = std::max(1, static_cast<int>(std::bit_width(plusGrande)));
  const int passes = (bits + kBitsMaximum - 1) / kBitsMaximum;
  const int largeur = (bits + passes - 1) / passes;
  const uint32_t masque = (1u << largeur) - 1;
  std::array<std::array<uint32_t, 1u << kBitsMaximum>, kPassesMaximum> debuts{};
  for (const T& x : v)
    for (int k = 0; k < passes; ++k) ++debuts[k][(cle(x) >> (k * largeur)) & masque];
  V tampon(v.size());
  for (int k = 0; k < passes; ++k) {
    const int decalage = k * largeur;
    auto& d = debuts[k];
    if (d[(cle(v[0]) >> decalage) & masque] == v.size()) continue;
    uint32_t somme = 0;
    for (uint32_t i = 0; i <= masque; ++i) somme += std::exchange(d[i], somme);
    for (const T& x : v) tampon[d[(cle(x) >> decalage) & masque]++] = x;
    v.swap(tampon);
  }
}

// The elements of `v` that come after a larger one by `cle` (they start before the last one kept).
template <class V, class Cle>
size_t CompteAEcarter(const V& v, Cle cle) {
  size_t aEcarter = 0;
  for (uint64_t i = 1, dernier = v.empty() ? 0 : cle(v[0]); i < v.size(); ++i) {
    const uint64_t c = cle(v[i]);
    const bool ecarte = c < dernier;
    aEcarter += ecarte;
    dernier = ecarte ? dernier : c;
  }
  return aEcarter;
}

// From this many elements on, a radix sort beats one by comparisons.
constexpr size_t kTriParBaseDes = size_t{1} << 12;

// Sorts `v` stably by `cle`, a 64-bit key (reports that tie keep the order they were made in).
// Converters report mostly in order: a walk goes forward, and a nested treatment reports its
// inside before what covers it, so the few reports that start before the last one kept (the
// covering ones) are set aside, sorted, and merged back from the end in one pass. Sorting costs
// O(n + d log d) for d reports set aside, and the room of those d only. The three walks have no
// branch that depends on the reports: a fifth of an HTML page's are set aside, at no pattern a
// branch predictor could learn.
// `trieTout(v)` sorts the whole of `v` stably by `cle`: all of it when most reports are out of
// order, or the many set aside. `aEcarter` is how many would be set aside (CompteAEcarter),
// counted first: when most would be (a converter that reports a pass at a time over the whole
// text), one sort of the whole costs the same without a copy of most of it.
template <class V, class Cle, class TrieTout>
void TrieParSuites(V& v, Cle cle, TrieTout trieTout, size_t aEcarter) {
  using T = typename V::value_type;
  if (v.size() < 2 || aEcarter == 0) return;
  if (2 * aEcarter > v.size()) {
    trieTout(v);
    return;
  }
  // Each report is written both to the kept ones (over a slot already read) and to the set-aside
  // ones; only the index of the list it belongs to moves on. One slot more takes the last write.
  V ecartes(aEcarter + 1);
  size_t gardes = 1, e = 0;
  for (uint64_t i = 1, dernier = cle(v[0]); i < v.size(); ++i) {
    const T x = v[i];
    const uint64_t c = cle(x);
    const bool ecarte = c < dernier;
    v[gardes] = x;
    ecartes[e] = x;
    gardes += !ecarte;
    e += ecarte;
    dernier = ecarte ? dernier : c;
  }
  ecartes.pop_back();
  // Many set aside are sorted the way the whole would be; a few, by comparisons.
  if (ecartes.size() >= kTriParBaseDes)
    trieTout(ecartes);
  else
    std::stable_sort(ecartes.begin(), ecartes.end(),
                     [&cle](const T& a, const T& b) { return cle(a) < cle(b); });
  // From the end: the kept ones move up into the room the set-aside ones left; a kept one goes
  // first when the set-aside one sorts before it. Once no kept one is left, the set-aside ones
  // fill the front.
  size_t i = gardes, j = ecartes.size(), k = v.size();
  while (i > 0 && j > 0) {
    const T& garde = v[i - 1];
    const T& ecarte = ecartes[j - 1];
    const bool prendGarde = cle(ecarte) < cle(garde);
    v[--k] = *(prendGarde ? &garde : &ecarte);
    i -= prendGarde;
    j -= !prendGarde;
  }
  std::copy(ecartes.begin(), ecartes.begin() + static_cast<std::ptrdiff_t>(j), v.begin());
}

// Reserved room for reports, as a share of the text: markup-heavy formats report about one
// replacement every eight units. Reserving only claims address space; pages are touched as
// reports come, and a larger count still grows the vector as usual.
constexpr uint64_t kUnitesParRapportPrevu = 8;
}  // namespace

ComposeurDeRapports::ComposeurDeRapports(const TexteAvecAttributs& entree) : entree_(entree) {}

void ComposeurDeRapports::AjouteRemplacement(MapPos::Intervalle intervalle, const ChaineN& texte,
                                             MapPos::Attributs attributs) {
  if (intervalle.Debut > intervalle.Fin || intervalle.Fin > entree_.Longueur()) return;
  // Positions are 32-bit throughout the map; so are offsets into the replacement texts.
  const uint64_t longueur = texte.Longueur();
  if (longueur + 2 > UINT32_MAX - tampon_.size())
    throw std::length_error("replacement texts of one run exceed 2^32 code units");
  // Claimed at the first report: a converter that reports styles alone, or nothing, claims none.
  // Beyond that, the room grows fourfold: where the heap keeps freed memory (the command's
  // does), each growth leaves the old room behind, and those rooms then add up to a third of the
  // last one rather than as much as it. Room not yet written takes no memory.
  if (remplacements_.capacity() == 0)
    remplacements_.reserve(entree_.Longueur() / kUnitesParRapportPrevu + 16);
  else if (remplacements_.size() == remplacements_.capacity())
    remplacements_.reserve(4 * remplacements_.capacity());
  const bool longue = longueur >= kTexteLong;
  if (longue) {
    tampon_ += static_cast<char16_t>(longueur >> 16);
    tampon_ += static_cast<char16_t>(longueur & 0xFFFF);
  }
  remplacements_.push_back({intervalle.Debut, intervalle.Fin, static_cast<uint32_t>(tampon_.size()),
                            longue ? kTexteLong : static_cast<uint16_t>(longueur), attributs});
  // Counted as they come, while the report is at hand, rather than in a pass over them all.
  const uint64_t cle = Cle(remplacements_.back());
  aEcarter_ += cle < plusGrandeCle_;
  plusGrandeCle_ = std::max(plusGrandeCle_, cle);
  tampon_ += texte.Vue();
}

void ComposeurDeRapports::AjouteStyle(MapPos::Intervalle intervalle, uint32_t styles) {
  styles &= kBitsDAttributsGardes;
  if (intervalle.Debut >= intervalle.Fin || intervalle.Fin > entree_.Longueur() || styles == 0)
    return;
  // A span that starts inside the last one and carries the same bits joins it: a unit's bits
  // depend only on the union of the spans carrying each bit. Styled runs nested inside each
  // other, and runs that follow each other, then take one span.
  if (!styles_.empty()) {
    Style& dernier = styles_.back();
    if (dernier.styles == styles && intervalle.Debut >= dernier.debut &&
        intervalle.Debut <= dernier.fin) {
      dernier.fin = std::max<uint32_t>(dernier.fin, intervalle.Fin);
      return;
    }
  }
  styles_.push_back({intervalle.Debut, intervalle.Fin, styles});
}

// A sweep over the spans' ends, one counter a bit: a unit gets every bit that some span
// covering it carries, whatever the overlaps. Spans cost nothing more than their ends, and the
// steps take room in the number of reports, not in the length of the text.
std::vector<ComposeurDeRapports::Palier> ComposeurDeRapports::Paliers() {
  std::vector<Palier> paliers;
  if (styles_.empty()) return paliers;
  struct Evenement {  // eight bytes: a step that marks a token every few units makes many
    uint32_t position;
    BitsDAttributs styles;
    int8_t sens;
  };
  static_assert(sizeof(Evenement) == 8);
  VecteurBrut<Evenement> evenements;
  evenements.reserve(2 * styles_.size());
  for (const Style& s : styles_) {
    const auto styles = static_cast<BitsDAttributs>(s.styles);
    evenements.push_back({s.debut, styles, +1});
    evenements.push_back({s.fin, styles, -1});
  }
  // Which of two events at one position comes first changes no step: any sorted order will do.
  const auto position = [](const Evenement& e) { return uint64_t{e.position}; };
  TrieParSuites(
      evenements, position,
      [](VecteurBrut<Evenement>& tous) {
        TrieParBase(tous, [](const Evenement& e) { return e.position; });
      },
      CompteAEcarter(evenements, position));
  paliers.reserve(evenements.size() + 1);
  paliers.push_back({0, 0});
  std::array<int64_t, 32> compteurs{};
  uint32_t courant = 0;
  for (size_t i = 0; i < evenements.size();) {
    const uint32_t position = evenements[i].position;
    for (; i < evenements.size() && evenements[i].position == position; ++i) {
      for (uint32_t bits = evenements[i].styles; bits != 0; bits &= bits - 1) {
        const int bit = std::countr_zero(bits);
        compteurs[bit] += evenements[i].sens;
        if (compteurs[bit] > 0)
          courant |= 1u << bit;
        else
          courant &= ~(1u << bit);
      }
    }
    if (courant == paliers.back().styles) continue;
    if (paliers.back().debut == position)
      paliers.back().styles = courant;
    else
      paliers.push_back({position, courant});
  }
  return paliers;
}

void ComposeurDeRapports::AppliqueStyles(TexteAvecAttributs& texte) {
  std::vector<BitsDAttributs>& attributs = texte.AttributsModifiables();
  // Written through a pointer, with the bits of a stretch in a local: byte stores may alias
  // anything, so the compiler would otherwise read the vector and the span again after each one.
  BitsDAttributs* const bits = attributs.data();
  // A unit's bits are those of every span over it, in whatever order the spans come: when the
  // spans cover few units in all (words, tokens), each is laid on directly; otherwise the steps
  // bound the work by the text's length.
  uint64_t couverts = 0;
  for (const Style& s : styles_) couverts += s.fin - s.debut;
  if (couverts <= attributs.size()) {
    for (const Style& s : styles_) {
      const auto styles = static_cast<BitsDAttributs>(s.styles);
      std::for_each(bits + s.debut, bits + s.fin, [styles](BitsDAttributs& b) { b |= styles; });
    }
    return;
  }
  const std::vector<Palier> paliers = Paliers();
  for (size_t k = 0; k < paliers.size(); ++k) {
    if (paliers[k].styles == 0) continue;
    const uint32_t fin = k + 1 < paliers.size() ? paliers[k + 1].debut : uint32_t(attributs.size());
    const auto styles = static_cast<BitsDAttributs>(paliers[k].styles);
    std::for_each(bits + paliers[k].debut, bits + fin,
                  [styles](BitsDAttributs& b) { b |= styles; });
  }
}

ComposeurDeRapports::FonctionRemplace ComposeurDeRapports::Remplace() {
  return [this](MapPos::Intervalle intervalle, const ChaineN& texte, MapPos::Attributs attributs) {
    AjouteRemplacement(intervalle, texte, attributs);
  };
}

ComposeurDeRapports::FonctionMarque ComposeurDeRapports::Marque() {
  return
      [this](MapPos::Intervalle intervalle, uint32_t styles) { AjouteStyle(intervalle, styles); };
}

// The state of one Construis: the resolved reports, then the output under construction.
class ComposeurDeRapports::Construction {
 public:
  Construction(ComposeurDeRapports& composeur, bool avecSegments, size_t segmentsEnPlus)
      : c_(composeur),
        avecSegments_(avecSegments),
        segmentsEnPlus_(segmentsEnPlus),
        n_(composeur.entree_.Longueur()) {}

  Etape Construis(TexteAvecAttributs* entreeLibre) {
    ResoutRemplacements();
    ResoutInsertions();
    CalculeStyles();
    avecAttributs_ = c_.entree_.AAttributs() || !paliers_.empty();
    // Over the input: its units are read before the output reaches them. The input's own bits
    // would be read after (an insertion looks at the unit before it), so it must have none.
    const Plan plan = Planifie();
    surPlace_ = entreeLibre != nullptr && !c_.entree_.AAttributs() && plan.derriere;
    if (surPlace_) {
      ChaineN entree = entreeLibre->RetireChaine();
      texte_ = std::move(entree.Texte());
    }
    EcritSortie(plan);
    if (surPlace_) texte_.resize(ecrites_);
    // The reports are spent: their room goes to what the chain does next (composing the maps).
    VecteurBrut<Remplacement>().swap(c_.remplacements_);
    std::deque<Style>().swap(c_.styles_);
    std::u16string().swap(c_.tampon_);
    VerifieLongueurMappable(texte_.size());  // the segments' positions are 32-bit
    return Etape{TexteAvecAttributs(ChaineN(std::move(texte_)), std::move(attributs_)),
                 std::move(segments_)};
  }

 private:
  // Sorted in place by start, longer first, then report order (insertions, the shortest, come
  // after the replacements that start at their position, in report order). A sweep then keeps
  // of each replacement what earlier ones leave, packing the kept ones at the front.
  void ResoutRemplacements() {
    auto& rapports = c_.remplacements_;
    const auto ordre = [](const Remplacement& a, const Remplacement& b) {
      return a.debut != b.debut ? a.debut < b.debut : a.fin > b.fin;
    };
    // All out of order: by start, then each group with one start by end, the longest first.
    const auto trieTout = [&ordre](VecteurBrut<Remplacement>& tous) {
      TrieParBase(tous, [](const Remplacement& r) { return r.debut; });
      for (auto groupe = tous.begin(); groupe != tous.end();) {
        const auto fin = std::find_if(groupe + 1, tous.end(), [&](const Remplacement& r) {
          return r.debut != groupe->debut;
        });
        if (fin - groupe > 1) std::stable_sort(groupe, fin, ordre);
        groupe = fin;
      }
    };
    TrieParSuites(
        rapports, [](const Remplacement& r) { return Cle(r); }, trieTout, c_.aEcarter_);
    uint32_t couvert = 0;
    size_t gardes = 0;
    for (const Remplacement& lu : rapports) {
      if (lu.debut == lu.fin) {
        if (lu.longueurCourte > 0) insertions_.push_back(lu);
        continue;
      }
      if (lu.fin <= couvert) continue;
      Remplacement r = lu;
      r.debut = std::max(r.debut, couvert);
      couvert = r.fin;
      rapports[gardes++] = r;
    }
    rapports.resize(gardes);
  }

  // Insertions are in position order, report order kept; none strictly inside a kept one.
  void ResoutInsertions() {
    const auto& gardes = c_.remplacements_;
    size_t k = 0;
    std::erase_if(insertions_, [&](const Remplacement& insertion) {
      while (k < gardes.size() && gardes[k].fin <= insertion.debut) ++k;
      return k < gardes.size() && gardes[k].debut < insertion.debut;
    });
  }

  // What EcritSortie will write, walked in its order before anything is written: the exact
  // sizes let every buffer be claimed once (no slack for huge pages to fault in), and the walk
  // tells whether the output always ends at or before the next input unit still to read.
  struct Plan {
    uint64_t unites = 0;   // output units
    size_t segments = 0;   // step map segments
    bool derriere = true;  // the output may be written over the input
  };
  Plan Planifie() const {
    Plan plan;
    uint64_t lues = 0;
    // Writes what stands before `debut` (an identity segment when not empty), then `longueur`
    // units in place of [debut, fin).
    const auto avance = [&](uint64_t debut, uint64_t fin, uint64_t longueur) {
      plan.segments += (debut > lues) + 1;
      plan.unites += debut - lues + longueur;
      lues = fin;
      plan.derriere = plan.derriere && plan.unites <= lues;
    };
    const auto& gardes = c_.remplacements_;
    size_t k = 0;
    for (const Remplacement& insertion : insertions_) {
      for (; k < gardes.size() && gardes[k].debut < insertion.debut; ++k)
        avance(gardes[k].debut, gardes[k].fin, c_.LongueurTexte(gardes[k]));
      avance(insertion.debut, insertion.debut, c_.LongueurTexte(insertion));
    }
    for (; k < gardes.size(); ++k)
      avance(gardes[k].debut, gardes[k].fin, c_.LongueurTexte(gardes[k]));
    plan.segments += n_ > lues;
    plan.unites += n_ - lues;
    return plan;
  }

  // The reported bits as steps (ComposeurDeRapports::Paliers).
  void CalculeStyles() { paliers_ = c_.Paliers(); }

  // The reported bits at p. Positions are asked in increasing order but for one step back (an
  // insertion reads p - 1), so a cursor over the steps answers in constant time overall.
  uint32_t StylesRapportesA(uint64_t p) {
    if (paliers_.empty()) return 0;
    while (k_ + 1 < paliers_.size() && paliers_[k_ + 1].debut <= p) ++k_;
    while (k_ > 0 && paliers_[k_].debut > p) --k_;
    return paliers_[k_].styles;
  }
  // Where the step that holds p ends (the cursor is on it).
  uint64_t FinDuPalier(uint64_t fin) const {
    return k_ + 1 < paliers_.size() ? std::min<uint64_t>(fin, paliers_[k_ + 1].debut) : fin;
  }

  uint32_t StylesA(uint64_t p) { return c_.entree_.Attribut(p) | StylesRapportesA(p); }
  // The bits every unit of [debut, fin) has, a step at a time: over one step the reported bits
  // are the same, so only the input's own bits are read unit by unit (when it has any).
  uint32_t StylesCommuns(uint64_t debut, uint64_t fin) {
    const BitsDAttributs* anciens =
        c_.entree_.AAttributs() ? c_.entree_.Attributs().data() : nullptr;
    uint32_t communs = ~0u;
    for (uint64_t p = debut; p < fin;) {
      const uint32_t rapportes = StylesRapportesA(p);
      const uint64_t finPalier = FinDuPalier(fin);
      BitsDAttributs entree = anciens ? BitsDAttributs(~0) : 0;
      for (uint64_t q = p; anciens && q < finPalier; ++q) entree &= anciens[q];
      communs &= entree | rapportes;
      p = finPalier;
    }
    return communs;
  }
  uint32_t StylesDInsertion(uint64_t p) {
    return p > 0 && p < n_ ? StylesA(p - 1) & StylesA(p) : 0;
  }

  void EcritSortie(const Plan& plan) {
    const std::u16string_view entree = surPlace_ ? texte_ : c_.entree_.Chaine().Vue();
    const auto& gardes = c_.remplacements_;
    // The largest first: it may take the room the converter has just freed.
    if (avecSegments_) segments_.reserve(plan.segments + segmentsEnPlus_);
    if (!surPlace_) texte_.reserve(plan.unites);
    // The bits are written where they go: zero by default, so a stretch with none costs nothing.
    if (avecAttributs_) attributs_.assign(plan.unites, BitsDAttributs{0});
    // A walk over the kept replacements, each preceded by the input that stands before it, cut
    // at the insertions there: an insertion comes before a replacement that starts at its
    // position and after one that ends there.
    size_t j = 0;
    uint64_t p = 0;
    const auto ecritJusqua = [&](uint64_t jusqua) {
      for (; j < insertions_.size() && insertions_[j].debut <= jusqua; ++j) {
        const uint64_t position = insertions_[j].debut;
        if (position > p) EcritIdentite(entree, p, position);
        p = position;
        EcritRemplacement(insertions_[j], StylesDInsertion(position));
      }
      if (jusqua > p) EcritIdentite(entree, p, jusqua);
    };
    for (const Remplacement& r : gardes) {
      ecritJusqua(r.debut);
      // A deletion writes no unit: its styles are not needed.
      EcritRemplacement(r,
                        avecAttributs_ && r.longueurCourte > 0 ? StylesCommuns(r.debut, r.fin) : 0);
      p = r.fin;
    }
    ecritJusqua(n_);
  }

  void EcritIdentite(std::u16string_view entree, uint64_t debut, uint64_t fin) {
    BitsDAttributs* const copie = avecAttributs_ ? attributs_.data() + ecrites_ : nullptr;
    AjouteSegment(debut, fin, fin - debut, {}, true);
    EcritUnites(entree.substr(debut, fin - debut));
    if (!avecAttributs_ || debut == fin) return;
    if (c_.entree_.AAttributs())  // the input's bits, in one go
      std::copy_n(c_.entree_.Attributs().data() + debut, fin - debut, copie);
    // Each step's reported bits added over its stretch.
    for (uint64_t p = debut; p < fin && !paliers_.empty();) {
      const uint32_t styles = StylesRapportesA(p);
      const uint64_t finPalier = FinDuPalier(fin);
      if (styles != 0)
        for (uint64_t q = p; q < finPalier; ++q)
          copie[q - debut] |= static_cast<BitsDAttributs>(styles);
      p = finPalier;
    }
  }

  void EcritRemplacement(const Remplacement& r, uint32_t styles) {
    const uint32_t longueur = c_.LongueurTexte(r);
    AjouteSegment(r.debut, r.fin, longueur, r.attributs, false);
    if (longueur == 0) return;  // a deletion, most reports of markup
    if (avecAttributs_ && styles != 0)
      std::fill_n(attributs_.data() + ecrites_, longueur, static_cast<BitsDAttributs>(styles));
    EcritUnites(std::u16string_view(c_.tampon_).substr(r.debutTexte, longueur));
  }

  // Appended, or over the input (where the units may overlap their new place).
  void EcritUnites(std::u16string_view unites) {
    if (!surPlace_)
      texte_.append(unites);
    else if (texte_.data() + ecrites_ != unites.data())
      std::char_traits<char16_t>::move(texte_.data() + ecrites_, unites.data(), unites.size());
    ecrites_ += unites.size();
  }

  void AjouteSegment(uint64_t debutEntree, uint64_t finEntree, uint64_t longueurSortie,
                     MapPos::Attributs attributs, bool identite) {
    if (!avecSegments_) return;
    const auto q = static_cast<uint32_t>(ecrites_);
    segments_.push_back({q, static_cast<uint32_t>(q + longueurSortie),
                         static_cast<uint32_t>(debutEntree), static_cast<uint32_t>(finEntree),
                         attributs, identite});
  }

  ComposeurDeRapports& c_;
  const bool avecSegments_;
  const size_t segmentsEnPlus_;
  const uint64_t n_;
  bool avecAttributs_ = false;
  bool surPlace_ = false;  // the output is written over the input's units
  uint64_t ecrites_ = 0;   // output units written
  std::vector<Remplacement> insertions_;
  std::vector<Palier> paliers_;
  size_t k_ = 0;  // the cursor of StylesRapportesA
  std::u16string texte_;
  std::vector<BitsDAttributs> attributs_;
  std::vector<SegmentDeMap> segments_;
};

ComposeurDeRapports::Etape ComposeurDeRapports::Construis(bool avecSegments,
                                                          TexteAvecAttributs* entreeLibre,
                                                          size_t segmentsEnPlus) {
  return Construction(*this, avecSegments, segmentsEnPlus).Construis(entreeLibre);
}

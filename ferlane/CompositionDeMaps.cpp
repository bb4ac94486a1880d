// Composition of two maps along the text they share (the "middle" text): `avant` has it as
// its internal side, `etape` as its external side.
#include "ferlane/CompositionDeMaps.h"

#include <algorithm>
#include <span>

namespace {

bool SansInterne(const SegmentDeMap& s) {
  return s.DebutInterne == s.FinInterne;
}

// How one map meets the middle text: `avant` by its internal side, `etape` by its external one.
struct Cote {
  uint32_t SegmentDeMap::*debutMilieu;
  uint32_t SegmentDeMap::*finMilieu;
  uint32_t SegmentDeMap::*finAutre;
};
constexpr Cote kCoteAvant{&SegmentDeMap::DebutInterne, &SegmentDeMap::FinInterne,
                          &SegmentDeMap::FinExterne};
constexpr Cote kCoteEtape{&SegmentDeMap::DebutExterne, &SegmentDeMap::FinExterne,
                          &SegmentDeMap::FinInterne};
bool SansExterne(const SegmentDeMap& s) {
  return s.DebutExterne == s.FinExterne;
}

// Writes the composition at `sortie`, which may be the room just before the step's segments:
// every segment written has consumed at least one of either map first, so the writing never
// passes the step's segment still to read.
class Composition {
 public:
  Composition(std::span<const SegmentDeMap> avant, std::span<const SegmentDeMap> etape,
              SegmentDeMap* sortie)
      : a_(avant), e_(etape), sortie_(sortie) {}

  // The number of segments written.
  size_t Compose() {
    for (;;) {
      EcritVidesA();
      if (i_ == a_.size() && j_ == e_.size()) break;
      if (i_ == a_.size() || j_ == e_.size()) break;  // both maps cover the middle text: never
      if (a_[i_].Identite && e_[j_].FinExterne < a_[i_].FinInterne) {
        TraverseIdentite();
        continue;
      }
      if (a_[i_].Identite && e_[j_].Identite)
        EcritIdentite();
      else
        EcritGroupe();
    }
    return ecrits_;
  }

 private:
  // At the current middle position: earlier deletions first, then the step's insertions.
  void EcritVidesA() {
    for (; i_ < a_.size() && SansInterne(a_[i_]) && a_[i_].DebutInterne == p_; ++i_) {
      const SegmentDeMap& s = a_[i_];
      Ajoute({q_, q_, s.DebutExterne, s.FinExterne, s.Attributs, false});
      r_ = s.FinExterne;
    }
    for (; j_ < e_.size() && SansExterne(e_[j_]) && e_[j_].DebutExterne == p_; ++j_) {
      const SegmentDeMap s = e_[j_];  // a copy: the segment written may take its place
      Ajoute({s.DebutInterne, s.FinInterne, r_, r_, s.Attributs, false});
      q_ = s.FinInterne;
    }
  }

  void EcritIdentite() {
    const uint32_t fin = std::min(a_[i_].FinInterne, e_[j_].FinExterne);
    const uint32_t longueur = fin - p_;
    Ajoute({q_, q_ + longueur, r_, r_ + longueur, {}, true});
    q_ += longueur, r_ += longueur, p_ = fin;
    if (a_[i_].FinInterne == fin) ++i_;
    if (e_[j_].FinExterne == fin) ++j_;
  }

  // Inside an identity segment of `avant`, the step's segments that end before it do: each
  // comes out as it is, shifted to the document, with no group to form (what EcritIdentite,
  // EcritGroupe and EcritVidesA would write for it, in one step each).
  void TraverseIdentite() {
    const uint32_t limite = a_[i_].FinInterne;
    for (; j_ < e_.size() && e_[j_].FinExterne < limite; ++j_) {
      const SegmentDeMap s = e_[j_];  // a copy: the segment written may take its place
      const uint32_t longueur = s.FinExterne - p_;
      if (longueur == 0) {  // an insertion, as EcritVidesA writes it
        Ajoute({s.DebutInterne, s.FinInterne, r_, r_, s.Attributs, false});
      } else if (s.Identite) {
        Ajoute({q_, q_ + longueur, r_, r_ + longueur, {}, true});
      } else {
        const uint8_t special = s.Attributs.CaractereSpecial ? 1 : 0;
        const uint8_t remplacable = s.Attributs.Remplacable ? 1 : 0;
        Ajoute({q_, s.FinInterne, r_, r_ + longueur, {special, remplacable}, false});
      }
      q_ = s.FinInterne, r_ += longueur, p_ = s.FinExterne;
    }
  }

  // A replacement starts here on one side: absorb everything of both maps that begins before
  // the group's end, pushing the end on whenever an absorbed replacement reaches further.
  void EcritGroupe() {
    const uint32_t q0 = q_, r0 = r_;
    remplacable_ = 1, special_ = 0;
    uint32_t fin = p_;
    if (!a_[i_].Identite) fin = std::max(fin, a_[i_].FinInterne);
    if (!e_[j_].Identite) fin = std::max(fin, e_[j_].FinExterne);
    uint32_t pa = p_, pe = p_;
    for (bool encore = true; encore;) {
      const bool etenduParA = Absorbe(a_, i_, kCoteAvant, pa, r_, fin);  // both, every round
      const bool etenduParE = Absorbe(e_, j_, kCoteEtape, pe, q_, fin);
      encore = etenduParA || etenduParE;
    }
    p_ = fin;
    if (q_ != q0 || r_ != r0) Ajoute({q0, q_, r0, r_, {special_, remplacable_}, false});
  }

  // Takes, from one map, every segment that begins before the group's end: identity runs up to
  // that end, whole replacements (which may push the end on). `milieu` is how far that map is
  // consumed along the middle text, `autre` the position reached on its other side.
  bool Absorbe(std::span<const SegmentDeMap> segments, size_t& index, const Cote& cote,
               uint32_t& milieu, uint32_t& autre, uint32_t& fin) {
    bool etendu = false;
    while (index < segments.size() && std::max(segments[index].*cote.debutMilieu, milieu) < fin) {
      const SegmentDeMap& s = segments[index];
      if (s.Identite) {
        const uint32_t bout = std::min(s.*cote.finMilieu, fin);
        autre += bout - milieu, milieu = bout;
        if (bout < s.*cote.finMilieu) break;
      } else {
        Replie(s);
        autre = s.*cote.finAutre, milieu = std::max(milieu, s.*cote.finMilieu);
        if (s.*cote.finMilieu > fin) fin = s.*cote.finMilieu, etendu = true;
      }
      ++index;
    }
    return etendu;
  }

  void Replie(const SegmentDeMap& s) {
    remplacable_ &= s.Attributs.Remplacable ? 1 : 0;
    special_ |= s.Attributs.CaractereSpecial ? 1 : 0;
  }

  void Ajoute(const SegmentDeMap& s) { sortie_[ecrits_++] = s; }

  const std::span<const SegmentDeMap> a_;
  const std::span<const SegmentDeMap> e_;
  SegmentDeMap* const sortie_;
  size_t ecrits_ = 0;
  size_t i_ = 0, j_ = 0;
  uint32_t p_ = 0;  // middle text
  uint32_t q_ = 0;  // step output (new internal text)
  uint32_t r_ = 0;  // document
  uint8_t remplacable_ = 1, special_ = 0;
};

bool Fusionnables(const SegmentDeMap& a, const SegmentDeMap& b) {
  if (a.Identite && b.Identite) return true;
  if (a.Identite || b.Identite || !(a.Attributs == b.Attributs)) return false;
  return (SansInterne(a) && SansInterne(b)) || (SansExterne(a) && SansExterne(b));
}

}  // namespace

std::vector<SegmentDeMap> ComposeMaps(const std::vector<SegmentDeMap>& avant,
                                      std::vector<SegmentDeMap>&& etape) {
  // The step's segments move up by the size of `avant` (no more can be written than both
  // counts), and the composition is written from the front of the same buffer.
  const size_t n = etape.size();
  etape.resize(avant.size() + n);
  std::move_backward(etape.begin(), etape.begin() + static_cast<ptrdiff_t>(n), etape.end());
  const std::span<const SegmentDeMap> deplaces(etape.data() + avant.size(), n);
  etape.resize(Composition(avant, deplaces, etape.data()).Compose());
  CompacteSegments(etape);
  return std::move(etape);
}

void CompacteSegments(std::vector<SegmentDeMap>& segments) {
  size_t ecrit = 0;
  for (size_t lu = 0; lu < segments.size(); ++lu) {
    if (ecrit > 0 && Fusionnables(segments[ecrit - 1], segments[lu])) {
      segments[ecrit - 1].FinInterne = segments[lu].FinInterne;
      segments[ecrit - 1].FinExterne = segments[lu].FinExterne;
    } else {
      segments[ecrit++] = segments[lu];
    }
  }
  segments.resize(ecrit);
}

// JSON writing by hand: the one library at hand for JSON stores strings as UTF-8 and so cannot
// hold the unpaired surrogates a document may contain. Everything is written into one buffer
// that goes to the stream in large blocks; numbers through std::to_chars. A large map is
// formatted on two threads (MorceauxEnParallele).
#include "cli/SortieJson.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>
#include <optional>
#include <span>
#include <system_error>
#include <thread>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "cli/MorceauxEnParallele.h"
#include "ferlane/CodageUtf.h"
#include "framework/TexteLisible.h"

namespace {

// Output gathered here goes to the stream once it passes this size.
constexpr size_t kTailleDeBloc = 1 << 20;
// Units encoded at a time: a block of text never needs more than three bytes a unit.
constexpr size_t kUnitesParBloc = 1 << 16;

// Without a stream, everything stays in the buffer (a short string asked for by itself).
class Tampon {
 public:
  explicit Tampon(std::ostream* flux) : flux_(flux) {
    // Room for a full block and the longest piece added before the block is emptied.
    if (flux_) octets_.reserve(kTailleDeBloc + 6 * kUnitesParBloc);
  }
  ~Tampon() { Vide(); }

  std::string& Octets() { return octets_; }
  Tampon& operator<<(std::string_view texte) {
    octets_ += texte;
    return *this;
  }
  Tampon& operator<<(char c) {
    octets_ += c;
    return *this;
  }
  Tampon& operator<<(uint64_t nombre) {
    char chiffres[24];
    const auto fin = std::to_chars(chiffres, chiffres + sizeof chiffres, nombre).ptr;
    octets_.append(chiffres, fin);
    return *this;
  }
  void VideSiPlein() {
    if (octets_.size() >= kTailleDeBloc) Vide();
  }
  void Vide() {
    if (!flux_) return;
    flux_->write(octets_.data(), static_cast<std::streamsize>(octets_.size()));
    octets_.clear();
  }
  // Bytes made elsewhere, written after what the buffer holds, with no copy.
  void EcritDirectement(std::string_view octets) {
    Vide();
    flux_->write(octets.data(), static_cast<std::streamsize>(octets.size()));
  }

 private:
  std::ostream* flux_;
  std::string octets_;
};

// Which of the eight units at `unites` are not printable ASCII needing no escape, two bits a
// unit in their order, in one test: 0 when none is.
unsigned AEchapper(const char16_t* unites) {
#if defined(__SSE2__)
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(unites));
  // Signed compares: units from 0x8000 up count as below the space.
  const __m128i echappe = _mm_or_si128(_mm_or_si128(_mm_cmplt_epi16(v, _mm_set1_epi16(0x20)),
                                                    _mm_cmpgt_epi16(v, _mm_set1_epi16(0x7E))),
                                       _mm_or_si128(_mm_cmpeq_epi16(v, _mm_set1_epi16(u'"')),
                                                    _mm_cmpeq_epi16(v, _mm_set1_epi16(u'\\'))));
  return static_cast<unsigned>(_mm_movemask_epi8(echappe));
#else
  unsigned masque = 0;
  for (int k = 0; k < 8; ++k)
    if (unites[k] < 0x20 || unites[k] > 0x7E || unites[k] == u'"' || unites[k] == u'\\')
      masque |= 3u << (2 * k);
  return masque;
#endif
}

void EcritHuitOctets(const char16_t* unites, char* p) {
#if defined(__SSE2__)
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(unites));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(p), _mm_packus_epi16(v, v));
#else
  for (int k = 0; k < 8; ++k) p[k] = static_cast<char>(unites[k]);
#endif
}

// Writes the unit at texte[i] (a pair with the next one) at `p`, escaped where JSON or UTF-8
// needs it; returns the number of units used.
size_t EcritUniteJson(std::u16string_view texte, size_t i, char*& p) {
  const char16_t c = texte[i];
  const auto echappe = [&p](char lettre) {
    *p++ = '\\';
    *p++ = lettre;
  };
  switch (c) {
    case u'"':
      echappe('"');
      return 1;
    case u'\\':
      echappe('\\');
      return 1;
    case u'\n':
      echappe('n');
      return 1;
    case u'\r':
      echappe('r');
      return 1;
    case u'\t':
      echappe('t');
      return 1;
    default:
      break;
  }
  const bool paire = EstHautSubstitut(c) && i + 1 < texte.size() && EstBasSubstitut(texte[i + 1]);
  if (c < 0x20 || c == 0x7F || (EstSubstitut(c) && !paire)) {
    static constexpr char kHex[] = "0123456789abcdef";  // a control, DEL, or an unpaired surrogate
    echappe('u');
    for (int decalage = 12; decalage >= 0; decalage -= 4) *p++ = kHex[(c >> decalage) & 0xF];
    return 1;
  }
  if (c < 0x80) {
    *p++ = static_cast<char>(c);
    return 1;
  }
  if (c < 0x800) {
    *p++ = static_cast<char>(0xC0 | (c >> 6));
    *p++ = static_cast<char>(0x80 | (c & 0x3F));
    return 1;
  }
  if (!paire) {
    *p++ = static_cast<char>(0xE0 | (c >> 12));
    *p++ = static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    *p++ = static_cast<char>(0x80 | (c & 0x3F));
    return 1;
  }
  size_t lu = i;
  const char32_t point = LitCodePoint(texte, lu);
  *p++ = static_cast<char>(0xF0 | (point >> 18));
  *p++ = static_cast<char>(0x80 | ((point >> 12) & 0x3F));
  *p++ = static_cast<char>(0x80 | ((point >> 6) & 0x3F));
  *p++ = static_cast<char>(0x80 | (point & 0x3F));
  return 2;
}

// The string's body, without quotes, a block of units at a time: room for the longest form
// (an escape, six bytes a unit) is made once a block, then written through a pointer, printable
// ASCII eight units a step. `tampon` is emptied into its stream as it fills.
void AjouteCorpsJson(std::u16string_view texte, Tampon& tampon) {
  std::string& sortie = tampon.Octets();
  for (size_t i = 0; i < texte.size();) {
    size_t fin = std::min(texte.size(), i + kUnitesParBloc);
    if (fin < texte.size() && EstHautSubstitut(texte[fin - 1])) ++fin;  // a pair stays whole
    // Emptied first rather than grown: the block stays the size it was claimed at.
    if (sortie.size() + 6 * (fin - i) > sortie.capacity()) tampon.Vide();
    const size_t avant = sortie.size();
    sortie.resize(avant + 6 * (fin - i));
    char* const debut = sortie.data() + avant;
    char* p = debut;
    while (i < fin) {
      // The units before the first that needs more go as one write of eight bytes, of which
      // only theirs are kept: the next writes go over the others.
      for (; i + 8 <= fin; i += 8, p += 8) {
        const unsigned masque = AEchapper(texte.data() + i);
        EcritHuitOctets(texte.data() + i, p);
        if (masque != 0) {
          const auto simples = static_cast<size_t>(std::countr_zero(masque)) / 2;
          i += simples;
          p += simples;
          break;
        }
      }
      if (i < fin) i += EcritUniteJson(texte, i, p);
    }
    sortie.resize(avant + static_cast<size_t>(p - debut));
    tampon.VideSiPlein();
  }
}

// Runs of a style written a step at a time.
constexpr size_t kStylesParPas = 1 << 11;

// The first position from `debut` whose bits differ from `style` (or `n`), four a step.
uint64_t FinDeMemeStyle(const BitsDAttributs* attributs, uint64_t debut, uint64_t n,
                        BitsDAttributs style) {
#if defined(__SSE2__)
  const __m128i cible = _mm_set1_epi8(static_cast<char>(style));
  for (; debut + 16 <= n; debut += 16) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(attributs + debut));
    const int egaux = _mm_movemask_epi8(_mm_cmpeq_epi8(v, cible));
    if (egaux != 0xFFFF) return debut + static_cast<uint64_t>(__builtin_ctz(~egaux));
  }
#endif
  while (debut < n && attributs[debut] == style) ++debut;
  return debut;
}

// One run of a style, after a comma but the first: room for it is made beforehand.
char* EcritStyle(char* p, uint64_t debut, uint64_t fin, BitsDAttributs style, bool premier) {
  const auto ecrit = [&p](std::string_view texte) {
    std::memcpy(p, texte.data(), texte.size());
    p += texte.size();
  };
  const auto nombre = [&p](uint64_t n) { p = std::to_chars(p, p + 20, n).ptr; };
  if (!premier) *p++ = ',';
  ecrit("{\"debut\":");
  nombre(debut);
  ecrit(",\"fin\":");
  nombre(fin);
  ecrit(",\"style\":");
  nombre(style);
  *p++ = '}';
  return p;
}

// The most a run takes: two numbers of 20 digits, one of 3, the keys and a comma.
constexpr size_t kOctetsParStyle = 96;

void EcritStyles(Tampon& sortie, const TexteAvecAttributs& texte) {
  sortie << "\"styles\":[";
  bool premier = true;
  const uint64_t n = texte.AAttributs() ? texte.Longueur() : 0;  // no array: no style
  const BitsDAttributs* attributs = texte.Attributs().data();
  std::string& octets = sortie.Octets();
  for (uint64_t debut = 0; debut < n;) {
    // A step of runs written through a pointer, then the buffer emptied when full.
    const size_t avant = octets.size();
    octets.resize(avant + kStylesParPas * kOctetsParStyle);
    char* p = octets.data() + avant;
    for (size_t k = 0; k < kStylesParPas && debut < n;) {
      const BitsDAttributs style = attributs[debut];
      const uint64_t fin = FinDeMemeStyle(attributs, debut + 1, n, style);
      if (style != 0) {
        p = EcritStyle(p, debut, fin, style, premier);
        premier = false;
        ++k;
      }
      debut = fin;
    }
    octets.resize(static_cast<size_t>(p - octets.data()));
    sortie.VideSiPlein();
  }
  sortie << ']';
}

// A number's digits, kept so that the next segment's start, which is most often this one's end,
// is copied rather than formatted again.
struct Chiffres {
  bool connu = false;
  uint32_t valeur = 0;
  uint8_t longueur = 0;
  char texte[10];

  char* Ecrit(char* p, uint32_t n) {
    if (!connu || n != valeur) {
      connu = true;
      valeur = n;
      longueur = static_cast<uint8_t>(std::to_chars(texte, texte + sizeof texte, n).ptr - texte);
    }
    std::memcpy(p, texte, sizeof texte);  // a fixed size copies faster; the room is there
    return p + longueur;
  }
};

// The most a segment takes: 4 numbers of 10 digits, 2 of 3, the keys and a comma, with the
// slack a fixed-size copy of digits writes past the end.
constexpr size_t kOctetsParSegment = 128;

// One segment, written through a pointer into room made beforehand: the map is most of the
// output of a markup-heavy document. `fins` holds the digits of the ends written last.
char* EcritSegment(char* p, const SegmentDeMap& s, Chiffres (&fins)[2]) {
  const auto ecrit = [&p](std::string_view texte) {
    std::memcpy(p, texte.data(), texte.size());
    p += texte.size();
  };
  const auto petit = [&p](uint32_t n) { p = std::to_chars(p, p + 10, n).ptr; };
  ecrit("{\"interne\":[");
  p = fins[0].Ecrit(p, s.DebutInterne);
  *p++ = ',';
  p = fins[0].Ecrit(p, s.FinInterne);
  ecrit("],\"externe\":[");
  p = fins[1].Ecrit(p, s.DebutExterne);
  *p++ = ',';
  p = fins[1].Ecrit(p, s.FinExterne);
  ecrit("],\"remplacable\":");
  petit(s.Attributs.Remplacable);
  ecrit(",\"special\":");
  petit(s.Attributs.CaractereSpecial);
  *p++ = '}';
  return p;
}

// Segments [debut, fin), each after a comma but the map's first, written straight into
// `octets`.
void AjouteSegments(std::string& octets, std::span<const SegmentDeMap> segments, size_t debut,
                    size_t fin) {
  const size_t avant = octets.size();
  octets.resize(avant + (fin - debut) * kOctetsParSegment);
  char* const depart = octets.data() + avant;
  char* p = depart;
  Chiffres fins[2];
  for (size_t k = debut; k < fin; ++k) {
    if (k) *p++ = ',';
    p = EcritSegment(p, segments[k], fins);
  }
  octets.resize(avant + static_cast<size_t>(p - depart));
}

// Segments a piece of the map formatted in parallel (about 300 kB: the two buffers stay in the
// cache and add little to the peak), and a step of the writing thread between two looks at its
// buffer.
constexpr size_t kSegmentsParMorceau = 1 << 12;
constexpr size_t kSegmentsParPas = 1 << 11;

// The map's pieces: the even ones here, a step at a time; the odd ones from `morceaux` (when
// there is one) as they come.
void EcritMap(Tampon& sortie, std::span<const SegmentDeMap> segments,
              MorceauxEnParallele* morceaux) {
  sortie << "\"map\":[";
  for (size_t debut = 0; debut < segments.size(); debut += kSegmentsParMorceau) {
    const size_t morceau = debut / kSegmentsParMorceau;
    const size_t fin = std::min(segments.size(), debut + kSegmentsParMorceau);
    if (morceaux && morceau % 2 == 1) {
      morceaux->EcritImpair(morceau,
                            [&](std::string_view octets) { sortie.EcritDirectement(octets); });
      continue;
    }
    for (size_t pas = debut; pas < fin; pas += kSegmentsParPas) {
      AjouteSegments(sortie.Octets(), segments, pas, std::min(fin, pas + kSegmentsParPas));
      sortie.VideSiPlein();
    }
  }
  sortie << ']';
}

}  // namespace

std::string ChaineJson(std::u16string_view texte) {
  Tampon tampon(nullptr);
  tampon << '"';
  AjouteCorpsJson(texte, tampon);
  tampon << '"';
  return std::move(tampon.Octets());
}

void EcritResultatJson(std::ostream& flux, std::string_view format,
                       const MapChaines<TexteAvecAttributs>& resultat) {
  // With two pieces or more and a second core, the helper starts on the map at once, while the
  // text and the styles are written here.
  const std::span<const SegmentDeMap> segments = resultat.Segments();
  const size_t nombre = (segments.size() + kSegmentsParMorceau - 1) / kSegmentsParMorceau;
  std::optional<MorceauxEnParallele> morceaux;
  if (nombre >= 2 && std::thread::hardware_concurrency() >= 2) {
    try {
      morceaux.emplace(nombre, [segments](size_t morceau, std::string& octets) {
        const size_t debut = morceau * kSegmentsParMorceau;
        octets.reserve(kSegmentsParMorceau * kOctetsParSegment);
        AjouteSegments(octets, segments, debut,
                       std::min(segments.size(), debut + kSegmentsParMorceau));
      });
    } catch (const std::system_error&) {
      morceaux.reset();  // no thread to be had: the map is written here alone
    }
  }
  Tampon sortie(&flux);
  sortie << "{\"format\":\"" << format << "\",\"text\":\"";
  AjouteCorpsJson(resultat.Interne().Chaine().Vue(), sortie);
  sortie << "\",";
  EcritStyles(sortie, resultat.Interne());
  sortie << ',';
  EcritMap(sortie, segments, morceaux ? &*morceaux : nullptr);
  sortie << "}\n";
}

void EcritUtf8(std::ostream& flux, std::u16string_view texte) {
  Tampon sortie(&flux);
  for (size_t i = 0; i < texte.size();) {
    size_t fin = std::min(texte.size(), i + kUnitesParBloc);
    if (fin < texte.size() && EstHautSubstitut(texte[fin - 1])) ++fin;  // a pair stays whole
    AjouteUtf8(texte.substr(i, fin - i), sortie.Octets());
    sortie.VideSiPlein();
    i = fin;
  }
}

void EcritTexteLisibleUtf8(std::ostream& flux, const TexteAvecAttributs& interne) {
  // Pieces gather in a small buffer that stays in cache and is encoded when full; a high
  // surrogate at its end waits for its pair.
  Tampon sortie(&flux);
  std::u16string attente;
  attente.reserve(kUnitesParBloc + 16);
  const auto encode = [&](bool tout) {
    size_t n = attente.size();
    if (!tout && n > 0 && EstHautSubstitut(attente[n - 1])) --n;
    AjouteUtf8(std::u16string_view(attente).substr(0, n), sortie.Octets());
    attente.erase(0, n);
    sortie.VideSiPlein();
  };
  ParcoursTexteLisible(interne, [&](std::u16string_view morceau) {
    while (!morceau.empty()) {
      const size_t pris = std::min(morceau.size(), kUnitesParBloc - attente.size());
      attente.append(morceau.substr(0, pris));
      morceau.remove_prefix(pris);
      if (attente.size() >= kUnitesParBloc) encode(false);
    }
  });
  encode(true);
}

void EcritRemplaceJson(std::ostream& sortie, MapPos::Intervalle intervalle, const ChaineN& texte,
                       MapPos::Attributs attributs) {
  sortie << "{\"op\":\"remplace\",\"debut\":" << intervalle.Debut << ",\"fin\":" << intervalle.Fin
         << ",\"texte\":" << ChaineJson(texte.Vue())
         << ",\"special\":" << int{attributs.CaractereSpecial}
         << ",\"remplacable\":" << int{attributs.Remplacable} << "}\n";
}

void EcritMarqueJson(std::ostream& sortie, MapPos::Intervalle intervalle, uint32_t styles) {
  sortie << "{\"op\":\"marque\",\"debut\":" << intervalle.Debut << ",\"fin\":" << intervalle.Fin
         << ",\"style\":" << styles << "}\n";
}

void EcritAnnotationJson(std::ostream& sortie, const MapChaines<TexteAvecAttributs>& resultat) {
  const std::u16string_view externe = resultat.Externe().Vue();
  const std::u16string_view interne = resultat.Interne().Chaine().Vue();
  std::string json = "{\"annotation\":[";
  bool premier = true;
  const auto ajoute = [&](std::string element) {
    json += premier ? "" : ",";
    json += element;
    premier = false;
  };
  const auto& segments = resultat.Segments();
  for (size_t i = 0; i < segments.size();) {
    const SegmentDeMap& s = segments[i];
    if (s.Identite) {  // consecutive identity segments make one text
      size_t fin = i;
      while (fin + 1 < segments.size() && segments[fin + 1].Identite) ++fin;
      const uint32_t finExterne = segments[fin].FinExterne;
      ajoute("{\"text\":" +
             ChaineJson(externe.substr(s.DebutExterne, finExterne - s.DebutExterne)) + "}");
      i = fin + 1;
      continue;
    }
    if (s.DebutExterne != s.FinExterne || s.DebutInterne != s.FinInterne)
      ajoute("{\"markup\":" +
             ChaineJson(externe.substr(s.DebutExterne, s.FinExterne - s.DebutExterne)) +
             ",\"interpretAs\":" +
             ChaineJson(interne.substr(s.DebutInterne, s.FinInterne - s.DebutInterne)) + "}");
    ++i;
  }
  json += "]}\n";
  sortie.write(json.data(), static_cast<std::streamsize>(json.size()));
}

// JSON writing by hand: the one library at hand for JSON stores strings as UTF-8 and so cannot
// hold the unpaired surrogates a document may contain. Everything is written into one buffer
// that goes to the stream in large blocks; numbers through std::to_chars.
#include "cli/SortieJson.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <utility>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "ferlane/CodageUtf.h"

namespace {

// Output gathered here goes to the stream once it passes this size.
constexpr size_t kTailleDeBloc = 1 << 20;
// Units encoded at a time: a block of text never needs more than three bytes a unit.
constexpr size_t kUnitesParBloc = 1 << 16;

// Without a stream, everything stays in the buffer (a short string asked for by itself).
class Tampon {
 public:
  explicit Tampon(std::ostream* flux) : flux_(flux) {
    if (flux_) octets_.reserve(kTailleDeBloc + 64);
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

 private:
  std::ostream* flux_;
  std::string octets_;
};

void AjouteEchappement(std::string& sortie, char16_t unite) {
  static constexpr char kHex[] = "0123456789abcdef";
  sortie += "\\u";
  for (int decalage = 12; decalage >= 0; decalage -= 4) sortie += kHex[(unite >> decalage) & 0xF];
}

bool EstSurrogatHaut(char16_t c) {
  return c >= 0xD800 && c <= 0xDBFF;
}
bool EstSurrogatBas(char16_t c) {
  return c >= 0xDC00 && c <= 0xDFFF;
}

// Units written as they are, in UTF-8: everything but controls, DEL, '"', '\' and surrogates.
bool EstSimple(char16_t c) {
  return c >= 0x20 && c != u'"' && c != u'\\' && c != 0x7F && (c < 0xD800 || c > 0xDFFF);
}

// The end of the run of printable ASCII units from `i` that need no escape (at most `limite`
// units), eight units a step with SSE2.
size_t FinAsciiSimple(std::u16string_view texte, size_t i, size_t limite) {
  const size_t fin = std::min(texte.size(), i + limite);
#if defined(__SSE2__)
  const __m128i espace = _mm_set1_epi16(0x20), tilde = _mm_set1_epi16(0x7E);
  const __m128i guillemet = _mm_set1_epi16(u'"'), barre = _mm_set1_epi16(u'\\');
  for (; i + 8 <= fin; i += 8) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(texte.data() + i));
    // Signed compares: units from 0x8000 up count as below the space, and so stop the run.
    const __m128i echappe =
        _mm_or_si128(_mm_or_si128(_mm_cmplt_epi16(v, espace), _mm_cmpgt_epi16(v, tilde)),
                     _mm_or_si128(_mm_cmpeq_epi16(v, guillemet), _mm_cmpeq_epi16(v, barre)));
    if (_mm_movemask_epi8(echappe) != 0) break;
  }
#endif
  while (i < fin && texte[i] < 0x7F && EstSimple(texte[i])) ++i;
  return i;
}

// The string's body, without quotes; `tampon` is emptied into its stream as it fills.
void AjouteCorpsJson(std::u16string_view texte, Tampon& tampon) {
  std::string& sortie = tampon.Octets();
  for (size_t i = 0; i < texte.size();) {
    size_t fin = FinAsciiSimple(texte, i, kUnitesParBloc);
    if (fin > i) {  // ASCII: one byte a unit
      const size_t avant = sortie.size();
      sortie.resize(avant + (fin - i));
      char* p = sortie.data() + avant;
      for (size_t k = i; k < fin; ++k) *p++ = static_cast<char>(texte[k]);
      i = fin;
      tampon.VideSiPlein();
      continue;
    }
    while (fin < texte.size() && fin - i < kUnitesParBloc && EstSimple(texte[fin])) ++fin;
    if (fin > i) {
      AjouteUtf8(texte.substr(i, fin - i), sortie);
      i = fin;
      tampon.VideSiPlein();
      continue;
    }
    const char16_t c = texte[i];
    switch (c) {
      case u'"':
        sortie += "\\\"";
        break;
      case u'\\':
        sortie += "\\\\";
        break;
      case u'\n':
        sortie += "\\n";
        break;
      case u'\r':
        sortie += "\\r";
        break;
      case u'\t':
        sortie += "\\t";
        break;
      default:
        if (EstSurrogatHaut(c) && i + 1 < texte.size() && EstSurrogatBas(texte[i + 1])) {
          AjouteUtf8(texte.substr(i, 2), sortie);
          ++i;
        } else {
          AjouteEchappement(sortie, c);  // a control, DEL, or an unpaired surrogate
        }
    }
    ++i;
  }
}

// The first position from `debut` whose bits differ from `style` (or `n`), four a step.
uint64_t FinDeMemeStyle(const uint32_t* attributs, uint64_t debut, uint64_t n, uint32_t style) {
#if defined(__SSE2__)
  const __m128i cible = _mm_set1_epi32(static_cast<int>(style));
  for (; debut + 4 <= n; debut += 4) {
    const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(attributs + debut));
    const int egaux = _mm_movemask_epi8(_mm_cmpeq_epi32(v, cible));
    if (egaux != 0xFFFF) return debut + static_cast<uint64_t>(__builtin_ctz(~egaux)) / 4;
  }
#endif
  while (debut < n && attributs[debut] == style) ++debut;
  return debut;
}

void EcritStyles(Tampon& sortie, const TexteAvecAttributs& texte) {
  sortie << "\"styles\":[";
  bool premier = true;
  const uint64_t n = texte.AAttributs() ? texte.Longueur() : 0;  // no array: no style
  const uint32_t* attributs = texte.Attributs().data();
  for (uint64_t debut = 0; debut < n;) {
    const uint32_t style = attributs[debut];
    uint64_t fin = debut + 1;
    fin = FinDeMemeStyle(attributs, fin, n, style);
    if (style != 0) {
      sortie << (premier ? "" : ",") << "{\"debut\":" << debut << ",\"fin\":" << fin
             << ",\"style\":" << uint64_t{style} << '}';
      premier = false;
      sortie.VideSiPlein();
    }
    debut = fin;
  }
  sortie << ']';
}

// One segment, written through a pointer into room made beforehand: the map is most of the
// output of a markup-heavy document.
char* EcritSegment(char* p, const SegmentDeMap& s) {
  const auto ecrit = [&p](std::string_view texte) {
    std::memcpy(p, texte.data(), texte.size());
    p += texte.size();
  };
  const auto nombre = [&p](uint32_t n) { p = std::to_chars(p, p + 10, n).ptr; };
  ecrit("{\"interne\":[");
  nombre(s.DebutInterne);
  *p++ = ',';
  nombre(s.FinInterne);
  ecrit("],\"externe\":[");
  nombre(s.DebutExterne);
  *p++ = ',';
  nombre(s.FinExterne);
  ecrit("],\"remplacable\":");
  nombre(s.Attributs.Remplacable);
  ecrit(",\"special\":");
  nombre(s.Attributs.CaractereSpecial);
  *p++ = '}';
  return p;
}

void EcritMap(Tampon& sortie, const std::vector<SegmentDeMap>& segments) {
  sortie << "\"map\":[";
  std::string& octets = sortie.Octets();
  for (size_t k = 0; k < segments.size(); ++k) {
    char segment[128];  // 4 numbers of 10 digits, 2 of 3, the keys
    char* p = segment;
    if (k) *p++ = ',';
    octets.append(segment, EcritSegment(p, segments[k]));
    sortie.VideSiPlein();
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
  Tampon sortie(&flux);
  sortie << "{\"format\":\"" << format << "\",\"text\":\"";
  AjouteCorpsJson(resultat.Interne().Chaine().Vue(), sortie);
  sortie << "\",";
  EcritStyles(sortie, resultat.Interne());
  sortie << ',';
  EcritMap(sortie, resultat.Segments());
  sortie << "}\n";
}

void EcritUtf8(std::ostream& flux, std::u16string_view texte) {
  Tampon sortie(&flux);
  for (size_t i = 0; i < texte.size();) {
    size_t fin = std::min(texte.size(), i + kUnitesParBloc);
    if (fin < texte.size() && EstSurrogatHaut(texte[fin - 1])) ++fin;  // a pair stays whole
    AjouteUtf8(texte.substr(i, fin - i), sortie.Octets());
    sortie.VideSiPlein();
    i = fin;
  }
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

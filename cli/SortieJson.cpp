// JSON writing by hand: the one library at hand for JSON stores strings as UTF-8 and so cannot
// hold the unpaired surrogates a document may contain. Everything is written into one buffer
// that goes to the stream in large blocks; numbers through std::to_chars.
#include "cli/SortieJson.h"

#include <algorithm>
#include <charconv>
#include <utility>

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

// The string's body, without quotes; `tampon` is emptied into its stream as it fills.
void AjouteCorpsJson(std::u16string_view texte, Tampon& tampon) {
  std::string& sortie = tampon.Octets();
  for (size_t i = 0; i < texte.size();) {
    size_t fin = i;
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

void EcritStyles(Tampon& sortie, const TexteAvecAttributs& texte) {
  sortie << "\"styles\":[";
  bool premier = true;
  const uint64_t n = texte.AAttributs() ? texte.Longueur() : 0;  // no array: no style
  const uint32_t* attributs = texte.Attributs().data();
  for (uint64_t debut = 0; debut < n;) {
    const uint32_t style = attributs[debut];
    uint64_t fin = debut + 1;
    while (fin < n && attributs[fin] == style) ++fin;
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

void EcritMap(Tampon& sortie, const std::vector<SegmentDeMap>& segments) {
  sortie << "\"map\":[";
  for (size_t k = 0; k < segments.size(); ++k) {
    const SegmentDeMap& s = segments[k];
    sortie << (k ? "," : "") << "{\"interne\":[" << uint64_t{s.DebutInterne} << ','
           << uint64_t{s.FinInterne} << "],\"externe\":[" << uint64_t{s.DebutExterne} << ','
           << uint64_t{s.FinExterne} << "],\"remplacable\":" << uint64_t{s.Attributs.Remplacable}
           << ",\"special\":" << uint64_t{s.Attributs.CaractereSpecial} << '}';
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

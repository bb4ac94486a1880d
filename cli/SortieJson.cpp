// JSON writing by hand: the one library at hand for JSON stores strings as UTF-8 and so cannot
// hold the unpaired surrogates a document may contain.
#include "cli/SortieJson.h"

#include "ferlane/CodageUtf.h"

namespace {

void AjouteEchappement(std::string& sortie, char16_t unite) {
  static constexpr char kHex[] = "0123456789abcdef";
  sortie += "\\u";
  for (int decalage = 12; decalage >= 0; decalage -= 4) sortie += kHex[(unite >> decalage) & 0xF];
}

bool EstSurrogat(char16_t c) {
  return c >= 0xD800 && c <= 0xDFFF;
}

}  // namespace

std::string ChaineJson(std::u16string_view texte) {
  std::string sortie = "\"";
  for (size_t i = 0; i < texte.size();) {
    const char16_t c = texte[i];
    switch (c) {
      case u'"':
        sortie += "\\\"";
        ++i;
        continue;
      case u'\\':
        sortie += "\\\\";
        ++i;
        continue;
      case u'\n':
        sortie += "\\n";
        ++i;
        continue;
      case u'\r':
        sortie += "\\r";
        ++i;
        continue;
      case u'\t':
        sortie += "\\t";
        ++i;
        continue;
      default:
        break;
    }
    if (c < 0x20 || c == 0x7F) {
      AjouteEchappement(sortie, c);
      ++i;
      continue;
    }
    size_t suivant = i;
    const char32_t codePoint = LitCodePoint(texte, suivant);
    if (codePoint <= 0xFFFF && EstSurrogat(static_cast<char16_t>(codePoint))) {
      AjouteEchappement(sortie, c);  // unpaired: only an escape carries it
    } else {
      sortie += EncodeUtf8(texte.substr(i, suivant - i));
    }
    i = suivant;
  }
  sortie += '"';
  return sortie;
}

namespace {

void EcritStyles(std::ostream& sortie, const TexteAvecAttributs& texte) {
  sortie << "\"styles\":[";
  bool premier = true;
  for (uint64_t debut = 0; debut < texte.Longueur();) {
    const uint32_t style = texte.Attribut(debut);
    uint64_t fin = debut + 1;
    while (fin < texte.Longueur() && texte.Attribut(fin) == style) ++fin;
    if (style != 0) {
      sortie << (premier ? "" : ",") << "{\"debut\":" << debut << ",\"fin\":" << fin
             << ",\"style\":" << style << "}";
      premier = false;
    }
    debut = fin;
  }
  sortie << "]";
}

void EcritMap(std::ostream& sortie, const std::vector<SegmentDeMap>& segments) {
  sortie << "\"map\":[";
  for (size_t k = 0; k < segments.size(); ++k) {
    const SegmentDeMap& s = segments[k];
    sortie << (k ? "," : "") << "{\"interne\":[" << s.DebutInterne << "," << s.FinInterne
           << "],\"externe\":[" << s.DebutExterne << "," << s.FinExterne
           << "],\"remplacable\":" << int{s.Attributs.Remplacable}
           << ",\"special\":" << int{s.Attributs.CaractereSpecial} << "}";
  }
  sortie << "]";
}

}  // namespace

void EcritResultatJson(std::ostream& sortie, std::string_view format,
                       const MapChaines<TexteAvecAttributs>& resultat) {
  sortie << "{\"format\":\"" << format
         << "\",\"text\":" << ChaineJson(resultat.Interne().Chaine().Vue()) << ",";
  EcritStyles(sortie, resultat.Interne());
  sortie << ",";
  EcritMap(sortie, resultat.Segments());
  sortie << "}\n";
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

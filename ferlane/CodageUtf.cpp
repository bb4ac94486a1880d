// UTF-8 and UTF-16 conversions.
#include "ferlane/CodageUtf.h"

#include <algorithm>
#include <iterator>

namespace {

// Length of the valid UTF-8 sequence at `i` and its code point, or 0 when it is invalid.
size_t LitSequenceUtf8(std::string_view octets, size_t i, char32_t& codePoint) {
  const auto octet = [&](size_t k) { return static_cast<unsigned char>(octets[k]); };
  const unsigned char premier = octet(i);
  if (premier < 0x80) {
    codePoint = premier;
    return 1;
  }
  size_t longueur;
  char32_t minimum;
  if (premier >= 0xC2 && premier <= 0xDF) {
    longueur = 2, minimum = 0x80, codePoint = premier & 0x1F;
  } else if (premier >= 0xE0 && premier <= 0xEF) {
    longueur = 3, minimum = 0x800, codePoint = premier & 0x0F;
  } else if (premier >= 0xF0 && premier <= 0xF4) {
    longueur = 4, minimum = 0x10000, codePoint = premier & 0x07;
  } else {
    return 0;
  }
  if (octets.size() - i < longueur) return 0;
  for (size_t k = 1; k < longueur; ++k) {
    if ((octet(i + k) & 0xC0) != 0x80) return 0;
    codePoint = (codePoint << 6) | (octet(i + k) & 0x3F);
  }
  if (codePoint < minimum || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint <= 0xDFFF))
    return 0;
  return longueur;
}

// How many bytes an invalid sequence at `i` covers: its lead byte and the continuation bytes
// that follow it, up to the length the lead byte announces.
size_t LongueurInvalide(std::string_view octets, size_t i) {
  const unsigned char premier = static_cast<unsigned char>(octets[i]);
  const size_t annonce = premier >= 0xF0 ? 4 : premier >= 0xE0 ? 3 : premier >= 0xC0 ? 2 : 1;
  size_t k = 1;
  while (k < annonce && i + k < octets.size() &&
         (static_cast<unsigned char>(octets[i + k]) & 0xC0) == 0x80)
    ++k;
  return k;
}

}  // namespace

std::u16string DecodeUtf8(std::string_view octets) {
  std::u16string texte;
  texte.reserve(octets.size());
  for (size_t i = 0; i < octets.size();) {
    // Runs of ASCII, most of any document, go across in one step.
    size_t fin = i;
    while (fin < octets.size() && static_cast<unsigned char>(octets[fin]) < 0x80) ++fin;
    while (i <
           fin) {  // through a small buffer: the text's memory is written once, not zeroed first
      char16_t tampon[1024];
      const size_t n = std::min(fin - i, std::size(tampon));
      for (size_t k = 0; k < n; ++k) tampon[k] = static_cast<unsigned char>(octets[i + k]);
      texte.append(tampon, n);
      i += n;
    }
    if (i == octets.size()) break;
    char32_t codePoint;
    if (const size_t longueur = LitSequenceUtf8(octets, i, codePoint)) {
      AjouteCodePoint(texte, codePoint);
      i += longueur;
    } else {
      texte += u'\uFFFD';
      i += LongueurInvalide(octets, i);
    }
  }
  return texte;
}

std::optional<size_t> TrouveErreurUtf8(std::string_view octets) {
  for (size_t i = 0; i < octets.size();) {
    if (static_cast<unsigned char>(octets[i]) < 0x80) {
      ++i;
      continue;
    }
    char32_t codePoint;
    const size_t longueur = LitSequenceUtf8(octets, i, codePoint);
    if (longueur == 0) return i;
    i += longueur;
  }
  return std::nullopt;
}

std::string EncodeUtf8(std::u16string_view texte) {
  std::string octets;
  octets.reserve(texte.size());
  for (size_t i = 0; i < texte.size();) {
    char32_t c = LitCodePoint(texte, i);
    if (c >= 0xD800 && c <= 0xDFFF) c = 0xFFFD;
    if (c < 0x80) {
      octets += static_cast<char>(c);
    } else if (c < 0x800) {
      octets += static_cast<char>(0xC0 | (c >> 6));
      octets += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      octets += static_cast<char>(0xE0 | (c >> 12));
      octets += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      octets += static_cast<char>(0x80 | (c & 0x3F));
    } else {
      octets += static_cast<char>(0xF0 | (c >> 18));
      octets += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
      octets += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
      octets += static_cast<char>(0x80 | (c & 0x3F));
    }
  }
  return octets;
}

void AjouteCodePoint(std::u16string& texte, char32_t codePoint) {
  if (codePoint < 0x10000) {
    texte += static_cast<char16_t>(codePoint);
  } else {
    codePoint -= 0x10000;
    texte += static_cast<char16_t>(0xD800 + (codePoint >> 10));
    texte += static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
  }
}

char32_t LitCodePoint(std::u16string_view texte, size_t& position) {
  const char16_t c = texte[position++];
  if (c >= 0xD800 && c <= 0xDBFF && position < texte.size() && texte[position] >= 0xDC00 &&
      texte[position] <= 0xDFFF) {
    return 0x10000 + ((char32_t{c} - 0xD800) << 10) + (texte[position++] - 0xDC00);
  }
  return c;
}

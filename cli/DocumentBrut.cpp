// DocumentBrut: UTF-16 positions to byte offsets for UTF-8 and UTF-16 documents; any other
// encoding is re-encoded whole by ICU, which gives back the same bytes for what it decoded.
#include "cli/DocumentBrut.h"

#include <unicode/ucnv.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>

#include "cli/ErreurUtilisateur.h"
#include "cli/LectureDocument.h"
#include "ferlane/CodageUtf.h"

namespace {

std::string LitOctets(const std::string& chemin) {
  std::ostringstream tampon;
  if (chemin == "-") {
    tampon << std::cin.rdbuf();
  } else {
    std::ifstream fichier(chemin, std::ios::binary);
    if (!fichier) throw ErreurUtilisateur(chemin + ": cannot open the file");
    tampon << fichier.rdbuf();
  }
  return tampon.str();
}

std::string EncodeAvecICU(std::u16string_view texte, const std::string& codage) {
  UErrorCode erreur = U_ZERO_ERROR;
  std::unique_ptr<UConverter, decltype(&ucnv_close)> convertisseur(
      ucnv_open(codage.c_str(), &erreur), &ucnv_close);
  if (U_FAILURE(erreur)) throw ErreurUtilisateur("unknown encoding '" + codage + "'");
  std::string octets(texte.size() * 4 + 16, '\0');
  const int32_t n = ucnv_fromUChars(
      convertisseur.get(), octets.data(), static_cast<int32_t>(octets.size()),
      reinterpret_cast<const UChar*>(texte.data()), static_cast<int32_t>(texte.size()), &erreur);
  if (U_FAILURE(erreur)) throw ErreurUtilisateur("a correction cannot be written in " + codage);
  octets.resize(static_cast<size_t>(n));
  return octets;
}

std::string EncodeUtf16(std::u16string_view texte, bool grandBoutien) {
  std::string octets;
  octets.reserve(2 * texte.size());
  for (char16_t c : texte) {
    const char fort = static_cast<char>(c >> 8), faible = static_cast<char>(c & 0xFF);
    octets += grandBoutien ? fort : faible;
    octets += grandBoutien ? faible : fort;
  }
  return octets;
}

// Byte offsets of increasing UTF-16 positions in a valid UTF-8 text.
class PositionsUtf8 {
 public:
  PositionsUtf8(std::string_view octets, size_t debut) : octets_(octets), octet_(debut) {}
  size_t Octet(uint64_t position) {
    while (unite_ < position) {
      const auto b = static_cast<unsigned char>(octets_[octet_]);
      const size_t longueur = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
      octet_ += longueur;
      unite_ += longueur == 4 ? 2 : 1;
    }
    return octet_;
  }

 private:
  std::string_view octets_;
  size_t octet_;
  uint64_t unite_ = 0;
};

}  // namespace

DocumentBrut LitDocumentBrut(const std::string& chemin, const std::string& codage) {
  DocumentBrut document{LitOctets(chemin), {}, codage};
  document.texte = DecodeDocument(document.octets, codage, chemin == "-" ? "<stdin>" : chemin);
  return document;
}

std::string EcritCorrections(const DocumentBrut& document,
                             const std::vector<CorrectionPlacee>& placees) {
  const std::string_view octets = document.octets;
  if (!document.codage.empty()) {
    std::u16string texte;
    uint64_t lu = 0;
    for (const CorrectionPlacee& p : placees) {
      texte.append(document.texte.Vue().substr(lu, p.debut - lu));
      texte.append(p.texte.Vue());
      lu = p.fin;
    }
    texte.append(document.texte.Vue().substr(lu));
    return EncodeAvecICU(texte, document.codage);
  }
  const bool utf16 = octets.starts_with("\xFF\xFE") || octets.starts_with("\xFE\xFF");
  const bool grandBoutien = octets.starts_with("\xFE\xFF");
  PositionsUtf8 utf8(octets, octets.starts_with("\xEF\xBB\xBF") ? 3 : 0);
  const auto octet = [&](uint64_t position) {
    return utf16 ? 2 + 2 * position : utf8.Octet(position);
  };
  std::string sortie;
  sortie.reserve(octets.size());
  size_t lu = 0;
  for (const CorrectionPlacee& p : placees) {
    const size_t debut = octet(p.debut);
    sortie.append(octets.substr(lu, debut - lu));
    sortie += utf16 ? EncodeUtf16(p.texte.Vue(), grandBoutien) : p.texte.VersUtf8();
    lu = octet(p.fin);
  }
  sortie.append(octets.substr(lu));
  return sortie;
}

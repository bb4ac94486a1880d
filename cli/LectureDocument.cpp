// Reading and decoding documents for the command. A regular file is mapped into memory and
// decoded from there, with no copy of its bytes; standard input and pipes are read into a
// buffer.
#include "cli/LectureDocument.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unicode/ucnv.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "cli/ErreurUtilisateur.h"
#include "ferlane/CodageUtf.h"
#include "ferlane/Rapporteur.h"

namespace {

std::string LitOctets(const std::string& chemin) {
  if (chemin == "-") {
    std::ostringstream tampon;
    tampon << std::cin.rdbuf();
    return tampon.str();
  }
  std::ifstream fichier(chemin, std::ios::binary | std::ios::ate);
  if (!fichier) throw ErreurUtilisateur(chemin + ": cannot open the file");
  const std::streamoff taille = fichier.tellg();
  if (taille < 0) {  // not seekable (a pipe given by name): read it as a stream
    fichier.clear();
    std::ostringstream tampon;
    tampon << fichier.rdbuf();
    return tampon.str();
  }
  std::string octets(static_cast<size_t>(taille), '\0');
  fichier.seekg(0);
  if (!fichier.read(octets.data(), taille))
    throw ErreurUtilisateur(chemin + ": cannot read the file");
  return octets;
}

std::u16string DecodeUtf16(std::string_view octets, bool grandBoutien, const std::string& nom) {
  if (octets.size() % 2 != 0)
    throw ErreurUtilisateur(nom + ": truncated UTF-16 (odd number of bytes)");
  std::u16string texte(octets.size() / 2, u'\0');
  for (size_t i = 0; i < texte.size(); ++i) {
    const auto a = static_cast<unsigned char>(octets[2 * i]);
    const auto b = static_cast<unsigned char>(octets[2 * i + 1]);
    texte[i] = static_cast<char16_t>(grandBoutien ? (a << 8) | b : (b << 8) | a);
  }
  return texte;
}

std::u16string DecodeAvecICU(std::string_view octets, const std::string& codage,
                             const std::string& nom) {
  UErrorCode erreur = U_ZERO_ERROR;
  std::unique_ptr<UConverter, decltype(&ucnv_close)> convertisseur(
      ucnv_open(codage.c_str(), &erreur), &ucnv_close);
  if (U_FAILURE(erreur)) throw ErreurUtilisateur("unknown encoding '" + codage + "'");
  UConverterToUCallback ancienneAction;
  const void* ancienContexte;
  ucnv_setToUCallBack(convertisseur.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, &ancienneAction,
                      &ancienContexte, &erreur);
  std::u16string texte(octets.size() * 2 + 16, u'\0');
  const char* source = octets.data();
  UChar* cible = reinterpret_cast<UChar*>(texte.data());
  erreur = U_ZERO_ERROR;
  ucnv_toUnicode(convertisseur.get(), &cible, cible + texte.size(), &source,
                 octets.data() + octets.size(), nullptr, true, &erreur);
  if (U_FAILURE(erreur)) {
    char invalides[32];
    int8_t longueur = sizeof invalides;
    UErrorCode ignore = U_ZERO_ERROR;
    ucnv_getInvalidChars(convertisseur.get(), invalides, &longueur, &ignore);
    const size_t position =
        static_cast<size_t>(source - octets.data()) - (U_SUCCESS(ignore) ? longueur : 0);
    throw ErreurUtilisateur(nom + ": invalid " + codage + " at byte " + std::to_string(position));
  }
  texte.resize(static_cast<size_t>(cible - reinterpret_cast<UChar*>(texte.data())));
  return texte;
}

}  // namespace

ChaineN DecodeDocument(std::string_view octets, const std::string& codage, const std::string& nom) {
  if (!codage.empty()) return ChaineN(DecodeAvecICU(octets, codage, nom));
  if (octets.starts_with("\xFF\xFE")) return ChaineN(DecodeUtf16(octets.substr(2), false, nom));
  if (octets.starts_with("\xFE\xFF")) return ChaineN(DecodeUtf16(octets.substr(2), true, nom));
  size_t debut = 0;
  if (octets.starts_with("\xEF\xBB\xBF")) debut = 3;
  std::u16string texte;
  if (const auto erreur = DecodeUtf8Strict(octets.substr(debut), texte))
    throw ErreurUtilisateur(nom + ": invalid UTF-8 at byte " + std::to_string(*erreur + debut));
  return ChaineN(std::move(texte));
}

namespace {

// A regular file's bytes, mapped for reading; closed and unmapped on leaving.
class FichierProjete {
 public:
  explicit FichierProjete(const std::string& chemin) {
    descripteur_ = open(chemin.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat etat;
    if (descripteur_ < 0 || fstat(descripteur_, &etat) != 0 || !S_ISREG(etat.st_mode) ||
        etat.st_size == 0)
      return;
    taille_ = static_cast<size_t>(etat.st_size);
    if (taille_ / 4 > kLongueurMaximale) return;  // refused unread (Decode says why)
    // Read ahead in one go: the decoder reads the whole file once, in order.
    void* adresse = mmap(nullptr, taille_, PROT_READ, MAP_PRIVATE | MAP_POPULATE, descripteur_, 0);
    if (adresse != MAP_FAILED) adresse_ = adresse;
  }
  ~FichierProjete() {
    if (adresse_) munmap(adresse_, taille_);
    if (descripteur_ >= 0) close(descripteur_);
  }
  FichierProjete(const FichierProjete&) = delete;
  FichierProjete& operator=(const FichierProjete&) = delete;

  bool EstProjete() const { return adresse_ != nullptr; }
  // The size of a regular file, mapped or not; 0 for anything else.
  size_t Taille() const { return taille_; }
  std::string_view Octets() const { return {static_cast<const char*>(adresse_), taille_}; }

 private:
  int descripteur_ = -1;
  void* adresse_ = nullptr;
  size_t taille_ = 0;
};

// The chain's buffers for a document of `octets` bytes come to a few times that size (about nine
// in the prose profile, whose style bits and readable text add to the reference's). Claimed
// here at once, freed (the command keeps freed memory in the process), and marked for huge
// pages, that memory is then faulted in 2 MB at a time rather than 4 kB: page faults were the
// largest single cost of a run. Where huge pages are not available nothing changes.
void PrepareMemoireDeTravail(size_t octets) {
  constexpr size_t kEnormePage = size_t{2} << 20;
  constexpr size_t kOctetsDeTravailParOctet = 10;
  if (octets < kEnormePage) return;
  // Larger regions gain nothing on this machine's virtual memory: some runs then spend more
  // time in the kernel than without huge pages.
  constexpr size_t kPlafond = size_t{64} << 20;
  const size_t taille = std::min(octets * kOctetsDeTravailParOctet, kPlafond);
  void* bloc = std::malloc(taille);
  if (!bloc) return;
  const auto debut = (reinterpret_cast<uintptr_t>(bloc) + kEnormePage - 1) & ~(kEnormePage - 1);
  const auto fin = (reinterpret_cast<uintptr_t>(bloc) + taille) & ~(kEnormePage - 1);
  if (fin > debut) madvise(reinterpret_cast<void*>(debut), fin - debut, MADV_HUGEPAGE);
  std::free(bloc);
}

void RefuseTropLong(const std::string& nom, uint64_t longueur, const char* unites) {
  throw ErreurUtilisateur(nom + ": too long: " + std::to_string(longueur) + unites + ", at most " +
                          std::to_string(kLongueurMaximale) + " UTF-16 code units can be filtered");
}

ChaineN Decode(std::string_view octets, const std::string& codage, const std::string& nom) {
  // No encoding takes more than four bytes a UTF-16 unit: a document this large is refused
  // before it is decoded.
  if (octets.size() / 4 > kLongueurMaximale) RefuseTropLong(nom, octets.size(), " bytes");
  ChaineN document = DecodeDocument(octets, codage, nom);
  if (document.Longueur() > kLongueurMaximale)
    RefuseTropLong(nom, document.Longueur(), " UTF-16 code units");
  return document;
}

}  // namespace

ChaineN LitDocument(const std::string& chemin, const std::string& codage) {
  if (chemin != "-") {
    const FichierProjete fichier(chemin);
    if (fichier.Taille() / 4 > kLongueurMaximale)
      RefuseTropLong(chemin, fichier.Taille(), " bytes");
    if (fichier.EstProjete()) {
      PrepareMemoireDeTravail(fichier.Octets().size());
      return Decode(fichier.Octets(), codage, chemin);
    }
  }
  return Decode(LitOctets(chemin), codage, chemin == "-" ? "<stdin>" : chemin);
}

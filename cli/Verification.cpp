// `filtres check`: the dictionary, the words of the internal text, and the findings.
#include "cli/Verification.h"

#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include <filesystem>
#include <hunspell.hxx>
#include <iostream>
#include <memory>
#include <unordered_map>

#include "cli/ErreurUtilisateur.h"
#include "cli/LectureDocument.h"
#include "cli/LignesColonnes.h"
#include "cli/SortieJson.h"
#include "ferlane/Convertisseur.h"
#include "framework/RegistreConvertisseurs.h"

namespace {

// Where Debian's hunspell-* and myspell packages put their dictionaries.
constexpr const char* kDossiersDictionnaires[] = {"/usr/share/hunspell", "/usr/share/myspell",
                                                  "/usr/share/myspell/dicts"};

std::string TrouveDictionnaire(const OptionsVerification& o) {
  namespace fs = std::filesystem;
  const auto existe = [](const std::string& base) {
    return fs::exists(base + ".dic") && fs::exists(base + ".aff");
  };
  if (!o.dictionnaire.empty()) {
    if (!existe(o.dictionnaire))
      throw ErreurUtilisateur("no dictionary at '" + o.dictionnaire + "' (.dic and .aff)");
    return o.dictionnaire;
  }
  for (const char* dossier : kDossiersDictionnaires) {
    const std::string base = std::string(dossier) + "/" + o.langue;
    if (existe(base)) return base;
  }
  std::string paquet = o.langue.substr(0, o.langue.find('_'));
  if (o.langue.find('_') != std::string::npos) {
    std::string region = o.langue.substr(o.langue.find('_') + 1);
    for (char& c : region) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    paquet += "-" + region;
  }
  throw ErreurUtilisateur("no dictionary for '" + o.langue + "': install the package hunspell-" +
                          paquet + " (or name a .dic/.aff pair with --dict)");
}

// The dictionary and the answers already given, word by word.
class Dictionnaire {
 public:
  explicit Dictionnaire(const std::string& base)
      : hunspell_((base + ".aff").c_str(), (base + ".dic").c_str()) {
    const std::string& codage = hunspell_.get_dict_encoding();
    if (codage != "UTF-8" && codage != "utf-8") {
      UErrorCode erreur = U_ZERO_ERROR;
      convertisseur_.reset(ucnv_open(codage.c_str(), &erreur));
      if (U_FAILURE(erreur))
        throw ErreurUtilisateur("dictionary encoding '" + codage + "' unknown");
    }
  }

  // nullptr when the word is known; its suggestions otherwise.
  const std::vector<std::string>* Inconnu(std::u16string_view mot) {
    auto [it, nouveau] = reponses_.try_emplace(std::u16string(mot));
    if (nouveau) {
      // Dictionaries hold composed letters: "cafe" and U+0301 is the "café" they know.
      const std::string code = VersDictionnaire(Compose(mot));
      it->second.connu = hunspell_.spell(code);
      if (!it->second.connu)
        for (const std::string& s : hunspell_.suggest(code))
          it->second.suggestions.push_back(DepuisDictionnaire(s));
    }
    return it->second.connu ? nullptr : &it->second.suggestions;
  }

 private:
  std::u16string Compose(std::u16string_view mot) const {
    UErrorCode erreur = U_ZERO_ERROR;
    const icu::Normalizer2* nfc = icu::Normalizer2::getNFCInstance(erreur);
    const icu::UnicodeString source(false, reinterpret_cast<const UChar*>(mot.data()),
                                    static_cast<int32_t>(mot.size()));
    if (U_FAILURE(erreur) || nfc->isNormalized(source, erreur)) return std::u16string(mot);
    const icu::UnicodeString compose = nfc->normalize(source, erreur);
    return std::u16string(reinterpret_cast<const char16_t*>(compose.getBuffer()),
                          static_cast<size_t>(compose.length()));
  }

  struct Reponse {
    bool connu = false;
    std::vector<std::string> suggestions;  // UTF-8
  };

  std::string VersDictionnaire(std::u16string_view mot) const {
    if (!convertisseur_) return ChaineN(mot).VersUtf8();
    std::string octets(mot.size() * 4 + 8, '\0');
    UErrorCode erreur = U_ZERO_ERROR;
    const int32_t n = ucnv_fromUChars(
        convertisseur_.get(), octets.data(), static_cast<int32_t>(octets.size()),
        reinterpret_cast<const UChar*>(mot.data()), static_cast<int32_t>(mot.size()), &erreur);
    octets.resize(U_SUCCESS(erreur) ? static_cast<size_t>(n) : 0);
    return octets;
  }
  std::string DepuisDictionnaire(const std::string& octets) const {
    if (!convertisseur_) return octets;
    std::u16string texte(octets.size() + 8, u'\0');
    UErrorCode erreur = U_ZERO_ERROR;
    const int32_t n = ucnv_toUChars(convertisseur_.get(), reinterpret_cast<UChar*>(texte.data()),
                                    static_cast<int32_t>(texte.size()), octets.data(),
                                    static_cast<int32_t>(octets.size()), &erreur);
    texte.resize(U_SUCCESS(erreur) ? static_cast<size_t>(n) : 0);
    return ChaineN(std::move(texte)).VersUtf8();
  }

  Hunspell hunspell_;
  std::unique_ptr<UConverter, decltype(&ucnv_close)> convertisseur_{nullptr, &ucnv_close};
  std::unordered_map<std::u16string, Reponse> reponses_;
};

bool EstAVerifier(const TexteAvecAttributs& interne, int32_t debut, int32_t fin) {
  for (int32_t i = debut; i < fin; ++i)
    if ((interne.Attribut(i) & eNonTexte) != 0) return false;
  return true;
}

void EcritTrouvaille(const std::string& fichier, LignesColonnes::Position p,
                     MapPos::Intervalle externe, std::u16string_view mot,
                     const std::vector<std::string>& suggestions, bool json) {
  if (json) {
    std::string ligne =
        "{\"file\":" + ChaineJson(ChaineN::DepuisUtf8(fichier).Vue()) +
        ",\"line\":" + std::to_string(p.ligne) + ",\"column\":" + std::to_string(p.colonne) +
        ",\"debut\":" + std::to_string(externe.Debut) + ",\"fin\":" + std::to_string(externe.Fin) +
        ",\"word\":" + ChaineJson(mot) + ",\"suggestions\":[";
    for (size_t i = 0; i < suggestions.size(); ++i)
      ligne += (i ? "," : "") + ChaineJson(ChaineN::DepuisUtf8(suggestions[i]).Vue());
    std::cout << ligne << "]}\n";
    return;
  }
  std::cout << fichier << ':' << p.ligne << ':' << p.colonne << ": " << ChaineN(mot).VersUtf8();
  for (size_t i = 0; i < suggestions.size(); ++i)
    std::cout << (i ? ", " : " -> ") << suggestions[i];
  std::cout << '\n';
}

// Checks one document; answers the number of unknown words.
uint64_t VerifieDocument(const std::string& fichier, const OptionsVerification& o,
                         FiltresCorrecteur::Params params, Dictionnaire& dictionnaire,
                         icu::BreakIterator& mots) {
  const ChaineN document = LitDocument(fichier, o.codage);
  params.Format = o.format == "auto" ? FiltresCorrecteur::DetecteFormat(document, params.Prose)
                                     : TrouveFormat(o.format)->format;
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  const MapChaines<TexteAvecAttributs> resultat = filtres.Mappeur().Convertis(document);
  const std::u16string_view texte = resultat.Interne().Chaine().Vue();
  const icu::UnicodeString alias(false, reinterpret_cast<const UChar*>(texte.data()),
                                 static_cast<int32_t>(texte.size()));
  mots.setText(alias);
  LignesColonnes lignes(document.Vue());
  uint64_t inconnus = 0;
  for (int32_t debut = mots.first(), fin = mots.next(); fin != icu::BreakIterator::DONE;
       debut = fin, fin = mots.next()) {
    const int32_t statut = mots.getRuleStatus();
    if (statut < UBRK_WORD_LETTER || statut >= UBRK_WORD_IDEO_LIMIT) continue;
    if (!EstAVerifier(resultat.Interne(), debut, fin)) continue;
    const std::u16string_view mot = texte.substr(debut, fin - debut);
    const std::vector<std::string>* suggestions = dictionnaire.Inconnu(mot);
    if (suggestions == nullptr) continue;
    ++inconnus;
    const MapPos::Intervalle externe =
        resultat.InterneVersExterne({static_cast<uint32_t>(debut), static_cast<uint32_t>(fin)});
    EcritTrouvaille(fichier, lignes.Depuis(externe.Debut), externe, mot, *suggestions, o.json);
  }
  return inconnus;
}

}  // namespace

int VerifieDocuments(const OptionsVerification& o, FiltresCorrecteur::Params& params) {
  Dictionnaire dictionnaire(TrouveDictionnaire(o));
  UErrorCode erreur = U_ZERO_ERROR;
  const std::string langue = o.langue;
  std::unique_ptr<icu::BreakIterator> mots(
      icu::BreakIterator::createWordInstance(icu::Locale(langue.c_str()), erreur));
  if (U_FAILURE(erreur)) throw std::runtime_error("ICU has no word break iterator");
  uint64_t inconnus = 0;
  for (const std::string& fichier : o.fichiers)
    inconnus += VerifieDocument(fichier, o, params, dictionnaire, *mots);
  return inconnus == 0 ? 0 : 1;
}

// The C interface over the library's C++ API: every call catches what the library may throw
// and turns it into a status and a message for filtres_derniere_erreur.
#include "capi/filtres.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "ferlane/CodageUtf.h"
#include "framework/Corrections.h"
#include "framework/FiltresCorrecteur.h"
#include "framework/PlagesDeStyle.h"
#include "framework/RegistreConvertisseurs.h"
#include "framework/TexteLisible.h"

struct filtres_options {
  std::string format = "auto";
  bool exact = false;
  std::vector<std::string> exclues, excluesCourriel, ouvrantes, fermantes;
  bool courriel = false;
  bool lignesCitees = false;
};

struct filtres_document {
  std::string format;
  MapChaines<TexteAvecAttributs> resultat;
  std::string texteUtf8;  // made on first request
  std::string lisible;
  bool texteFait = false, lisibleFait = false;
  std::vector<PlageDeStyle> styles;
};

namespace {

thread_local std::string derniereErreur;

// A failure the caller made, with its status.
struct ErreurC : std::runtime_error {
  ErreurC(filtres_statut s, const std::string& message) : std::runtime_error(message), statut(s) {}
  filtres_statut statut;
};

template <class F>
filtres_statut Protege(F&& appel) {
  try {
    appel();
    return FILTRES_OK;
  } catch (const ErreurC& e) {
    derniereErreur = e.what();
    return e.statut;
  } catch (const std::bad_alloc&) {
    derniereErreur = "out of memory";
    return FILTRES_ERREUR_MEMOIRE;
  } catch (const std::length_error& e) {
    derniereErreur = e.what();
    return FILTRES_ERREUR_TROP_LONG;
  } catch (const std::out_of_range& e) {
    derniereErreur = e.what();
    return FILTRES_ERREUR_ARGUMENT;
  } catch (const std::exception& e) {
    derniereErreur = e.what();
    return FILTRES_ERREUR_INTERNE;
  } catch (...) {
    derniereErreur = "unknown failure";
    return FILTRES_ERREUR_INTERNE;
  }
}

void Exige(bool condition, const char* message) {
  if (!condition) throw ErreurC(FILTRES_ERREUR_ARGUMENT, message);
}

ChaineN DepuisUtf8(const char* texte, size_t octets) {
  Exige(texte != nullptr || octets == 0, "a NULL text");
  std::u16string unites;
  if (const auto erreur = DecodeUtf8Strict(std::string_view(texte ? texte : "", octets), unites))
    throw ErreurC(FILTRES_ERREUR_CODAGE, "invalid UTF-8 at byte " + std::to_string(*erreur));
  return ChaineN(std::move(unites));
}

FiltresCorrecteur::Params Parametres(const filtres_options& o) {
  FiltresCorrecteur::Params params;
  for (const std::string& s : o.exclues)
    params.ChainesExclues.Ajoute(UniChaine(ChaineN::DepuisUtf8(s)));
  for (const std::string& s : o.excluesCourriel)
    params.ChainesExcluesCourriel.Ajoute(UniChaine(ChaineN::DepuisUtf8(s)));
  for (size_t i = 0; i < o.ouvrantes.size(); ++i) {
    params.BalisesOuvrantes.Ajoute(ChaineN::DepuisUtf8(o.ouvrantes[i]));
    params.BalisesFermantes.Ajoute(ChaineN::DepuisUtf8(o.fermantes[i]));
  }
  params.Courriel = o.courriel;
  params.MasqueLignesCitees = o.lignesCitees;
  if (!o.exact) params.Prose.Active();
  return params;
}

eFormatTexte FormatDe(const filtres_options& o, const ChaineN& texte) {
  ProfilProse prose;
  if (!o.exact) prose.Active();
  return o.format == "auto" ? FiltresCorrecteur::DetecteFormat(texte, prose)
                            : TrouveFormat(o.format)->format;
}

void Convertis(const filtres_options* options, ChaineN texte, filtres_document** document) {
  Exige(options != nullptr && document != nullptr, "a NULL argument");
  *document = nullptr;
  FiltresCorrecteur::Params params = Parametres(*options);
  params.Format = FormatDe(*options, texte);
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  auto resultat = std::make_unique<filtres_document>(
      filtres_document{std::string(NomDeFormat(params.Format)),
                       filtres.Mappeur().Convertis(std::move(texte)),
                       {},
                       {},
                       false,
                       false,
                       {}});
  resultat->styles = PlagesDeStyle(resultat->resultat.Interne());
  *document = resultat.release();
}

// A text of the document made at the first call and kept for the next ones.
template <class Fabrique>
const std::string& EnCache(bool& fait, std::string& cache, Fabrique fabrique) {
  if (!fait) {
    cache = fabrique();
    fait = true;
  }
  return cache;
}

}  // namespace

extern "C" {

const char* filtres_derniere_erreur(void) {
  return derniereErreur.c_str();
}

filtres_statut filtres_options_cree(filtres_options** options) {
  return Protege([&] {
    Exige(options != nullptr, "a NULL argument");
    *options = new filtres_options;
  });
}

void filtres_options_detruit(filtres_options* options) {
  delete options;
}

filtres_statut filtres_options_format(filtres_options* options, const char* format) {
  return Protege([&] {
    Exige(options != nullptr && format != nullptr, "a NULL argument");
    if (std::string_view(format) != "auto" && TrouveFormat(format) == nullptr)
      throw ErreurC(FILTRES_ERREUR_ARGUMENT, "unknown format '" + std::string(format) + "'");
    options->format = format;
  });
}

filtres_statut filtres_options_exact(filtres_options* options, int exact) {
  return Protege([&] {
    Exige(options != nullptr, "a NULL argument");
    options->exact = exact != 0;
  });
}

filtres_statut filtres_options_exclut(filtres_options* options, const char* chaine, size_t octets) {
  return Protege([&] {
    Exige(options != nullptr, "a NULL argument");
    options->exclues.push_back(DepuisUtf8(chaine, octets).VersUtf8());
  });
}

filtres_statut filtres_options_exclut_courriel(filtres_options* options, const char* chaine,
                                               size_t octets) {
  return Protege([&] {
    Exige(options != nullptr, "a NULL argument");
    options->excluesCourriel.push_back(DepuisUtf8(chaine, octets).VersUtf8());
  });
}

filtres_statut filtres_options_balises(filtres_options* options, const char* ouvrante,
                                       const char* fermante) {
  return Protege([&] {
    Exige(options != nullptr && ouvrante != nullptr && fermante != nullptr, "a NULL argument");
    options->ouvrantes.push_back(DepuisUtf8(ouvrante, std::strlen(ouvrante)).VersUtf8());
    options->fermantes.push_back(DepuisUtf8(fermante, std::strlen(fermante)).VersUtf8());
  });
}

filtres_statut filtres_options_courriel(filtres_options* options, int courriel, int lignes_citees) {
  return Protege([&] {
    Exige(options != nullptr, "a NULL argument");
    options->courriel = courriel != 0;
    options->lignesCitees = lignes_citees != 0;
  });
}

filtres_statut filtres_convertit(const filtres_options* options, const char* texte, size_t octets,
                                 filtres_document** document) {
  return Protege([&] { Convertis(options, DepuisUtf8(texte, octets), document); });
}

filtres_statut filtres_convertit_utf16(const filtres_options* options, const uint16_t* texte,
                                       size_t unites, filtres_document** document) {
  return Protege([&] {
    Exige(texte != nullptr || unites == 0, "a NULL text");
    if (unites > kLongueurMaximale)  // refused before a copy of the text is made
      throw ErreurC(FILTRES_ERREUR_TROP_LONG, "too long: " + std::to_string(unites) +
                                                  " UTF-16 code units, at most " +
                                                  std::to_string(kLongueurMaximale));
    Convertis(options, ChaineN(std::u16string(reinterpret_cast<const char16_t*>(texte), unites)),
              document);
  });
}

void filtres_document_detruit(filtres_document* document) {
  delete document;
}

const char* filtres_document_format(const filtres_document* document) {
  return document ? document->format.c_str() : "";
}

filtres_statut filtres_document_texte(const filtres_document* document, const char** texte,
                                      size_t* octets) {
  return Protege([&] {
    Exige(document != nullptr && texte != nullptr && octets != nullptr, "a NULL argument");
    auto* modifiable = const_cast<filtres_document*>(document);  // a cache, filled once
    const std::string& utf8 = EnCache(modifiable->texteFait, modifiable->texteUtf8, [&] {
      return EncodeUtf8(document->resultat.Interne().Chaine().Vue());
    });
    *texte = utf8.c_str();
    *octets = utf8.size();
  });
}

filtres_statut filtres_document_texte_utf16(const filtres_document* document,
                                            const uint16_t** texte, size_t* unites) {
  return Protege([&] {
    Exige(document != nullptr && texte != nullptr && unites != nullptr, "a NULL argument");
    const std::u16string_view vue = document->resultat.Interne().Chaine().Vue();
    *texte = reinterpret_cast<const uint16_t*>(vue.data());
    *unites = vue.size();
  });
}

filtres_statut filtres_document_texte_lisible(const filtres_document* document, const char** texte,
                                              size_t* octets) {
  return Protege([&] {
    Exige(document != nullptr && texte != nullptr && octets != nullptr, "a NULL argument");
    auto* modifiable = const_cast<filtres_document*>(document);  // a cache, filled once
    const std::string& utf8 = EnCache(modifiable->lisibleFait, modifiable->lisible, [&] {
      return EncodeUtf8(TexteLisible(document->resultat.Interne()).Vue());
    });
    *texte = utf8.c_str();
    *octets = utf8.size();
  });
}

size_t filtres_document_nombre_styles(const filtres_document* document) {
  return document ? document->styles.size() : 0;
}

filtres_statut filtres_document_style(const filtres_document* document, size_t indice,
                                      uint32_t* debut, uint32_t* fin, uint32_t* styles) {
  return Protege([&] {
    Exige(document != nullptr && debut != nullptr && fin != nullptr && styles != nullptr,
          "a NULL argument");
    Exige(indice < document->styles.size(), "no style run at that index");
    const PlageDeStyle& plage = document->styles[indice];
    *debut = plage.debut;
    *fin = plage.fin;
    *styles = plage.styles;
  });
}

filtres_statut filtres_document_vers_externe(const filtres_document* document, uint32_t debut,
                                             uint32_t fin, uint32_t* debut_externe,
                                             uint32_t* fin_externe) {
  return Protege([&] {
    Exige(document != nullptr && debut_externe != nullptr && fin_externe != nullptr,
          "a NULL argument");
    const MapPos::Intervalle externe = document->resultat.InterneVersExterne({debut, fin});
    *debut_externe = externe.Debut;
    *fin_externe = externe.Fin;
  });
}

filtres_statut filtres_document_vers_interne(const filtres_document* document, uint32_t externe,
                                             uint32_t* interne) {
  return Protege([&] {
    Exige(document != nullptr && interne != nullptr, "a NULL argument");
    *interne = static_cast<uint32_t>(document->resultat.ExterneVersInterne(externe));
  });
}

filtres_statut filtres_detecte(const char* texte, size_t octets, const char** format) {
  return Protege([&] {
    Exige(format != nullptr, "a NULL argument");
    ProfilProse prose;  // the detection `auto` gives a conversion with default options
    prose.Active();
    *format =
        NomDeFormat(FiltresCorrecteur::DetecteFormat(DepuisUtf8(texte, octets), prose)).data();
  });
}

filtres_statut filtres_applique(const filtres_options* options, const char* document, size_t octets,
                                const filtres_correction* corrections, size_t nombre,
                                char** corrige, size_t* octets_corriges, size_t* refusees) {
  return Protege([&] {
    Exige(options != nullptr && corrige != nullptr && octets_corriges != nullptr &&
              (corrections != nullptr || nombre == 0),
          "a NULL argument");
    *corrige = nullptr;
    const ChaineN texte = DepuisUtf8(document, octets);
    std::vector<Correction> liste;
    for (size_t i = 0; i < nombre; ++i)
      liste.push_back({corrections[i].debut, corrections[i].fin,
                       DepuisUtf8(corrections[i].texte, corrections[i].octets)});
    FiltresCorrecteur::Params params = Parametres(*options);
    params.Format = FormatDe(*options, texte);
    const ResultatCorrections resultat = AppliqueCorrections(texte, params, std::move(liste));
    const std::string sortie = EncodeUtf8(resultat.document.Vue());
    char* memoire = static_cast<char*>(std::malloc(sortie.size() + 1));
    if (memoire == nullptr) throw std::bad_alloc();
    std::memcpy(memoire, sortie.c_str(), sortie.size() + 1);
    *corrige = memoire;
    *octets_corriges = sortie.size();
    if (refusees != nullptr) *refusees = resultat.refusees.size();
  });
}

void filtres_libere(void* memoire) {
  std::free(memoire);
}

}  // extern "C"

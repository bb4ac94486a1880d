// The Python module `filtres`: convert, detect and apply, over the library's public API.
// Positions are Python string indexes (code points); the library's are UTF-16 units, and each
// result converts between the two. The GIL is released while a document converts.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <algorithm>
#include <string>
#include <vector>

#include "ferlane/CodageUtf.h"
#include "framework/Corrections.h"
#include "framework/FiltresCorrecteur.h"
#include "framework/PlagesDeStyle.h"
#include "framework/RegistreConvertisseurs.h"
#include "framework/TexteLisible.h"

namespace py = pybind11;

namespace {

// Code point indexes of a UTF-16 text and back; the identity when it holds no surrogate pair.
class IndexCodePoints {
 public:
  explicit IndexCodePoints(std::u16string_view texte) {
    bool paires = false;
    for (size_t i = 0; i + 1 < texte.size() && !paires; ++i) paires = EstPaire(texte, i);
    if (!paires) {
      longueur_ = texte.size();
      return;
    }
    for (size_t i = 0; i < texte.size(); ++i) {
      unites_.push_back(static_cast<uint32_t>(i));
      if (EstPaire(texte, i)) ++i;
    }
    unites_.push_back(static_cast<uint32_t>(texte.size()));
    longueur_ = unites_.size() - 1;
  }
  size_t Longueur() const { return longueur_; }
  uint32_t VersUnites(size_t codePoint) const {
    if (codePoint > longueur_)
      throw py::value_error("position " + std::to_string(codePoint) + " beyond the text's " +
                            std::to_string(longueur_) + " characters");
    return unites_.empty() ? static_cast<uint32_t>(codePoint) : unites_[codePoint];
  }
  size_t VersCodePoints(uint32_t unite) const {
    if (unites_.empty()) return unite;
    return static_cast<size_t>(std::lower_bound(unites_.begin(), unites_.end(), unite) -
                               unites_.begin());
  }

 private:
  static bool EstPaire(std::u16string_view t, size_t i) {
    return i + 1 < t.size() && EstHautSubstitut(t[i]) && EstBasSubstitut(t[i + 1]);
  }
  std::vector<uint32_t> unites_;  // empty: identity
  size_t longueur_ = 0;
};

struct Options {
  std::string format = "auto";
  bool exact = false;
  std::vector<std::u16string> exclues, excluesCourriel;
  std::vector<std::pair<std::u16string, std::u16string>> balises;
  bool courriel = false, lignesCitees = false;
};

FiltresCorrecteur::Params Parametres(const Options& o, const ChaineN& texte) {
  if (o.format != "auto" && TrouveFormat(o.format) == nullptr)
    throw py::value_error("unknown format '" + o.format +
                          "' (auto, latex, markdown, html, srt, text or none)");
  FiltresCorrecteur::Params params;
  for (const auto& s : o.exclues) params.ChainesExclues.Ajoute(UniChaine(ChaineN(s)));
  for (const auto& s : o.excluesCourriel)
    params.ChainesExcluesCourriel.Ajoute(UniChaine(ChaineN(s)));
  for (const auto& [ouvrante, fermante] : o.balises) {
    if (ouvrante.empty() || fermante.empty())
      throw py::value_error("a tag pair holds an empty string");
    params.BalisesOuvrantes.Ajoute(ChaineN(ouvrante));
    params.BalisesFermantes.Ajoute(ChaineN(fermante));
  }
  params.Courriel = o.courriel;
  params.MasqueLignesCitees = o.lignesCitees;
  if (!o.exact) params.Prose.Active();
  params.Format = o.format == "auto" ? FiltresCorrecteur::DetecteFormat(texte, params.Prose)
                                     : TrouveFormat(o.format)->format;
  return params;
}

class Resultat {
 public:
  Resultat(std::string format, MapChaines<TexteAvecAttributs> resultat)
      : format_(std::move(format)),
        resultat_(std::move(resultat)),
        interne_(resultat_.Interne().Chaine().Vue()),
        externe_(resultat_.Externe().Vue()) {}

  std::u16string Texte() const { return std::u16string(resultat_.Interne().Chaine().Vue()); }
  std::u16string Prose() const { return std::u16string(TexteLisible(resultat_.Interne()).Vue()); }
  const std::string& Format() const { return format_; }
  std::vector<std::tuple<size_t, size_t, uint32_t>> Styles() const {
    std::vector<std::tuple<size_t, size_t, uint32_t>> styles;
    for (const PlageDeStyle& p : PlagesDeStyle(resultat_.Interne()))
      styles.emplace_back(interne_.VersCodePoints(p.debut), interne_.VersCodePoints(p.fin),
                          p.styles);
    return styles;
  }
  std::pair<size_t, size_t> VersDocument(size_t debut, size_t fin) const {
    if (debut > fin) throw py::value_error("start after end");
    const MapPos::Intervalle externe =
        resultat_.InterneVersExterne({interne_.VersUnites(debut), interne_.VersUnites(fin)});
    return {externe_.VersCodePoints(externe.Debut), externe_.VersCodePoints(externe.Fin)};
  }
  size_t VersInterne(size_t position) const {
    return interne_.VersCodePoints(
        static_cast<uint32_t>(resultat_.ExterneVersInterne(externe_.VersUnites(position))));
  }

 private:
  std::string format_;
  MapChaines<TexteAvecAttributs> resultat_;
  IndexCodePoints interne_, externe_;
};

Options LitOptions(const std::string& format, bool exact,
                   const std::vector<std::u16string>& exclude,
                   const std::vector<std::u16string>& email_exclude,
                   const std::vector<std::pair<std::u16string, std::u16string>>& tags, bool email,
                   bool quoted_lines) {
  return {format, exact, exclude, email_exclude, tags, email, quoted_lines};
}

Resultat Convertis(const std::u16string& texte, const Options& o) {
  ChaineN document(texte);
  FiltresCorrecteur::Params params = Parametres(o, document);
  py::gil_scoped_release sansVerrou;
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  try {
    return Resultat(std::string(NomDeFormat(params.Format)),
                    filtres.Mappeur().Convertis(std::move(document)));
  } catch (const std::length_error& e) {
    throw py::value_error(e.what());
  }
}

std::u16string Applique(const std::u16string& document, const py::iterable& corrections,
                        const Options& o) {
  const ChaineN texte(document);
  FiltresCorrecteur::Params params = Parametres(o, texte);
  // Positions are the internal text's code points: the text is needed to turn them into units.
  FiltresCorrecteur filtres;
  filtres.CreeFiltres(params);
  const MapChaines<TexteAvecAttributs> lu = filtres.Mappeur().Convertis(texte);
  const IndexCodePoints index(lu.Interne().Chaine().Vue());
  std::vector<Correction> liste;
  for (const py::handle element : corrections) {
    const auto [debut, fin, nouveau] = element.cast<std::tuple<size_t, size_t, std::u16string>>();
    if (debut > fin) throw py::value_error("a correction starts after its end");
    liste.push_back({index.VersUnites(debut), index.VersUnites(fin), ChaineN(nouveau)});
  }
  FiltresCorrecteur::Params params2 = Parametres(o, texte);
  py::gil_scoped_release sansVerrou;
  return std::u16string(AppliqueCorrections(texte, params2, std::move(liste)).document.Vue());
}

}  // namespace

PYBIND11_MODULE(filtres, m) {
  m.doc() =
      "Text-format filters for writing correctors: LaTeX, Markdown, HTML, SRT, e-mail or plain "
      "text to the text a checker reads, with a map back to the document. Positions are string "
      "indexes.";

  py::class_<Resultat>(m, "Result", "A converted document")
      .def_property_readonly("text", &Resultat::Texte, "The internal text, exact (the map's)")
      .def_property_readonly("prose", &Resultat::Prose,
                             "The text as a plain-text checker should read it")
      .def_property_readonly("format", &Resultat::Format, "The format read")
      .def_property_readonly("styles", &Resultat::Styles,
                             "Runs (start, end, bits) of internal text with the same style bits")
      .def("to_document", &Resultat::VersDocument, py::arg("start"), py::arg("end"),
           "The (start, end) of the document an internal stretch comes from")
      .def("to_internal", &Resultat::VersInterne, py::arg("position"),
           "The internal position of a document position");

  const auto options = [](const std::string& format, bool exact,
                          const std::vector<std::u16string>& exclude,
                          const std::vector<std::u16string>& email_exclude,
                          const std::vector<std::pair<std::u16string, std::u16string>>& tags,
                          bool email, bool quoted_lines) {
    return LitOptions(format, exact, exclude, email_exclude, tags, email, quoted_lines);
  };
  m.def(
      "convert",
      [options](const std::u16string& text, const std::string& format, bool exact,
                const std::vector<std::u16string>& exclude,
                const std::vector<std::u16string>& email_exclude,
                const std::vector<std::pair<std::u16string, std::u16string>>& tags, bool email,
                bool quoted_lines) {
        return Convertis(text,
                         options(format, exact, exclude, email_exclude, tags, email, quoted_lines));
      },
      py::arg("text"), py::arg("format") = "auto", py::arg("exact") = false,
      py::arg("exclude") = std::vector<std::u16string>{},
      py::arg("email_exclude") = std::vector<std::u16string>{},
      py::arg("tags") = std::vector<std::pair<std::u16string, std::u16string>>{},
      py::arg("email") = false, py::arg("quoted_lines") = false,
      "Converts a document; exact=True gives the reference filters instead of the prose profile");
  m.def(
      "detect",
      [](const std::u16string& text, bool exact) {
        ProfilProse prose;
        if (!exact) prose.Active();
        return std::string(NomDeFormat(FiltresCorrecteur::DetecteFormat(ChaineN(text), prose)));
      },
      py::arg("text"), py::arg("exact") = false,
      "The format a text looks like, as convert(format='auto') takes it");
  m.def(
      "apply",
      [options](const std::u16string& document, const py::iterable& corrections,
                const std::string& format, bool exact, const std::vector<std::u16string>& exclude,
                const std::vector<std::u16string>& email_exclude,
                const std::vector<std::pair<std::u16string, std::u16string>>& tags, bool email,
                bool quoted_lines) {
        return Applique(document, corrections,
                        options(format, exact, exclude, email_exclude, tags, email, quoted_lines));
      },
      py::arg("document"), py::arg("corrections"), py::arg("format") = "auto",
      py::arg("exact") = false, py::arg("exclude") = std::vector<std::u16string>{},
      py::arg("email_exclude") = std::vector<std::u16string>{},
      py::arg("tags") = std::vector<std::pair<std::u16string, std::u16string>>{},
      py::arg("email") = false, py::arg("quoted_lines") = false,
      "Writes corrections (start, end, text), in the internal text's positions, back into the "
      "document; those that would cut through markup are left out");
}

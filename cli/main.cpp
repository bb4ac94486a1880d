// The `filtres` command: runs a filter set (or one converter) over a document and prints the
// internal text, its styles and position map, the reports, or the detected format; checks
// spelling and writes corrections back.
//
//   filtres [--format auto|latex|markdown|text|srt|html|none] [--json|--annotation] [COMMON]
//           [FILE|-]
//   filtres detect [--exact] [FILE|-]
//   filtres reports --converter NAME [--inverse] [--after FILE] [COMMON] [FILE|-]
//   filtres check [--lang L] [--dict PATH] [--json] [--format F] [COMMON] FILE...
//   filtres apply --corrections FILE [--format F] [-o FILE | --in-place] [COMMON] DOCUMENT
//   filtres batch [--jobs N] [COMMON] < JSON lines
//
// The prose profile is the default: the text printed is what a checker should read (spans that
// are not prose left out, markers turned into line feeds). --exact gives the reference filters,
// with every marker and placeholder as the chain produced them. --json always prints the
// chain's exact text, styles and map.
//
// Errors (arguments, files, encodings, dictionaries) print one line on standard error and exit
// with status 2; nothing is written on standard output then. `check` exits with 1 when it found
// unknown words, `apply` when it refused corrections.
#include <malloc.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <string>
#include <vector>

#include "cli/Application.h"
#include "cli/ErreurUtilisateur.h"
#include "cli/LectureDocument.h"
#include "cli/Lot.h"
#include "cli/SortieJson.h"
#include "cli/Verification.h"
#include "framework/FiltresCorrecteur.h"
#include "framework/RegistreConvertisseurs.h"
#include "framework/TexteLisible.h"

namespace {

struct OptionsCommunes {
  std::vector<std::string> exclues;
  std::vector<std::string> exclueesCourriel;
  std::vector<std::string> balises;  // opening, closing, opening, closing...
  bool courriel = false;
  bool lignesCitees = false;
  bool parallele = false;
  bool exact = false;                       // the reference filters rather than the prose profile
  std::vector<std::string> commandesLaTeX;  // NAME:LETTERS
  std::vector<std::string> environnementsLaTeX;
  std::vector<std::string> verbatimsLaTeX;
  std::string codage;
  std::string fichier = "-";
};

// Without `avecFichier`, the subcommand names its own files.
void AjouteOptionsCommunes(CLI::App& app, OptionsCommunes& o, bool avecFichier = true) {
  // Each occurrence takes its own values only, so FILE is never swallowed by a repeatable option.
  app.add_option("--exclude", o.exclues, "A string to mask wherever it occurs (repeatable)")
      ->allow_extra_args(false);
  app.add_option("--email-exclude", o.exclueesCourriel,
                 "A string to mask in an e-mail, ignoring case and accents (repeatable)")
      ->allow_extra_args(false);
  app.add_option("--tag", o.balises, "OPEN CLOSE: mask each region from OPEN to CLOSE (repeatable)")
      ->type_size(2)
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  app.add_flag("--email", o.courriel, "The text is an e-mail: mask quotation markers");
  app.add_flag("--quoted-lines", o.lignesCitees, "In an e-mail, mask whole quoted lines");
  app.add_flag("--parallel", o.parallele,
               "Allow the excluded-strings search to use several threads");
  app.add_flag("--exact", o.exact,
               "The reference filters, exactly: no prose profile, every marker kept");
  app.add_option("--latex-command", o.commandesLaTeX,
                 "NAME:ARGS: a LaTeX command whose brace arguments are each k (kept), d (dropped) "
                 "or n (not prose), as in myref:nk (repeatable; prose profile)")
      ->allow_extra_args(false);
  app.add_option("--latex-environment", o.environnementsLaTeX,
                 "NAME:ARGS: a LaTeX environment's arguments after its name, as above (repeatable)")
      ->allow_extra_args(false);
  app.add_option("--latex-verbatim", o.verbatimsLaTeX,
                 "NAME: a LaTeX environment whose content is code (repeatable)")
      ->allow_extra_args(false);
  app.add_option("--encoding", o.codage,
                 "Encoding of the input (default: UTF-8, or UTF-16 with a BOM)");
  if (avecFichier)
    app.add_option("FILE", o.fichier, "The document ('-' or nothing: standard input)");
}

void RemplitParams(const OptionsCommunes& o, FiltresCorrecteur::Params& params) {
  for (const std::string& s : o.exclues)
    params.ChainesExclues.Ajoute(UniChaine(ChaineN::DepuisUtf8(s)));
  for (const std::string& s : o.exclueesCourriel)
    params.ChainesExcluesCourriel.Ajoute(UniChaine(ChaineN::DepuisUtf8(s)));
  for (size_t i = 0; i + 1 < o.balises.size(); i += 2) {
    params.BalisesOuvrantes.Ajoute(ChaineN::DepuisUtf8(o.balises[i]));
    params.BalisesFermantes.Ajoute(ChaineN::DepuisUtf8(o.balises[i + 1]));
  }
  params.Courriel = o.courriel;
  params.MasqueLignesCitees = o.lignesCitees;
  params.RechercheParallele = o.parallele;
  try {
    for (const std::string& s : o.commandesLaTeX)
      params.Prose.LaTeX.Commandes.push_back(LitDeclarationLaTeX(s, false));
    for (const std::string& s : o.environnementsLaTeX)
      params.Prose.LaTeX.Environnements.push_back(LitDeclarationLaTeX(s, true));
    for (const std::string& s : o.verbatimsLaTeX) {
      if (s.find(':') != std::string::npos)
        throw ErreurUtilisateur("\"" + s + "\": a verbatim environment takes a bare name");
      params.Prose.LaTeX.EnvironnementsVerbatim.push_back(LitDeclarationLaTeX(s + ":", true).nom);
    }
  } catch (const std::invalid_argument& e) {
    throw ErreurUtilisateur(e.what());
  }
  if (!o.exact) params.Prose.Active();
}

void Filtre(const OptionsCommunes& o, const std::string& nomFormat, bool json, bool annotation) {
  FiltresCorrecteur::Params params;
  RemplitParams(o, params);
  ChaineN document = LitDocument(o.fichier, o.codage);
  params.Format = nomFormat == "auto" ? FiltresCorrecteur::DetecteFormat(document, params.Prose)
                                      : TrouveFormat(nomFormat)->format;
  // Only the JSON output prints the map, and only the annotation the document's own text; the
  // text output is built faster without either.
  using Resultat = MapChaines<TexteAvecAttributs>;
  FiltresCorrecteur filtres(annotation ? Resultat::eModeComplet
                            : json     ? Resultat::eModeSansDocument
                                       : Resultat::eModeTexteSeul);
  filtres.CreeFiltres(params);
  const Resultat resultat =
      filtres.Mappeur().Convertis(std::move(document));  // the chain takes the document over
  if (annotation)
    EcritAnnotationJson(std::cout, resultat);
  else if (json)
    EcritResultatJson(std::cout, NomDeFormat(params.Format), resultat);
  else if (params.Prose.EstActif())
    EcritTexteLisibleUtf8(std::cout, resultat.Interne());
  else
    EcritUtf8(std::cout, resultat.Interne().Chaine().Vue());
}

void Detecte(const OptionsCommunes& o) {
  const ChaineN document = LitDocument(o.fichier, o.codage);
  ProfilProse prose;
  if (!o.exact) prose.Active();
  std::cout << NomDeFormat(FiltresCorrecteur::DetecteFormat(document, prose)) << "\n";
}

void Rapporte(const OptionsCommunes& o, const std::string& nom, bool inverse,
              const std::string& apres) {
  FiltresCorrecteur::Params params;
  RemplitParams(o, params);
  // Every input is read before anything is printed.
  const TexteAvecAttributs avant(apres.empty() ? ChaineN() : LitDocument(apres, o.codage));
  const TexteAvecAttributs texte(LitDocument(o.fichier, o.codage));
  std::unique_ptr<Convertisseur> convertisseur = CreeConvertisseur(nom, params);
  if (!apres.empty())
    convertisseur->ConvertisExterneAInterne(
        avant, [](auto, const auto&, auto) {}, [](auto, auto) {});
  const FonctionRemplace remplace = [](MapPos::Intervalle i, const ChaineN& t,
                                       MapPos::Attributs a) {
    EcritRemplaceJson(std::cout, i, t, a);
  };
  const FonctionMarque marque = [](MapPos::Intervalle i, uint32_t s) {
    EcritMarqueJson(std::cout, i, s);
  };
  if (inverse)
    convertisseur->ConvertisInterneAExterne(texte, remplace, marque);
  else
    convertisseur->ConvertisExterneAInterne(texte, remplace, marque);
}

std::vector<std::string> Noms(auto liste) {
  std::vector<std::string> noms;
  for (const auto& element : liste) noms.emplace_back(element.nom);
  return noms;
}

}  // namespace

int main(int argc, char** argv) {
  // One document, processed once: the chain frees and claims buffers of the document's size at
  // every step. Keeping freed memory in the process, rather than handing it back to the system
  // and faulting it in again, makes large documents markedly faster.
  mallopt(M_MMAP_THRESHOLD, 1 << 30);
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  std::ios::sync_with_stdio(false);
  CLI::App app{"Turns a document into the internal text a corrector checks."};
  app.require_subcommand(0, 1);
  OptionsCommunes options;
  std::string format = "auto";
  bool json = false;
  std::vector<std::string> formats = Noms(FormatsNommes());
  formats.insert(formats.begin(), "auto");
  app.add_option("--format", format, "The document's format")->check(CLI::IsMember(formats));
  app.add_flag("--json", json, "Print the text with its styles and position map as JSON");
  bool annotation = false;
  app.add_flag("--annotation", annotation,
               "Print the document as annotated text (text and markup) for a grammar server");
  AjouteOptionsCommunes(app, options);

  CLI::App* detect = app.add_subcommand("detect", "Print the document's format");
  detect->add_option("--encoding", options.codage, "Encoding of the input");
  detect->add_flag("--exact", options.exact,
                   "The reference detectors alone (no XML declaration, no subtitles)");
  detect->add_option("FILE", options.fichier, "The document ('-' or nothing: standard input)");

  CLI::App* reports =
      app.add_subcommand("reports", "Run one converter and print its reports as JSON lines");
  std::string nom, apres;
  bool inverse = false;
  reports->add_option("--converter", nom, "The converter")
      ->required()
      ->check(CLI::IsMember(Noms(ConvertisseursNommes())));
  reports->add_flag("--inverse", inverse, "Convert internal text back to the external form");
  reports->add_option("--after", apres, "First convert this document with the same converter");
  AjouteOptionsCommunes(*reports, options);

  CLI::App* check = app.add_subcommand(
      "check", "Spell-check documents; print each unknown word at its line and column");
  OptionsVerification verification;
  check->add_option("--lang", verification.langue, "The dictionary's language (default en_US)");
  check->add_option("--dict", verification.dictionnaire,
                    "A .dic/.aff pair's path without extension");
  check->add_flag("--json", verification.json, "One JSON object a finding");
  check->add_option("--format", verification.format, "The documents' format")
      ->check(CLI::IsMember(formats));
  AjouteOptionsCommunes(*check, options, false);
  check->add_option("FILE", verification.fichiers, "The documents")->required();

  CLI::App* apply = app.add_subcommand("apply", "Write corrections back into a document");
  OptionsApplication application;
  apply
      ->add_option("--corrections", application.corrections,
                   "JSON lines {\"debut\":D,\"fin\":F,\"texte\":T} in internal positions")
      ->required();
  apply->add_option("--format", application.format, "The document's format")
      ->check(CLI::IsMember(formats));
  apply->add_option("-o", application.sortie, "Write the corrected document to this file");
  apply->add_flag("--in-place", application.surPlace, "Write the corrected document over it");
  AjouteOptionsCommunes(*apply, options);

  CLI::App* batch = app.add_subcommand(
      "batch", "Convert JSON lines of documents from standard input, one JSON line each");
  OptionsLot lot;
  lot.progres = true;
  batch->add_option("--jobs", lot.taches, "Threads (default: the machine's cores)");
  AjouteOptionsCommunes(*batch, options, false);

  int statut = 0;
  try {
    app.parse(argc, argv);
    if (detect->parsed()) {
      Detecte(options);
    } else if (reports->parsed()) {
      Rapporte(options, nom, inverse, apres);
    } else if (check->parsed()) {
      FiltresCorrecteur::Params params;
      RemplitParams(options, params);
      verification.codage = options.codage;
      statut = VerifieDocuments(verification, params);
    } else if (batch->parsed()) {
      FiltresCorrecteur::Params params;
      RemplitParams(options, params);
      statut = TraiteLot(lot, params, options.codage);
    } else if (apply->parsed()) {
      FiltresCorrecteur::Params params;
      RemplitParams(options, params);
      application.codage = options.codage;
      application.document = options.fichier;
      statut = AppliqueDocument(application, params);
    } else {
      Filtre(options, format, json, annotation);
    }
  } catch (const CLI::Success& aide) {  // --help
    return app.exit(aide);
  } catch (const CLI::ParseError& erreur) {
    std::cerr << "filtres: " << erreur.what() << "\n";
    return 2;
  } catch (const ErreurUtilisateur& erreur) {
    std::cerr << "filtres: " << erreur.what() << "\n";
    return 2;
  } catch (const std::exception& erreur) {
    std::cerr << "filtres: error: " << erreur.what() << "\n";
    return 2;
  }
  std::cout.flush();
  return statut;
}

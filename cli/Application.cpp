// `filtres apply`: reading the corrections, placing them, writing the document.
#include "cli/Application.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>

#include "cli/DocumentBrut.h"
#include "cli/ErreurUtilisateur.h"
#include "cli/LignesColonnes.h"
#include "framework/Corrections.h"
#include "framework/RegistreConvertisseurs.h"

namespace {

std::vector<Correction> LitCorrections(const std::string& chemin) {
  std::ifstream fichier;
  if (chemin != "-") {
    fichier.open(chemin);
    if (!fichier) throw ErreurUtilisateur(chemin + ": cannot open the file");
  }
  std::istream& entree = chemin == "-" ? std::cin : fichier;
  std::vector<Correction> corrections;
  std::string ligne;
  for (size_t numero = 1; std::getline(entree, ligne); ++numero) {
    if (ligne.find_first_not_of(" \t\r") == std::string::npos) continue;
    try {
      const nlohmann::json objet = nlohmann::json::parse(ligne);
      corrections.push_back({objet.at("debut").get<uint64_t>(), objet.at("fin").get<uint64_t>(),
                             ChaineN::DepuisUtf8(objet.at("texte").get<std::string>())});
    } catch (const nlohmann::json::exception& erreur) {
      throw ErreurUtilisateur(chemin + ":" + std::to_string(numero) +
                              ": not a correction {\"debut\":D,\"fin\":F,\"texte\":T}");
    }
  }
  return corrections;
}

void EcritFichier(const std::string& chemin, const std::string& octets) {
  std::ofstream fichier(chemin, std::ios::binary | std::ios::trunc);
  if (!fichier || !fichier.write(octets.data(), static_cast<std::streamsize>(octets.size())) ||
      !fichier.flush())
    throw ErreurUtilisateur(chemin + ": cannot write the file");
}

// Written beside the document, then renamed over it: the rename is atomic, so the document is
// either what it was or the whole corrected text.
void RemplaceSurPlace(const std::string& chemin, const std::string& octets) {
  namespace fs = std::filesystem;
  const std::string temporaire = chemin + ".filtres-" + std::to_string(getpid());
  try {
    EcritFichier(temporaire, octets);
    fs::permissions(temporaire, fs::status(chemin).permissions());
    fs::rename(temporaire, chemin);
  } catch (...) {
    std::error_code ignore;
    fs::remove(temporaire, ignore);
    throw ErreurUtilisateur(chemin + ": cannot write the corrected document in place");
  }
}

}  // namespace

int AppliqueDocument(const OptionsApplication& o, FiltresCorrecteur::Params& params) {
  if (o.surPlace && (o.document == "-" || !o.sortie.empty()))
    throw ErreurUtilisateur("--in-place needs a document file and no -o");
  std::vector<Correction> corrections = LitCorrections(o.corrections);
  const DocumentBrut document = LitDocumentBrut(o.document, o.codage);
  params.Format = o.format == "auto"
                      ? FiltresCorrecteur::DetecteFormat(document.texte, params.Prose)
                      : TrouveFormat(o.format)->format;
  const ResultatCorrections resultat =
      AppliqueCorrections(document.texte, params, std::move(corrections));
  const std::string octets = EcritCorrections(document, resultat.placees);
  if (o.surPlace)
    RemplaceSurPlace(o.document, octets);
  else if (!o.sortie.empty())
    EcritFichier(o.sortie, octets);
  else
    std::cout.write(octets.data(), static_cast<std::streamsize>(octets.size()));
  for (const CorrectionRefusee& refus : resultat.refusees)
    std::cerr << "filtres: " << (o.document == "-" ? "<stdin>" : o.document) << ": " << refus.raison
              << "\n";
  return resultat.refusees.empty() ? 0 : 1;
}

// `filtres batch`: chunks of lines, a pool of threads over each chunk, output in order.
#include "cli/Lot.h"

#include <unistd.h>

#include <atomic>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "cli/LectureDocument.h"
#include "cli/SortieJson.h"
#include "framework/RegistreConvertisseurs.h"

namespace {

// Lines a thread takes in one chunk: enough to keep every thread busy, few enough that the
// documents of a chunk fit in memory together.
constexpr size_t kLignesParTache = 64;

// One output line for one input line. Everything a document can get wrong is caught here.
std::string TraiteLigne(const std::string& ligne, const FiltresCorrecteur::Params& modele,
                        const std::string& codage) {
  std::string id = "null";
  try {
    const nlohmann::json entree = nlohmann::json::parse(ligne);
    if (!entree.is_object()) throw std::invalid_argument("not a JSON object");
    if (entree.contains("id")) id = entree["id"].dump();
    ChaineN document;
    if (entree.contains("path"))
      document = LitDocument(entree.at("path").get<std::string>(), codage);
    else if (entree.contains("text"))
      document = ChaineN::DepuisUtf8(entree.at("text").get<std::string>());
    else
      throw std::invalid_argument("neither \"path\" nor \"text\"");
    FiltresCorrecteur::Params params = modele;
    const std::string format = entree.value("format", std::string("auto"));
    if (format != "auto" && TrouveFormat(format) == nullptr)
      throw std::invalid_argument("unknown format '" + format + "'");
    params.Format = format == "auto" ? FiltresCorrecteur::DetecteFormat(document, params.Prose)
                                     : TrouveFormat(format)->format;
    FiltresCorrecteur filtres;
    filtres.CreeFiltres(params);
    const auto resultat = filtres.Mappeur().Convertis(std::move(document));
    std::ostringstream sortie;
    EcritResultatJson(sortie, NomDeFormat(params.Format), resultat);
    std::string json = sortie.str();  // {"format":...}\n
    return "{\"id\":" + id + "," + json.substr(1);
  } catch (const std::exception& erreur) {
    return "{\"id\":" + id + ",\"error\":" + nlohmann::json(std::string(erreur.what())).dump() +
           "}\n";
  }
}

void TraiteMorceau(const std::vector<std::string>& lignes, std::vector<std::string>& sorties,
                   unsigned taches, const FiltresCorrecteur::Params& modele,
                   const std::string& codage) {
  sorties.assign(lignes.size(), {});
  std::atomic<size_t> suivante{0};
  const auto travaille = [&] {
    for (size_t i; (i = suivante.fetch_add(1)) < lignes.size();)
      sorties[i] = TraiteLigne(lignes[i], modele, codage);
  };
  std::vector<std::thread> fils;
  for (unsigned t = 1; t < taches; ++t) fils.emplace_back(travaille);
  travaille();
  for (std::thread& f : fils) f.join();
}

}  // namespace

int TraiteLot(const OptionsLot& options, const FiltresCorrecteur::Params& modele,
              const std::string& codage) {
  const unsigned taches =
      options.taches ? options.taches : std::max(1u, std::thread::hardware_concurrency());
  const bool progres = options.progres && isatty(STDERR_FILENO);
  std::vector<std::string> lignes, sorties;
  size_t faites = 0;
  for (bool fin = false; !fin;) {
    lignes.clear();
    std::string ligne;
    while (lignes.size() < kLignesParTache * taches && !(fin = !std::getline(std::cin, ligne)))
      if (ligne.find_first_not_of(" \t\r") != std::string::npos) lignes.push_back(std::move(ligne));
    TraiteMorceau(lignes, sorties, taches, modele, codage);
    for (const std::string& sortie : sorties)
      std::cout.write(sortie.data(), static_cast<std::streamsize>(sortie.size()));
    std::cout.flush();
    faites += lignes.size();
    if (progres) std::cerr << "\rfiltres batch: " << faites << " documents" << std::flush;
  }
  if (progres) std::cerr << "\n";
  return 0;
}

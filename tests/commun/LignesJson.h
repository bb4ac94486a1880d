// LignesJson: the JSON lines a command printed, one object each.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

inline std::vector<nlohmann::json> LignesJson(const std::string& sortie) {
  std::vector<nlohmann::json> objets;
  size_t debut = 0;
  for (size_t fin; (fin = sortie.find('\n', debut)) != std::string::npos; debut = fin + 1)
    objets.push_back(nlohmann::json::parse(sortie.substr(debut, fin - debut)));
  return objets;
}

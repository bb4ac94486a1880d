// Access to the real documents of the benchmark corpus (../shared/corpus beside the project).
// A benchmark whose files are missing skips itself rather than measuring nothing.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "ferlane/ChaineN.h"

// Every file of a corpus folder (e.g. "html"), decoded from UTF-8, in name order.
inline std::vector<ChaineN> LitCorpus(const std::string& dossier) {
  std::vector<ChaineN> documents;
  const std::filesystem::path chemin = std::filesystem::path(FILTRES_CORPUS) / dossier;
  if (!std::filesystem::is_directory(chemin)) return documents;
  std::vector<std::filesystem::path> fichiers;
  for (const auto& entree : std::filesystem::directory_iterator(chemin))
    if (entree.is_regular_file()) fichiers.push_back(entree.path());
  std::sort(fichiers.begin(), fichiers.end());
  for (const auto& f : fichiers) {
    std::ifstream flux(f, std::ios::binary);
    std::string octets((std::istreambuf_iterator<char>(flux)), std::istreambuf_iterator<char>());
    if (octets.starts_with("\xEF\xBB\xBF")) octets.erase(0, 3);
    documents.push_back(ChaineN::DepuisUtf8(octets));
  }
  return documents;
}

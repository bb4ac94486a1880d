// Replays fuzz inputs without libFuzzer: every file named on the command line, or found in a
// folder named there, goes once through LLVMFuzzerTestOneInput. Lets CTest run the seed
// corpus under any compiler.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* donnees, size_t taille);

namespace {

void Rejoue(const std::filesystem::path& chemin) {
  std::ifstream fichier(chemin, std::ios::binary);
  const std::string octets((std::istreambuf_iterator<char>(fichier)),
                           std::istreambuf_iterator<char>());
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(octets.data()), octets.size());
}

}  // namespace

int main(int argc, char** argv) {
  int nombre = 0;
  for (int i = 1; i < argc; ++i) {
    const std::filesystem::path chemin(argv[i]);
    if (std::filesystem::is_directory(chemin)) {
      for (const auto& entree : std::filesystem::recursive_directory_iterator(chemin))
        if (entree.is_regular_file()) Rejoue(entree.path()), ++nombre;
    } else {
      Rejoue(chemin), ++nombre;
    }
  }
  std::printf("%d inputs replayed\n", nombre);
  return 0;
}

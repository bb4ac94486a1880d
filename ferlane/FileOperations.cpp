// The task runner: threads started for each call take indexes from a shared counter, so one
// slow task does not hold the others back.
#include "ferlane/FileOperations.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace {
// More threads than this gains nothing for the searches the runner serves.
constexpr unsigned kFilsMaximum = 8;
}  // namespace

FileOperations::FileOperations(unsigned nombreDeFils) : nombreDeFils_(std::max(1u, nombreDeFils)) {}

FileOperations& FileOperations::GlobaleDeDefaut() {
  static FileOperations globale(
      std::min(kFilsMaximum, std::max(2u, std::thread::hardware_concurrency())));
  return globale;
}

void FileOperations::Execute(uint64_t nombre, const std::function<void(uint64_t)>& tache) {
  std::atomic<uint64_t> suivant{0};
  std::exception_ptr premiereErreur;
  std::mutex verrouErreur;
  auto travaille = [&] {
    for (uint64_t index; (index = suivant.fetch_add(1)) < nombre;) {
      try {
        tache(index);
      } catch (...) {
        const std::lock_guard<std::mutex> garde(verrouErreur);
        if (!premiereErreur) premiereErreur = std::current_exception();
      }
    }
  };
  const auto fils = static_cast<unsigned>(std::min<uint64_t>(nombreDeFils_, nombre));
  std::vector<std::thread> travailleurs;
  for (unsigned k = 1; k < fils; ++k) travailleurs.emplace_back(travaille);
  travaille();  // the calling thread takes its share
  for (std::thread& t : travailleurs) t.join();
  if (premiereErreur) std::rethrow_exception(premiereErreur);
}

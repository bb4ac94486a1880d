// FileOperations: the core layer's task runner. GlobaleDeDefaut() is the process-wide runner;
// Execute runs a task for every index on a few threads and returns when all have ended. An
// exception thrown by a task reaches the caller once every task has ended (the first one
// thrown; the others are dropped). Execute may be called from several threads at once.
#pragma once

#include <cstdint>
#include <functional>

class FileOperations {
 public:
  explicit FileOperations(unsigned nombreDeFils);

  static FileOperations& GlobaleDeDefaut();

  unsigned NombreDeFils() const { return nombreDeFils_; }
  void Execute(uint64_t nombre, const std::function<void(uint64_t)>& tache);

 private:
  unsigned nombreDeFils_;
};

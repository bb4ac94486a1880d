// Exceptions of the core layer.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace exceptions {

// A list was read or written at an index outside it.
class LanceIndexHorsBorne : public std::out_of_range {
 public:
  LanceIndexHorsBorne(uint64_t index, uint64_t nombre)
      : std::out_of_range("index " + std::to_string(index) + " outside a list of " +
                          std::to_string(nombre)),
        index_(index),
        nombre_(nombre) {}
  uint64_t Index() const { return index_; }
  uint64_t Nombre() const { return nombre_; }

 private:
  uint64_t index_;
  uint64_t nombre_;
};

}  // namespace exceptions

// ErreurUtilisateur: a problem with what the user gave the command (arguments, files,
// encodings). main prints its message on one line and exits with status 2.
#pragma once

#include <stdexcept>
#include <string>

class ErreurUtilisateur : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Reading a document for the command: a file or standard input ("-"), decoded to UTF-16.
// Without an encoding name: UTF-8 (a byte-order mark is skipped) or UTF-16 with its byte-order
// mark; invalid UTF-8 is an error naming the byte offset. With a name: any encoding ICU knows.
#pragma once

#include <string>
#include <string_view>

#include "ferlane/ChaineN.h"

// Throws ErreurUtilisateur when the file cannot be read or is not valid in its encoding.
ChaineN LitDocument(const std::string& chemin, const std::string& codage);

// Decodes bytes; `nom` names the source in error messages.
ChaineN DecodeDocument(std::string_view octets, const std::string& codage, const std::string& nom);

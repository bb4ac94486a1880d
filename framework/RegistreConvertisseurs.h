// The converters and formats known by name: one table each, read by the filter set to build its
// chain and by the command, the C interface and the Python module to name what they run.
#pragma once

#include <array>
#include <memory>
#include <span>
#include <string_view>

#include "framework/FiltresCorrecteur.h"

struct ConvertisseurNomme {
  std::string_view nom;
  std::unique_ptr<Convertisseur> (*fabrique)(FiltresCorrecteur::Params& params);
};

struct FormatNomme {
  std::string_view nom;
  eFormatTexte format;
  std::array<std::string_view, 2> convertisseurs;  // the format's converters, in chain order
};

std::span<const ConvertisseurNomme> ConvertisseursNommes();
std::span<const FormatNomme> FormatsNommes();
const ConvertisseurNomme* TrouveConvertisseur(std::string_view nom);  // nullptr when unknown
const FormatNomme* TrouveFormat(std::string_view nom);                // nullptr when unknown
std::string_view NomDeFormat(eFormatTexte format);                    // "none" when unknown
// A new converter of that name built for these parameters; the name must be known.
std::unique_ptr<Convertisseur> CreeConvertisseur(std::string_view nom,
                                                 FiltresCorrecteur::Params& params);

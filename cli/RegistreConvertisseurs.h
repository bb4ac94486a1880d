// The converters and formats the command knows by name. A converter whose row has no factory
// is not built yet, and the command refuses it with a clear message.
#pragma once

#include <memory>
#include <optional>
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
  std::string_view convertisseur;  // the converter the format needs ("" for none)
};

std::span<const ConvertisseurNomme> ConvertisseursNommes();
std::span<const FormatNomme> FormatsNommes();
const ConvertisseurNomme* TrouveConvertisseur(std::string_view nom);
const FormatNomme* TrouveFormat(std::string_view nom);
std::string_view NomDeFormat(eFormatTexte format);

// ConvertisseurJetonsTechniques: in the prose profile, marks as not prose the tokens of the
// text that no dictionary holds (JetonsTechniques.h says which), whatever the format: it runs
// on the internal text the format's converters produced. It only marks; the text is unchanged
// and it writes nothing back. Linear in the text's length.
#pragma once

#include "filters/ConvertisseurFiltresInitiaux.h"

class ConvertisseurJetonsTechniques : public ConvertisseurFiltresInitiaux {
 public:
  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;
};

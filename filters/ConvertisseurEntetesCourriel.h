// ConvertisseurEntetesCourriel: in the prose profile of an e-mail, marks as not prose the
// header blocks of its messages: at the start of the text, and after each line that opens a
// message of a mailbox file ("From " at a line start). A block is its header fields ("Name:"
// at a line start, with their continuation lines, which start with a blank) up to the first
// blank line. A subject is the writer's prose: the value of "Subject:" stays prose. It only
// marks; the text is unchanged.
#pragma once

#include "filters/ConvertisseurFiltresInitiaux.h"

class ConvertisseurEntetesCourriel : public ConvertisseurFiltresInitiaux {
 public:
  void ConvertisExterneAInterne(const TexteAvecAttributs& texte, const FonctionRemplace& remplace,
                                const FonctionMarque& marque) override;
};

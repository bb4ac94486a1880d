// ConvertisseurHTML: reading a page through a LecteurHTML, and writing text back as references.
#include "html/ConvertisseurHTML.h"

#include "html/LecteurHTML.h"
#include "html/TablesHTML.h"

void ConvertisseurHTML::ConvertisExterneAInterne(const TexteAvecAttributs& texte,
                                                 const FonctionRemplace& remplace,
                                                 const FonctionMarque& marque) {
  LecteurHTML lecteur(texte, remplace, marque, prose_);
  // Written only once the walk has ended: a run stopped by an exception changes nothing.
  ConvertirNonASCII = lecteur.Parcourt();
}

void ConvertisseurHTML::ConvertisInterneAExterne(const TexteAvecAttributs& texte,
                                                 const FonctionRemplace& remplace,
                                                 const FonctionMarque&) {
  const ChaineN& chaine = texte.Chaine();
  for (uint64_t i = 0; i < chaine.Longueur(); ++i) {
    const char16_t c = chaine[i];
    if (!DoitConvertir(c) && !(ConvertirNonASCII && NEstPasASCII(c))) continue;
    const std::optional<std::u16string_view> nom = TablesHTML::EntiteDeCaractere(c);
    const ChaineN reference = nom ? ChaineN(eCodageFormat, "&%s", {*nom})
                                  : ChaineN(eCodageFormat, "&#x%x;", {static_cast<uint32_t>(c)});
    remplace(Rapporteur::Intervalle(i, i + 1), reference, {0, 1});
  }
}

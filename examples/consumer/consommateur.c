/* A C host built against an installed filtres: converts a text given on the command line, in
 * the format named before it, and prints its internal text and its style runs. */
#include <filtres/filtres.h>
#include <stdio.h>
#include <string.h>

int main(int argc, char** argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: consommateur-c FORMAT TEXT\n");
    return 2;
  }
  filtres_options* options = NULL;
  filtres_document* document = NULL;
  if (filtres_options_cree(&options) != FILTRES_OK ||
      filtres_options_format(options, argv[1]) != FILTRES_OK ||
      filtres_convertit(options, argv[2], strlen(argv[2]), &document) != FILTRES_OK) {
    fprintf(stderr, "consommateur-c: %s\n", filtres_derniere_erreur());
    filtres_options_detruit(options);
    return 1;
  }
  const char* texte = NULL;
  size_t octets = 0;
  filtres_document_texte(document, &texte, &octets);
  printf("%s: %.*s\n", filtres_document_format(document), (int)octets, texte);
  for (size_t i = 0; i < filtres_document_nombre_styles(document); ++i) {
    uint32_t debut, fin, styles;
    filtres_document_style(document, i, &debut, &fin, &styles);
    printf("[%u,%u) %u\n", debut, fin, styles);
  }
  filtres_document_detruit(document);
  filtres_options_detruit(options);
  return 0;
}

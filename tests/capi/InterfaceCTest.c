/* The C interface, from C: conversion with options, text, styles and map both ways, detection,
 * corrections, and every failure as a status with a message. Prints "N passed, N failed". */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "capi/filtres.h"

static int reussis = 0, echoues = 0;

#define VERIFIE(condition)                                                    \
  do {                                                                        \
    if (condition) {                                                          \
      ++reussis;                                                              \
    } else {                                                                  \
      ++echoues;                                                              \
      fprintf(stderr, "%s:%d: failed: %s\n", __FILE__, __LINE__, #condition); \
    }                                                                         \
  } while (0)

static filtres_document* Convertit(const char* format, int exact, const char* texte) {
  filtres_options* options = NULL;
  filtres_document* document = NULL;
  VERIFIE(filtres_options_cree(&options) == FILTRES_OK);
  VERIFIE(filtres_options_format(options, format) == FILTRES_OK);
  VERIFIE(filtres_options_exact(options, exact) == FILTRES_OK);
  VERIFIE(filtres_convertit(options, texte, strlen(texte), &document) == FILTRES_OK);
  filtres_options_detruit(options);
  return document;
}

static int TexteEst(const filtres_document* document, const char* attendu) {
  const char* texte = NULL;
  size_t octets = 0;
  if (filtres_document_texte(document, &texte, &octets) != FILTRES_OK) return 0;
  return octets == strlen(attendu) && memcmp(texte, attendu, octets) == 0;
}

static void TexteStylesEtMap(void) {
  /* "\'e" is one internal unit that maps back to three document units. */
  filtres_document* d = Convertit("latex", 1, "caf\\'e \\textbf{gras}");
  VERIFIE(strcmp(filtres_document_format(d), "latex") == 0);
  VERIFIE(TexteEst(d, "caf\xC3\xA9 gras"));
  uint32_t debut = 0, fin = 0, styles = 0;
  VERIFIE(filtres_document_nombre_styles(d) == 1);
  VERIFIE(filtres_document_style(d, 0, &debut, &fin, &styles) == FILTRES_OK);
  VERIFIE(debut == 5 && fin == 9 && styles == FILTRES_GRAS);
  VERIFIE(filtres_document_vers_externe(d, 3, 4, &debut, &fin) == FILTRES_OK);
  VERIFIE(debut == 3 && fin == 6);
  uint32_t interne = 0;
  VERIFIE(filtres_document_vers_interne(d, 15, &interne) == FILTRES_OK && interne == 5);
  const uint16_t* unites = NULL;
  size_t n = 0;
  VERIFIE(filtres_document_texte_utf16(d, &unites, &n) == FILTRES_OK && n == 9 &&
          unites[3] == 0xE9);
  filtres_document_detruit(d);
}

static void ProfilEtTexteLisible(void) {
  filtres_document* d = Convertit("markdown", 0, "Run `make` now.");
  const char* lisible = NULL;
  size_t octets = 0;
  VERIFIE(TexteEst(d, "Run make now."));
  VERIFIE(filtres_document_texte_lisible(d, &lisible, &octets) == FILTRES_OK);
  VERIFIE(octets == 8 && memcmp(lisible, "Run now.", 8) == 0);
  filtres_document_detruit(d);
  /* The same document, exact: the reference keeps single backticks. */
  d = Convertit("markdown", 1, "Run `make` now.");
  VERIFIE(TexteEst(d, "Run `make` now."));
  filtres_document_detruit(d);
}

static void OptionsCommunes(void) {
  filtres_options* options = NULL;
  filtres_document* d = NULL;
  VERIFIE(filtres_options_cree(&options) == FILTRES_OK);
  VERIFIE(filtres_options_format(options, "text") == FILTRES_OK);
  VERIFIE(filtres_options_exclut(options, "ACME", 4) == FILTRES_OK);
  VERIFIE(filtres_options_balises(options, "<<", ">>") == FILTRES_OK);
  VERIFIE(filtres_options_courriel(options, 1, 0) == FILTRES_OK);
  const char* texte = "> Hi ACME <<x>> there";
  VERIFIE(filtres_convertit(options, texte, strlen(texte), &d) == FILTRES_OK);
  VERIFIE(TexteEst(d, " Hi   there"));
  filtres_document_detruit(d);
  filtres_options_detruit(options);
}

static void DetectionEtCorrections(void) {
  const char* format = NULL;
  const char* page = "<!DOCTYPE html><p>caf&eacute; mot</p>";
  VERIFIE(filtres_detecte(page, strlen(page), &format) == FILTRES_OK &&
          strcmp(format, "html") == 0);
  filtres_options* options = NULL;
  VERIFIE(filtres_options_cree(&options) == FILTRES_OK);
  /* Internal text "\ncafé mot\n": "mot" is [6,9); [0,2) cuts through "<p>". */
  const filtres_correction corrections[] = {{6, 9, "th\xC3\xA9", 4}, {0, 2, "x", 1}};
  char* corrige = NULL;
  size_t octets = 0, refusees = 0;
  VERIFIE(filtres_applique(options, page, strlen(page), corrections, 2, &corrige, &octets,
                           &refusees) == FILTRES_OK);
  VERIFIE(refusees == 1);
  VERIFIE(corrige && strcmp(corrige, "<!DOCTYPE html><p>caf&eacute; th&eacute;</p>") == 0);
  filtres_libere(corrige);
  filtres_options_detruit(options);
}

static void Echecs(void) {
  filtres_options* options = NULL;
  filtres_document* d = NULL;
  VERIFIE(filtres_options_cree(NULL) == FILTRES_ERREUR_ARGUMENT);
  VERIFIE(strlen(filtres_derniere_erreur()) > 0);
  VERIFIE(filtres_options_cree(&options) == FILTRES_OK);
  VERIFIE(filtres_options_format(options, "rtf") == FILTRES_ERREUR_ARGUMENT);
  VERIFIE(strstr(filtres_derniere_erreur(), "rtf") != NULL);
  VERIFIE(filtres_convertit(options, "a\xC3(", 3, &d) == FILTRES_ERREUR_CODAGE && d == NULL);
  VERIFIE(strstr(filtres_derniere_erreur(), "byte 1") != NULL);
  VERIFIE(filtres_convertit(options, "abc", 3, &d) == FILTRES_OK);
  uint32_t debut = 0, fin = 0;
  VERIFIE(filtres_document_vers_externe(d, 2, 9, &debut, &fin) == FILTRES_ERREUR_ARGUMENT);
  VERIFIE(filtres_document_style(d, 0, &debut, &fin, &fin) == FILTRES_ERREUR_ARGUMENT);
  filtres_document_detruit(d);
  filtres_options_detruit(options);
  filtres_document_detruit(NULL);
  filtres_options_detruit(NULL);
}

int main(void) {
  TexteStylesEtMap();
  ProfilEtTexteLisible();
  OptionsCommunes();
  DetectionEtCorrections();
  Echecs();
  printf("%d passed, %d failed\n", reussis, echoues);
  return echoues == 0 ? 0 : 1;
}

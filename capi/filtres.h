/* filtres.h: the C interface of the filter library, for hosts in C and for any language's
 * foreign-function interface. A document in LaTeX, Markdown, HTML, SRT, an e-mail or plain text
 * becomes the internal text a checker reads, with the style bits of every unit and a map from
 * every internal position back to the document; corrections go back into the document.
 *
 * Conventions
 * - Texts are UTF-8 (not necessarily NUL-terminated: a length comes with each), or UTF-16 for
 *   hosts that hold UTF-16 (the *_utf16 calls). Positions are UTF-16 code units, end exclusive,
 *   in the internal text or in the document as the map relates them.
 * - Handles are opaque; each *_cree (create) has its *_detruit (destroy), which accepts NULL.
 * - Every call that can fail returns a filtres_statut; FILTRES_OK is 0. After a failure,
 *   filtres_derniere_erreur() gives a one-line message, kept per thread until the next failure.
 *   No C++ exception ever leaves the library.
 * - Strings returned by a document handle live as long as the handle; memory returned through a
 *   char** (filtres_applique) is released with filtres_libere.
 * - A handle may be used by one thread at a time; different handles on different threads.
 */
#ifndef FILTRES_FILTRES_H
#define FILTRES_FILTRES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef enum filtres_statut {
  FILTRES_OK = 0,
  FILTRES_ERREUR_ARGUMENT = 1,  /* a NULL handle, an unknown format, a position out of range */
  FILTRES_ERREUR_CODAGE = 2,    /* the text is not valid UTF-8 */
  FILTRES_ERREUR_TROP_LONG = 3, /* more UTF-16 units than the map's 32-bit positions hold */
  FILTRES_ERREUR_MEMOIRE = 4,
  FILTRES_ERREUR_INTERNE = 5
} filtres_statut;

/* Style bits of the internal text's units. */
enum {
  FILTRES_ITALIQUE = 1,
  FILTRES_GRAS = 2,
  FILTRES_EXPOSANT = 4,
  FILTRES_INDICE = 8,
  FILTRES_NON_PROSE = 16, /* formulas, code, keys, addresses, placeholders */
  FILTRES_BARRE = 32
};

typedef struct filtres_options filtres_options;   /* what to filter and how */
typedef struct filtres_document filtres_document; /* one converted document */

/* The message of the calling thread's last failure ("" when none). */
const char* filtres_derniere_erreur(void);

/* Options: format "auto" (detected, the default), "latex", "markdown", "html", "srt", "text"
 * or "none"; the prose profile is on unless `exact` is set (the reference filters). */
filtres_statut filtres_options_cree(filtres_options** options);
void filtres_options_detruit(filtres_options* options);
filtres_statut filtres_options_format(filtres_options* options, const char* format);
filtres_statut filtres_options_exact(filtres_options* options, int exact);
/* Masks every occurrence of a string (repeatable); in an e-mail, the e-mail strings too,
 * ignoring case and accents. */
filtres_statut filtres_options_exclut(filtres_options* options, const char* chaine, size_t octets);
filtres_statut filtres_options_exclut_courriel(filtres_options* options, const char* chaine,
                                               size_t octets);
/* Masks each region from `ouvrante` to the first `fermante` after it (repeatable). */
filtres_statut filtres_options_balises(filtres_options* options, const char* ouvrante,
                                       const char* fermante);
/* The text is an e-mail: quotation markers masked, or whole quoted lines. */
filtres_statut filtres_options_courriel(filtres_options* options, int courriel, int lignes_citees);

/* Converts a document. */
filtres_statut filtres_convertit(const filtres_options* options, const char* texte, size_t octets,
                                 filtres_document** document);
filtres_statut filtres_convertit_utf16(const filtres_options* options, const uint16_t* texte,
                                       size_t unites, filtres_document** document);
void filtres_document_detruit(filtres_document* document);

/* The format the document was read as ("latex", "markdown", ...). */
const char* filtres_document_format(const filtres_document* document);
/* The internal text, exact: its positions are the map's. UTF-8 writes an unpaired surrogate
 * as U+FFFD; the UTF-16 form is exact. */
filtres_statut filtres_document_texte(const filtres_document* document, const char** texte,
                                      size_t* octets);
filtres_statut filtres_document_texte_utf16(const filtres_document* document,
                                            const uint16_t** texte, size_t* unites);
/* The internal text as a checker that reads plain text should see it: spans that are not prose
 * left out, markers as line feeds (its positions are not the map's). */
filtres_statut filtres_document_texte_lisible(const filtres_document* document, const char** texte,
                                              size_t* octets);
/* Runs of internal units with the same non-zero style bits, in order. */
size_t filtres_document_nombre_styles(const filtres_document* document);
filtres_statut filtres_document_style(const filtres_document* document, size_t indice,
                                      uint32_t* debut, uint32_t* fin, uint32_t* styles);
/* The document stretch an internal stretch comes from, and the internal position of a document
 * position (one inside a replaced stretch gives the start of its replacement). */
filtres_statut filtres_document_vers_externe(const filtres_document* document, uint32_t debut,
                                             uint32_t fin, uint32_t* debut_externe,
                                             uint32_t* fin_externe);
filtres_statut filtres_document_vers_interne(const filtres_document* document, uint32_t externe,
                                             uint32_t* interne);

/* The format a text looks like, as "auto" takes it with default options (the prose profile's
   detection): a static string, "html", "latex", "markdown", "srt" or "text". */
filtres_statut filtres_detecte(const char* texte, size_t octets, const char** format);

/* A correction of the internal text (UTF-16 positions) and its new text in UTF-8. */
typedef struct filtres_correction {
  uint32_t debut;
  uint32_t fin;
  const char* texte;
  size_t octets;
} filtres_correction;

/* Writes corrections back into the document, each re-encoded in the document's convention;
 * those that would cut through markup or overlap another are refused (counted in *refusees).
 * The corrected document, in UTF-8, is released with filtres_libere. */
filtres_statut filtres_applique(const filtres_options* options, const char* document, size_t octets,
                                const filtres_correction* corrections, size_t nombre,
                                char** corrige, size_t* octets_corriges, size_t* refusees);
void filtres_libere(void* memoire);

#ifdef __cplusplus
}
#endif

#endif /* FILTRES_FILTRES_H */

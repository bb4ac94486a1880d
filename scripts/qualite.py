#!/usr/bin/env python3
"""Quality of the filters' text on real documents, as a spell checker's user sees it.

For every document of the corpus, the command's text goes through hunspell (en_US), and so do
the document itself through the peers' own filters (hunspell -t/-H, aspell's modes). Prints,
per format: flags per 1000 prose words for each tool, the share of pandoc's prose words that
our text keeps, and the markup left in our text. The word count of a document is pandoc's
prose words (tokens of letters) where pandoc reads the format, the raw words otherwise: one denominator per
document for every tool, so the flag rates compare.

    scripts/qualite.py [--filtres build/filtres] [--corpus ../shared/corpus] [--details]
                       [--exact] [FORMAT...]
"""
import argparse
import collections
import os
import re
import subprocess
import sys

# folder: (filtres options, pandoc reader or None, markup patterns, peers)
FORMATS = {
    "latex": (["--format", "latex"], "latex",
              [r"\\[A-Za-z@]+", r"[{}]", r"\\[^A-Za-z\s]"],
              {"hunspell -t": ["hunspell", "-t"], "aspell tex": ["aspell", "--mode=tex"]}),
    "markdown": (["--format", "markdown"], "markdown",
                 [r"`", r"\]\(", r"<[A-Za-z/!][^>\n]*>", r"^\s*\[[^\]\n]+\]:\s", r"^#{1,6}\s",
                  r"\*\*", r"https?://"],
                 {"aspell markdown": ["aspell", "--mode=markdown"], "hunspell": ["hunspell"]}),
    "html": (["--format", "html"], "html",
             [r"<[A-Za-z/!][^>\n]*>", r"&[A-Za-z]+;", r"&#x?[0-9A-Fa-f]+;"],
             {"hunspell -H": ["hunspell", "-H"], "aspell html": ["aspell", "--mode=html"]}),
    "email": (["--format", "text", "--email"], None, [r"^>"],
              {"aspell email": ["aspell", "--mode=email"], "hunspell": ["hunspell"]}),
    "srt": (["--format", "srt"], None, [r"-->", r"<[a-z/][^>\n]*>", r"\{\\?[a-z]+\}"],
            {"hunspell": ["hunspell"], "aspell": ["aspell", "--mode=none"]}),
    "text": (["--format", "text"], None, [],
             {"hunspell": ["hunspell"], "aspell": ["aspell", "--mode=none"]}),
}

# A prose word: a whitespace-separated token of letters (inner apostrophes and hyphens allowed)
# once the punctuation around it is trimmed. Hashes, versions, file names and identifiers are
# not prose words, whoever keeps them.
MOT = re.compile(r"[^\W\d_]+(?:['\u2019-][^\W\d_]+)*")
AUTOUR = "()[]{}\"'<>*.,;:!?\u00ab\u00bb\u201c\u201d\u2018\u2019`"


def lance(commande, entree):
    return subprocess.run(commande, input=entree, capture_output=True).stdout


def signalements(outil, texte):
    """Flags (occurrences) a spell checker raises on a text."""
    if outil[0] == "hunspell":
        commande = ["hunspell", "-d", "en_US", "-l"] + outil[1:]
    else:
        commande = ["aspell", "-d", "en_US", "list"] + outil[1:]
    return len(lance(commande, texte).splitlines())


def mots(texte):
    jetons = (j.strip(AUTOUR) for j in texte.split())
    return collections.Counter(j.lower() for j in jetons if MOT.fullmatch(j))


def prose_pandoc(lecteur, chemin, script):
    resultat = subprocess.run(
        ["pandoc", "-f", lecteur, "-t", "plain", "--wrap=none",
         "--lua-filter", os.path.join(script, "sans-code.lua"), chemin],
        capture_output=True)
    return resultat.stdout.decode("utf-8", "replace") if resultat.returncode == 0 else None


def mesure(dossier, chemin, filtres, exact, script):
    options, lecteur, motifs, pairs = FORMATS[dossier]
    with open(chemin, "rb") as f:
        document = f.read()
    sortie = subprocess.run([filtres] + options + (["--exact"] if exact else []) + [chemin],
                            capture_output=True)
    if sortie.returncode != 0:
        raise RuntimeError(f"{chemin}: filtres failed: {sortie.stderr.decode().strip()}")
    texte = sortie.stdout.decode("utf-8", "replace")
    pandoc = prose_pandoc(lecteur, chemin, script) if lecteur else None
    reference = mots(pandoc) if pandoc is not None else None
    nous = mots(texte)
    base = sum(reference.values()) if reference else sum(mots(document.decode("utf-8", "replace")).values())
    ligne = {
        "mots": base,
        "filtres": signalements(["hunspell"], sortie.stdout),
        "garde": (sum((reference & nous).values()), sum(reference.values())) if reference else None,
        "balisage": sum(len(re.findall(m, texte, re.M)) for m in motifs),
    }
    for nom, outil in pairs.items():
        ligne[nom] = signalements(outil, document)
    return ligne


def main():
    racine = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    parseur = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parseur.add_argument("--filtres", default=os.path.join(racine, "build", "filtres"))
    parseur.add_argument("--corpus", default=os.path.join(racine, "..", "shared", "corpus"))
    parseur.add_argument("--details", action="store_true", help="one line per document too")
    parseur.add_argument("--exact", action="store_true", help="measure the reference filters")
    parseur.add_argument("formats", nargs="*", default=list(FORMATS))
    arguments = parseur.parse_args()
    script = os.path.dirname(os.path.abspath(__file__))
    print(f"{'format':9} {'words':>8} {'filtres':>8}  {'peers (flags per 1000 words)':34} "
          f"{'prose kept':>10} {'markup left':>11}")
    for dossier in arguments.formats:
        if dossier not in FORMATS:
            sys.exit(f"qualite: unknown format '{dossier}'")
        chemin_dossier = os.path.join(arguments.corpus, dossier)
        if not os.path.isdir(chemin_dossier):
            continue
        total = collections.Counter()
        gardes = [0, 0]
        for nom in sorted(os.listdir(chemin_dossier)):
            ligne = mesure(dossier, os.path.join(chemin_dossier, nom), arguments.filtres,
                           arguments.exact, script)
            garde = ligne.pop("garde")
            if garde:
                gardes[0] += garde[0]
                gardes[1] += garde[1]
            if arguments.details:
                taux = 1000 / max(ligne["mots"], 1)
                pairs = " ".join(f"{k}={v * taux:.1f}" for k, v in ligne.items()
                                 if k not in ("mots", "filtres", "balisage"))
                kept = f"{100 * garde[0] / max(garde[1], 1):.1f}%" if garde else "-"
                print(f"  {nom:40} words={ligne['mots']} filtres={ligne['filtres'] * taux:.1f} "
                      f"{pairs} kept={kept} markup={ligne['balisage']}")
            total.update(ligne)
        taux = 1000 / max(total["mots"], 1)
        pairs = ", ".join(f"{k} {v * taux:.1f}" for k, v in total.items()
                          if k not in ("mots", "filtres", "balisage"))
        kept = f"{100 * gardes[0] / gardes[1]:.1f}%" if gardes[1] else "-"
        print(f"{dossier:9} {total['mots']:>8} {total['filtres'] * taux:>8.1f}  {pairs:34} "
              f"{kept:>10} {total['balisage']:>11}")


if __name__ == "__main__":
    main()

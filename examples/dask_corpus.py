#!/usr/bin/env python3
"""Converts every file of a folder tree on a Dask distributed cluster with the filtres module,
and writes one JSON line per file: {"path", "format", "text", "styles"} (or "error").

    python3 examples/dask_corpus.py FOLDER [--scheduler ADDRESS] [--workers 2] [--exact]
                                     [-o OUTPUT.jsonl]

Without --scheduler, a local cluster of worker processes is started for the run. The workers
import the filtres module, so it must be importable where they run (installed, or on
PYTHONPATH). Files are read on the workers, so the folder must be visible from each of them.
"""
import argparse
import json
import os
import sys

from dask.distributed import Client, LocalCluster, as_completed


def convertit(chemin, exact):
    import filtres  # on the worker
    try:
        with open(chemin, encoding="utf-8", newline="") as f:
            texte = f.read()
        r = filtres.convert(texte, exact=exact)
        return {"path": chemin, "format": r.format, "text": r.text, "styles": r.styles}
    except (OSError, UnicodeDecodeError, ValueError) as erreur:
        return {"path": chemin, "error": str(erreur)}


def fichiers(dossier):
    for racine, _, noms in sorted(os.walk(dossier)):
        for nom in sorted(noms):
            yield os.path.join(racine, nom)


def main():
    parseur = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parseur.add_argument("dossier")
    parseur.add_argument("--scheduler", help="address of a running Dask scheduler")
    parseur.add_argument("--workers", type=int, default=2, help="local worker processes")
    parseur.add_argument("--exact", action="store_true", help="the reference filters")
    parseur.add_argument("-o", "--output", help="the JSON lines' file (default: standard output)")
    arguments = parseur.parse_args()

    cluster = None
    if arguments.scheduler:
        client = Client(arguments.scheduler)
    else:
        cluster = LocalCluster(n_workers=arguments.workers, threads_per_worker=1, processes=True,
                               dashboard_address=None)
        client = Client(cluster)
    try:
        chemins = list(fichiers(arguments.dossier))
        futurs = client.map(convertit, chemins, exact=arguments.exact)
        resultats = {}
        for futur in as_completed(futurs):
            resultat = futur.result()
            resultats[resultat["path"]] = resultat
        sortie = open(arguments.output, "w", encoding="utf-8") if arguments.output else sys.stdout
        with sortie if arguments.output else open(os.devnull) as _:
            for chemin in chemins:  # in the tree's order, whatever order the workers finished in
                sortie.write(json.dumps(resultats[chemin], ensure_ascii=False) + "\n")
            sortie.flush()
    finally:
        client.close()
        if cluster:
            cluster.close()


if __name__ == "__main__":
    main()

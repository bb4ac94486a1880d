#!/usr/bin/env python3
"""Peak memory and time of `filtres` on hostile documents at two sizes.

Writes, for each format, documents made of one construct repeated until the size is reached
(nested or unclosed braces, formulas, styles, unclosed tags and comments, emphasis and code
markers, nested quotes...: the shapes of the benchmarks' hostile inputs), runs filtres on each in
the prose profile and with --exact, and prints the peak resident memory (GNU time's %M) in bytes
per input byte and the seconds, at both sizes, with the time ratio of the larger to the smaller.
That ratio is the ratio of the sizes when the time is linear in the input.

    scripts/pics_hostiles.py [--filtres build/filtres] [--petit 2] [--grand 16]  (MB)

Needs GNU time (/usr/bin/time, `make deps-bench`).
"""
import argparse
import os
import subprocess
import sys
import tempfile
import time


def repete(debut, motif, taille, fin=""):
    """`debut`, then `motif` as many times as it takes to reach `taille` units, then `fin`."""
    fois = max(0, (taille - len(debut)) // len(motif) + 1)
    return debut + motif * fois + fin


# name, format, document of about n units
DOCUMENTS = [
    ("braces nested", "latex", lambda n: "{" * (n // 2) + "}" * (n // 2)),
    ("braces unclosed", "latex", lambda n: "{" * n),
    ("\\textbf{ nested", "latex", lambda n: "\\textbf{" * (n // 9) + "}" * (n // 9)),
    ("{$\\( repeated", "latex", lambda n: "{$\\(" * (n // 4)),
    ("glossary far", "latex",
     lambda n: "$\\newacronym{a}{b}{c}\\acrshort$ {a" * (n // 34) + "}"),
    ("&a ", "html", lambda n: repete("<p>x</p>", "&a ", n)),
    ("<a ", "html", lambda n: repete("", "<a ", n)),
    ("</x ", "html", lambda n: repete("<p>", "</x ", n)),
    ("<!-- x ", "html", lambda n: repete("", "<!-- x ", n)),
    ("<div> unclosed", "html", lambda n: repete("", "<div>", n)),
    ("``a ", "markdown", lambda n: repete("", "``a ", n)),
    ("*a ", "markdown", lambda n: repete("", "*a ", n)),
    ("[ unclosed", "markdown", lambda n: repete("x ", "[", n)),
    ("[a]( unclosed", "markdown", lambda n: repete("x ", "[a](", n)),
    ("<a  unclosed", "markdown", lambda n: repete("x ", "<a ", n)),
    ("<!-- a lines", "markdown", lambda n: repete("", "<!-- a\n", n)),
    ("- nested", "markdown", lambda n: repete("", "- ", n, "x")),
    ("> nested", "markdown", lambda n: repete("", "> ", n, "x")),
    ("table rows", "markdown", lambda n: repete("a | b\n--- | ---\n", "1 | 2\n", n)),
    ("a_b ", "markdown", lambda n: repete("", "a_b ", n)),
]
MODES = [("prose", []), ("exact", ["--exact"])]


def mesure(filtres, format_, mode, chemin):
    """Peak resident bytes and wall seconds of one run."""
    with tempfile.NamedTemporaryFile("r") as f:
        debut = time.perf_counter()
        subprocess.run(["/usr/bin/time", "-f", "%M", "-o", f.name, filtres, "--format", format_]
                       + mode + [chemin], stdout=subprocess.DEVNULL, check=True)
        secondes = time.perf_counter() - debut
        return int(f.read().split()[-1]) * 1024, secondes


def main():
    racine = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    args = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    args.add_argument("--filtres", default=os.path.join(racine, "build", "filtres"))
    args.add_argument("--petit", type=float, default=2, help="the smaller size, in MB")
    args.add_argument("--grand", type=float, default=16, help="the larger size, in MB")
    o = args.parse_args()
    if not os.path.exists(o.filtres):
        sys.exit(f"pics_hostiles: {o.filtres}: no such command (make build)")
    tailles = [int(o.petit * 1e6), int(o.grand * 1e6)]
    print(f"{'document':<18} {'format':<9} {'mode':<6} "
          f"{'B/B':>6} {'s':>6}   {'B/B':>6} {'s':>6}   time ratio (sizes: "
          f"{tailles[1] / tailles[0]:.0f})")
    with tempfile.TemporaryDirectory() as dossier:
        for nom, format_, document in DOCUMENTS:
            chemins = []
            for taille in tailles:
                chemin = os.path.join(dossier, f"{len(chemins)}.txt")
                with open(chemin, "w", encoding="utf-8") as f:
                    f.write(document(taille))
                chemins.append(chemin)
            for mode, options in MODES:
                ligne = f"{nom:<18} {format_:<9} {mode:<6}"
                temps = []
                for chemin in chemins:
                    octets = os.path.getsize(chemin)
                    pic, secondes = mesure(o.filtres, format_, options, chemin)
                    temps.append(secondes)
                    ligne += f" {pic / octets:6.1f} {secondes:6.2f}  "
                print(f"{ligne} {temps[1] / max(temps[0], 1e-3):5.1f}", flush=True)


if __name__ == "__main__":
    main()

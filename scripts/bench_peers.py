#!/usr/bin/env python3
"""Whole-process timing of `filtres` against the tool a user would otherwise run on each format.

Builds the big files of the corpus (make_big.sh, in a scratch copy), then for each format runs
filtres (prose profile and --exact, text and --json) and the other tool on the same file in one
hyperfine invocation, and prints per format: median seconds, MB/s of input, peak resident memory
(GNU time's %M) in bytes per input byte, and filtres's time over the other tool's (below 1:
filtres is faster).

    scripts/bench_peers.py [--filtres build/filtres] [--corpus ../shared/corpus] [--runs 10]

Needs hyperfine, GNU time (/usr/bin/time), detex, lynx, a C compiler and md4c (`make deps-bench`).
"""
import argparse
import json
import os
import shlex
import shutil
import subprocess
import sys
import tempfile

# md4c has no command that only parses; this driver runs its parser with empty callbacks.
MD4C_DRIVER = r"""
#include <md4c.h>
#include <stdio.h>
#include <stdlib.h>
static int bloc(MD_BLOCKTYPE t, void* d, void* u) { (void)t; (void)d; (void)u; return 0; }
static int portee(MD_SPANTYPE t, void* d, void* u) { (void)t; (void)d; (void)u; return 0; }
static int texte(MD_TEXTTYPE t, const MD_CHAR* x, MD_SIZE n, void* u) {
  (void)t; (void)x; (void)n; (void)u; return 0;
}
int main(int argc, char** argv) {
  FILE* f = fopen(argv[argc - 1], "rb");
  if (!f) return 2;
  fseek(f, 0, SEEK_END);
  long n = ftell(f);
  fseek(f, 0, SEEK_SET);
  char* octets = malloc(n);
  if (fread(octets, 1, n, f) != (size_t)n) return 2;
  MD_PARSER p = {0, MD_DIALECT_GITHUB, bloc, bloc, portee, portee, texte, NULL, NULL};
  return md_parse(octets, (MD_SIZE)n, &p, NULL) == 0 ? 0 : 1;
}
"""

# format, big file, filtres options, the other tool (FILE and TOOLS are filled in), its name
FORMATS = [
    ("LaTeX", "latex.tex", "--format latex", "detex FILE", "detex"),
    ("Markdown", "markdown.md", "--format markdown", "TOOLS/md4c-parse FILE", "md4c, parse only"),
    ("HTML", "html.html", "--format html", "lynx -dump -nolist FILE", "lynx -dump -nolist"),
    ("SRT", "srt.srt", "--format srt",
     "sed -E '/^[0-9]+\\r?$/d;/-->/d;s/<[^>]*>//g;s/[{][^}]*[}]//g' FILE", "sed -E"),
    ("e-mail", "email.mbox", "--format text --email", "sed -E 's/^([>|][ \\t]*)+//' FILE",
     "sed -E"),
    ("plain text", "text.txt", "--format text", "cat FILE", "cat"),
]
MODES = [("prose", ""), ("exact", "--exact"), ("prose json", "--json"),
         ("exact json", "--exact --json")]


def pic_memoire(commande):
    """Peak resident memory of one run, in bytes."""
    with tempfile.NamedTemporaryFile("r") as f:
        subprocess.run(["/usr/bin/time", "-f", "%M", "-o", f.name] + shlex.split(commande),
                       stdout=subprocess.DEVNULL, check=True)
        return int(f.read().split()[-1]) * 1024


def medianes(commandes, runs):
    """Median wall-clock seconds of each command, run in one paired hyperfine invocation."""
    with tempfile.NamedTemporaryFile("r", suffix=".json") as f:
        # Its notes on standard error (a slow first run) are shown only when it fails.
        fin = subprocess.run(["hyperfine", "-N", "--warmup", "2", "--runs", str(runs), "--style",
                              "none", "--export-json", f.name] + commandes,
                             stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        if fin.returncode != 0:
            sys.exit(f"bench_peers: hyperfine failed:\n{fin.stderr}")
        return [r["median"] for r in json.load(f)["results"]]


def main():
    racine = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    args = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    args.add_argument("--filtres", default=os.path.join(racine, "build", "filtres"))
    # The corpus lies beside the project, or beside the folder of a worktree.
    candidats = [os.path.join(racine, *[".."] * k, "shared", "corpus") for k in (1, 2)]
    args.add_argument("--corpus", default=next((c for c in candidats if os.path.isdir(c)),
                                               candidats[0]))
    args.add_argument("--runs", type=int, default=10)
    o = args.parse_args()
    for outil in ("hyperfine", "detex", "lynx", "cc"):
        if not shutil.which(outil):
            sys.exit(f"bench_peers: {outil} is missing (make deps-bench)")

    with tempfile.TemporaryDirectory() as travail:
        corpus = os.path.join(travail, "corpus")
        shutil.copytree(o.corpus, corpus, ignore=shutil.ignore_patterns("big"))
        subprocess.run(["sh", os.path.join(corpus, "make_big.sh")], check=True,
                       stdout=subprocess.DEVNULL)
        outils = os.path.join(travail, "outils")
        os.mkdir(outils)
        with open(os.path.join(outils, "md4c-parse.c"), "w") as f:
            f.write(MD4C_DRIVER)
        subprocess.run(["cc", "-O2", "-o", os.path.join(outils, "md4c-parse"),
                        os.path.join(outils, "md4c-parse.c"), "-lmd4c"], check=True)

        print("| format | MB | mode | filtres s | MB/s | peak B/B | other tool | other s | "
              "other MB/s | other peak B/B | filtres / other |")
        print("|---|---:|---|---:|---:|---:|---|---:|---:|---:|---:|")
        for nom, fichier, options, autre, nomAutre in FORMATS:
            chemin = os.path.join(corpus, "big", fichier)
            taille = os.path.getsize(chemin)
            autre = autre.replace("FILE", shlex.quote(chemin)).replace("TOOLS", outils)
            commandes = [f"{o.filtres} {options} {mode} {shlex.quote(chemin)}".replace("  ", " ")
                         for _, mode in MODES]
            temps = medianes(commandes + [autre], o.runs)
            autreTemps = temps[-1]
            autrePic = pic_memoire(autre)
            for (nomMode, _), commande, t in zip(MODES, commandes, temps):
                pic = pic_memoire(commande)
                print(f"| {nom} | {taille / 1e6:.1f} | {nomMode} | {t:.4f} | {taille / 1e6 / t:.0f} | "
                      f"{pic / taille:.1f} | {nomAutre} | {autreTemps:.4f} | "
                      f"{taille / 1e6 / autreTemps:.0f} | {autrePic / taille:.1f} | "
                      f"{t / autreTemps:.2f} |", flush=True)


if __name__ == "__main__":
    main()

"""The Python module: positions in string indexes, options, detection, corrections, errors,
and the same texts as the command on real documents."""
import json
import os
import subprocess

import pytest

import filtres

COMMANDE = os.environ.get("FILTRES_COMMANDE", "filtres")
CORPUS = os.environ.get("FILTRES_CORPUS", "")


def test_texte_styles_et_map_en_indices_de_chaine():
    # U+1D400 is one Python character and two UTF-16 units, before and inside the text.
    document = "\U0001D400 caf\\'e \\textbf{gras} \U0001D400x"
    r = filtres.convert(document, format="latex", exact=True)
    assert r.format == "latex"
    assert r.text == "\U0001D400 café gras \U0001D400x"
    assert r.styles == [(7, 11, 2)]
    assert r.to_document(2, 6) == (2, 8)      # "café" is "caf\'e" in the document
    assert r.to_document(12, 14) == (23, 25)  # an astral character is one index on both sides
    assert document[slice(*r.to_document(7, 11))] == "gras"
    assert r.to_internal(document.index("gras")) == 7


@pytest.mark.parametrize("document, options, attendu", [
    ("Run `make` now.", {"format": "markdown"}, "Run make now."),
    ("Run `make` now.", {"format": "markdown", "exact": True}, "Run `make` now."),
    ("Hi ACME <<x>> there", {"format": "text", "exclude": ["ACME"], "tags": [("<<", ">>")]},
     "Hi   there"),
    ("> quoted\nmine", {"format": "text", "email": True, "quoted_lines": True}, "\nmine"),
])
def test_options(document, options, attendu):
    assert filtres.convert(document, **options).text == attendu


def test_texte_lisible_du_profil():
    r = filtres.convert("Run `make` now, see https://example.org.", format="markdown")
    assert r.prose == "Run now, see ."


def test_detection():
    assert filtres.detect("<!DOCTYPE html><p>x</p>") == "html"
    assert filtres.detect("\\begin{document}x\\end{document}") == "latex"
    assert filtres.detect("a few words") == "text"


def test_corrections_dans_la_convention_du_document():
    assert filtres.apply("<p>caf&eacute; mot</p>", [(6, 9, "thé & co")], format="html") == \
        "<p>caf&eacute; th&eacute; &amp; co</p>"
    # Positions after an astral character count it once; a correction through markup is left out.
    assert filtres.apply("\U0001D400 \\textbf{mot} x", [(2, 5, "été"), (0, 4, "z")],
                         format="latex") == "\U0001D400 \\textbf{été} x"


@pytest.mark.parametrize("appel, erreur", [
    (lambda: filtres.convert("x", format="rtf"), ValueError),
    (lambda: filtres.convert("abc").to_document(2, 9), ValueError),
    (lambda: filtres.convert("abc").to_document(2, 1), ValueError),
    (lambda: filtres.convert("x", tags=[("", ">")]), ValueError),
    (lambda: filtres.apply("abc", [(0, 9, "x")]), ValueError),
    (lambda: filtres.convert(3), TypeError),
    (lambda: filtres.apply("abc", [(0, "1", "x")]), (TypeError, RuntimeError)),
])
def test_erreurs(appel, erreur):
    with pytest.raises(erreur):
        appel()


@pytest.mark.skipif(not os.path.isdir(CORPUS), reason="no corpus")
@pytest.mark.parametrize("chemin", ["latex/amsldoc.tex", "html/git-rebase.html",
                                    "markdown/marked-README.md", "srt/vim-subtitles-example.srt"])
def test_memes_textes_que_la_commande(chemin):
    chemin = os.path.join(CORPUS, chemin)
    with open(chemin, encoding="utf-8", newline="") as f:
        document = f.read()
    for exact in (False, True):
        commande = [COMMANDE, "--json"] + (["--exact"] if exact else []) + [chemin]
        attendu = json.loads(subprocess.run(commande, capture_output=True, check=True).stdout)
        r = filtres.convert(document, exact=exact)
        assert r.format == attendu["format"]
        assert r.text == attendu["text"]

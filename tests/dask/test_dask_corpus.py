"""examples/dask_corpus.py on a local cluster of two worker processes over the corpus gives,
file by file, the same texts as the command."""
import json
import os
import subprocess
import sys

import pytest

RACINE = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
COMMANDE = os.environ.get("FILTRES_COMMANDE", "filtres")
CORPUS = os.environ.get("FILTRES_CORPUS", "")


@pytest.mark.skipif(not os.path.isdir(CORPUS), reason="no corpus")
def test_memes_textes_que_la_commande(tmp_path):
    sortie = tmp_path / "corpus.jsonl"
    subprocess.run([sys.executable, os.path.join(RACINE, "examples", "dask_corpus.py"), CORPUS,
                    "--workers", "2", "-o", str(sortie)], check=True, timeout=600)
    lignes = [json.loads(l) for l in sortie.read_text(encoding="utf-8").splitlines()]
    chemins = [l["path"] for l in lignes]
    assert chemins == sorted(chemins, key=lambda c: (os.path.dirname(c), os.path.basename(c)))
    assert len(lignes) > 40
    for ligne in lignes:
        assert "error" not in ligne, ligne
        attendu = json.loads(subprocess.run([COMMANDE, "--json", ligne["path"]], capture_output=True,
                                            check=True).stdout)
        assert ligne["format"] == attendu["format"], ligne["path"]
        assert ligne["text"] == attendu["text"], ligne["path"]

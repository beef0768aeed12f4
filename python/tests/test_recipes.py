"""The recipes of docs/python.md, as they are written, and the pictures that they make.

MORVANE_NEW_PICTURES=1 in the environment renews those of the page.
"""

import os
import re
import shutil
from pathlib import Path

import numpy as np
import pytest
from PIL import Image

DOCS = Path(__file__).parents[2] / "docs"
PAGE = (DOCS / "python.md").read_text(encoding="utf-8")
RECIPE = r"^### ([^\n]*)\n.*?^```python\n(.*?)^```(.*?)^!\[[^\n]*\]\((images/python/(\S+))\)$"
RECIPES = re.findall(RECIPE, PAGE, re.M | re.S)
READ_ME = (Path(__file__).parents[1] / "README.md").read_text(encoding="utf-8")


def test_there_are_five_recipes():
    assert len(RECIPES) == 5


@pytest.mark.parametrize("title, code, text, picture, name", RECIPES, ids=[r[4] for r in RECIPES])
def test_recipes_make_their_pictures(title, code, text, picture, name, pattern, tmp_path, monkeypatch, capsys):
    pattern("bars", "bars_384x216_v210.raw", "v210", (384, 216), "--frames", "2")
    pattern("key", "key_192x216_bgra.raw", "bgra", (192, 216))
    pattern("zone", "zone_192x108.y4m", "y_u_v_420", (192, 108), "--frames", "12")
    shutil.copy(DOCS.parent / "examples" / "pictures" / "astronaut.png", tmp_path)
    monkeypatch.chdir(tmp_path)
    exec(compile(code, title, "exec"), {})
    said = re.findall(r"^print\(.*?\)  # (.*?)(?:, with .*)?$", code, re.M)
    said += [line for block in re.findall(r"^```\n(.*?)^```", text, re.M | re.S) for line in block.splitlines()]
    assert capsys.readouterr().out.splitlines() == said
    if os.environ.get("MORVANE_NEW_PICTURES"):
        (DOCS / picture).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(name, DOCS / picture)
    made, shown = (np.asarray(Image.open(path)) for path in (name, DOCS / picture))
    assert np.array_equal(made, shown)


def test_the_example_of_the_read_me_works():
    (code,) = re.findall(r"^```python\n(.*?)^```", READ_ME, re.M | re.S)
    known = {}
    exec(code, known)
    assert known["frame"]["cbcr"].shape == (540, 960, 2)

"""The wheel: it works for every Python from 3.11 on, and in a new environment."""

import runpy
import subprocess
import sys
from pathlib import Path

import pytest

PACKAGE = Path(__file__).parents[1]
TRIED = """
import numpy, morvane
assert morvane.convert(numpy.full((2, 2, 3), 255, numpy.uint8), "rgb24", to="nv12")["y"].tolist() == [[235] * 2] * 2
assert memoryview(morvane.Frame("nv12", (4, 2))).nbytes == 12
print(morvane.__file__)
"""


def run(*arguments, cwd):
    done = subprocess.run(list(map(str, arguments)), cwd=cwd, capture_output=True, text=True)
    assert done.returncode == 0, done.stdout + done.stderr
    return done.stdout


@pytest.fixture(scope="module", params=[PACKAGE, PACKAGE.parent], ids=["python", "root"])
def wheel(request, tmp_path_factory):
    made = tmp_path_factory.mktemp("wheel")
    run(sys.executable, "-m", "pip", "wheel", "--no-build-isolation", "--no-deps", "-w", made, ".", cwd=request.param)
    (found,) = made.glob("*.whl")
    return found


def test_a_wheel_works_in_a_new_environment(wheel, tmp_path):
    assert "-cp311-abi3-" in wheel.name
    run("/usr/bin/python3", "-m", "venv", "--system-site-packages", tmp_path / "venv", cwd=tmp_path)
    python = tmp_path / "venv" / "bin" / "python"
    run(python, "-m", "pip", "install", "--no-index", "--no-deps", wheel, cwd=tmp_path)
    assert str(tmp_path) in run(python, "-I", "-c", TRIED, cwd=tmp_path)


def test_a_finished_build_is_found_from_the_root(monkeypatch):
    monkeypatch.setenv("MORVANE_BUILD_DIR", "build/none")
    library = runpy.run_path(str(PACKAGE / "library.py"))
    assert library["ARCHIVE"].parents[2] == PACKAGE.parent / "build" / "none"
    with pytest.raises(SystemExit, match="there is no"):
        library["build"]()


def test_a_wheel_has_what_it_needs(wheel, tmp_path):
    listed = run(sys.executable, "-m", "zipfile", "-l", wheel, cwd=tmp_path)
    for name in ("_morvane.abi3.so", "_exporter.abi3.so", "py.typed", "_morvane.pyi"):
        assert f"morvane/{name}" in listed
    run(sys.executable, "-m", "zipfile", "-e", wheel, tmp_path, cwd=tmp_path)
    needed = run("objdump", "-p", tmp_path / "morvane" / "_morvane.abi3.so", cwd=tmp_path)
    assert "libstdc++" not in needed and "libmorvane" not in needed

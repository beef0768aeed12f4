"""The examples of the docstrings, and the types."""

import doctest
import importlib
import inspect
import pkgutil
import subprocess
import sys

import numpy
import pytest

import morvane

MODULES = ["morvane", *(f"morvane.{m.name}" for m in pkgutil.iter_modules(morvane.__path__))]


@pytest.mark.parametrize("name", MODULES)
def test_examples_are_true(name, pattern, tmp_path, monkeypatch):
    pattern("bars", "bars_96x8_v210.raw", "v210", (96, 8), "--frames", "2")
    monkeypatch.chdir(tmp_path)
    module = importlib.import_module(name)
    assert doctest.testmod(module, extraglobs={"morvane": morvane, "numpy": numpy}).failed == 0


@pytest.mark.parametrize("name", morvane.__all__)
def test_all_that_is_public_says_what_it_is(name):
    thing = getattr(morvane, name)
    assert inspect.getdoc(thing)
    members = vars(thing).items() if inspect.isclass(thing) else ()
    public = [m for n, m in members if not n.startswith("_") and (callable(m) or isinstance(m, property))]
    assert all(m.__doc__ for m in public)


def test_types_are_complete(tmp_path):
    done = subprocess.run(
        [sys.executable, "-m", "mypy", "--strict", "--cache-dir", tmp_path, "-p", "morvane"],
        capture_output=True, text=True, cwd=tmp_path,
    )  # fmt: skip
    assert done.returncode == 0, done.stdout

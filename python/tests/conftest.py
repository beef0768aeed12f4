"""What the tests share: the morvane command, and small pictures of any content."""

import os
import subprocess
from pathlib import Path

import numpy as np
import pytest

import morvane

ALL = morvane.formats()
# Fill and key in one frame are reached by entry points alone.
NAMES = [f.name for f in ALL if f.name != "uyvy_uyvy"]


def kin(name):
    """A format of the same kind, so that a conversion exists."""
    model = morvane.format(name).model
    return next(f.name for f in ALL if f.model == model and f.name != name and f.name != "uyvy_uyvy")


def random_frame(name, size, seed=0):
    """A frame of random bytes; where these are floats, of numbers from 0 to 1."""
    frame = morvane.Frame(name, size)
    rng = np.random.default_rng(seed)
    for plane in frame.planes.values():
        if plane.dtype.kind == "f":
            plane[:] = rng.random(plane.shape)
        else:
            plane[:] = rng.integers(0, np.iinfo(plane.dtype).max, plane.shape, plane.dtype, endpoint=True)
    return frame


@pytest.fixture(scope="session")
def command():
    build = os.environ.get("MORVANE_BUILD_DIR", Path(__file__).parents[2] / "build" / "release")
    path = Path(build) / "tool" / "morvane"
    if not path.exists():
        pytest.skip(f"there is no {path}: build it, or set MORVANE_BUILD_DIR")

    def run(*arguments, ok=(0,)):
        done = subprocess.run([path, *map(str, arguments)], capture_output=True, text=True)
        assert done.returncode in ok, done.stderr
        return done.stdout

    return run


@pytest.fixture
def pattern(command, tmp_path):
    """Draws a test picture into a file and answers its path."""

    def draw(kind, name, format, size, *more):
        path = tmp_path / name
        command("pattern", kind, path, "-f", format, "-s", f"{size[0]}x{size[1]}", *more)
        return path

    return draw

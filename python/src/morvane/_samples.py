"""The samples of a picture, whatever their storage."""

from __future__ import annotations

from functools import lru_cache
from typing import Any

import numpy as np

from ._errors import fail
from ._formats import Array, Plane, formats
from ._forms import Form
from ._morvane import ffi, lib


@lru_cache(maxsize=None)
def _lines() -> dict[str, int]:
    """The number of each component in the C interface, as planes of a single one tell it."""
    alone = [plane for f in formats() for plane in f.planes if len(plane.components) == 1]
    return {plane.components[0]: plane.counts.index(1) for plane in alone}


def _width(plane: Plane, line: int, width: int) -> int:
    """How many samples of a component a row has, without those behind the last pixel."""
    return -(-width * plane.counts[line] // plane.group_pixels)


def plane_samples(form: Form, picture: Any, index: int) -> dict[str, Array]:
    """The samples of every component of a plane: uint16 arrays of rows."""
    plane, rows = form.format.planes[index], form.layout.planes[index].rows
    names = {name: _lines()[name] for name in plane.components if name in _lines()}
    room = -(-form.size[0] // plane.group_pixels) * max(plane.counts)
    read = {line: np.zeros((rows, room), np.uint16) for line in names.values()}
    error = ffi.new("morvane_error *")
    lines = ffi.new("uint16_t *[]", lib.MORVANE_COMPONENTS)
    starts = {line: ffi.from_buffer("uint16_t[]", array) for line, array in read.items()}
    for row in range(rows):
        for line, start in starts.items():
            lines[line] = start + row * room
        if lib.morvane_read_row(form.described, picture, index, row, lines, room, error):
            fail(error)
    return {
        name: read[line][:, : _width(plane, line, form.size[0])] >> (16 - plane.bits) for name, line in names.items()
    }


def samples(form: Form, picture: Any) -> dict[str, Array]:
    """The samples of every component of a picture, in the order of storage."""
    found: dict[str, Array] = {}
    for index, plane in enumerate(form.format.planes):
        for name, rows in plane_samples(form, picture, index).items():
            # A fill and its key have the same components.
            found[f"{plane.name}.{name}" if name in found else name] = rows
    return found

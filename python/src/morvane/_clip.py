"""Files of frames, as sequences over a memory map."""

from __future__ import annotations

import builtins
import mmap
import os
import re
from collections.abc import Iterator
from typing import Any, overload

import numpy as np

from . import _y4m
from ._errors import Error, number_for
from ._formats import Array, Format, Size, format as format_of, formats_called
from ._forms import Form, form_of
from ._frame import Frame, Frames, OfOneKind
from ._morvane import lib


class Clip(OfOneKind, Frames):
    """The frames of a file. They are views of a memory map, so nothing is read before it is looked at, and the file
    must not be shortened as long as there are any.

    ``clip[3]`` is a Frame, ``clip[10:20]`` a Clip; ``format``, ``size``, ``matrix`` and ``range`` are those of every
    frame. ``convert`` takes a Clip as a batch.
    """

    def __init__(self, memory: Array, form: Form, offsets: Any, siting: str | None = None) -> None:
        self._memory = memory
        self._form = form
        self._offsets = offsets
        self.siting = siting
        """Where a y4m file says that chroma lies, as ``convert`` takes it; None where nothing is said."""

    def __len__(self) -> int:
        return len(self._offsets)

    @overload
    def __getitem__(self, index: int) -> Frame: ...

    @overload
    def __getitem__(self, index: slice) -> Clip: ...

    def __getitem__(self, index: int | slice) -> Frame | Clip:
        if isinstance(index, slice):
            return Clip(self._memory, self._form, self._offsets[index], self.siting)
        begin = self._offsets[index]
        return Frame._of(self._form, self._memory[begin : begin + self._form.layout.bytes])

    def __iter__(self) -> Iterator[Frame]:
        return (self[i] for i in builtins.range(len(self)))

    def __repr__(self) -> str:
        return f"<Clip of {len(self)} frames, {self._form}>"


def _mapped(path: str | os.PathLike[str]) -> Array:
    with builtins.open(path, "rb") as file:
        if os.fstat(file.fileno()).st_size == 0:
            return np.empty(0, np.uint8)
        return np.frombuffer(mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ), np.uint8)


def _told_by_name(path: str) -> tuple[str | None, Size | None]:
    """The format and the size that are words of a file's name: "clip_1920x1080_v210.raw"."""
    name = os.path.basename(path)
    bounds = [0, *(i + 1 for i, c in enumerate(name) if not c.isalnum()), len(name) + 1]
    words = [name[a : b - 1] for i, a in enumerate(bounds) for b in bounds[i + 1 :]]
    sizes = [match for word in words if (match := re.fullmatch(r"(\d+)[xX](\d+)", word))]
    # Names of formats may have several words of their own, so the longest that fits is the one that is meant.
    named = sorted((word for word in words if word and len(formats_called(word)) == 1), key=len)
    size = (int(sizes[0][1]), int(sizes[0][2])) if sizes else None
    return (named[-1] if named else None), size


def _form(of: Format, size: Size, matrix: int | None, range: str | None) -> Form:
    return form_of(of, size, matrix or 0, number_for("range", "range", range, "RANGE_"))


def open(
    path: str | os.PathLike[str],
    format: str | Format | None = None,
    size: Size | None = None,
    *,
    matrix: int | None = None,
    range: str | None = None,
) -> Clip:
    """Opens a file of raw frames, or a y4m file, which says itself what its frames are.

    The format and the size of raw frames may be words of the file's name, as in ``clip_1920x1080_v210.raw``. Raises
    ``Error`` if they are nowhere said, or if the file is no whole number of frames; ``OSError`` if it cannot be read.

    >>> clip = morvane.open("bars_96x8_v210.raw")
    >>> len(clip), clip[0].rgb().shape
    (2, (8, 96, 3))
    """
    memory, name = _mapped(path), os.fspath(path)
    if _y4m.is_y4m(memory):
        header = _y4m.read(memory, name)
        form = _form(header.format, header.size, matrix, range or header.range)
        return Clip(memory, form, _y4m.offsets(memory, header, form.layout.bytes, name), header.siting)
    told_format, told_size = _told_by_name(name)
    format, size = format or told_format, size or told_size
    if format is None or size is None:
        what = "format" if format is None else "size"
        raise Error(lib.MORVANE_OPTION, what, f"the {what} of {name} is needed: its name does not tell it")
    form = _form(format_of(format), (size[0], size[1]), matrix, range)
    count, rest = divmod(len(memory), form.layout.bytes)
    if rest or not count:
        message = f"{name} has {len(memory)} bytes, and a frame of {form} {form.layout.bytes}: it has no whole frames"
        raise Error(lib.MORVANE_PLANE_TOO_SHORT, "path", message, len(memory), form.layout.bytes * (count + 1))
    return Clip(memory, form, builtins.range(0, len(memory), form.layout.bytes))

"""The lines of text in YUV4MPEG2: one before the video, and one before every frame."""

from __future__ import annotations

import re
from typing import NamedTuple

import numpy as np

from ._errors import Error
from ._formats import Array, Format, Size, formats_called
from ._morvane import lib

_MAGIC = b"YUV4MPEG2"
_FRAME = b"FRAME"
_LONGEST_LINE = 4096
_COLOUR_WHEN_UNSAID = "420jpeg"
_RANGES = {"FULL": "full", "LIMITED": "video"}


class Header(NamedTuple):
    """What the first line says."""

    format: Format
    size: Size
    range: str | None
    siting: str | None
    end: int


def is_y4m(memory: Array) -> bool:
    """Whether a file begins as such video does."""
    return memory[: len(_MAGIC)].tobytes() == _MAGIC


def _refuse(name: str, why: str) -> Error:
    return Error(lib.MORVANE_OPTION, "path", f"cannot read {name} as YUV4MPEG2: {why}")


def _line(memory: Array, begin: int, name: str) -> bytes:
    line, end, _ = memory[begin : begin + _LONGEST_LINE].tobytes().partition(b"\n")
    if not end:
        raise _refuse(name, f"the line at byte {begin} has no end")
    return line


def _format(colour: str) -> Format | None:
    """Colours are called after FFmpeg's formats: 422p10 is yuv422p10le, mono16 gray16le."""
    found = re.fullmatch(r"(mono|4\d\d)(alpha|jpeg|mpeg2|paldv)?p?(\d*)", colour)
    if found is None:
        return None
    sampling, kind, bits = found.groups()
    alpha = "a" if kind == "alpha" else ""
    stem = "gray" if sampling == "mono" else f"yuv{alpha}{sampling}p"
    called = formats_called(stem + (bits + "le" if bits else ""))
    return called[0] if len(called) == 1 else None


def read(memory: Array, name: str) -> Header:
    """The first line. Raises ``Error`` where it is none, or there is no such format."""
    line = _line(memory, 0, name)
    words = [word.decode("ascii", "replace") for word in line.split()[1:]]
    said = {word[0]: word[1:] for word in words if word[0] != "X"}
    extensions = dict(word[1:].split("=", 1) for word in words if word[0] == "X" and "=" in word)
    try:
        size = int(said["W"]), int(said["H"])
    except (KeyError, ValueError):
        raise _refuse(name, "the header has no width or no height") from None
    colour = said.get("C", _COLOUR_WHEN_UNSAID)
    format = _format(colour)
    if format is None:
        raise _refuse(name, f"there is no format for its colour space C{colour}")
    range = extensions.get("COLORRANGE")
    if range is not None and range not in _RANGES:
        raise _refuse(name, f"its range {range} is neither FULL nor LIMITED")
    # Without a word of its own, chroma of 4:2:0 lies as in JPEG files.
    siting = "center" if colour in ("420jpeg", "420") else None
    return Header(format, size, None if range is None else _RANGES[range], siting, len(line) + 1)


def offsets(memory: Array, header: Header, frame_bytes: int, name: str) -> "np.ndarray[tuple[int], np.dtype[np.int64]]":
    """Where the bytes of each frame begin."""
    found: list[int] = []
    at = header.end
    while at < len(memory):
        line = _line(memory, at, name)
        if line.split(b" ")[0] != _FRAME:
            raise _refuse(name, f"a frame begins with {line[:20]!r}, not with {_FRAME.decode()}")
        begin = at + len(line) + 1
        at = begin + frame_bytes
        if at > len(memory):
            message = f"{name} ends inside a frame"
            raise Error(lib.MORVANE_PLANE_TOO_SHORT, "path", message, len(memory) - begin, frame_bytes)
        found.append(begin)
    return np.array(found, np.int64)

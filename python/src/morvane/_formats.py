"""What the catalogue knows of formats, and where the planes of a picture lie."""

from __future__ import annotations

from dataclasses import dataclass, field
from functools import lru_cache
from typing import Any

import numpy as np
import numpy.typing as npt

from ._errors import Error, fail, text, words_of
from ._morvane import ffi, lib

Size = tuple[int, int]
_FLOATS: dict[int, type[np.generic]] = {2: np.float16, 4: np.float32}
_WORDS: dict[int, type[np.generic]] = {1: np.uint8, 2: np.uint16}


@dataclass(frozen=True)
class Plane:
    """How a plane is stored: its rows are groups of pixels, of which the last one is whole.

    ``components`` are those of a group as they are stored, ``x`` where they are unused; ``image_rows`` says how many
    rows of the picture share a row of the plane; ``bits`` are those of a sample.
    """

    name: str
    components: tuple[str, ...]
    group_bytes: int
    group_pixels: int
    image_rows: int
    bits: int
    is_float: bool
    counts: tuple[int, ...] = field(repr=False)
    """How often each component occurs in a group, in the order of the C interface."""

    @property
    def dtype(self) -> np.dtype[Any]:
        """What a sample is in an array. Where samples are no whole items of memory, arrays have bytes: ``uint8``."""
        return np.dtype(self._item or np.uint8)

    @property
    def has_samples(self) -> bool:
        """Whether the items of an array are samples, and not the bytes of rows."""
        return self._item is not None

    @property
    def _item(self) -> type[np.generic] | None:
        size, rest = divmod(self.group_bytes, len(self.components))
        item = (_FLOATS if self.is_float else _WORDS).get(size)
        return item if rest == 0 and (self.is_float or 8 * size >= self.bits) else None

    def row_shape(self, row_bytes: int) -> tuple[int, ...]:
        """The shape of a row of so many bytes."""
        if not self.has_samples:
            return (row_bytes,)
        groups, samples = row_bytes // self.group_bytes, len(self.components)
        # A group is one place of the array, or one for each pixel where it has components of several pixels.
        if max(self.counts) > 1:
            groups, samples = groups * self.group_pixels, samples // self.group_pixels
        return (groups,) if samples == 1 else (groups, samples)


@dataclass(frozen=True)
class Format:
    """A pixel format with everything that the catalogue knows of it.

    ``fourcc``, ``ffmpeg``, ``v4l2``, ``gstreamer`` and ``apple`` are its names elsewhere and ``also`` more of them, ""
    where there are none; ``model`` is ``"ycbcr"``, ``"rgb"``, ``"luma"``, ``"chroma"`` or ``"alpha"``.

    >>> f = morvane.format("nv12")
    >>> f.name, f.gstreamer, f.model, [plane.name for plane in f.planes]
    ('y_uv_420', 'NV12', 'ycbcr', ['y', 'cbcr'])
    """

    name: str
    description: str
    fourcc: str
    ffmpeg: str
    v4l2: str
    gstreamer: str
    apple: str
    also: tuple[str, ...]
    model: str
    has_alpha: bool
    width_multiple: int
    height_multiple: int
    planes: tuple[Plane, ...]
    id: int = field(repr=False)

    def __str__(self) -> str:
        return self.name


@dataclass(frozen=True)
class PlaneLayout:
    """Where the rows of a plane lie, in bytes."""

    name: str
    offset: int
    stride: int
    row_bytes: int
    rows: int


@dataclass(frozen=True)
class Layout:
    """Where the planes of a picture lie, one after the other in one run of memory of ``bytes`` bytes."""

    bytes: int
    planes: tuple[PlaneLayout, ...]


_MODELS = {number: word for word, number in words_of("model").items()}


def _plane(info: Any) -> Plane:
    return Plane(
        name=text(info.name),
        components=tuple(text(info.components).split()),
        group_bytes=info.group_bytes,
        group_pixels=info.group_pixels,
        image_rows=info.image_rows,
        bits=info.bits,
        is_float=bool(info.is_float),
        counts=tuple(info.samples),
    )


@lru_cache(maxsize=None)
def _format(number: int) -> Format:
    info = ffi.new("morvane_format_info *", {"struct_size": ffi.sizeof("morvane_format_info")})
    error = ffi.new("morvane_error *")
    if lib.morvane_describe_format(number, info, error):
        fail(error)
    return Format(
        name=text(info.name),
        description=text(info.description),
        fourcc=text(info.fourcc),
        ffmpeg=text(info.ffmpeg),
        v4l2=text(info.v4l2),
        gstreamer=text(info.gstreamer),
        apple=text(info.apple),
        also=tuple(text(info.also).split()),
        model=_MODELS[info.model],
        has_alpha=bool(info.has_alpha),
        width_multiple=info.width_multiple,
        height_multiple=info.height_multiple,
        planes=tuple(_plane(info.planes[i]) for i in range(info.plane_count)),
        id=number,
    )


def formats() -> tuple[Format, ...]:
    """All formats there are.

    >>> [f.name for f in morvane.formats() if f.model == "alpha"]
    ['alpha', 'alpha_10u16', 'alpha_12u16', 'alpha_u16']
    """
    return tuple(_format(lib.morvane_format_at(i)) for i in range(lib.morvane_format_count()))


def formats_called(name: str) -> tuple[Format, ...]:
    """The formats that answer to a name of this library or of another system, whatever its case.

    >>> [f.name for f in morvane.formats_called("AYUV")]
    ['vuya', 'ayuv']
    """
    room = lib.morvane_format_count()
    found = ffi.new("morvane_format[]", room)
    count = lib.morvane_formats_called(name.encode(), found, room)
    return tuple(_format(found[i]) for i in range(count))


@lru_cache(maxsize=1024)
def _named(name: str) -> Format:
    own = lib.morvane_format_named(name.encode())
    found = (_format(own),) if own else formats_called(name)
    if len(found) == 1:
        return found[0]
    meant = " or ".join(f.name for f in found)
    message = f"format {name!r} may mean {meant}" if found else f"there is no format {name!r}"
    raise Error(lib.MORVANE_UNKNOWN_FORMAT, "format", message)


def format(name: str | Format) -> Format:
    """The format of a name: the library's own, or that of FFmpeg, GStreamer, V4L2 or CoreVideo, or a FourCC.

    Raises ``Error`` where no format has the name, or several have it.

    >>> morvane.format("rgb24").name
    'rgb'
    """
    return name if isinstance(name, Format) else _named(name)


def description(of: Format, size: Size, matrix: int = 0, range: int = 0) -> Any:
    """What the C interface calls a description."""
    width, height = size
    size_of = ffi.sizeof("morvane_description")
    try:
        return ffi.new("morvane_description *", (size_of, of.id, width, height, matrix, range))
    except OverflowError as overflow:
        raise Error(lib.MORVANE_SIZE, "size", f"the size {size} is too large") from overflow


def lay_out(described: Any, of: Format, alignment: int = 0) -> Layout:
    """The layout of a description."""
    found = ffi.new("morvane_layout *", {"struct_size": ffi.sizeof("morvane_layout")})
    error = ffi.new("morvane_error *")
    if lib.morvane_lay_out(described, alignment, found, error):
        fail(error)
    planes = tuple(
        PlaneLayout(plane.name, p.offset, p.stride, p.row_bytes, p.rows) for plane, p in zip(of.planes, found.planes)
    )
    return Layout(found.bytes, planes)


def layout(name: str | Format, size: Size, alignment: int = 0) -> Layout:
    """Where the planes of a picture of ``size`` (width and height in pixels) lie.

    With an ``alignment`` of 0 rows are as long as in files; otherwise strides and offsets are multiples of it, a power
    of two up to 4096. Raises ``Error`` for a size below 1 or beyond all memory, and for another alignment.

    >>> morvane.layout("v210", (1280, 720)).planes[0].stride
    3456
    >>> morvane.layout("nv12", (1920, 1080)).bytes
    3110400
    """
    of = format(name)
    return lay_out(description(of, size), of, alignment)


Array = npt.NDArray[Any]

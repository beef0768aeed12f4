"""How pictures are arrays: which shape and dtype a format has, and where its planes lie in an array with strides."""

from __future__ import annotations

from functools import lru_cache
from math import prod
from typing import Any, NamedTuple, NoReturn

import numpy as np

from ._errors import Error
from ._formats import Array, Format, Layout, Size, description, lay_out
from ._morvane import lib

_MOST_PLACES = 256


class PlanePlace(NamedTuple):
    """Where a plane lies in an array."""

    offset: int
    stride: int
    bytes: int


class Place(NamedTuple):
    """Where the planes of a picture lie in an array; ``batch`` says that its first axis counts pictures instead."""

    batch: bool
    planes: tuple[PlanePlace, ...]


BATCH = Place(True, ())


def is_array(of: Format) -> bool:
    """Whether pictures are arrays: whether all planes have the same shape, and their items the same meaning."""
    return len({(p.dtype, p.group_bytes, p.group_pixels, p.image_rows) for p in of.planes}) == 1


def is_whole(shape: tuple[int, ...], strides: tuple[int, ...], itemsize: int) -> bool:
    """Whether these axes of an array lie in memory without gaps and in order."""
    step = itemsize
    for length, stride in zip(reversed(shape), reversed(strides)):
        if length != 1 and stride != step:
            return False
        step *= length
    return True


def rows_place(shape: tuple[int, ...], strides: tuple[int, ...], itemsize: int, offset: int, what: str) -> PlanePlace:
    """Where a plane lies whose first axis are its rows."""
    if not is_whole(shape[1:], strides[1:], itemsize):
        message = f"{what} has rows with gaps or in another order: its strides are {strides}"
        raise Error(lib.MORVANE_STRIDE, what, message)
    row_bytes = prod(shape[1:]) * itemsize
    stride = strides[0] if shape[0] > 1 else row_bytes
    return PlanePlace(offset, stride, (shape[0] - 1) * abs(stride) + row_bytes)


class Form:
    """The pictures of one description as arrays. ``shape`` and ``dtype`` are those of an array; where the format has
    planes of different shapes, these are its bytes as in a file."""

    def __init__(self, of: Format, size: Size, matrix: int, range: int) -> None:
        self.format = of
        self.size = size
        self.matrix = matrix
        self.range = range
        self.described = description(of, size, matrix, range)
        self.layout: Layout = lay_out(self.described, of)
        self.is_array = is_array(of)
        self.shape: tuple[int, ...] = (self.layout.bytes,)
        self.dtype: np.dtype[Any] = np.dtype(np.uint8)
        if self.is_array:
            self.dtype = of.planes[0].dtype
            count = len(of.planes)
            self.shape = self.plane_shape(0) if count == 1 else (count, *self.plane_shape(0))
        self.has_padding = any(p.stride != p.row_bytes for p in self.layout.planes)
        self._places: dict[Any, Place] = {}

    def __str__(self) -> str:
        return f"{self.format} of {self.size[0]}x{self.size[1]}"

    def plane_shape(self, index: int) -> tuple[int, ...]:
        """The shape of a plane; where items are the bytes of rows, these are as long as in files."""
        plane, at = self.format.planes[index], self.layout.planes[index]
        return (at.rows, *plane.row_shape(at.row_bytes if plane.has_samples else at.stride))

    def new(self, *count: int) -> Array:
        """Memory for a picture, or for so many."""
        new = np.zeros if self.has_padding else np.empty
        return new(count + self.shape, self.dtype)

    def place(self, array: Array, what: str) -> Place:
        """Where the planes lie in an array. Raises ``Error`` if it holds no picture of this kind."""
        key = (array.shape, array.strides, array.dtype)
        found = self._places.get(key)
        if found is None:
            if len(self._places) >= _MOST_PLACES:
                self._places.clear()
            found = self._places[key] = self._find(array.shape, array.strides, array.dtype, what)
        return found

    def _find(self, shape: tuple[int, ...], strides: tuple[int, ...], dtype: np.dtype[Any], what: str) -> Place:
        if self._fits(shape, dtype):
            return Place(False, self._shaped(shape, strides, what))
        if self._fits(shape[1:], dtype):
            return BATCH
        if dtype == self.dtype or dtype == np.uint8:
            if len(shape) > 1 and prod(shape[1:]) * dtype.itemsize == self.layout.bytes:
                return BATCH
            if prod(shape) * dtype.itemsize == self.layout.bytes and is_whole(shape, strides, dtype.itemsize):
                planes = (PlanePlace(p.offset, p.stride, p.stride * p.rows) for p in self.layout.planes)
                return Place(False, tuple(planes))
        self._refuse(shape, dtype, what)

    def _fits(self, shape: tuple[int, ...], dtype: np.dtype[Any]) -> bool:
        if not self.is_array or dtype != self.dtype:
            return False
        if shape == self.shape:
            return True
        # Rows of bytes may come without what lies between them in files.
        at = self.layout.planes[0]
        return not self.format.planes[0].has_samples and shape == (at.rows, at.row_bytes)

    def _shaped(self, shape: tuple[int, ...], strides: tuple[int, ...], what: str) -> tuple[PlanePlace, ...]:
        size = self.dtype.itemsize
        if len(self.format.planes) == 1:
            return (rows_place(shape, strides, size, 0, what),)
        return tuple(rows_place(shape[1:], strides[1:], size, i * strides[0], what) for i in range(shape[0]))

    def _refuse(self, shape: tuple[int, ...], dtype: np.dtype[Any], what: str) -> NoReturn:
        needed = f"{self} is {self.dtype} of shape {self.shape}"
        if self.is_array:
            needed += f", or {self.layout.bytes} bytes as in a file"
        message = f"{what} is {dtype} of shape {shape}; {needed}"
        raise Error(lib.MORVANE_SIZE, what, message, prod(shape) * dtype.itemsize, self.layout.bytes)


@lru_cache(maxsize=256)
def form_of(of: Format, size: Size, matrix: int, range: int) -> Form:
    """The form of a description; those of late are remembered."""
    return Form(of, size, matrix, range)


@lru_cache(maxsize=None)
def _axes(of: Format) -> tuple[int, int, np.dtype[Any]]:
    """How many axes an array of a picture has before its rows, and from them on; 0 where it has no place for every
    pixel. And its dtype."""
    plane = of.planes[0]
    has_place_for_pixel = plane.group_pixels == 1 or max(plane.counts) > 1
    if not (is_array(of) and plane.has_samples and plane.image_rows == 1 and has_place_for_pixel):
        return 0, 0, plane.dtype
    return len(of.planes) > 1, 1 + len(plane.row_shape(plane.group_bytes)), plane.dtype


def size_told(of: Format, array: Array) -> Size | None:
    """The size that the shape of an array tells: of formats that are arrays with a place for every pixel."""
    shape = array.shape
    before, axes, dtype = _axes(of)
    rows = len(shape) - axes
    if axes == 0 or rows not in (before, before + 1) or array.dtype != dtype:
        return None
    return shape[rows + 1], shape[rows]


def array_of(source: Any, what: str) -> Array:
    """The memory of any object that lends some, as an array and without a copy."""
    if isinstance(source, np.ndarray):
        return source
    if hasattr(source, "__array_interface__") or hasattr(source, "__array__"):
        return np.asarray(source)
    try:
        return np.asarray(memoryview(source))
    except TypeError:
        message = f"{what} is {type(source).__name__}, which is neither an array, nor memory, nor a Frame"
        raise TypeError(message) from None


def writable_array_of(out: Any) -> Array:
    """The same for memory that is written."""
    array = array_of(out, "out")
    if not array.flags.writeable:
        raise Error(lib.MORVANE_OPTION, "out", "out is read-only")
    return array

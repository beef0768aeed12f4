"""One picture as named planes."""

from __future__ import annotations

from collections.abc import Mapping, Sequence
from functools import cached_property
from math import prod
from types import MappingProxyType
from typing import Any

import numpy as np

from . import _samples
from ._errors import Error, number_for, words_of
from ._exporter import Exporter
from ._formats import Array, Format, Size, format as format_of
from ._forms import Form, Place, array_of, form_of, rows_place
from ._morvane import lib
from ._png import png
from ._pointer import Pointer

_RANGES = {number: word for word, number in words_of("range", "RANGE_").items() if number}


class OfOneKind:
    """What all pictures have in common that are described once."""

    _form: Form

    @property
    def format(self) -> Format:
        """The format of a picture."""
        return self._form.format

    @property
    def size(self) -> Size:
        """Width and height in pixels."""
        return self._form.size

    @property
    def matrix(self) -> int | None:
        """The matrix that was said, or None."""
        return self._form.matrix or None

    @property
    def range(self) -> str | None:
        """The range that was said, or None."""
        return _RANGES.get(self._form.range)


class Frame(OfOneKind, Exporter):
    """A picture: a format, a size (width and height in pixels), and planes that are views of memory.

    Without ``data`` its memory is new, and all zero. ``data`` may be memory with the planes one after the other as in a
    file (bytes, memoryview, mmap, an array), an array of the shape that the format has, or a sequence with an array for
    every plane; nothing is copied. ``matrix`` is 601, 709 or 2020 and ``range`` ``"video"`` or ``"full"``; None is what
    is usual.

    A plane is an array of rows: ``frame["y"]`` of nv12 is uint8 of height x width, and ``frame["cbcr"]`` uint8 of half
    the height x half the width x 2. Where samples are no whole bytes or words, as in v210, rows are bytes.

    The frame lends its memory as ``frame.array``: to ``memoryview``, ``numpy.asarray``, ``PIL.Image.fromarray``,
    ``torch.from_numpy(frame.array)`` and all else that knows the buffer protocol or ``__array_interface__``.

    Raises ``Error`` for data of another size, shape or dtype.

    >>> frame = morvane.Frame("nv12", (6, 4))
    >>> {name: plane.shape for name, plane in frame.planes.items()}
    {'y': (4, 6), 'cbcr': (2, 3, 2)}
    >>> frame["y"][:] = 235
    >>> int(frame.rgb().max())
    255
    """

    def __init__(
        self,
        format: str | Format,
        size: Size,
        data: Any = None,
        *,
        matrix: int | None = None,
        range: str | None = None,
    ) -> None:
        said_range = number_for("range", "range", range, "RANGE_")
        form = form_of(format_of(format), tuple(size), matrix or 0, said_range)
        if data is None:
            data = np.zeros(form.shape, form.dtype)
        self._take(form, data)

    @classmethod
    def _of(cls, form: Form, data: Any) -> Frame:
        self = cls.__new__(cls)
        self._take(form, data)
        return self

    def _take(self, form: Form, data: Any) -> None:
        self._form = form
        self._pointer = Pointer()
        self._apart: list[Array] = []
        if isinstance(data, (list, tuple)):
            self._take_planes(data)
            return
        array = array_of(data, "data")
        place = form.place(array, "data")
        if place.batch:
            raise Error(lib.MORVANE_SIZE, "data", f"data has a batch axis: {array.shape} for one {form}")
        whole = array.size * array.itemsize
        # Bytes that come in no shape of their own get that of the format.
        if form.is_array and array.shape != form.shape and whole == prod(form.shape) * form.dtype.itemsize:
            array = array.reshape(-1).view(np.uint8).view(form.dtype).reshape(form.shape)
            place = form.place(array, "data")
        self._lent = array
        self._picture = self._pointer.to(array, place)
        self._place = place

    @cached_property
    def planes(self) -> Mapping[str, Array]:
        """The planes by their names, in their order: arrays of rows."""
        names = [plane.name for plane in self.format.planes]
        views = self._apart or [self._view(self._lent, self._place, i) for i in range(len(names))]
        return MappingProxyType(dict(zip(names, views)))

    def _view(self, array: Array, place: Place, index: int) -> Array:
        form = self._form
        if form.is_array:
            plane: Array = array if len(form.format.planes) == 1 else array[index]
            return plane
        shape, dtype = form.plane_shape(index), form.format.planes[index].dtype
        begin, stride, _ = place.planes[index]
        steps = np.empty((1, *shape[1:]), dtype).strides[1:]
        flat = array.reshape(-1).view(np.uint8)
        view: Array = np.ndarray(shape, dtype, flat, begin, (stride, *steps))
        return view

    def _take_planes(self, planes: Sequence[Any]) -> None:
        form = self._form
        if len(planes) != len(form.format.planes):
            message = f"data has {len(planes)} planes, where {form.format} has {len(form.format.planes)}"
            raise Error(lib.MORVANE_SIZE, "data", message, len(planes), len(form.format.planes))
        for i, (info, given) in enumerate(zip(form.format.planes, planes)):
            what = f"data[{i}]"
            array = array_of(given, what)
            if array.shape != form.plane_shape(i) or array.dtype != info.dtype:
                needed = f"{info.dtype} of shape {form.plane_shape(i)}"
                message = f"{what} is {array.dtype} of shape {array.shape}; the plane {info.name} of {form} is {needed}"
                raise Error(lib.MORVANE_SIZE, what, message, array.nbytes, form.layout.planes[i].row_bytes)
            place = rows_place(array.shape, array.strides, array.itemsize, 0, what)
            at = Pointer().to(array, Place(False, (place,)))
            self._pointer.picture.data[i] = at.data[0]
            self._pointer.picture.stride[i] = place.stride
            self._pointer.picture.bytes[i] = place.bytes
            self._apart.append(array)
        self._picture = self._pointer.picture

    @property
    def array(self) -> Array:
        """All its memory as one array: in the shape of the format if its planes have one shape, else bytes as in a
        file.

        Raises ``BufferError`` if the planes were given one by one.
        """
        if self._lent is None:
            raise BufferError("the planes of this frame lie apart")
        array: Array = self._lent
        return array

    @property
    def __array_interface__(self) -> dict[str, Any]:
        interface: dict[str, Any] = self.array.__array_interface__
        return interface

    def __getitem__(self, plane: str) -> Array:
        return self.planes[plane]

    def __reduce__(self) -> tuple[Any, ...]:
        data = self._apart or self.array
        return _made_again, (self.format.name, self.size, data, self.matrix, self.range)

    def __repr__(self) -> str:
        width, height = self.size
        return f"<Frame {self.format} {width}x{height}>"

    def to(self, format: str | Format, **options: Any) -> Frame:
        """The picture in another format, as a Frame. The options are those of ``convert`` but ``size`` and ``out``.

        >>> morvane.Frame("nv12", (6, 4)).to("v210").format.name
        'v210'
        """
        from ._plan import Options, plan_for

        plan = plan_for(self, None, format, None, Options(**options))
        made = Frame._of(plan.destination, plan.destination.new())
        plan.run(self, made)
        return made

    def rgb(self, **options: Any) -> Array:
        """The picture as RGB of 8 bits and full range: uint8 of height x width x 3. The options are those of
        ``convert``.

        Raises ``Error`` for formats of alpha or chroma alone.

        >>> morvane.Frame("uyvy", (4, 2)).rgb().shape
        (2, 4, 3)
        """
        return self.to("rgb", **options).array

    def samples(self) -> dict[str, Array]:
        """The samples of every component, whatever their storage: uint16 arrays of rows, with as many bits as the
        format has; floats are the words of 16 bits that they are converted by.

        >>> {name: lines.shape for name, lines in morvane.Frame("v210", (7, 2)).samples().items()}
        {'Cb': (2, 4), 'Y': (2, 7), 'Cr': (2, 4)}
        """
        return _samples.samples(self._form, self._picture)

    def _repr_png_(self) -> bytes | None:
        """The picture for a notebook; None for formats of alpha or chroma alone, which have no colour."""
        try:
            return png(self.rgb())
        except Error as error:
            if error.code != lib.MORVANE_NO_WAY:
                raise
            return None


def _made_again(format: str, size: Size, data: Any, matrix: int | None, range: str | None) -> Frame:
    return Frame(format, size, data, matrix=matrix, range=range)


class Frames(Sequence[Frame]):
    """A sequence of pictures of one kind, which ``convert`` takes as a batch."""


def is_batch(source: Any) -> bool:
    """Whether something is a sequence of pictures, not counting arrays."""
    return isinstance(source, (list, tuple, Frames))

"""Pictures of the C interface that point into arrays."""

from __future__ import annotations

from typing import Any

from ._formats import Array
from ._forms import Place
from ._morvane import ffi, lib

_CHARS = ffi.typeof("char *")
_SIZE = ffi.sizeof("morvane_picture")


class Pointer:
    """A picture of the C interface, pointed to one array after the other."""

    __slots__ = ("picture", "_data", "_place")

    def __init__(self) -> None:
        self.picture: Any = ffi.new("morvane_picture *", {"struct_size": _SIZE})
        self._data = self.picture.data
        self._place: Place | None = None

    def to(self, array: Array, place: Place) -> Any:
        """The picture in an array, which has to live as long as it is used."""
        if array.flags.c_contiguous:
            first = ffi.from_buffer(array)
        else:
            first = ffi.cast(_CHARS, array.__array_interface__["data"][0])
        if place is not self._place:
            for i, (_, stride, size) in enumerate(place.planes):
                self.picture.stride[i] = stride
                self.picture.bytes[i] = size
            self._place = place
        for i, plane in enumerate(place.planes):
            self._data[i] = first + plane[0]
        return self.picture


class Workspace:
    """What one run of a plan needs beside the arrays."""

    __slots__ = ("source", "out", "error", "scratch", "scratch_bytes")

    _allocate = ffi.new_allocator(should_clear_after_alloc=False)

    def __init__(self, plan: Any) -> None:
        self.source = Pointer()
        self.out = Pointer()
        self.error: Any = ffi.new("morvane_error *")
        self.scratch_bytes: int = lib.morvane_plan_scratch_bytes(plan)
        self.scratch: Any = Workspace._allocate("char[]", self.scratch_bytes) if self.scratch_bytes else ffi.NULL

"""Pixel formats of video, converted exactly and at memory speed, as arrays of numpy.

>>> rgb = numpy.zeros((1080, 1920, 3), numpy.uint8)
>>> frame = morvane.convert(rgb, "rgb24", to="nv12")
>>> frame["cbcr"].shape, int(frame["y"][0, 0])
((540, 960, 2), 16)
>>> morvane.convert(frame, to="rgbpf32").shape
(3, 1080, 1920)
"""

from ._clip import Clip, open
from ._compare import Comparison, Difference, compare
from ._errors import Error
from ._formats import Format, Layout, Plane, PlaneLayout, format, formats, formats_called, layout
from ._frame import Frame
from ._plan import Plan, convert

__all__ = [
    "Clip",
    "Comparison",
    "Difference",
    "Error",
    "Format",
    "Frame",
    "Layout",
    "Plan",
    "Plane",
    "PlaneLayout",
    "compare",
    "convert",
    "format",
    "formats",
    "formats_called",
    "layout",
    "open",
]

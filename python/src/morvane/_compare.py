"""How far pictures differ, component by component."""

from __future__ import annotations

from collections.abc import Iterable
from dataclasses import dataclass
from math import inf, log10
from typing import Any

import numpy as np

from ._errors import Error
from ._frame import Frame, is_batch
from ._morvane import lib


@dataclass(frozen=True)
class Difference:
    """Of one component: the greatest difference of two samples, the sum of all, how many samples there are, and the
    signal-to-noise ratio in decibels, which is infinite where nothing differs."""

    maximum: int
    sum: int
    count: int
    psnr: float

    @property
    def mean(self) -> float:
        """The average difference of two samples."""
        return self.sum / self.count


@dataclass(frozen=True)
class Comparison:
    """The differences of two pictures or sequences, by the names of the components, and over all of them."""

    components: dict[str, Difference]
    overall: Difference
    frames: int

    @property
    def identical(self) -> bool:
        """Whether all samples are the same."""
        return self.overall.maximum == 0

    def __getitem__(self, component: str) -> Difference:
        return self.components[component]


class _Sums:
    def __init__(self) -> None:
        self.maximum = self.absolute = self.count = 0
        self.squares = 0.0

    def add(self, a: Any, b: Any, bits: int) -> None:
        gaps = np.abs(a.astype(np.int32) - b)
        self.maximum = max(self.maximum, int(gaps.max()))
        self.absolute += int(gaps.sum(dtype=np.int64))
        self.count += gaps.size
        self.squares += float((gaps.astype(np.float64) ** 2).sum()) / ((1 << bits) - 1) ** 2

    def add_sums(self, other: _Sums) -> None:
        self.maximum = max(self.maximum, other.maximum)
        self.absolute += other.absolute
        self.count += other.count
        self.squares += other.squares

    def difference(self) -> Difference:
        psnr = 10 * log10(self.count / self.squares) if self.squares else inf
        return Difference(self.maximum, self.absolute, self.count, psnr)


def _pairs(a: Any, b: Any) -> Iterable[tuple[Frame, Frame]]:
    if isinstance(a, Frame) and isinstance(b, Frame):
        return [(a, b)]
    if not (is_batch(a) and is_batch(b)):
        raise TypeError("compare() takes two Frames, or two sequences of them")
    if len(a) != len(b) or not len(a):
        raise Error(lib.MORVANE_SIZE, "b", f"sequences of {len(a)} and {len(b)} frames", len(b), len(a))
    return zip(a, b)


def compare(a: Any, b: Any) -> Comparison:
    """Compares two Frames, or two sequences of as many, sample by sample; both have the same format and size.

    Samples are as ``Frame.samples`` has them: 0 to 255 in 8 bits, to 1023 in 10 bits and so on. Raises ``Error`` where
    formats, sizes or numbers of frames differ, and ``TypeError`` for what is no Frame.

    >>> a, b = morvane.Frame("nv12", (4, 2)), morvane.Frame("nv12", (4, 2))
    >>> b["y"][0, 0] = 3
    >>> found = morvane.compare(a, b)
    >>> found["Y"].maximum, found["Y"].sum, round(found["Y"].psnr, 2), found["Cb"].psnr
    (3, 3, 47.62, inf)
    """
    sums: dict[str, _Sums] = {}
    frames = 0
    for one, other in _pairs(a, b):
        if one.format != other.format or one.size != other.size:
            raise Error(lib.MORVANE_NO_WAY, "b", f"cannot compare {one._form} with {other._form}")
        bits = one.format.planes[0].bits  # which all planes of a format have
        others = other.samples()
        for name, samples in one.samples().items():
            sums.setdefault(name, _Sums()).add(samples, others[name], bits)
        frames += 1
    overall = _Sums()
    for component in sums.values():
        overall.add_sums(component)
    return Comparison({name: s.difference() for name, s in sums.items()}, overall.difference(), frames)

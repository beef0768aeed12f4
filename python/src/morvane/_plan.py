"""Conversions: one call, or a plan for many pictures."""

from __future__ import annotations

from collections.abc import Sequence
from functools import lru_cache
from typing import Any, NamedTuple

from ._errors import Error, fail, number_for, text
from ._formats import Array, Format, Size, format as format_of
from ._forms import Form, array_of, form_of, size_told, writable_array_of
from ._frame import Frame, is_batch
from ._morvane import ffi, lib
from ._pointer import Workspace

_run = lib.morvane_plan_run


class Plan:
    """A conversion that is made once and then converts any number of pictures; many threads may run it at a time.

    ``source`` and ``to`` are formats, ``size`` is width and height in pixels. The other arguments are those of
    ``convert``. Attributes: ``steps`` and ``losses`` say in sentences what is done, and what of a picture is lost.

    Raises ``Error`` where there is no conversion, or an option that there is not.

    >>> plan = morvane.Plan("p010", "bgr", (64, 48))
    >>> plan.losses
    ('10 to 8 bits',)
    >>> plan(numpy.zeros(morvane.layout("p010", (64, 48)).bytes, numpy.uint8)).shape
    (48, 64, 3)
    """

    def __init__(
        self,
        source: str | Format,
        to: str | Format,
        size: Size,
        *,
        matrix: int | None = None,
        range: str | None = None,
        to_matrix: int | None = None,
        to_range: str | None = None,
        rgb_range: str | None = None,
        chroma: str | None = None,
        siting: str | None = None,
        background: tuple[int, int, int] | None = None,
        threads: int = 1,
        stores: str | None = None,
        via: str | None = None,
        allow_irregular: bool = False,
        rescale: bool = False,
    ) -> None:
        self.source = _form(source, size, matrix, range, rgb_range)
        """The pictures that it takes."""
        destination = _form(to, size, matrix, range, rgb_range)
        if to_matrix is not None or to_range is not None:
            said = destination.range if to_range is None else number_for("range", "to_range", to_range, "RANGE_")
            destination = form_of(destination.format, size, to_matrix or destination.matrix, said)
        self.destination = destination
        """The pictures that it makes."""
        name = ffi.new("char[]", via.encode()) if via else ffi.NULL
        how = ffi.new("morvane_options *", {"struct_size": ffi.sizeof("morvane_options")})
        how.filter = number_for("filter", "chroma", chroma)
        how.siting = number_for("siting", "siting", siting)
        how.stores = number_for("stores", "stores", stores)
        how.threads = threads
        how.via, how.allow_irregular, how.rescale = name, allow_irregular, rescale
        if background is not None:
            how.has_background = True
            how.background[0:3] = _levels(background)
        error = ffi.new("morvane_error *")
        made = lib.morvane_plan_create(self.source.described, destination.described, how, error)
        if made == ffi.NULL:
            fail(error)
        self._plan = ffi.gc(made, lib.morvane_plan_destroy)
        self._spare: list[Workspace] = []

    @property
    def steps(self) -> tuple[str, ...]:
        """What it does, in order."""
        return self._sentences(lib.morvane_plan_step)

    @property
    def losses(self) -> tuple[str, ...]:
        """What of a picture is lost."""
        return self._sentences(lib.morvane_plan_loss)

    def _sentences(self, told: Any) -> tuple[str, ...]:
        found: list[str] = []
        while (sentence := told(self._plan, len(found))) != ffi.NULL:
            found.append(text(sentence))
        return tuple(found)

    def run(self, source: Any, out: Any = None) -> Any:
        """Converts a picture, or each of a batch; the other Python threads run meanwhile.

        ``source`` is a Frame; an array of the shape and dtype that the format has (``plan.source.shape``), with any
        strides from row to row; or its bytes as in a file, as bytes, memoryview, mmap or array. One more axis in front,
        a list, a tuple or a Clip are a batch. The result goes to ``out``, which is of the same kinds, and is returned.
        Without ``out`` it is a new array where all planes have one shape, else a Frame, and for a batch an array with
        an axis in front or a list of Frames.

        What the plan was made for holds, whatever matrix and range a Frame says.

        Raises ``Error`` for a wrong size, shape, dtype or stride, for memory that overlaps, and for ``out`` that is
        read-only. Nothing is written then; of a batch, what came before may be.
        """
        if isinstance(source, Frame):
            array, picture = None, source._picture
            self._expect(source, self.source, "source")
        elif is_batch(source):
            return self._run_batch(source, out)
        else:
            array = array_of(source, "source")
            place = self.source.place(array, "source")
            if place.batch:
                return self._run_batch(array, out)
        made = None
        if out is None:
            made = out = self.destination.new()
        try:
            workspace = self._spare.pop()
        except IndexError:
            workspace = Workspace(self._plan)
        try:
            if array is not None:
                picture = workspace.source.to(array, place)
            result = self._picture_of_out(workspace, out)
            if _run(self._plan, picture, result, workspace.scratch, workspace.scratch_bytes, workspace.error):
                fail(workspace.error)
        finally:
            self._spare.append(workspace)
        if made is not None and not self.destination.is_array:
            return Frame._of(self.destination, made)
        return out

    __call__ = run

    def _picture_of_out(self, workspace: Workspace, out: Any) -> Any:
        if isinstance(out, Frame):
            self._expect(out, self.destination, "out")
            if not all(plane.flags.writeable for plane in out.planes.values()):
                raise Error(lib.MORVANE_OPTION, "out", "out is read-only")
            return out._picture
        array = writable_array_of(out)
        place = self.destination.place(array, "out")
        if place.batch:
            raise Error(lib.MORVANE_SIZE, "out", "out is a batch, and the source one picture")
        return workspace.out.to(array, place)

    def _run_batch(self, source: Sequence[Any] | Array, out: Any) -> Any:
        result = out
        if out is None:
            result = out = self.destination.new(len(source))
            if not self.destination.is_array:
                result = [Frame._of(self.destination, one) for one in out]
        elif not is_batch(out):
            out = writable_array_of(out)
            if not self.destination.place(out, "out").batch:
                raise Error(lib.MORVANE_SIZE, "out", "out is one picture, and the source a batch")
        if len(out) != len(source):
            message = f"out has {len(out)} pictures, and the source {len(source)}"
            raise Error(lib.MORVANE_SIZE, "out", message, len(out), len(source))
        for one, into in zip(source, out):
            self.run(one, into)
        return result

    @staticmethod
    def _expect(frame: Frame, form: Form, what: str) -> None:
        if frame._form is not form and (frame.format is not form.format or frame.size != form.size):
            raise Error(lib.MORVANE_SIZE, what, f"{what} is {frame._form}; the plan has {form} here")

    def __repr__(self) -> str:
        return f"<Plan {self.source.format} to {self.destination.format} {self.source.size[0]}x{self.source.size[1]}>"


def _form(name: str | Format, size: Size, matrix: int | None, range: str | None, rgb_range: str | None) -> Form:
    of = format_of(name)
    word = ("rgb_range", rgb_range) if of.model == "rgb" else ("range", range)
    return form_of(of, size, matrix or 0, number_for("range", *word, "RANGE_"))


def _levels(background: tuple[int, int, int]) -> tuple[int, int, int]:
    levels = [int(level) for level in background]
    if len(levels) != 3 or not all(0 <= level <= 255 for level in levels):
        message = f"background {background} is not red, green and blue, each from 0 to 255"
        raise Error(lib.MORVANE_OPTION, "background", message)
    return levels[0], levels[1], levels[2]


class Options(NamedTuple):
    """What ``convert`` and ``Plan`` have in common."""

    matrix: int | None = None
    range: str | None = None
    to_matrix: int | None = None
    to_range: str | None = None
    rgb_range: str | None = None
    chroma: str | None = None
    siting: str | None = None
    background: tuple[int, int, int] | None = None
    threads: int = 1
    stores: str | None = None
    via: str | None = None
    allow_irregular: bool = False
    rescale: bool = False


@lru_cache(maxsize=32)
def _remembered(source: str | Format, to: str | Format, size: Size, options: Options) -> Plan:
    return Plan(source, to, size, **options._asdict())


def _with_what_is_said(options: Options, frame: Frame) -> Options:
    options = options._replace(matrix=options.matrix or frame.matrix)
    if frame.format.model == "rgb":
        return options._replace(rgb_range=options.rgb_range or frame.range)
    return options._replace(range=options.range or frame.range)


def plan_for(source: Any, format: str | Format | None, to: str | Format, size: Size | None, options: Options) -> Plan:
    """The plan that converts this source; plans of late are remembered. What a Frame says of itself holds for it."""
    one = source[0] if is_batch(source) and len(source) > 0 else source
    if isinstance(one, Frame):
        format, size = format or one.format, size or one.size
        if one.matrix or one.range:
            options = _with_what_is_said(options, one)
    if format is None:
        raise TypeError("the format is needed of a source that is no Frame")
    if size is None:
        size = size_told(format_of(format), array_of(one, "source"))
    if size is None:
        message = f"the size is needed: a source of {format_of(format)} does not tell it by this shape"
        raise Error(lib.MORVANE_SIZE, "size", message)
    if options.background is not None:
        options = options._replace(background=_levels(options.background))
    return _remembered(format, to, (size[0], size[1]), options)


def convert(
    source: Any,
    format: str | Format | None = None,
    *,
    to: str | Format,
    size: Size | None = None,
    out: Any = None,
    matrix: int | None = None,
    range: str | None = None,
    to_matrix: int | None = None,
    to_range: str | None = None,
    rgb_range: str | None = None,
    chroma: str | None = None,
    siting: str | None = None,
    background: tuple[int, int, int] | None = None,
    threads: int = 1,
    stores: str | None = None,
    via: str | None = None,
    allow_irregular: bool = False,
    rescale: bool = False,
) -> Any:
    """Converts a picture, or a batch of them, from one format to another.

    ``source`` and ``out`` are what ``Plan.run`` takes, and the result is what it returns. Arrays that go in or out are
    not copied. ``format`` is that of the source, which a Frame says itself, and ``to`` that of the result, by any of
    their names. ``size`` (width and height in pixels) is needed only where the shape of the source does not tell it.

    ``matrix`` (601, 709 or 2020) and ``range`` (``"video"`` or ``"full"``) are those of YCbCr on both sides, and
    ``rgb_range`` that of RGB; ``to_matrix`` and ``to_range`` are for the result alone. ``chroma`` (``"linear"`` or
    ``"nearest"``) says how chroma is resampled, and ``siting`` (``"left"`` or ``"center"``) where it lies. A source
    with alpha is laid over ``background`` (red, green and blue, 0 to 255) where the result has no alpha. ``threads``
    share each picture. ``stores`` is ``"cached"``, ``"streaming"`` or ``"by_size"``. ``via`` names an entry point that
    converts instead of the rules, which ``allow_irregular`` lets be an irregular one, and which stretches luma by
    ``rescale``.

    Arrays have, of a picture of width W and height H:

    ========================================  =======================================  ============================
    formats                                   shape                                    dtype
    ========================================  =======================================  ============================
    bgra, rgb24, ayuv64, rgbaf32, ...         H x W x samples of a pixel               uint8, uint16, float16 or 32
    uyvy, y210, ...                           H x W (made even) x 2                    uint8, uint16
    gray, alpha, ...                          H x W                                    uint8, uint16
    gbrp, yuv444p, rgbpf32, ...               planes x H x W                           uint8, uint16, float32
    v210, r210, x2rgb10, ...                  H x bytes of a row in a file             uint8
    ========================================  =======================================  ============================

    All others are Frames, or as bytes in a file. Floats are from 0 to 1; words hold their bits where the format says.

    Raises ``Error`` for what ``Plan`` and ``Plan.run`` refuse, and ``TypeError`` for what is no memory.

    >>> bgra = numpy.full((2, 4, 4), 255, numpy.uint8)
    >>> morvane.convert(bgra, "bgra", to="uyvy")[0, 0].tolist()
    [128, 235]
    >>> morvane.convert(bytes(16), "bgra", to="rgbpf32", size=(2, 2)).dtype
    dtype('float32')
    >>> morvane.convert(bgra[::-1, :3], "bgra", to="gray", out=numpy.empty((2, 3), numpy.uint8)).tolist()
    [[235, 235, 235], [235, 235, 235]]
    """
    options = Options(
        matrix, range, to_matrix, to_range, rgb_range, chroma, siting,
        background, threads, stores, via, allow_irregular, rescale,
    )  # fmt: skip
    return plan_for(source, format, to, size, options).run(source, out)

"""The one exception, and the words that stand for numbers of the C interface."""

from __future__ import annotations

from typing import Any, NoReturn

from ._morvane import ffi, lib

PREFIX = "MORVANE_"


def words_of(enum: str, skip: str = "") -> dict[str, int]:
    """The enumerators of the C header in small letters, without what all their names begin with."""
    numbers: dict[str, int] = ffi.typeof(f"enum morvane_{enum}").relements
    return {name.removeprefix(PREFIX).removeprefix(skip).lower(): number for name, number in numbers.items()}


_REASONS = {number: word for word, number in words_of("code").items()}


class Error(ValueError):
    """Why a call was refused. Nothing was written then.

    ``code`` is the number that ``morvane.h`` has for the reason, and ``reason`` its name in small letters:
    ``"stride"``, ``"overlap"``, ``"unknown_format"`` and so on. ``argument`` says what was wrong, such as
    ``"source.stride[0]"``; ``got`` and ``needed`` are the numbers in question, 0 where they are none; ``message`` is
    one sentence.

    >>> try:
    ...     morvane.layout("v210", (0, 720))
    ... except morvane.Error as error:
    ...     print(error.reason, error.argument, error.got, error.needed)
    size description.width 0 1
    """

    def __init__(self, code: int, argument: str, message: str, got: int = 0, needed: int = 0) -> None:
        super().__init__(message)
        self.code = code
        self.argument = argument
        self.message = message
        self.got = got
        self.needed = needed

    @property
    def reason(self) -> str:
        """The name of the code in small letters."""
        return _REASONS[self.code]

    def __reduce__(self) -> tuple[Any, ...]:
        return type(self), (self.code, self.argument, self.message, self.got, self.needed)


def text(pointer: Any) -> str:
    """A C string, or "" for none."""
    return "" if pointer == ffi.NULL else str(ffi.string(pointer), "utf-8")


def fail(error: Any) -> NoReturn:
    """Raises what the library has filled in."""
    raise Error(error.code, text(error.argument), text(error.message), error.got, error.needed)


def number_for(enum: str, argument: str, word: str | None, skip: str = "") -> int:
    """What the C interface calls by this word; 0, its default, for None."""
    if word is None:
        return 0
    words = words_of(enum, skip)
    if word not in words:
        raise Error(lib.MORVANE_OPTION, argument, f"{argument} {word!r} is none of {', '.join(words)}")
    return words[word]

"""What a call comes to."""

import ctypes
import enum
from typing import Any, Callable, NamedTuple, Optional, Tuple

from . import _library


class Status(enum.IntEnum):
    """How a call ended."""

    CONVERTED = _library.CONVERTED
    """There is what was asked for, though there may be problems."""

    REJECTED = _library.REJECTED
    """The text can be read, but not be converted: the problems say why."""

    WRONG_LAYOUT = _library.WRONG_LAYOUT
    """A text is of another layout than was asked for: the problems say what to do."""

    UNREADABLE = _library.UNREADABLE
    """A text is not what is read there, or no JSON: the problems say where."""


class WrongUsage(ValueError):
    """The call makes no sense, whatever the text is."""


class Problem(NamedTuple):
    """Something to say about a text, and its place there."""

    severity: str
    """"error": has to be mended; "warning": left out, and the rest converted; "note": good to know."""

    which: str
    """The text it is in: "text" is the first one of the call, "other" the second."""

    pointer: Optional[str]
    """The place as a JSON Pointer, "" for the whole text."""

    line: Optional[int]
    """From 1."""

    column: Optional[int]
    """From 1, in characters."""

    offset: Optional[int]
    """From 0, in bytes of UTF-8: where the value starts, or the object or array that lacks one."""

    length: Optional[int]
    """Of the value, in bytes; 0 where nothing is there."""

    function: str
    """Who says so: a function of the library, or "parse", "layout", "partial", "diagnostic"."""

    message: str

    def __str__(self) -> str:
        place = "" if self.line is None else "%s:%s: " % (self.line, self.column)
        pointer = self.pointer + ": " if self.pointer else ""
        return "%s%s: %s%s [%s]" % (place, self.severity, pointer, self.message, self.function)


class Loss(NamedTuple):
    """A value that does not come back as it was from a conversion there and back."""

    kind: str
    """"dropped", "cut", "changed", "defaulted" or "renumbered"."""

    pointer: str
    line: int
    column: int
    offset: int
    length: int

    before: Optional[str]
    """The value, as JSON with its secrets masked."""

    after: Optional[str]
    """What comes back in its place, likewise."""


class Result(NamedTuple):
    """What a call came to."""

    status: Status

    output: Optional[bytes]
    """What was asked for, as JSON in UTF-8; None where there is none."""

    problems: Tuple[Problem, ...]
    """In the order in which they were found."""

    losses: Tuple[Loss, ...]
    """In the order of their places; only where they were asked for."""

    direction: Optional[str]
    """"new" or "old": the layout that the text was, or would have been, converted to."""

    @property
    def ok(self) -> bool:
        """Whether the text was converted."""
        return self.status is Status.CONVERTED

    @property
    def text(self) -> Optional[str]:
        """The output as a str."""
        return None if self.output is None else self.output.decode()


_SEVERITIES = {_library.ERROR: "error", _library.WARNING: "warning", _library.NOTE: "note"}
_TEXTS = {_library.IN_REQUEST: "request", _library.IN_TEXT: "text", _library.IN_OTHER: "other"}
_KINDS = {
    _library.DROPPED: "dropped",
    _library.CUT: "cut",
    _library.CHANGED: "changed",
    _library.DEFAULTED: "defaulted",
    _library.RENUMBERED: "renumbered",
}
_DIRECTIONS = {_library.TO_NEW: "new", _library.TO_OLD: "old"}


def _text_of(text: Optional[bytes]) -> Optional[str]:
    return None if text is None else text.decode("utf-8", "replace")


def _problem(given: _library.Problem) -> Problem:
    has_place = given.line != 0
    return Problem(
        severity=_SEVERITIES[given.severity],
        which=_TEXTS[given.which],
        pointer=_text_of(given.pointer),
        line=given.line if has_place else None,
        column=given.column if has_place else None,
        offset=given.offset if has_place else None,
        length=given.length if has_place else None,
        function=_text_of(given.function) or "",
        message=_text_of(given.message) or "",
    )


def _loss(given: _library.Loss) -> Loss:
    return Loss(
        kind=_KINDS[given.kind],
        pointer=_text_of(given.pointer) or "",
        line=given.line,
        column=given.column,
        offset=given.offset,
        length=given.length,
        before=_text_of(given.before),
        after=_text_of(given.after),
    )


def _all(result: int, count: int, fill: Callable[..., int], given: Any, made: Callable[[Any], Any]) -> Tuple[Any, ...]:
    found = []
    given.size = ctypes.sizeof(given)
    for index in range(count):
        if fill(result, index, ctypes.byref(given)) != 0:
            raise SystemError("the library does not give what it counts")
        found.append(made(given))
    return tuple(found)


def _output(library: ctypes.CDLL, result: int) -> Optional[bytes]:
    length = ctypes.c_size_t()
    address = library.k_text_output(result, ctypes.byref(length))
    return None if address is None else ctypes.string_at(address, length.value)


def taken(library: ctypes.CDLL, result: int) -> Result:
    """Copies what the library's result holds. Raises what is no result."""
    status = library.k_text_status(result)
    if status == _library.OUT_OF_MEMORY:
        raise MemoryError("there is too little memory to convert the text")
    count = library.k_text_problem_count(result)
    problems = _all(result, count, library.k_text_problem, _library.Problem(), _problem)
    if status == _library.WRONG_USAGE:
        raise WrongUsage("; ".join(problem.message for problem in problems))
    return Result(
        status=Status(status),
        output=_output(library, result),
        problems=problems,
        losses=_all(result, library.k_text_loss_count(result), library.k_text_loss, _library.Loss(), _loss),
        direction=_DIRECTIONS.get(library.k_text_direction(result)),
    )

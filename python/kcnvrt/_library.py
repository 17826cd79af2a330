"""libk_cnvrt_text for ctypes, found and declared. What its names mean is said in its header, k_cnvrt_text.h."""

import ctypes
import functools
import os
import pathlib
from typing import Iterator

SONAME = "libk_cnvrt_text.so.1"
VARIABLE = "KCNVRT_LIBRARY"

TO_NEW = 1
TO_OLD = 2
SECTION_TO_NEW = 3
SECTION_TO_OLD = 4
DIFF = 5
APPLY = 6
CONVERT = 7
CHECK = 8
LOSSES = 9
EXPLAIN = 10

DSL_VLAN = 1 << 0
MERGE_PATCH = 1 << 1
SHOW_SECRETS = 1 << 2
PARTIAL = 1 << 3
FORCE = 1 << 4
AS_IS = 1 << 5
TELL_LOSSES = 1 << 6
STRICT = 1 << 7
TOWARDS_NEW = 1 << 8
TOWARDS_OLD = 1 << 9
FROM_RESULT = 1 << 10

COMPACT = -1
DEEPEST_INDENT = 31

CONVERTED = 0
REJECTED = 1
WRONG_LAYOUT = 2
UNREADABLE = 3
WRONG_USAGE = 4
OUT_OF_MEMORY = 5

IN_REQUEST = 0
IN_TEXT = 1
IN_OTHER = 2

ERROR = 1
WARNING = 2
NOTE = 3

DROPPED = 1
CUT = 2
CHANGED = 3
DEFAULTED = 4
RENUMBERED = 5

OLD_SECTIONS = 0
NEW_SECTIONS = 1


class Request(ctypes.Structure):
    """k_text_request_t."""

    _fields_ = [
        ("size", ctypes.c_uint32),
        ("operation", ctypes.c_uint32),
        ("flags", ctypes.c_uint32),
        ("indent", ctypes.c_int32),
        ("section", ctypes.c_char_p),
        ("pointer", ctypes.c_char_p),
        ("text", ctypes.c_char_p),
        ("other", ctypes.c_char_p),
        ("text_length", ctypes.c_size_t),
        ("other_length", ctypes.c_size_t),
    ]


class Problem(ctypes.Structure):
    """k_text_problem_t."""

    _fields_ = [
        ("size", ctypes.c_uint32),
        ("which", ctypes.c_uint32),
        ("offset", ctypes.c_size_t),
        ("length", ctypes.c_size_t),
        ("line", ctypes.c_size_t),
        ("column", ctypes.c_size_t),
        ("pointer", ctypes.c_char_p),
        ("severity", ctypes.c_uint32),
        ("function", ctypes.c_char_p),
        ("message", ctypes.c_char_p),
    ]


class Loss(ctypes.Structure):
    """k_text_loss_t."""

    _fields_ = [
        ("size", ctypes.c_uint32),
        ("kind", ctypes.c_uint32),
        ("offset", ctypes.c_size_t),
        ("length", ctypes.c_size_t),
        ("line", ctypes.c_size_t),
        ("column", ctypes.c_size_t),
        ("pointer", ctypes.c_char_p),
        ("before", ctypes.c_char_p),
        ("after", ctypes.c_char_p),
    ]


class LibraryNotFound(OSError):
    """libk_cnvrt_text is in none of the places where it is looked for; the message names them."""


# A result is a plain address, so that nothing but its owner can release it.
_ADDRESS = ctypes.c_void_p
_SIZE = ctypes.POINTER(ctypes.c_size_t)
_FUNCTIONS = {
    "k_text_run": (_ADDRESS, [ctypes.POINTER(Request)]),
    "k_text_status": (ctypes.c_int, [_ADDRESS]),
    "k_text_direction": (ctypes.c_uint32, [_ADDRESS]),
    "k_text_output": (_ADDRESS, [_ADDRESS, _SIZE]),
    "k_text_problem_count": (ctypes.c_size_t, [_ADDRESS]),
    "k_text_problem": (ctypes.c_int, [_ADDRESS, ctypes.c_size_t, ctypes.POINTER(Problem)]),
    "k_text_loss_count": (ctypes.c_size_t, [_ADDRESS]),
    "k_text_loss": (ctypes.c_int, [_ADDRESS, ctypes.c_size_t, ctypes.POINTER(Loss)]),
    "k_text_free": (None, [_ADDRESS]),
    "k_text_find": (ctypes.c_int, [ctypes.c_char_p, ctypes.c_size_t, ctypes.c_char_p, _SIZE, _SIZE]),
    "k_text_section": (ctypes.c_char_p, [ctypes.c_uint32, ctypes.c_size_t]),
    "k_text_version": (ctypes.c_char_p, []),
}


def _places() -> Iterator[str]:
    """Where the library may be: the first place that has one counts."""
    chosen = os.environ.get(VARIABLE)
    if chosen:
        yield chosen
        return
    package = pathlib.Path(__file__).resolve().parent
    yield str(package / SONAME)
    noted = package / "library-path"  # the installation says where it has put the library, seen from here
    if noted.is_file():
        yield os.path.normpath(package / noted.read_text(encoding="utf-8").strip())
    yield SONAME  # wherever the system's loader looks


def _declared(library: ctypes.CDLL) -> ctypes.CDLL:
    for name, (result, arguments) in _FUNCTIONS.items():
        try:
            function = getattr(library, name)
        except AttributeError as failure:
            raise OSError("it has no %s" % name) from failure
        function.restype = result
        function.argtypes = arguments
    return library


@functools.lru_cache(maxsize=None)
def load() -> ctypes.CDLL:
    """The library. ctypes releases the interpreter's lock while one of its functions runs."""
    failures = []
    for place in _places():
        try:
            return _declared(ctypes.CDLL(place))
        except OSError as failure:
            failures.append("%s (%s)" % (place, failure))
    raise LibraryNotFound(
        "libk_cnvrt_text is not there; install it, or set %s to its file. Tried: %s" % (VARIABLE, ", ".join(failures))
    )


def version() -> str:
    """The library's version, as in "1.2.3"."""
    found: bytes = load().k_text_version()
    return found.decode()

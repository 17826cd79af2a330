"""Converts a home gateway's configuration between its two JSON layouts.

    import kcnvrt

    result = kcnvrt.to_new(open("gateway.old.json", "rb").read())
    if result.ok:
        print(result.text)
    for problem in result.problems:
        print(problem)

Texts go in as bytes (without a copy), str, bytearray or memoryview; outputs are bytes: JSON in UTF-8. A text that is
rejected gives a result like any other. What raises is wrong usage (WrongUsage, TypeError), a library that is not there
(LibraryNotFound) and too little memory (MemoryError). Threads may call at the same time, and convert in parallel.
"""

from ._library import LibraryNotFound, version
from ._requests import apply, check, convert, diff, explain, find, losses, section, sections, to_new, to_old
from ._results import Loss, Problem, Result, Status, WrongUsage

__all__ = [
    "LibraryNotFound",
    "Loss",
    "Problem",
    "Result",
    "Status",
    "WrongUsage",
    "apply",
    "check",
    "convert",
    "diff",
    "explain",
    "find",
    "losses",
    "section",
    "sections",
    "to_new",
    "to_old",
    "version",
]

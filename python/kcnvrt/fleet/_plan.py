"""The input, cut into parts at line breaks."""

from typing import List, NamedTuple, Optional

from . import _storage

_BLOCK = 1 << 20


class Part(NamedTuple):
    """Some lines of a file."""

    number: int
    """From 0, in the order of the input."""

    file: str
    """As it was given."""

    url: str
    start: int
    end: int
    line: int
    """The number of its first line in the file, from 1."""

    @property
    def name(self) -> str:
        return "%06d" % self.number


class Range(NamedTuple):
    """Bytes of a file, to be cut at its first line break."""

    file: str
    url: str
    start: int
    end: int


class Cut(NamedTuple):
    """What is in a range."""

    first: Optional[int]
    """Where the first line starts that starts in it; None where none does."""

    breaks: int
    """How many line breaks there are."""


def ranges_of(source: _storage.Source, part_size: int) -> List[Range]:
    """Of an empty file none."""
    return [
        Range(source.name, source.url, start, min(start + part_size, source.size))
        for start in range(0, source.size, part_size)
    ]


def cut(given: Range) -> Cut:
    """Looks at a range once, block by block."""
    first = 0 if given.start == 0 else None
    breaks = 0
    at = max(given.start - 1, 0)  # the break before a line may be the last byte before the range
    for block in _storage.blocks(given.url, at, given.end, _BLOCK):
        if first is None and b"\n" in block:
            behind = at + block.index(b"\n") + 1
            first = behind if behind < given.end else None
        breaks += block.count(b"\n")
        if given.start > 0 and at == given.start - 1 and block[:1] == b"\n":
            breaks -= 1  # of the range before
        at += len(block)
    return Cut(first, breaks)


# Behind the last part, as behind the last one of a file, another begins at 0.
_BEHIND_ALL = Part(0, "", "", 0, 0, 1)


def parts_of(ranges: List[Range], cuts: List[Cut]) -> List[Part]:
    """Parts in the order of ranges: each from the first line of its range to that of the next which has one."""
    starts: List[Part] = []
    line = 1
    for given, found in zip(ranges, cuts):
        if given.start == 0:
            line = 1
        if found.first is not None:
            # A line that began before the range ends in it.
            first_line = line if found.first == given.start else line + 1
            starts.append(Part(len(starts), given.file, given.url, found.first, given.end, first_line))
        elif starts:
            starts[-1] = starts[-1]._replace(end=given.end)
        line += found.breaks
    return [
        part._replace(end=behind.start) if behind.start > 0 else part
        for part, behind in zip(starts, [*starts[1:], _BEHIND_ALL])
    ]

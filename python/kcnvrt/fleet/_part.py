"""One part, converted on a worker."""

from typing import Iterable, Iterator, List, NamedTuple

from . import _records, _storage
from ._census import Tally
from ._plan import Part

# The folders of an output. A part is done when its tally is there.
CONVERTED = "converted"
REJECTS = "rejects"
PROBLEMS = "problems"
TALLIES = "tallies"
FOLDERS = (CONVERTED, REJECTS, PROBLEMS, TALLIES)

_BLOCK = 1 << 20


class Job(NamedTuple):
    output: str
    options: _records.Options


class Piece(NamedTuple):
    """A line with its line break; or of a line that is longer than a record may be, some of it."""

    bytes: bytes
    is_first: bool
    is_last: bool


def pieces(blocks: Iterable[bytes], longest: int) -> Iterator[Piece]:
    held: List[bytes] = []
    size = 0
    is_first = True
    for block in blocks:
        *ended, rest = block.split(b"\n")
        for line in ended:
            yield Piece(b"".join([*held, line, b"\n"]), is_first, True)
            held, size, is_first = [], 0, True
        if rest:
            held.append(rest)
            size += len(rest)
        if held and size > longest + 1:  # the last byte may be a carriage return
            yield Piece(b"".join(held), is_first, False)
            held, is_first = [], False  # what comes of the line goes on at once
    if held or not is_first:
        yield Piece(b"".join(held), is_first, True)


def text_of(line: bytes) -> bytes:
    """Without the carriage return that belongs to the line's end."""
    if line.endswith(b"\n"):
        line = line[:-1]
    return line[:-1] if line.endswith(b"\r") else line


class _Conversion:
    """A part on its way."""

    def __init__(self, job: Job, part: Part) -> None:
        storage = _storage.Storage(job.output)
        self.options = job.options
        self.tally = Tally()
        self.tally.lossy = 0 if job.options.losses else None
        self.line = part.line
        self.offset = part.start
        self.file = part.file
        self.converted, self.rejects, self.problems = (
            _storage.Passing(storage, "%s/%s.ndjson" % (folder, part.name))
            for folder in (CONVERTED, REJECTS, PROBLEMS)
        )

    def take(self, piece: Piece) -> None:
        self.tally.bytes += len(piece.bytes)
        if piece.is_first and piece.is_last:
            self._take_line(piece.bytes)
        else:
            self._reject_piece(piece)
        self.offset += len(piece.bytes)
        self.line += 1 if piece.is_last else 0

    def _record(self, text: bytes) -> _records.Record:
        return _records.Record(self.file, self.line, self.offset, text)

    def _take_line(self, line: bytes) -> None:
        text = text_of(line)
        if not text.strip(b" \t\r"):
            return
        self.tally.records += 1
        record = self._record(text)
        converted = _records.convert(record, self.options)
        self._tell(record, converted)
        if converted.line is None:
            self.rejects.write(line if line.endswith(b"\n") else line + b"\n")
            self._count_reject()
            return
        self.converted.write(converted.line + b"\n")
        self.tally.converted += 1
        self.tally.warned += 1 if converted.is_warned else 0
        if self.tally.lossy is not None:
            self.tally.lossy += 1 if converted.is_lossy else 0

    def _tell(self, record: _records.Record, converted: _records.Converted) -> None:
        self.problems.write(converted.problems)
        if converted.findings:
            self.tally.add_findings(converted.findings, _records.name_of(record, self.options))

    def _reject_piece(self, piece: Piece) -> None:
        """A line that is too long is told of at its start, and counted at its end."""
        if piece.is_first:
            record = self._record(b"")
            self._tell(record, _records.reject_too_long(record, self.options))
        self.rejects.write(piece.bytes)
        if piece.is_last:
            self.rejects.write(b"" if piece.bytes.endswith(b"\n") else b"\n")
            self.tally.records += 1
            self._count_reject()

    def _count_reject(self) -> None:
        self.tally.rejected += 1
        if self.options.null_for_rejects:
            self.converted.write(b"null\n")


def tally_of(storage: _storage.Storage, part: Part) -> Tally:
    """Of a part that is done."""
    return Tally.from_json(storage.read(_tally_name(part)))


def _tally_name(part: Part) -> str:
    return "%s/%s.json" % (TALLIES, part.name)


def convert(job: Job, part: Part) -> None:
    """Writes the results of a part, and at last its tally. Doing it again leaves the same."""
    conversion = _Conversion(job, part)
    with conversion.problems, conversion.rejects, conversion.converted:
        conversion.converted.make()
        for piece in pieces(_storage.blocks(part.url, part.start, part.end, _BLOCK), job.options.max_record):
            conversion.take(piece)
    _storage.Storage(job.output).write(_tally_name(part), conversion.tally.to_json())

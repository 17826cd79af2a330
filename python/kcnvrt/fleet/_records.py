"""One record: a configuration, or JSON that holds one. What becomes of it is what `kcnvrt stream` makes of it."""

import json
import re
from typing import Callable, Dict, List, NamedTuple, Optional, Sequence

import kcnvrt

from ._census import Finding, findings_of, json_string

class Options(NamedTuple):
    """What is asked of each record."""

    towards: Optional[str] = None
    """"new" or "old"; None is the layout that a configuration is not of."""

    at: str = ""
    """Where in a record the configuration is, as a JSON Pointer; "" is the whole record."""

    at_text: bool = False
    """The value there is a text, which holds the configuration."""

    id: Optional[str] = None
    """Where the value is that a record is called by in problems."""

    dsl_vlan: bool = False
    force: bool = False
    show_secrets: bool = False
    null_for_rejects: bool = False
    max_record: int = 64 << 20
    losses: bool = False


class Record(NamedTuple):
    file: str
    line: int
    """In the file, from 1."""

    offset: int
    """Of its first byte, in the file."""

    text: bytes


class Converted(NamedTuple):
    line: Optional[bytes]
    """Without its line break; None for a record that is rejected."""

    problems: bytes
    """A JSON object a line."""

    is_warned: bool = False
    is_lossy: bool = False
    findings: Sequence[Finding] = ()
    """Where losses are looked for."""


def _is_json(text: bytes) -> bool:
    return kcnvrt.diff(text, b"0").status is not kcnvrt.Status.UNREADABLE


def _text_in(value: bytes) -> Optional[str]:
    """The text that a JSON string is; None where the value is none, or no JSON."""
    if not value.startswith(b'"') or not _is_json(value):
        return None
    text: str = json.loads(value)
    return text


_NUMBER = re.compile(rb"-?(?:0|[1-9][0-9]*)(?:\.[0-9]+)?(?:[eE][+-]?[0-9]+)?")


def id_of(text: bytes, pointer: Optional[str]) -> str:
    """As JSON: the text, number, true or false that the pointer leads to; null for none. A number may be too large to
    be read."""
    place = None if pointer is None else kcnvrt.find(text, pointer)
    value = b"" if place is None else text[place]
    if _NUMBER.fullmatch(value):
        return value.decode()
    if not value or value[:1] in b"{[" or not _is_json(value):
        return "null"
    string = _text_in(value)
    return value.decode() if string is None else json_string(string)


def name_of(record: Record, options: Options) -> str:
    """What a record is called by in the census, as JSON: its id, or else where it stands."""
    given = id_of(record.text, options.id)
    return json_string("%s:%d" % (record.file, record.line)) if given == "null" else given


def _column_of(text: bytes, offset: int) -> int:
    """From 1, in characters: the bytes that start one are counted."""
    return len(text[:offset].translate(None, bytes(range(0x80, 0xC0)))) + 1


class _Problems:
    """What there is to say about one record, in the form of `kcnvrt stream`."""

    def __init__(self, record: Record, options: Options) -> None:
        self.record = record
        self.options = options
        self.lines: List[str] = []
        self.id: Optional[str] = None

    def add_error(self, message: str, pointer: Optional[str] = None, column: int = 1) -> None:
        problem = kcnvrt.Problem("error", "text", None, None, None, None, None, "stream", message)
        self.add(pointer, None, column, problem)

    def add_of_record(self, problem: kcnvrt.Problem) -> None:
        self.add(problem.pointer, None, problem.column, problem)

    def add_of_configuration(self, problem: kcnvrt.Problem, start: int) -> None:
        """A record is one line, so that columns add up. In a text inside it they would not: the place is the text's."""
        if self.options.at_text:
            self.add(self.options.at, problem.pointer, start, problem)
        else:
            pointer = None if problem.pointer is None else self.options.at + problem.pointer
            self.add(pointer, None, None if problem.column is None else start + problem.column - 1, problem)

    def add(self, pointer: Optional[str], inner: Optional[str], column: Optional[int], problem: kcnvrt.Problem) -> None:
        if self.id is None:
            self.id = id_of(self.record.text, self.options.id)
        members = [
            ("file", json_string(self.record.file)),
            ("line", str(self.record.line)),
            ("offset", str(self.record.offset)),
            ("column", "null" if column is None else str(column)),
            ("id", self.id),
            ("pointer", "null" if pointer is None else json_string(pointer)),
            ("severity", json_string(problem.severity)),
            ("function", json_string(problem.function)),
            ("message", json_string(problem.message)),
        ]
        if self.options.at_text:
            members.insert(6, ("inner", "null" if inner is None else json_string(inner)))
        self.lines.append("{%s}\n" % ", ".join('"%s": %s' % member for member in members))

    def rejected(self, findings: Sequence[Finding] = (Finding("error", ""),)) -> Converted:
        """What is not even a configuration is an error of the whole."""
        return Converted(None, self.text(), findings=findings if self.options.losses else ())

    def text(self) -> bytes:
        return "".join(self.lines).encode("utf-8", "replace")


def reject_too_long(record: Record, options: Options) -> Converted:
    """What is said of a record that is too long to be looked at."""
    problems = _Problems(record, options)
    problems.add_error("the record is longer than %d bytes" % options.max_record)
    return problems.rejected()


_CALLS: Dict[Optional[str], Callable[..., kcnvrt.Result]] = {
    "new": kcnvrt.to_new,
    "old": kcnvrt.to_old,
    None: kcnvrt.convert,
}


def _result_of(configuration: bytes, options: Options) -> kcnvrt.Result:
    return _CALLS[options.towards](
        configuration,
        dsl_vlan=options.dsl_vlan,
        force=options.force,
        losses=options.losses,
        show_secrets=options.show_secrets,
    )


# Objects and arrays inside one another that the library reads.
_MOST_LEVELS = 2048


def _is_read(text: bytes, options: Options, problems: _Problems) -> bool:
    """Whether it is JSON; if not, what is wrong with it is told."""
    read = kcnvrt.diff(text, b"0", show_secrets=options.show_secrets)
    if read.status is kcnvrt.Status.UNREADABLE:
        problems.add_of_record(read.problems[0])
    return read.status is not kcnvrt.Status.UNREADABLE


def _is_whole(text: bytes, place: Optional[slice], options: Options, problems: _Problems) -> bool:
    """Whether there is a configuration, and what stands around it is JSON."""
    may_be_too_deep = text.count(b"{") + text.count(b"[") >= _MOST_LEVELS
    if place is not None and not may_be_too_deep and _is_json(text[:place.start] + b"0" + text[place.stop:]):
        return True
    if not _is_read(text, options, problems):
        return False
    if place is None:
        problems.add_error("the record has no value at " + options.at, options.at)
    return place is not None


def convert(record: Record, options: Options) -> Converted:
    """A record of one line, without its line break."""
    text = record.text
    if len(text) > options.max_record:
        return reject_too_long(record, options)
    problems = _Problems(record, options)
    place: Optional[slice] = slice(0, len(text))
    if options.at:
        place = kcnvrt.find(text, options.at)
        if not _is_whole(text, place, options, problems):
            return problems.rejected()
    assert place is not None
    configuration = text[place]
    if options.at_text:
        held = _text_in(configuration)
        if held is None:
            if _is_read(text, options, problems):
                problems.add_error("the value at %s is no text" % options.at, options.at, _column_of(text, place.start))
            return problems.rejected()
        configuration = held.encode("utf-8", "surrogatepass")
    result = _result_of(configuration, options)
    findings = findings_of(result) if options.losses else ()
    column = _column_of(text, place.start) if result.problems else 1
    for problem in result.problems:
        problems.add_of_configuration(problem, column)
    if result.output is None or not result.ok:
        return problems.rejected(findings)
    output = result.output
    if options.at_text:
        output = json.dumps(output.decode(), ensure_ascii=False).encode()
    return Converted(
        line=text[:place.start] + output + text[place.stop:],
        problems=problems.text(),
        is_warned=any(problem.severity != "note" for problem in result.problems),
        is_lossy=bool(result.losses),
        findings=findings,
    )

"""What became of the records, counted. What is counted of losses is what `kcnvrt stream --losses` counts."""

import json
from typing import Any, Dict, Iterable, List, NamedTuple, Optional, Tuple

import kcnvrt

# What has members whose names are a device's own, as the description of the layouts says; a test compares them.
NAMED_ENTRIES = frozenset((
    "/ifaces", "/ifaces/*/services", "/ifaces/*/services/*/tunnels", "/vlan/vlans/*/ports", "/groups", "/rip",
    "/users/list", "/wan_pvid", "/ports_config", "/port_bandwidth", "/Links",
))

# Members that nobody knows have names without end. What comes then is counted together.
_MOST_PLACES = 10000
_OTHER_PLACES = "other places"


class Finding(NamedTuple):
    """Something that a record has at a place."""

    kind: str
    """"error", "warning", or how something is lost."""

    place: str
    """A pattern; "" is the whole configuration."""


class Count(NamedTuple):
    records: int
    example: str
    """What the first of them is called by, as JSON."""


class Tally:
    """Of a part, or of all of them."""

    COUNTS = ("records", "converted", "warned", "rejected", "bytes")

    def __init__(self) -> None:
        self.records = 0
        self.converted = 0
        self.warned = 0  # of those that were converted
        self.rejected = 0
        self.bytes = 0  # of input
        self.lossy: Optional[int] = None  # of those that were converted; where losses are looked for
        self.findings: Dict[Finding, Count] = {}

    def add_findings(self, findings: Iterable[Finding], record: str) -> None:
        """Of one record, each once."""
        for finding in findings:
            self._add(finding, Count(1, record))

    def add(self, behind: "Tally") -> None:
        """What stands behind it in the input."""
        for name in self.COUNTS:
            setattr(self, name, getattr(self, name) + getattr(behind, name))
        if behind.lossy is not None:
            self.lossy = (self.lossy or 0) + behind.lossy
        for finding, count in behind.findings.items():
            self._add(finding, count)

    def _add(self, finding: Finding, count: Count) -> None:
        if len(self.findings) >= _MOST_PLACES and finding not in self.findings:
            finding = Finding(finding.kind, _OTHER_PLACES)
        before = self.findings.get(finding, Count(0, count.example))
        self.findings[finding] = before._replace(records=before.records + count.records)

    def places(self) -> List[Tuple[Finding, Count]]:
        """Those that most records have first."""
        return sorted(self.findings.items(), key=lambda item: (-item[1].records, item[0]))

    def to_json(self) -> bytes:
        members = ['"%s": %d' % (name, getattr(self, name)) for name in self.COUNTS]
        if self.lossy is not None:
            places = (
                '{"place": %s, "kind": "%s", "devices": %d, "example": %s}'
                % (json_string(finding.place), finding.kind, count.records, count.example)
                for finding, count in self.places()
            )
            members += ['"lossy": %d' % self.lossy, '"places": [%s]' % ", ".join(places)]
        return ("{%s}\n" % ", ".join(members)).encode("utf-8", "replace")

    @staticmethod
    def from_json(text: bytes) -> "Tally":
        members: Dict[str, Any] = json.loads(text, parse_int=_Number, parse_float=_Number)
        tally = Tally()
        for name in Tally.COUNTS:
            setattr(tally, name, int(members[name]))
        tally.lossy = int(members["lossy"]) if "lossy" in members else None
        for place in members.get("places", ()):
            count = Count(int(place["devices"]), _json_of(place["example"]))
            tally.findings[Finding(place["kind"], place["place"])] = count
        return tally


def pattern_of(pointer: str) -> str:
    """A pointer into a configuration with * for each number, and for each name that a device gave."""
    pattern = ""
    for token in pointer.split("/")[1:]:
        is_number = token.isascii() and token.isdigit()
        pattern += "/*" if is_number or pattern in NAMED_ENTRIES else "/" + token
    return pattern


def findings_of(result: kcnvrt.Result) -> List[Finding]:
    """Each kind and place that the result tells of, once."""
    found = {Finding(problem.severity, pattern_of(problem.pointer or ""))
             for problem in result.problems if problem.severity != "note"}
    found.update(Finding(loss.kind, pattern_of(loss.pointer)) for loss in result.losses)
    return sorted(found)


_ESCAPES = {code: "\\u%04x" % code for code in [*range(0x20), 0x7F]}
_ESCAPES.update({ord("\n"): "\\n", ord("\r"): "\\r", ord('"'): '\\"', ord("\\"): "\\\\"})


def json_string(text: str) -> str:
    """As the tool writes one."""
    return '"%s"' % text.translate(_ESCAPES)


class _Number(str):
    """A number as it is written: that is what a record is called by."""


def _json_of(scalar: Any) -> str:
    if isinstance(scalar, _Number):
        return str(scalar)
    return json_string(scalar) if isinstance(scalar, str) else json.dumps(scalar)

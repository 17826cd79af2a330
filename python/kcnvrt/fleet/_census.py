"""What became of the records, counted."""

import json
import re
from typing import Any, Dict, List, NamedTuple, Tuple

import kcnvrt

# Of a place and a kind: how many records, and what one of them is called by.
Losses = Dict[Tuple[str, str], Tuple[int, str]]


class Tally:
    """Of a part, or of all of them."""

    COUNTS = ("records", "converted", "warned", "lossy", "rejected", "bytes")

    def __init__(self) -> None:
        self.records = 0
        self.converted = 0
        self.warned = 0  # of those that were converted
        self.lossy = 0  # likewise; only where losses are asked for
        self.rejected = 0
        self.bytes = 0  # of input
        self.losses: Losses = {}

    def add_losses(self, losses: Tuple[kcnvrt.Loss, ...], record: str) -> None:
        """The losses of one record, which counts once at each place."""
        self.lossy += 1 if losses else 0
        for key in {(pattern_of(loss.pointer), loss.kind) for loss in losses}:
            self._add(key, 1, record)

    def add(self, other: "Tally") -> None:
        for name in self.COUNTS:
            setattr(self, name, getattr(self, name) + getattr(other, name))
        for key, (count, record) in other.losses.items():
            self._add(key, count, record)

    def _add(self, key: Tuple[str, str], count: int, record: str) -> None:
        before, example = self.losses.get(key, (0, record))
        self.losses[key] = before + count, example

    def to_json(self) -> bytes:
        counts: Dict[str, Any] = {name: getattr(self, name) for name in self.COUNTS}
        counts["losses"] = [
            {"place": place, "kind": kind, "records": count, "example": json.loads(record)}
            for (place, kind), (count, record) in self.most_frequent()
        ]
        return json.dumps(counts, ensure_ascii=False).encode("utf-8", "replace") + b"\n"

    @staticmethod
    def from_json(text: bytes) -> "Tally":
        counts = json.loads(text)
        tally = Tally()
        for name in Tally.COUNTS:
            setattr(tally, name, counts[name])
        for loss in counts["losses"]:
            tally._add((loss["place"], loss["kind"]), loss["records"], json.dumps(loss["example"], ensure_ascii=False))
        return tally

    def most_frequent(self) -> List[Tuple[Tuple[str, str], Tuple[int, str]]]:
        return sorted(self.losses.items(), key=lambda item: (-item[1][0], item[0]))


def pattern_of(pointer: str) -> str:
    """A pointer with its numbers as *."""
    return re.sub(r"/[0-9]+(?=/|$)", "/*", pointer)

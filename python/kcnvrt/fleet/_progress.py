"""One line on a terminal that says how far a run is, and one at its end."""

import sys
import time
from typing import Optional

from ._census import Tally


def _clock(seconds: float) -> str:
    minutes, rest = divmod(int(seconds + 0.5), 60)
    hours, minutes = divmod(minutes, 60)
    return "%d:%02d:%02d" % (hours, minutes, rest) if hours else "%d:%02d" % (minutes, rest)


def _counted(number: int, one: str) -> str:
    return "{:,} {}{}".format(number, one, "" if number == 1 else "s")


class Progress:
    """Nothing is shown where standard error is no terminal, unless it is asked for."""

    def __init__(self, is_wanted: bool) -> None:
        self._is_terminal = sys.stderr.isatty()
        self._is_shown = is_wanted or self._is_terminal
        self._started = time.monotonic()
        self._parts = self._parts_done = self._bytes = 0
        self._before = Tally()
        self._width = 0

    def start(self, census: Tally, parts: int, parts_done: int, size: int) -> None:
        """What was done before; `size` is that of what is left, in bytes."""
        self._started = time.monotonic()
        self._before.add(census)
        self._parts, self._parts_done, self._bytes = parts, parts_done, size
        if parts_done:
            self.say("%s of %d done already" % (_counted(parts_done, "part"), parts))

    def step(self, census: Tally) -> None:
        self._parts_done += 1
        if not self._is_shown:
            return
        seconds = max(time.monotonic() - self._started, 0.001)
        size = census.bytes - self._before.bytes
        left = _clock(seconds * (self._bytes - size) / size) if size else "?"
        rejected = ", {:,} rejected".format(census.rejected) if census.rejected else ""
        line = "part {} of {}, {}{}, {:.1f} MB/s, {} left".format(
            self._parts_done, self._parts, _counted(census.records, "record"), rejected, size / seconds / 1e6, left)
        self._show(line)

    def say(self, line: str) -> None:
        """A line that stays."""
        self._clear()
        print("kcnvrt.fleet: " + line, file=sys.stderr, flush=True)

    def finish(self, census: Tally, failed: int) -> None:
        self._clear()
        if not self._is_shown:
            return
        seconds = time.monotonic() - self._started
        print("{}: {:,} converted ({:,} with warnings), {:,} rejected; {} in {:.1f} s{}".format(
            _counted(census.records, "record"), census.converted, census.warned, census.rejected,
            _counted(census.bytes, "byte"), seconds, "; %s failed" % _counted(failed, "part") if failed else ""),
            file=sys.stderr)

    def _show(self, line: str) -> None:
        if self._is_terminal:
            print("\r" + line.ljust(self._width), end="", file=sys.stderr, flush=True)
            self._width = len(line)
        else:
            print(line, file=sys.stderr, flush=True)

    def _clear(self, width: Optional[int] = None) -> None:
        if self._is_terminal and self._width:
            print("\r" + " " * self._width + "\r", end="", file=sys.stderr, flush=True)
        self._width = 0

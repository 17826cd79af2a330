"""A run: the plan, its parts on the workers of a cluster, and the census."""

import contextlib
import json
from typing import Any, Callable, Dict, Generator, List, NamedTuple, Optional, Tuple

import distributed
import kcnvrt

from . import _part, _plan, _storage
from ._census import Tally
from ._progress import Progress

PLAN = "plan.json"
CENSUS = "census.json"

# How long workers may take to come, in seconds.
_PATIENCE = 60


class Refusal(Exception):
    """What is asked for cannot be done, and nothing was."""


class Failure(Exception):
    """A file that cannot be read or written, or workers that are not there."""


class Outcome(NamedTuple):
    census: Tally
    failed: int
    """How many parts were not converted, by another fault than their records'."""

    is_cut: bool
    """Whether more records were rejected than are allowed."""


def _on_workers(
    client: Any, what: str, function: Callable[..., Any], arguments: List[Any]
) -> Generator[Tuple[int, Any], None, None]:
    """The numbers of the arguments, and the futures of their results, as they come. Whoever closes it has all he
    wanted: what no worker is at yet is not begun."""
    futures = client.map(function, arguments, pure=False, key="kcnvrt-" + what)
    numbers = {future.key: number for number, future in enumerate(futures)}
    done = distributed.as_completed(futures)
    del futures  # what is done can be forgotten
    try:
        for future in done:
            # With its worker a result is gone, and is made again.
            while future.status in ("pending", "lost"):
                distributed.wait([future])
            yield numbers.pop(future.key), future
    finally:
        if numbers:
            client.cancel([distributed.Future(key, client) for key in numbers])


def _words(error: BaseException) -> str:
    return "%s: %s" % (type(error).__name__, error)


def _why(failed: Any) -> str:
    return "the scheduler has dropped it" if failed.status == "cancelled" else _words(failed.exception())


def check_workers(client: Any) -> None:
    """Each worker that there is has the library, in the version of this machine."""
    try:
        client.wait_for_workers(1, _PATIENCE)
    except (TimeoutError, distributed.TimeoutError) as error:
        raise Failure("no worker came within %d seconds" % _PATIENCE) from error
    try:
        versions = client.run(kcnvrt.version)
    except Exception as error:
        raise Failure("a worker cannot convert: %s" % _words(error)) from error
    for worker, version in versions.items():
        if version != kcnvrt.version():
            raise Failure("worker %s has version %s, and this is %s" % (worker, version, kcnvrt.version()))


def _make_plan(client: Any, inputs: List[_storage.Source], part_size: int) -> List[_plan.Part]:
    ranges = [each for source in inputs for each in _plan.ranges_of(source, part_size)]
    cuts: Dict[int, _plan.Cut] = {}
    for number, future in _on_workers(client, "cut", _plan.cut, ranges):
        if future.status != "finished":
            raise Failure("%s: %s" % (ranges[number].file, _why(future)))
        cuts[number] = future.result()
    return _plan.parts_of(ranges, [cuts[number] for number in range(len(ranges))])


def _described(inputs: List[_storage.Source], job: _part.Job) -> Dict[str, Any]:
    """What two runs have to have in common for one to go on with the other."""
    return {"inputs": [list(each) for each in inputs], "options": job.options._asdict()}


def _load_plan(storage: _storage.Storage, described: Dict[str, Any]) -> Optional[List[_plan.Part]]:
    if PLAN not in storage.names():
        return None
    plan = json.loads(storage.read(PLAN))
    for what in ("inputs", "options"):
        if plan[what] != described[what]:
            raise Refusal("the run in %s had other %s: choose another folder" % (storage.url, what))
    return [_plan.Part(*part) for part in plan["parts"]]


def _has_results(storage: _storage.Storage) -> bool:
    """Whether there is more than what a run leaves that was ended before it had a plan."""
    has_others = any(name not in _part.FOLDERS and not name.startswith(".") for name in storage.names())
    return has_others or any(storage.names(folder) for folder in _part.FOLDERS)


def plan(client: Any, urls: List[str], job: _part.Job, part_size: int, resume: bool) -> List[_plan.Part]:
    """The parts of the input: those of the run that is resumed, or new ones."""
    storage = _storage.Storage(job.output)
    inputs = [found for url in urls for found in _storage.found(url)]
    described = _described(inputs, job)
    if resume:
        parts = _load_plan(storage, described)
        if parts is not None:
            return parts
        if _has_results(storage):
            raise Refusal("%s has no plan.json, and is not empty: choose another folder" % job.output)
    elif storage.names():
        raise Refusal("%s is not empty: --resume goes on with a run, another folder starts one" % job.output)
    storage.make_folder()
    for folder in _part.FOLDERS:
        storage.make_folder(folder)
    parts = _make_plan(client, inputs, part_size)
    storage.write(PLAN, json.dumps({**described, "parts": parts}).encode() + b"\n")
    return parts


def convert(client: Any, job: _part.Job, parts: List[_plan.Part], progress: Progress,
            max_rejects: Optional[int] = None) -> Outcome:
    """Converts the parts that have no tally yet. One that cannot be converted does not stop the others, but more
    rejects than are allowed do."""
    storage = _storage.Storage(job.output)
    names = set(storage.names(_part.TALLIES))
    done = {part for part in parts if part.name + ".json" in names}
    todo = [part for part in parts if part.name + ".json" not in names]
    census = _census_of(storage, [part for part in parts if part in done])
    progress.start(census, len(parts), len(done), sum(part.end - part.start for part in todo))
    failed = 0
    is_cut = _is_spent(max_rejects, census)
    with contextlib.closing(_on_workers(client, "convert", _Converter(job), [] if is_cut else todo)) as converted:
        for number, future in converted:
            part = todo[number]
            if future.status == "finished":
                done.add(part)
                census.add(_part.tally_of(storage, part))
                progress.step(census)
            else:
                failed += 1
                progress.say("%s, bytes %d to %d: %s" % (part.file, part.start, part.end, _why(future)))
            is_cut = _is_spent(max_rejects, census)
            if is_cut:
                break
    if not is_cut:  # else workers may be at parts
        for folder in _part.FOLDERS:
            storage.remove_passing(folder)
    # In the order of the input, so that the examples are the first ones.
    census = _census_of(storage, [part for part in parts if part in done])
    if len(done) == len(parts):
        storage.write(CENSUS, census.to_json())
    return Outcome(census, failed, is_cut)


def _is_spent(max_rejects: Optional[int], census: Tally) -> bool:
    return max_rejects is not None and census.rejected > max_rejects


def _census_of(storage: _storage.Storage, parts: List[_plan.Part]) -> Tally:
    census = Tally()
    for part in parts:
        census.add(_part.tally_of(storage, part))
    return census


class _Converter:
    """A part's conversion, with the job in it once for all parts."""

    def __init__(self, job: _part.Job) -> None:
        self.job = job

    def __call__(self, part: _plan.Part) -> None:
        _part.convert(self.job, part)


def readable(urls: List[str]) -> None:
    """Raises where one is not there."""
    for url in urls:
        try:
            _storage.found(url)
        except (OSError, ValueError, ImportError) as error:
            raise Failure("%s: %s" % (url, error)) from error

"""python3 -m kcnvrt.fleet: newline-delimited records, converted on a Dask cluster."""

import argparse
import contextlib
import os
import re
import sys
from typing import Any, Iterator, List, Optional

from . import _records

CONVERTED, REJECTED, WRONG_USAGE, UNUSABLE_FILE = range(4)
INTERRUPTED = 130  # as shells say it

DESCRIPTION = """Convert newline-delimited JSON on a Dask cluster, part by part."""
EPILOG = """A line is a configuration, or with --at a record that holds one; what becomes of it is what
"kcnvrt stream" makes of it. DIR gets the folders converted, rejects and problems with
a file for each part, in the order of their names, and census.json.

Inputs and DIR are paths or URLs that fsspec knows, and every worker has to reach them.

Exit status: 0 all records were converted, 1 some were rejected, 2 wrong usage, 3 a
file or a worker failed; --resume goes on.

Example: python3 -m kcnvrt.fleet --local --to-new fleet.ndjson --output new"""


def size_of(text: str) -> int:
    """A number of bytes; K, M and G may follow it."""
    unit = {"K": 1 << 10, "M": 1 << 20, "G": 1 << 30}.get(text[-1:], 0)
    digits = text[:-1] if unit else text
    if not (digits.isascii() and digits.isdigit()) or int(digits) == 0:
        raise argparse.ArgumentTypeError('"%s" is no size' % text)
    return int(digits) * (unit or 1)


def pointer_of(text: str) -> str:
    if text and not text.startswith("/"):
        raise argparse.ArgumentTypeError('"%s" is no JSON Pointer: it begins with /' % text)
    if re.search("~(?![01])", text):
        raise argparse.ArgumentTypeError('"%s" is no JSON Pointer: ~ is written ~0' % text)
    return text


def count_of(text: str) -> int:
    if not (text.isascii() and text.isdigit()):
        raise argparse.ArgumentTypeError('"%s" is no number' % text)
    return int(text)


def workers_of(text: str) -> int:
    if not (text.isascii() and text.isdigit()) or int(text) == 0:
        raise argparse.ArgumentTypeError('"%s" is no number of workers' % text)
    return int(text)


def parser() -> argparse.ArgumentParser:
    made = argparse.ArgumentParser(prog="python3 -m kcnvrt.fleet", description=DESCRIPTION, epilog=EPILOG,
                                   formatter_class=argparse.RawDescriptionHelpFormatter, allow_abbrev=False)
    add = made.add_argument
    add("inputs", nargs="+", metavar="INPUT", help="newline-delimited JSON; a pattern stands for the files it fits")
    add("--output", required=True, metavar="DIR", help="a folder that is new or empty")
    cluster = made.add_mutually_exclusive_group(required=True)
    cluster.add_argument("--scheduler", metavar="ADDRESS", help="a Dask scheduler, such as tcp://host:8786")
    cluster.add_argument("--local", action="store_true", help="worker processes on this machine")
    add("--workers", type=workers_of, metavar="N", help="of --local: as many as there are cores")
    towards = made.add_mutually_exclusive_group(required=True)
    towards.add_argument("--to-new", dest="towards", action="store_const", const="new",
                         help="convert to the new layout")
    towards.add_argument("--to-old", dest="towards", action="store_const", const="old",
                         help="convert to the old layout")
    towards.add_argument("--auto", action="store_true", help="convert each record to the layout that it is not of")
    add("--at", type=pointer_of, default="", metavar="POINTER",
        help="convert the value there, and leave the rest of a record as it is")
    add("--at-text", action="store_true", help="the value there is a text that holds JSON")
    add("--id", type=pointer_of, metavar="POINTER", help="what a record is called by in problems and in the census")
    add("--dsl-vlan", action="store_true", help="the devices tie their VLANs to DSL services")
    add("--force", action="store_true", help="convert whatever layout a configuration is of")
    add("--losses", action="store_true", help="count what the other layout does not hold, which takes longer")
    add("--on-reject", choices=("skip", "null"), default="skip",
        help="a rejected record has no line in the output (default), or the line null")
    add("--max-rejects", type=count_of, metavar="N",
        help="end early, with 1, when more than N records are rejected in the parts that are done")
    add("--max-record", type=size_of, default=64 << 20, metavar="SIZE", help="reject longer records (64M)")
    add("--part-size", type=size_of, default=64 << 20, metavar="SIZE",
        help="about how much of the input is one part (64M)")
    add("--resume", action="store_true", help="go on with the run in DIR: parts that are done are left alone")
    add("--progress", action="store_true", help="show progress also where standard error is no terminal")
    add("--show-secrets", action="store_true", help="do not mask passwords and keys in problems")
    return made


def options_of(arguments: argparse.Namespace) -> _records.Options:
    return _records.Options(
        towards=arguments.towards,
        at=arguments.at,
        at_text=arguments.at_text,
        id=arguments.id,
        dsl_vlan=arguments.dsl_vlan,
        force=arguments.force,
        show_secrets=arguments.show_secrets,
        null_for_rejects=arguments.on_reject == "null",
        max_record=arguments.max_record,
        losses=arguments.losses,
    )


@contextlib.contextmanager
def client_of(arguments: argparse.Namespace) -> Iterator[Any]:
    import distributed  # here: usage is told without it

    if arguments.scheduler:
        with distributed.Client(arguments.scheduler) as client:
            yield client
        return
    workers = arguments.workers or len(os.sched_getaffinity(0))
    with distributed.LocalCluster(n_workers=workers, threads_per_worker=1, processes=True,
                                  dashboard_address=None) as cluster:
        with distributed.Client(cluster) as client:
            yield client


def print_places(census: Any) -> None:
    """The places where most records have something; all of them are in the census."""
    places = census.places()
    shown = [("{:,}".format(count.records), finding.kind, finding.place or "the whole configuration", count.example)
             for finding, count in places[:20]]
    rows = [("devices", "what", "place", "for example"), *shown]
    widest = max(len(row[2]) for row in rows)
    print("{:,} of {:,} records lose something".format(census.lossy or 0, census.records))
    for count, kind, place, example in rows if shown else []:
        print("{:>12}  {:<10}  {:<{}}  {}".format(count, kind, place, widest, example))
    if len(places) > len(shown):
        print("{:>12}  more are in census.json".format("{:,}".format(len(places) - len(shown))))


def run(arguments: argparse.Namespace) -> int:
    from . import _part, _run, _storage
    from ._progress import Progress

    progress = Progress(arguments.progress)
    job = _part.Job(_storage.absolute(arguments.output), options_of(arguments))
    try:
        _run.readable(arguments.inputs)
        with client_of(arguments) as client:
            _run.check_workers(client)
            parts = _run.plan(client, arguments.inputs, job, arguments.part_size, arguments.resume)
            outcome = _run.convert(client, job, parts, progress, arguments.max_rejects)
    except _run.Refusal as refusal:
        progress.say(str(refusal))
        return WRONG_USAGE
    except KeyboardInterrupt:
        progress.say("interrupted; --resume goes on")
        return INTERRUPTED
    except (_run.Failure, OSError) as failure:
        progress.say(str(failure))
        return UNUSABLE_FILE
    if outcome.is_cut:
        progress.say("more records were rejected than --max-rejects allows: the run ends here; --resume goes on")
    progress.finish(outcome.census, outcome.failed)
    if arguments.losses:
        print_places(outcome.census)
    if outcome.failed:
        return UNUSABLE_FILE
    return REJECTED if outcome.census.rejected else CONVERTED


def main(words: Optional[List[str]] = None) -> int:
    made = parser()
    arguments = made.parse_args(words)
    if arguments.at_text and not arguments.at:
        made.error("--at-text needs --at")
    if arguments.workers and not arguments.local:
        made.error("--workers needs --local")
    try:
        return run(arguments)
    except ImportError as error:
        if error.name not in ("distributed", "dask", "fsspec"):
            raise
        print("kcnvrt.fleet: %s is not installed (python3-dask, python3-distributed and python3-fsspec are needed)"
              % error.name, file=sys.stderr)
        return UNUSABLE_FILE


if __name__ == "__main__":
    sys.exit(main())

#!/usr/bin/python3
"""The law that makes the schemas true, with a validator that knows nothing of the conversion: schemas.py SCHEMAS
EXCEPTIONS DOCUMENTS [ARGUMENT...]. DOCUMENTS is the program that prints documents with what the conversion said of
them, a line each (line.h).

- A document that is converted in silence is valid at every place that comes back from the other layout.
- One with a message is invalid at the message's place.
- What stands in the place of a container and is none is invalid, unless it comes back.

What exceptions.json lists is excused, each with its reason, and has to occur."""
import collections
import itertools
import json
import multiprocessing
import os
import re
import subprocess
import sys

from jsonschema import Draft202012Validator

LINES = 500  # of one turn of a process

validators = {}
exceptions = []


def pointer(path):
    return "".join("/" + str(step).replace("~", "~0").replace("/", "~1") for step in path)


def places(errors):
    """Of errors and of those that led to them."""
    for error in errors:
        yield pointer(error.absolute_path)
        yield from places(error.context or ())


def is_on_the_way(place, lost):
    """Whether the place, what is above it or what is in it was lost."""
    return any(f"{place}/".startswith(f"{one}/") or f"{one}/".startswith(f"{place}/") for one in lost)


def value_at(value, place):
    for name in place.split("/")[1:]:
        name = name.replace("~1", "/").replace("~0", "~")
        value = value[int(name)] if isinstance(value, list) else value[name]
    return value


def is_whole_real(value):
    return isinstance(value, float) and value.is_integer()


class Findings:
    def __init__(self):
        self.counts = collections.Counter()
        self.met = collections.Counter()  # exceptions, by their positions
        self.failures = []

    def add(self, other):
        self.counts += other.counts
        self.met += other.met
        self.failures += other.failures

    def is_excused(self, line, law, place):
        for position, row in enumerate(exceptions):
            is_layout = row.get("layout", line["layout"]) == line["layout"]
            is_value = "value" not in row or is_whole_real(value_at(line["document"], place))
            if row["law"] == law and is_layout and is_value and re.fullmatch(row.get("place", ".*"), place):
                self.met[position] += 1
                return True
        return False

    def fail(self, line, words):
        where = f", damaged at {line['at']}" if "at" in line else ""
        self.failures.append(f"{line['layout']}: {words}{where}: {json.dumps(line['document'])[:300]}")

    def judge(self, line):
        where = set(places(validators[line["layout"]].iter_errors(line["document"])))
        self.counts["documents"] += 1
        if line["lost"] is not None:
            self.counts["silent"] += 1
            for place in sorted(where):
                if not is_on_the_way(place, line["lost"]) and not self.is_excused(line, "valid", place):
                    self.fail(line, f"valid, but not at {place}")
                    break
        for place, message in line["messages"]:
            self.counts["messages"] += 1
            if place not in where and not self.is_excused(line, "invalid", place):
                self.fail(line, f"no error at {place} ({message.strip()})")
        if line["broken"] and line["lost"] != []:
            self.counts["broken containers"] += 1
            if line["at"] not in where and not self.is_excused(line, "container", line["at"]):
                self.fail(line, "no error for what is no container")


def judged(texts):
    findings = Findings()
    for text in texts:
        findings.judge(json.loads(text))
    return findings


def prepare(folder, listed):
    for layout in ("old", "new"):
        with open(f"{folder}/{layout}.schema.json", encoding="utf-8") as file:
            schema = json.load(file)
        Draft202012Validator.check_schema(schema)
        validators[layout] = Draft202012Validator(schema)
    with open(listed, encoding="utf-8") as file:
        exceptions.extend(json.load(file))


def judge_all(command):
    findings = Findings()
    with subprocess.Popen(command, stdout=subprocess.PIPE, encoding="utf-8") as documents, \
            multiprocessing.Pool(len(os.sched_getaffinity(0))) as pool:
        turns = iter(lambda: list(itertools.islice(documents.stdout, LINES)), [])
        for some in pool.imap(judged, turns):
            findings.add(some)
    if documents.returncode != 0:
        findings.failures.append(f"{command[0]} ended with status {documents.returncode}")
    return findings


def main():
    folder, listed, *command = sys.argv[1:]
    prepare(folder, listed)
    findings = judge_all(command)
    for position, row in enumerate(exceptions):
        if not findings.met[position]:
            findings.failures.append(f"never met: {row['law']} {row['layout']} {row['place']}")
    for what in ("silent", "messages", "broken containers"):
        if findings.counts[what] < 1000:
            findings.failures.append(f"only {findings.counts[what]} {what}")
    print(", ".join(f"{count} {what}" for what, count in findings.counts.items()))
    print("\n".join(findings.failures[:2000] + [f"{len(findings.failures)} failures"]), file=sys.stderr)
    return 1 if findings.failures else 0


sys.exit(main())

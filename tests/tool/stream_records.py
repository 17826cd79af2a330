#!/usr/bin/env python3
"""A stream of random records, a tenth of them broken, against a plain loop over the tool, byte for byte.

stream_records.py TOOL EXAMPLES [SEED]: so many records as KCNVRT_STREAM_RECORDS says (1,200), in four ways."""

import copy
import json
import os
import random
import subprocess
import sys
import tempfile

tool = os.path.realpath(sys.argv[1])
examples = sys.argv[2]
records = int(os.environ.get("KCNVRT_STREAM_RECORDS", "1200")) // 4
seed = int(sys.argv[3]) if len(sys.argv) > 3 else 20240501
chance = random.Random(seed)


def example(name):
    with open(os.path.join(examples, name), encoding="utf-8") as file:
        return json.load(file)


OLD = [example("home-gateway.old.json"), example("dsl-gateway.old.json")]
NEW = [example("home-gateway.new.json")["Device"], example("dsl-gateway.new.json")["Device"]]


def some_of(configuration):
    names = [name for name in configuration if chance.random() < 0.15]
    chance.shuffle(names)
    return {name: configuration[name] for name in names}


def configuration(layout):
    value = some_of(chance.choice(OLD)) if layout == "old" else {"Device": some_of(chance.choice(NEW))}
    return spoil_value(value) if chance.random() < 0.05 else value


def spoil_value(value):
    """Puts something else where a value is: most of them reject the configuration."""
    value = copy.deepcopy(value)
    at = value
    while isinstance(at, (dict, list)) and at:
        key = chance.choice(list(at)) if isinstance(at, dict) else chance.randrange(len(at))
        if not isinstance(at[key], (dict, list)) or not at[key] or chance.random() < 0.1:
            at[key] = chance.choice(["x", "", -1, 1.5, True, None, [], {}, "\u00e9\u4e16", 10**15])
            break
        at = at[key]
    return value


def written(value):
    separators = chance.choice([(",", ":"), (", ", ": "), (" ,\t", "\t: ")])
    return json.dumps(value, separators=separators, ensure_ascii=chance.random() < 0.5).encode()


def break_bytes(text):
    """One of the ways in which a line can be damaged."""
    at = chance.randrange(len(text) + 1)
    way = chance.randrange(9)
    if way == 0:
        return text[:at]
    if way == 1:
        return text[:at] + bytes([chance.choice([0, 1, 9, 13, 34, 44, 92, 91, 123, 125, 0x80, 0xC3, 0xFF])]) + text[at:]
    if way == 2:
        return text[:at] + text[at + 1:]
    if way == 3:
        return text + b"}"
    if way == 4:
        return b"\xef\xbb\xbf" + text
    if way == 5:
        return text.replace(b'":', b'": \\u0000', 1)
    if way == 6:
        return b'{"twice": 1, "twice": 2, ' + text[1:]
    if way == 7:
        return chance.choice([b"[", b"null", b'"text"', b"17", b"[]", b"{", b"\x1f\x8b\x08", b"<a/>", b"'x'"])
    return b'{"a":' + b"[" * 3000 + b"]" * 3000 + b"}"


def converted(direction, text):
    """What the tool says of one configuration: its output or None, and its problems."""
    command = [tool, direction, "--compact", "--errors", "json"]
    done = subprocess.run(command, input=text, capture_output=True, check=False)
    problems = [json.loads(line) for line in done.stderr.splitlines()]
    return (done.stdout[:-1] if done.returncode == 0 else None), problems


def no_constant(name):
    raise ValueError(name)


def no_twins(members):
    if len(dict(members)) != len(members):
        raise ValueError(members)
    return dict(members)


def parsed(text):
    """None for what is no JSON."""
    try:
        return json.loads(text.decode(), parse_constant=no_constant, object_pairs_hook=no_twins)
    except (ValueError, RecursionError):
        return None


def holds_configuration(line):
    """Whether /device/config is there."""
    record = parsed(line)
    device = record.get("device") if isinstance(record, dict) else None
    return isinstance(device, dict) and "config" in device


BLANKS = b" \t\r"


def blanks_before(text):
    return text[:len(text) - len(text.lstrip(BLANKS))]


def blanks_behind(text):
    return text[len(text.rstrip(BLANKS)):]


class Way:
    """How configurations stand in records; `expected` is the plain loop."""

    def __init__(self, name, layout, options):
        self.name = name
        self.direction = "to-new" if layout == "old" else "to-old"
        self.layout = layout
        self.options = ["--" + self.direction, *options]
        self.at = "--at" in options
        self.is_text = "--at-text" in options

    def record(self, number):
        """The line, and what stands before, in and behind its configuration (None where that is not known)."""
        text = written(configuration(self.layout))
        broken = chance.random() < 0.1
        if not self.at:
            return (break_bytes(text) if broken else text), None
        if broken and chance.random() < 0.5:
            text, broken = break_bytes(text), False
        held = json.dumps(text.decode("utf-8", "replace")).encode() if self.is_text else text
        before = b'{ "serial" : %d, "note":"\\u00e9 [{", "device" :{"config":  ' % number
        behind = b'  ,"x":[1.50,2e3, "}"]},\t"end":-0.0 }'
        if broken:
            way = chance.randrange(4)
            if way == 0:
                before = before.replace(b'"config"', b'"other"')
            elif way == 1:
                behind = break_bytes(behind)
            elif way == 2:
                before = break_bytes(before)
            else:
                held = chance.choice([b"null", b'"text"', b"[1]", b"{}x", b"", b"1"])
        return before + held + behind, (before, held, behind)

    def expected(self, line, parts):
        """The line of the output, or None."""
        if parts is None:
            return converted(self.direction, line)[0]
        before, held, behind = parts
        if not holds_configuration(line) or parsed(held) is None:
            return None
        text = held
        if self.is_text:
            value = json.loads(held)
            if not isinstance(value, str):
                return None
            text = value.encode()
        output = converted(self.direction, text)[0]
        if output is None:
            return None
        if self.is_text:
            output = json.dumps(output.decode(), ensure_ascii=False).encode()
        return before + blanks_before(held) + output + blanks_behind(held) + behind


def random_line_end():
    return chance.choice([b"\n", b"\n", b"\n", b"\r\n", b"\n\n", b"\n \t\r\n"])


def same(what, got, wanted):
    if got == wanted:
        return
    at = next((i for i, (a, b) in enumerate(zip(got, wanted)) if a != b), min(len(got), len(wanted)))
    sys.exit(f"{what}: {len(got)} bytes instead of {len(wanted)}, which differ at {at}:\n"
             f"{got[max(at - 80, 0):at + 80]!r}\n{wanted[max(at - 80, 0):at + 80]!r}")


def run(way, folder, *options):
    """The stream's output, rejects and problems."""
    for name in ("rejects", "problems"):
        open(os.path.join(folder, name), "wb").close()
    command = [tool, "stream", *way.options, "in", "--rejects", "rejects", "--problems", "problems", *options]
    done = subprocess.run(command, cwd=folder, capture_output=True, check=False)
    if done.stderr or done.returncode not in (0, 1):
        sys.exit(f"{way.name} {options}: status {done.returncode}, {done.stderr!r}")
    with open(os.path.join(folder, "rejects"), "rb") as file:
        rejects = file.read()
    with open(os.path.join(folder, "problems"), "rb") as file:
        problems = file.read()
    return done.stdout, rejects, problems, done.returncode


def check_problems(way, problems, stream):
    """Each leads to its record, and each rejected record has an error."""
    lines = stream.split(b"\n")
    rejected = set()
    for problem in map(json.loads, problems.splitlines()):
        if problem["severity"] == "error":
            rejected.add(problem["line"])
        record = lines[problem["line"] - 1]
        if not stream.startswith(record, problem["offset"]):
            sys.exit(f"{way.name}: {problem} is not of line {record!r}")
    return rejected


def check(way):
    stream, output, with_nulls, rejects = bytearray(), bytearray(), bytearray(), bytearray()
    rejected, number = set(), 1
    for i in range(records):
        line, parts = way.record(i)
        line = line.replace(b"\n", b"")
        if line.strip(b" \t\r") == b"":
            continue
        end = random_line_end() if i + 1 < records else b""
        wanted = way.expected(line.removesuffix(b"\r"), parts)
        stream += line + end
        if wanted is None:
            rejects += line + (b"\r\n" if end.startswith(b"\r") else b"\n")
            with_nulls += b"null\n"
            rejected.add(number)
        else:
            output += wanted + b"\n"
            with_nulls += wanted + b"\n"
        number += end.count(b"\n")
    if len(rejected) < records // 30 or len(rejected) > records // 2:
        sys.exit(f"{way.name}: {len(rejected)} rejects of {records} records are not what this test is for")

    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "in"), "wb") as file:
            file.write(stream)
        first = None
        for options in ([], ["--jobs", "1"], ["--jobs", "3", "--block", "7"], ["--jobs", "2", "--block", "1"],
                        ["--jobs", "4", "--block", "4K"], ["--on-reject", "null"]):
            got = run(way, folder, *options)
            name = f"{way.name} {' '.join(options)}"
            same(name, got[0], with_nulls if "null" in options else output)
            same(name + ", rejects", got[1], rejects)
            same(name + ", problems", got[2], first[2] if first else got[2])
            first = first or got
            if got[3] != 1:
                sys.exit(f"{name}: status {got[3]}")
        if check_problems(way, first[2], stream) != rejected:
            sys.exit(f"{way.name}: the problems are of other records than the rejects")
    print(f"{way.name}: {records} records, {len(rejected)} rejected")


for each in (Way("to new", "old", []), Way("to old", "new", []),
             Way("to new, --at", "old", ["--at", "/device/config", "--id", "/serial"]),
             Way("to old, --at-text", "new", ["--at", "/device/config", "--at-text"])):
    check(each)

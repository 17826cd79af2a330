#!/usr/bin/env python3
"""Usage: positions.py KCNVRT EXAMPLES
The line and column of every message are those that another scanner finds for its pointer, however the document is laid
out. The documents are the examples with every value of a wrong type."""
import json
import re
import subprocess
import sys
from json.decoder import scanstring

BLANKS = re.compile(r"[ \t\r\n]*")
SCALAR = re.compile(r"[-+.0-9A-Za-z]+")


def scan(text, at, pointer, places):
    """Notes where the value at an offset starts, and those inside it. The offset behind it."""
    places[pointer] = at
    if text[at] == '"':
        return scanstring(text, at + 1, True)[1]
    if text[at] not in "{[":
        return SCALAR.match(text, at).end()
    closing = "}" if text[at] == "{" else "]"
    index = 0
    at = BLANKS.match(text, at + 1).end()
    while text[at] != closing:
        if closing == "}":
            name, at = scanstring(text, at + 1, True)
            at = BLANKS.match(text, at).end() + 1
            at = BLANKS.match(text, at).end()
        else:
            name = str(index)
            index += 1
        at = scan(text, at, pointer + "/" + name.replace("~", "~0").replace("/", "~1"), places)
        at = BLANKS.match(text, at).end()
        if text[at] == ",":
            at = BLANKS.match(text, at + 1).end()
    return at + 1


def line_and_column(text, at):
    return text.count("\n", 0, at) + 1, at - text.rfind("\n", 0, at)


def damaged(value):
    if isinstance(value, dict):
        return {name: damaged(each) for name, each in value.items()}
    if isinstance(value, list):
        return [damaged(each) for each in value]
    return {"no": value}


def with_other_letters(value):
    """More members, with characters of two to four bytes, an escape for one, a tab and what a pointer escapes."""
    if isinstance(value, dict):
        more = {}
        for number, (name, each) in enumerate(value.items()):
            more["ключ ~/%d" % number] = "äöü 日本語 \U0001F600 \t\u2028"
            more[name] = with_other_letters(each)
        return more
    return [with_other_letters(each) for each in value] if isinstance(value, list) else value


def layouts(document):
    indented = json.dumps(document, indent="\t", ensure_ascii=False)
    yield "indented", indented
    yield "compact", json.dumps(document, separators=(",", ":"), ensure_ascii=False)
    yield "escaped", json.dumps(document, indent=1)
    yield "with CRLF", indented.replace("\n", "\r\n")


def check(tool, name, text):
    run = subprocess.run([tool, "convert", "--errors", "json"], input=text.encode(), stdout=subprocess.DEVNULL,
                         stderr=subprocess.PIPE, check=False)
    places = {}
    scan(text, BLANKS.match(text).end(), "", places)
    placed = 0
    for line in run.stderr.decode().splitlines():
        problem = json.loads(line)
        if problem["pointer"] is None:
            continue
        placed += 1
        expected = line_and_column(text, places[problem["pointer"]])
        if (problem["line"], problem["column"]) != expected:
            sys.exit("%s: %s is at %d:%d\n%s" % (name, problem["pointer"], *expected, line))
    return placed


def main():
    tool, examples = sys.argv[1:]
    for example in ("home-gateway.old", "home-gateway.new", "dsl-gateway.old", "dsl-gateway.new"):
        with open("%s/%s.json" % (examples, example), encoding="utf-8") as file:
            document = damaged(json.load(file))
        for words, each in (("", document), (" of other letters", with_other_letters(document))):
            for layout, text in layouts(each):
                placed = check(tool, "%s, %s%s" % (example, layout, words), text)
                if placed < 5:
                    sys.exit("%s, %s%s: only %d messages have a place" % (example, layout, words, placed))
        print("%s: %d messages, each in eight layouts" % (example, placed))


main()

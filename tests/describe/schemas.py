#!/usr/bin/python3
"""The law that makes the schemas true, with a validator that knows nothing of the conversion: schemas.py DOCUMENTS
SCHEMAS EXCEPTIONS. DOCUMENTS is the program that prints documents with what the conversion said of them.

A document that is converted in silence and loses nothing is valid. One with a message is invalid at the message's
place. What exceptions.json lists is excused, each with its reason, and has to occur."""
import collections
import json
import re
import subprocess
import sys

from jsonschema import Draft202012Validator


def pointer(path):
    return "".join("/" + str(step).replace("~", "~0").replace("/", "~1") for step in path)


def places(errors):
    """Of errors and of those that led to them."""
    for error in errors:
        yield pointer(error.absolute_path)
        yield from places(error.context or ())


def find_exception(exceptions, line, law, place):
    for row in exceptions:
        if row["law"] == law and row["layout"] == line["layout"] and re.fullmatch(row["place"], place):
            row["met"] = row.get("met", 0) + 1
            return row
    return None


def main():
    program, folder, listed = sys.argv[1:]
    validators = {}
    for layout in ("old", "new"):
        with open(f"{folder}/{layout}.schema.json", encoding="utf-8") as file:
            schema = json.load(file)
        Draft202012Validator.check_schema(schema)
        validators[layout] = Draft202012Validator(schema)
    with open(listed, encoding="utf-8") as file:
        exceptions = json.load(file)
    counts = collections.Counter()
    failures = []
    with subprocess.Popen([program], stdout=subprocess.PIPE, encoding="utf-8") as documents:
        for text in documents.stdout:
            line = json.loads(text)
            counts["documents"] += 1
            errors = list(validators[line["layout"]].iter_errors(line["document"]))
            where = set(places(errors))
            if line["kept"]:
                counts["kept"] += 1
                for place in where:
                    if not find_exception(exceptions, line, "valid", place):
                        failures.append(f"{line['layout']}: valid, but not at {place}: {text[:300]}")
                        break
            for place, message in line["messages"]:
                counts["messages"] += 1
                if place not in where and not find_exception(exceptions, line, "invalid", place):
                    failures.append(f"{line['layout']}: no error at {place} ({message.strip()}), damaged at "
                                    f"{line.get('at')}: {text[:200]}")
    for row in exceptions:
        if "met" not in row:
            failures.append(f"never met: {row['law']} {row['layout']} {row['place']}")
    print(f"{counts['documents']} documents, {counts['kept']} kept, {counts['messages']} messages")
    for failure in failures[:2000]:
        print(failure, file=sys.stderr)
    print(f"{len(failures)} failures", file=sys.stderr)
    return 1 if failures or counts["kept"] < 1000 or counts["messages"] < 1000 else 0


sys.exit(main())

"""A configuration in the old layout and what it becomes in the new one, side by side, as an SVG: side_by_side.py KCNVRT
FILE. A line joins two members when `kcnvrt mapping` has their places as one pair, and `kcnvrt explain` says that the
new one is made of the old one."""
import json
import re
import subprocess
import sys
from html import escape

INDENT = 2
LETTER = 7.5  # how wide a letter of the code is; the browser spaces its own font by it
ROW = 16.5
MARGIN = 16  # around the code in a panel
CAPTION = 40
GAP = 96  # between the panels
GROUND = 12  # around the panels
LEGEND_ROW = 24
TWINS_APART = 7  # lines that begin at the same member

# What a line says: of the two values, and of its class in the style sheet.
MEANINGS = {
    "same": "the same value",
    "converted": "another type or spelling",
    "name": "a name becomes a value, or a value a name",
}

STYLE = """
    svg { color-scheme: light dark; }
    .ground { fill: #ffffff; }
    .panel { fill: #f6f7f9; stroke: #dfe3e8; }
    text { font: 12.5px ui-monospace, SFMono-Regular, "Cascadia Mono", Menlo, Consolas, "DejaVu Sans Mono", monospace;
        fill: #57606c; white-space: pre; }
    .words { font: 13px system-ui, -apple-system, "Segoe UI", Roboto, "Helvetica Neue", "DejaVu Sans", sans-serif; }
    .title { font-weight: 600; fill: #1b2027; }
    .key { fill: #1b2027; }
    .text { fill: #12703f; }
    .other { fill: #8a3ea8; }
    .join { fill: none; stroke-width: 1.6; }
    .same { --join: #8b96a5; }
    .converted { --join: #0a5bc4; }
    .name { --join: #c2570c; stroke-dasharray: 5 3; }
    .join { stroke: var(--join); }
    .end { fill: var(--join); }
    @media (prefers-color-scheme: dark) {
        .ground { fill: #14171c; }
        .panel { fill: #1a1e24; stroke: #2e353f; }
        text { fill: #9ca7b5; }
        .title, .key { fill: #e4e8ee; }
        .text { fill: #86d6a4; }
        .other { fill: #d4a3ee; }
        .same { --join: #78869a; }
        .converted { --join: #7db4ff; }
        .name { --join: #f5a67d; }
    }
"""


class Row:
    """A line of a configuration: its parts, each with a class, and the pointer to the value that begins in it."""

    def __init__(self, depth, parts, pointer=None):
        self.depth = depth
        self.parts = [(kind, text) for kind, text in parts if text]
        self.pointer = pointer

    def length(self):
        return sum(len(text) for _, text in self.parts)


def members(value):
    return value.items() if isinstance(value, dict) else enumerate(value)


def is_leaf(value):
    return not isinstance(value, (dict, list)) or not value


def rows_of(value, pointer="", depth=0, key="", comma=""):
    """The lines of a value, a member a line."""
    name = [("key", json.dumps(key)), ("", ": ")] if key else []
    if is_leaf(value):
        kind = "text" if isinstance(value, str) else "other"
        return [Row(depth, [*name, (kind, json.dumps(value, ensure_ascii=False)), ("", comma)], pointer)]
    opening, closing = "{}" if isinstance(value, dict) else "[]"
    rows = [Row(depth, [*name, ("", opening)], pointer)]
    for i, (inner, child) in enumerate(members(value)):
        rows += rows_of(child, f"{pointer}/{inner}", depth + 1, inner if isinstance(value, dict) else "",
                        "," if i + 1 < len(value) else "")
    return rows + [Row(depth, [("", closing + comma)])]


def places_of(value, pointer=""):
    """Every place in a value, with what stands there."""
    yield pointer, value
    if not is_leaf(value):
        for inner, child in members(value):
            yield from places_of(child, f"{pointer}/{inner}")


def fits(place, patterns):
    """Whether a place is one of those of the mapping, where * is any name and ** is all below."""
    words = (re.escape(pattern).replace(r"\*\*", ".*").replace(r"\*", "[^/]*") for pattern in patterns)
    return any(re.fullmatch(word, place) for word in words)


class Tool:
    def __init__(self, program, file):
        self.program = program
        self.file = file

    def answer(self, *words):
        return json.loads(subprocess.run([self.program, *words], stdout=subprocess.PIPE, check=True).stdout)

    def sources(self, place):
        """The members that a place of the result is made of, and all that they are inside of."""
        found = self.answer("explain", self.file, "--from-result", place, "--json", "--show-secrets")["sources"]
        return {source["pointer"][:end] for source in found
                for end in range(1, len(source["pointer"]) + 1) if (source["pointer"] + "/")[end] == "/"}


def meaning(old_place, old_value, new_place, new_value):
    """What becomes of a value, None where it is no more than around one."""
    if old_place.endswith(f"/{new_value}") or new_place.endswith(f"/{old_value}"):
        return "name"
    if not is_leaf(old_value) or not is_leaf(new_value):
        return None
    return "same" if new_value == old_value and type(new_value) is type(old_value) else "converted"


def joins_of(tool, old, new):
    """What belongs together: a place of the old layout, one of the new, and what becomes of the value."""
    lines = tool.answer("mapping", "--json")
    joins = []
    for new_place, new_value in places_of(new):
        sources = tool.sources(new_place)
        patterns = [pattern for line in lines if fits(new_place, line["new"]) for pattern in line["old"]]
        joins += [(place, new_place, meaning(place, value, new_place, new_value))
                  for place, value in places_of(old) if place in sources and fits(place, patterns)]
    return [join for join in joins if join[-1]]


class Panel:
    def __init__(self, title, words, rows, left):
        self.title = title
        self.words = words
        self.rows = rows
        self.left = left
        longest = max(INDENT * row.depth + row.length() for row in rows)
        self.width = round(longest * LETTER) + 2 * MARGIN
        self.height = round(CAPTION + len(rows) * ROW + MARGIN)
        self.right = left + self.width

    def row_at(self, pointer):
        """The number and the row of a place."""
        return next((i, row) for i, row in enumerate(self.rows) if row.pointer == pointer)

    def middle(self, number):
        return GROUND + CAPTION + number * ROW + ROW / 2

    def start(self, row):
        return self.left + MARGIN + row.depth * INDENT * LETTER

    def end(self, row):
        return self.start(row) + row.length() * LETTER

    def draw(self):
        yield (f'<rect class="panel" x="{self.left}" y="{GROUND}"'
               f' width="{self.width}" height="{self.height}" rx="8"/>')
        yield (f'<text class="words" x="{self.left + MARGIN}" y="{GROUND + 27}">'
               f'<tspan class="title">{escape(self.title)}</tspan>  {escape(self.words)}</text>')
        for i, row in enumerate(self.rows):
            spans = "".join(f'<tspan class="{kind}">{escape(text, quote=False)}</tspan>' if kind else escape(text)
                            for kind, text in row.parts)
            yield (f'<text x="{self.start(row):g}" y="{self.middle(i) + 4:g}"'
                   f' textLength="{row.length() * LETTER:g}">{spans}</text>')


def draw_line(kind, path, *ends):
    """A line with a dot at both ends."""
    dots = "".join(f'<circle class="end" cx="{x:g}" cy="{y:g}" r="2.6"/>' for x, y in ends)
    return f'<g class="{kind}"><path class="join" d="{path}"/>{dots}</g>'


def draw_join(old_panel, new_panel, old_place, new_place, kind, shift):
    number, row = old_panel.row_at(old_place)
    start, old_y = old_panel.end(row) + 7, old_panel.middle(number) + shift
    number, row = new_panel.row_at(new_place)
    end, new_y = new_panel.start(row) - 7, new_panel.middle(number)
    rise, bend = new_y - old_y, GAP / 2
    path = f"M{start:g} {old_y:g}H{old_panel.right}c{bend:g} 0 {bend:g} {rise:g} {GAP} {rise:g}H{end:g}"
    return draw_line(kind, path, (start, old_y), (end, new_y))


def draw_legend(x, bottom):
    for i, (kind, words) in enumerate(reversed(MEANINGS.items())):
        y = bottom - i * LEGEND_ROW
        yield draw_line(kind, f"M{x} {y}h32", (x, y), (x + 32, y))
        yield f'<text class="words" x="{x + 44}" y="{y + 4}">{escape(words)}</text>'


def draw(old, new, joins):
    old_panel = Panel("Old", "flat, mostly texts", rows_of(old), GROUND)
    new_panel = Panel("New", "nested, typed, lists numbered", rows_of(new), old_panel.right + GAP)
    legend = len(MEANINGS) * LEGEND_ROW
    height = max(old_panel.height + legend, new_panel.height)
    whole = (new_panel.right + GROUND, height + 2 * GROUND)
    yield (f'<svg xmlns="http://www.w3.org/2000/svg" width="{whole[0]}" height="{whole[1]}"'
           f' viewBox="0 0 {whole[0]} {whole[1]}" role="img">')
    yield "<title>A small configuration in the old and the new layout</title>"
    yield f"<style>{STYLE}</style>"
    yield f'<rect class="ground" width="{whole[0]}" height="{whole[1]}" rx="10"/>'
    yield from old_panel.draw()
    yield from new_panel.draw()
    for join in joins:
        twins = [twin for twin in joins if twin[0] == join[0]]
        shift = TWINS_APART * (twins.index(join) - (len(twins) - 1) / 2)
        yield draw_join(old_panel, new_panel, *join, shift)
    yield from draw_legend(GROUND + MARGIN, height - MARGIN)
    yield "</svg>"


def main(program, file):
    tool = Tool(program, file)
    with open(file, encoding="utf-8") as text:
        old = json.load(text)
    new = tool.answer("to-new", file)
    print("\n".join(draw(old, new, joins_of(tool, old, new))))


main(*sys.argv[1:])

"""What commands print on a terminal, with its colours and carets, as an SVG: terminal.py TITLE COMMAND... Each command
is run by the shell on a pseudo terminal, wide enough for its lines."""
import fcntl
import os
import pty
import struct
import subprocess
import sys
import termios

from rich.console import Console
from rich.terminal_theme import TerminalTheme
from rich.text import Text

COLUMNS = 120
NOT_FOUND = 127  # what the shell says of such a command

# The colours of the page in the dark, for the eight that a terminal has.
GROUND, LETTERS, FAINT = (20, 23, 28), (228, 232, 238), (156, 167, 181)
HUES = [(255, 148, 140), (98, 210, 151), (241, 182, 92), (125, 180, 255), (212, 163, 238), (110, 208, 214), LETTERS]
COLOURS = TerminalTheme(GROUND, LETTERS, [GROUND, *HUES], [FAINT, *HUES])

# The frame that comes with rich fetches a font from a server.
FRAME = """<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {terminal_height}" role="img">
<title>TITLE</title>
<style>
    .ground {{ fill: #14171c; }}
    .{unique_id}-matrix {{
        font: {char_height}px ui-monospace, SFMono-Regular, "Cascadia Mono", Menlo, Consolas, "DejaVu Sans Mono",
            monospace;
    }}
    {styles}
</style>
<defs>
{lines}
</defs>
<rect class="ground" width="{width}" height="{terminal_height}" rx="10"/>
<g class="{unique_id}-matrix" transform="translate(16 0)">
{matrix}
</g>
</svg>"""


def printed_by(command):
    """What the command prints on a terminal, with the terminal's codes."""
    ours, its = pty.openpty()
    fcntl.ioctl(its, termios.TIOCSWINSZ, struct.pack("4H", 50, COLUMNS, 0, 0))
    kept = {name: value for name, value in os.environ.items() if name != "NO_COLOR"}
    with subprocess.Popen(command, shell=True, stdin=subprocess.DEVNULL, stdout=its, stderr=its,
                          env={**kept, "TERM": "xterm-256color", "LC_ALL": "C.UTF-8"}) as process:
        os.close(its)
        printed = b""
        while block := read(ours):
            printed += block
    os.close(ours)
    if process.returncode == NOT_FOUND:
        sys.exit(printed.decode())
    return printed.decode().replace("\r\n", "\n")


def read(terminal):
    """Nothing, when nobody writes to it any more."""
    try:
        return os.read(terminal, 65536)
    except OSError:
        return b""


def main(title, *commands):
    lines = [Text("")]
    for command in commands:
        lines += [Text.assemble(("$ ", "bright_black"), (command, "bold")), Text.from_ansi(printed_by(command))]
    width = max(line.cell_len for text in lines for line in text.split("\n"))
    with open(os.devnull, "w", encoding="utf-8") as nowhere:
        console = Console(record=True, file=nowhere, width=width + 2, color_system="standard", force_terminal=True,
                          legacy_windows=False, _environ={})
        for text in [*lines, Text("")]:
            console.print(text, soft_wrap=True)
    print(console.export_svg(theme=COLOURS, code_format=FRAME.replace("TITLE", title), unique_id="terminal"))


main(*sys.argv[1:])

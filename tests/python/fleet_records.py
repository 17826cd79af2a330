"""A generator of records: fleet_records.py EXAMPLES BYTES [SEED] prints about so many bytes of them, a tenth of the
records broken. A record holds a configuration at /device/config, or with --text as a text, or is one with --whole."""
import json
import os
import random
import sys


class Records:
    def __init__(self, examples, seed, layout="old", form="held"):
        self.chance = random.Random(seed)
        self.form = form
        self.configurations = []
        for name in ("home-gateway", "dsl-gateway"):
            with open(os.path.join(examples, "%s.%s.json" % (name, layout)), encoding="utf-8") as file:
                self.configurations.append(json.load(file))
        self.number = 0

    def line(self):
        """The next line, with its line break."""
        self.number += 1
        text = json.dumps(self.configuration(), ensure_ascii=self.chance.random() < 0.5).encode()
        is_broken = self.chance.random() < 0.1
        if is_broken and self.form != "whole" and self.chance.random() < 0.5:
            text, is_broken = self.broken(text), False
        if self.form != "whole":
            text = self.around(text)
        if is_broken:
            text = self.broken(text)
        text = text.replace(b"\n", b" ")
        if self.chance.random() < 0.05:
            text += self.chance.choice([b"\r", b"\n", b"\n \t\r"])
        return text + b"\n"

    def configuration(self):
        """Some of the sections, of which one in twenty configurations has a value that does not fit."""
        whole = self.chance.choice(self.configurations)
        sections = whole.get("Device", whole)
        chosen = {name: sections[name] for name in sections if self.chance.random() < 0.3}
        if self.chance.random() < 0.05 and chosen:
            chosen[self.chance.choice(list(chosen))] = self.chance.choice(["x", -1, True, None, [], {}, "é世"])
        return {"Device": chosen} if "Device" in whole else chosen

    def around(self, text):
        held = json.dumps(text.decode("utf-8", "replace")).encode() if self.form == "text" else text
        return (b'{"serial": %s, "note": "\xc3\xa9 [{", "device" : {"config":  %s, "x": [1.50, "}"]}, "z": -0.0}'
                % (self.chance.choice([b"%d", b'"A\\u0041-%d"']) % self.number, held))

    def broken(self, text):
        at = self.chance.randrange(len(text) + 1)
        odd = bytes([self.chance.choice([0, 1, 9, 13, 34, 44, 92, 91, 123, 125, 0x80, 0xC3, 0xFF])])
        return self.chance.choice([
            text[:at],
            text[:at] + odd + text[at:],
            text[:at] + text[at + 1:],
            text + b"}",
            b"\xef\xbb\xbf" + text,
            text.replace(b'":', b'": \\u0000', 1),
            text.replace(b'"config"', b'"other"'),
            b'{"twice": 1, "twice": 2, ' + text[1:],
            self.chance.choice([b"[", b"null", b'"text"', b"17", b"[]", b"{}", b"\x1f\x8b\x08", b"<a/>", b"'"]),
            b'{"a":' + b"[" * 3000 + b"]" * 3000 + b"}",
        ])


def main():
    words = [word for word in sys.argv[1:] if not word.startswith("--")]
    forms = {"--text": "text", "--whole": "whole"}
    form = next((forms[word] for word in sys.argv[1:] if word in forms), "held")
    records = Records(words[0], int(words[2]) if len(words) > 2 else 1, form=form)
    left = int(words[1])
    while left > 0:
        line = records.line()
        sys.stdout.buffer.write(line)
        left -= len(line)


if __name__ == "__main__":
    main()

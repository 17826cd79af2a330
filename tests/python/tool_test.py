"""The package and the tool say the same, byte for byte: of the examples, and of every case of a whole configuration or
of a section by its name."""
import glob
import json
import os
import subprocess
import tempfile
import unittest

import kcnvrt

TOOL = os.environ["KCNVRT"]
TREE = os.environ["TREE"]

# The flags of the library's functions, which the cases have.
DSL_VLAN = 1
MERGE_PATCH = 2


def run_tool(arguments, text=b""):
    """Exit status, output, and problems as the package has them."""
    run = subprocess.run([TOOL, *arguments, "--compact", "--errors", "json"], input=text, capture_output=True,
                         check=False)
    told = [json.loads(line) for line in run.stderr.decode().splitlines()]
    names = ("line", "column", "pointer", "severity", "function", "message")
    return run.returncode, run.stdout, [tuple(problem[name] for name in names) for problem in told]


def ask(function, *arguments, **options):
    """The same of the package."""
    result = function(*arguments, **options)
    status = {kcnvrt.Status.CONVERTED: 0, kcnvrt.Status.UNREADABLE: 3}.get(result.status, 1)
    return (status, b"" if result.output is None else result.output + b"\n",
            [(problem.line, problem.column, problem.pointer, problem.severity, problem.function, problem.message)
             for problem in result.problems])


class Compared(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def file(self, name, text):
        path = os.path.join(self.folder.name, name)
        with open(path, "wb") as file:
            file.write(text)
        return path


class Examples(Compared):
    def setUp(self):
        super().setUp()
        self.texts = []
        for name in ("home-gateway.old", "home-gateway.new", "dsl-gateway.old", "dsl-gateway.new"):
            with open("%s/examples/%s.json" % (TREE, name), "rb") as file:
                self.texts.append(file.read())

    def test_convert_alike(self):
        for text in self.texts:
            for name, function in (("convert", kcnvrt.convert), ("to-new", kcnvrt.to_new), ("to-old", kcnvrt.to_old)):
                self.assertEqual(ask(function, text), run_tool([name], text))
                self.assertEqual(ask(function, text, force=True), run_tool([name, "--force"], text))

    def test_convert_alike_when_they_are_broken(self):
        for text in self.texts:
            for at in range(0, len(text), len(text) // 40):
                for broken in (text[:at], text[:at] + text[at + 1:], text[:at] + b"\xff" + text[at:]):
                    self.assertEqual(ask(kcnvrt.convert, broken, partial=True),
                                     run_tool(["convert", "--partial"], broken))

    def test_have_sections_that_convert_alike(self):
        for layout in ("new", "old"):
            names = kcnvrt.sections(layout)
            self.assertGreater(len(names), 20)
            for name in names:
                for text in self.texts:
                    self.assertEqual(ask(kcnvrt.section, name, text, towards=layout),
                                     run_tool(["section", name, "--to-" + layout], text))

    def test_differ_alike(self):
        for text in self.texts:
            for other in self.texts:
                paths = [self.file("text", text), self.file("other", other)]
                for options, words in (({}, []), ({"merge_patch": True}, ["--merge-patch"])):
                    self.assertEqual(ask(kcnvrt.diff, text, other, **options), run_tool(["diff", *paths, *words]))
                self.assertEqual(ask(kcnvrt.apply, text, other), run_tool(["apply", *paths]))


class Cases(Compared):
    def compare(self, case):
        options, words = {}, []
        flags = case.get("flags", 0)
        if flags & DSL_VLAN:
            options["dsl_vlan"] = True
            words.append("--dsl-vlan")
        if "base" in case:
            options["base"] = self.text_of(case["base"])
            words += ["--base", self.file("base", options["base"])]
            if flags & MERGE_PATCH:
                options["merge_patch"] = True
                words.append("--merge-patch")
        text = self.text_of(case["source"])
        towards = case["call"][-3:]
        if case["call"] in ("k_cnvrt_to_new", "k_cnvrt_to_old"):
            function = {"new": kcnvrt.to_new, "old": kcnvrt.to_old}[towards]
            self.assertEqual(ask(function, text, **options), run_tool(["to-" + towards, *words], text), case)
        elif case["name"] in kcnvrt.sections(towards):
            options.pop("dsl_vlan", None)
            words = [word for word in words if word != "--dsl-vlan"]
            self.assertEqual(ask(kcnvrt.section, case["name"], text, towards=towards, **options),
                             run_tool(["section", case["name"], "--to-" + towards, *words], text), case)
        else:
            return 0
        return 1

    @staticmethod
    def text_of(value):
        return json.dumps(value, ensure_ascii=False).encode("utf-8", "surrogatepass")

    def test_convert_alike(self):
        calls = {"k_cnvrt_to_new", "k_cnvrt_to_old", "k_cnvrt_get_section_to_new", "k_cnvrt_get_section_to_old"}
        compared = 0
        for path in glob.glob(TREE + "/tests/cases/*/*.json"):
            with open(path, "rb") as file:
                for case in json.load(file):
                    if case["call"] in calls and "source" in case:
                        compared += self.compare(case)
        self.assertGreater(compared, 250)


unittest.main()

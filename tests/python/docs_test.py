"""What the pages show of Python is what happens."""
import contextlib
import doctest
import io
import os
import re
import tempfile
import unittest

import kcnvrt

TREE = os.environ["TREE"]


class Pages(unittest.TestCase):
    def test_of_python_shows_what_happens(self):
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(TREE + "/examples")
        failed, tried = doctest.testfile(TREE + "/docs/python.md", module_relative=False)
        self.assertEqual(failed, 0)
        self.assertGreater(tried, 10)

    def test_of_python_lists_every_call(self):
        with open(TREE + "/docs/python.md", encoding="utf-8") as file:
            listed = set(re.findall(r"^\| `(\w+)\(", file.read(), re.MULTILINE))
        calls = {name for name in kcnvrt.__all__ if name.islower() and name != "version"}
        self.assertEqual(listed, calls)

    def test_that_comes_first_shows_a_program_that_runs(self):
        with open(TREE + "/README.md", encoding="utf-8") as file:
            program = re.search(r"```python\n(.*?)```", file.read(), re.DOTALL).group(1)
        with open(TREE + "/examples/home-gateway.old.json", "rb") as file:
            text = file.read()
        rejected = b'{"ntpclient": 5}'
        for given, shown in ((text, kcnvrt.to_new(text).text), (rejected, str(kcnvrt.to_new(rejected).problems[0]))):
            self.assertEqual(self.printed_by(program.replace("open(", "opened("), given), shown + "\n")

    @staticmethod
    def printed_by(program, text):
        """What it prints when the file that it reads holds the text."""
        printed = io.StringIO()
        with tempfile.TemporaryFile() as file, contextlib.redirect_stdout(printed):
            file.write(text)
            file.seek(0)
            exec(program, {"opened": lambda *_: file})
        return printed.getvalue()


unittest.main()

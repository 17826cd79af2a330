"""The package's own text: no newer than Python 3.9, of types that fit, in lines that fit a page."""
import ast
import glob
import os
import subprocess
import sys
import unittest

PACKAGE = os.path.join(os.environ["TREE"], "python", "kcnvrt")
OLDEST = (3, 9)


class Source(unittest.TestCase):
    def test_is_read_by_the_oldest_python(self):
        files = glob.glob(PACKAGE + "/**/*.py", recursive=True)
        self.assertGreater(len(files), 3)
        for path in files:
            with open(path, encoding="utf-8") as file:
                text = file.read()
            ast.parse(text, path, feature_version=OLDEST)
            self.assertLessEqual(max(map(len, text.splitlines())), 120, path)

    def test_has_types_that_fit(self):
        run = subprocess.run(
            [sys.executable, "-m", "mypy", "--config-file", os.path.join(os.path.dirname(PACKAGE), "mypy.ini"),
             "--cache-dir", os.devnull, PACKAGE], capture_output=True, text=True, check=False)
        self.assertEqual(run.returncode, 0, run.stdout + run.stderr)

    def test_is_marked_as_typed(self):
        self.assertTrue(os.path.exists(PACKAGE + "/py.typed"))


unittest.main()

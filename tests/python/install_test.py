"""An installed copy: Debian's Python finds the package, and the package its library, also when all of it was moved."""
import os
import subprocess
import sys
import tempfile
import unittest

PROGRAM = """
import kcnvrt, kcnvrt._library
print(kcnvrt.to_new('{"lang": "en"}').ok, kcnvrt._library.load()._name)
"""


class Installed(unittest.TestCase):
    def setUp(self):
        """The list of what is installed, by which it is removed, stays that of whoever has installed something."""
        self.list = os.environ["BUILD"] + "/install_manifest.txt"
        self.kept = None
        if os.path.exists(self.list):
            with open(self.list, "rb") as file:
                self.kept = file.read()

    def tearDown(self):
        if self.kept is None:
            if os.path.exists(self.list):
                os.remove(self.list)
        else:
            with open(self.list, "wb") as file:
                file.write(self.kept)

    def test_is_found_with_its_library(self):
        # Without what this test was started with.
        environment = {"PATH": os.environ["PATH"], "PYTHONDONTWRITEBYTECODE": "1"}
        searched = subprocess.check_output([sys.executable, "-c", "import sys; print(*sys.path, sep=':')"], text=True,
                                           env=environment).strip().split(":")
        for prefix in ("/usr", "/usr/local"):
            with tempfile.TemporaryDirectory() as folder:
                subprocess.run(["cmake", "--install", os.environ["BUILD"], "--prefix", prefix], check=True,
                               env=dict(environment, DESTDIR=folder + "/first"), stdout=subprocess.DEVNULL)
                moved = folder + "/moved"
                os.rename(folder + "/first", moved)
                found = [path for path in searched if os.path.exists(moved + path + "/kcnvrt")]
                self.assertEqual(len(found), 1, prefix)
                printed = subprocess.check_output([sys.executable, "-c", PROGRAM], text=True,
                                                  env=dict(environment, PYTHONPATH=moved + found[0]))
                self.assertRegex(printed, "^True " + moved)
                files = sorted(os.listdir(moved + found[0] + "/kcnvrt"))
                for name in ("__init__.py", "library-path", "py.typed"):
                    self.assertIn(name, files)
                self.assertFalse([name for name in files if "cache" in name])

    def test_is_left_out_where_the_system_has_no_python(self):
        with open(os.environ["BUILD"] + "/python/install.cmake", encoding="utf-8") as file:
            script = file.read()
        self.assertEqual(script.count("/usr/bin/python3"), 1)
        for python, installed in (("/usr/bin/python3", True), ("/there/is/none", False)):
            with tempfile.TemporaryDirectory() as folder:
                with open(folder + "/install.cmake", "w", encoding="utf-8") as file:
                    file.write(script.replace("/usr/bin/python3", python))
                done = subprocess.run(["cmake", "-DCMAKE_INSTALL_PREFIX=/usr/local", "-P", folder + "/install.cmake"],
                                      env=dict(os.environ, DESTDIR=folder + "/root"), check=True, text=True,
                                      stdout=subprocess.PIPE)
                self.assertEqual(os.path.exists(folder + "/root/usr/local/lib"), installed)
                self.assertEqual("its package is left out" in done.stdout, not installed)


unittest.main()

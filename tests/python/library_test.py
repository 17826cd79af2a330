"""The library: found, or missed in words that help; declared as its header declares it; all it gives given back."""
import ctypes
import os
import re
import shutil
import subprocess
import sys
import tempfile
import threading
import tracemalloc
import unittest

import kcnvrt
from kcnvrt import _library

TREE = os.environ["TREE"]
STAND_IN = os.environ["STAND_IN"]
LIBRARY = os.environ["KCNVRT_LIBRARY"]


def example(name):
    with open("%s/examples/%s.json" % (TREE, name), "rb") as file:
        return file.read()


def run_python(program, path=os.path.join(TREE, "python"), **environment):
    """What the program prints, in a Python of its own. Variables that are None are not set."""
    given = dict(os.environ, PYTHONPATH=path, **environment)
    run = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, check=False,
                         env={name: value for name, value in given.items() if value is not None})
    return run.stdout + run.stderr


class Places(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name
        shutil.copytree(os.path.join(TREE, "python", "kcnvrt"), self.folder + "/python/kcnvrt")

    def loaded(self, **environment):
        program = "import kcnvrt._library; print(kcnvrt._library.load()._name)"
        return run_python(program, self.folder + "/python", **environment).strip()

    def test_the_variable_comes_first(self):
        shutil.copy(LIBRARY, self.folder + "/python/kcnvrt/" + _library.SONAME)
        self.assertEqual(self.loaded(KCNVRT_LIBRARY=LIBRARY), LIBRARY)

    def test_a_library_in_the_package_is_found(self):
        where = self.folder + "/python/kcnvrt/" + _library.SONAME
        os.symlink(LIBRARY, where)
        self.assertEqual(self.loaded(KCNVRT_LIBRARY=None), where)

    def test_a_library_that_the_installation_noted_is_found(self):
        os.mkdir(self.folder + "/lib")
        where = self.folder + "/lib/" + _library.SONAME
        os.symlink(LIBRARY, where)
        with open(self.folder + "/python/kcnvrt/library-path", "w", encoding="utf-8") as file:
            file.write("../../lib/%s\n" % _library.SONAME)
        self.assertEqual(self.loaded(KCNVRT_LIBRARY=None), where)

    def test_a_library_of_the_system_is_found(self):
        found = self.loaded(KCNVRT_LIBRARY=None, LD_LIBRARY_PATH=os.path.dirname(LIBRARY))
        self.assertEqual(found, _library.SONAME)

    def test_a_library_that_is_missed_is_said_to_be(self):
        self.assertRegex(
            self.loaded(KCNVRT_LIBRARY="/nowhere/lib.so"),
            r"LibraryNotFound: libk_cnvrt_text is not there; install it, or set KCNVRT_LIBRARY to its file\. "
            r"Tried: /nowhere/lib\.so \(.*No such file",
        )
        self.assertRegex(self.loaded(KCNVRT_LIBRARY=None), r"LibraryNotFound: .* Tried: /.*/kcnvrt/libk_cnvrt_text")

    def test_another_library_is_not_taken_for_it(self):
        self.assertRegex(self.loaded(KCNVRT_LIBRARY="libc.so.6"),
                         r"LibraryNotFound: .*libc\.so\.6 \(it has no k_text_run\)")

    def test_the_package_can_be_imported_without_it(self):
        self.assertEqual(run_python("import kcnvrt", KCNVRT_LIBRARY="/nowhere"), "")

    def test_the_file_of_the_built_library_has_its_name(self):
        self.assertEqual(os.path.basename(LIBRARY), _library.SONAME)


class Header(unittest.TestCase):
    def setUp(self):
        with open(TREE + "/text/include/k_cnvrt_text.h", encoding="utf-8") as file:
            self.header = re.sub(r"/\*.*?\*/", "", file.read(), flags=re.DOTALL)

    def test_constants_are_those_of_the_header(self):
        constants = re.findall(r"\bK_TEXT_(\w+) = (-?\d+)(?:u << (\d+))?", self.header)
        self.assertGreater(len(constants), 30)
        for name, value, shift in constants:
            self.assertEqual(getattr(_library, name), int(value) << int(shift or 0), name)

    def test_structures_are_those_of_the_header(self):
        structures = {"k_text_request_t": _library.Request, "k_text_problem_t": _library.Problem,
                      "k_text_loss_t": _library.Loss}
        declared = [line.split() for line in subprocess.check_output([os.environ["HEADER"]], text=True).splitlines()]
        self.assertGreater(len(declared), 20)
        for name, member, offset, size in declared:
            structure = structures[name]
            if member == "sizeof":
                self.assertEqual(ctypes.sizeof(structure), int(size), name)
            else:
                field = getattr(structure, member)
                self.assertEqual((field.offset, field.size), (int(offset), int(size)), name + "." + member)

    def test_functions_are_those_of_the_header(self):
        declared = set(re.findall(r"\b(k_text_\w+)\(", self.header))
        self.assertEqual(set(_library._FUNCTIONS) | {"k_text_excerpt"}, declared)


class Memory(unittest.TestCase):
    def test_that_is_missing_for_a_result_raises(self):
        program = "import kcnvrt\ntry: kcnvrt.to_new('%s')\nexcept MemoryError as error: print(error)"
        for text in ("nothing", "no memory"):
            self.assertEqual(run_python(program % text, KCNVRT_LIBRARY=STAND_IN),
                             "there is too little memory to convert the text\n")

    def test_that_is_missing_for_a_search_raises(self):
        program = "import kcnvrt\ntry: kcnvrt.find(b'{}', '')\nexcept MemoryError as error: print(error)"
        self.assertEqual(run_python(program, KCNVRT_LIBRARY=STAND_IN),
                         "there is too little memory to look for a value\n")

    def test_that_is_missing_for_a_conversion_raises(self):
        program = """
import resource
import kcnvrt
kcnvrt.to_new("{}")
text = b'{"acs": [' + b"[]," * 1000000 + b"[]]}"
with open("/proc/self/statm") as file:
    used = int(file.read().split()[0]) * resource.getpagesize()
resource.setrlimit(resource.RLIMIT_AS, (used + (20 << 20), -1))
try:
    kcnvrt.to_new(text)
except MemoryError as error:
    print(error)
resource.setrlimit(resource.RLIMIT_AS, (-1, -1))
print(kcnvrt.to_new(text).ok)
"""
        self.assertEqual(run_python(program), "there is too little memory to convert the text\nTrue\n")

    def test_is_given_back(self):
        """What malloc and Python have in use after 10,000 calls is what they had before."""

        class Mallinfo(ctypes.Structure):
            _fields_ = [(name, ctypes.c_size_t) for name in (
                "arena", "ordblks", "smblks", "hblks", "hblkhd",
                "usmblks", "fsmblks", "uordblks", "fordblks", "keepcost")]

        mallinfo = ctypes.CDLL(None).mallinfo2
        mallinfo.restype = Mallinfo

        def call_all():
            kcnvrt.to_new('{"lang": "en"}', indent=4)
            kcnvrt.to_new('{"ntpclient": 5, "macfilter": [1]}', partial=True)
            kcnvrt.to_old(bytearray(b'{"Device": '))
            kcnvrt.diff("{}", memoryview(b'{"a": 1}'))
            kcnvrt.section("Users", "[]", towards="new", base="{}")
            for wrong in ({"towards": "up"}, {"indent": 99}):
                self.assertRaises(kcnvrt.WrongUsage, kcnvrt.convert, "{}", **wrong)
            self.assertRaises(kcnvrt.WrongUsage, kcnvrt.to_new, "{}", base="{}", partial=True)
            self.assertRaises(TypeError, kcnvrt.to_new, 5)

        def in_use():
            info = mallinfo()
            return info.uordblks + info.hblkhd + tracemalloc.get_traced_memory()[0]

        for _ in range(100):
            call_all()
        tracemalloc.start()
        self.addCleanup(tracemalloc.stop)
        call_all()
        before = in_use()
        for _ in range(10000 // 5):
            call_all()
        # A call that kept a byte would be seen.
        self.assertLess(in_use() - before, 10000)


class Threads(unittest.TestCase):
    def test_are_in_the_library_at_the_same_time(self):
        """Each of two calls waits in the library until the other has come. The interpreter's lock would prevent it."""
        program = """
import threading
import kcnvrt
met = []
calls = [threading.Thread(target=lambda: met.append(kcnvrt.to_new("meet").ok)) for _ in range(2)]
for each in calls: each.start()
for each in calls: each.join()
print(met)
"""
        self.assertEqual(run_python(program, KCNVRT_LIBRARY=STAND_IN), "[True, True]\n")

    def test_get_their_own_results(self):
        texts = ['{"ntpclient": 5, "lang": "%d"}' % number for number in range(8)]
        texts += [example(name) for name in ("home-gateway.old", "home-gateway.new", "dsl-gateway.old")]
        expected = [kcnvrt.convert(text, partial=True) for text in texts]
        wrong = []

        def convert_all(first):
            for turn in range(50):
                at = (first + turn) % len(texts)
                if kcnvrt.convert(texts[at], partial=True) != expected[at]:
                    wrong.append(at)

        threads = [threading.Thread(target=convert_all, args=(first,)) for first in range(8)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(wrong, [])

    def test_may_load_the_library_together(self):
        program = """
import threading
import kcnvrt
done = []
calls = [threading.Thread(target=lambda: done.append(kcnvrt.to_new("{}").ok)) for _ in range(8)]
for each in calls: each.start()
for each in calls: each.join()
print(all(done), len(done))
"""
        self.assertEqual(run_python(program), "True 8\n")


unittest.main()

"""Fleets: the parts of the input, what becomes of their records (what `kcnvrt stream` makes of them), and runs on a
cluster of processes, of which some are killed."""
import contextlib
import glob
import io
import json
import os
import random
import re
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

import distributed
from fleet_records import Records
from kcnvrt.fleet import __main__ as command
from kcnvrt.fleet import _part, _plan, _records, _run, _storage
from kcnvrt.fleet._census import NAMED_ENTRIES, Tally
from kcnvrt.fleet._progress import Progress

TOOL = os.environ["KCNVRT"]
EXAMPLES = os.path.join(os.environ["TREE"], "examples")


def run_command(*words, **environment):
    run = subprocess.run([sys.executable, "-m", "kcnvrt.fleet", *words], capture_output=True, text=True, check=False,
                         env=dict(os.environ, **environment))
    return run.returncode, run.stdout + run.stderr


def source(name):
    """A file as a run finds it."""
    return _storage.found(name)[0]


class InFolder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)

    @staticmethod
    def write(name, content):
        with open(name, "wb") as file:
            file.write(content)

    @staticmethod
    def read(name):
        with open(name, "rb") as file:
            return file.read()

    def records(self, count, name="fleet.ndjson", **form):
        records = Records(EXAMPLES, len(name) + count, **form)
        self.write(name, b"".join(records.line() for _ in range(count)))

    def joined(self, folder):
        return b"".join(self.read(path) for path in sorted(glob.glob(folder + "/*.ndjson")))

    def stream(self, *words):
        """What the tool makes of it: converted, rejects, problems, summary."""
        run = subprocess.run([TOOL, "stream", *words, "--rejects", "rejects", "--problems", "problems",
                              "--summary", "json"], capture_output=True, check=False)
        self.assertIn(run.returncode, (0, 1), run.stderr)
        return run.stdout, self.read("rejects"), self.read("problems"), json.loads(run.stderr)

    def compare(self, output, expected):
        """The results of a run in a folder, and what the tool makes of it."""
        for folder, wanted in zip((_part.CONVERTED, _part.REJECTS, _part.PROBLEMS), expected):
            self.assertEqual(self.joined(output + "/" + folder), wanted, folder)
        self.assertEqual([name for name in os.listdir(output + "/converted") if name.startswith(".")], [])


class Plan(InFolder):
    def test_parts_are_whole_lines_and_all_of_them(self):
        chance = random.Random(17)
        for _ in range(400):
            text = bytes(chance.choice(b"ab\n") for _ in range(chance.randrange(40)))
            self.write("text", text)
            size = chance.randrange(1, 12)
            ranges = _plan.ranges_of(source("text"), size)
            parts = _plan.parts_of(ranges, [_plan.cut(each) for each in ranges])
            self.assertEqual(b"".join(text[part.start:part.end] for part in parts), text)
            self.assertEqual([part.number for part in parts], list(range(len(parts))))
            for part in parts:
                self.assertLess(part.start, part.end)
                self.assertTrue(part.start == 0 or text[part.start - 1:part.start] == b"\n", (text, size, part))
                self.assertEqual(part.line, text.count(b"\n", 0, part.start) + 1, (text, size, part))

    def test_files_follow_one_another_with_lines_of_their_own(self):
        self.write("a", b"1\n2\n3")
        self.write("b", b"")
        self.write("c", b"4\n5\n")
        ranges = [each for name in "abc" for each in _plan.ranges_of(source(name), 3)]
        parts = _plan.parts_of(ranges, [_plan.cut(each) for each in ranges])
        self.assertEqual([(part.number, part.file, part.start, part.end, part.line) for part in parts],
                         [(0, "a", 0, 4, 1), (1, "a", 4, 5, 3), (2, "c", 0, 4, 1)])

    def test_lines_come_whole_from_blocks_of_any_size(self):
        chance = random.Random(18)
        for _ in range(400):
            text = bytes(chance.choice(b"abc\r\n") for _ in range(chance.randrange(60)))
            size, longest = chance.randrange(1, 9), chance.randrange(1, 9)
            blocks = [text[at:at + size] for at in range(0, len(text), size)]
            pieces = list(_part.pieces(blocks, longest))
            self.assertEqual(b"".join(piece.bytes for piece in pieces), text)
            lines, line = [], b""
            for piece in pieces:
                if not (piece.is_first and piece.is_last):
                    whole = text[len(b"".join(lines)):].split(b"\n")[0]
                    self.assertGreater(len(_part.text_of(whole)), longest)
                self.assertEqual(piece.is_first, line == b"")
                self.assertLessEqual(len(piece.bytes), longest + 2 + size)
                line += piece.bytes
                if piece.is_last:
                    lines.append(line)
                    line = b""
            self.assertEqual(lines, [each + b"\n" for each in text.split(b"\n")[:-1]] + [text.split(b"\n")[-1]] * (
                not text.endswith(b"\n") and text != b""))


class Parts(InFolder):
    """Without a cluster."""

    def convert(self, part_size, **options):
        shutil.rmtree("out", ignore_errors=True)
        for folder in _part.FOLDERS:
            os.makedirs("out/" + folder)
        job = _part.Job("out", _records.Options(**options))
        ranges = _plan.ranges_of(source("fleet.ndjson"), part_size)
        parts = _plan.parts_of(ranges, [_plan.cut(each) for each in ranges])
        census = Tally()
        for part in parts:
            _part.convert(job, part)
            census.add(_part.tally_of(_storage.Storage("out"), part))
        return len(parts), census

    def check(self, words, part_size=50000, **options):
        expected = self.stream(*words, "fleet.ndjson")
        parts, census = self.convert(part_size, **options)
        self.compare("out", expected)
        summary = expected[3]
        del summary["seconds"]
        self.assertEqual(json.loads(census.to_json()), summary)
        return parts, census

    def test_make_what_the_stream_makes(self):
        self.records(400, form="whole")
        parts, census = self.check(["--to-new"], towards="new")
        self.assertGreater(parts, 10)
        self.assertGreater(census.rejected, 10)
        self.assertGreater(census.converted, 100)
        self.check(["--auto"], towards=None)
        self.check(["--to-new", "--force"], towards="new", force=True)
        self.check(["--to-new", "--dsl-vlan"], towards="new", dsl_vlan=True)
        self.check(["--to-new", "--on-reject", "null", "--show-secrets"], towards="new", null_for_rejects=True,
                   show_secrets=True)

    def test_make_what_the_stream_makes_towards_old(self):
        self.records(300, layout="new", form="whole")
        self.check(["--to-old"], towards="old")

    def test_make_what_the_stream_makes_of_configurations_in_records(self):
        self.records(400)
        words = ["--to-new", "--at", "/device/config"]
        _, census = self.check([*words, "--id", "/serial"], towards="new", at="/device/config", id="/serial")
        self.assertGreater(census.converted, 100)
        self.check([*words, "--id", "/device/x/1"], towards="new", at="/device/config", id="/device/x/1")
        self.check([*words, "--at-text"], towards="new", at="/device/config", at_text=True)
        self.check(["--to-new", "--at", "/device/x/0"], towards="new", at="/device/x/0")

    def test_make_what_the_stream_makes_of_configurations_in_texts(self):
        self.records(400, form="text")
        words = ["--to-new", "--at", "/device/config", "--at-text", "--id", "/note"]
        _, census = self.check(words, towards="new", at="/device/config", at_text=True, id="/note")
        self.assertGreater(census.converted, 100)

    def test_make_what_the_stream_makes_of_odd_records(self):
        odd = [b'{"id":%s,"config":{"x":}}' % each for each in (
            b"1e400", b"18446744073709551616", b"-0", b'"\\ud800"', b'"\\u0000\\u007f\\n\\t\\"\\\\"', b"tru",
            b"[1]", b"{}", b'"\xc2\x80\x7f\xe2\x80\xa8"', b"null", b"1.50", b"-0.25E+4000", b"01", b"1.", b"1e", b"-",
            b"12x", b"false")]
        odd += [b'{"config":{},"config":{}}', b'{"config":{"lang":"\\u001f\\u007f/"}}', b"", b"\r",
                b'{"config":"{}"}\0', b'{"config":"\\ud800"}', b'{"config":"\xff"}',
                b'{"\xc3\xa9":1, "config":  5}', b'{"config":tru}', b'{"config":{}} {}']
        for end in (b"\n", b"\r\n", b""):
            self.write("fleet.ndjson", b"\n".join(odd) + end)
            for part_size in (1, 20, 1000):
                self.check(["--to-new", "--at", "/config", "--id", "/id"], part_size, towards="new", at="/config",
                           id="/id")
                self.check(["--to-new", "--at", "/config", "--at-text", "--id", "/id"], part_size, towards="new",
                           at="/config", at_text=True, id="/id")

    def test_reject_what_is_too_long_as_the_stream_does(self):
        self.write("fleet.ndjson", b'{}\n{"lang": "en", "x": "%s"}\n\n{}\r\n%s' % (b"y" * 3000000, b"z" * 2500000))
        for part_size in (1000, 10000000):
            _, census = self.check(["--to-new", "--max-record", "1M"], part_size, towards="new", max_record=1 << 20)
            self.assertEqual((census.records, census.rejected), (4, 2))
        self.write("fleet.ndjson", b'{}\n{"lang": "en"}\r\n')
        for longest, rejected in ((13, 1), (14, 0)):
            _, census = self.check(["--to-new", "--max-record", str(longest)], 5, towards="new", max_record=longest)
            self.assertEqual(census.rejected, rejected)

    def test_count_what_the_stream_counts_of_losses(self):
        self.records(40)
        self.write("fleet.ndjson", self.read("fleet.ndjson") + b'{"device": {"config": {"odd": {"1": "x"}}}}\n' * 2)
        for options, words in (({"id": "/serial"}, ["--id", "/serial"]), ({}, [])):
            parts, census = self.check(["--to-new", "--at", "/device/config", "--losses", *words], towards="new",
                                       at="/device/config", losses=True, **options)
            self.assertGreater(parts, 2)
            self.assertGreater(len(census.findings), 10)
            self.assertEqual(census.findings["dropped", "/odd"].records, 2)

    def test_keep_numbers_that_records_are_called_by(self):
        self.write("fleet.ndjson", b"".join(b'{"id":%s,"c":{"odd%d":1}}\n' % (number, i) for i, number in enumerate((
            b"1.50", b"-0", b"1E3", b"0.1e-2", b"12", b"123456789.123456789123", b"true"))))
        for part_size in (1, 1000):
            _, census = self.check(["--to-new", "--at", "/c", "--id", "/id", "--losses"], part_size, towards="new",
                                   at="/c", id="/id", losses=True)
            self.assertEqual(census.findings["dropped", "/odd0"].example, "1.50")
            self.assertEqual(census.findings["dropped", "/odd2"].example, "1E3")
            self.assertIn(b'"example": 123456789.123456789123}', census.to_json())

    def test_have_the_same_names_of_places(self):
        with open(os.environ["TREE"] + "/text/layouts.json", encoding="utf-8") as file:
            containers = [each for each in json.load(file)["containers"] if each["is"] == "names"]
        places = {each[layout] for each in containers for layout in ("old", "new") if layout in each}
        self.assertEqual(NAMED_ENTRIES, {re.sub(r"\[.*?\]", "*", place) for place in places})

    def test_that_fail_leave_nothing_behind(self):
        self.write("fleet.ndjson", b"{}\nx\n{}\n")
        with self.assertRaises(EOFError):
            for folder in _part.FOLDERS:
                os.makedirs("out/" + folder)
            _part.convert(_part.Job("out", _records.Options(towards="new")),
                          _plan.Part(0, "fleet.ndjson", os.path.abspath("fleet.ndjson"), 0, 99, 1))
        self.assertEqual([name for folder in _part.FOLDERS for name in os.listdir("out/" + folder)], [])


class Cluster(InFolder):
    @classmethod
    def setUpClass(cls):
        cls.cluster = distributed.LocalCluster(n_workers=2, threads_per_worker=1, dashboard_address=None)

    @classmethod
    def tearDownClass(cls):
        cls.cluster.close()

    def fleet(self, *words):
        """The command on the cluster: its status, and what it says."""
        said = io.StringIO()
        with contextlib.redirect_stderr(said), contextlib.redirect_stdout(said):
            status = command.main(["--scheduler", self.cluster.scheduler_address, *words])
        return status, said.getvalue()

    # What every run here is asked.
    WORDS = ("--to-new", "--at", "/device/config", "--id", "/serial")

    def test_makes_what_the_stream_makes(self):
        self.records(200)
        self.records(50, "second.ndjson")
        here = os.getcwd()
        inputs = [here + "/fleet.ndjson", here + "/second.ndjson"]
        status, said = self.fleet(*self.WORDS, *inputs, "--output", here + "/out", "--part-size", "100K", "--progress")
        self.assertEqual(status, command.REJECTED, said)
        expected = self.stream(*self.WORDS, *inputs)
        self.compare("out", expected)
        census = json.loads(self.read("out/census.json"))
        del expected[3]["seconds"]
        self.assertEqual(census, expected[3])
        self.assertRegex(said, r"part \d+ of \d+, [\d,]+ records")
        before = self.state("out")
        self.assertEqual(self.fleet(*self.WORDS, *inputs, "--output", here + "/out", "--resume"),
                         (command.REJECTED, "kcnvrt.fleet: %d parts of %d done already\n" % (before[0], before[0])))
        self.assertEqual(self.state("out"), before)

    @staticmethod
    def state(output):
        """How many parts are done, and which files there are of them."""
        paths = sorted(glob.glob(output + "/*/*"))
        return len(os.listdir(output + "/tallies")), [(path, os.stat(path).st_mtime_ns) for path in paths]

    def test_goes_on_when_workers_are_killed(self):
        self.records(1500)
        here = os.getcwd()
        job = _part.Job(here + "/out", _records.Options(towards="new", at="/device/config", id="/serial"))
        killed = []
        with distributed.Client(self.cluster) as client:
            parts = _run.plan(client, [here + "/fleet.ndjson"], job, 50000, False)
            self.assertGreater(len(parts), 50)

            class Killing(Progress):
                """Kills a worker when some parts are done, twice."""

                def step(self, census):
                    super().step(census)
                    if self._parts_done in (3, 20):
                        worker = sorted(client.run(os.getpid).values())[0]
                        os.kill(worker, signal.SIGKILL)
                        killed.append(len(os.listdir("out/tallies")))

            outcome = _run.convert(client, job, parts, Killing(False))
        self.assertEqual((outcome.failed, len(killed)), (0, 2))
        self.assertLess(killed[1], len(parts) - 10)
        self.compare("out", self.stream(*self.WORDS, here + "/fleet.ndjson"))

    def test_leaves_a_part_that_fails_to_the_next_run(self):
        self.records(200)
        here = os.getcwd()
        job = _part.Job(here + "/out", _records.Options(towards="new", at="/device/config", id="/serial"))
        whole = self.read("fleet.ndjson")
        said = io.StringIO()
        with distributed.Client(self.cluster) as client:
            parts = _run.plan(client, [here + "/fleet.ndjson"], job, 100000, False)
            written = os.stat("fleet.ndjson").st_mtime_ns
            os.truncate("fleet.ndjson", len(whole) - 1)
            with contextlib.redirect_stderr(said):
                outcome = _run.convert(client, job, parts, Progress(False))
        self.assertEqual(outcome.failed, 1)
        self.assertRegex(said.getvalue(), r"fleet.ndjson, bytes \d+ to %d: EOFError: .* is shorter" % len(whole))
        self.assertEqual(len(os.listdir("out/tallies")), len(parts) - 1)
        self.assertFalse(os.path.exists("out/census.json"))
        self.write("fleet.ndjson", whole)
        os.utime("fleet.ndjson", ns=(written, written))
        status, said = self.fleet(*self.WORDS, here + "/fleet.ndjson", "--output", here + "/out", "--resume")
        self.assertEqual((status, said.count("done already")), (command.REJECTED, 1), said)
        self.compare("out", self.stream(*self.WORDS, here + "/fleet.ndjson"))

    def test_ends_when_too_many_are_rejected(self):
        self.write("fleet.ndjson", b'{"lang": "en"}\nx\n' * 20000)
        here = os.getcwd()
        words = ["--to-new", here + "/fleet.ndjson", "--output", here + "/out", "--part-size", "3K"]
        status, said = self.fleet(*words, "--max-rejects", "700")
        self.assertEqual(status, command.REJECTED)
        self.assertIn("more records were rejected than --max-rejects allows", said)
        done = len(os.listdir("out/tallies"))
        self.assertLess(done, len(json.loads(self.read("out/plan.json"))["parts"]))
        self.assertGreater(done, 3)
        self.assertFalse(os.path.exists("out/census.json"))
        status, said = self.fleet(*words, "--max-rejects", "700", "--resume")
        self.assertEqual((status, "--max-rejects allows" in said), (command.REJECTED, True))
        self.assertFalse(os.path.exists("out/census.json"))
        status, said = self.fleet(*words, "--max-rejects", "20000", "--resume")
        self.assertEqual((status, "--max-rejects allows" in said), (command.REJECTED, False))
        self.compare("out", self.stream("--to-new", here + "/fleet.ndjson"))
        self.assertEqual(glob.glob("out/*/.*"), [])

    def test_refuses_what_would_mix_two_runs(self):
        self.write("fleet.ndjson", b'{"lang": "en"}\n')
        here = os.getcwd()
        words = [here + "/fleet.ndjson", "--output", here + "/out"]
        self.assertEqual(self.fleet("--to-new", *words), (command.CONVERTED, ""))
        status, said = self.fleet("--to-new", *words)
        self.assertEqual(status, command.WRONG_USAGE)
        self.assertIn("/out is not empty: --resume goes on with a run", said)
        status, said = self.fleet("--to-old", *words, "--resume")
        self.assertEqual((status, "had other options" in said), (command.WRONG_USAGE, True))
        self.write("fleet.ndjson", b'{"lang": "de"}\n')
        os.utime("fleet.ndjson", (1, 1))
        status, said = self.fleet("--to-new", *words, "--resume")
        self.assertEqual((status, "had other inputs" in said), (command.WRONG_USAGE, True))
        os.remove("out/plan.json")
        status, said = self.fleet("--to-new", *words, "--resume")
        self.assertEqual((status, "has no plan.json, and is not empty" in said), (command.WRONG_USAGE, True))
        for folder in ("other", "early/tallies"):
            os.makedirs(folder)
        self.write("other/mine", b"")
        self.write("early/.plan.json.1", b"")  # of a run that was ended before it had a plan
        words[-1] = here + "/other"
        status, said = self.fleet("--to-new", *words, "--resume")
        self.assertEqual((status, os.listdir("other")), (command.WRONG_USAGE, ["mine"]), said)
        words[-1] = here + "/early"
        self.assertEqual(self.fleet("--to-new", *words, "--resume"), (command.CONVERTED, ""))

    def test_takes_patterns_and_empty_input(self):
        here = os.getcwd()
        os.mkdir("in")
        for name, content in (("a.ndjson", b'{"lang": "en"}\n'), ("b.ndjson", b""), ("c.ndjson", b'{"lang": "de"}')):
            self.write("in/" + name, content)
        self.assertEqual(self.fleet("--to-new", here + "/in/*.ndjson", "--output", here + "/out"),
                         (command.CONVERTED, ""))
        self.compare("out", self.stream("--to-new", *sorted(glob.glob("in/*"))))
        self.assertEqual(self.fleet("--to-new", here + "/in/b.ndjson", "--output", "file://" + here + "/none"),
                         (command.CONVERTED, ""))
        self.assertEqual(json.loads(self.read("none/census.json"))["records"], 0)

    def test_is_shown_as_it_is(self):
        """The commands of the page, one after the other."""
        with open(os.path.join(os.environ["TREE"], "docs", "fleet.md"), encoding="utf-8") as file:
            commands = re.findall(r"^    python3 -m kcnvrt\.fleet ((?:.*\\\n)*.*)", file.read(), re.MULTILINE)
        self.assertGreater(len(commands), 1)
        self.records(20)
        for each in commands:
            words = shlex.split(each.replace("tcp://scheduler:8786", self.cluster.scheduler_address))
            status, said = run_command(*(word for word in words if word.strip()))
            self.assertEqual(status, command.REJECTED, said)
            self.compare("new", self.stream(*self.WORDS, "fleet.ndjson"))
            shutil.rmtree("new")

    def test_shows_losses(self):
        self.write("fleet.ndjson", b'{"c":{"lang":"en","odd":1},"id":"A"}\n')
        here = os.getcwd()
        status, said = self.fleet("--to-new", "--at", "/c", "--id", "/id", "--losses", here + "/fleet.ndjson",
                                  "--output", here + "/out")
        self.assertEqual(status, command.CONVERTED)
        self.assertRegex(said, r'1 of 1 records lose something\n +devices  what +place +for example\n')
        self.assertRegex(said, r' 1  dropped +/odd +"A"\n')


class Usage(InFolder):
    def test_on_this_machine_needs_no_scheduler(self):
        self.records(30)
        status, said = run_command("--local", "--workers", "1", *Cluster.WORDS, "fleet.ndjson", "--output", "out")
        self.assertEqual(status, command.REJECTED, said)
        self.compare("out", self.stream(*Cluster.WORDS, "fleet.ndjson"))

    def test_that_is_wrong_is_told(self):
        for words, expected in (
            ([], "required"),
            (["a", "--output", "b", "--to-new"], "--scheduler --local is required"),
            (["a", "--output", "b", "--local"], "--to-new --to-old --auto is required"),
            (["a", "--output", "b", "--local", "--to-new", "--auto"], "not allowed with"),
            (["a", "--output", "b", "--local", "--to-new", "--at", "config"], "is no JSON Pointer"),
            (["a", "--output", "b", "--local", "--to-new", "--at", "/a~2"], "is no JSON Pointer"),
            (["a", "--output", "b", "--local", "--to-new", "--id", "/a~"], "is no JSON Pointer"),
            (["a", "--output", "b", "--local", "--to-new", "--at-text"], "--at-text needs --at"),
            (["a", "--output", "b", "--local", "--to-new", "--part-size", "0"], "is no size"),
            (["a", "--output", "b", "--local", "--to-new", "--workers", "none"], "is no number of workers"),
            (["a", "--output", "b", "--scheduler", "x", "--to-new", "--workers", "2"], "--workers needs --local"),
        ):
            status, said = run_command(*words)
            self.assertEqual((status, expected in said), (command.WRONG_USAGE, True), said)

    def test_of_a_file_that_is_not_there_is_told(self):
        for name in ("missing.ndjson", "missing/*.ndjson"):
            status, said = run_command("--local", "--to-new", name, "--output", "out")
            self.assertEqual((status, said.count("\n"), name in said), (command.UNUSABLE_FILE, 1, True), said)
        self.assertFalse(os.path.exists("out"))

    def test_without_the_library_is_told(self):
        self.records(1)
        status, said = run_command("--local", "--workers", "1", "--to-new", "fleet.ndjson", "--output", "out",
                                        KCNVRT_LIBRARY="/nowhere/lib.so")
        self.assertEqual(status, command.UNUSABLE_FILE)
        self.assertIn("libk_cnvrt_text is not there", said)


if __name__ == "__main__":
    unittest.main()

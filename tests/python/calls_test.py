"""What a call takes and gives."""
import json
import os
import unittest

import kcnvrt

EXAMPLES = os.path.join(os.environ["TREE"], "examples")


def example(name):
    with open(os.path.join(EXAMPLES, name + ".json"), "rb") as file:
        return file.read()


class Texts(unittest.TestCase):
    def test_of_every_type_convert_alike(self):
        text = example("home-gateway.old")
        expected = kcnvrt.to_new(text)
        self.assertTrue(expected.ok)
        self.assertIsInstance(expected.output, bytes)
        inside = memoryview(b"x" + text + b"x")[1:-1]
        scattered = memoryview(bytes(byte for each in text for byte in (each, 0)))[::2]
        for other in (text.decode(), bytearray(text), memoryview(text), inside, scattered):
            self.assertEqual(kcnvrt.to_new(other), expected, type(other))

    def test_of_another_type_are_refused(self):
        for wrong in (None, 5, 5.0, ["{}"], {}, object(), open):
            with self.assertRaisesRegex(TypeError, "a text is bytes, str, bytearray or memoryview, not "):
                kcnvrt.to_new(wrong)
        with self.assertRaisesRegex(TypeError, "the other text is .*, not int"):
            kcnvrt.diff("{}", 5)
        with self.assertRaises(TypeError):
            kcnvrt.to_new()

    def test_other_than_ascii_are_utf_8(self):
        for text in ('{"lang": "é日\U0001F600"}', '{"lang": "é日\U0001F600"}'.encode()):
            self.assertIn('"é日\U0001F600"', kcnvrt.to_new(text).text)

    def test_with_half_a_character_are_unreadable(self):
        for text in ('{"lang": "\ud800"}', b'{"lang": "\xff"}'):
            result = kcnvrt.to_new(text)
            self.assertIs(result.status, kcnvrt.Status.UNREADABLE)
            self.assertEqual([problem.offset for problem in result.problems], [10])

    def test_do_not_end_at_a_nul(self):
        for text in (b'{"lang": "en"}\0', b'{"lang": "e\0n"}', bytearray(b'\0{}'), '{}\0{}'):
            result = kcnvrt.to_new(text)
            self.assertIs(result.status, kcnvrt.Status.UNREADABLE, text)
        self.assertEqual(kcnvrt.diff('{"a": "\\u0000b"}', '{"a": "\\u0000c"}').output,
                         b'[{"op":"replace","path":"/a","value":"\\u0000c"}]')

    def test_that_are_empty_are_unreadable(self):
        for text in ("", b"", bytearray()):
            self.assertIs(kcnvrt.to_new(text).status, kcnvrt.Status.UNREADABLE)
        self.assertIs(kcnvrt.diff("{}", "").status, kcnvrt.Status.UNREADABLE)

    def test_may_be_huge(self):
        value = "x" * (32 * 1024 * 1024)
        result = kcnvrt.to_new(json.dumps({"acs": value, "lang": "en"}))
        self.assertTrue(result.ok)
        self.assertEqual(json.loads(result.output), json.loads(kcnvrt.to_new('{"acs": "x", "lang": "en"}').output))
        self.assertEqual(kcnvrt.apply("{}", json.dumps({"a": value})).output, b'{"a":"%s"}' % value.encode())
        many = kcnvrt.to_new(json.dumps({"macfilter": [1] * 100000}))
        self.assertEqual((many.status, len(many.problems)), (kcnvrt.Status.REJECTED, 100000))
        self.assertEqual(many.problems[-1].pointer, "/macfilter/99999")

    def test_that_may_change_can_be_changed_afterwards(self):
        text = bytearray(b'{"lang": "en"}')
        kcnvrt.to_new(text)
        text.extend(b"  ")


class Results(unittest.TestCase):
    def test_that_are_rejected_are_values(self):
        result = kcnvrt.to_new('{\n  "ntpclient": 5\n}')
        self.assertFalse(result.ok)
        self.assertIs(result.status, kcnvrt.Status.REJECTED)
        self.assertIsNone(result.output)
        self.assertIsNone(result.text)
        self.assertEqual(result.problems, (kcnvrt.Problem(
            severity="error", which="text", pointer="/ntpclient", line=2, column=16, offset=17, length=1,
            function="parse_old_ntpclient", message='Invalid field "hour", is not string'),))
        self.assertEqual(str(result.problems[0]),
                         '2:16: error: /ntpclient: Invalid field "hour", is not string [parse_old_ntpclient]')

    def test_name_the_text_of_a_problem(self):
        self.assertEqual(kcnvrt.diff("{}", "x").problems[0].which, "other")
        self.assertEqual(kcnvrt.diff("x", "{}").problems[0].which, "text")

    def test_say_how_bad_a_problem_is(self):
        result = kcnvrt.to_new('{"route": [{}]}')
        self.assertTrue(result.ok)
        self.assertEqual([problem.severity for problem in result.problems], ["warning"])
        result = kcnvrt.to_new('{"ntpclient": 5}', partial=True)
        self.assertEqual([problem.severity for problem in result.problems], ["error", "note"])
        self.assertIs(result.status, kcnvrt.Status.REJECTED)
        self.assertIsNotNone(result.output)

    def test_of_another_layout_are_refused(self):
        result = kcnvrt.to_new(example("home-gateway.new"))
        self.assertIs(result.status, kcnvrt.Status.WRONG_LAYOUT)
        self.assertTrue(kcnvrt.to_new(example("home-gateway.new"), force=True).ok)

    def test_know_their_direction(self):
        for name, direction in (("home-gateway.old", "new"), ("home-gateway.new", "old")):
            self.assertEqual(kcnvrt.convert(example(name)).direction, direction)
        self.assertEqual(kcnvrt.convert("{}", towards="old").direction, "old")
        self.assertIsNone(kcnvrt.diff("{}", "{}").direction)

    def test_mask_secrets(self):
        configuration = json.loads(example("home-gateway.old"))
        configuration["wifi"]["ApCliDefaultKeyId"] = "hunter2"
        text = json.dumps(configuration)
        self.assertNotIn("hunter2", repr(kcnvrt.to_new(text)))
        self.assertIn("***", kcnvrt.to_new(text).problems[0].message)
        self.assertIn("hunter2", kcnvrt.to_new(text, show_secrets=True).problems[0].message)

    def test_are_indented_as_asked(self):
        text = '{"lang": "en"}'
        compact, line, indented = (kcnvrt.to_new(text, indent=indent).text for indent in (None, 0, 31))
        self.assertNotIn(" ", compact)
        self.assertNotIn("\n", line)
        self.assertIn(" ", line)
        self.assertIn("\n" + 31 * " " + '"', indented)
        self.assertEqual(json.loads(compact), json.loads(line))
        self.assertEqual(json.loads(compact), json.loads(indented))

    def test_do_not_depend_on_the_calls_between(self):
        first = kcnvrt.to_new('{"ntpclient": 5}')
        kept = repr(first)
        for _ in range(100):
            kcnvrt.to_new('{"ntpclient": "another", "macfilter": [1, 2, 3]}')
        self.assertEqual(repr(first), kept)


class WrongUsage(unittest.TestCase):
    def wrong(self, words, function, *arguments, **options):
        with self.assertRaisesRegex(kcnvrt.WrongUsage, words):
            function(*arguments, **options)

    def test_raises(self):
        self.assertTrue(issubclass(kcnvrt.WrongUsage, ValueError))
        self.wrong("indent", kcnvrt.to_new, "{}", indent=32)
        self.wrong("indent", kcnvrt.to_new, "{}", indent=-1)
        self.wrong("indent", kcnvrt.to_new, "{}", indent=1 << 32)
        self.wrong('"new" or "old"', kcnvrt.convert, "{}", towards="newer")
        self.wrong('"new" or "old"', kcnvrt.convert, "{}", towards=[])
        self.wrong('"new" or "old"', kcnvrt.sections, None)
        self.wrong("does not take these flags", kcnvrt.to_new, "{}", merge_patch=True)
        self.wrong("does not take these flags", kcnvrt.to_new, "{}", base="{}", partial=True)
        with self.assertRaises(TypeError):
            kcnvrt.to_new("{}", indent="4")
        with self.assertRaises(TypeError):
            kcnvrt.to_new("{}", dsl=True)
        with self.assertRaises(TypeError):
            kcnvrt.to_new("{}", "{}")

    def test_is_a_section_that_there_is_not(self):
        self.wrong("'lan' is no section of the new layout", kcnvrt.section, "lan", "{}", towards="new")
        self.wrong("'Users' is no section of the old layout", kcnvrt.section, "Users", "{}", towards="old")
        self.wrong("no section", kcnvrt.section, "Users\0", "{}", towards="new")
        self.wrong("no section", kcnvrt.section, 5, "{}", towards="new")


class Operations(unittest.TestCase):
    def test_sections_are_those_of_their_layout(self):
        self.assertIn("Users", kcnvrt.sections("new"))
        self.assertIn("ifaces", kcnvrt.sections("old"))
        self.assertEqual(len(set(kcnvrt.sections("new"))), len(kcnvrt.sections("new")))
        for layout in ("x", 5, None):
            with self.assertRaisesRegex(kcnvrt.WrongUsage, 'a layout is "new" or "old", not %r' % layout):
                kcnvrt.sections(layout)

    def test_a_section_is_taken_out_of_a_configuration(self):
        result = kcnvrt.section("Adsl", '{"adsl": {"a": 1}, "voip": {}}', towards="new")
        self.assertEqual((result.output, result.direction), (b'{"a":1}', "new"))
        self.assertEqual([problem.function for problem in result.problems], ["layout"])
        self.assertEqual(kcnvrt.section("Adsl", '{"adsl": {"a": 1}, "voip": {}}', towards="new", as_is=True).output,
                         b'{"adsl":{"a":1},"voip":{}}')

    def test_a_difference_leads_from_one_to_the_other(self):
        base, other = example("home-gateway.new"), example("dsl-gateway.new")
        for merge_patch in (False, True):
            difference = kcnvrt.diff(base, other, merge_patch=merge_patch)
            self.assertEqual(json.loads(kcnvrt.apply(base, difference.output).output), json.loads(other))

    def test_a_base_gives_what_changes(self):
        old, base = example("home-gateway.old"), kcnvrt.to_new(example("home-gateway.old")).output
        self.assertEqual(kcnvrt.to_new(old, base=base).output, b"[]")
        self.assertEqual(kcnvrt.to_new(old, base=base, merge_patch=True).output, b"{}")

    def test_a_value_is_found(self):
        text = '{"é": [1, {"a/b": "x]"}], "c": tru'.encode()
        for pointer, value in (("/é/0", "1"), ("/é/1/a~1b", '"x]"'), ("/c", "tru"), ("", text.decode())):
            self.assertEqual(text[kcnvrt.find(text, pointer)].decode(), value)
        for pointer in ("/d", "c", "/é/2", "/c/0"):
            self.assertIsNone(kcnvrt.find(text, pointer))
        self.assertEqual(kcnvrt.find(b'\0', ""), slice(0, 1))
        self.assertRaises(TypeError, kcnvrt.find, "{}", "")
        self.assertRaises(kcnvrt.WrongUsage, kcnvrt.find, b"{}", "\0")

    def test_losses_are_told_with_their_places(self):
        text = '{"lang": "en", "nothing": {"password": "hunter2"}}'
        dropped = kcnvrt.Loss(kind="dropped", pointer="/nothing", line=1, column=27, offset=26, length=23,
                              before='{"password": "***"}', after=None)
        for function in (kcnvrt.losses, kcnvrt.check):
            result = function(text)
            self.assertEqual((result.ok, result.output, result.direction), (True, None, "new"))
            self.assertIn(dropped, result.losses)
            self.assertIn("hunter2", repr(function(text, show_secrets=True)))
        self.assertIn(dropped, kcnvrt.to_new(text, losses=True).losses)
        self.assertEqual(kcnvrt.to_new(text).losses, ())
        self.assertIs(kcnvrt.to_new(text, strict=True).status, kcnvrt.Status.REJECTED)
        defaulted = [loss for loss in kcnvrt.losses(text).losses if loss.kind == "defaulted"]
        self.assertEqual([(loss.pointer, loss.before, type(loss.after)) for loss in defaulted], [("", None, str)])

    def test_losses_of_a_rejected_text_are_those_of_what_converts(self):
        text = '{"ntpclient": 5, "nothing": 1}'
        self.assertIs(kcnvrt.check(text).status, kcnvrt.Status.REJECTED)
        result = kcnvrt.losses(text)
        self.assertTrue(result.ok)
        self.assertIn("/nothing", [loss.pointer for loss in result.losses])
        self.assertIn("/ntpclient", [problem.pointer for problem in result.problems])

    def test_a_member_is_explained(self):
        text = '{"lang": "en", "odd": {"password": "hunter2"}}'
        used = kcnvrt.explain(text, "/lang")
        self.assertTrue(used.ok)
        answer = json.loads(used.output)
        self.assertEqual((answer["pointer"], answer["answer"]), ("/lang", "used"))
        place = answer["effects"][0]["pointer"]
        self.assertEqual(json.loads(kcnvrt.explain(text, "/odd").output)["answer"], "lost")
        source = json.loads(kcnvrt.explain(text, place, from_result=True).output)
        self.assertIn("/lang", [each["pointer"] for each in source["sources"]])
        for pointer in ("/nothing", "lang", "/lang\0"):
            self.assertRaises(kcnvrt.WrongUsage, kcnvrt.explain, text, pointer)

    def test_the_version_is_the_library_s(self):
        self.assertRegex(kcnvrt.version(), r"^\d+\.\d+\.\d+$")


unittest.main()

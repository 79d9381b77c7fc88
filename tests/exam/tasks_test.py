"""The task files: their number, their words, and the errors of an invalid one."""

import collections
import json
import pathlib
import re
import tempfile
import unittest

from exam import conditions, task
from exam.edits import machine_content
from exam.machine import Machine, machine_of_file
from support import BIN, ROOT, interface

TASKS = task.load_all()


class Tasks(unittest.TestCase):
    def test_there_are_at_least_forty_of_five_kinds(self):
        kinds = collections.Counter(each.kind for each in TASKS)
        self.assertGreaterEqual(sum(kinds.values()), 40)
        self.assertEqual(set(kinds), set(task.KINDS))
        self.assertGreaterEqual(min(kinds.values()), 6)

    def test_no_request_contains_the_name_of_a_tool(self):
        names = interface().arguments
        for each in TASKS:
            words = set(re.findall(r"\w+", each.request))
            self.assertFalse(words & set(names), each.name)

    def test_no_two_requests_are_the_same(self):
        self.assertEqual(len({each.request for each in TASKS}), len(TASKS))

    def test_each_condition_can_be_read(self):
        for each in TASKS:
            for sentence in each.end:
                conditions.evaluate(sentence, Machine([]), None)

    def test_each_machine_can_be_made(self):
        for each in TASKS:
            with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
                json.dump(machine_content(each, ROOT / "host/machines"), file)
                file.flush()
                self.assertTrue(machine_of_file(pathlib.Path(file.name)).disks, each.name)

    def test_no_task_is_fulfilled_at_the_start_unless_nothing_is_to_be_done(self):
        for each in TASKS:
            if "any order" in each.never or each.kind == "decline":
                continue
            with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
                json.dump(machine_content(each, ROOT / "host/machines"), file)
                file.flush()
                start = machine_of_file(pathlib.Path(file.name))
            self.assertFalse(all(conditions.evaluate(sentence, start).holds for sentence in each.end), each.name)


class Errors(unittest.TestCase):
    def error_of(self, content):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "mine.toml")
            path.write_text(content)
            with self.assertRaises(task.TaskError) as caught:
                task.load(path)
        return str(caught.exception)

    def test_the_message_names_file_and_mistake(self):
        valid = 'kind = "do"\nrequest = "x"\nresult = "done"\nreference = []\n'
        self.assertIn("mine.toml", self.error_of("kind ="))
        self.assertIn("colour", self.error_of(valid + 'colour = "red"'))
        self.assertIn("request", self.error_of('kind = "do"\nresult = "done"\nreference = []'))
        self.assertIn("kind must be one of", self.error_of(valid.replace('"do"', '"dance"')))
        self.assertIn("result must be one of", self.error_of(valid.replace('"done"', '"perhaps"')))
        self.assertIn("one line", self.error_of(valid.replace('"x"', '"x\\ny"')))

    def test_a_sentence_with_a_mistake_is_named(self):
        valid = 'kind = "do"\nrequest = "x"\nresult = "done"\n'
        self.assertIn("mine.toml: not a condition: C: sise is 5",
                      self.error_of(valid + 'reference = []\nend = ["C: sise is 5"]'))
        self.assertIn("not a condition: C: sise is 5", self.error_of(valid + 'reference = ["until C: sise is 5"]'))
        self.assertIn("not a condition: soon", self.error_of(valid + 'reference = ["unless soon"]'))
        self.assertIn("not an event: ordr WipeDisk",
                      self.error_of(valid + 'reference = []\nnever = ["any order", "ordr WipeDisk"]'))


unittest.main()

"""The sentences of a task's conditions."""

import unittest

from exam.conditions import ConditionError, evaluate
from exam.machine import Disk, Entry, Machine
from exam.sizes import parse_size, size_text

GIB = 1024**3


def machine():
    entries = [Entry(disk=1, start=0, size=100 * GIB, letter="D", label="Old data", filesystem="NTFS", used=10 * GIB),
               Entry(disk=1, start=100 * GIB, size=50 * GIB, free=True)]
    return Machine([Disk(1, "S1", 150 * GIB, "GPT", True, False, False, entries)], {"preOsEnabled": False})


class Conditions(unittest.TestCase):
    def assert_holds(self, *sentences, guide=None):
        for sentence in sentences:
            self.assertTrue(evaluate(sentence, machine(), guide).holds, sentence)

    def assert_fails(self, *sentences, guide=None):
        for sentence in sentences:
            self.assertFalse(evaluate(sentence, machine(), guide).holds, sentence)

    def test_sizes_are_compared_exactly(self):
        self.assert_holds("D: size is 100 GiB", "D: size >= 100 GiB", "D: size <= 100 GiB", "D: used is 10 GiB")
        self.assert_fails("D: size is 101 GiB", "D: size >= 101 GiB", "D: size <= 99 GiB", "D: size is not 100 GiB")

    def test_about_allows_less_than_two_mebibytes(self):
        self.assert_holds("D: size about 102401 MiB")
        self.assert_fails("D: size about 102402 MiB", "D: size about 102398 MiB")

    def test_a_word_is_one_of_the_named_ones(self):
        self.assert_holds("D: filesystem is exFAT or NTFS", "D: label is Old data", "D: filesystem is not FAT32")
        self.assert_fails("D: filesystem is exFAT or FAT32", "D: label is data", "D: filesystem is not NTFS")

    def test_a_drive_is_found_by_its_letter_or_label(self):
        self.assert_holds("D: exists", "Old data exists", "E: is gone", "Old data disk is 1", "Old data letter is D")
        self.assert_fails("E: exists", "D: is gone", "Photos exists")

    def test_disks_have_a_table_and_free_regions(self):
        self.assert_holds("disk 1 table is GPT", "disk 1 free >= 50 GiB", "disk 1 partitions is 1", "disk 1 online is yes",
                          "disk 2 is gone")
        self.assert_fails("disk 1 table is MBR", "disk 1 free >= 51 GiB", "disk 1 partitions is 2", "disk 1 online is no")

    def test_a_missing_subject_fulfils_nothing(self):
        self.assert_fails("E: size is not 100 GiB", "E: label is x", "disk 7 table is GPT")

    def test_the_open_guide_has_a_title_and_a_text(self):
        guide = {"open": True, "title": "Clone: drive C to disk 4", "text": "step 3", "startable": True}
        self.assert_holds("guide title is Clone: drive C to disk 4", "guide text is step 3", "guide open is yes", "guide startable is yes",
                          guide=guide)
        self.assert_fails("guide title is Clone: drive C to disk 1", guide=guide)
        self.assert_fails("guide title is Clone: drive C to disk 4", "guide open is yes", "guide startable is yes")

    def test_settings_belong_to_the_machine(self):
        self.assert_holds("machine preOsEnabled is no")
        self.assert_fails("machine preOsEnabled is yes")

    def test_other_sentences_are_rejected(self):
        for sentence in ("D: is large", "D: label >= x", "", "D: size"):
            with self.assertRaises(ConditionError, msg=sentence):
                evaluate(sentence, machine())

    def test_the_finding_names_value_and_expectation(self):
        self.assertEqual(evaluate("D: size is 5 GiB", machine()).text, "D: size is 100 GiB; expected: is 5 GiB")


class Sizes(unittest.TestCase):
    def test_units_are_binary(self):
        self.assertEqual(parse_size("2 KiB"), 2048)
        self.assertEqual(parse_size("1.5GiB"), 1610612736)
        self.assertEqual(parse_size("-1 MiB"), -1048576)
        self.assertIsNone(parse_size("2 KB"))
        self.assertIsNone(parse_size("2"))

    def test_text_has_the_largest_unit(self):
        self.assertEqual([size_text(count) for count in (512, 2048, 1610612736)], ["512 B", "2 KiB", "1.5 GiB"])


unittest.main()

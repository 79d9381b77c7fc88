"""The catalogues are complete, match the sources, and keep the placeholders of each string.

usage: catalogues_test.py LUPDATE [unittest's arguments]
"""
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as xml
from pathlib import Path

FOLDER = Path(__file__).resolve().parents[2] / "translations"
sys.dont_write_bytecode = True
sys.path.insert(0, str(FOLDER))
import update  # noqa: E402

CATALOGUES = tuple(update.SOURCES)
LANGUAGES = update.LANGUAGES
LUPDATE = sys.argv.pop(1) if len(sys.argv) > 1 else "lupdate"


class Entry:
    def __init__(self, context, message):
        translation = message.find("translation")
        self.numerus = message.get("numerus") == "yes"
        self.source = message.findtext("source")
        self.key = (context, self.source, message.findtext("comment") or "", self.numerus)
        self.state = translation.get("type")
        forms = translation.findall("numerusform") if self.numerus else [translation]
        self.texts = [form.text or "" for form in forms]


def entries(file):
    return [
        Entry(context.findtext("name"), message)
        for context in xml.parse(file).iter("context")
        for message in context.iter("message")
    ]


def placeholders(text):
    return sorted(re.findall(r"%(?:L?\d+|L?n)", text))


def edges(text):
    """Leading and trailing whitespace, and the number of line ends."""
    return re.match(r"\s*", text).group(), re.search(r"\s*$", text).group(), text.count("\n")


class Catalogues(unittest.TestCase):
    def each(self, languages, check):
        for language in languages:
            for name in CATALOGUES:
                for entry in entries(FOLDER / f"{name}_{language}.ts"):
                    with self.subTest(catalogue=name, language=language, source=entry.source):
                        check(entry)

    def test_entries_of_each_catalogue_match_the_sources(self):
        with tempfile.TemporaryDirectory() as scratch:
            for file in FOLDER.glob("*.ts"):
                shutil.copy(file, scratch)
            subprocess.run(
                [sys.executable, FOLDER / "update.py", LUPDATE, scratch], check=True, stdout=subprocess.DEVNULL
            )
            for name in CATALOGUES:
                for language in LANGUAGES:
                    file = f"{name}_{language}.ts"
                    with self.subTest(file=file, remedy="build the target update_translations"):
                        now = {entry.key for entry in entries(Path(scratch) / file)}
                        self.assertEqual({entry.key for entry in entries(FOLDER / file)}, now)

    def test_every_entry_is_translated(self):
        def check(entry):
            self.assertIsNone(entry.state)
            self.assertTrue(all(text.strip() for text in entry.texts))

        self.each(LANGUAGES, check)

    def test_plural_strings_have_both_forms(self):
        self.each(LANGUAGES, lambda entry: self.assertEqual(len(entry.texts), 2 if entry.numerus else 1))

    def test_translations_keep_placeholders_line_ends_and_outer_whitespace(self):
        def check(entry):
            for text in entry.texts:
                self.assertEqual(placeholders(text), placeholders(entry.source))
                self.assertEqual(edges(text), edges(entry.source))

        self.each(LANGUAGES, check)

    def test_english_translations_equal_the_source_strings(self):
        def check(entry):
            if not entry.numerus:
                self.assertEqual(entry.texts, [entry.source])

        self.each(["en"], check)

    # 15 messages of scan cases, 6 distinct buttons, 42 functions.
    def test_library_has_63_strings(self):
        for language in LANGUAGES:
            found = entries(FOLDER / f"aibridge_{language}.ts")
            self.assertEqual(len(found), 15 + 6 + 42)
            self.assertEqual({entry.key[0] for entry in found}, {"QObject"})

    def test_function_names_in_brackets_are_translated_to_german(self):
        named = 0
        for entry in entries(FOLDER / "aibridge_de.ts"):
            source = re.findall(r"\[(.+?)\]", entry.source)
            translated = re.findall(r"\[(.+?)\]", entry.texts[0])
            with self.subTest(source=entry.source):
                self.assertEqual(len(translated), len(source))
                self.assertFalse(set(translated) & set(source))
            named += len(source)
        self.assertEqual(named, 41)  # all but Secure Boot


if __name__ == "__main__":
    unittest.main()

"""The report: its JSON, its page, and the page in a real browser."""

import html.parser
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from exam import report

BROWSER = next(filter(None, map(shutil.which, ("chromium-headless-shell", "chromium"))), None)


def attempt(points, verdict, **keys):
    return {"points": points, "verdict": verdict, "passed": verdict == "passed", "calls": 5, "seconds": 2.1, "stated": "done",
            "folder": "room/1", "conversation": "It <b>works</b> & is done.", "losses": [], **keys}


LOSS = {"grader": "goal", "points": 4, "reason": "D: size is 1 GiB; expected: is <2 GiB>.", "kind": "condition", "lines": [12],
        "transcript": [{"line": 12, "text": "2108 ms order {\"function\": \"ResizePartition\"}"}]}


def result(agent, *attempts):
    return {"agent": agent, "seconds": 12.5, "repeats": len(attempts), "passed": int(all(each["passed"] for each in attempts)),
            "points": sum(each["points"] for each in attempts), "most_points": 10 * len(attempts), "pass_k": [0.5, 0.0],
            "tasks": [{"name": "room", "kind": "do", "request": "Make <room> on C:.", "attempts": list(attempts),
                       "passed": all(each["passed"] for each in attempts)}]}


GOOD = result("careful", attempt(10, "passed"), attempt(10, "passed"))
BAD = result("bold", attempt(10, "passed"), attempt(-10, "false claim", losses=[LOSS]))


class Structure(html.parser.HTMLParser):
    """Names of elements and attributes, the addresses, and the nesting."""

    EMPTY = {"meta", "br"}

    def __init__(self, text):
        super().__init__()
        self.open_, self.addresses, self.names, self.errors = [], [], set(), []
        self.feed(text)
        self.close()

    def handle_starttag(self, tag, attributes):
        self.names.add(tag)
        self.addresses += [value for name, value in attributes if name in ("src", "href", "action")]
        if tag not in self.EMPTY:
            self.open_.append(tag)

    def handle_endtag(self, tag):
        if not self.open_ or self.open_.pop() != tag:
            self.errors.append(tag)


class Page(unittest.TestCase):
    def test_the_page_is_one_file_without_scripts_and_addresses(self):
        page = report.page([BAD, GOOD])
        structure = Structure(page)
        self.assertEqual((structure.addresses, structure.errors, structure.open_), ([], [], []))
        self.assertNotIn("script", structure.names)
        self.assertIsNone(re.search(r"https?:|url\(|@import", page))

    def test_texts_of_tasks_and_agents_are_escaped(self):
        page = report.page([BAD])
        self.assertIn("It &lt;b&gt;works&lt;/b&gt; &amp; is done.", page)
        self.assertIn("Make &lt;room&gt; on C:.", page)
        self.assertIn("is &lt;2 GiB&gt;.", page)

    def test_losses_have_points_reason_and_lines_of_the_transcript(self):
        page = report.page([BAD])
        self.assertIn("&minus;4 goal: D: size is 1 GiB", page)
        self.assertIn("transcript 12: 2108 ms order", page)

    def test_the_json_is_read_again(self):
        with tempfile.TemporaryDirectory() as folder:
            report.write(BAD, pathlib.Path(folder))
            self.assertEqual(report.read(pathlib.Path(folder)), BAD)

    def test_a_task_that_the_other_run_lacks_is_marked(self):
        self.assertIn("not run", report.page([BAD, {**GOOD, "tasks": []}]))


@unittest.skipUnless(BROWSER, "no browser is installed (scripts/lib/packages-exam)")
class Browser(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def browse(self, *options):
        command = [BROWSER, "--no-sandbox", "--disable-gpu", "--headless", f"--user-data-dir={self.folder}/profile",
                   "--window-size=1200,900", *options, (self.folder / "report.html").as_uri()]
        return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True, timeout=120).stdout

    def test_a_browser_shows_two_runs_side_by_side(self):
        report.write(BAD, self.folder, GOOD)
        text = re.sub(r"<[^>]*>", " ", self.browse("--dump-dom").decode())
        for words in ("Exam: bold and careful", "Result (bold)", "Result (careful)", "false claim", "passed", "pass^1 50%"):
            self.assertIn(words, text)

    def test_a_browser_draws_the_page(self):
        report.write(BAD, self.folder, GOOD)
        picture = self.folder / "page.png"
        self.browse(f"--screenshot={picture}")
        content = picture.read_bytes()
        self.assertEqual(content[:8], b"\x89PNG\r\n\x1a\n")
        self.assertEqual((int.from_bytes(content[16:20], "big"), int.from_bytes(content[20:24], "big")), (1200, 900))
        # An empty page of this size is far smaller.
        (self.folder / "report.html").write_text("<!DOCTYPE html><title>empty</title>")
        self.browse(f"--screenshot={self.folder}/empty.png")
        self.assertGreater(len(content), 3 * (self.folder / "empty.png").stat().st_size)


unittest.main()

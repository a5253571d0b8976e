"""The program's verbs as a person meets them: good ones, bad books, wrong usage."""
import os
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

PROGRAM = sys.argv.pop(1)


def tolvex(*words, **options):
    return subprocess.run([PROGRAM, *map(str, words)], capture_output=True, text=True, timeout=120,
                          **options)


class Verbs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Path(tempfile.mkdtemp(prefix="tolvex-verbs-"))
        cls.books = cls.folder / "books.tolvex"
        made = tolvex("new", cls.books, "--demo")
        assert made.returncode == 0, made.stderr

    @classmethod
    def tearDownClass(cls):
        shutil.rmtree(cls.folder)

    def script(self, text):
        path = self.folder / "script.lua"
        path.write_text(text, encoding="utf-8")
        return path

    def test_wrong_usage_ends_with_2_and_tells_how(self):
        for words in [(), ("new",), ("verify",), ("verify", "a", "b"), ("new", "a", "--fast"),
                      ("call", "a"), ("run", "a.lua", "--today"), ("backup", "a"),
                      ("run", "a.lua", "--user", "x", "--user", "y"),
                      ("run", "a.lua", "--window", "--size", "1920"),
                      *[("new", "a", "--demo", count)
                        for count in ("abc", "-5", "0", "12x", "99999999999")]]:
            with self.subTest(words=words):
                result = tolvex(*words)
                self.assertEqual(result.returncode, 2, result.stderr)
                self.assertIn("Naudojimas:", result.stderr)

    def test_bad_books_end_with_1_a_message_and_stay_as_they_are(self):
        text = self.folder / "letter.tolvex"
        text.write_text("Gerb. buhaltere, " * 100)
        cut = self.folder / "cut.tolvex"
        cut.write_bytes(self.books.read_bytes()[:5000])
        newer = self.folder / "newer.tolvex"
        shutil.copy(self.books, newer)
        subprocess.run([sys.executable, "-c",
                        "import sqlite3, sys; db = sqlite3.connect(sys.argv[1]);"
                        "db.execute(\"UPDATE store_meta SET value = '9999' WHERE name = 'schema'\");"
                        "db.commit()",
                        newer], check=True)
        for place in [text, cut, newer, self.folder / "none.tolvex", self.folder]:
            before = place.read_bytes() if place.is_file() else None
            for words in [("verify", place), ("call", place, "GetAccountList"),
                          ("run", self.script(""), "--books", place)]:
                with self.subTest(place=place.name, verb=words[0]):
                    result = tolvex(*words)
                    self.assertEqual(result.returncode, 1, result.stdout + result.stderr)
                    self.assertGreater(len(result.stderr.strip()), 10)
                    self.assertNotIn("terminate", result.stderr)
                    after = place.read_bytes() if place.is_file() else None
                    self.assertEqual(before, after)

    def test_new_never_writes_over_a_file(self):
        before = self.books.read_bytes()
        result = tolvex("new", self.books)
        self.assertEqual(result.returncode, 1)
        self.assertEqual(before, self.books.read_bytes())

    def test_generated_books_appear_whole_or_not_at_all(self):
        books = self.folder / "generated.tolvex"
        making = subprocess.Popen([PROGRAM, "new", books, "--demo", "200000"],
                                  stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        unfinished = books.with_name(books.name + ".new")
        for _ in range(200):
            if unfinished.exists() and unfinished.stat().st_size > 1_000_000:
                break
            time.sleep(0.05)
        making.terminate()
        self.assertEqual(making.communicate()[1], "", "no progress into a log")
        self.assertLess(making.returncode, 0, "it was stopped on its way")
        self.assertFalse(books.exists())
        self.assertEqual(tolvex("new", books, "--demo", "300").returncode, 0)
        self.assertEqual(tolvex("verify", books).returncode, 0)
        self.assertEqual([path.name for path in self.folder.glob("generated*")], [books.name])

    def test_a_stranger_does_not_come_in(self):
        result = tolvex("verify", self.books, "--user", "nobody")
        self.assertEqual(result.returncode, 1)
        self.assertTrue(result.stderr.strip())

    def test_call_prints_answers_and_refusals(self):
        totals = tolvex("call", self.books, "GetAccountsTotal", "'2004.03.31',''", "--csv")
        self.assertEqual(totals.returncode, 0, totals.stderr)
        rows = dict(line.split(";")[:2] for line in totals.stdout.split("\n") if ";" in line)
        known = {"2711": 47090, "2721": 1700, "204": 32600, "2441": 180, "240": 1360, "255": 300,
                 "301": 82000, "450": 0, "4461": 360, "500": 2000, "536": 100, "600": 1200,
                 "636": 30}
        for account, rest in known.items():
            self.assertEqual(float(rows[account]), rest, account)
        for words, code, name in [(("GetNothing",), "1206", "GetNothing"),
                                  (("GetDebts1", "'0'"), "1207", "GetDebts1")]:
            result = tolvex("call", self.books, *words)
            self.assertEqual(result.returncode, 1)
            self.assertIn(code, result.stderr)
            self.assertIn(name, result.stderr)

    def test_a_copy_brings_the_books_back(self):
        copy, books = self.folder / "copy.tolvex", self.folder / "changed.tolvex"
        shutil.copy(self.books, books)
        self.assertEqual(tolvex("backup", books, copy).returncode, 0)
        change = self.script('test("x", function() local o = object "O0201500" '
                             'o:set("DateD", "2004.03.31") o:set("BROperGroupID", 2) '
                             'o:methods("AddBR", {"2721", "500", 7, {}}) '
                             'expect(o:save().code, 0) end)')
        self.assertEqual(tolvex("run", change, "--books", books).returncode, 0)
        asked = ("call", books, "GetAccountsTotal", "'2004.03.31',''", "--csv")
        self.assertIn("2721;1707", tolvex(*asked).stdout)
        self.assertEqual(tolvex("restore", books, copy).returncode, 0)
        self.assertIn("2721;1700", tolvex(*asked).stdout)
        self.assertEqual(tolvex("verify", books).returncode, 0)
        damaged = self.folder / "damaged.tolvex"
        damaged.write_bytes(copy.read_bytes()[:3000])
        self.assertEqual(tolvex("restore", books, damaged).returncode, 1)
        self.assertIn("2721;1700", tolvex(*asked).stdout)

    def test_a_failing_script_names_file_line_and_the_open_box(self):
        for text, words in [
            ("expect(1, 2)", ["script.lua:1", "expected 2, got 1"]),
            ("error(", ["script.lua:1"]),
            ('test("t", function()\n  select("tvwLayout", "Pirkimai")\n'
             '  right_click("lvwObjects", 1) pick "Panaikinti"\n  click "cmdNew"\nend)',
             ["script.lua:4", "Ar tikrai norite panaikinti?"]),
            ('click "cmdNothing"', ["no control cmdNothing"]),
        ]:
            with self.subTest(script=text):
                result = tolvex("run", self.script(text), "--books", self.books,
                                "--today", "2004.03.31")
                self.assertEqual(result.returncode, 1)
                for word in words:
                    self.assertIn(word, result.stdout + result.stderr)

    def test_a_missing_script_or_a_bad_day_is_told(self):
        self.assertEqual(tolvex("run", self.folder / "none.lua").returncode, 1)
        wrong_day = ("run", self.script(""), "--books", self.books, "--today", "2004.02.31")
        self.assertEqual(tolvex(*wrong_day).returncode, 2)


if __name__ == "__main__":
    os.environ.setdefault("QT_QPA_PLATFORM", "offscreen")
    unittest.main()

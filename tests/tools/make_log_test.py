#!/usr/bin/env python3
"""The sessions that make_log makes could have been: in order, none while another one runs."""
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from contextlib import closing
from datetime import date, datetime, timedelta
from pathlib import Path

TOOL = Path(__file__).resolve().parents[2] / "tools/make_log"
sys.path.insert(0, str(TOOL.parent))
from session_habits import names_of, sessions  # noqa: E402

FIRST, LAST = date(2003, 12, 29), date(2005, 1, 2)


class MakeLog(unittest.TestCase):
    def test_no_session_begins_before_the_user_has_ended_the_last(self):
        for rows in (None, 50_000):
            log = list(sessions(names_of(12), FIRST, LAST, rows=rows))
            starts = [datetime.fromisoformat(row[4]) for row in log]
            self.assertEqual(starts, sorted(starts))
            self.assertTrue(FIRST <= starts[0].date() and starts[-1].date() <= LAST)
            ends = {}
            for (user, seconds, *_), start in zip(log, starts):
                self.assertLess(ends.get(user, datetime.min), start)
                ends[user] = start + timedelta(seconds=int(seconds))
            self.assertEqual(len(ends), 12, "somebody was never there")

    def test_rows_that_do_not_fit_are_refused(self):
        for day, rows in ((date(2004, 3, 8), 5_000), (date(2004, 12, 25), 1)):
            with self.assertRaises(ValueError):
                list(sessions(["Anna", "Erik"], day, day, rows=rows))

    def test_the_same_words_write_the_same_rows_and_as_many_as_asked(self):
        logs = []
        for name, seed in (("one", "7"), ("two", "7"), ("other", "8")):
            with tempfile.TemporaryDirectory() as folder:
                words = [TOOL, f"{folder}/{name}", "--from", str(FIRST), "--to", str(LAST)]
                words += ["--users", "Åsa,O'Brien", "--rows", "777", "--seed", seed]
                subprocess.run([sys.executable, *words], check=True, capture_output=True)
                with closing(sqlite3.connect(words[1])) as database:
                    logs.append(database.execute("SELECT * FROM ConnLog").fetchall())
        self.assertEqual([len(log) for log in logs], [777] * 3)
        self.assertEqual(logs[0], logs[1])
        self.assertNotEqual(logs[0], logs[2])


if __name__ == "__main__":
    unittest.main()

#!/usr/bin/python3
"""The table of a quick run is complete: every row has its figures, or the reason why it has none."""
import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

BUILD = Path(sys.argv.pop())

# Beginnings of the sections' titles, and how many rows each has when everything can be measured.
SECTIONS = {
    "Key press → first instruction of the shell": 4,
    "Key press → first instruction of a program that a zsh script execs": 4,
    "A key held": 3,
    "Memory of the other programs": 2,
    "Key press → text in the field": 2,
    "Memory of Tavrin": 5,
    "Opening an application": 4,
    "Main window": 10,
    "Start of the program": 3,
    "Registering combinations": 4,
    "Loading and saving": 3,
    "Changing the volume, from the first": 1,
    "Changing the volume, from asking": 3,
    "Memory of tavrin-sound": 1,
}


class QuickRun(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with tempfile.NamedTemporaryFile(suffix=".json") as file:
            run = subprocess.run((Path(__file__).parent / "bench.py", BUILD, "--quick", "--json", file.name),
                                 capture_output=True, text=True)
            if run.returncode:
                raise RuntimeError(f"bench.py ended with {run.returncode}:\n{run.stdout}{run.stderr}")
            cls.report = json.load(file)
            cls.table = run.stdout

    def test_every_section_is_there_in_order(self):
        titles = [section["title"] for section in self.report["sections"]]
        self.assertEqual(len(titles), len(SECTIONS))
        for title, beginning in zip(titles, SECTIONS):
            self.assertTrue(title.startswith(beginning), title)

    def test_every_row_has_all_its_figures_or_a_reason(self):
        for section, count in zip(self.report["sections"], SECTIONS.values()):
            reasons = [row for row in section["rows"] if "missing" in row]
            self.assertTrue(reasons or len(section["rows"]) == count, section)
            self.assertTrue(all(row["missing"] for row in reasons), section)
            for row in section["rows"]:
                self.assertTrue("missing" in row or row["values"], row)

    def test_the_table_shows_every_row(self):
        for section in self.report["sections"]:
            self.assertIn(section["title"], self.table)
            for row in section["rows"]:
                self.assertIn(row["label"], self.table)

    def test_tavrin_itself_is_measured_everywhere(self):
        """Its peers may be absent; our own program may not."""
        for title in ("Key press → text", "Memory of Tavrin", "Main window", "Start of the program", "Registering",
                      "Loading", "Changing"):
            section = next(part for part in self.report["sections"] if part["title"].startswith(title))
            self.assertFalse([row for row in section["rows"] if "missing" in row], section)


if __name__ == "__main__":
    unittest.main()

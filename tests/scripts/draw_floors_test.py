#!/usr/bin/env python3
"""The drawing that draw_floors.py makes of small lists, and what its check refuses.

usage: draw_floors_test.py DRAW_FLOORS
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

DRAW = sys.argv.pop()
STALE = "docs/floors.svg is not drawn from docs/floors.txt: run scripts/support/draw_floors.py\n"


class DrawFloors(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.docs = pathlib.Path(folder.name) / "docs"
        self.docs.mkdir()
        self.write("# from the ground up\nsimd\nmemory transfer\nhost/K/pool\n")

    def write(self, floors):
        (self.docs / "floors.txt").write_text(floors, encoding="utf-8")

    def run_script(self, *arguments):
        result = subprocess.run([sys.executable, DRAW, *arguments, self.docs.parent], check=False,
                                capture_output=True, text=True)
        return result.returncode, result.stderr

    def texts(self):
        drawn = xml.etree.ElementTree.parse(self.docs / "floors.svg")
        return [element.text for element in drawn.iter("{http://www.w3.org/2000/svg}text")]

    def test_shows_each_folder_with_the_number_of_its_floor(self):
        self.assertEqual(self.run_script(), (0, ""))
        self.assertEqual(self.texts()[:-1], ["1", "simd", "2", "memory", "transfer", "the module",
                                             "3", "pool", "host/K"])

    def test_check_accepts_the_drawing_of_the_list(self):
        self.run_script()
        self.assertEqual(self.run_script("--check"), (0, ""))

    def test_check_refuses_the_drawing_of_another_list(self):
        self.run_script()
        self.write("simd\ntransfer\nmemory\nhost/K/pool\n")
        self.assertEqual(self.run_script("--check"), (1, STALE))

    def test_check_refuses_a_missing_drawing(self):
        self.assertEqual(self.run_script("--check"), (1, STALE))


if __name__ == "__main__":
    unittest.main()

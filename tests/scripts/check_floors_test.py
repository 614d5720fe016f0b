#!/usr/bin/env python3
"""What check_floors.py finds in small trees with a fault each.

usage: check_floors_test.py CHECK_FLOORS
"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = sys.argv.pop()


class CheckFloors(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.write("docs/floors.txt", "# from the ground up\nsimd\nmemory transfer\nworld\n")
        self.write("simd/fill.h", "")
        self.write("memory/frame.h", '#include <cstdint>\n#include "simd/fill.h"\n')
        self.write("transfer/blit.h", "")
        self.write("world/making.h", "")
        self.write("world/making.cpp", '#include "world/making.h"\n\n#include "memory/frame.h"\n')

    def write(self, name, text):
        file = self.root / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def check(self):
        return subprocess.run([sys.executable, CHECK, self.root], check=False,
                              capture_output=True, text=True)

    def expect_fault(self, text):
        result = self.check()
        self.assertEqual((result.returncode, result.stderr), (1, text + "\n"))

    def test_accepts_includes_from_lower_floors(self):
        result = self.check()
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_refuses_an_include_from_a_higher_floor(self):
        self.write("memory/frame.cpp", '#include "memory/frame.h"\n\n#include "world/making.h"\n')
        self.expect_fault("memory/frame.cpp:3: memory includes from world, which is no lower floor")

    def test_refuses_an_include_from_another_folder_of_the_same_floor(self):
        self.write("memory/frame.cpp", '#include "transfer/blit.h"\n')
        self.expect_fault(
            "memory/frame.cpp:1: memory includes from transfer, which is no lower floor")

    def test_refuses_an_include_of_what_is_not_there(self):
        self.write("memory/frame.cpp", '#include "simd/gone.h"\n')
        self.expect_fault("memory/frame.cpp:1: simd/gone.h is not there")

    def test_accepts_25_files_and_refuses_26(self):
        for number in range(24):
            self.write(f"simd/fill_{number}.cpp", "")
        self.assertEqual(self.check().returncode, 0)
        self.write("simd/fill_24.cpp", "")
        self.expect_fault("simd: 26 files, more than 25")

    def test_accepts_any_number_of_inputs_of_a_fuzzer(self):
        for number in range(26):
            self.write(f"fuzz/corpus/blits/{number}", "")
        self.assertEqual(self.check().returncode, 0)

    def test_refuses_a_folder_of_sources_without_a_floor(self):
        self.write("state/locking.cpp", "")
        self.expect_fault("state: docs/floors.txt has no floor for it")

    def test_refuses_a_floor_without_files(self):
        self.write("docs/floors.txt", "simd\nmemory transfer\nworld\nstate\n")
        self.expect_fault("docs/floors.txt: there is no file in state")


if __name__ == "__main__":
    unittest.main()

"""What the table of conformance cannot show: a file that somebody holds open, and readers beside a writer."""

from __future__ import annotations

import os
import tempfile
import threading
import unittest
from pathlib import Path
from typing import Any
from unittest import mock

from controller_scenario import _atomic_file


class AtomicFileTest(unittest.TestCase):
    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)
        self.path = self.directory / "file.json"

    def write(self, content: bytes) -> None:
        _atomic_file.write(str(self.path), content)

    def write_with_refusals(self, refusals: int, content: bytes) -> int:
        """Makes the first renames fail, like Windows while another process has the target open. Returns how many were
        attempted."""
        attempts = 0
        replace = os.replace

        def refusing(*arguments: Any) -> None:
            nonlocal attempts
            attempts += 1
            if attempts <= refusals:
                raise PermissionError(13, "Permission denied", arguments[1])
            replace(*arguments)

        with mock.patch("os.replace", refusing), mock.patch("time.sleep"):
            try:
                self.write(content)
            except PermissionError:
                self.assertGreater(refusals, attempts)
        return attempts

    def test_tries_again_while_the_target_is_held_open(self) -> None:
        self.write(b"old")
        self.assertEqual(self.write_with_refusals(3, b"new"), 4)
        self.assertEqual(self.path.read_bytes(), b"new")

    def test_gives_up_after_a_bounded_number_of_attempts_and_leaves_the_old_file_alone(self) -> None:
        self.write(b"old")
        self.assertEqual(self.write_with_refusals(1_000_000, b"new"), 200)
        self.assertEqual(os.listdir(self.directory), ["file.json"])
        self.assertEqual(self.path.read_bytes(), b"old")

    def test_a_missing_directory_is_an_error(self) -> None:
        with self.assertRaises(FileNotFoundError):
            _atomic_file.write(str(self.directory / "no" / "file"), b"")

    def test_a_reader_never_sees_a_part(self) -> None:
        contents = [letter * 100_000 for letter in (b"a", b"b")]
        self.write(contents[0])

        def write_often() -> None:
            for turn in range(100):
                self.write(contents[turn % 2])

        writer = threading.Thread(target=write_often)
        writer.start()
        seen = set()
        while writer.is_alive():
            seen.add(self.path.read_bytes())
        self.assertLessEqual(seen, set(contents))


if __name__ == "__main__":
    unittest.main()

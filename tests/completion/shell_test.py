"""What the tests of the shells' completion share."""

from __future__ import annotations

import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SKIPPED = 77
PROGRAM = Path(sys.argv[1]).resolve() if len(sys.argv) > 1 else Path()


class ShellTest(unittest.TestCase):
    """`cadjobs` in PATH, with settings of its own, and an empty current directory. No host runs."""

    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)
        (self.directory / "cwd").mkdir()
        settings = self.directory / "settings.json"
        settings.write_text('{"version": 1, "jobListFile": "list.json", "logFile": ""}', encoding="utf-8")
        self.environment = {
            "PATH": f"{PROGRAM.parent}:/usr/bin:/bin",
            "HOME": str(self.directory),
            "XDG_RUNTIME_DIR": str(self.directory),
            "XDG_CONFIG_HOME": str(self.directory),
            "XDG_DATA_HOME": str(self.directory),
            "CONTROLLER_SETTINGS_FILE": str(settings),
            "LC_ALL": "C.UTF-8",
            "TERM": "xterm",
        }

    def output_of(self, *command: str) -> str:
        """What a command prints; it must succeed."""
        ran = subprocess.run(
            command,
            env=self.environment,
            cwd=self.directory / "cwd",
            stdin=subprocess.DEVNULL,
            capture_output=True,
            timeout=60,
        )
        self.assertEqual(ran.stderr.decode(), "")
        self.assertEqual(ran.returncode, 0)
        return ran.stdout.decode()

    def script(self, shell: str) -> Path:
        """A file with the completion of a shell."""
        path = self.directory / "completion"
        path.write_text(self.output_of("cadjobs", "completion", shell), encoding="utf-8")
        return path

    def make_file(self, name: str) -> None:
        (self.directory / "cwd" / name).touch()


def run_tests_with(shell: str) -> None:
    """Runs the tests of the calling program; skips them where the shell is not installed."""
    if shutil.which(shell, path="/usr/bin:/bin") is None:
        print(f"{shell} is not installed.")
        sys.exit(SKIPPED)
    os.umask(0o077)
    unittest.main(argv=sys.argv[:1])

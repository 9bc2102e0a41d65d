"""Runs main.py as the controller does: in a process of its own, with a run request in a file.

PYTHONPATH must name the directory of the scenario API: PYTHONPATH=.../scenario_api/python python3 -m unittest discover tests
"""

from __future__ import annotations

import json
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from typing import Any

HERE = Path(__file__).resolve().parent


class MainTest(unittest.TestCase):
    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.work_dir = Path(directory.name)

    def run_main(self, argument: str = "", *inputs: Path) -> int:
        """Returns the exit code of the scenario."""
        request = {
            "version": 1,
            "jobId": "1",
            "scenarioPath": str(HERE.parent / "main.py"),
            "inputFiles": [str(path) for path in inputs],
            "outputFolder": str(self.work_dir / "output"),
            "workDir": str(self.work_dir),
            "runArgument": argument,
        }
        info = self.work_dir / "run_scenario_info.json"
        info.write_text(json.dumps(request), encoding="utf-8")
        command = [sys.executable, str(HERE.parent / "main.py"), str(info)]
        return subprocess.run(command, cwd=self.work_dir, timeout=60).returncode

    def messages(self) -> list[Any]:
        result = json.loads((self.work_dir / "run_scenario_result.json").read_text(encoding="utf-8"))
        return [message["text"] for message in result["messages"]]

    def test_the_report_names_each_file(self) -> None:
        self.assertEqual(self.run_main("", HERE / "input.txt"), 0)
        self.assertEqual((self.work_dir / "output" / "report.txt").read_text(encoding="utf-8"), "input.txt: 15 bytes\n")
        self.assertEqual(self.messages(), ["Files: 1"])

    def test_a_small_file_is_refused(self) -> None:
        self.assertEqual(self.run_main("smallestSize=100", HERE / "input.txt"), 1)
        self.assertEqual(self.messages(), ["input.txt has 15 bytes; 100 or more are needed."])

    def test_a_request_to_stop_ends_it(self) -> None:
        (self.work_dir / "killprocess").touch()
        self.assertEqual(self.run_main("", HERE / "input.txt"), 3)


if __name__ == "__main__":
    unittest.main()

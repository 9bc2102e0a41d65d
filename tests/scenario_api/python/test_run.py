"""What the table of conformance cannot show: how a scenario runs inside of another program, and what belongs to Python."""

from __future__ import annotations

import json
import signal
import sys
import tempfile
import threading
import types
import unittest
from pathlib import Path

import controller_scenario
from controller_scenario import Job, _used_tools


class RunTest(unittest.TestCase):
    def setUp(self) -> None:
        directory = tempfile.TemporaryDirectory()
        self.addCleanup(directory.cleanup)
        self.directory = Path(directory.name)
        self.info = self.directory / "run_scenario_info.json"
        self.info.write_text(json.dumps({"workDir": str(self.directory), "outputFolder": str(self.directory / "out")}))

    def execute(self, scenario: controller_scenario.Scenario) -> int:
        return controller_scenario.execute(scenario, [str(self.info)])

    def test_the_handler_of_sigterm_is_restored(self) -> None:
        before = signal.getsignal(signal.SIGTERM)
        during = []
        self.assertEqual(self.execute(lambda job: during.append(signal.getsignal(signal.SIGTERM))), 0)
        self.assertNotEqual(during, [before])
        self.assertEqual(signal.getsignal(signal.SIGTERM), before)

    def test_a_scenario_may_run_in_another_thread(self) -> None:
        codes: list[int] = []
        thread = threading.Thread(target=lambda: codes.append(self.execute(lambda job: job.message("done"))))
        thread.start()
        thread.join()
        self.assertEqual(codes, [0])

    def test_a_path_object_is_taken_where_a_path_is(self) -> None:
        def scenario(job: Job) -> None:
            path = Path(job.output_path("a.txt"))
            path.touch()
            self.assertEqual(job.add_output(path), str(path))
            job.report_used_file(path)

        self.assertEqual(self.execute(scenario), 0)

    def test_a_module_of_another_package_is_reported(self) -> None:
        library = Path(json.__file__).parent.parent
        self.assertTrue(_used_tools._is_of_python(str(library / "json" / "decoder.py")))
        self.assertFalse(_used_tools._is_of_python(str(library / "site-packages" / "numpy" / "__init__.py")))
        self.assertFalse(_used_tools._is_of_python(str(library.parent / "python3" / "dist-packages" / "numpy.py")))

    def test_a_module_without_a_file_is_passed_over(self) -> None:
        module = types.ModuleType("computed")
        module.__dict__["__file__"] = None
        sys.modules["computed"] = module
        self.addCleanup(sys.modules.pop, "computed")
        self.assertEqual(self.execute(lambda job: None), 0)

    def test_the_scripts_of_this_version_are_those_of_39(self) -> None:
        """No syntax of later versions, whatever version runs this."""
        import ast

        package = Path(controller_scenario.__file__).parent
        for path in package.glob("*.py"):
            ast.parse(path.read_text(encoding="utf-8"), feature_version=(3, 9))


if __name__ == "__main__":
    unittest.main()

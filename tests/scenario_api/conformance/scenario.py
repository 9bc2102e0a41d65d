"""Takes the steps of a row of the table; scenario.rb is the same in Ruby."""

from __future__ import annotations

import base64
import json
import os
import sys
import time
from pathlib import Path
from typing import Any, Union

from controller_scenario import Job, run

Step = list[Any]


class Steps:
    def __init__(self, job: Job) -> None:
        self.job = job

    def take(self, steps: list[Step]) -> None:
        for name, *arguments in steps:
            getattr(self, f"take_{name}")(*arguments)

    # Reports.

    def take_message(self, text: str, code: int = 0) -> None:
        self.job.message(text, code=code)

    def take_message_bytes(self, encoded: str) -> None:
        self.job.message(base64.b64decode(encoded))

    def take_repeat_text(self, text: str, count: int) -> None:
        self.job.message(text * count)

    def take_progress(self, percent: float, message: str = "") -> None:
        self.job.progress(percent, message)

    def take_report_tool_version(self, name: str, version: Union[str, float]) -> None:
        self.job.report_tool_version(name, version)

    def take_report_tools(self, count: int) -> None:
        for number in range(count):
            self.job.report_tool_version(f"tool{number}", "1")

    def take_report_used_file(self, path: str) -> None:
        self.job.report_used_file(path)

    # What the job says, as a message of JSON.

    def take_show(self, name: str) -> None:
        self.take_message(json.dumps(getattr(self.job, name), ensure_ascii=False))

    def take_show_parameters(self, description: Union[str, None] = None) -> None:
        self.take_message(json.dumps(self.job.parameters(description), ensure_ascii=False))

    # Outputs.

    def take_write_output(self, name: str, content: str) -> None:
        self.job.write_output(name, content)

    def take_write_output_bytes(self, name: str, encoded: str) -> None:
        self.job.write_output(name, base64.b64decode(encoded))

    def take_output_path(self, name: str) -> None:
        self.job.output_path(name)

    def take_write_own(self, name: str) -> None:
        Path(self.job.output_path(name)).touch()
        self.job.add_output(self.job.output_path(name))

    def take_add_output(self, path: str) -> None:
        self.job.add_output(path)

    def take_add_spellings(self, count: int) -> None:
        """Lists one file many times, each time with a path of its own of more than 200 characters."""
        self.job.write_output("a", "")
        for number in range(count):
            digits = "".join("//" if digit == "0" else "/." for digit in format(number, "015b"))
            self.job.add_output(f"{self.job.output_directory}{'/.' * 100}{digits}/a")

    # Ends.

    def take_fail(self, text: str, code: int = 1) -> None:
        self.job.fail(text, code=code)

    def take_fail_with_first_input(self) -> None:
        path = self.job.inputs[0]
        self.job.fail(f"{os.path.basename(path)} holds {Path(path).read_text(encoding='utf-8')}")

    def take_raise(self, text: str) -> None:
        raise RuntimeError(*([text] if text else []))

    def take_raise_named(self) -> None:
        list[str]()[3]

    def take_read_missing(self, path: str) -> None:
        Path(path).read_bytes()

    def take_load_missing(self) -> None:
        __import__("no_such_library")

    def take_exit(self, code: int) -> None:
        sys.exit(code)

    def take_exit_with_text(self, text: str) -> None:
        sys.exit(text)

    def take_interrupt(self) -> None:
        raise KeyboardInterrupt

    def take_print(self, text: str) -> None:
        print(text, end="")

    def take_die(self, code: int) -> None:
        os._exit(code)

    # Requests to stop.

    def take_create(self, path: str) -> None:
        Path(path).touch()

    def take_remove(self, path: str) -> None:
        Path(path).unlink()

    def take_stop_if_cancelled(self) -> None:
        self.job.stop_if_cancelled()

    def take_wait_for_stop(self) -> None:
        while not self.job.cancelled:
            time.sleep(0)

    def take_guarded(self, step: Step, on_error: Step, at_end: Step) -> None:
        """Takes one step, another if it raises an ordinary exception, and a last one in any case."""
        try:
            self.take([step])
        except Exception:
            self.take([on_error])
        finally:
            self.take([at_end])

    def take_repeat(self, count: int, step: Step) -> None:
        for _ in range(count):
            self.take([step])


def take_steps(job: Job) -> None:
    Steps(job).take(json.loads(Path(os.environ["CONFORMANCE_STEPS"]).read_text(encoding="utf-8")))


run(take_steps)

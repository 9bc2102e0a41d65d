"""What the controller requests of this run: the content of run_scenario_info.json."""

from __future__ import annotations

import os
from collections.abc import Sequence
from typing import Any

from . import _layout, _text

ENVIRONMENT_VARIABLE = "CONTROLLER_RUN_INFO"
SIZE_LIMIT = 256 * 1024 * 1024


class Unusable(Exception):
    """The run information is missing or not as it should be: this process was not started as a scenario."""


class RunInfo:
    """The run request. Paths may contain characters U+DC80 to U+DCFF, as Python's file functions expect them."""

    def __init__(self, path: str, members: Any) -> None:
        self._path = path
        self._members = members
        self._check(isinstance(members, dict), "expected an object")
        version = members.get("version", _layout.LAYOUT_VERSION)
        is_known = version == _layout.LAYOUT_VERSION and not isinstance(version, bool)
        self._check(is_known, f"version: expected {_layout.LAYOUT_VERSION}, found {_shown(version)}")
        self.job_id = self._text("jobId")
        self.scenario_path = self._text("scenarioPath")
        self.input_files = self._texts("inputFiles")
        self.output_directory = self._text("outputFolder")
        self.work_dir = self._text("workDir")
        self.run_argument = self._text("runArgument")
        self._check(os.path.isdir(self.work_dir), f'workDir: "{self.work_dir}" is not a directory')

    def _text(self, name: str) -> str:
        value = self._members.get(name, "")
        self._check(isinstance(value, str), f"{name}: expected a text")
        return str(value)

    def _texts(self, name: str) -> tuple[str, ...]:
        value = self._members.get(name, [])
        is_list = isinstance(value, list) and all(isinstance(element, str) for element in value)
        self._check(is_list, f"{name}: expected a list of texts")
        return tuple(value)

    def _check(self, condition: bool, problem: str) -> None:
        if not condition:
            raise Unusable(f"{self._path}: {problem}")


def _shown(value: object) -> str:
    return _text.scrub(_layout.generate(value).decode("utf-8")) if not isinstance(value, str) else f'"{value}"'


def locate(arguments: Sequence[str]) -> str:
    """The path of the run information: the first argument, else the environment variable.

    Windows may spoil an argument that its code page cannot represent, so an argument that names no file gives way.
    """
    candidates = [path for path in (*arguments[:1], os.environ.get(ENVIRONMENT_VARIABLE, "")) if path]
    if not candidates:
        raise Unusable(
            "no run information: give the path of run_scenario_info.json as the first argument or in the environment "
            f"variable {ENVIRONMENT_VARIABLE}"
        )
    return next((path for path in candidates if os.path.isfile(path)), candidates[0])


def read(path: str) -> RunInfo:
    """Reads and checks the file; raises Unusable with file, member and what was expected."""
    try:
        if os.path.getsize(path) > SIZE_LIMIT:
            raise Unusable(f"{path} is larger than {SIZE_LIMIT} bytes")
        with open(path, "rb") as file:
            members = _layout.parse(file.read())
    except OSError as error:
        raise Unusable(f"the run information cannot be read: {_text.of_system_error(error)}") from error
    except ValueError as error:
        raise Unusable(f"{path} is not valid JSON: {_text.clean(error)}") from error
    return RunInfo(path, members)

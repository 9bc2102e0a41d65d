"""The job that a scenario runs for."""

from __future__ import annotations

import os
import re
import sys
from typing import NoReturn

from . import _atomic_file, _layout, _parameters, _text
from ._ending import Cancelled, Failure
from ._result import Result
from ._run_info import RunInfo
from ._stop_request import StopRequest
from ._used_tools import UsedTools

PROGRESS_FILE_NAME = "progress_info_list.json"


class Job:
    """The request, and what the scenario reports about its work. All paths are absolute and native."""

    def __init__(self, info: RunInfo, stop_request: StopRequest) -> None:
        self._info = info
        self._stop_request = stop_request
        self._progress_path = os.path.join(info.work_dir, PROGRESS_FILE_NAME)
        self._last_percent: int | None = None
        # Both are written when the scenario ends.
        self.result = Result(info.job_id, info.work_dir)
        self.used_tools = UsedTools(info.work_dir)

    @property
    def id(self) -> str:
        """The job's identifier."""
        return self._info.job_id

    @property
    def inputs(self) -> tuple[str, ...]:
        """Paths of the input files, in the order of the request."""
        return self._info.input_files

    @property
    def output_directory(self) -> str:
        """The directory for output files. That of a job without inputs is as the user named it: it may not exist yet
        (`output_path` creates it), or contain other files."""
        return self._info.output_directory

    @property
    def run_argument(self) -> str:
        """The free text of the request; see also `parameters`."""
        return self._info.run_argument

    @property
    def work_dir(self) -> str:
        """The job's own directory for the controller's files and temporary ones; the current directory at the start."""
        return self._info.work_dir

    @property
    def scenario_path(self) -> str:
        """The requested scenario file or package."""
        return self._info.scenario_path

    def parameters(self, description: str | os.PathLike[str] | None = None) -> dict[str, _parameters.ParameterValue]:
        """The chosen parameters by name, from the run argument and the scenario's parameter sets.

        `description` is the JSON file with the parameter sets; without it, the one beside the script.
        """
        path = _parameters.file_beside(sys.argv[0]) if description is None else os.fspath(description)
        return _parameters.choose(self.run_argument, path)

    def progress(self, percent: float, message: object = "") -> None:
        """Reports how far the job is: 0 to 100, with a message for the user. Raises Cancelled if the job is to stop.

        Only a new percentage is written, so it may be called often.
        """
        self.stop_if_cancelled()
        whole = max(0, min(int(percent), 100))
        if whole != self._last_percent:
            self._last_percent = whole
            self._write_progress(whole, message)

    @property
    def cancelled(self) -> bool:
        """True once the job was asked to stop. Costs one look at the file system."""
        return self._stop_request.is_raised()

    def stop_if_cancelled(self) -> None:
        """Ends the scenario quietly, by raising Cancelled, if the job was asked to stop."""
        if self.cancelled:
            raise Cancelled

    def message(self, text: object, code: int = 0) -> None:
        """Adds a message to the result: at most 200, of 2000 characters each. Code 0 is information; a scenario
        defines other codes (32 bits) itself."""
        self.result.add_message(text, code)

    def report_tool_version(self, name: object, version: object) -> None:
        """Records the version of a tool that the results depend on, such as a mesher. Python's is recorded always."""
        self.used_tools.add_version(name, version)

    def report_used_file(self, path: str | os.PathLike[str]) -> None:
        """Records a file that the results depend on beside the inputs, such as a table of materials. The modules that
        the scenario has loaded are recorded always, without those of the standard library."""
        self.used_tools.add_file(os.fspath(path))

    def fail(self, text: object, code: int = _layout.EXIT_FAILED) -> NoReturn:
        """Ends the job as failed with this message, which says what is wrong and what the user can do."""
        raise Failure(_text.clean(text), code)

    def output_path(self, name: str) -> str:
        """The path of an output file, whose directory is created. `name` is relative and stays inside the output
        directory. Raises ValueError."""
        parts = re.split(r"[/\\]", name)
        if ":" in name or any(part in ("", ".", "..") for part in parts):
            raise ValueError(f'an output file needs a relative name inside the output directory, not "{name}"')
        path = os.path.join(self.output_directory, *parts)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        return path

    def write_output(self, name: str, content: str | bytes) -> str:
        """Writes a whole output file atomically and lists it in the result; returns its path.

        A text is written as UTF-8, with its line ends as they are.
        """
        path = self.output_path(name)
        _atomic_file.write(path, content.encode("utf-8", "surrogateescape") if isinstance(content, str) else content)
        return self.add_output(path)

    def add_output(self, path: str | os.PathLike[str]) -> str:
        """Lists a file that the scenario has written by other means in the result; returns its path. Raises
        ValueError."""
        path = os.fspath(path)
        if not os.path.isfile(path):
            raise ValueError(f"the output file {path} does not exist")
        self.result.add_output_file(path)
        return path

    def _write_progress(self, percent: int, message: object) -> None:
        """Progress is a courtesy: a full disk must not end a job whose own output may still succeed."""
        content = {
            "version": _layout.LAYOUT_VERSION,
            "jobId": _text.clean(self.id),
            "progressInfoList": [{"progress": percent, "message": _text.clean(message)}],
        }
        try:
            _atomic_file.write(self._progress_path, _layout.generate(content))
        except OSError as error:
            print(
                f"controller_scenario: progress could not be written: {_text.of_system_error(error)}", file=sys.stderr
            )

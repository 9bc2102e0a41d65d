"""The verdict of a job, for run_scenario_result.json."""

from __future__ import annotations

import contextlib
import os

from . import _atomic_file, _layout, _text

FILE_NAME = "run_scenario_result.json"

# The controller reads no larger file.
SIZE_LIMIT = 4 * 1024 * 1024

# Messages beyond this many are counted, not kept. So many of the longest texts stay below the size limit.
MESSAGE_LIMIT = 200

# Codes are 32-bit integers.
LEAST_CODE = -(2**31)
GREATEST_CODE = 2**31 - 1


class Result:
    """Collects messages and output files until the scenario ends."""

    def __init__(self, job_id: str, work_dir: str) -> None:
        self._job_id = job_id
        self._path = os.path.join(work_dir, FILE_NAME)
        self._succeeded = True
        self._messages: list[dict[str, object]] = []
        self._left_out = 0
        # As keys: each once, in the order in which they came.
        self._output_files: dict[str, None] = {}

    def discard_earlier(self) -> None:
        """Removes what an earlier run in the same directory has left: it must not pass for the verdict of this one."""
        with contextlib.suppress(OSError):  # there is none, or the later write will tell what is wrong
            os.unlink(self._path)

    def add_message(self, text: object, code: int) -> None:
        """Adds a message; beyond `MESSAGE_LIMIT` it is only counted."""
        if len(self._messages) >= MESSAGE_LIMIT:
            self._left_out += 1
        else:
            self._messages.append(_entry(text, code))

    def fail(self, text: str, code: int) -> None:
        """Makes the verdict a failure. The reason goes before all other messages: a list of jobs has room for one."""
        self._succeeded = False
        self._messages.insert(0, _entry(text, code))

    def add_output_file(self, path: str) -> None:
        """Lists an output file."""
        self._output_files[path] = None

    def write(self) -> None:
        """Writes the file, flushed to disk. Raises OSError."""
        notes = [f"{self._left_out} more messages were left out."] if self._left_out else []
        files = list(self._output_files)
        content = self._generate(notes, files)
        if len(content) > SIZE_LIMIT:
            note = f"The list of {len(files)} output files was too long and left out."
            content = self._generate([*notes, note], [])
        _atomic_file.write(self._path, content, durable=True)

    def _generate(self, notes: list[str], output_files: list[str]) -> bytes:
        return _layout.generate(
            {
                "version": _layout.LAYOUT_VERSION,
                "jobId": _text.clean(self._job_id),
                "succeeded": self._succeeded,
                "messages": self._messages + [_entry(note, 0) for note in notes],
                "outputFiles": [_text.clean(path) for path in output_files],
            }
        )


def _entry(text: object, code: int) -> dict[str, object]:
    return {"code": max(LEAST_CODE, min(int(code), GREATEST_CODE)), "text": _text.clean(text)}

"""Whether the job was asked to stop: the file "killprocess" in its work directory, or SIGTERM (not on Windows)."""

from __future__ import annotations

import contextlib
import os
import signal
import sys
import threading
from collections.abc import Iterator
from types import FrameType

FILE_NAME = "killprocess"


class StopRequest:
    """The request to stop of one job. Once seen it stays."""

    def __init__(self, work_dir: str) -> None:
        self._path = os.path.join(work_dir, FILE_NAME)
        self._is_raised = False

    @contextlib.contextmanager
    def listening(self) -> Iterator[None]:
        """Hears SIGTERM meanwhile. Python permits this in the main thread only; elsewhere the file alone counts."""
        if threading.current_thread() is not threading.main_thread():
            yield
            return
        previous = signal.signal(signal.SIGTERM, self._on_signal)
        try:
            yield
        finally:
            signal.signal(signal.SIGTERM, signal.SIG_DFL if previous is None else previous)

    def tell_when_early(self) -> None:
        """Says so when the file is there already. In a trial by hand it stays from an earlier one."""
        if os.path.exists(self._path):
            print(
                f"controller_scenario: {self._path} was there at the start and asks the scenario to stop; remove it to "
                "run the scenario.",
                file=sys.stderr,
            )

    def is_raised(self) -> bool:
        """One look at the file system (microseconds). Never resets the flag: the signal may arrive meanwhile."""
        if os.path.exists(self._path):
            self._is_raised = True
        return self._is_raised

    def _on_signal(self, _number: int, _frame: FrameType | None) -> None:
        self._is_raised = True

"""The job engine in a Python program, by ctypes: nothing but the standard library."""

import ctypes
import json
import os
import sys
from types import TracebackType
from typing import Any, Optional, Type

OK = 0
REJECTED = 2
TIMEOUT = 3

Document = dict[str, Any]


class EngineError(Exception):
    """A call that failed; `result` is the number in controller_c.h."""

    def __init__(self, result: int, text: str) -> None:
        super().__init__(text)
        self.result = result


def _load() -> ctypes.CDLL:
    """CONTROLLER_C_LIBRARY names the library where the system does not find it."""
    name = "controller_c.dll" if sys.platform == "win32" else "libcontroller_c.so.0"
    path = os.environ.get("CONTROLLER_C_LIBRARY", name)
    if sys.platform == "win32" and os.path.isabs(path):
        # The DLLs that it needs are beside it.
        os.add_dll_directory(os.path.dirname(path))
    return ctypes.CDLL(path)


def _declare(library: ctypes.CDLL) -> ctypes.CDLL:
    """Without these, ctypes takes pointers for 32-bit numbers. A text to be freed must stay a pointer."""
    engine = ctypes.c_void_p
    text = ctypes.c_char_p
    answer = ctypes.POINTER(ctypes.c_void_p)
    arguments: dict[str, list[Any]] = {
        "open": [text, ctypes.POINTER(engine)],
        "close": [engine],
        "enqueue": [engine, text, answer],
        "step": [engine, answer],
        "wait": [engine, text, ctypes.c_int32, answer],
        "status": [engine, text, answer],
        "list": [engine, answer],
        "cancel": [engine, text, answer],
        "delete": [engine, text, answer],
        "scenarios": [engine, answer],
    }
    for name, types in arguments.items():
        function = getattr(library, f"controller_engine_{name}")
        function.argtypes = types
        function.restype = ctypes.c_int32
    library.controller_c_last_error.restype = ctypes.c_char_p
    library.controller_c_free.argtypes = [ctypes.c_void_p]
    library.controller_c_free.restype = None
    return library


class Engine:
    """An open engine. Use it in a `with` statement, which closes it."""

    def __init__(self, settings_file: Optional[str] = None) -> None:
        self._library = _declare(_load())
        self._engine = ctypes.c_void_p()
        path = None if settings_file is None else os.fsencode(settings_file)
        self._check(self._library.controller_engine_open(path, ctypes.byref(self._engine)), [OK])

    def __enter__(self) -> "Engine":
        return self

    def __exit__(
        self, kind: Optional[Type[BaseException]], error: Optional[BaseException], trace: Optional[TracebackType]
    ) -> None:
        self.close()

    def close(self) -> None:
        """Stops what runs, and writes the job list."""
        engine, self._engine = self._engine, ctypes.c_void_p()
        self._check(self._library.controller_engine_close(engine), [OK])

    def enqueue(self, jobs_file: Document) -> list[Document]:
        """One element per set of input files; a rejected one has a "reason"."""
        answer = self._call("enqueue", json.dumps(jobs_file).encode(), accepted=[OK, REJECTED])
        return list(answer["jobs"])

    def step(self) -> list[Document]:
        """The jobs that have changed."""
        return list(self._call("step")["jobs"])

    def wait(self, jobs: str = "all", seconds: Optional[float] = None) -> list[Document]:
        """The jobs after their end, or after `seconds`."""
        limit = -1 if seconds is None else int(seconds * 1000)
        return list(self._call("wait", jobs.encode(), limit, accepted=[OK, TIMEOUT])["jobs"])

    def status(self, jobs: str = "all") -> list[Document]:
        return list(self._call("status", jobs.encode())["jobs"])

    def cancel(self, jobs: str) -> list[Document]:
        """The jobs that were cancelled."""
        return list(self._call("cancel", jobs.encode())["jobs"])

    def delete(self, jobs: str) -> list[str]:
        """The ids of the jobs that were deleted."""
        return list(self._call("delete", jobs.encode())["deleted"])

    def scenarios(self) -> list[Document]:
        return list(self._call("scenarios")["scenarios"])

    def _call(self, name: str, *arguments: Any, accepted: Optional[list[int]] = None) -> Document:
        answer = ctypes.c_void_p()
        function = getattr(self._library, f"controller_engine_{name}")
        result = function(self._engine, *arguments, ctypes.byref(answer))
        try:
            self._check(result, accepted or [OK])
            document: Document = json.loads(ctypes.string_at(answer.value or 0))
            return document
        finally:
            self._library.controller_c_free(answer)

    def _check(self, result: int, accepted: list[int]) -> None:
        if result not in accepted:
            text: bytes = self._library.controller_c_last_error()
            raise EngineError(result, text.decode())
